#pragma once

#include <ZelvorBase/Message.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

// How one calendar field of a schedule is read. Stored and passed as a signed 32-bit
// value; every test looks for FIXED and EVERY only, so any other number (including
// NONE) means the field takes no part.
enum RECURRENCE : int {
    RECURRENCE_FIXED = -3,   // the paired value is the exact value the field must have
    RECURRENCE_EVERY = -2,   // the paired value is an interval N: every N-th unit
    RECURRENCE_NONE = -100,  // the field takes no part
};

// The tag of what schedules throw, as ExceptionImpl<TimeSeriesException>: domain
// MESSAGE_DOMAIN_UNKNOWN, id -1, text "Invalid parameter" (a null output array).
class ZELVOR_DATATYPE_API TimeSeriesException : public ZelvorBase::Message {};

namespace internal {
class ScheduleRules;
}

// A recurring schedule: nine calendar fields, each a value with a RECURRENCE, plus an
// optional intraday window (an opening, a closing and a step in minutes). It holds no
// date of its own: a series begins on the first matching day at or after the start a
// caller passes to an enumerator, and every interval counts on from there.
//
// Enumerators take and return UTC and walk in local wall-clock time (the process's
// zone, through DateTime::ToLocalTime and ToUTCTime). They are const, read the record
// only and keep nothing between calls, so any number of threads may enumerate one
// schedule at once as long as nobody calls a setter meanwhile.
//
// Example, every weekday at 09:00 (mask 62 is Monday to Friday):
//   TimeSeries* s = CreateTimeSeries(RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
//       RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_FIXED, 62,
//       RECURRENCE_FIXED, 9, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
//       RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1);
//   s->GetNextNTimePoints(start, 5, points);  ...  s->Delete();
class ZELVOR_DATATYPE_API TimeSeries {
  public:
    // Destroys the schedule and frees its storage. A schedule from CreateTimeSeries or
    // Clone may equally be deleted through the virtual destructor.
    virtual void Delete() = 0;

    // The first `count` points of the schedule at or after `start` (UTC), stored in UTC
    // into points[0..count-1]; returns how many were stored (fewer when the schedule
    // runs out; later entries are untouched). The series begins on the first matching
    // day at or after `start`, at its midnight, and the times on that day before
    // `start` are walked over and skipped; a point equal to `start` counts. A point that
    // a repeated hour of the zone puts before `start` in UTC moves one hour on, and the
    // rest of the series with it. `count` 0 returns 0, even with a null array; a null
    // array otherwise throws ExceptionImpl<TimeSeriesException>("Invalid parameter").
    // Daily at 10:30 from 2010-03-01 12:00 (UTC zone): 03-02 10:30, 03-03 10:30, ...
    virtual unsigned int GetNextNTimePoints(const DateTime& start, unsigned int count,
                                            DateTime* points) const = 0;

    // The first `count` points at or after `from` of the series that began at `start`
    // (both UTC, in any order): the walk runs from `start`, so intervals keep their
    // phase, and only `from` gates what is stored. Differences from the overload above:
    // after a day change the time is tested against the previous day's last time (so an
    // hourly interval runs on across days), no point is moved for a repeated hour, and
    // when midnight of the first day is in the pattern that whole day is listed from
    // midnight, also before `start`. The walk visits every point between `start` and
    // `from`, so its cost grows with their distance. Entry rules and the result as
    // above. Every 3 days at 10:00, start 2010-03-01, from 03-08: 03-10, 03-13, ...
    virtual unsigned int GetNextNTimePoints(const DateTime& start, const DateTime& from,
                                            unsigned int count, DateTime* points) const = 0;

    // All points from `start` up to and including `end` (UTC) in a new array, which the
    // caller releases with delete[]; returns the number of points. The array is sized
    // from the recurrences (see TimeSeriesImpl::EstimateCapacity) and grows while the
    // walk runs, so no point of the range is lost; entries past the result hold
    // DateTime(0.0). Without a window the whole first day is listed from its first time,
    // also the times before `start`. `start` after `end` returns 0 and leaves `points`
    // alone, and so does a schedule whose first point lies past `end`; a window walk
    // that finds no point in the range can also return 0 with a new (empty) array in
    // `points`, so a caller that nulls `points` first can tell and must delete[] it.
    // A failing allocation (std::bad_alloc) passes through with `points` untouched.
    // Daily at 10:30 from 2010-03-01 12:00 to 03-03 12:00: 03-01, 03-02, 03-03 10:30.
    virtual unsigned int GetAllTimePoints(const DateTime& start, const DateTime& end,
                                          DateTime*& points) const = 0;

    // The stored values, as set (a day-of-week value is the mask, bit 0 Sunday to bit 6
    // Saturday).
    virtual int GetYear() const = 0;
    virtual int GetMonth() const = 0;
    virtual int GetDay() const = 0;
    virtual int GetWeek() const = 0;
    virtual int GetDayOfWeek() const = 0;
    virtual int GetHour() const = 0;
    virtual int GetMinute() const = 0;
    virtual int GetSecond() const = 0;
    virtual int GetMillisecond() const = 0;

    // The stored recurrences, as set (any int value may stand there).
    virtual RECURRENCE GetYearRecurrence() const = 0;
    virtual RECURRENCE GetMonthRecurrence() const = 0;
    virtual RECURRENCE GetDayRecurrence() const = 0;
    virtual RECURRENCE GetWeekRecurrence() const = 0;
    virtual RECURRENCE GetDayOfWeekRecurrence() const = 0;
    virtual RECURRENCE GetHourRecurrence() const = 0;
    virtual RECURRENCE GetMinuteRecurrence() const = 0;
    virtual RECURRENCE GetSecondRecurrence() const = 0;
    virtual RECURRENCE GetMillisecondRecurrence() const = 0;

    // Value setters: true when stored, false when refused (nothing changes then).
    // PutYear refuses a value below 1 while the year is EVERY. PutMonth, PutDay and
    // PutWeek refuse 0, and a negative value while their field is EVERY (a negative
    // fixed value counts from the end). PutDayOfWeek refuses a mask below 1. PutHour
    // takes 0..23, PutMinute and PutSecond 0..59, PutMillisecond 0..999, whatever the
    // recurrence (so 0 can become an interval; see TimeSeriesImpl).
    virtual bool PutYear(int year) = 0;
    virtual bool PutMonth(int month) = 0;
    virtual bool PutDay(int day) = 0;
    virtual bool PutWeek(int week) = 0;
    virtual bool PutDayOfWeek(int dayOfWeek) = 0;
    virtual bool PutHour(int hour) = 0;
    virtual bool PutMinute(int minute) = 0;
    virtual bool PutSecond(int second) = 0;
    virtual bool PutMillisecond(int millisecond) = 0;

    // Recurrence setters: store the recurrence and return true; when it is EVERY and the
    // paired value is below 1, the value becomes 1 (day 0 gives 1, day 31 stays 31).
    // PutDayOfWeekRecurrence alone refuses EVERY (false, nothing changes) and never
    // touches the mask.
    virtual bool PutYearRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutMonthRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutDayRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutWeekRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutDayOfWeekRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutHourRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutMinuteRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutSecondRecurrence(RECURRENCE recurrence) = 0;
    virtual bool PutMillisecondRecurrence(RECURRENCE recurrence) = 0;

    // A new schedule on the heap, owned by the caller, built by the full constructor
    // from this one's fields, so the construction rules run again: a window set through
    // the setters while the hour or minute is in use does not survive the copy.
    virtual TimeSeries* Clone() const = 0;

    // The intraday window, local time; -1 is unset.
    virtual int GetHourStart() const = 0;
    virtual int GetMinuteStart() const = 0;
    virtual int GetHourEnd() const = 0;
    virtual int GetMinuteEnd() const = 0;
    virtual int GetExecutingEveryMinutes() const = 0;

    // Window setters store one field each and refuse (false) an hour outside -1..23, a
    // minute outside -1..59 and a step outside -1..1439. The construction's window rule
    // is not applied here.
    virtual bool PutHourStart(int hour) = 0;
    virtual bool PutMinuteStart(int minute) = 0;
    virtual bool PutHourEnd(int hour) = 0;
    virtual bool PutMinuteEnd(int minute) = 0;
    virtual bool PutExecutingEveryMinutes(int minutes) = 0;

    virtual ~TimeSeries();

  protected:
    TimeSeries() = default;
    TimeSeries(const TimeSeries&) = default;
    TimeSeries& operator=(const TimeSeries&) = default;
};

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

// The factory: a new schedule on the heap, owned by the caller until Delete. The
// parameters, in this order, are the nine pairs (recurrence, value) of year, month,
// day, week, day of week, hour, minute, second, millisecond, then the window: hour and
// minute of the opening, hour and minute of the closing, and the step in minutes (-1
// for unset). The construction rules are those of the 23-parameter TimeSeriesImpl. A
// failing allocation throws std::bad_alloc.
ZELVOR_DATATYPE_API TimeSeries* CreateTimeSeries(
    RECURRENCE yearRecurrence, int year, RECURRENCE monthRecurrence, int month,
    RECURRENCE dayRecurrence, int day, RECURRENCE weekRecurrence, int week,
    RECURRENCE dayOfWeekRecurrence, int dayOfWeek, RECURRENCE hourRecurrence, int hour,
    RECURRENCE minuteRecurrence, int minute, RECURRENCE secondRecurrence, int second,
    RECURRENCE millisecondRecurrence, int millisecond, int hourStart, int minuteStart, int hourEnd,
    int minuteEnd, int executingEveryMinutes);

}  // namespace ZelvorDataType

// Instantiated once, in the library.
extern template class ZelvorBase::ExceptionImpl<ZelvorDataType::TimeSeriesException>;
