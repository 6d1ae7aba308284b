// The points of a series begun at one time, from a later time on: the walk starts at
// the series' start, so every interval keeps its phase, and only the later time gates
// what is stored.
#include "schedule/Walk.h"

namespace ZelvorDataType {

unsigned int TimeSeriesImpl::GetNextNTimePoints(const DateTime& start, const DateTime& from,
                                                unsigned int count, DateTime* points) const {
    if (!internal::ArrayStore::Wanted(points, count)) {
        return 0;
    }
    const internal::ScheduleRules rules(*this);
    internal::ArrayStore store(points, count);
    internal::GatedPoints gate(internal::FromDateTime(from.ToLocalTime()), store);
    internal::Walk(rules, internal::FromDateTime(start.ToLocalTime()),
                   internal::FirstPoint::SeriesPhase, gate);
    return store.Written();
}

}  // namespace ZelvorDataType
