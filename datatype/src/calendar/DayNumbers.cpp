// Day numbers, serial dates, millisecond counts and the connectivity records.
#include <cmath>
#include <cstdint>

#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

namespace {

using internal::kMsPerDay;

// The date of a day number outside 0000-01-01 .. 65535-12-31, by estimating the year and
// correcting it. Only such day numbers come here (in range, DaysToCivil gives the same
// dates faster). The sums are those of 32-bit arithmetic: the wide intermediates are
// wrapped back to 32 bits where a 32-bit sum would wrap.
void DaysToYmdOutOfRange(int days, unsigned short& year, short& month, short& day) {
    const auto wrap32 = [](long long v) { return static_cast<int32_t>(static_cast<uint32_t>(v)); };
    const auto daysBefore = [](long long y) {
        return 365 * y + y / 4 + (y % 4 != 0 ? 1 : 0) - (y - 1) / 100 + (y - 1) / 400;
    };
    const int n = wrap32(static_cast<long long>(days) + 693959);
    int y = n / 365;
    const int c = n - 365 * y - n / 1460 + n / 36500 - n / 146000;
    if (c < 0) {
        y -= 1 + (-c) / 365;
    }
    int d = wrap32(n - daysBefore(y));
    if (d >= 366) {
        d -= internal::IsLeap(y) ? 366 : 365;
        ++y;
    }
    if (d == -1) {
        year = static_cast<unsigned short>(y - 1);
        month = 12;
        day = 31;
        return;
    }
    if (d == 365 && !internal::IsLeap(y)) {
        year = static_cast<unsigned short>(y + 1);
        month = 1;
        day = 1;
        return;
    }
    int m = 12;
    while (m > 1 && internal::kDaysBeforeMonth[m - 1] > d) {
        --m;
    }
    int dd = d + 1 - internal::kDaysBeforeMonth[m - 1];
    if (internal::IsLeap(y) && m >= 3) {
        if (--dd == 0) {
            --m;
            dd = internal::MonthLength(y, m);
        }
    }
    year = static_cast<unsigned short>(y);
    month = static_cast<short>(m);
    day = static_cast<short>(dd);
}

}  // namespace

int DateTime::YMDToDAYS(unsigned short year, short month, short day) noexcept {
    return internal::DayNumberOrZero(year, month, day);
}

void DateTime::DAYSToYMD(int days, unsigned short& year, short& month, short& day) noexcept {
    if (days < internal::kFirstDayNumber || days > internal::kLastDayNumber) {
        DaysToYmdOutOfRange(days, year, month, day);
        return;
    }
    const internal::CivilDate date = internal::DaysToCivil(days);
    year = static_cast<unsigned short>(date.year);
    month = static_cast<short>(date.month);
    day = static_cast<short>(date.day);
}

DateTime::DateTime() noexcept : DateTime(0.0) {}

DateTime::DateTime(double serial) noexcept
    : mYear(1899),
      mMonth(12),
      mDay(30),
      mHour(0),
      mMinute(0),
      mSecond(0),
      mMillisecond(0),
      mWeek(-1),
      mDayOfWeek(-1),
      mZoneMinutes(0),
      mZoneSpare(0) {
    // 0.0 is the empty date as it stands. A NaN fits no case below and is taken as the
    // empty date as well.
    if (serial == 0.0 || std::isnan(serial)) {
        return;
    }
    double fraction;
    if (serial > internal::kLastReachableDayNumber) {
        // One day short of the last date the fields hold.
        mYear = 65535;
        mMonth = 12;
        mDay = 30;
        fraction = serial - std::floor(serial);
    } else if (serial < internal::kFirstDayNumber) {
        // Below 0000-01-01 the date is year 1, and the fraction runs from the whole part
        // the other way: -693960.25 has 0.25.
        mYear = 1;
        mMonth = 1;
        mDay = 1;
        fraction = std::fabs(serial) + std::ceil(serial);
    } else {
        const double whole = std::floor(serial);
        DAYSToYMD(static_cast<int>(whole), mYear, mMonth, mDay);
        fraction = serial > 0 ? serial - whole : std::fabs(whole) + serial;
    }
    // Only an infinity leaves no fraction; it clamps to midnight.
    if (!std::isfinite(fraction)) {
        fraction = 0.0;
    }

    // Nearest millisecond, halves up, by adding 0.5 and truncating: that sum is the
    // rounding of the serial scale, so lround's exact halves would differ from it. A
    // fraction that rounds to a whole day stays on its own day at 23:59:59.999.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings)
    long long ms = static_cast<long long>(fraction * 86400000.0 + 0.5);
    if (ms == kMsPerDay) {
        ms = kMsPerDay - 1;
    }
    if (ms > 0) {
        mHour = static_cast<short>(ms / 3600000);
        mMinute = static_cast<short>(ms % 3600000 / 60000);
        mSecond = static_cast<short>(ms % 60000 / 1000);
        mMillisecond = static_cast<short>(ms % 1000);
    }
    Sanitize(true);
}

double DateTime::ToDATE() const noexcept {
    const int whole = internal::DayNumberOrZero(mYear, mMonth, mDay);
    const double fraction =
        mHour / 24.0 + mMinute / 1440.0 + mSecond / 86400.0 + mMillisecond / 86400000.0;
    return fraction + whole;
}

long long DateTime::ToMilliseconds(const DateTime& value) noexcept {
    return internal::DayNumberOrZero(value.mYear, value.mMonth, value.mDay) * kMsPerDay +
           internal::TimeOfDayMs(value.mHour, value.mMinute, value.mSecond, value.mMillisecond);
}

double DateTime::MillisecondsToDATE(long long milliseconds) noexcept {
    // Split by truncation, then moved to floor. A day count beyond 32 bits (some 5.9
    // million years past either end of the calendar) is kept whole rather than wrapped,
    // so that such a count still lands beyond the right end and clamps there.
    long long days = milliseconds / kMsPerDay;
    double fraction = static_cast<double>(milliseconds - days * kMsPerDay) / 86400000.0;
    if (fraction < 0) {
        fraction += 1.0;
        --days;
    }
    return static_cast<double>(days) + fraction;
}

DateTime::DateTime(const ODBCDateTime& value) noexcept
    : mYear(static_cast<unsigned short>(value.year)),
      mMonth(static_cast<short>(value.month)),
      mDay(static_cast<short>(value.day)),
      mHour(static_cast<short>(value.hour)),
      mMinute(static_cast<short>(value.minute)),
      mSecond(static_cast<short>(value.second)),
      mMillisecond(static_cast<short>(value.fraction > 999999999u ? 0 : value.fraction / 1000000u)),
      mWeek(-1),
      mDayOfWeek(-1),
      mZoneMinutes(0),
      mZoneSpare(0) {
    Sanitize(true);
}

// Midnight of the date.
DateTime::DateTime(const ODBCDate& value) noexcept
    : DateTime(ODBCDateTime{value.year, value.month, value.day, 0, 0, 0, 0}) {}

// A time alone lies on day 1, 1899-12-31.
DateTime::DateTime(const ODBCTime& value) noexcept
    : mYear(1899),
      mMonth(12),
      mDay(31),
      mHour(static_cast<short>(value.hour)),
      mMinute(static_cast<short>(value.minute)),
      mSecond(static_cast<short>(value.second)),
      mMillisecond(0),
      mWeek(-1),
      mDayOfWeek(-1),
      mZoneMinutes(0),
      mZoneSpare(0) {
    Sanitize(true);
}

ODBCDateTime DateTime::ToODBCDateTime() const noexcept {
    return ODBCDateTime{static_cast<short>(mYear),
                        static_cast<unsigned short>(mMonth),
                        static_cast<unsigned short>(mDay),
                        static_cast<unsigned short>(mHour),
                        static_cast<unsigned short>(mMinute),
                        static_cast<unsigned short>(mSecond),
                        static_cast<unsigned int>(mMillisecond) * 1000000u};
}

ODBCDate DateTime::ToODBCDate() const noexcept {
    return ODBCDate{static_cast<short>(mYear), static_cast<unsigned short>(mMonth),
                    static_cast<unsigned short>(mDay)};
}

ODBCTime DateTime::ToODBCTime() const noexcept {
    return ODBCTime{static_cast<unsigned short>(mHour), static_cast<unsigned short>(mMinute),
                    static_cast<unsigned short>(mSecond)};
}

}  // namespace ZelvorDataType
