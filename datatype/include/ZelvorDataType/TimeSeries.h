#pragma once

#include <iosfwd>
#include <memory>
#include <utility>

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

// Releases a schedule the way its owner must, by Delete(); nothing for null.
struct TimeSeriesDeleter {
    void operator()(TimeSeries* schedule) const noexcept {
        if (schedule != nullptr) {
            schedule->Delete();
        }
    }
};

// An owning pointer to a schedule: the schedule is deleted with the pointer.
using TimeSeriesPtr = std::unique_ptr<TimeSeries, TimeSeriesDeleter>;

// CreateTimeSeries with an owner: the same 23 parameters in the same order, the result
// held by a TimeSeriesPtr. Throws what CreateTimeSeries throws.
template <class... Parameters>
TimeSeriesPtr MakeTimeSeries(Parameters&&... parameters) {
    return TimeSeriesPtr(CreateTimeSeries(std::forward<Parameters>(parameters)...));
}

// Writes DescribeSchedule(schedule) of <ZelvorDataType/Text.h>: "on Mon,Tue,Wed,Thu,Fri,
// hour 9, minute 0, second 0, millisecond 0".
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const TimeSeries& schedule);

}  // namespace ZelvorDataType

// Instantiated once, in the library.
extern template class ZelvorBase::ExceptionImpl<ZelvorDataType::TimeSeriesException>;

// The implementation class, so that code naming TimeSeriesImpl through this header
// keeps compiling.
#include <ZelvorDataType/TimeSeriesImpl.h>
