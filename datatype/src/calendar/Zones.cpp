// The clock, conversions between local time and UTC, and seconds since 1970.
//
// The platform's time functions are only ever handed years 1971 to 2037, where every
// time_t fits 32 bits: any other year goes through the year of the same pattern (same
// weekday of January 1, same leap status) and the real year is put back afterwards.
// Daylight saving therefore follows the zone's rules for the pattern year; a zone's
// history before 1971 plays no part.
#include <sys/time.h>

#include <cstdint>
#include <ctime>

#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

namespace {

constexpr long long kSecondsPerDay = 86400;

}  // namespace

DateTime DateTime::FromPlatformFields(int year, int month, int day, int hour, int minute,
                                      int second, int millisecond) noexcept {
    // The platform's fields are in range (bar a leap second), so only milliseconds that
    // came in out of range need the clamping constructor.
    if (second < 60 && millisecond >= 0 && millisecond <= 999) {
        return DateTime(InRange{}, year, month, day, hour, minute, second, millisecond);
    }
    return DateTime(year, month, day, hour, minute, second, millisecond, 0, 0);
}

int DateTime::YearOfSamePattern(int year) noexcept {
    return internal::YearOfSamePattern(year);
}

time_t DateTime::mktime(tm& out) const noexcept {
    internal::ToPlatformFields(mYear, mMonth, mDay, mHour, mMinute, mSecond, out);
    return ::mktime(&out);
}

DateTime DateTime::Now() noexcept {
    timeval now{};
    gettimeofday(&now, nullptr);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    return DateTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                    local.tm_min, local.tm_sec, static_cast<int>(now.tv_usec / 1000),
                    static_cast<int>(local.tm_gmtoff / 60), 0);
}

DateTime DateTime::NowUTC() noexcept {
    timeval now{};
    gettimeofday(&now, nullptr);
    tm utc{};
    gmtime_r(&now.tv_sec, &utc);
    return DateTime(utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min,
                    utc.tm_sec, static_cast<int>(now.tv_usec / 1000), 0, 0);
}

DateTime DateTime::ToUTCTime() const noexcept {
    tm local{};
    const int32_t seconds = static_cast<int32_t>(mktime(local));
    if (seconds == -1) {
        return Now();
    }
    // mktime leaves `local` normalised (a time in a spring-forward gap moves on) together
    // with the offset that it applied, so UTC is that wall time less the offset: the
    // fields the platform's gmtime_r gives for `seconds`, leap-second zones included,
    // reached by stepping at most a day or two instead of a second trip through the zone
    // machinery.
    int year = local.tm_year + 1900;
    int month = local.tm_mon + 1;
    int day = local.tm_mday;
    long secondOfDay = local.tm_hour * 3600L + local.tm_min * 60L + local.tm_sec - local.tm_gmtoff;
    while (secondOfDay < 0) {
        secondOfDay += kSecondsPerDay;
        if (--day == 0) {
            if (--month == 0) {
                month = 12;
                --year;
            }
            day = internal::MonthLength(year, month);
        }
    }
    while (secondOfDay >= kSecondsPerDay) {
        secondOfDay -= kSecondsPerDay;
        if (++day > internal::MonthLength(year, month)) {
            day = 1;
            if (++month == 13) {
                month = 1;
                ++year;
            }
        }
    }
    // The pattern year and the real year differ by a constant, which also holds when the
    // conversion crosses New Year; mYear + difference wraps in 16 bits.
    const int hourMinuteSecond = static_cast<int>(secondOfDay);
    return FromPlatformFields(mYear + (year - 1900 - local.tm_year), month, day,
                              hourMinuteSecond / 3600, hourMinuteSecond % 3600 / 60,
                              hourMinuteSecond % 60, mMillisecond);
}

DateTime DateTime::ToLocalTime() const noexcept {
    const int patternYear = internal::YearOfSamePattern(mYear);
    // The fields read as UTC in the pattern year, as seconds since 1970 with the
    // milliseconds dropped. Fields in range are read as they stand; others (only a
    // refused load leaves them) first go through a clamping copy.
    time_t seconds;
    if (internal::FieldsInRange(mYear, mMonth, mDay, mHour, mMinute, mSecond)) {
        seconds = (internal::YmdToDays(static_cast<unsigned>(patternYear), mMonth, mDay) -
                   internal::kUnixEpochDayNumber) *
                      kSecondsPerDay +
                  mHour * 3600LL + mMinute * 60LL + mSecond;
    } else {
        DateTime scratch(*this);
        scratch.mYear = static_cast<unsigned short>(patternYear);
        scratch.mMillisecond = 0;
        seconds = (ToMilliseconds(scratch) - internal::kUnixEpochMs) / 1000;
    }
    tm local{};
    if (localtime_r(&seconds, &local) == nullptr) {
        // Not reached for pattern years; keep the fields rather than invent a date.
        return DateTime(*this);
    }
    return FromPlatformFields(mYear + (local.tm_year + 1900 - patternYear), local.tm_mon + 1,
                              local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                              mMillisecond);
}

int DateTime::GetTimeZoneBias() const noexcept {
    tm broken{};
    const time_t seconds = static_cast<int32_t>(mktime(broken));
    tm local{};
    localtime_r(&seconds, &local);
    // West of UTC is positive here, and a daylight-saving date is a whole hour less.
    return static_cast<int>(timezone / 60) - 60 * local.tm_isdst;
}

bool DateTime::GetTimeZoneInfo(int& minutes) noexcept {
    const time_t now = time(nullptr);
    if (now == static_cast<time_t>(-1)) {
        return false;
    }
    tm local{};
    localtime_r(&now, &local);
    minutes = static_cast<int>(local.tm_gmtoff / 60);
    return true;
}

DateTime::DateTime(long seconds, int milliseconds) noexcept : DateTime(0.0) {
    if (seconds >= 0) {
        // The fields as the platform breaks the count down, stored without Sanitize: the
        // milliseconds stand as given until the next copy. A count too large for the
        // platform leaves 1899-12-30 00:00:00.000.
        const time_t count = seconds;
        tm utc{};
        if (gmtime_r(&count, &utc) == nullptr) {
            return;
        }
        mYear = static_cast<unsigned short>(static_cast<long long>(utc.tm_year) + 1900);
        mMonth = static_cast<short>(utc.tm_mon + 1);
        mDay = static_cast<short>(utc.tm_mday);
        mHour = static_cast<short>(utc.tm_hour);
        mMinute = static_cast<short>(utc.tm_min);
        mSecond = static_cast<short>(utc.tm_sec);
        mMillisecond = static_cast<short>(milliseconds);
        return;
    }
    // Far before year 0 everything clamps to 0001-01-01; holding the count there keeps
    // the product inside 64 bits.
    const long long held = seconds < -1000000000000000LL ? -1000000000000000LL : seconds;
    *this = DateTime(MillisecondsToDATE(internal::kUnixEpochMs + held * 1000 + milliseconds));
}

long DateTime::Totime_t() const noexcept {
    return static_cast<long>((ToMilliseconds(*this) - internal::kUnixEpochMs) / 1000);
}

long long DateTime::Totime_t64() const noexcept {
    const long long sinceEpoch = ToMilliseconds(*this) - internal::kUnixEpochMs;
    const long long quotient = sinceEpoch / 1000;
    // Truncation toward zero leaves a negative remainder for times before 1970; only a
    // positive one of 500 or more rounds up.
    return sinceEpoch % 1000 > 499 ? quotient + 1 : quotient;
}

}  // namespace ZelvorDataType
