#include <climits>

#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/TimeSpan.h>

#include "calendar/CivilCalendar.h"
#include "relative/Moves.h"

namespace ZelvorDataType {
namespace internal {

namespace {

// Milliseconds of one exact unit, 0 for the calendar units and for anything unknown.
constexpr long long UnitMilliseconds(TIME_GRANULARITY unit) noexcept {
    switch (unit) {
        case TIME_GRANULARITY_SECOND:
            return 1000;
        case TIME_GRANULARITY_MINUTE:
            return 60000;
        case TIME_GRANULARITY_HOUR:
            return 3600000;
        case TIME_GRANULARITY_DAY:
            return kMsPerDay;
        case TIME_GRANULARITY_WEEK:
            return 7 * kMsPerDay;
        default:
            return 0;
    }
}

// Year first, then month, so that a day cut short by the year step (February 29 to 28)
// stays short through the month step.
void MoveMonths(DateTime& date, long long n) noexcept {
    if (n >= 0) {
        const long long years = n / 12;
        const int months = static_cast<int>(n - 12 * years);
        PutWideYear(date, date.GetYear() - years);
        if (date.GetMonth() > months) {
            date.PutMonth(date.GetMonth() - months);
        } else {
            PutWideYear(date, date.GetYear() - 1LL);
            date.PutMonth(date.GetMonth() + 12 - months);
        }
        return;
    }
    const long long ahead = -n;
    const long long years = ahead / 12;
    const int months = static_cast<int>(ahead - 12 * years);
    PutWideYear(date, date.GetYear() + years);
    if (12 - date.GetMonth() >= months) {
        date.PutMonth(date.GetMonth() + months);
    } else {
        PutWideYear(date, date.GetYear() + 1LL);
        date.PutMonth(date.GetMonth() + months - 12);
    }
}

}  // namespace

void PutWideYear(DateTime& date, long long year) noexcept {
    if (year >= 0 && year <= INT_MAX) {
        date.PutYear(static_cast<int>(year));
    }
}

void MoveUnits(DateTime& date, long long n, TIME_GRANULARITY unit) noexcept {
    // A resolution makes a dozen moves, most of them by 0; each real one costs a trip
    // through the serial scale, or the recomputation of the day of the week later.
    if (n == 0) {
        return;
    }
    if (unit == TIME_GRANULARITY_YEAR) {
        PutWideYear(date, date.GetYear() - n);
        return;
    }
    if (unit == TIME_GRANULARITY_MONTH) {
        MoveMonths(date, n);
        return;
    }
    const long long unitMs = UnitMilliseconds(unit);
    if (unitMs == 0) {
        return;
    }
    // |n| stays below 2^33 for every caller (a negated int plus the weekend days of a
    // business-day walk), so the product stays far inside 64 bits.
    date = date - TimeSpan(n * unitMs);
}

long long BusinessDaysToCalendarDays(const DateTime& date, long long n, bool forward) noexcept {
    const int weekday = date.GetDayOfWeek();  // 0 Sunday .. 6 Saturday
    long long days = 0;                       // into the past; negative goes ahead
    if (n == 0) {
        if (weekday == 6) {
            days = forward ? -2 : 1;
        } else if (weekday == 0) {
            days = forward ? -1 : 2;
        }
    } else if (n > 0) {
        // Each full five business days span a week; the rest may cross one weekend.
        const long long weeks = n / 5;
        const long long rest = n - 5 * weeks;
        days = n + 2 * weeks;
        if (weekday == 0) {
            days += 1;
        }
        if (!(weekday > rest)) {
            days += 2;
        }
    } else {
        const long long ahead = -n;
        const long long weeks = ahead / 5;
        const long long rest = ahead - 5 * weeks;
        long long forwardDays = ahead + 2 * weeks;
        if (weekday == 6) {
            forwardDays += 2;
        }
        if (weekday == 0) {
            forwardDays += 1;
        }
        if (weekday < 6 && rest + weekday > 5) {
            forwardDays += 2;
        }
        days = -forwardDays;
    }
    return days;
}

void MoveBusinessDays(DateTime& date, long long n, bool forward) noexcept {
    MoveUnits(date, BusinessDaysToCalendarDays(date, n, forward), TIME_GRANULARITY_DAY);
}

}  // namespace internal

void DynamicTime::MoveNthTimePointBefore(DateTime& date, int n, TIME_GRANULARITY unit) noexcept {
    if (n == 0 && unit != TIME_GRANULARITY_MONTH && unit != TIME_GRANULARITY_YEAR &&
        unit >= TIME_GRANULARITY_SECOND && unit <= TIME_GRANULARITY_WEEK) {
        // Even a move by nothing comes out of the millisecond scale, as every exact move
        // does: the same fields, with the zone words cleared.
        date = date - TimeSpan(0);
        return;
    }
    internal::MoveUnits(date, n, unit);
}

void DynamicTime::MoveNthTimePointBefore_BusinessDay(DateTime& date, int n,
                                                     bool forward) const noexcept {
    // The day count can pass the range of int (n near its limits, plus the weekends).
    const long long days = internal::BusinessDaysToCalendarDays(date, n, forward);
    if (days == 0) {
        date = date - TimeSpan(0);
    } else {
        internal::MoveUnits(date, days, TIME_GRANULARITY_DAY);
    }
}

}  // namespace ZelvorDataType
