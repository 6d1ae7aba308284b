// Calendar and working-day arithmetic, order, and rounding to whole seconds.
#include <cstdint>

#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

namespace {

using internal::kMsPerDay;
using internal::kMsPerWeekend;

// a + b held at the ends of 64 bits. Far past either end of the calendar the result
// clamps through DateTime(double) anyway, so a sum that would overflow clamps too.
long long SaturatingAdd(long long a, long long b) {
    long long sum;
    if (__builtin_add_overflow(a, b, &sum)) {
        return b > 0 ? INT64_MAX : INT64_MIN;
    }
    return sum;
}

long long SaturatingSub(long long a, long long b) {
    long long difference;
    if (__builtin_sub_overflow(a, b, &difference)) {
        return b < 0 ? INT64_MAX : INT64_MIN;
    }
    return difference;
}

DateTime FromMilliseconds(long long milliseconds) {
    return DateTime(DateTime::MillisecondsToDATE(milliseconds));
}

// Where a working-day walk starts: a Saturday or Sunday counts as the Monday after it,
// at the same time of day.
struct WorkingStart {
    long long milliseconds;
    int weekday;
};

WorkingStart StartOf(const DateTime& value) {
    WorkingStart start{DateTime::ToMilliseconds(value), value.GetDayOfWeek()};
    if (start.weekday == 0) {
        start.milliseconds += kMsPerDay;
        start.weekday = 1;
    } else if (start.weekday == 6) {
        start.milliseconds += 2 * kMsPerDay;
        start.weekday = 1;
    }
    return start;
}

long long TimeOfDay(const DateTime& value) {
    return internal::TimeOfDayMs(value.GetHour(), value.GetMinute(), value.GetSecond(),
                                 value.GetMillisecond());
}

// The whole days of a span (its total of days, an int) and the milliseconds past them.
struct SpanParts {
    long long total;
    long long days;
    long long rest;
};

SpanParts PartsOf(const TimeSpan& span) {
    const long long total = span.GetTotalMilliseconds();
    const long long days = span.GetTotalDays();
    return SpanParts{total, days, internal::WrapSub(total, days * kMsPerDay)};
}

}  // namespace

DateTime DateTime::operator+(const TimeSpan& span) const noexcept {
    return FromMilliseconds(SaturatingAdd(ToMilliseconds(*this), span.GetTotalMilliseconds()));
}

DateTime DateTime::operator-(const TimeSpan& span) const noexcept {
    return FromMilliseconds(SaturatingSub(ToMilliseconds(*this), span.GetTotalMilliseconds()));
}

// Both counts lie within a few 10^15, so the difference cannot overflow.
TimeSpan DateTime::operator-(const DateTime& other) const noexcept {
    return TimeSpan(ToMilliseconds(*this) - ToMilliseconds(other));
}

DateTime DateTime::Add(const TimeSpan& span) const noexcept {
    WorkingStart start = StartOf(*this);
    SpanParts parts = PartsOf(span);
    // The part below a day may run past midnight into one more day.
    if (internal::WrapAdd(parts.rest, TimeOfDay(*this)) > kMsPerDay - 1) {
        ++parts.days;
    }
    const long long weeks = parts.days / 5;
    const long long extra = parts.days - 5 * weeks;
    long long t = SaturatingAdd(start.milliseconds, parts.total);
    t = SaturatingAdd(t, weeks * kMsPerWeekend);
    // The days left over walk past a Friday: step over that weekend too.
    if (extra + start.weekday > 5) {
        t = SaturatingAdd(t, kMsPerWeekend);
    }
    return FromMilliseconds(t);
}

DateTime DateTime::Minus(const TimeSpan& span) const noexcept {
    WorkingStart start = StartOf(*this);
    SpanParts parts = PartsOf(span);
    // The part below a day may reach back past midnight into the day before.
    if (parts.rest > TimeOfDay(*this)) {
        ++parts.days;
    }
    const long long weeks = parts.days / 5;
    const long long extra = parts.days - 5 * weeks;
    long long t = SaturatingSub(start.milliseconds, parts.total);
    t = SaturatingSub(t, weeks * kMsPerWeekend);
    // Walking back as many days as the weekday number, or more, passes a weekend.
    if (start.weekday <= extra) {
        t = SaturatingSub(t, kMsPerWeekend);
    }
    return FromMilliseconds(t);
}

TimeSpan DateTime::Span(const DateTime& other) const noexcept {
    const WorkingStart a = StartOf(*this);
    const WorkingStart b = StartOf(other);
    long long difference = a.milliseconds - b.milliseconds;
    const long long weeks = difference / kMsPerDay / 7;
    difference -= weeks * kMsPerWeekend;
    if (a.weekday < b.weekday) {
        difference -= kMsPerWeekend;
    }
    return TimeSpan(difference);
}

int DateTime::DateTimeOrder(const DateTime& first, const DateTime& second) noexcept {
    // Year, month, day, hour, minute, second, millisecond: the first difference decides.
    const int pairs[7][2] = {{first.mYear, second.mYear},
                             {first.mMonth, second.mMonth},
                             {first.mDay, second.mDay},
                             {first.mHour, second.mHour},
                             {first.mMinute, second.mMinute},
                             {first.mSecond, second.mSecond},
                             {first.mMillisecond, second.mMillisecond}};
    for (const auto& pair : pairs) {
        if (pair[0] != pair[1]) {
            return pair[0] > pair[1] ? 1 : -1;
        }
    }
    return 0;
}

bool DateTime::operator<(const DateTime& other) const noexcept {
    return DateTimeOrder(*this, other) < 0;
}
bool DateTime::operator>(const DateTime& other) const noexcept {
    return DateTimeOrder(*this, other) > 0;
}
bool DateTime::operator<=(const DateTime& other) const noexcept {
    return DateTimeOrder(*this, other) <= 0;
}
bool DateTime::operator>=(const DateTime& other) const noexcept {
    return DateTimeOrder(*this, other) >= 0;
}
bool DateTime::operator==(const DateTime& other) const noexcept {
    return DateTimeOrder(*this, other) == 0;
}
bool DateTime::operator!=(const DateTime& other) const noexcept {
    return DateTimeOrder(*this, other) != 0;
}

DateTime DateTime::RoundToSeconds() const noexcept {
    DateTime rounded(*this);
    if (rounded.mMillisecond <= 499) {
        rounded.mMillisecond = 0;
        return rounded;
    }
    rounded.mMillisecond = 0;
    rounded.mWeek = rounded.mDayOfWeek = -1;
    // Carry field by field, like an odometer; the year wraps in its 16 bits.
    if (++rounded.mSecond == 60) {
        rounded.mSecond = 0;
        if (++rounded.mMinute == 60) {
            rounded.mMinute = 0;
            if (++rounded.mHour == 24) {
                rounded.mHour = 0;
                ++rounded.mDay;
            }
        }
    }
    if (rounded.mDay > internal::MonthLength(rounded.mYear, rounded.mMonth)) {
        rounded.mDay = 1;
        if (++rounded.mMonth == 13) {
            rounded.mMonth = 1;
            ++rounded.mYear;
        }
    }
    return rounded;
}

}  // namespace ZelvorDataType
