// The points of a series begun at one time, from a later time on: the walk starts at
// the series' start, so every interval keeps its phase, and only the later time gates
// what is stored.
#include "schedule/ScheduleRules.h"

namespace ZelvorDataType {

namespace {

using internal::ScheduleRules;
using internal::WallTime;

class Gate {
  public:
    Gate(const WallTime& localFrom, unsigned int count, DateTime* points)
        : mFrom(localFrom), mCount(count), mPoints(points) {}
    // Stores `current` in UTC when it is not before the lower bound.
    void Offer(const WallTime& current) {
        if (!(current < mFrom)) {
            mPoints[mWritten++] = internal::ToUTC(current);
        }
    }
    bool Full() const { return mWritten == mCount; }
    unsigned int Written() const { return mWritten; }

  private:
    WallTime mFrom;
    unsigned int mCount;
    DateTime* mPoints;
    unsigned int mWritten = 0;
};

unsigned int WalkWindow(const ScheduleRules& rules, const WallTime& localStart, Gate& gate) {
    WallTime current = localStart;
    if (rules.WindowStepMinutes() == 0 || !rules.FirstDay(current)) {
        return 0;
    }
    WallTime close = current;
    rules.OpenDay(current, close);
    while (current < localStart) {
        if (!rules.Step(current, close)) {
            return 0;
        }
    }
    gate.Offer(current);
    while (!gate.Full() && rules.Step(current, close)) {
        gate.Offer(current);
    }
    return gate.Written();
}

unsigned int WalkPattern(const ScheduleRules& rules, const WallTime& localStart, Gate& gate) {
    WallTime current = localStart;
    if (!rules.FirstDay(current)) {
        return 0;
    }
    if (rules.TimeMatches(nullptr, current)) {
        // Midnight of the first day is in the pattern: the day is listed from there,
        // also before the start.
        gate.Offer(current);
    } else {
        // Otherwise the first time at or after the start; when the day runs out before
        // it, the walk goes on from the time the fields rolled over to, on that date.
        WallTime previous = current;
        bool more = rules.NextTime(previous, current);
        while (more && current < localStart) {
            previous = current;
            more = rules.NextTime(previous, current);
        }
        if (more) {
            gate.Offer(current);
        }
    }
    // After a day change the first time is tested against the last one of the day
    // before, so an interval runs on across days.
    while (!gate.Full() && rules.NextPoint(current, true)) {
        gate.Offer(current);
    }
    return gate.Written();
}

}  // namespace

unsigned int TimeSeriesImpl::GetNextNTimePoints(const DateTime& start, const DateTime& from,
                                                unsigned int count, DateTime* points) const {
    if (count == 0) {
        return 0;
    }
    if (points == nullptr) {
        throw ZelvorBase::ExceptionImpl<TimeSeriesException>(L"Invalid parameter");
    }
    const ScheduleRules rules(*this);
    const WallTime localStart = internal::FromDateTime(start.ToLocalTime());
    Gate gate(internal::FromDateTime(from.ToLocalTime()), count, points);
    return rules.WindowSet() ? WalkWindow(rules, localStart, gate)
                             : WalkPattern(rules, localStart, gate);
}

}  // namespace ZelvorDataType
