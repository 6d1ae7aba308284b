// The schedule record: construction rules, accessors, copies and the factory.
#include <ZelvorDataType/TimeSeries.h>

#include <climits>
#include <initializer_list>
#include <utility>

#include "schedule/ScheduleRules.h"

template class ZelvorBase::ExceptionImpl<ZelvorDataType::TimeSeriesException>;

namespace ZelvorDataType {

namespace {

// An interval is stored as its magnitude. INT_MIN has none in an int, so it becomes
// the largest interval there is.
void NormaliseInterval(RECURRENCE recurrence, int& value) {
    if (recurrence == RECURRENCE_EVERY && value < 0) {
        value = value == INT_MIN ? INT_MAX : -value;
    }
}

bool InRange(int value, int low, int high) {
    return value >= low && value <= high;
}

// Stores `value` unless it is 0, or negative while the field is an interval.
bool PutCountedValue(int& field, RECURRENCE recurrence, int value) {
    if (value == 0 || (value < 0 && recurrence == RECURRENCE_EVERY)) {
        return false;
    }
    field = value;
    return true;
}

bool PutRangedValue(int& field, int value, int low, int high) {
    if (!InRange(value, low, high)) {
        return false;
    }
    field = value;
    return true;
}

// An interval below 1 can't be meant, so turning a field into one makes it at least 1.
bool PutRecurrence(RECURRENCE& field, int& value, RECURRENCE recurrence) {
    field = recurrence;
    if (recurrence == RECURRENCE_EVERY && value < 1) {
        value = 1;
    }
    return true;
}

}  // namespace

TimeSeries::~TimeSeries() = default;

TimeSeriesImpl::TimeSeriesImpl(RECURRENCE yearRecurrence, int year, RECURRENCE monthRecurrence,
                               int month, RECURRENCE dayRecurrence, int day,
                               RECURRENCE weekRecurrence, int week, RECURRENCE dayOfWeekRecurrence,
                               int dayOfWeek, RECURRENCE hourRecurrence, int hour,
                               RECURRENCE minuteRecurrence, int minute, RECURRENCE secondRecurrence,
                               int second, RECURRENCE millisecondRecurrence,
                               int millisecond) noexcept
    : TimeSeriesImpl(yearRecurrence, year, monthRecurrence, month, dayRecurrence, day,
                     weekRecurrence, week, dayOfWeekRecurrence, dayOfWeek, hourRecurrence, hour,
                     minuteRecurrence, minute, secondRecurrence, second, millisecondRecurrence,
                     millisecond, -1, -1, -1, -1, -1) {}

TimeSeriesImpl::TimeSeriesImpl(RECURRENCE yearRecurrence, int year, RECURRENCE monthRecurrence,
                               int month, RECURRENCE dayRecurrence, int day,
                               RECURRENCE weekRecurrence, int week, RECURRENCE dayOfWeekRecurrence,
                               int dayOfWeek, RECURRENCE hourRecurrence, int hour,
                               RECURRENCE minuteRecurrence, int minute, RECURRENCE secondRecurrence,
                               int second, RECURRENCE millisecondRecurrence, int millisecond,
                               int hourStart, int minuteStart, int hourEnd, int minuteEnd,
                               int executingEveryMinutes) noexcept
    : mYear(year),
      mMonth(month),
      mDay(day),
      mHour(hour),
      mMinute(minute),
      mSecond(second),
      mMillisecond(millisecond),
      mWeek(week),
      mDayOfWeek(dayOfWeek),
      mYearRecurrence(yearRecurrence),
      mMonthRecurrence(monthRecurrence),
      mDayRecurrence(dayRecurrence),
      mHourRecurrence(hourRecurrence),
      mMinuteRecurrence(minuteRecurrence),
      mSecondRecurrence(secondRecurrence),
      mMillisecondRecurrence(millisecondRecurrence),
      mWeekRecurrence(weekRecurrence),
      mDayOfWeekRecurrence(dayOfWeekRecurrence),
      mHourStart(hourStart),
      mMinuteStart(minuteStart),
      mHourEnd(hourEnd),
      mMinuteEnd(minuteEnd),
      mExecutingEveryMinutes(executingEveryMinutes) {
    ApplyConstructionRules();
}

void TimeSeriesImpl::ApplyConstructionRules() noexcept {
    NormaliseInterval(mYearRecurrence, mYear);
    NormaliseInterval(mMonthRecurrence, mMonth);
    NormaliseInterval(mDayRecurrence, mDay);
    NormaliseInterval(mWeekRecurrence, mWeek);
    NormaliseInterval(mDayOfWeekRecurrence, mDayOfWeek);
    NormaliseInterval(mHourRecurrence, mHour);
    NormaliseInterval(mMinuteRecurrence, mMinute);
    NormaliseInterval(mSecondRecurrence, mSecond);
    NormaliseInterval(mMillisecondRecurrence, mMillisecond);

    // Each window field out of range is dropped on its own...
    for (auto [field, high] :
         {std::pair{&mHourStart, 23}, std::pair{&mMinuteStart, 59}, std::pair{&mHourEnd, 23},
          std::pair{&mMinuteEnd, 59}, std::pair{&mExecutingEveryMinutes, 1439}}) {
        if (!InRange(*field, -1, high)) {
            *field = -1;
        }
    }
    // ...and a whole window only stands beside an hour and a minute left unused: both
    // would otherwise say when in the day the points fall.
    if (IsIntradayWindowSet() &&
        !(mHourRecurrence == RECURRENCE_NONE && mMinuteRecurrence == RECURRENCE_NONE)) {
        mHourStart = mMinuteStart = mHourEnd = mMinuteEnd = mExecutingEveryMinutes = -1;
    }
}

TimeSeriesImpl::~TimeSeriesImpl() = default;

void TimeSeriesImpl::Delete() {
    delete this;
}

TimeSeries* TimeSeriesImpl::Clone() const {
    return new TimeSeriesImpl(mYearRecurrence, mYear, mMonthRecurrence, mMonth, mDayRecurrence,
                              mDay, mWeekRecurrence, mWeek, mDayOfWeekRecurrence, mDayOfWeek,
                              mHourRecurrence, mHour, mMinuteRecurrence, mMinute, mSecondRecurrence,
                              mSecond, mMillisecondRecurrence, mMillisecond, mHourStart,
                              mMinuteStart, mHourEnd, mMinuteEnd, mExecutingEveryMinutes);
}

bool TimeSeriesImpl::CheckValidity() const {
    return true;
}

bool TimeSeriesImpl::IsIntradayWindowSet() const {
    return mHourStart != -1 && mMinuteStart != -1 && mHourEnd != -1 && mMinuteEnd != -1 &&
           mExecutingEveryMinutes != -1;
}

unsigned int TimeSeriesImpl::EstimateCapacity(int startYear, int endYear) const {
    return internal::ScheduleRules(*this).EstimateCapacity(startYear, endYear);
}

int TimeSeriesImpl::GetYear() const {
    return mYear;
}
int TimeSeriesImpl::GetMonth() const {
    return mMonth;
}
int TimeSeriesImpl::GetDay() const {
    return mDay;
}
int TimeSeriesImpl::GetWeek() const {
    return mWeek;
}
int TimeSeriesImpl::GetDayOfWeek() const {
    return mDayOfWeek;
}
int TimeSeriesImpl::GetHour() const {
    return mHour;
}
int TimeSeriesImpl::GetMinute() const {
    return mMinute;
}
int TimeSeriesImpl::GetSecond() const {
    return mSecond;
}
int TimeSeriesImpl::GetMillisecond() const {
    return mMillisecond;
}

RECURRENCE TimeSeriesImpl::GetYearRecurrence() const {
    return mYearRecurrence;
}
RECURRENCE TimeSeriesImpl::GetMonthRecurrence() const {
    return mMonthRecurrence;
}
RECURRENCE TimeSeriesImpl::GetDayRecurrence() const {
    return mDayRecurrence;
}
RECURRENCE TimeSeriesImpl::GetWeekRecurrence() const {
    return mWeekRecurrence;
}
RECURRENCE TimeSeriesImpl::GetDayOfWeekRecurrence() const {
    return mDayOfWeekRecurrence;
}
RECURRENCE TimeSeriesImpl::GetHourRecurrence() const {
    return mHourRecurrence;
}
RECURRENCE TimeSeriesImpl::GetMinuteRecurrence() const {
    return mMinuteRecurrence;
}
RECURRENCE TimeSeriesImpl::GetSecondRecurrence() const {
    return mSecondRecurrence;
}
RECURRENCE TimeSeriesImpl::GetMillisecondRecurrence() const {
    return mMillisecondRecurrence;
}

bool TimeSeriesImpl::PutYear(int year) {
    if (year < 1 && mYearRecurrence == RECURRENCE_EVERY) {
        return false;
    }
    mYear = year;
    return true;
}
bool TimeSeriesImpl::PutMonth(int month) {
    return PutCountedValue(mMonth, mMonthRecurrence, month);
}
bool TimeSeriesImpl::PutDay(int day) {
    return PutCountedValue(mDay, mDayRecurrence, day);
}
bool TimeSeriesImpl::PutWeek(int week) {
    return PutCountedValue(mWeek, mWeekRecurrence, week);
}
bool TimeSeriesImpl::PutDayOfWeek(int dayOfWeek) {
    return PutRangedValue(mDayOfWeek, dayOfWeek, 1, INT_MAX);
}
bool TimeSeriesImpl::PutHour(int hour) {
    return PutRangedValue(mHour, hour, 0, 23);
}
bool TimeSeriesImpl::PutMinute(int minute) {
    return PutRangedValue(mMinute, minute, 0, 59);
}
bool TimeSeriesImpl::PutSecond(int second) {
    return PutRangedValue(mSecond, second, 0, 59);
}
bool TimeSeriesImpl::PutMillisecond(int millisecond) {
    return PutRangedValue(mMillisecond, millisecond, 0, 999);
}

bool TimeSeriesImpl::PutYearRecurrence(RECURRENCE r) {
    return PutRecurrence(mYearRecurrence, mYear, r);
}
bool TimeSeriesImpl::PutMonthRecurrence(RECURRENCE r) {
    return PutRecurrence(mMonthRecurrence, mMonth, r);
}
bool TimeSeriesImpl::PutDayRecurrence(RECURRENCE r) {
    return PutRecurrence(mDayRecurrence, mDay, r);
}
bool TimeSeriesImpl::PutWeekRecurrence(RECURRENCE r) {
    return PutRecurrence(mWeekRecurrence, mWeek, r);
}
bool TimeSeriesImpl::PutDayOfWeekRecurrence(RECURRENCE r) {
    // A mask has no interval.
    if (r == RECURRENCE_EVERY) {
        return false;
    }
    mDayOfWeekRecurrence = r;
    return true;
}
bool TimeSeriesImpl::PutHourRecurrence(RECURRENCE r) {
    return PutRecurrence(mHourRecurrence, mHour, r);
}
bool TimeSeriesImpl::PutMinuteRecurrence(RECURRENCE r) {
    return PutRecurrence(mMinuteRecurrence, mMinute, r);
}
bool TimeSeriesImpl::PutSecondRecurrence(RECURRENCE r) {
    return PutRecurrence(mSecondRecurrence, mSecond, r);
}
bool TimeSeriesImpl::PutMillisecondRecurrence(RECURRENCE r) {
    return PutRecurrence(mMillisecondRecurrence, mMillisecond, r);
}

int TimeSeriesImpl::GetHourStart() const {
    return mHourStart;
}
int TimeSeriesImpl::GetMinuteStart() const {
    return mMinuteStart;
}
int TimeSeriesImpl::GetHourEnd() const {
    return mHourEnd;
}
int TimeSeriesImpl::GetMinuteEnd() const {
    return mMinuteEnd;
}
int TimeSeriesImpl::GetExecutingEveryMinutes() const {
    return mExecutingEveryMinutes;
}

bool TimeSeriesImpl::PutHourStart(int hour) {
    return PutRangedValue(mHourStart, hour, -1, 23);
}
bool TimeSeriesImpl::PutMinuteStart(int minute) {
    return PutRangedValue(mMinuteStart, minute, -1, 59);
}
bool TimeSeriesImpl::PutHourEnd(int hour) {
    return PutRangedValue(mHourEnd, hour, -1, 23);
}
bool TimeSeriesImpl::PutMinuteEnd(int minute) {
    return PutRangedValue(mMinuteEnd, minute, -1, 59);
}
bool TimeSeriesImpl::PutExecutingEveryMinutes(int minutes) {
    return PutRangedValue(mExecutingEveryMinutes, minutes, -1, 1439);
}

TimeSeries* CreateTimeSeries(RECURRENCE yearRecurrence, int year, RECURRENCE monthRecurrence,
                             int month, RECURRENCE dayRecurrence, int day,
                             RECURRENCE weekRecurrence, int week, RECURRENCE dayOfWeekRecurrence,
                             int dayOfWeek, RECURRENCE hourRecurrence, int hour,
                             RECURRENCE minuteRecurrence, int minute, RECURRENCE secondRecurrence,
                             int second, RECURRENCE millisecondRecurrence, int millisecond,
                             int hourStart, int minuteStart, int hourEnd, int minuteEnd,
                             int executingEveryMinutes) {
    return new TimeSeriesImpl(yearRecurrence, year, monthRecurrence, month, dayRecurrence, day,
                              weekRecurrence, week, dayOfWeekRecurrence, dayOfWeek, hourRecurrence,
                              hour, minuteRecurrence, minute, secondRecurrence, second,
                              millisecondRecurrence, millisecond, hourStart, minuteStart, hourEnd,
                              minuteEnd, executingEveryMinutes);
}

}  // namespace ZelvorDataType
