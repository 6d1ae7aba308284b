#pragma once

// The common ground of both texts: one recurrence as a rule would state it, with its
// days and its times of day. Each text reads into a Pattern and is written from one;
// the Pattern alone knows how a schedule's fields say the same thing.

#include <cstdint>
#include <string>
#include <vector>

#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorInterop/Interop.h>

namespace ZelvorInterop::internal {

enum class Frequency { Daily, Weekly, Monthly, Yearly };

struct Pattern {
    Frequency frequency = Frequency::Daily;
    int interval = 1;
    int month = 0;              // 1..12; 0 is every month
    int monthDay = 0;           // 1..31; 0 is none
    unsigned int weekdays = 0;  // bit 0 Sunday .. bit 6 Saturday; 0 is none
    int ordinal = 0;            // with weekdays: the n-th of the month (-5..5), 0 all
    int weekStart = 1;          // 0 Sunday .. 6 Saturday
    std::uint64_t hours = 0;    // bit sets of the times of day
    std::uint64_t minutes = 0;
    std::uint64_t seconds = 0;
};

// The names the parts of a Pattern go by in one text, for the messages.
struct Vocabulary {
    const char* hour;
    const char* minute;
    const char* second;
    const char* interval;
    const char* month;
    const char* monthDay;
    const char* weekday;
};

[[noreturn]] void Refuse(const std::string& part, const std::string& why);

std::vector<int> Members(std::uint64_t set, int range);

// "day", "week", "month" or "year": one period of the frequency, and the schedule field
// that steps it.
const char* PeriodName(Frequency frequency);

// True when the schedule's intervals and the rule's are anchored differently, so that
// the two agree for some starts only.
bool DependsOnStart(const Pattern& pattern);

// The schedule of a complete pattern (every part given). Throws for what no schedule
// says; does not look at DependsOnStart.
ZelvorDataType::TimeSeriesPtr ToSchedule(const Pattern& pattern, const Vocabulary& words);

// Throws unless the schedule of `pattern`, begun at `start` (UTC), counts its interval
// from DTSTART's period or a multiple of the interval on.
void CheckStart(const Pattern& pattern, const ZelvorDataType::TimeSeries& schedule,
                const ZelvorDataType::DateTime& start, const char* part);

// The pattern of a schedule; throws for what no rule says (the cron writer refuses
// more on top).
Pattern FromSchedule(const ZelvorDataType::TimeSeries& schedule);

}  // namespace ZelvorInterop::internal
