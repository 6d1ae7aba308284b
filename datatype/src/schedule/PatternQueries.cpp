// The schedule's pattern queries on DateTime values: each converts to the wall time the
// day and time patterns work in, asks them, and converts the answer back.
#include "schedule/ScheduleRules.h"

namespace ZelvorDataType {

using internal::FromDateTime;
using internal::ScheduleRules;
using internal::ToDateTime;
using internal::WallTime;

bool TimeSeriesImpl::IsDayInPattern(const DateTime* anchor, DateTime& day) const {
    WallTime from{};
    return ScheduleRules(*this).DayMatches(internal::AnchorOf(anchor, from), FromDateTime(day));
}

bool TimeSeriesImpl::GetFirstDay(DateTime& day) const {
    WallTime work = FromDateTime(day);
    if (!ScheduleRules(*this).FirstDay(work)) {
        return false;
    }
    day = ToDateTime(work);
    return true;
}

bool TimeSeriesImpl::GetNextDay(const DateTime& previous, DateTime& next) const {
    WallTime work = FromDateTime(previous);
    if (!ScheduleRules(*this).NextDay(work, work)) {
        return false;
    }
    next = ToDateTime(work);
    return true;
}

bool TimeSeriesImpl::IsTimeInPattern(const DateTime* anchor, DateTime& time) const {
    WallTime from{};
    return ScheduleRules(*this).TimeMatches(internal::AnchorOf(anchor, from), FromDateTime(time));
}

bool TimeSeriesImpl::GetNextTime(const DateTime& previous, DateTime& next) const {
    WallTime work = FromDateTime(previous);
    const bool later = ScheduleRules(*this).NextTime(work, work);
    next = ToDateTime(work);
    return later;
}

}  // namespace ZelvorDataType
