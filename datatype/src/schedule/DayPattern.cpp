// Which calendar days belong to a schedule: the test of one day, the first matching
// day from a date and the next one after a day of the series.
#include <algorithm>

#include "schedule/ScheduleRules.h"

namespace ZelvorDataType::internal {

namespace {

// Whole days from `anchor` to `day`, truncated toward zero like TimeSpan::GetTotalDays.
long long DayDistance(const WallTime& anchor, const WallTime& day) {
    const long long milliseconds =
        (static_cast<long long>(day.date.number) - anchor.date.number) * kMsPerDay +
        (day.time - anchor.time);
    return milliseconds / kMsPerDay;
}

// A day count divided by 7 and rounded up; integer division already rounds a negative
// quotient up.
long long WeeksRoundedUp(long long days) {
    return days > 0 ? (days + 6) / 7 : days / 7;
}

}  // namespace

bool ScheduleRules::YearPasses(const WallTime* anchor, int year) const {
    const TimeSeriesImpl& r = mRecord;
    if (r.mYearRecurrence == RECURRENCE_FIXED) {
        return r.mYear == year;
    }
    if (r.mYearRecurrence == RECURRENCE_EVERY && anchor != nullptr && r.mYear > 0) {
        return (year - anchor->date.year) % r.mYear == 0;
    }
    return true;
}

bool ScheduleRules::MonthPasses(const WallTime* anchor, const CivilDay& day) const {
    const TimeSeriesImpl& r = mRecord;
    if (r.mMonthRecurrence == RECURRENCE_FIXED) {
        return r.mMonth == day.month;
    }
    if (r.mMonthRecurrence == RECURRENCE_EVERY && anchor != nullptr && r.mMonth > 0) {
        const int months = (day.month - anchor->date.month) + 12 * (day.year - anchor->date.year);
        return months % r.mMonth == 0;
    }
    return true;
}

bool ScheduleRules::DayStagePasses(const WallTime* anchor, const WallTime& day) const {
    const TimeSeriesImpl& r = mRecord;
    const CivilDay& d = day.date;
    if (r.mDayRecurrence == RECURRENCE_EVERY) {
        return anchor == nullptr || r.mDay <= 0 || DayDistance(*anchor, day) % r.mDay == 0;
    }
    if (r.mDayRecurrence == RECURRENCE_FIXED) {
        return r.mDay == d.day;
    }
    if (r.mDayOfWeekRecurrence == RECURRENCE_FIXED &&
        ((static_cast<unsigned int>(r.mDayOfWeek) >> d.weekday) & 1u) == 0) {
        return false;
    }
    if (r.mWeekRecurrence == RECURRENCE_FIXED) {
        // Seven-day blocks of the month, from its start (1 is days 1-7) or, for a value
        // below 1, from its end (-1 is the last seven days); 0 matches nothing.
        if (r.mWeek >= 1) {
            return r.mWeek == (d.day + 6) / 7;
        }
        return (d.DaysInThisMonth() - d.day + 7) / 7 + r.mWeek == 0;
    }
    if (r.mWeekRecurrence == RECURRENCE_EVERY && anchor != nullptr && r.mWeek > 0 &&
        WeeksRoundedUp(DayDistance(*anchor, day)) % r.mWeek != 0) {
        // Off the week spacing, a day still passes when it lies later in the anchor's
        // Sunday-to-Saturday week than the anchor itself.
        return d.weekday > anchor->date.weekday;
    }
    return true;
}

bool ScheduleRules::DayMatches(const WallTime* anchor, const WallTime& day) const {
    return DayStagePasses(anchor, day) && MonthPasses(anchor, day.date) &&
           YearPasses(anchor, day.date.year);
}

bool ScheduleRules::CanNeverMatchADay() const {
    const TimeSeriesImpl& r = mRecord;
    if (r.mYearRecurrence == RECURRENCE_FIXED && (r.mYear < 0 || r.mYear > 65535)) {
        return true;
    }
    const bool monthFixed = r.mMonthRecurrence == RECURRENCE_FIXED;
    if (monthFixed && (r.mMonth < 1 || r.mMonth > 12)) {
        return true;
    }
    if (r.mDayRecurrence == RECURRENCE_FIXED) {
        // The longest month of the fixed month: 29 for February, leap years included.
        const int longest = monthFixed ? MonthLength(2000, r.mMonth) : 31;
        return r.mDay < 1 || r.mDay > longest;
    }
    if (r.mDayRecurrence == RECURRENCE_EVERY) {
        return false;
    }
    if (r.mDayOfWeekRecurrence == RECURRENCE_FIXED && (r.mDayOfWeek & 0x7F) == 0) {
        return true;
    }
    return r.mWeekRecurrence == RECURRENCE_FIXED && (r.mWeek == 0 || r.mWeek > 5 || r.mWeek < -5);
}

long long ScheduleRules::Horizon() const {
    // Eight years of 366 days; year EVERY N widens it N times. In 64 bits, so a large N
    // can't wrap it negative; the walk ends at the last day anyway.
    constexpr long long kDays = 8LL * 366;
    return mRecord.mYearRecurrence == RECURRENCE_EVERY ? kDays * mRecord.mYear : kDays;
}

void ScheduleRules::JumpToFixedYear(CivilDay& day) const {
    // Month and day stay; 29 February becomes the 28th in a common year. The caller has
    // made sure the year is within 0..65535.
    const int year = mRecord.mYear;
    day = DayFromDate(year, day.month, std::min(day.day, MonthLength(year, day.month)));
}

bool ScheduleRules::Search(const WallTime* anchor, WallTime& work) const {
    // Tests the days after `work`, up to the horizon, one by one. The year and month
    // stages depend on the year and month alone, so when one of them fails the days up
    // to the end of that year or month are counted as tested and passed over: the
    // answer is that of the day-by-day walk, at a fraction of its cost.
    long long left = Horizon();
    if (left <= 0) {
        return false;
    }
    while (left > 0) {
        if (!AdvanceDay(work.date)) {
            return false;
        }
        --left;
        const CivilDay& d = work.date;
        int lastOfBlock = 0;
        if (!YearPasses(anchor, d.year)) {
            lastOfBlock = DayFromDate(d.year, 12, 31).number;
        } else if (!MonthPasses(anchor, d)) {
            lastOfBlock = d.number + d.DaysInThisMonth() - d.day;
        } else if (DayStagePasses(anchor, work)) {
            return true;
        } else {
            continue;
        }
        const long long skipped = static_cast<long long>(lastOfBlock) - d.number;
        if (skipped >= left || lastOfBlock >= kLastReachableDayNumber) {
            return false;
        }
        left -= skipped;
        work.date = DayFromNumber(lastOfBlock);
    }
    return false;
}

bool ScheduleRules::FirstDay(WallTime& day) const {
    if (mNoDay) {
        return false;
    }
    WallTime work = day;
    const bool found = DayMatches(nullptr, work);
    work.time = 0;
    if (!found) {
        if (mRecord.mYearRecurrence == RECURRENCE_FIXED && mRecord.mYear > work.date.year) {
            JumpToFixedYear(work.date);
        }
        if (!Search(nullptr, work)) {
            return false;
        }
    }
    day = work;
    return true;
}

bool ScheduleRules::NextDay(const WallTime& previous, WallTime& next) const {
    if (mNoDay) {
        return false;
    }
    // The day right after `previous` keeps its time of day; a day found further on
    // comes back at midnight, so a series restarts its day after a gap.
    WallTime work = previous;
    if (!AdvanceDay(work.date)) {
        return false;
    }
    if (!DayMatches(&previous, work)) {
        if (mRecord.mYearRecurrence == RECURRENCE_FIXED && mRecord.mYear > work.date.year) {
            JumpToFixedYear(work.date);
        }
        if (!Search(&previous, work)) {
            return false;
        }
        work.time = 0;
    }
    next = work;
    return true;
}

}  // namespace ZelvorDataType::internal
