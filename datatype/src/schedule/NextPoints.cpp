// The first points of a schedule at or after a start.
#include "schedule/Walk.h"

namespace ZelvorDataType {

namespace {

using internal::WallTime;

// Stores each point in UTC until `count` are stored.
class FirstPoints final : public internal::PointSink {
  public:
    FirstPoints(const internal::ScheduleRules& rules, const DateTime& start, unsigned int count,
                DateTime* points)
        : mRules(rules), mStart(start), mCount(count), mPoints(points) {}

    bool Reaches(const WallTime&) const override { return true; }
    bool Offer(WallTime& current) override {
        mPoints[mWritten] = internal::ToUTC(current);
        mRules.CorrectRepeatedHour(mStart, mPoints[mWritten], current);
        return ++mWritten < mCount;
    }
    unsigned int Written() const { return mWritten; }

  private:
    const internal::ScheduleRules& mRules;
    const DateTime& mStart;
    unsigned int mCount;
    DateTime* mPoints;
    unsigned int mWritten = 0;
};

}  // namespace

unsigned int TimeSeriesImpl::GetNextNTimePoints(const DateTime& start, unsigned int count,
                                                DateTime* points) const {
    if (count == 0) {
        return 0;
    }
    if (points == nullptr) {
        throw ZelvorBase::ExceptionImpl<TimeSeriesException>(L"Invalid parameter");
    }
    const internal::ScheduleRules rules(*this);
    FirstPoints sink(rules, start, count, points);
    internal::Walk(rules, internal::FromDateTime(start.ToLocalTime()),
                   internal::FirstPoint::AtOrAfterStart, sink);
    return sink.Written();
}

}  // namespace ZelvorDataType
