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

bool BeginWindow(const ScheduleRules& rules, const WallTime& localStart, PointSink& sink,
                 WalkPosition& at, bool& more) {
    WallTime& current = at.current;
    current = localStart;
    if (rules.WindowStepMinutes() == 0 || !rules.FirstDay(current)) {
        return false;
    }
    rules.OpenDay(current, at.close);
    if (!sink.Reaches(current)) {
        return false;
    }
    while (current < localStart) {
        if (!rules.Step(current, at.close)) {
            more = false;
            return true;
        }
    }
    more = sink.Offer(current);
    return true;
}

bool BeginPattern(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
                  PointSink& sink, WalkPosition& at, bool& more) {
    WallTime& current = at.current;
    current = localStart;
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
    at.anchored = first == FirstPoint::SeriesPhase;
    more = !offerFirst || sink.Offer(current);
    return true;
}

}  // namespace

bool BeginWalk(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
               PointSink& sink, WalkPosition& at, bool& more) {
    return rules.WindowSet() ? BeginWindow(rules, localStart, sink, at, more)
                             : BeginPattern(rules, localStart, first, sink, at, more);
}

bool ContinueWalk(const ScheduleRules& rules, WalkPosition& at, PointSink& sink) {
    const bool window = rules.WindowSet();
    while (window ? rules.Step(at.current, at.close) : rules.NextPoint(at.current, at.anchored)) {
        if (!sink.Offer(at.current)) {
            return true;
        }
    }
    return false;
}

bool Walk(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
          PointSink& sink) {
    WalkPosition at;
    bool more = false;
    if (!BeginWalk(rules, localStart, first, sink, at, more)) {
        return false;
    }
    if (more) {
        ContinueWalk(rules, at, sink);
    }
    return true;
}

}  // namespace ZelvorDataType::internal
