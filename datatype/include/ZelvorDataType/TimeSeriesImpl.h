#pragma once

// TimeSeriesImpl, the one implementation of the TimeSeries interface, with the pattern
// members the enumerators are built from. TimeSeries.h includes this header, so either
// one gives both classes.

#include <ZelvorDataType/TimeSeries.h>

namespace ZelvorDataType {

namespace internal {
class ScheduleRules;
}

// The one implementation of TimeSeries, exported with the pattern members that the
// enumerators are built from, so that a caller may list days and times directly:
// GetFirstDay, then GetNextDay again and again; within a day start at midnight and
// step with GetNextTime.
//
// How each field is read (an anchor is the previous day or time of the series; with
// none, no interval is tested):
//  - year, month: FIXED must equal; EVERY N: the distance in calendar years (months)
//    from the anchor is a multiple of N. Year EVERY N also widens the day search.
//  - day: FIXED must equal the day of the month (a month without it is passed over);
//    EVERY N: the distance in days from the anchor is a multiple of N. Either switches
//    week and day of week off; they apply only with the day field unused.
//  - week: FIXED 1 is days 1-7 of the month, 2 days 8-14 ...; -1 the last seven days,
//    -2 the seven before; 0 matches nothing. EVERY N: N-week spacing, where days later
//    in the anchor's Sunday-to-Saturday week than the anchor always pass.
//  - day of week: FIXED is a mask, bit 0 Sunday to bit 6 Saturday. EVERY tests nothing.
//  - hour, minute, second, millisecond: FIXED must equal (a negative value is placed
//    counting from the end of the range, -1 is the last value, but never matches a
//    test); EVERY N steps by N; anything else is not walked and keeps its value, which
//    is 0 in a day opened at midnight.
// While the intraday window is set, the enumerators walk the window and ignore the
// four time fields: the opening time and every step after it up to and including the
// closing time, each day of the day pattern, second and millisecond 0.
//
// Values no schedule can use are served without hanging or faulting; what they mean:
//  - An interval of 0 (it reaches the record through the constructors and the time
//    setters) is no interval: it tests nothing and never turns its field, so "every 0
//    days" is every day and "every 0 hours" leaves the hour alone. The year keeps its
//    documented empty search: with year EVERY 0 no day after the first is found.
//  - A fixed time value outside its range even when counted from the end (hour 30 or
//    -25) can't be placed: no time of day matches it and GetNextTime finds no time.
//  - A fixed date value no day can have (month 13, day 32 or 31 April, week 6, an
//    empty mask, a year beyond 65535 or before the search starts) finds no day, at
//    once rather than after the whole search.
//  - The walk stops at 65535-12-30, the last day that DateTime arithmetic reaches: no
//    day or time after it is found.
//  - EVERY -2147483648 can't be negated and is stored as 2147483647.
class ZELVOR_DATATYPE_API TimeSeriesImpl final : public TimeSeries {
  public:
    // The nine pairs, in the order of CreateTimeSeries; the window is unset (-1).
    // A negative value paired with EVERY is stored negated (-5 gives 5); zero and every
    // fixed value are stored as given, in range or not.
    TimeSeriesImpl(RECURRENCE yearRecurrence, int year, RECURRENCE monthRecurrence, int month,
                   RECURRENCE dayRecurrence, int day, RECURRENCE weekRecurrence, int week,
                   RECURRENCE dayOfWeekRecurrence, int dayOfWeek, RECURRENCE hourRecurrence,
                   int hour, RECURRENCE minuteRecurrence, int minute, RECURRENCE secondRecurrence,
                   int second, RECURRENCE millisecondRecurrence, int millisecond) noexcept;
    // The nine pairs as above, then the window. Each window field out of its range (hours
    // -1..23, minutes -1..59, step -1..1439) becomes -1 on its own; then, when all five
    // are set and the hour and minute recurrences are not both exactly RECURRENCE_NONE,
    // all five become -1. A step of 0 is kept: the window is set and yields no point.
    TimeSeriesImpl(RECURRENCE yearRecurrence, int year, RECURRENCE monthRecurrence, int month,
                   RECURRENCE dayRecurrence, int day, RECURRENCE weekRecurrence, int week,
                   RECURRENCE dayOfWeekRecurrence, int dayOfWeek, RECURRENCE hourRecurrence,
                   int hour, RECURRENCE minuteRecurrence, int minute, RECURRENCE secondRecurrence,
                   int second, RECURRENCE millisecondRecurrence, int millisecond, int hourStart,
                   int minuteStart, int hourEnd, int minuteEnd, int executingEveryMinutes) noexcept;
    ~TimeSeriesImpl() override;

    // Clone is the copy; a plain copy would skip the construction rules.
    TimeSeriesImpl(const TimeSeriesImpl&) = delete;
    TimeSeriesImpl& operator=(const TimeSeriesImpl&) = delete;

    void Delete() override;
    unsigned int GetNextNTimePoints(const DateTime& start, unsigned int count,
                                    DateTime* points) const override;
    unsigned int GetNextNTimePoints(const DateTime& start, const DateTime& from, unsigned int count,
                                    DateTime* points) const override;
    unsigned int GetAllTimePoints(const DateTime& start, const DateTime& end,
                                  DateTime*& points) const override;

    int GetYear() const override;
    int GetMonth() const override;
    int GetDay() const override;
    int GetWeek() const override;
    int GetDayOfWeek() const override;
    int GetHour() const override;
    int GetMinute() const override;
    int GetSecond() const override;
    int GetMillisecond() const override;
    RECURRENCE GetYearRecurrence() const override;
    RECURRENCE GetMonthRecurrence() const override;
    RECURRENCE GetDayRecurrence() const override;
    RECURRENCE GetWeekRecurrence() const override;
    RECURRENCE GetDayOfWeekRecurrence() const override;
    RECURRENCE GetHourRecurrence() const override;
    RECURRENCE GetMinuteRecurrence() const override;
    RECURRENCE GetSecondRecurrence() const override;
    RECURRENCE GetMillisecondRecurrence() const override;
    bool PutYear(int year) override;
    bool PutMonth(int month) override;
    bool PutDay(int day) override;
    bool PutWeek(int week) override;
    bool PutDayOfWeek(int dayOfWeek) override;
    bool PutHour(int hour) override;
    bool PutMinute(int minute) override;
    bool PutSecond(int second) override;
    bool PutMillisecond(int millisecond) override;
    bool PutYearRecurrence(RECURRENCE recurrence) override;
    bool PutMonthRecurrence(RECURRENCE recurrence) override;
    bool PutDayRecurrence(RECURRENCE recurrence) override;
    bool PutWeekRecurrence(RECURRENCE recurrence) override;
    bool PutDayOfWeekRecurrence(RECURRENCE recurrence) override;
    bool PutHourRecurrence(RECURRENCE recurrence) override;
    bool PutMinuteRecurrence(RECURRENCE recurrence) override;
    bool PutSecondRecurrence(RECURRENCE recurrence) override;
    bool PutMillisecondRecurrence(RECURRENCE recurrence) override;
    TimeSeries* Clone() const override;
    int GetHourStart() const override;
    int GetMinuteStart() const override;
    int GetHourEnd() const override;
    int GetMinuteEnd() const override;
    int GetExecutingEveryMinutes() const override;
    bool PutHourStart(int hour) override;
    bool PutMinuteStart(int minute) override;
    bool PutHourEnd(int hour) override;
    bool PutMinuteEnd(int minute) override;
    bool PutExecutingEveryMinutes(int minutes) override;

    // ---- Record checks -----------------------------------------------------------------

    // True for every schedule; it reads nothing and nothing calls it.
    bool CheckValidity() const;
    // True when all five window fields differ from -1.
    bool IsIntradayWindowSet() const;
    // Whether `time` (UTC), taken to local time, lies in the window by hour and minute,
    // both ends included and seconds ignored: 10:00:59 is inside a window closing at
    // 10:00, 10:01:00 is not. False for every time while the window is unset, and for
    // a window that closes before it opens.
    bool IsWithinIntradayWindow(const DateTime& time) const;

    // The size the array of GetAllTimePoints starts with, for a range whose local ends
    // lie in the years `startYear` and `endYear`: the year count (endYear + 1 - startYear
    // while the year is EVERY, else 1) times 12 unless the month is FIXED, times 31
    // unless the day is FIXED, times 6 while the week is EVERY, times the number of days
    // in the mask (bits 0-6) while the day of week is FIXED, times 24, 60, 60 and 1000
    // for each of hour, minute, second and millisecond at EVERY; plus 2. Daily at 10:30
    // gives 374, every two hours 8930. The product is taken in 64 bits; a count below 0
    // counts as 0, and the result is capped at 65536: the array grows beyond that as
    // the walk needs, so a dense schedule doesn't allocate for points it never yields.
    unsigned int EstimateCapacity(int startYear, int endYear) const;

    // ---- Day pattern: local dates; the time of day plays no part in the tests -------

    // Whether the date of `day` belongs to the schedule, intervals counted from `anchor`
    // (may be null: then no interval is tested). `day` is not changed.
    bool IsDayInPattern(const DateTime* anchor, DateTime& day) const;
    // The first matching day at or after the date of `day`, at 00:00:00.000. When the
    // year is FIXED in the future the search jumps to that year, keeping month and day
    // (29 February becomes the 28th in a common year), and goes on from the day after.
    // The search covers 2928 days (8 x 366), or N times that for year EVERY N. False,
    // with `day` unchanged, when nothing matches. From 2010-03-01 with day fixed at 31:
    // 2010-03-31.
    bool GetFirstDay(DateTime& day) const;
    // The next matching day after `previous`, intervals counted from `previous`. The day
    // right after `previous` comes back with the time of day of `previous`, any later
    // day at midnight. Same jump and search length as GetFirstDay. False, with `next`
    // unchanged, when nothing matches. `previous` and `next` may be one object.
    bool GetNextDay(const DateTime& previous, DateTime& next) const;

    // ---- Time-of-day pattern: local wall-clock times ---------------------------------

    // Whether the time of day of `time` belongs to the schedule: each FIXED field equals
    // its value, and with an anchor each EVERY field lies a multiple of its interval
    // after the anchor's (counting across midnight: 01:00 is 5 hours after 20:00).
    bool IsTimeInPattern(const DateTime* anchor, DateTime& time) const;
    // The next time of the same day, turning the fields like an odometer from the
    // millisecond up: an EVERY field steps by its interval and, on passing the end of
    // its range, wraps and carries into the next field in use; a FIXED field is set to
    // its value. True with the later time in `next`; false when the day has no later
    // time, with `next` holding the time the fields rolled over to, on the same date
    // (every 5 hours from 20:00 gives false and 01:00), which the enumerators carry into
    // the next day. `next` is always written. From midnight with hour fixed at 10 and
    // minute every 15: true, 10:15.
    bool GetNextTime(const DateTime& previous, DateTime& next) const;
    // Repairs one point of GetNextNTimePoints at a repeated hour: when `start` (UTC) is
    // after `current` (local) taken to UTC, moves `current` one hour on and stores its
    // UTC time in points[index]. False, doing nothing, for a negative index or a null
    // array; true otherwise.
    bool ValidateAndCorrectNextTime(const DateTime& start, int index, DateTime* points,
                                    DateTime& current) const;

  private:
    friend class internal::ScheduleRules;

    void ApplyConstructionRules() noexcept;

    int mYear;
    int mMonth;
    int mDay;
    int mHour;
    int mMinute;
    int mSecond;
    int mMillisecond;
    int mWeek;
    int mDayOfWeek;
    RECURRENCE mYearRecurrence;
    RECURRENCE mMonthRecurrence;
    RECURRENCE mDayRecurrence;
    RECURRENCE mHourRecurrence;
    RECURRENCE mMinuteRecurrence;
    RECURRENCE mSecondRecurrence;
    RECURRENCE mMillisecondRecurrence;
    RECURRENCE mWeekRecurrence;
    RECURRENCE mDayOfWeekRecurrence;
    int mHourStart;
    int mMinuteStart;
    int mHourEnd;
    int mMinuteEnd;
    int mExecutingEveryMinutes;
};

}  // namespace ZelvorDataType
