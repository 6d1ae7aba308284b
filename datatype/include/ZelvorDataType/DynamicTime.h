#pragma once

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/Export.h>
#include <iosfwd>

namespace ZelvorDataType {

// The rule of a DynamicTime: a kind (the value with the bits 0x1E0 cleared) with flag
// bits over it. Kinds 0 to 14 exist; a kind above 14, taken as unsigned, has no date.
// Combine a kind with flags by operator| below, e.g.
// DYNAMIC_TIME_THIS_MONTH | DYNAMIC_TIME_BUSINESS_DAY (0x105).
enum DYNAMIC_TIME : int {
    // Not a dynamic time. DynamicTime::PutDynamicTime ignores it; ZelvorTime reports it
    // for a static value.
    DYNAMIC_TIME_NONE = -100,
    // Orders after every other time; has a date only with DYNAMIC_TIME_FIXED_DATE.
    DYNAMIC_TIME_LATEST = 0,
    // Orders before every other time; never has a date.
    DYNAMIC_TIME_EARLIEST = 1,
    // The reference time moved by every field.
    DYNAMIC_TIME_NOW = 2,
    // A day moved from the reference day, at a time of day.
    DYNAMIC_TIME_TODAY = 3,
    // A weekday of the reference week (weeks run Sunday to Saturday).
    DYNAMIC_TIME_THIS_WEEK = 4,
    // A day, or a numbered weekday, of the reference month.
    DYNAMIC_TIME_THIS_MONTH = 5,
    // A day of the reference year.
    DYNAMIC_TIME_THIS_YEAR = 6,
    // One weekday of the reference week.
    DYNAMIC_TIME_THIS_SUNDAY = 7,
    DYNAMIC_TIME_THIS_MONDAY = 8,
    DYNAMIC_TIME_THIS_TUESDAY = 9,
    DYNAMIC_TIME_THIS_WEDNESDAY = 10,
    DYNAMIC_TIME_THIS_THURSDAY = 11,
    DYNAMIC_TIME_THIS_FRIDAY = 12,
    DYNAMIC_TIME_THIS_SATURDAY = 13,
    // A day, or a numbered weekday of one of its months, of the reference quarter.
    DYNAMIC_TIME_THIS_QUARTER = 14,

    // Flag: with kinds 0 and 2, mYear, mMonth and mDay are an absolute date.
    DYNAMIC_TIME_FIXED_DATE = 0x20,
    // Flag: mHour is an offset in hours, positive into the future.
    DYNAMIC_TIME_RELATIVE_HOUR = 0x40,
    // Flag: mMinute and mSecond are offsets, positive into the future.
    DYNAMIC_TIME_RELATIVE_MINUTE = 0x80,
    // Flag: day offsets count business days (Monday to Friday, no holidays), and a
    // resolved time that lands on a weekend is corrected when the time of day is
    // relative too (see ToDateTime).
    DYNAMIC_TIME_BUSINESS_DAY = 0x100,
};

// A kind with its flags, keeping the enumeration type: DYNAMIC_TIME_TODAY |
// DYNAMIC_TIME_RELATIVE_HOUR is 0x43.
constexpr DYNAMIC_TIME operator|(DYNAMIC_TIME left, DYNAMIC_TIME right) noexcept {
    return static_cast<DYNAMIC_TIME>(static_cast<int>(left) | static_cast<int>(right));
}

// The unit of a move by DynamicTime::MoveNthTimePointBefore. The week comes last.
enum TIME_GRANULARITY : int {
    TIME_GRANULARITY_SECOND = 1,
    TIME_GRANULARITY_MINUTE = 2,
    TIME_GRANULARITY_HOUR = 3,
    TIME_GRANULARITY_DAY = 4,
    TIME_GRANULARITY_MONTH = 5,
    TIME_GRANULARITY_YEAR = 6,
    TIME_GRANULARITY_WEEK = 7,
};

// A point in time named by a rule rather than a date: "midnight today", "the current
// hour minus three", "the first business day of the month two months back", "the third
// Monday of the second month of this quarter", "the last business day of the quarter".
//
// The record is a kind with flags and a handful of signed fields whose meaning depends
// on the kind; it validates nothing, so every field takes any value of its type and
// the getters give back what was put. ToDateTime resolves the rule against a reference
// time, working in local wall-clock fields, and answers in UTC. Offsets are positive
// into the future.
//
// How the kinds read the fields ("+" is an offset added; a blank is not read):
//
//   kind           mYear      mMonth           mWeek            mDay             mDayOfWeek
//   NOW            + years    + months         + weeks          + days
//   TODAY          + years    + months         + weeks          + days
//   THIS_WEEK      + years    + months         + weeks                           weekday if >= 0
//   THIS_MONTH     + years    + months         occurrence (1)   day, < 0 from end weekday (1)
//   THIS_YEAR      + years    month if > 0     occurrence (1)   day, < 0 from end weekday (1)
//   THIS_<DAY>     + years    + months         + weeks                           weekday if >= 0
//   THIS_QUARTER   + years    1..3 if > 0 (2)  occurrence (2)   days from the quarter's start,
//                                                               < 0 from its end; weekday (2)
//   FIXED_DATE     year       month            occurrence (1)   day, < 0 from end weekday (1)
//   (kinds 0, 2)
//
//   (1) when mDay is 0: the mWeek-th occurrence of weekday mDayOfWeek in the month.
//   (2) when mMonth is above 0: that occurrence in the quarter's mMonth-th month.
//
// The time of day comes from mHour, mMinute, mSecond (absolute, or offsets under the
// relative flags); kind NOW always adds them as offsets. mDayOffset and mMonthOffset
// move the reference time before the kind is applied.
//
// A plain value: copying copies every field; nothing allocates or throws.
class ZELVOR_DATATYPE_API DynamicTime {
  public:
    // Kind and flags, then the day offset; every other field 0 and mDayOfWeek -1 (not
    // set). DynamicTime(DYNAMIC_TIME_TODAY, -1) is midnight yesterday.
    DynamicTime(DYNAMIC_TIME dynamicTime, int dayOffset) noexcept;
    DynamicTime(const DynamicTime& other) noexcept;
    DynamicTime& operator=(const DynamicTime& other) noexcept;
    virtual ~DynamicTime();

    // The kind with its flags.
    DYNAMIC_TIME GetDynamicTime() const noexcept;
    // Stores the kind and flags, unless it is DYNAMIC_TIME_NONE, which leaves the
    // record as it was.
    void PutDynamicTime(DYNAMIC_TIME dynamicTime) noexcept;

    // Days moved from the reference time, after the month offset; positive into the
    // future. Counted in business days under DYNAMIC_TIME_BUSINESS_DAY.
    int GetDynamicDayOffset() const noexcept;
    void PutDynamicDayOffset(int dayOffset) noexcept;
    // Months moved from the reference time, before the day offset; positive into the
    // future.
    short GetDynamicMonthOffset() const noexcept;
    void PutDynamicMonthOffset(short monthOffset) noexcept;

    // The stored fields, offsets or absolute values as the kind reads them (see the
    // table above). GetDayOfWeek gives -1 when no weekday was put.
    int GetYear() const noexcept;
    int GetMonth() const noexcept;
    int GetWeek() const noexcept;
    int GetDay() const noexcept;
    int GetHour() const noexcept;
    int GetMinute() const noexcept;
    int GetSecond() const noexcept;
    int GetDayOfWeek() const noexcept;

    // Store the field as given, without any test.
    void PutYear(int year) noexcept;
    void PutMonth(int month) noexcept;
    void PutDay(int day) noexcept;
    void PutHour(int hour) noexcept;
    void PutMinute(int minute) noexcept;
    void PutSecond(int second) noexcept;
    void PutWeek(int week) noexcept;
    void PutDayOfWeek(int dayOfWeek) noexcept;

    // Applies the time of day to `date`: the hour is put, or moved by mHour under
    // DYNAMIC_TIME_RELATIVE_HOUR; minute and second likewise under
    // DYNAMIC_TIME_RELATIVE_MINUTE; the millisecond becomes 0. A value the date
    // refuses (hour 25) leaves that field as it was. With no flag and all fields 0 the
    // time becomes midnight.
    void hSetTimeOfDate(DateTime& date) const noexcept;

    // Resolves the rule. `date` is the reference time on the way in, read as local
    // wall-clock fields (DateTime(0.0) means the present moment, DateTime::Now()), and
    // the answer on the way out, in UTC. Returns 0, or -1 with `date` untouched when
    // the rule has no date: a kind above 14 (DYNAMIC_TIME_NONE among them),
    // DYNAMIC_TIME_EARLIEST, DYNAMIC_TIME_LATEST without DYNAMIC_TIME_FIXED_DATE, or a
    // numbered weekday that no month of the rule offers. Example: against Thursday
    // 2024-03-14 15:30:45.123 local, DYNAMIC_TIME_TODAY with mDay -1 and mHour 9 gives
    // 2024-03-13 09:00:00.000 local, returned in UTC.
    int ToDateTime(DateTime& date) const noexcept;

    // Moves `date` n units into the past (a negative n goes into the future), on its
    // fields as they stand, with no zone or daylight saving. Seconds to weeks are exact
    // spans of milliseconds. Years put the year less n, refused (nothing moves) when
    // that is negative. Months step the year first and the month after, each pulling
    // the day into its month: 2024-03-31 less one month is 2024-02-29, and 2024-02-29
    // less 13 months is 2023-01-28. A unit outside 1 to 7 leaves `date` alone.
    static void MoveNthTimePointBefore(DateTime& date, int n, TIME_GRANULARITY unit) noexcept;

    // Moves `date` n business days (Monday to Friday) into the past, or -n into the
    // future, keeping the time of day. A walk into the future from a weekend first
    // reaches the Monday and counts from it; a walk into the past from a Saturday counts
    // the Friday as its first day, and from a Sunday ends two days before the same walk
    // from the Saturday (one business day back from Sunday 2024-03-17 is Wednesday
    // 2024-03-13), so it can end on a weekend. With n 0 a weekday stays, and a weekend
    // date goes to the Monday after it when `forward` is true, else to the Friday before.
    // Reads nothing of this object.
    void MoveNthTimePointBefore_BusinessDay(DateTime& date, int n, bool forward) const noexcept;

  private:
    DYNAMIC_TIME mDynamicTime;
    int mDayOffset;
    int mYear;
    int mMonth;
    int mDay;
    int mHour;
    int mMinute;
    int mSecond;
    int mWeek;
    int mDayOfWeek;
    short mMonthOffset;
};

// Writes ToText(rule) of <ZelvorDataType/Text.h>: kind, flags and the fields that are
// set, "today + relative-hour; hour 9, day offset -1".
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const DynamicTime& rule);

}  // namespace ZelvorDataType
