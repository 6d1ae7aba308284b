// All points of a schedule in a range, in a new array owned by the caller.
#include <algorithm>
#include <climits>
#include <memory>

#include "schedule/ScheduleRules.h"

namespace ZelvorDataType {

namespace {

using internal::ScheduleRules;
using internal::WallTime;

// The array handed to the caller, who releases it with delete[] on a DateTime*. A
// new-expression of DateTime[n] needs a default constructor, which DateTime has not;
// this slot adds one that builds the empty date 1899-12-30 and nothing else (no member,
// same size, same destructor), so the array is laid out and released exactly as an
// array of DateTime.
struct Slot : DateTime {
    Slot() noexcept : DateTime(0.0) {}
};
static_assert(sizeof(Slot) == sizeof(DateTime) && alignof(Slot) == alignof(DateTime));

class PointArray {
  public:
    explicit PointArray(unsigned int capacity) : mSlots(new Slot[capacity]), mCapacity(capacity) {}

    // Appends a point, doubling the array when it is full; false once the count would
    // leave 32 bits, which the result can't report.
    bool Push(const DateTime& point) {
        if (mSize == mCapacity) {
            if (mCapacity == UINT_MAX) {
                return false;
            }
            const unsigned int capacity =
                static_cast<unsigned int>(std::min<unsigned long long>(2ULL * mCapacity, UINT_MAX));
            std::unique_ptr<Slot[]> grown(new Slot[capacity]);
            std::copy(mSlots.get(), mSlots.get() + mSize, grown.get());
            mSlots = std::move(grown);
            mCapacity = capacity;
        }
        static_cast<DateTime&>(mSlots[mSize++]) = point;
        return true;
    }

    unsigned int Deliver(DateTime*& points) {
        points = mSlots.release();
        return mSize;
    }

  private:
    std::unique_ptr<Slot[]> mSlots;
    unsigned int mCapacity;
    unsigned int mSize = 0;
};

// Walks the window from the opening of the first day at or after the start. False
// when the range holds no array (nothing to deliver).
bool WalkWindow(const ScheduleRules& rules, const WallTime& localStart, const WallTime& localEnd,
                PointArray& array) {
    WallTime current = localStart;
    if (rules.WindowStepMinutes() == 0 || !rules.FirstDay(current)) {
        return false;
    }
    WallTime close = current;
    rules.OpenDay(current, close);
    if (current > localEnd) {
        return false;
    }
    while (current < localStart) {
        if (!rules.Step(current, close)) {
            return true;
        }
    }
    if (current > localEnd || !array.Push(internal::ToUTC(current))) {
        return true;
    }
    while (current < localEnd && rules.Step(current, close) && !(current > localEnd) &&
           array.Push(internal::ToUTC(current))) {
    }
    return true;
}

// Walks the pattern from midnight of the first day at or after the start: that day
// is listed whole, also its times before the start.
bool WalkPattern(const ScheduleRules& rules, const WallTime& localStart, const WallTime& localEnd,
                 PointArray& array) {
    WallTime current = localStart;
    if (!rules.FirstDay(current)) {
        return false;
    }
    if (!rules.TimeMatches(nullptr, current)) {
        const WallTime previous = current;
        if (!rules.NextTime(previous, current)) {
            return false;
        }
    }
    if (current > localEnd) {
        return false;
    }
    if (!array.Push(internal::ToUTC(current))) {
        return true;
    }
    while (current < localEnd && rules.NextPoint(current, false) && !(current > localEnd) &&
           array.Push(internal::ToUTC(current))) {
    }
    return true;
}

}  // namespace

unsigned int TimeSeriesImpl::GetAllTimePoints(const DateTime& start, const DateTime& end,
                                              DateTime*& points) const {
    if (start > end) {
        return 0;
    }
    const ScheduleRules rules(*this);
    const DateTime localStart = start.ToLocalTime();
    const DateTime localEnd = end.ToLocalTime();
    PointArray array(rules.EstimateCapacity(localStart.GetYear(), localEnd.GetYear()));
    const WallTime walkStart = internal::FromDateTime(localStart);
    const WallTime walkEnd = internal::FromDateTime(localEnd);
    const bool deliver = rules.WindowSet() ? WalkWindow(rules, walkStart, walkEnd, array)
                                           : WalkPattern(rules, walkStart, walkEnd, array);
    return deliver ? array.Deliver(points) : 0;
}

}  // namespace ZelvorDataType
