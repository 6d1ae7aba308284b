// The first points of a schedule at or after a start.
#include "schedule/ScheduleRules.h"

namespace ZelvorDataType {

namespace {

using internal::ScheduleRules;
using internal::WallTime;

// Stores `current` in UTC at `index`, moved on an hour when a repeated hour put it
// before `start`.
void Store(const ScheduleRules& rules, const DateTime& start, DateTime* points, unsigned int index,
           WallTime& current) {
    points[index] = internal::ToUTC(current);
    rules.CorrectRepeatedHour(start, points[index], current);
}

unsigned int WalkWindow(const ScheduleRules& rules, const DateTime& start,
                        const WallTime& localStart, unsigned int count, DateTime* points) {
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
    for (unsigned int written = 0;;) {
        Store(rules, start, points, written, current);
        if (++written == count || !rules.Step(current, close)) {
            return written;
        }
    }
}

unsigned int WalkPattern(const ScheduleRules& rules, const DateTime& start,
                         const WallTime& localStart, unsigned int count, DateTime* points) {
    WallTime current = localStart;
    if (!rules.FirstDay(current)) {
        return 0;
    }
    // The series is anchored at midnight of the first day; its times before the start
    // are walked over. When the day runs out first, the next day's first time is the
    // first point, wherever it lies.
    if (!rules.TimeMatches(nullptr, current) || current < localStart) {
        WallTime previous = current;
        bool more = rules.NextTime(previous, current);
        while (more && current < localStart) {
            previous = current;
            more = rules.NextTime(previous, current);
        }
        if (!more) {
            if (!rules.NextDay(current, current)) {
                return 0;
            }
            if (!rules.TimeMatches(nullptr, current)) {
                previous = current;
                if (!rules.NextTime(previous, current)) {
                    return 0;
                }
            }
        }
    }
    Store(rules, start, points, 0, current);
    for (unsigned int written = 1; written < count; ++written) {
        if (!rules.NextPoint(current, false)) {
            return written;
        }
        Store(rules, start, points, written, current);
    }
    return count;
}

}  // namespace

unsigned int TimeSeriesImpl::GetNextNTimePoints(const DateTime& start, unsigned int count,
                                                DateTime* points) const {
    if (count == 0) {
        return 0;
    }
    if (points == nullptr) {
        throw ZelvorBase::ExceptionImpl<TimeSeriesException>(L"Invalid parameter");
    }
    const ScheduleRules rules(*this);
    const WallTime localStart = internal::FromDateTime(start.ToLocalTime());
    return rules.WindowSet() ? WalkWindow(rules, start, localStart, count, points)
                             : WalkPattern(rules, start, localStart, count, points);
}

}  // namespace ZelvorDataType
