#include "Pattern.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

#include <fmt/format.h>

namespace ZelvorInterop {

UntranslatableError::UntranslatableError(const std::string& part, const std::string& why)
    : std::invalid_argument(part + ": " + why), mPart(part) {}

}  // namespace ZelvorInterop

namespace ZelvorInterop::internal {

using namespace ZelvorDataType;

namespace {

// A schedule searches this many days ahead for its next day; a longer gap would end it.
constexpr int kHorizonDays = 8 * 366;

struct Field {
    RECURRENCE recurrence = RECURRENCE_NONE;
    int value = 0;
};

// The time fields and window of a schedule.
struct TimeOfDay {
    std::array<Field, 3> fields;  // hour, minute, second
    int window[5] = {-1, -1, -1, -1, -1};
};

constexpr std::array<int, 3> kRanges = {24, 60, 60};

bool IsFixed(RECURRENCE r) {
    return r == RECURRENCE_FIXED;
}
bool IsEvery(RECURRENCE r) {
    return r == RECURRENCE_EVERY;
}

// {0, step, 2 step, ...} below `range`.
std::uint64_t Steps(int step, int range) {
    std::uint64_t set = 0;
    for (int v = 0; v < range; v += step) {
        set |= std::uint64_t{1} << v;
    }
    return set;
}

// The step N when `set` is every N-th value from 0 with N dividing the range (so every
// day starts over at 0), else 0.
int GridStep(std::uint64_t set, int range) {
    const std::vector<int> m = Members(set, range);
    if (m.size() < 2 || m[0] != 0 || range % m[1] != 0) {
        return 0;
    }
    return Steps(m[1], range) == set ? m[1] : 0;
}

TimeOfDay TimesToSchedule(const Pattern& p, const Vocabulary& words) {
    const std::array<std::vector<int>, 3> sets = {Members(p.hours, 24), Members(p.minutes, 60),
                                                  Members(p.seconds, 60)};
    TimeOfDay t;
    if (sets[0].size() == 1 && sets[1].size() == 1 && sets[2].size() == 1) {
        for (int i = 0; i < 3; ++i) {
            t.fields[i] = {RECURRENCE_FIXED, sets[i][0]};
        }
        return t;
    }
    // Several times at second 0, evenly spaced: the intraday window, whose closing time
    // is its last point. Hour and minute must stay unused for the window to hold.
    if (p.seconds == 1) {
        std::vector<int> times;
        for (int h : sets[0]) {
            for (int m : sets[1]) {
                times.push_back(h * 60 + m);
            }
        }
        const int step = times[1] - times[0];
        bool even = true;
        for (std::size_t i = 1; i < times.size(); ++i) {
            even = even && times[i] - times[i - 1] == step;
        }
        if (even) {
            t.window[0] = times.front() / 60;
            t.window[1] = times.front() % 60;
            t.window[2] = times.back() / 60;
            t.window[3] = times.back() % 60;
            t.window[4] = step;
            return t;
        }
    }
    // A grid from midnight: each field one value or every N-th from 0. The odometer
    // walks that grid exactly as long as no field above a stepping one is fixed at a
    // value other than 0 (from midnight it would step the lower field first and miss
    // the first time of the day).
    const std::uint64_t bitsets[3] = {p.hours, p.minutes, p.seconds};
    const char* names[3] = {words.hour, words.minute, words.second};
    bool fixedAbove = false;
    for (int i = 0; i < 3; ++i) {
        if (sets[i].size() == 1) {
            t.fields[i] = {RECURRENCE_FIXED, sets[i][0]};
            fixedAbove = fixedAbove || sets[i][0] != 0;
            continue;
        }
        const int step = GridStep(bitsets[i], kRanges[i]);
        if (step == 0 || fixedAbove) {
            Refuse(names[i],
                   "these times of day are not one time, an evenly spaced run at second 0 "
                   "or a grid of steps from midnight, which is what a schedule can walk");
        }
        t.fields[i] = {RECURRENCE_EVERY, step};
    }
    return t;
}

// The times of day of a schedule's time fields or window, as bit sets.
void TimesFromSchedule(const TimeSeries& s, Pattern& p) {
    const RECURRENCE ms = s.GetMillisecondRecurrence();
    const bool window = s.GetHourStart() != -1 && s.GetMinuteStart() != -1 &&
                        s.GetHourEnd() != -1 && s.GetMinuteEnd() != -1 &&
                        s.GetExecutingEveryMinutes() != -1;
    if (window) {
        const int open = s.GetHourStart() * 60 + s.GetMinuteStart();
        const int close = s.GetHourEnd() * 60 + s.GetMinuteEnd();
        const int step = s.GetExecutingEveryMinutes();
        if (step == 0) {
            Refuse("window", "a step of 0 minutes yields no point");
        }
        std::vector<int> times;
        for (int t = open; t == open || t <= close; t += step) {
            times.push_back(t);
        }
        p.seconds = 1;
        for (int t : times) {
            p.hours |= std::uint64_t{1} << (t / 60);
        }
        for (int t : times) {
            if (t / 60 == times.front() / 60) {
                p.minutes |= std::uint64_t{1} << (t % 60);
            }
        }
        // The window is a run of times; a rule or cron states hours times minutes, which
        // is the same run only when every hour has the same minutes.
        for (int t : times) {
            if ((p.minutes >> (t % 60) & 1u) == 0) {
                Refuse("window",
                       fmt::format("{:02}:{:02} to {:02}:{:02} every {} minutes is not the "
                                   "same minutes in every hour",
                                   open / 60, open % 60, close / 60, close % 60, step));
            }
        }
        if (static_cast<std::size_t>(std::popcount(p.hours)) *
                static_cast<std::size_t>(std::popcount(p.minutes)) !=
            times.size()) {
            Refuse("window", "its last hour stops before the minutes of the others");
        }
        return;
    }
    if (!(IsFixed(ms) && s.GetMillisecond() == 0) && (IsFixed(ms) || IsEvery(ms))) {
        Refuse("millisecond", "rules and cron count whole seconds");
    }
    const Field fields[3] = {{s.GetHourRecurrence(), s.GetHour()},
                             {s.GetMinuteRecurrence(), s.GetMinute()},
                             {s.GetSecondRecurrence(), s.GetSecond()}};
    const char* names[3] = {"hour", "minute", "second"};
    std::uint64_t* sets[3] = {&p.hours, &p.minutes, &p.seconds};
    bool fixedAbove = false;
    for (int i = 0; i < 3; ++i) {
        const Field& f = fields[i];
        if (IsFixed(f.recurrence)) {
            if (f.value < 0 || f.value >= kRanges[i]) {
                Refuse(names[i], fmt::format("the fixed value {} is outside 0 to {}", f.value,
                                             kRanges[i] - 1));
            }
            *sets[i] = std::uint64_t{1} << f.value;
            fixedAbove = fixedAbove || f.value != 0;
        } else if (IsEvery(f.recurrence)) {
            if (f.value <= 0 || kRanges[i] % f.value != 0) {
                Refuse(names[i],
                       fmt::format("every {} does not divide {}: the times drift from day "
                                   "to day",
                                   f.value, kRanges[i]));
            }
            if (fixedAbove) {
                Refuse(names[i],
                       "a stepping field below a field fixed at a value other than 0: "
                       "the first day of the series misses its first time");
            }
            *sets[i] = Steps(f.value, kRanges[i]);
        } else {
            // An unused time field is never walked and stays at 0.
            *sets[i] = 1;
        }
    }
}

int IntervalCap(Frequency f) {
    switch (f) {
        case Frequency::Daily:
            return kHorizonDays;
        case Frequency::Weekly:
            return kHorizonDays / 7;
        case Frequency::Monthly:
            return 12;
        case Frequency::Yearly:
            break;
    }
    return 100;
}

// The index of the period (counted from any fixed origin) that holds a local date.
long long PeriodIndex(const Pattern& p, const DateTime& day) {
    switch (p.frequency) {
        case Frequency::Weekly: {
            const int back = (day.GetDayOfWeek() - p.weekStart + 7) % 7;
            const DateTime first =
                DateTime(day.GetYear(), day.GetMonth(), day.GetDay()) - TimeSpan(back, 0, 0, 0, 0);
            const long long days = (first - DateTime(2000, 1, 2)).GetTotalDays();
            return days >= 0 ? days / 7 : -((-days + 6) / 7);
        }
        case Frequency::Monthly:
            return day.GetYear() * 12LL + day.GetMonth();
        case Frequency::Daily:
        case Frequency::Yearly:
            break;
    }
    return day.GetYear();
}

// ---- How far apart matching days can lie --------------------------------------------

// Days since 2000-01-01 (a Saturday) of a proleptic Gregorian date.
long long DayNumber(long long y, int m, int d) {
    y -= m <= 2 ? 1 : 0;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long yoe = y - era * 400;
    const long long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    return era * 146097 + yoe * 365 + yoe / 4 - yoe / 100 + doy - 730425;
}

int MonthLength(long long y, int m) {
    return m == 2 ? (y % 4 == 0 && (y % 100 != 0 || y % 400 == 0) ? 29 : 28)
                  : 31 - (m == 4 || m == 6 || m == 9 || m == 11);
}

// The first and last matching day of one month (day numbers), or none.
struct Span {
    long long first = -1, last = -1;
};

Span MatchesIn(const Pattern& p, long long y, int m) {
    Span span;
    if (p.month != 0 && m != p.month) {
        return span;
    }
    const int length = MonthLength(y, m);
    const long long base = DayNumber(y, m, 1);
    const auto add = [&](int day) {
        if (day >= 1 && day <= length) {
            span.first = span.first < 0 ? base + day - 1 : std::min(span.first, base + day - 1);
            span.last = std::max(span.last, base + day - 1);
        }
    };
    if (p.monthDay != 0) {
        add(p.monthDay);
        return span;
    }
    if (p.weekdays == 0) {
        add(1);
        add(length);
        return span;
    }
    const int firstWeekday = static_cast<int>((base % 7 + 13) % 7);  // 0 Sunday
    for (int w : Members(p.weekdays, 7)) {
        const int firstOf = 1 + (w - firstWeekday + 7) % 7;
        const int lastOf = firstOf + 7 * ((length - firstOf) / 7);
        if (p.ordinal > 0) {
            add(firstOf + 7 * (p.ordinal - 1));
        } else if (p.ordinal < 0) {
            add(lastOf + 7 * (p.ordinal + 1));
        } else {
            add(firstOf);
            add(lastOf);
        }
    }
    return span;
}

// The longest run of days, over every start, from one day of the series to the next:
// the Gregorian calendar repeats after 400 years (4800 months), the interval after its
// own length, so one common period of both holds every case.
long long LongestGap(const Pattern& p) {
    constexpr long long kCycleMonths = 4800;
    constexpr long long kCycleDays = 146097;
    const long long block = p.frequency == Frequency::Yearly ? 12 : 1;
    const long long step = p.frequency == Frequency::Monthly  ? p.interval
                           : p.frequency == Frequency::Yearly ? 12LL * p.interval
                                                              : 1;
    std::vector<Span> table(kCycleMonths);
    for (long long i = 0; i < kCycleMonths; ++i) {
        table[i] = MatchesIn(p, 2000 + i / 12, static_cast<int>(i % 12) + 1);
    }
    const long long cycle = std::lcm(kCycleMonths, step);
    long long longest = 0;
    for (long long phase = 0; phase < step; phase += block) {
        long long previous = -1;
        for (long long start = phase; start <= phase + cycle; start += step) {
            for (long long i = start; i < start + block; ++i) {
                const Span& s = table[i % kCycleMonths];
                const long long shift = i / kCycleMonths * kCycleDays;
                if (s.first >= 0) {
                    if (previous >= 0) {
                        longest = std::max(longest, s.first + shift - previous);
                    }
                    previous = s.last + shift;
                }
            }
        }
    }
    return longest;
}

}  // namespace

void Refuse(const std::string& part, const std::string& why) {
    throw UntranslatableError(part, why);
}

std::vector<int> Members(std::uint64_t set, int range) {
    std::vector<int> out;
    for (int v = 0; v < range; ++v) {
        if ((set >> v & 1u) != 0) {
            out.push_back(v);
        }
    }
    return out;
}

const char* PeriodName(Frequency f) {
    switch (f) {
        case Frequency::Daily:
            return "day";
        case Frequency::Weekly:
            return "week";
        case Frequency::Monthly:
            return "month";
        case Frequency::Yearly:
            break;
    }
    return "year";
}

bool DependsOnStart(const Pattern& p) {
    return p.interval > 1 && p.frequency != Frequency::Daily;
}

TimeSeriesPtr ToSchedule(const Pattern& p, const Vocabulary& words) {
    if (p.interval < 1 || p.interval > IntervalCap(p.frequency)) {
        Refuse(words.interval, fmt::format("{} is more than a schedule's search of {} days ahead "
                                           "can bridge",
                                           p.interval, kHorizonDays));
    }
    const bool stepped = p.interval > 1;
    Field year, month, day, week, weekday;
    if (p.month != 0) {
        if (stepped && p.frequency != Frequency::Yearly) {
            Refuse(words.month, fmt::format("one month together with every {} {}s: a schedule "
                                            "counts its interval without the month",
                                            p.interval, PeriodName(p.frequency)));
        }
        month = {RECURRENCE_FIXED, p.month};
    }
    if (p.monthDay != 0 && p.weekdays != 0) {
        Refuse(words.monthDay,
               "together with days of the week: a schedule's day of the month "
               "switches its days of the week off");
    }
    if (p.ordinal != 0 && (p.frequency == Frequency::Daily || p.frequency == Frequency::Weekly ||
                           (p.frequency == Frequency::Yearly && p.month == 0))) {
        Refuse(words.weekday,
               "a numbered weekday counts within a month; here it would count "
               "within a week or a year");
    }
    if (p.monthDay != 0) {
        day = {RECURRENCE_FIXED, p.monthDay};
    } else if (p.weekdays != 0) {
        weekday = {RECURRENCE_FIXED, static_cast<int>(p.weekdays)};
        if (p.ordinal != 0) {
            week = {RECURRENCE_FIXED, p.ordinal};
        }
    } else if (p.frequency == Frequency::Daily) {
        day = {RECURRENCE_EVERY, p.interval};
    } else {
        Refuse(words.monthDay, "no day is given");
    }
    switch (p.frequency) {
        case Frequency::Daily:
            if (stepped && (p.month != 0 || p.monthDay != 0 || p.weekdays != 0)) {
                Refuse(words.interval,
                       "every N days with a month or days: a schedule's every N "
                       "days switches the other day fields off");
            }
            break;
        case Frequency::Weekly:
            if (stepped) {
                // The schedule's weeks run Sunday to Saturday; the rule's from WKST. Both
                // group the days alike when no day lies before WKST in a Sunday week.
                if ((p.weekdays & ((1u << p.weekStart) - 1u)) != 0) {
                    Refuse("WKST",
                           "weeks that start after Sunday with days between Sunday and "
                           "their start: a schedule's weeks run Sunday to Saturday");
                }
                week = {RECURRENCE_EVERY, p.interval};
            }
            break;
        case Frequency::Monthly:
            if (stepped) {
                month = {RECURRENCE_EVERY, p.interval};
            }
            break;
        case Frequency::Yearly:
            if (stepped) {
                year = {RECURRENCE_EVERY, p.interval};
            }
            break;
    }
    // A schedule looks for its next day this far ahead (times the interval of years) and
    // ends when it finds none; the rule goes on.
    const long long horizon =
        p.frequency == Frequency::Yearly ? 1LL * kHorizonDays * p.interval : kHorizonDays;
    if (p.frequency != Frequency::Daily && LongestGap(p) > horizon) {
        Refuse(p.monthDay != 0 ? words.monthDay : words.weekday,
               fmt::format("two days of the series can lie more than {} days apart, beyond the "
                           "schedule's search for its next day",
                           horizon));
    }
    const TimeOfDay t = TimesToSchedule(p, words);
    return MakeTimeSeries(
        year.recurrence, year.value, month.recurrence, month.value, day.recurrence, day.value,
        week.recurrence, week.value, weekday.recurrence, weekday.value, t.fields[0].recurrence,
        t.fields[0].value, t.fields[1].recurrence, t.fields[1].value, t.fields[2].recurrence,
        t.fields[2].value, t.window[4] == -1 ? RECURRENCE_FIXED : RECURRENCE_NONE, 0, t.window[0],
        t.window[1], t.window[2], t.window[3], t.window[4]);
}

void CheckStart(const Pattern& p, const TimeSeries& schedule, const DateTime& start,
                const char* part) {
    const auto* impl = dynamic_cast<const TimeSeriesImpl*>(&schedule);
    const DateTime local = start.ToLocalTime();
    DateTime first(local.GetYear(), local.GetMonth(), local.GetDay());
    if (impl == nullptr || !DependsOnStart(p) || !impl->GetFirstDay(first)) {
        return;
    }
    const long long apart = PeriodIndex(p, first) - PeriodIndex(p, local);
    if (apart % p.interval != 0) {
        Refuse(part, fmt::format("every {} {}s counts from the start's {} in a rule and from the "
                                 "first matching day, {:04}-{:02}-{:02}, in a schedule: from this "
                                 "start the two differ",
                                 p.interval, PeriodName(p.frequency), PeriodName(p.frequency),
                                 first.GetYear(), first.GetMonth(), first.GetDay()));
    }
}

Pattern FromSchedule(const TimeSeries& s) {
    Pattern p;
    const RECURRENCE yr = s.GetYearRecurrence();
    const RECURRENCE mr = s.GetMonthRecurrence();
    const RECURRENCE dr = s.GetDayRecurrence();
    const RECURRENCE wr = s.GetWeekRecurrence();
    if (IsFixed(yr)) {
        Refuse("year", "a schedule fixed on one year ends; rules here and cron run without end");
    }
    int yearly = 0;
    int monthly = 0;
    if (IsEvery(yr)) {
        if (s.GetYear() < 1) {
            Refuse("year", "an interval below 1");
        }
        yearly = s.GetYear();
    }
    if (IsFixed(mr)) {
        if (s.GetMonth() < 1 || s.GetMonth() > 12) {
            Refuse("month", fmt::format("month {} does not exist", s.GetMonth()));
        }
        p.month = s.GetMonth();
    } else if (IsEvery(mr)) {
        if (s.GetMonth() < 1 || yearly != 0) {
            Refuse("month", "an interval of months below 1 or inside an interval of years");
        }
        monthly = s.GetMonth();
    }
    const bool daysInUse = IsFixed(dr) || IsEvery(dr);
    if (!daysInUse && IsFixed(s.GetDayOfWeekRecurrence())) {
        p.weekdays = static_cast<unsigned int>(s.GetDayOfWeek()) & 0x7Fu;
        if (p.weekdays == 0) {
            Refuse("day of week", "an empty set of weekdays matches no day");
        }
    }
    // Which period the intervals of months or years step, for the days that have no
    // interval of their own.
    const auto byMonthOrYear = [&](Frequency plain) {
        if (yearly != 0) {
            p.frequency = Frequency::Yearly;
            p.interval = yearly;
        } else if (monthly != 0) {
            p.frequency = Frequency::Monthly;
            p.interval = monthly;
        } else {
            p.frequency = plain;
        }
    };
    if (IsEvery(dr)) {
        if (s.GetDay() < 1 || yearly != 0 || monthly != 0 || (s.GetDay() > 1 && p.month != 0)) {
            Refuse("day", "every N days together with a month or an interval of months or years");
        }
        p.interval = s.GetDay();
    } else if (IsFixed(dr)) {
        if (s.GetDay() < 1 || s.GetDay() > 31) {
            Refuse("day", fmt::format("day {} of a month does not exist", s.GetDay()));
        }
        p.monthDay = s.GetDay();
        byMonthOrYear(p.month != 0 ? Frequency::Yearly : Frequency::Monthly);
        if (p.frequency == Frequency::Yearly && p.month == 0) {
            Refuse("year",
                   "a day of every month every N years: a rule's yearly day of the month "
                   "falls in one month");
        }
    } else if (IsFixed(wr)) {
        if (p.weekdays == 0 || s.GetWeek() == 0 || s.GetWeek() < -5 || s.GetWeek() > 5) {
            Refuse("week",
                   "a week of the month needs days of the week and a number from -5 to 5 "
                   "other than 0");
        }
        p.ordinal = s.GetWeek();
        byMonthOrYear(p.month != 0 ? Frequency::Yearly : Frequency::Monthly);
        if (p.frequency == Frequency::Yearly && p.month == 0) {
            Refuse("week", "a week of the month every N years needs a fixed month");
        }
    } else if (IsEvery(wr)) {
        if (s.GetWeek() < 1 || p.month != 0 || yearly != 0 || monthly != 0) {
            Refuse("week", "every N weeks together with a month or an interval of months or years");
        }
        p.frequency = Frequency::Weekly;
        p.interval = s.GetWeek();
        p.weekStart = 0;
        p.weekdays = p.weekdays != 0 ? p.weekdays : 0x7Fu;
    } else if (p.weekdays != 0) {
        byMonthOrYear(Frequency::Weekly);
    } else if (yearly != 0 || monthly != 0) {
        Refuse(yearly != 0 ? "year" : "month", "every day of every N-th period");
    }
    TimesFromSchedule(s, p);
    // The checks of the other way: a schedule whose days lie further apart than its own
    // search ends where the rule goes on.
    constexpr Vocabulary kScheduleWords = {"hour",  "minute", "second",     "interval",
                                           "month", "day",    "day of week"};
    ToSchedule(p, kScheduleWords);
    return p;
}

}  // namespace ZelvorInterop::internal
