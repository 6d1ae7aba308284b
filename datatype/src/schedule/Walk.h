#pragma once

// The one walk over a schedule's local points that every enumerator runs. The
// enumerators differ only in which point comes first and in what they do with each
// point, which is the PointSink they pass. A walk can stop and go on later from where
// it stopped (BeginWalk, ContinueWalk): its whole state is a WalkPosition.

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

// Where a walk stands: the point it reached last, and what the next step depends on.
struct WalkPosition {
    WallTime current{};
    WallTime close{};  // the closing time of the window's day, while a window is walked
    bool anchored = false;
};

// Places `at` on the first point of the walk from `localStart` and offers it (unless
// the first day has no time left in the series' phase: then `at` holds where the
// fields rolled over, and nothing is offered). False when there was no first point:
// no first day, no time on it, or a first point the sink doesn't reach. `more` tells
// whether the sink wants further points.
bool BeginWalk(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
               PointSink& sink, WalkPosition& at, bool& more);

// Offers the points after `at` until the sink or the schedule ends; `at` follows the
// walk, so a later call goes on exactly where this one stopped. False when the
// schedule ended, true when the sink did.
bool ContinueWalk(const ScheduleRules& rules, WalkPosition& at, PointSink& sink);

// Walks the schedule from `localStart` and offers its points to `sink` until the
// sink or the schedule ends. False when there was no first point to offer: no first
// day, no time on it, or a first point the sink doesn't reach.
bool Walk(const ScheduleRules& rules, const WallTime& localStart, FirstPoint first,
          PointSink& sink);

// Where the sinks put the UTC points they accept.
class PointStore {
  public:
    // Keeps `point`, whose local time is `at`; false when it takes no more after it.
    virtual bool Put(const DateTime& point, const WallTime& at) = 0;

  protected:
    PointStore() = default;
    PointStore(const PointStore&) = default;
    PointStore& operator=(const PointStore&) = default;
    ~PointStore() = default;
};

// The sink of the first points at or after a start: each point in UTC, moved one hour
// on (with the rest of the walk) when a repeated hour puts it before the start.
class FirstPoints final : public PointSink {
  public:
    FirstPoints(const ScheduleRules& rules, const DateTime& start, PointStore& store)
        : mRules(rules), mStart(start), mStore(store) {}

    bool Reaches(const WallTime&) const override { return true; }
    bool Offer(WallTime& current) override {
        DateTime point = ToUTC(current);
        mRules.CorrectRepeatedHour(mStart, point, current);
        return mStore.Put(point, current);
    }

  private:
    const ScheduleRules& mRules;
    DateTime mStart;
    PointStore& mStore;
};

// The sink of a series gated by a lower bound: each point not before it, in UTC.
class GatedPoints final : public PointSink {
  public:
    GatedPoints(const WallTime& localFrom, PointStore& store) : mFrom(localFrom), mStore(store) {}

    bool Reaches(const WallTime&) const override { return true; }
    bool Offer(WallTime& current) override {
        return current < mFrom || mStore.Put(ToUTC(current), current);
    }

  private:
    WallTime mFrom;
    PointStore& mStore;
};

// The sink of a range: each point in UTC up to and including the end.
class RangePoints final : public PointSink {
  public:
    RangePoints(const WallTime& localEnd, PointStore& store) : mEnd(localEnd), mStore(store) {}

    bool Reaches(const WallTime& first) const override { return !(first > mEnd); }
    bool Offer(WallTime& current) override {
        return !(current > mEnd) && mStore.Put(ToUTC(current), current) && current < mEnd;
    }

  private:
    WallTime mEnd;
    PointStore& mStore;
};

// A store over a caller's array of `count` (at least 1) entries.
class ArrayStore final : public PointStore {
  public:
    ArrayStore(DateTime* points, unsigned int count) : mPoints(points), mCount(count) {}

    // The counted enumerators' contract on the caller's array: a count of 0 asks for
    // nothing and needs no array (false); any other count refuses a missing array with
    // "Invalid parameter".
    static bool Wanted(const DateTime* points, unsigned int count) {
        if (count == 0) {
            return false;
        }
        if (points == nullptr) {
            throw ZelvorBase::ExceptionImpl<TimeSeriesException>(L"Invalid parameter");
        }
        return true;
    }

    bool Put(const DateTime& point, const WallTime&) override {
        mPoints[mWritten] = point;
        return ++mWritten < mCount;
    }
    unsigned int Written() const { return mWritten; }

  private:
    DateTime* mPoints;
    unsigned int mCount;
    unsigned int mWritten = 0;
};

}  // namespace ZelvorDataType::internal
