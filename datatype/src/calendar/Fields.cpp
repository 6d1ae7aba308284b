// DateTime construction from fields, copying, normalisation and the field setters.
#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

using internal::IsLeap;

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, int millisecond,
                   int zoneMinutes, int zoneSpare) noexcept
    : mYear(static_cast<unsigned short>(year)),
      mMonth(static_cast<short>(month)),
      mDay(static_cast<short>(day)),
      mHour(static_cast<short>(hour)),
      mMinute(static_cast<short>(minute)),
      mSecond(static_cast<short>(second)),
      mMillisecond(static_cast<short>(millisecond)),
      mWeek(-1),
      mDayOfWeek(-1),
      mZoneMinutes(static_cast<short>(zoneMinutes)),
      mZoneSpare(static_cast<short>(zoneSpare)) {
    Sanitize(true);
}

DateTime::DateTime(const DateTime& other) noexcept
    : mYear(other.mYear),
      mMonth(other.mMonth),
      mDay(other.mDay),
      mHour(other.mHour),
      mMinute(other.mMinute),
      mSecond(other.mSecond),
      mMillisecond(other.mMillisecond),
      mWeek(other.mWeek),
      mDayOfWeek(other.mDayOfWeek),
      mZoneMinutes(other.mZoneMinutes),
      mZoneSpare(other.mZoneSpare) {
    Sanitize(true);
}

DateTime& DateTime::operator=(const DateTime& other) noexcept {
    if (this != &other) {
        mYear = other.mYear;
        mMonth = other.mMonth;
        mDay = other.mDay;
        mHour = other.mHour;
        mMinute = other.mMinute;
        mSecond = other.mSecond;
        mMillisecond = other.mMillisecond;
        mWeek = other.mWeek;
        mDayOfWeek = other.mDayOfWeek;
        mZoneMinutes = other.mZoneMinutes;
        mZoneSpare = other.mZoneSpare;
        Sanitize(true);
    }
    return *this;
}

int DateTime::Sanitize(bool clamp) noexcept {
    // Nearly every call finds a real date and time; let those through at once. February
    // 29 and everything out of range take the steps below.
    if (mMonth >= 1 && mMonth <= 12 && mDay >= 1 && mDay <= internal::kDaysInMonth[mMonth - 1] &&
        static_cast<unsigned short>(mHour) < 24 && static_cast<unsigned short>(mMinute) < 60 &&
        static_cast<unsigned short>(mSecond) < 60 &&
        static_cast<unsigned short>(mMillisecond) < 1000) {
        return 0;
    }
    // 24:00:00 is midnight of the next day; the milliseconds ride along.
    const bool carry = mHour == 24 && mMinute == 0 && mSecond == 0;
    if (carry) {
        mHour = 0;
    }

    // Each field is repaired on its own, with no rollover into the next unit.
    // A refusal leaves the offending field as it was.
    const auto fix = [clamp](short& field, int low, int high) {
        if (field >= low && field <= high) {
            return true;
        }
        if (!clamp) {
            return false;
        }
        field = static_cast<short>(field < low ? low : high);
        return true;
    };
    if (!fix(mMonth, 1, 12)) {
        return -1;
    }
    if (mDay < 1) {
        if (!clamp) {
            return -1;
        }
        mDay = 1;
    } else if (mDay > internal::MonthLength(mYear, mMonth)) {
        // Never a refusal: April 31 is April 30 in both modes.
        mDay = static_cast<short>(internal::MonthLength(mYear, mMonth));
    }
    if (!fix(mHour, 0, 23) || !fix(mMinute, 0, 59) || !fix(mSecond, 0, 59) ||
        !fix(mMillisecond, 0, 999)) {
        return -1;
    }
    if (!carry) {
        return 0;
    }

    // Through the serial scale, so the next day crosses month and year ends, and the top
    // of the range clamps (65535-12-31 24:00 stays on 65535-12-30).
    *this = DateTime(MillisecondsToDATE(ToMilliseconds(*this) + internal::kMsPerDay));
    Sanitize(true);
    return 0;
}

bool DateTime::IsLeapYear() const noexcept {
    return IsLeap(mYear);
}

bool DateTime::IsLeapYear(int year) noexcept {
    return IsLeap(year);
}

int DateTime::GetYear() const noexcept {
    return mYear;
}
int DateTime::GetMonth() const noexcept {
    return mMonth;
}
int DateTime::GetDay() const noexcept {
    return mDay;
}
int DateTime::GetHour() const noexcept {
    return mHour;
}
int DateTime::GetMinute() const noexcept {
    return mMinute;
}
int DateTime::GetSecond() const noexcept {
    return mSecond;
}
int DateTime::GetMillisecond() const noexcept {
    return mMillisecond;
}
int DateTime::GetZoneMinutes() const noexcept {
    return mZoneMinutes;
}
int DateTime::GetZoneSpare() const noexcept {
    return mZoneSpare;
}

void DateTime::AdjustDay() noexcept {
    if (mDay < 1) {
        mDay = 1;
        return;
    }
    // A value whose month is out of range (a refused load) has no length to cut to.
    if (mMonth >= 1 && mMonth <= 12 && mDay > internal::MonthLength(mYear, mMonth)) {
        mDay = static_cast<short>(internal::MonthLength(mYear, mMonth));
    }
}

bool DateTime::PutYear(int year) noexcept {
    if (year < 0) {
        return false;
    }
    mYear = static_cast<unsigned short>(year);
    AdjustDay();
    mWeek = mDayOfWeek = -1;
    return true;
}

bool DateTime::PutMonth(int month) noexcept {
    if (month < 1 || month > 12) {
        return false;
    }
    mMonth = static_cast<short>(month);
    AdjustDay();
    mWeek = mDayOfWeek = -1;
    return true;
}

bool DateTime::PutDay(int day) noexcept {
    if (day < -31 || day > 31 || day == 0) {
        return false;
    }
    const int length = GetDaysInMonth();
    if (day < 0) {
        // -1 is the last day; a count beyond the start stops at the 1st.
        day += length + 1;
        mDay = static_cast<short>(day < 1 ? 1 : day);
    } else {
        mDay = static_cast<short>(day > length ? length : day);
    }
    mWeek = mDayOfWeek = -1;
    return true;
}

bool DateTime::PutHour(int hour) noexcept {
    if (hour < 0 || hour > 23) {
        return false;
    }
    mHour = static_cast<short>(hour);
    return true;
}

bool DateTime::PutMinute(int minute) noexcept {
    if (minute < 0 || minute > 59) {
        return false;
    }
    mMinute = static_cast<short>(minute);
    return true;
}

bool DateTime::PutSecond(int second) noexcept {
    if (second < 0 || second > 59) {
        return false;
    }
    mSecond = static_cast<short>(second);
    return true;
}

bool DateTime::PutMillisecond(int millisecond) noexcept {
    if (millisecond < 0 || millisecond > 999) {
        return false;
    }
    mMillisecond = static_cast<short>(millisecond);
    return true;
}

}  // namespace ZelvorDataType
