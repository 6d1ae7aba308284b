#include "schedule/Walk.h"

namespace ZelvorDataType::internal {

namespace {

// Moves `current` to the first time of its day unless it is in the pattern already.
bool ToFirstTimeOfDay(const ScheduleRules& rules, WallTime& current) {
    if (rules.TimeMatches(nullptr, current)) {
        return true;
    }
    const WallTime previous = current;
    return rules.NextTime(previous, current);
}

// Moves `current` through the times of its day to the first at or after `localStart`.
// False when the day runs out first; `current` then holds the time the fields rolled
// over to.
bool ToStart(const ScheduleRules& rules, const WallTime& localStart, WallTime& current) {
    WallTime previous = current;
    bool more = rules.NextTime(previous, current);
    while (more && current < localStart) {
        previous = current;
        more = rules.NextTime(previous, current);
    }
    return more;
}

bool WalkWindow(const ScheduleRules& rules, const WallTime& localStart, PointSink& sink) {
    WallTime current = localStart;
    if (rules.WindowStepMinutes() == 0 || !rules.FirstDay(current)) {
        return false;
    }
    WallTime close = current;
    rules.OpenDay(current, close);
    if (!sink.Reaches(current)) {
        return false;
    }
    while (current < localStart) {
        if (!rules.Step(current, close)) {
            return true;
        }
    }
    if (sink.Offer(current)) {
        while (rules.Step(current, close) && sink.Offer(current)) {
        }
    }
    return true;
}

bool WalkPattern(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
                 PointSink& sink) {
    WallTime current = localStart;
    if (!rules.FirstDay(current)) {
        return false;
    }
    bool offerFirst = true;
    switch (first) {
        case FirstPoint::FirstOfDay:
            if (!ToFirstTimeOfDay(rules, current)) {
                return false;
            }
            break;
        case FirstPoint::AtOrAfterStart:
            // The series is anchored at midnight of the first day; its times before
            // the start are walked over.
            if ((!rules.TimeMatches(nullptr, current) || current < localStart) &&
                !ToStart(rules, localStart, current) &&
                (!rules.NextDay(current, current) || !ToFirstTimeOfDay(rules, current))) {
                return false;
            }
            break;
        case FirstPoint::SeriesPhase:
            if (!rules.TimeMatches(nullptr, current)) {
                offerFirst = ToStart(rules, localStart, current);
            }
            break;
    }
    if (!sink.Reaches(current)) {
        return false;
    }
    if (offerFirst && !sink.Offer(current)) {
        return true;
    }
    const bool anchored = first == FirstPoint::SeriesPhase;
    while (rules.NextPoint(current, anchored) && sink.Offer(current)) {
    }
    return true;
}

}  // namespace

bool Walk(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
          PointSink& sink) {
    return rules.WindowSet() ? WalkWindow(rules, localStart, sink)
                             : WalkPattern(rules, localStart, first, sink);
}

}  // namespace ZelvorDataType::internal
