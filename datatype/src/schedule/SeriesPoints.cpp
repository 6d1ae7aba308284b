// The points of a series begun at one time, from a later time on: the walk starts at
// the series' start, so every interval keeps its phase, and only the later time gates
// what is stored.
#include "schedule/Walk.h"

namespace ZelvorDataType {

namespace {

using internal::WallTime;

// Stores in UTC each point not before the lower bound, until `count` are stored.
class Gate final : public internal::PointSink {
  public:
    Gate(const WallTime& localFrom, unsigned int count, DateTime* points)
        : mFrom(localFrom), mCount(count), mPoints(points) {}

    bool Reaches(const WallTime&) const override { return true; }
    bool Offer(WallTime& current) override {
        if (!(current < mFrom)) {
            mPoints[mWritten++] = internal::ToUTC(current);
        }
        return mWritten != mCount;
    }
    unsigned int Written() const { return mWritten; }

  private:
    WallTime mFrom;
    unsigned int mCount;
    DateTime* mPoints;
    unsigned int mWritten = 0;
};

}  // namespace

unsigned int TimeSeriesImpl::GetNextNTimePoints(const DateTime& start, const DateTime& from,
                                                unsigned int count, DateTime* points) const {
    if (count == 0) {
        return 0;
    }
    if (points == nullptr) {
        throw ZelvorBase::ExceptionImpl<TimeSeriesException>(L"Invalid parameter");
    }
    const internal::ScheduleRules rules(*this);
    Gate gate(internal::FromDateTime(from.ToLocalTime()), count, points);
    internal::Walk(rules, internal::FromDateTime(start.ToLocalTime()),
                   internal::FirstPoint::SeriesPhase, gate);
    return gate.Written();
}

}  // namespace ZelvorDataType
