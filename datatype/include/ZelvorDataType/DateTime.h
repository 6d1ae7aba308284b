#pragma once

#include <cstddef>
#include <ctime>
#include <functional>
#include <iosfwd>

#include <ZelvorBase/ReturnString.h>
#include <ZelvorDataType/Export.h>
#include <ZelvorDataType/TimeSpan.h>

namespace ZelvorDataType {

namespace internal {
struct DateTimeArray;
}  // namespace internal

// The three records of the database connectivity standard, in its member order and
// widths. Plain data; a DateTime converts to and from each of them.
struct ODBCDate {
    short year;
    unsigned short month;
    unsigned short day;
};
struct ODBCTime {
    unsigned short hour;
    unsigned short minute;
    unsigned short second;
};
struct ODBCDateTime {
    short year;
    unsigned short month;
    unsigned short day;
    unsigned short hour;
    unsigned short minute;
    unsigned short second;
    unsigned int fraction;  // nanoseconds
};

// A calendar date and time of day with millisecond resolution, held field by field in
// the proleptic Gregorian calendar from year 0 (a leap year) to 65535.
//
// A DateTime does not know whether it holds UTC or local time: the caller knows, and
// ToUTCTime / ToLocalTime read the fields as one and give the other. DateTime(0.0),
// 1899-12-30 00:00:00.000, is the value used where there is no date yet; there is no
// default constructor.
//
// Every constructor ends by clamping the fields into range (Sanitize(true)), so a value
// in use holds a real date; construction never fails. Nothing here throws: setters
// return bool, the saved form returns 0 or -1, a parse returns 0.
//
// Three linear scales carry all calendar arithmetic:
//  - the day number, signed days with 1899-12-30 as day 0 (a Saturday);
//  - the millisecond count, signed 64 bits since 1899-12-30 00:00:00.000;
//  - the serial date, a double whose floor is the day number and whose fraction is the
//    part of the day that has passed (-0.25 is 1899-12-29 18:00).
//
// The week of the month and the day of the week are cached inside the value and filled
// on demand, also through a const reference, so a value is for one thread at a time.
// The two zone words (mZoneMinutes, mZoneSpare) travel with copies but never enter a
// calculation, a comparison, a text or the saved form.
class ZELVOR_DATATYPE_API DateTime {
  public:
    // Days of each month of a common year, and days before each month of a common
    // year, indexed by month - 1. Every user adds the leap day itself.
    static constexpr short DaysInMonth[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    static constexpr short DaysBeforeMonth[12] = {0,   31,  59,  90,  120, 151,
                                                  181, 212, 243, 273, 304, 334};

    // ---- Construction and normalisation ------------------------------------------

    // Stores the low 16 bits of each argument in its field, marks week and day of week
    // as not computed, then Sanitize(true): each field is clamped on its own, with no
    // rollover (month 13 gives 12, minute 75 gives 59, 2023-02-30 gives 2023-02-28),
    // except that 24:00:00 carries to 00:00:00 of the next day. The year is not limited
    // but wraps in 16 bits: 70000 gives 4464.
    DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
             int millisecond = 0, int zoneMinutes = 0, int zoneSpare = 0) noexcept;

    // From a serial date. 0.0 is 1899-12-30 00:00:00.000. The time of day is rounded to
    // the nearest millisecond, halves up, but never carries into the next day:
    // 36526.99999999999 is 2000-01-01 23:59:59.999. Above 23242571.0 the date is
    // clamped to 65535-12-30 and below -693959.0 to 0001-01-01, each keeping a time of
    // day taken from the fraction (an infinity clamps with time 00:00:00.000). Zone words
    // are 0, caches not computed. A NaN gives the empty date 1899-12-30 00:00:00.000.
    explicit DateTime(double serial) noexcept;

    // From seconds since 1970-01-01 00:00:00 UTC, read without any zone.
    // For seconds >= 0 the milliseconds go to the field as they are (low 16 bits) and
    // are not clamped until the next copy; for negative seconds they are a signed amount
    // added to the instant: DateTime(-1, 500) is 1969-12-31 23:59:59.500.
    // Seconds so large that the year leaves 16 bits wrap in the year, like every other
    // year; seconds the platform can't break down give 1899-12-30 00:00:00.000.
    DateTime(long seconds, int milliseconds) noexcept;

    // From the connectivity records. The date-time form takes its six fields as they are
    // and the milliseconds as fraction / 1000000 (0 when the fraction exceeds
    // 999999999); the date form has time 00:00:00.000; the time form lies on
    // 1899-12-31 (day 1) with millisecond 0. All then clamp by Sanitize(true).
    explicit DateTime(const ODBCDateTime& value) noexcept;
    explicit DateTime(const ODBCDate& value) noexcept;
    explicit DateTime(const ODBCTime& value) noexcept;

    // Copies all eleven fields (caches and zone words included), then Sanitize(true).
    DateTime(const DateTime& other) noexcept;
    // As the copy constructor; nothing on self-assignment.
    DateTime& operator=(const DateTime& other) noexcept;
    ~DateTime() = default;

    // Brings the fields into range, in this order: hour 24 with minute and second 0
    // becomes hour 0 with a carry to the next day; month to 1..12; day to at least 1 and
    // at most the month's length; hour 0..23; minute and second 0..59; millisecond
    // 0..999. With clamp true every field is repaired and the result is 0. With clamp
    // false the first field out of range gives -1 (fields before it keep the repair
    // already done); a day beyond the month's length is cut down in both modes and is
    // never a refusal. The year is never limited. The carry leaves caches not computed
    // and zone words 0; at 65535-12-31 it cannot go further and gives 65535-12-30.
    int Sanitize(bool clamp) noexcept;

    // Leap year of this value's year, and of any year: divisible by 400, or by 4 and
    // not by 100. Year 0 is a leap year.
    bool IsLeapYear() const noexcept;
    static bool IsLeapYear(int year) noexcept;

    // ---- Fields -------------------------------------------------------------------

    int GetYear() const noexcept;         // 0 to 65535
    int GetMonth() const noexcept;        // 1 to 12
    int GetDay() const noexcept;          // 1 to the length of the month
    int GetHour() const noexcept;         // 0 to 23
    int GetMinute() const noexcept;       // 0 to 59
    int GetSecond() const noexcept;       // 0 to 59
    int GetMillisecond() const noexcept;  // 0 to 999
    // The zone words: the offset east of UTC in minutes that Now() captured (0
    // otherwise), and the spare word a caller gave the constructor.
    int GetZoneMinutes() const noexcept;
    int GetZoneSpare() const noexcept;

    // Setters. Each returns false, leaving the value unchanged, when the argument is out
    // of range. A change of the date marks week and day of week as not computed; the
    // time setters leave them.
    //
    // Year >= 0 (low 16 bits kept); the day is pulled back into the month, so
    // 2024-02-29 with PutYear(2023) gives 2023-02-28.
    bool PutYear(int year) noexcept;
    // Month 1..12, with the same day repair: 2024-03-31 with PutMonth(2) is 2024-02-29.
    bool PutMonth(int month) noexcept;
    // Day 1..31 or -31..-1. A positive day beyond the month is cut to its last day; a
    // negative one counts from the end (-1 is the last day, and a count past the 1st
    // stops at the 1st). 0 is refused.
    bool PutDay(int day) noexcept;
    bool PutHour(int hour) noexcept;                // 0..23 (24 is refused)
    bool PutMinute(int minute) noexcept;            // 0..59
    bool PutSecond(int second) noexcept;            // 0..59
    bool PutMillisecond(int millisecond) noexcept;  // 0..999

    // ---- Day numbers, serial dates, millisecond counts --------------------------------

    // Day number of a date: YMDToDAYS(1899, 12, 30) is 0, (1970, 1, 1) is 25569,
    // (0, 1, 1) is -693959. A month outside 1..12 gives 0; the day is added whatever
    // its value.
    static int YMDToDAYS(unsigned short year, short month, short day) noexcept;
    // Date of a day number; the exact inverse of YMDToDAYS on 0000-01-01 to
    // 65535-12-31. Outside that range the year wraps in 16 bits (-693960 gives
    // 65535-12-30).
    static void DAYSToYMD(int days, unsigned short& year, short& month, short& day) noexcept;
    // Serial date of this value (day number plus the fraction of the day); the day
    // number counts as 0 when the month is out of range.
    double ToDATE() const noexcept;
    // Millisecond count of a value: day number * 86400000 plus the time of day.
    static long long ToMilliseconds(const DateTime& value) noexcept;
    // Serial date of a millisecond count, split by floor: -1 is just under 0.0, and
    // DateTime(MillisecondsToDATE(-1)) is 1899-12-29 23:59:59.999. A count inside the
    // range of DateTime(double) survives the round trip to the millisecond; a count far
    // beyond the calendar keeps its sign, so the value built from it clamps to that end.
    static double MillisecondsToDATE(long long milliseconds) noexcept;

    // The connectivity records of this value. The time form drops the milliseconds; the
    // date-time form has fraction millisecond * 1000000.
    ODBCDateTime ToODBCDateTime() const noexcept;
    ODBCDate ToODBCDate() const noexcept;
    ODBCTime ToODBCTime() const noexcept;

    // ---- Weeks, days of week, quarters ------------------------------------------------
    // A week is a row of the month's calendar with Sunday first: week 1 holds the 1st,
    // each Sunday starts the next, so a month has four to six weeks.

    // Week of the month, 1 to 6, from the cache (filled when not computed); -1 if the
    // platform could not give the day of the week. 2024-01-07, a Sunday, is week 2.
    int GetWeek() const noexcept;
    // Day of the week, 0 Sunday to 6 Saturday, from the cache (filled when not
    // computed); -1 if the platform failed. 2024-01-01 gives 1.
    int GetDayOfWeek() const noexcept;
    // Day of the year, 1 for January 1 up to 366; 0 if the platform failed.
    int GetDayOfYear() const noexcept;
    // Length of this month, 29 for February of a leap year.
    int GetDaysInMonth() const noexcept;
    // Quarter of the year, 1 to 4.
    int GetQuarter() const noexcept;
    // First month of this quarter: 1, 4, 7 or 10.
    int GetFirstMonthOfQuater() const noexcept;
    // Week of the month of a day whose day of the week is known:
    // WeekFromDayAndDayOfWeek(1, 6) is 1, (2, 0) is 2.
    static int WeekFromDayAndDayOfWeek(int day, int dayOfWeek) noexcept;

    // Moves by whole weeks to week 1..6 of the same month, keeping the day of the week
    // and the time. False, with the date unchanged, for a week out of range or one that
    // would leave the month (the caches are then merely marked not computed).
    bool PutWeek(int week) noexcept;
    // Moves to day 0..6 of the same Sunday-to-Saturday week, keeping the time. When the
    // move would leave the month it is refused (false, date unchanged) unless
    // crossMonth is true.
    bool PutDayOfWeek(int dayOfWeek, bool crossMonth) noexcept;
    // Moves to the week-th occurrence of dayOfWeek (0..6) in the month, keeping the
    // time: (1, 1) in January 2024 is Monday the 1st. A negative week counts from the
    // end with -1 the last occurrence but one: (-1, 1) in January 2024, which has five
    // Mondays, is the 22nd, and -5 is refused. False, with the date unchanged, when the
    // month has no such occurrence; week 0 and a dayOfWeek outside 0..6 are refused.
    bool PutWeekAndDayOfWeek(int week, int dayOfWeek) noexcept;

    // Pulls the day back into the month (below 1 to 1, beyond the month to its last
    // day) without touching the caches.
    void AdjustDay() noexcept;
    // Fills the week and day-of-week caches; leaves them as they are if the platform
    // fails.
    void SetWeekAndDayOfWeek() const noexcept;

    // ---- Arithmetic and order ---------------------------------------------------------

    // Calendar sum and difference: every day counts, a day is 86400000 ms. The result
    // comes through the serial scale, so it is clamped to DateTime(double)'s range, has
    // caches not computed and zone words 0.
    DateTime operator+(const TimeSpan& span) const noexcept;
    DateTime operator-(const TimeSpan& span) const noexcept;
    // The plain difference of the millisecond counts, this minus other.
    TimeSpan operator-(const DateTime& other) const noexcept;

    // Working-day arithmetic, Monday to Friday. A weekend date first counts as the
    // Monday after it, at the same time of day. Add steps over weekends: one day after
    // Friday 10:00 is Monday 10:00. Minus walks back: one day before Monday 10:00 is
    // Friday 10:00. Negative spans are carried through the same formulas and are not a
    // mirror image (one day added to Monday with a negative span gives Sunday).
    DateTime Add(const TimeSpan& span) const noexcept;
    DateTime Minus(const TimeSpan& span) const noexcept;
    // Working-day distance from other to this, weekends removed: Friday to the Monday
    // after is one day.
    TimeSpan Span(const DateTime& other) const noexcept;

    // Order by year, month, day, hour, minute, second, millisecond. Caches and zone
    // words take no part, also in equality.
    bool operator<(const DateTime& other) const noexcept;
    bool operator>(const DateTime& other) const noexcept;
    bool operator<=(const DateTime& other) const noexcept;
    bool operator>=(const DateTime& other) const noexcept;
    bool operator==(const DateTime& other) const noexcept;
    bool operator!=(const DateTime& other) const noexcept;
    // 1 if first is later, -1 if earlier, 0 if equal.
    static int DateTimeOrder(const DateTime& first, const DateTime& second) noexcept;

    // The nearest whole second, 500 ms rounding up, carrying through minute, hour, day,
    // month and year: 2024-12-31 23:59:59.500 gives 2025-01-01 00:00:00.000. The year
    // wraps, so the last instant of 65535 gives 0000-01-01. Zone words are kept.
    DateTime RoundToSeconds() const noexcept;

    // ---- Clock and zones --------------------------------------------------------------
    // The platform is only ever handed years 1971 to 2037: any other year goes through
    // the year of the same pattern (same first weekday, same leap status), and the real
    // year is put back afterwards. Daylight saving is whatever the process's zone says
    // for that pattern year.

    // The year handed to the platform for a year: 1971..2037 give themselves, a
    // negative year gives -1, 1970 gives 1981, 2038 gives 1971, 0 gives 1972.
    static int YearOfSamePattern(int year) noexcept;
    // Fills the date and time members of `out` from the fields (through the pattern year,
    // tm_isdst -1; the other members are left as they are) and calls the platform's
    // mktime on it. The result belongs to the pattern year, not to this value's year.
    time_t mktime(tm& out) const noexcept;

    // The present moment as local time, with mZoneMinutes the offset east of UTC.
    static DateTime Now() noexcept;
    // The present moment as UTC, zone words 0.
    static DateTime NowUTC() noexcept;
    // Reads the fields as local time and gives UTC; the milliseconds stay. In a zone one
    // hour east, 1000-01-01 00:30:00 gives 0999-12-31 23:30:00, and 0000-01-01 00:30
    // wraps to 65535-12-31 23:30. Should the platform fail, the answer is Now().
    DateTime ToUTCTime() const noexcept;
    // Reads the fields as UTC and gives local time; the milliseconds stay.
    DateTime ToLocalTime() const noexcept;
    // Minutes to add to this local time to reach UTC (west positive): standard offset,
    // less a whole hour when the date falls in daylight saving. New York gives 300 in
    // winter and 240 in summer.
    int GetTimeZoneBias() const noexcept;
    // The present offset of local time east of UTC, in minutes (New York: -300 in
    // winter); false, leaving `minutes`, if the clock can't be read.
    static bool GetTimeZoneInfo(int& minutes) noexcept;

    // Seconds since 1970-01-01 00:00:00 reading the fields as UTC: truncated toward
    // zero, and rounded up from 500 ms (a negative remainder never moves it).
    long Totime_t() const noexcept;
    long long Totime_t64() const noexcept;

    // ---- Text and saved form ----------------------------------------------------------

    // "2024-03-05 07:08:09.012"; the year has at least four digits (five above 9999).
    ZelvorBase::ReturnString ToString() const;
    // The same text, wide.
    ZelvorBase::ReturnWString ToWString() const;
    // The date alone, month/day/year without leading zeros: "3/5/2024".
    ZelvorBase::ReturnString ToDateString() const;
    // Reads "YYYY-MM-DD", optionally followed by 'T' or a blank and "hh:mm:ss.fff".
    // Numbers are read as by strtoul (leading blanks and a sign taken). A day beyond the
    // month is cut down and a negative day counts from the end (2024-02--1 is
    // February 29). Returns the count of characters read, to the end of the last
    // number, or 0 on failure with this value unchanged: year 0, month outside 1..12,
    // day 0 or beyond +-31, hour above 23, a time without ".fff". Never reads past the
    // terminator; a null text fails.
    int FromString(const char* text) noexcept;

    // Size of the saved form in bytes: 44.
    static int GetSaveObjSize() noexcept;
    // Writes the saved form: eleven 32-bit words in machine order, the marker -100,
    // year, month, day, hour, minute, second, millisecond, week, day of week (the caches
    // as they stand, -1 if not computed) and `mode`. -1, writing nothing, if size < 44 or
    // the buffer is null.
    int SaveObj(unsigned int size, void* buffer, int mode) const noexcept;
    // Reads a saved form, never beyond `size` bytes. -1 if size < 44 or the buffer is
    // null. The marker -101
    // gives 1899-12-30 00:00:00.000 and 0 in both modes. Strict (lenient false) insists
    // on the marker -100, a mode word of 0 or 1 and fields in range (a day beyond the
    // month is cut down); after a refusal there the value holds a mix of old and new
    // fields and must not be used as a date. Lenient takes any marker and mode and
    // clamps. Week and day of week are taken as saved, unchecked.
    int LoadObj(unsigned int size, void* buffer, bool lenient) noexcept;

  private:
    // The empty date, 1899-12-30 00:00:00.000, as DateTime(0.0) gives it. Callers have
    // no default constructor; the library needs one only to make the arrays it hands
    // out for release with delete[] (internal::DateTimeArray).
    DateTime() noexcept;
    friend struct internal::DateTimeArray;

    // Fields already known to be in range, stored as they are with both caches not
    // computed and zone words 0; for the library's own conversions, which would
    // otherwise pay for a Sanitize that can change nothing.
    struct InRange {};
    DateTime(InRange, int year, int month, int day, int hour, int minute, int second,
             int millisecond) noexcept
        : mYear(static_cast<unsigned short>(year)),
          mMonth(static_cast<short>(month)),
          mDay(static_cast<short>(day)),
          mHour(static_cast<short>(hour)),
          mMinute(static_cast<short>(minute)),
          mSecond(static_cast<short>(second)),
          mMillisecond(static_cast<short>(millisecond)),
          mWeek(-1),
          mDayOfWeek(-1),
          mZoneMinutes(0),
          mZoneSpare(0) {}
    // The result of a zone conversion from fields the platform gave.
    static DateTime FromPlatformFields(int year, int month, int day, int hour, int minute,
                                       int second, int millisecond) noexcept;

    unsigned short mYear;
    short mMonth;
    short mDay;
    short mHour;
    short mMinute;
    short mSecond;
    short mMillisecond;
    mutable short mWeek;       // -1: not computed
    mutable short mDayOfWeek;  // -1: not computed
    short mZoneMinutes;
    short mZoneSpare;
};

// Eleven 16-bit words, no padding; the connectivity records keep the standard's sizes.
static_assert(sizeof(DateTime) == 22);
static_assert(sizeof(ODBCDate) == 6 && sizeof(ODBCTime) == 6 && sizeof(ODBCDateTime) == 16);

// Writes ToString(): "2024-03-05 07:08:09.012".
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const DateTime& value);

// A hash of the seven fields that operator== compares (zone words and caches take no
// part), so equal values hash alike. Stable within one run of a program only.
ZELVOR_DATATYPE_API std::size_t HashValue(const DateTime& value) noexcept;

}  // namespace ZelvorDataType

// std::hash through HashValue above, for the unordered containers.
namespace std {
template <>
struct hash<ZelvorDataType::DateTime> {
    std::size_t operator()(const ZelvorDataType::DateTime& value) const noexcept {
        return ZelvorDataType::HashValue(value);
    }
};
}  // namespace std
