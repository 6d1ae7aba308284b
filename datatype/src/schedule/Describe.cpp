// A schedule in words, field by field as the record holds it.

#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

#include <ZelvorDataType/Text.h>
#include <ZelvorDataType/TimeSeries.h>

namespace ZelvorDataType {

namespace {

std::string FieldText(const char* name, RECURRENCE recurrence, int value) {
    if (recurrence == RECURRENCE_EVERY) {
        return std::string(name) + " every " + std::to_string(value);
    }
    if (recurrence == RECURRENCE_FIXED) {
        return std::string(name) + " " + std::to_string(value);
    }
    return {};
}

std::string Clock(int hour, int minute) {
    // Room for two full ints, should a record hold nonsense.
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d", hour, minute);
    return text;
}

// The enumerators open a window only when all five of its numbers are set.
bool HasWindow(const TimeSeries& s) {
    return s.GetHourStart() != -1 && s.GetMinuteStart() != -1 && s.GetHourEnd() != -1 &&
           s.GetMinuteEnd() != -1 && s.GetExecutingEveryMinutes() != -1;
}

}  // namespace

std::string DescribeSchedule(const TimeSeries& s) {
    std::vector<std::string> parts = {FieldText("year", s.GetYearRecurrence(), s.GetYear()),
                                      FieldText("month", s.GetMonthRecurrence(), s.GetMonth()),
                                      FieldText("day", s.GetDayRecurrence(), s.GetDay()),
                                      FieldText("week", s.GetWeekRecurrence(), s.GetWeek())};
    if (s.GetDayOfWeekRecurrence() == RECURRENCE_FIXED) {
        std::string days;
        for (int day = 0; day < 7; ++day) {
            if ((s.GetDayOfWeek() & (1 << day)) != 0) {
                days += (days.empty() ? "" : ",") + std::string(text_detail::kWeekdayNames[day], 3);
            }
        }
        parts.push_back("on " + (days.empty() ? std::string("no day") : days));
    }
    parts.push_back(FieldText("hour", s.GetHourRecurrence(), s.GetHour()));
    parts.push_back(FieldText("minute", s.GetMinuteRecurrence(), s.GetMinute()));
    parts.push_back(FieldText("second", s.GetSecondRecurrence(), s.GetSecond()));
    parts.push_back(FieldText("millisecond", s.GetMillisecondRecurrence(), s.GetMillisecond()));
    if (HasWindow(s)) {
        parts.push_back("window " + Clock(s.GetHourStart(), s.GetMinuteStart()) + "-" +
                        Clock(s.GetHourEnd(), s.GetMinuteEnd()) + " every " +
                        std::to_string(s.GetExecutingEveryMinutes()) + " min");
    }
    std::string text;
    for (const std::string& part : parts) {
        if (!part.empty()) {
            text += (text.empty() ? "" : ", ") + part;
        }
    }
    return text.empty() ? "every day at midnight (no field set)" : text;
}

std::string ToText(const TimeSeries& schedule) {
    return DescribeSchedule(schedule);
}

std::ostream& operator<<(std::ostream& os, const TimeSeries& schedule) {
    return os << DescribeSchedule(schedule);
}

}  // namespace ZelvorDataType
