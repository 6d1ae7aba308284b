#pragma once

// The pattern logic of a schedule, on local wall-clock values. A ScheduleRules is a
// snapshot of one TimeSeriesImpl's record, taken at the start of a call: the call reads
// nothing else of the schedule, which is what makes enumerating const and safe from
// many threads at once.

#include <ZelvorDataType/TimeSeries.h>

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

    // The fields of the record, as TimeSeriesImpl holds them.
    struct Record {
        int mYear, mMonth, mDay, mHour, mMinute, mSecond, mMillisecond, mWeek, mDayOfWeek;
        RECURRENCE mYearRecurrence, mMonthRecurrence, mDayRecurrence, mHourRecurrence,
            mMinuteRecurrence, mSecondRecurrence, mMillisecondRecurrence, mWeekRecurrence,
            mDayOfWeekRecurrence;
        int mHourStart, mMinuteStart, mHourEnd, mMinuteEnd, mExecutingEveryMinutes;
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

    Record mRecord;
    bool mNoDay;   // no date can pass the day pattern
    bool mNoTime;  // a fixed time field can't be placed
};

inline DateTime ToUTC(const WallTime& local) {
    return ToDateTime(local).ToUTCTime();
}

}  // namespace ZelvorDataType::internal
