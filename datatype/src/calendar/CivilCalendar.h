#pragma once

// Calendar arithmetic on plain integers, shared by the DateTime sources. Everything here
// is constexpr and branch-light; the public members wrap these with the field handling.
//
// Scales:
//  - day number: signed days, 1899-12-30 is day 0 (a Saturday), 0000-01-01 is -693959,
//    65535-12-31 is 23242572;
//  - millisecond count: day number * 86400000 plus the time of day, 64 bits.

#include <cstdint>
#include <ctime>

namespace ZelvorDataType::internal {

inline constexpr long long kMsPerDay = 86400000;
inline constexpr long long kMsPerWeek = 7 * kMsPerDay;
inline constexpr long long kMsPerWeekend = 2 * kMsPerDay;
inline constexpr int kFirstDayNumber = -693959;  // 0000-01-01
inline constexpr int kLastDayNumber = 23242572;  // 65535-12-31
// The last day DateTime arithmetic reaches, one short of the last day it holds: a sum
// past it is clamped back to it, so a walk that stops there can't go round in circles.
inline constexpr int kLastReachableDayNumber = kLastDayNumber - 1;          // 65535-12-30
inline constexpr int kUnixEpochDayNumber = 25569;                           // 1970-01-01
inline constexpr long long kUnixEpochMs = kUnixEpochDayNumber * kMsPerDay;  // 2209161600000

inline constexpr short kDaysInMonth[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
inline constexpr short kDaysBeforeMonth[12] = {0,   31,  59,  90,  120, 151,
                                               181, 212, 243, 273, 304, 334};

// Gregorian rule on any year, negative ones included (C remainders: -4 is leap).
constexpr bool IsLeap(long long year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// Length of `month` (1..12) in `year`.
constexpr int MonthLength(long long year, int month) {
    return kDaysInMonth[month - 1] + (month == 2 && IsLeap(year) ? 1 : 0);
}

// Days from 0000-01-01 to January 1 of `year`, 0 <= year <= 65535. With truncating
// division the two century terms vanish at year 0, and 365 y + ceil(y / 4) counts year
// 0 itself as a leap year. At most 23936532, well inside 32 bits.
constexpr int DaysBeforeYear(int year) {
    return 365 * year + year / 4 + (year % 4 != 0 ? 1 : 0) - (year - 1) / 100 + (year - 1) / 400;
}

// Day number of year/month/day for a month in 1..12; the day is added as it is, so any
// short value gives a linear result.
//
// Counted in a year that starts on March 1 (so the leap day is the last day of its
// year and needs no test), shifted by 400 years so that January and February of year 0
// stay unsigned. Y' <= 65935 and the day count of years stays below 2^25.
constexpr int YmdToDays(unsigned year, int month, int day) {
    const unsigned janOrFeb = month <= 2 ? 1u : 0u;
    const unsigned y = year + 400u - janOrFeb;                                   // 399 .. 65935
    const unsigned m = janOrFeb != 0 ? unsigned(month) + 12u : unsigned(month);  // 3 .. 14
    const unsigned century = y / 100u;
    const unsigned daysOfYears = 1461u * y / 4u - century + century / 4u;
    const unsigned daysOfMonths = (979u * m - 2919u) / 32u;  // days from March 1 to the 1st
    // Days from -0400-03-01 to 0000-01-01 (146097 - 60) plus the 693959 days from there
    // to day 0, less one since day 1 of the month is 0 days in.
    return int(daysOfYears + daysOfMonths) + day - 1 - 146037 - 693959;
}

// Day number of a date as DateTime::YMDToDAYS gives it: 0 when the month is out of range.
constexpr int DayNumberOrZero(unsigned short year, int month, int day) {
    return month >= 1 && month <= 12 ? YmdToDays(year, month, day) : 0;
}

struct CivilDate {
    int year;
    int month;
    int day;
};

// Date of a day number in kFirstDayNumber..kLastDayNumber. The day count from -0400-03-01
// is at most 24082568, so 4 n + 3 fits 32 bits; the year, month and day come from
// multiply-and-shift steps that equal the divisions they replace on this range.
constexpr CivilDate DaysToCivil(int days) {
    const uint32_t n = uint32_t(days + 693959 + 146037);
    const uint32_t n1 = 4 * n + 3;
    const uint32_t century = n1 / 146097;
    const uint32_t dayOfCentury = n1 % 146097 / 4;
    const uint32_t n2 = 4 * dayOfCentury + 3;
    const uint64_t p2 = uint64_t(2939745) * n2;
    const uint32_t yearOfCentury = uint32_t(p2 >> 32);
    const uint32_t dayOfYear = uint32_t(p2) / 2939745 / 4;  // 0 is March 1
    const uint32_t n3 = 2141 * dayOfYear + 197913;
    const uint32_t monthFromMarch = n3 >> 16;  // 3 .. 14
    const uint32_t day = (n3 & 0xFFFF) / 2141 + 1;
    const uint32_t janOrFeb = dayOfYear >= 306 ? 1 : 0;
    return CivilDate{int(100 * century + yearOfCentury + janOrFeb) - 400,
                     int(janOrFeb != 0 ? monthFromMarch - 12 : monthFromMarch), int(day)};
}

// Day of the week of a day number in range, 0 Sunday .. 6 Saturday. 0000-01-01, like day
// 0, is a Saturday, and the shifted count is never negative.
constexpr int DayOfWeek(int days) {
    return int(uint32_t(days - kFirstDayNumber + 6) % 7);
}

// Week of the month, the row of a Sunday-first calendar, of day `day` falling on
// `dayOfWeek`. v / 7 truncates toward zero, and a positive remainder starts one more row.
constexpr int WeekOfMonth(int day, int dayOfWeek) {
    const int v = day - 1 - dayOfWeek;
    const int q = v / 7;
    const int r = v - 7 * q;
    return q + 1 + (r > 0 ? 1 : 0);
}

// The fourteen representatives: a year of 1971..2012 for each first weekday (Sunday
// first) and leap status.
inline constexpr short kCommonYearOfPattern[7] = {1978, 1973, 1974, 1997, 1981, 1971, 1977};
inline constexpr short kLeapYearOfPattern[7] = {2012, 1996, 1980, 1992, 1976, 1988, 1972};

// The year handed to the platform for `year`. The calendar repeats every 400 years, so
// a year beyond 2037 has the pattern of 400 + year mod 400.
constexpr int YearOfSamePattern(int year) {
    if (year >= 1971 && year <= 2037) {
        return year;
    }
    if (year < 0) {
        return -1;
    }
    const int index = year <= 1970 ? year : 400 + year % 400;
    const int firstWeekday = DayOfWeek(YmdToDays(unsigned(index), 1, 1));
    return IsLeap(index) ? kLeapYearOfPattern[firstWeekday] : kCommonYearOfPattern[firstWeekday];
}

// Puts a date and time into `out` as the platform's mktime takes them: in the year of
// the same pattern, with daylight saving left for the platform to decide.
inline void ToPlatformFields(int year, int month, int day, int hour, int minute, int second,
                             tm& out) {
    out.tm_year = YearOfSamePattern(year) - 1900;
    out.tm_mon = month - 1;
    out.tm_mday = day;
    out.tm_hour = hour;
    out.tm_min = minute;
    out.tm_sec = second;
    out.tm_isdst = -1;
}

// True when the date and time fields name a real instant, as Sanitize leaves them. Only
// such fields may take the arithmetic shortcuts; anything else goes the platform's way.
constexpr bool FieldsInRange(long long year, int month, int day, int hour, int minute, int second) {
    return month >= 1 && month <= 12 && day >= 1 &&
           (day <= kDaysInMonth[month - 1] || (month == 2 && day == 29 && IsLeap(year))) &&
           static_cast<unsigned>(hour) < 24 && static_cast<unsigned>(minute) < 60 &&
           static_cast<unsigned>(second) < 60;
}

// Milliseconds since midnight of a time of day.
constexpr long long TimeOfDayMs(int hour, int minute, int second, int millisecond) {
    return hour * 3600000LL + minute * 60000LL + second * 1000LL + millisecond;
}

// a + b and a - b on 64 bits with two's-complement wrap instead of overflow.
constexpr long long WrapAdd(long long a, long long b) {
    return static_cast<long long>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
constexpr long long WrapSub(long long a, long long b) {
    return static_cast<long long>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}

static_assert(YmdToDays(1899, 12, 30) == 0);
static_assert(YmdToDays(0, 1, 1) == kFirstDayNumber && YmdToDays(0, 3, 1) == -693899);
static_assert(YmdToDays(65535, 12, 31) == kLastDayNumber);
static_assert(YmdToDays(1970, 1, 1) == kUnixEpochDayNumber);
static_assert(DaysToCivil(kFirstDayNumber).year == 0 && DaysToCivil(kLastDayNumber).day == 31);
static_assert(DayOfWeek(0) == 6 && DayOfWeek(YmdToDays(2024, 1, 1)) == 1);
static_assert(YearOfSamePattern(0) == 1972 && YearOfSamePattern(1970) == 1981);
static_assert(YearOfSamePattern(2038) == 1971 && YearOfSamePattern(3) == 1997);

}  // namespace ZelvorDataType::internal
