// All points of a schedule in a range, in a new array owned by the caller.
#include <algorithm>
#include <climits>
#include <memory>

#include "calendar/DateTimeArray.h"
#include "schedule/Walk.h"

namespace ZelvorDataType {

namespace {

using internal::WallTime;

class PointArray final : public internal::PointStore {
  public:
    // `capacity` entries to start with, for a walk over the local times `from` to `to`
    // (milliseconds of the wall clock).
    PointArray(unsigned int capacity, long long from, long long to)
        : mSlots(internal::DateTimeArray::New(capacity)),
          mCapacity(capacity),
          mTo(to),
          mFirstAt(from) {}

    // Appends the point of local time `local`, growing the array when it is full; false
    // once the count would leave 32 bits, which the result can't report.
    bool Put(const DateTime& point, const WallTime& local) override {
        const long long at = local.TotalMilliseconds();
        if (mSize == 0) {
            mFirstAt = at;
        }
        if (mSize == mCapacity) {
            if (mCapacity == UINT_MAX) {
                return false;
            }
            const unsigned int capacity = NextCapacity(at);
            std::unique_ptr<DateTime[]> grown(internal::DateTimeArray::New(capacity));
            std::copy(mSlots.get(), mSlots.get() + mSize, grown.get());
            mSlots = std::move(grown);
            mCapacity = capacity;
        }
        mSlots[mSize++] = point;
        return true;
    }

    unsigned int Deliver(DateTime*& points) {
        points = mSlots.release();
        return mSize;
    }

  private:
    // Every entry is built before the walk can use it, so growing by halves would
    // build (and touch) about twice the entries needed. The walk's pace so far
    // projects what the rest of the range needs, a little more for safety; at least
    // double, and at most eight times, so a schedule that thins out later can't make
    // the array far larger than its points.
    unsigned int NextCapacity(long long at) const {
        const double doubled = 2.0 * mCapacity;
        double wanted = doubled;
        if (at > mFirstAt) {
            const double pace = double(mSize) / double(at - mFirstAt);
            wanted =
                std::clamp(pace * double(mTo - mFirstAt) * 1.05 + 16, doubled, 8.0 * mCapacity);
        }
        return static_cast<unsigned int>(std::min(wanted, double(UINT_MAX)));
    }

    std::unique_ptr<DateTime[]> mSlots;  // released by the caller with delete[]
    unsigned int mCapacity;
    unsigned int mSize = 0;
    long long mTo;       // end of the range
    long long mFirstAt;  // local time of the first point
};

}  // namespace

unsigned int TimeSeriesImpl::GetAllTimePoints(const DateTime& start, const DateTime& end,
                                              DateTime*& points) const {
    if (start > end) {
        return 0;
    }
    const internal::ScheduleRules rules(*this);
    const DateTime localStart = start.ToLocalTime();
    const DateTime localEnd = end.ToLocalTime();
    const WallTime walkStart = internal::FromDateTime(localStart);
    const WallTime walkEnd = internal::FromDateTime(localEnd);
    PointArray array(rules.EstimateCapacity(localStart.GetYear(), localEnd.GetYear()),
                     walkStart.TotalMilliseconds(), walkEnd.TotalMilliseconds());
    // The first day is listed whole, also its times before the start. With no first
    // point in the range there is no array to hand over.
    internal::RangePoints sink(walkEnd, array);
    return internal::Walk(rules, walkStart, internal::FirstPoint::FirstOfDay, sink)
               ? array.Deliver(points)
               : 0;
}

}  // namespace ZelvorDataType
