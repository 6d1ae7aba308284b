// Five-field cron texts in and out.
#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <sstream>

#include <fmt/format.h>

#include "Pattern.h"

namespace ZelvorInterop {

using namespace internal;
using ZelvorDataType::TimeSeries;
using ZelvorDataType::TimeSeriesPtr;

namespace {

constexpr Vocabulary kCronWords = {"hour",  "minute",       "second",     "interval",
                                   "month", "day of month", "day of week"};

struct FieldRange {
    const char* name;
    int low;
    int high;
    const char* const* names;  // the names of low, low + 1, ... or null
};

constexpr const char* kMonthNames[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                       "jul", "aug", "sep", "oct", "nov", "dec"};
constexpr const char* kDayNames[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat", "sun"};

constexpr std::array<FieldRange, 5> kFields = {{{"minute", 0, 59, nullptr},
                                                {"hour", 0, 23, nullptr},
                                                {"day of month", 1, 31, nullptr},
                                                {"month", 1, 12, kMonthNames},
                                                {"day of week", 0, 7, kDayNames}}};

struct CronField {
    std::uint64_t set = 0;
    bool starred = false;  // begins with `*`, which decides how cron joins the two day fields
    bool stepped = false;  // `*/N` with N above 1
};

int Value(const std::string& text, const FieldRange& range) {
    if (range.names != nullptr && text.size() == 3 &&
        std::isalpha(static_cast<unsigned char>(text[0]))) {
        std::string lower = text;
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        for (int i = 0; i <= range.high - range.low; ++i) {
            if (lower == range.names[i]) {
                return range.low + i;
            }
        }
    }
    if (text.empty() || text.size() > 2 ||
        !std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c); })) {
        Refuse(range.name, fmt::format("'{}' is not a value", text));
    }
    const int v = std::stoi(text);
    if (v < range.low || v > range.high) {
        Refuse(range.name, fmt::format("{} is outside {} to {}", v, range.low, range.high));
    }
    return v;
}

CronField ParseField(const std::string& text, const FieldRange& range) {
    CronField field;
    field.starred = !text.empty() && text[0] == '*';
    std::stringstream items(text);
    std::string item;
    while (std::getline(items, item, ',')) {
        int step = 1;
        const std::size_t slash = item.find('/');
        if (slash != std::string::npos) {
            step = Value(item.substr(slash + 1), FieldRange{range.name, 1, 99, nullptr});
            item.resize(slash);
        }
        int low = range.low;
        int high = range.high;
        if (item != "*") {
            const std::size_t dash = item.find('-');
            low = Value(item.substr(0, dash), range);
            // `5/15` runs from 5 to the end of the range, a single value is itself.
            high = dash != std::string::npos    ? Value(item.substr(dash + 1), range)
                   : slash != std::string::npos ? range.high
                                                : low;
            if (high < low) {
                Refuse(range.name, fmt::format("the range {} runs backwards", item));
            }
        } else {
            field.stepped = field.stepped || step > 1;
        }
        for (int v = low; v <= high; v += step) {
            field.set |= std::uint64_t{1} << v;
        }
    }
    if (field.set == 0) {
        Refuse(range.name, "empty");
    }
    return field;
}

bool Full(std::uint64_t set, int low, int high) {
    for (int v = low; v <= high; ++v) {
        if ((set >> v & 1u) == 0) {
            return false;
        }
    }
    return true;
}

// One value of a set of exactly one, else 0.
int Single(std::uint64_t set) {
    return std::has_single_bit(set) ? std::countr_zero(set) : 0;
}

// The shortest cron form of a set: `*`, `*/N`, `a-b`, `a-b/N` or a list; days of the
// week read better as a list than as a step.
std::string FormatSet(std::uint64_t set, int low, int high, bool steps = true) {
    std::vector<int> m = Members(set, high + 1);
    if (static_cast<int>(m.size()) == high - low + 1) {
        return "*";
    }
    if (m.size() >= 3) {
        const int step = m[1] - m[0];
        bool even = true;
        for (std::size_t i = 1; i < m.size(); ++i) {
            even = even && m[i] - m[i - 1] == step;
        }
        if (even && (steps || step == 1)) {
            if (m.front() == low && m.back() + step > high) {
                return fmt::format("*/{}", step);
            }
            return step == 1 ? fmt::format("{}-{}", m.front(), m.back())
                             : fmt::format("{}-{}/{}", m.front(), m.back(), step);
        }
    }
    return fmt::format("{}", fmt::join(m, ","));
}

}  // namespace

TimeSeriesPtr FromCron(std::string_view text) {
    std::stringstream in{std::string(text)};
    std::vector<std::string> parts;
    for (std::string part; in >> part;) {
        parts.push_back(part);
    }
    if (parts.size() != 5 || parts[0][0] == '@') {
        Refuse("cron text", fmt::format("{} fields; cron here has five (minute hour day-of-month "
                                        "month day-of-week), without seconds, years or @ names",
                                        parts.size()));
    }
    std::array<CronField, 5> f;
    for (std::size_t i = 0; i < 5; ++i) {
        f[i] = ParseField(parts[i], kFields[i]);
    }
    // Sunday may be 0 or 7.
    if ((f[4].set >> 7 & 1u) != 0) {
        f[4].set = (f[4].set & 0x7Fu) | 1u;
    }
    Pattern p;
    p.minutes = f[0].set;
    p.hours = f[1].set;
    p.seconds = 1;
    const bool dayOfMonthAll = f[2].starred && !f[2].stepped;
    const bool weekdaysAll = Full(f[4].set, 0, 6);
    if (f[2].stepped) {
        Refuse("day of month",
               "*/N restarts at the 1st of every month; a schedule's every N days "
               "runs on across months");
    }
    if (!f[2].starred && !f[4].starred) {
        Refuse("day of month",
               "restricted together with the day of week: cron runs on a day that "
               "matches either, a schedule on one that matches both");
    }
    if (!dayOfMonthAll && !(f[4].starred && weekdaysAll)) {
        Refuse("day of week",
               "a stepped day of week with a day of month: cron daemons disagree on "
               "whether both or either must match");
    }
    if (!f[3].starred && !std::has_single_bit(f[3].set)) {
        Refuse("month", "several months; a schedule fixes one month or none");
    }
    if (f[3].starred && !Full(f[3].set, 1, 12)) {
        Refuse("month", "a step of months restarts every January; a schedule's interval runs on");
    }
    p.month = f[3].starred ? 0 : Single(f[3].set);
    if (!dayOfMonthAll) {
        if (!std::has_single_bit(f[2].set)) {
            Refuse("day of month", "several days of the month; a schedule fixes one or none");
        }
        p.monthDay = Single(f[2].set);
        p.frequency = p.month != 0 ? Frequency::Yearly : Frequency::Monthly;
    } else if (!weekdaysAll) {
        p.weekdays = static_cast<unsigned int>(f[4].set);
        p.frequency = Frequency::Weekly;
    }
    return ToSchedule(p, kCronWords);
}

std::string ToCron(const TimeSeries& schedule) {
    const Pattern p = FromSchedule(schedule);
    if (p.interval > 1) {
        Refuse(PeriodName(p.frequency),
               fmt::format("every {}: cron's steps restart with each month or year, so it has no "
                           "interval that runs on",
                           p.interval));
    }
    if (p.ordinal != 0) {
        Refuse("week", "cron has no n-th weekday of the month");
    }
    if (p.seconds != 1) {
        Refuse("second", "cron runs on whole minutes");
    }
    return fmt::format("{} {} {} {} {}", FormatSet(p.minutes, 0, 59), FormatSet(p.hours, 0, 23),
                       p.monthDay != 0 ? fmt::format("{}", p.monthDay) : "*",
                       p.month != 0 ? fmt::format("{}", p.month) : "*",
                       p.weekdays != 0 ? FormatSet(p.weekdays, 0, 6, false) : "*");
}

}  // namespace ZelvorInterop
