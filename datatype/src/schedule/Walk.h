#pragma once

// The one walk over a schedule's local points that every enumerator runs. The
// enumerators differ only in which point comes first and in what they do with each
// point, which is the PointSink they pass.

#include "schedule/ScheduleRules.h"

namespace ZelvorDataType::internal {

// Receives the points of a walk, in order.
class PointSink {
  public:
    // False when `first`, the first point of the walk, already lies beyond what the
    // caller wants; the walk then ends without offering anything.
    virtual bool Reaches(const WallTime& first) const = 0;
    // Takes one point; false ends the walk. May move `current` on (the walk goes on
    // from there).
    virtual bool Offer(WallTime& current) = 0;

  protected:
    PointSink() = default;
    PointSink(const PointSink&) = default;
    PointSink& operator=(const PointSink&) = default;
    ~PointSink() = default;
};

// Which time of the first day of the pattern starts the walk. The window always
// starts at its first step at or after the start.
enum class FirstPoint {
    // The first time of the day, also one before the start.
    FirstOfDay,
    // The first time at or after the start; when the day has none left, the first time
    // of the next day.
    AtOrAfterStart,
    // Midnight when the pattern holds it, else the first time at or after the start;
    // when the day has none left, the walk goes on from where the fields rolled over
    // without offering that time. Later days are anchored on the day before, so every
    // interval keeps its phase.
    SeriesPhase,
};

// Walks the schedule from `localStart` and offers its points to `sink` until the
// sink or the schedule ends. False when there was no first point to offer: no first
// day, no time on it, or a first point the sink doesn't reach.
bool Walk(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
          PointSink& sink);

}  // namespace ZelvorDataType::internal
