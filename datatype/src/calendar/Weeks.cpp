// Weeks of the month, days of the week and of the year, quarters, and the setters that
// move a date by weeks and weekdays.
#include <cstdint>
#include <ctime>

#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

using internal::kMsPerDay;
using internal::kMsPerWeek;

namespace {

// The weekday of fields out of range (a refused load, say) is the platform's: mktime
// normalises them through the year of the same pattern. -1 if it fails.
[[gnu::noinline]] int PlatformWeekday(unsigned short year, short month, short day, short hour,
                                      short minute, short second) {
    tm broken{};
    internal::ToPlatformFields(year, month, day, hour, minute, second, broken);
    return static_cast<int32_t>(::mktime(&broken)) == -1 ? -1 : broken.tm_wday;
}

// Fills the week and day-of-week caches from the fields. File-local and inline, so that
// the getters compute a real date's weekday without a further call: plain arithmetic,
// which gives what the platform would give through the year of the same pattern.
inline void FillWeekCaches(unsigned short year, short month, short day, short hour, short minute,
                           short second, short& week, short& dayOfWeek) {
    const int weekday = internal::FieldsInRange(year, month, day, hour, minute, second)
                            ? internal::DayOfWeek(internal::YmdToDays(year, month, day))
                            : PlatformWeekday(year, month, day, hour, minute, second);
    if (weekday < 0) {
        return;
    }
    dayOfWeek = static_cast<short>(weekday);
    week = static_cast<short>(internal::WeekOfMonth(day, weekday));
}

}  // namespace

void DateTime::SetWeekAndDayOfWeek() const noexcept {
    FillWeekCaches(mYear, mMonth, mDay, mHour, mMinute, mSecond, mWeek, mDayOfWeek);
}

int DateTime::GetWeek() const noexcept {
    if (mWeek == -1) {
        FillWeekCaches(mYear, mMonth, mDay, mHour, mMinute, mSecond, mWeek, mDayOfWeek);
    }
    return mWeek;
}

int DateTime::GetDayOfWeek() const noexcept {
    if (mDayOfWeek == -1) {
        FillWeekCaches(mYear, mMonth, mDay, mHour, mMinute, mSecond, mWeek, mDayOfWeek);
    }
    return mDayOfWeek;
}

int DateTime::GetDayOfYear() const noexcept {
    if (internal::FieldsInRange(mYear, mMonth, mDay, mHour, mMinute, mSecond)) {
        return internal::kDaysBeforeMonth[mMonth - 1] +
               (mMonth > 2 && internal::IsLeap(mYear) ? 1 : 0) + mDay;
    }
    tm broken{};
    if (static_cast<int32_t>(mktime(broken)) == -1) {
        return 0;
    }
    return broken.tm_yday + 1;
}

int DateTime::GetDaysInMonth() const noexcept {
    // A month out of range (only a refused load leaves one) reads as its nearest month.
    const int month = mMonth < 1 ? 1 : (mMonth > 12 ? 12 : mMonth);
    return internal::MonthLength(mYear, month);
}

int DateTime::GetQuarter() const noexcept {
    return (mMonth - 1) / 3 + 1;
}

int DateTime::GetFirstMonthOfQuater() const noexcept {
    return mMonth - (mMonth - 1) % 3;
}

int DateTime::WeekFromDayAndDayOfWeek(int day, int dayOfWeek) noexcept {
    return internal::WeekOfMonth(day, dayOfWeek);
}

bool DateTime::PutWeek(int week) noexcept {
    if (week < 1 || week > 6) {
        return false;
    }
    const int current = GetWeek();
    mWeek = mDayOfWeek = -1;
    const DateTime moved(MillisecondsToDATE(ToMilliseconds(*this) + (week - current) * kMsPerWeek));
    // A week the month lacks is refused rather than run into the next month.
    if (moved.mMonth != mMonth) {
        return false;
    }
    *this = moved;
    return true;
}

bool DateTime::PutDayOfWeek(int dayOfWeek, bool crossMonth) noexcept {
    if (dayOfWeek < 0 || dayOfWeek > 6) {
        return false;
    }
    const DateTime moved(
        MillisecondsToDATE(ToMilliseconds(*this) + (dayOfWeek - GetDayOfWeek()) * kMsPerDay));
    if (moved.mMonth != mMonth && !crossMonth) {
        return false;
    }
    *this = moved;
    return true;
}

bool DateTime::PutWeekAndDayOfWeek(int week, int dayOfWeek) noexcept {
    // A weekday outside 0..6 has no occurrence to find; refused.
    if (dayOfWeek < 0 || dayOfWeek > 6) {
        return false;
    }
    const int weekday = GetDayOfWeek();
    const int length = GetDaysInMonth();
    const int firstWeekday = (weekday + 7 - (mDay - 1) % 7) % 7;  // weekday of the 1st
    // When the month starts after that weekday, its first occurrence is in row 2.
    const int lateStart = firstWeekday > dayOfWeek ? 1 : 0;
    if (week < 0) {
        // k + 1 occurrences; -1 gives occurrence k, the last but one.
        const int k = (firstWeekday - 1 - (dayOfWeek + 7 * lateStart) + length) / 7;
        week += k + 1;
        if (week <= 0) {
            return false;
        }
    }
    const int row = week + lateStart;
    const int day = mDay + (dayOfWeek - weekday) + 7 * (row - GetWeek());
    // Week 0 lands before the 1st; also refused, like a day past the month's end.
    if (day < 1 || day > length) {
        return false;
    }
    mDay = static_cast<short>(day);
    mWeek = static_cast<short>(row);
    mDayOfWeek = static_cast<short>(dayOfWeek);
    return true;
}

}  // namespace ZelvorDataType
