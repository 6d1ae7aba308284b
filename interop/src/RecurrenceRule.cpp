// RRULE values in and out, read and written by libical; the meaning of each part is
// checked here against what a schedule can say.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include <fmt/format.h>
#include <libical/ical.h>

#include "Pattern.h"

namespace ZelvorInterop {

using namespace internal;
using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSeries;
using ZelvorDataType::TimeSeriesPtr;

namespace {

constexpr Vocabulary kRuleWords = {"BYHOUR",  "BYMINUTE",   "BYSECOND", "INTERVAL",
                                   "BYMONTH", "BYMONTHDAY", "BYDAY"};

template <std::size_t N>
int CountOf(const short (&list)[N]) {
    int n = 0;
    while (n < static_cast<int>(N) && list[n] != ICAL_RECURRENCE_ARRAY_MAX) {
        ++n;
    }
    return n;
}

template <std::size_t N>
std::uint64_t SetOf(const short (&list)[N], int range, const char* part) {
    std::uint64_t set = 0;
    for (int i = 0; i < CountOf(list); ++i) {
        if (list[i] < 0 || list[i] >= range) {
            Refuse(part, fmt::format("{} is outside 0 to {}", list[i], range - 1));
        }
        set |= std::uint64_t{1} << list[i];
    }
    return set;
}

template <std::size_t N>
void PutSet(short (&list)[N], std::uint64_t set, int range) {
    int i = 0;
    for (int v : Members(set, range)) {
        list[i++] = static_cast<short>(v);
    }
    if (i < static_cast<int>(N)) {
        list[i] = ICAL_RECURRENCE_ARRAY_MAX;
    }
}

constexpr std::pair<Frequency, icalrecurrencetype_frequency> kFrequencies[] = {
    {Frequency::Daily, ICAL_DAILY_RECURRENCE},
    {Frequency::Weekly, ICAL_WEEKLY_RECURRENCE},
    {Frequency::Monthly, ICAL_MONTHLY_RECURRENCE},
    {Frequency::Yearly, ICAL_YEARLY_RECURRENCE}};

struct Parsed {
    Pattern pattern;
    bool fromStart = false;  // a part was taken from the start
};

void RefuseUnsupported(const icalrecurrencetype& r) {
    switch (r.freq) {
        case ICAL_SECONDLY_RECURRENCE:
        case ICAL_MINUTELY_RECURRENCE:
        case ICAL_HOURLY_RECURRENCE:
            Refuse("FREQ",
                   "steps of seconds, minutes or hours count on from DTSTART across "
                   "midnight; give the times of the day with BYHOUR and BYMINUTE");
        default:
            break;
    }
    if (r.count != 0) {
        Refuse("COUNT", "a schedule has no end");
    }
    if (!icaltime_is_null_time(r.until)) {
        Refuse("UNTIL", "a schedule has no end");
    }
    if (CountOf(r.by_set_pos) != 0) {
        Refuse("BYSETPOS",
               "it picks among the occurrences of each period; a schedule has no "
               "such choice");
    }
    if (CountOf(r.by_year_day) != 0) {
        Refuse("BYYEARDAY", "a schedule has no day of the year");
    }
    if (CountOf(r.by_week_no) != 0) {
        Refuse("BYWEEKNO", "a schedule has no week of the year");
    }
    if (r.rscale != nullptr) {
        Refuse("RSCALE", "a schedule keeps the Gregorian calendar");
    }
    if (CountOf(r.by_month) > 1) {
        Refuse("BYMONTH", "several months; a schedule fixes one month or none");
    }
    if (CountOf(r.by_month_day) > 1) {
        Refuse("BYMONTHDAY", "several days of the month; a schedule fixes one or none");
    }
    if (CountOf(r.by_month_day) == 1 && r.by_month_day[0] < 1) {
        Refuse("BYMONTHDAY",
               "it counts from the end of the month; a schedule's day of the month "
               "counts from its start");
    }
    if (r.freq == ICAL_WEEKLY_RECURRENCE && CountOf(r.by_month_day) != 0) {
        Refuse("BYMONTHDAY", "not allowed in a WEEKLY rule");
    }
}

Parsed Read(std::string_view text, const DateTime* start) {
    if (text.size() >= 6 && strncasecmp(text.data(), "RRULE:", 6) == 0) {
        text.remove_prefix(6);
    }
    const std::string copy(text);
    icalerror_clear_errno();
    icalrecurrencetype r = icalrecurrencetype_from_string(copy.c_str());
    // Only RSCALE is allocated; free it before anything can throw.
    const bool rscale = r.rscale != nullptr;
    std::free(r.rscale);
    r.rscale = nullptr;
    if (r.freq == ICAL_NO_RECURRENCE) {
        Refuse("rule", fmt::format("not a recurrence rule that libical reads ({})",
                                   icalerror_strerror(icalerrno)));
    }
    if (rscale) {
        Refuse("RSCALE", "a schedule keeps the Gregorian calendar");
    }
    RefuseUnsupported(r);
    Parsed out;
    Pattern& p = out.pattern;
    for (const auto& [frequency, code] : kFrequencies) {
        p.frequency = code == r.freq ? frequency : p.frequency;
    }
    p.interval = r.interval;
    p.weekStart = static_cast<int>(r.week_start) - 1;
    p.month = CountOf(r.by_month) == 1 ? icalrecurrencetype_month_month(r.by_month[0]) : 0;
    p.monthDay = CountOf(r.by_month_day) == 1 ? r.by_month_day[0] : 0;
    bool first = true;
    for (int i = 0; i < CountOf(r.by_day); ++i) {
        const int position = icalrecurrencetype_day_position(r.by_day[i]);
        const int weekday = static_cast<int>(icalrecurrencetype_day_day_of_week(r.by_day[i])) - 1;
        if (weekday < 0 || weekday > 6) {
            Refuse("BYDAY", "not a day of the week");
        }
        if ((!first && position != p.ordinal) || position < -5 || position > 5) {
            Refuse("BYDAY",
                   "the days carry different numbers, or one outside -5 to 5; a schedule "
                   "takes one week of the month for all its weekdays");
        }
        p.ordinal = position;
        p.weekdays |= 1u << weekday;
        first = false;
    }
    p.hours = SetOf(r.by_hour, 24, "BYHOUR");
    p.minutes = SetOf(r.by_minute, 60, "BYMINUTE");
    p.seconds = SetOf(r.by_second, 60, "BYSECOND");

    // What the rule leaves out it takes from DTSTART.
    const DateTime local = start != nullptr ? start->ToLocalTime() : DateTime(0.0);
    const auto fill = [&](auto& part, auto value, const char* name) {
        if (part != 0) {
            return;
        }
        if (start == nullptr) {
            Refuse(name, "not given, so the rule takes it from DTSTART; give it, or a start");
        }
        part = value;
        out.fromStart = true;
    };
    fill(p.hours, std::uint64_t{1} << local.GetHour(), "BYHOUR");
    fill(p.minutes, std::uint64_t{1} << local.GetMinute(), "BYMINUTE");
    fill(p.seconds, std::uint64_t{1} << local.GetSecond(), "BYSECOND");
    const bool noDay = p.monthDay == 0 && p.weekdays == 0;
    if (p.frequency == Frequency::Weekly) {
        fill(p.weekdays, 1u << local.GetDayOfWeek(), "BYDAY");
    } else if (p.frequency == Frequency::Monthly && noDay) {
        fill(p.monthDay, local.GetDay(), "BYMONTHDAY");
    } else if (p.frequency == Frequency::Yearly && (noDay || p.monthDay != 0)) {
        // A yearly day of the month without BYMONTH falls in DTSTART's month, as libical
        // reads it; yearly weekdays without it fall in every month.
        fill(p.month, local.GetMonth(), "BYMONTH");
        fill(p.monthDay, local.GetDay(), "BYMONTHDAY");
    }
    return out;
}

}  // namespace

TimeSeriesPtr FromRecurrenceRule(std::string_view rule) {
    const Parsed parsed = Read(rule, nullptr);
    TimeSeriesPtr schedule = ToSchedule(parsed.pattern, kRuleWords);
    if (DependsOnStart(parsed.pattern)) {
        Refuse("INTERVAL",
               "a rule counts it from the period of DTSTART, a schedule from its "
               "first matching day: they agree for some starts only; give a start");
    }
    return schedule;
}

TimeSeriesPtr FromRecurrenceRule(std::string_view rule, const DateTime& start) {
    const Parsed parsed = Read(rule, &start);
    TimeSeriesPtr schedule = ToSchedule(parsed.pattern, kRuleWords);
    CheckStart(parsed.pattern, *schedule, start, "INTERVAL");
    return schedule;
}

namespace {

std::string Write(const Pattern& p) {
    icalrecurrencetype r;
    icalrecurrencetype_clear(&r);
    for (const auto& [frequency, code] : kFrequencies) {
        r.freq = frequency == p.frequency ? code : r.freq;
    }
    r.interval = static_cast<short>(p.interval);
    if (p.frequency == Frequency::Weekly && p.interval > 1) {
        r.week_start = static_cast<icalrecurrencetype_weekday>(p.weekStart + 1);
    }
    if (p.month != 0) {
        r.by_month[0] = static_cast<short>(p.month);
        r.by_month[1] = ICAL_RECURRENCE_ARRAY_MAX;
    }
    if (p.monthDay != 0) {
        r.by_month_day[0] = static_cast<short>(p.monthDay);
        r.by_month_day[1] = ICAL_RECURRENCE_ARRAY_MAX;
    }
    int n = 0;
    for (int day : Members(p.weekdays, 7)) {
        // libical's code of a day: (8 times the distance from the end or start, plus the
        // weekday from 1 for Sunday), negative when counted from the end.
        const int code = std::abs(p.ordinal) * 8 + day + 1;
        r.by_day[n++] = static_cast<short>(p.ordinal < 0 ? -code : code);
    }
    r.by_day[n] = ICAL_RECURRENCE_ARRAY_MAX;
    PutSet(r.by_hour, p.hours, 24);
    PutSet(r.by_minute, p.minutes, 60);
    PutSet(r.by_second, p.seconds, 60);
    const std::unique_ptr<char, void (*)(void*)> text(icalrecurrencetype_as_string_r(&r),
                                                      icalmemory_free_buffer);
    if (!text) {
        Refuse("rule", "libical could not write it");
    }
    return text.get();
}

}  // namespace

std::string ToRecurrenceRule(const TimeSeries& schedule) {
    const Pattern p = FromSchedule(schedule);
    if (DependsOnStart(p)) {
        Refuse(PeriodName(p.frequency),
               "its interval counts from the first matching day, a rule's from DTSTART: they "
               "agree for some starts only; give a start");
    }
    return Write(p);
}

std::string ToRecurrenceRule(const TimeSeries& schedule, const DateTime& start) {
    const Pattern p = FromSchedule(schedule);
    CheckStart(p, schedule, start, "interval");
    return Write(p);
}

}  // namespace ZelvorInterop
