// Schedules by named fields, and the constant-time checks of what a record can fire.
#include <ZelvorDataType/ScheduleBuilder.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "schedule/WallTime.h"

namespace ZelvorDataType {

namespace {

using std::to_string;

constexpr ScheduleField kClockFields[] = {ScheduleField::Hour, ScheduleField::Minute,
                                          ScheduleField::Second, ScheduleField::Millisecond};

const char* MonthName(int month) {
    static const char* const names[] = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
    return names[month - 1];
}

std::string Two(int value) {
    return (value < 10 ? "0" : "") + to_string(value);
}

std::string Clock(int minutes) {
    return to_string(minutes / 60) + ":" + Two(minutes % 60);
}

struct FieldState {
    RECURRENCE recurrence;
    int value;
};

FieldState Read(const TimeSeries& s, ScheduleField field) {
    switch (field) {
        case ScheduleField::Year:
            return {s.GetYearRecurrence(), s.GetYear()};
        case ScheduleField::Month:
            return {s.GetMonthRecurrence(), s.GetMonth()};
        case ScheduleField::Day:
            return {s.GetDayRecurrence(), s.GetDay()};
        case ScheduleField::Week:
            return {s.GetWeekRecurrence(), s.GetWeek()};
        case ScheduleField::Hour:
            return {s.GetHourRecurrence(), s.GetHour()};
        case ScheduleField::Minute:
            return {s.GetMinuteRecurrence(), s.GetMinute()};
        case ScheduleField::Second:
            return {s.GetSecondRecurrence(), s.GetSecond()};
        case ScheduleField::Millisecond:
            break;
    }
    return {s.GetMillisecondRecurrence(), s.GetMillisecond()};
}

bool Fixed(const FieldState& f) {
    return f.recurrence == RECURRENCE_FIXED;
}

// The record takes any recurrence but FIXED and EVERY as "no part".
bool Unset(const FieldState& f) {
    return f.recurrence != RECURRENCE_FIXED && f.recurrence != RECURRENCE_EVERY;
}

bool WindowSet(const TimeSeries& s) {
    return s.GetHourStart() != -1 && s.GetMinuteStart() != -1 && s.GetHourEnd() != -1 &&
           s.GetMinuteEnd() != -1 && s.GetExecutingEveryMinutes() != -1;
}

std::optional<std::string> WhyNoDay(const TimeSeries& s) {
    const FieldState year = Read(s, ScheduleField::Year);
    const FieldState month = Read(s, ScheduleField::Month);
    const FieldState day = Read(s, ScheduleField::Day);
    const FieldState week = Read(s, ScheduleField::Week);
    if (Fixed(year) && (year.value < 0 || year.value > 65535)) {
        return "year " + to_string(year.value) + " is outside the calendar (0 to 65535)";
    }
    if (Fixed(month) && (month.value < 1 || month.value > 12)) {
        return "month " + to_string(month.value) + " is not a month (1 to 12)";
    }
    const bool commonYear = Fixed(year) && !internal::IsLeap(year.value);
    const bool commonFebruary = Fixed(month) && month.value == 2 && commonYear;
    if (Fixed(day)) {
        if (day.value < 1 || day.value > 31) {
            return "day " + to_string(day.value) + " is in no month (1 to 31)";
        }
        // The longest the fixed month can be: February has 29 days in a leap year.
        if (Fixed(month) && day.value > internal::MonthLength(2000, month.value)) {
            return "day " + to_string(day.value) + " never falls in " + MonthName(month.value) +
                   ", which has " +
                   (month.value == 2
                        ? std::string("28 days, 29 in a leap year")
                        : to_string(internal::MonthLength(2000, month.value)) + " days");
        }
        if (commonFebruary && day.value == 29) {
            return "day 29 never falls in February " + to_string(year.value) + ": " +
                   to_string(year.value) + " is not a leap year";
        }
        return std::nullopt;
    }
    if (day.recurrence == RECURRENCE_EVERY) {
        return std::nullopt;
    }
    if (s.GetDayOfWeekRecurrence() == RECURRENCE_FIXED && (s.GetDayOfWeek() & 0x7F) == 0) {
        return std::string("the weekday set is empty, so no day of the week matches");
    }
    if (Fixed(week)) {
        if (week.value == 0 || week.value > 5 || week.value < -5) {
            return "week " + to_string(week.value) +
                   " matches no day (1 to 5 count seven-day blocks from the start of the "
                   "month, -1 to -5 from its end)";
        }
        if (commonFebruary && (week.value == 5 || week.value == -5)) {
            return "week " + to_string(week.value) + " never falls in February " +
                   to_string(year.value) + ", which has 28 days: four blocks of seven";
        }
    }
    return std::nullopt;
}

std::optional<std::string> WhyNoTime(const TimeSeries& s) {
    if (WindowSet(s)) {
        if (s.GetExecutingEveryMinutes() == 0) {
            return std::string("the window steps by 0 minutes, so it yields no point");
        }
        return std::nullopt;
    }
    for (const ScheduleField field : kClockFields) {
        const FieldState f = Read(s, field);
        const int range = LimitsOf(field).fixedHigh + 1;
        // A negative fixed value is placed counting back from the end of the range.
        const long long target = f.value < 0 ? static_cast<long long>(f.value) + range : f.value;
        if (Fixed(f) && (target < 0 || target >= range)) {
            return std::string(LimitsOf(field).name) + " " + to_string(f.value) +
                   " can't be placed (0 to " + to_string(range - 1) + ")";
        }
    }
    return std::nullopt;
}

[[noreturn]] void Refuse(const std::string& message) {
    throw std::invalid_argument(message);
}

}  // namespace

std::optional<std::string> WhyNeverFires(const TimeSeries& schedule) {
    if (auto why = WhyNoDay(schedule)) {
        return why;
    }
    return WhyNoTime(schedule);
}

std::optional<std::string> WhyNeverFires(const TimeSeries& schedule, const DateTime& start) {
    if (auto why = WhyNeverFires(schedule)) {
        return why;
    }
    const FieldState year = Read(schedule, ScheduleField::Year);
    const FieldState month = Read(schedule, ScheduleField::Month);
    const FieldState day = Read(schedule, ScheduleField::Day);
    const DateTime local = start.ToLocalTime();
    if (!Fixed(year) || year.value < 0 || year.value > 65535) {
        return std::nullopt;
    }
    const std::string startText =
        "the start, " + std::string(local.ToString().c_str()).substr(0, 10);
    if (year.value < local.GetYear()) {
        return "year " + to_string(year.value) + " lies before " + startText;
    }
    // The first day searched: the start's date, or, for a later fixed year, the day
    // after the start's month and day in that year (the search jumps there).
    internal::CivilDay first =
        internal::DayFromDate(local.GetYear(), local.GetMonth(), local.GetDay());
    std::string firstText = startText;
    if (year.value > local.GetYear()) {
        first = internal::DayFromDate(
            year.value, first.month,
            std::min(first.day, internal::MonthLength(year.value, first.month)));
        const std::string jumped = "the search jumps from " + startText + ", to " +
                                   to_string(year.value) + "-" + Two(first.month) + "-" +
                                   Two(first.day) + " and goes on from the day after";
        if (!internal::AdvanceDay(first) || first.year != year.value) {
            return "year " + to_string(year.value) + " is never searched: " + jumped;
        }
        firstText = "the first day searched: " + jumped;
    }
    if (!Fixed(month) || month.value > first.month) {
        return std::nullopt;
    }
    if (month.value < first.month) {
        return std::string(MonthName(month.value)) + " " + to_string(year.value) + " lies before " +
               firstText;
    }
    if (Fixed(day) && day.value < first.day) {
        return "day " + to_string(day.value) + " of " + MonthName(month.value) + " " +
               to_string(year.value) + " lies before " + firstText;
    }
    return std::nullopt;
}

std::optional<UnwalkedFields> FindUnwalkedFields(const TimeSeries& schedule) {
    if (WindowSet(schedule)) {
        return std::nullopt;
    }
    // The finest stepped clock field; a zero interval never turns its field.
    for (int n = 3; n >= 0; --n) {
        const FieldState f = Read(schedule, kClockFields[n]);
        if (f.recurrence == RECURRENCE_EVERY && f.value > 0) {
            UnwalkedFields found{kClockFields[n], f.value, {}};
            for (int above = 0; above < n; ++above) {
                if (Unset(Read(schedule, kClockFields[above]))) {
                    found.unset.push_back(kClockFields[above]);
                }
            }
            return found;
        }
    }
    return std::nullopt;
}

ScheduleBuilder& ScheduleBuilder::Set(ScheduleField field, int value) {
    const ScheduleFieldLimits limits = LimitsOf(field);
    if (limits.zeroRefused && value == 0) {
        Refuse(std::string(limits.name) + ": 0 matches no day (1 to " +
               to_string(limits.fixedHigh) + " count from the month's start, -1 to " +
               to_string(limits.fixedLow) + " from its end)");
    }
    if (value < limits.fixedLow || value > limits.fixedHigh) {
        Refuse(std::string(limits.name) + ": " + to_string(value) + " is out of range (" +
               to_string(limits.fixedLow) + " to " + to_string(limits.fixedHigh) + ")");
    }
    mFields[static_cast<int>(field)] = {RECURRENCE_FIXED, value};
    return *this;
}

ScheduleBuilder& ScheduleBuilder::Set(ScheduleField field, Every every) {
    const ScheduleFieldLimits limits = LimitsOf(field);
    if (every.interval < 1 || every.interval > limits.everyHigh) {
        Refuse(std::string(limits.name) + ": every " + to_string(every.interval) +
               " is out of range (every 1 to every " + to_string(limits.everyHigh) + ")");
    }
    mFields[static_cast<int>(field)] = {RECURRENCE_EVERY, every.interval};
    return *this;
}

ScheduleBuilder& ScheduleBuilder::Weekdays(std::chrono::weekday first, std::chrono::weekday last) {
    if (!first.ok() || !last.ok()) {
        Refuse("weekdays: a day of the week is Sunday to Saturday (0 to 6)");
    }
    int mask = 0;
    for (std::chrono::weekday day = first;; ++day) {
        mask |= 1 << day.c_encoding();
        if (day == last) {
            break;
        }
    }
    return WeekdayMask(mask);
}

ScheduleBuilder& ScheduleBuilder::Weekdays(std::initializer_list<std::chrono::weekday> days) {
    int mask = 0;
    for (const std::chrono::weekday day : days) {
        if (!day.ok()) {
            Refuse("weekdays: a day of the week is Sunday to Saturday (0 to 6)");
        }
        mask |= 1 << day.c_encoding();
    }
    return WeekdayMask(mask);
}

ScheduleBuilder& ScheduleBuilder::WeekdayMask(int mask) {
    if (mask < 1 || mask > 127) {
        Refuse("weekdays: the mask " + to_string(mask) +
               " names no day or more than seven (1 to 127, bit 0 Sunday to bit 6 Saturday)");
    }
    mWeekdayMask = mask;
    return *this;
}

ScheduleBuilder& ScheduleBuilder::Window(std::chrono::minutes opening, std::chrono::minutes closing,
                                         std::chrono::minutes step) {
    const auto lastMinute = std::chrono::minutes(24 * 60 - 1);
    for (const auto& [what, value] :
         {std::pair{"opening", opening}, std::pair{"closing", closing}}) {
        if (value < std::chrono::minutes(0) || value > lastMinute) {
            Refuse(std::string("window: the ") + what + " " + to_string(value.count()) +
                   " minutes is out of range (0:00 to 23:59)");
        }
    }
    if (step < std::chrono::minutes(1) || step > lastMinute) {
        Refuse("window: a step of " + to_string(step.count()) +
               " minutes is out of range (1 to 1439 minutes)");
    }
    if (closing < opening) {
        Refuse("window: it closes at " + Clock(static_cast<int>(closing.count())) +
               ", before it opens at " + Clock(static_cast<int>(opening.count())) +
               "; a window stays within one day");
    }
    mOpening = static_cast<int>(opening.count());
    mClosing = static_cast<int>(closing.count());
    mStep = static_cast<int>(step.count());
    return *this;
}

ScheduleBuilder& ScheduleBuilder::AllDay() {
    mAllDay = true;
    return *this;
}

TimeSeriesPtr ScheduleBuilder::Build() const {
    TimeSeriesPtr schedule = BuildEvenIfNeverFiring();
    if (std::optional<std::string> why = WhyNeverFires(*schedule)) {
        Refuse("the schedule could never fire: " + *why);
    }
    return schedule;
}

TimeSeriesPtr ScheduleBuilder::BuildEvenIfNeverFiring() const {
    auto slot = [this](ScheduleField field) { return mFields[static_cast<int>(field)]; };
    const bool dayGiven = slot(ScheduleField::Day).recurrence != RECURRENCE_NONE;
    if (dayGiven &&
        (slot(ScheduleField::Week).recurrence != RECURRENCE_NONE || mWeekdayMask != 0)) {
        Refuse(
            "day: week and weekdays choose days only while the day is unset; give the day or "
            "them");
    }
    bool clockGiven = false;
    for (const ScheduleField field : kClockFields) {
        clockGiven = clockGiven || slot(field).recurrence != RECURRENCE_NONE;
    }
    if (mOpening != -1 && clockGiven) {
        Refuse("window: it replaces hour, minute, second and millisecond; give one or the other");
    }
    auto create = [&](const std::array<Slot, 8>& f) {
        const RECURRENCE weekdays = mWeekdayMask != 0 ? RECURRENCE_FIXED : RECURRENCE_NONE;
        const bool window = mOpening != -1;
        return MakeTimeSeries(
            f[0].recurrence, f[0].value, f[1].recurrence, f[1].value, f[2].recurrence, f[2].value,
            f[3].recurrence, f[3].value, weekdays, mWeekdayMask, f[4].recurrence, f[4].value,
            f[5].recurrence, f[5].value, f[6].recurrence, f[6].value, f[7].recurrence, f[7].value,
            window ? mOpening / 60 : -1, window ? mOpening % 60 : -1, window ? mClosing / 60 : -1,
            window ? mClosing % 60 : -1, window ? mStep : -1);
    };
    TimeSeriesPtr schedule = create(mFields);
    if (mAllDay) {
        const std::optional<UnwalkedFields> unwalked = FindUnwalkedFields(*schedule);
        if (!unwalked) {
            Refuse(
                "all day: needs hour, minute, second or millisecond at Every(N) (and no "
                "window) to run through the day");
        }
        std::array<Slot, 8> fields = mFields;
        for (const ScheduleField field : unwalked->unset) {
            fields[static_cast<int>(field)] = {RECURRENCE_EVERY, 1};
        }
        schedule = create(fields);
    }
    return schedule;
}

}  // namespace ZelvorDataType
