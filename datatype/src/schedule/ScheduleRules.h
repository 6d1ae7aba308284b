#pragma once

// The pattern logic of a schedule, on local wall-clock values. A ScheduleRules reads the
// record of one TimeSeriesImpl in place and only reads it, so any number of calls may
// enumerate one schedule at once; a setter running meanwhile is a data race, as it is
// for any other const member of the schedule. It lives for one call and must not
// outlive the schedule it reads.

#include <array>

#include <ZelvorDataType/TimeSeriesImpl.h>

#include "schedule/WallTime.h"

namespace ZelvorDataType::internal {

class ScheduleRules {
  public:
    explicit ScheduleRules(const TimeSeriesImpl& schedule) noexcept;

    // ---- Days (DayPattern.cpp) ----
    bool DayMatches(const WallTime* anchor, const WallTime& day) const;
    bool FirstDay(WallTime& day) const;
    // `previous` and `next` may be one object.
    bool NextDay(const WallTime& previous, WallTime& next) const;

    // ---- Times of day (TimeOfDayPattern.cpp) ----
    bool TimeMatches(const WallTime* anchor, const WallTime& time) const;
    bool NextTime(const WallTime& previous, WallTime& next) const;
    // The next time of the series after `current`: a later time of its day, or else
    // the next day of the pattern and its first time. With `anchored`, the first time
    // of a new day is tested against the last time of the day before.
    bool NextPoint(WallTime& current, bool anchored) const;
    // Moves `current` one hour on and restores `stored` (its UTC form) when a repeated
    // hour put `stored` before `start`.
    void CorrectRepeatedHour(const DateTime& start, DateTime& stored, WallTime& current) const;

    // ---- Intraday window (TimeOfDayPattern.cpp) ----
    bool WindowSet() const;
    int WindowStepMinutes() const { return mRecord.mExecutingEveryMinutes; }
    // Puts `close` on the closing time of current's day and `current` on its opening.
    void OpenDay(WallTime& current, WallTime& close) const;
    // One step of the window; past `close`, the opening of the next day of the pattern.
    // False when the walk has ended.
    bool Step(WallTime& current, WallTime& close) const;

    unsigned int EstimateCapacity(int startYear, int endYear) const;

    // One time field as the odometer turns it.
    struct Wheel {
        RECURRENCE recurrence;
        int value;
        int range;
        int unit;  // milliseconds
    };

  private:
    bool YearPasses(const WallTime* anchor, int year) const;
    bool MonthPasses(const WallTime* anchor, const CivilDay& day) const;
    bool DayStagePasses(const WallTime* anchor, const WallTime& day) const;
    bool CanNeverMatchADay() const;
    long long Horizon() const;
    void JumpToFixedYear(CivilDay& day) const;
    bool Search(const WallTime* anchor, WallTime& work) const;
    bool CanNeverPlaceATime() const;
    // The four time fields, lowest first: the order in which the odometer turns them.
    std::array<Wheel, 4> Wheels() const;

    const TimeSeriesImpl& mRecord;
    bool mNoDay;   // no date can pass the day pattern
    bool mNoTime;  // a fixed time field can't be placed
};

inline DateTime ToUTC(const WallTime& local) {
    return ToDateTime(local).ToUTCTime();
}

}  // namespace ZelvorDataType::internal
