// The first points of a schedule at or after a start.
#include "schedule/Walk.h"

namespace ZelvorDataType {

unsigned int TimeSeriesImpl::GetNextNTimePoints(const DateTime& start, unsigned int count,
                                                DateTime* points) const {
    if (!internal::ArrayStore::Wanted(points, count)) {
        return 0;
    }
    const internal::ScheduleRules rules(*this);
    internal::ArrayStore store(points, count);
    internal::FirstPoints sink(rules, start, store);
    internal::Walk(rules, internal::FromDateTime(start.ToLocalTime()),
                   internal::FirstPoint::AtOrAfterStart, sink);
    return store.Written();
}

}  // namespace ZelvorDataType
