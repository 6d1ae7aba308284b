#pragma once

// The points of a schedule as a lazy range: the three enumerators of TimeSeries, one
// point at a time, in constant memory whatever the count.
//
//   for (const DateTime& utc : Points(*schedule, start) | std::views::take(10)) { ... }

#include <cstddef>
#include <iterator>
#include <memory>
#include <ranges>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/Export.h>
#include <ZelvorDataType/TimeSeries.h>

namespace ZelvorDataType {

// A single-pass range over the UTC points of one enumerator. Each point comes from the
// enumerator's own walk, which stops after it and goes on from exactly where it stood
// when the next one is asked for: the sequence is that of one call for all the points,
// with the same phase of every interval, the same repeated-hour rule and the same end.
// (Calling the enumerator again from the last point would not do: a series' phase runs
// on across days, and a fresh call starts it over at midnight.) Nothing is computed
// until a point is read, and no point beyond the last one read, so `take(n)` costs n
// points. The range holds one point and the walk's position, never a list.
//
// The range reads the schedule in place and must not outlive it, and nobody may call
// a setter of the schedule while it is read. Time-zone rules are those of the
// enumerators: the process's zone, read as each point is computed. A range is movable,
// not copyable; iterate it once (begin() again continues where the last one stopped).
// Schedules of another TimeSeries implementation are read through their getters and
// walked as this library walks its own.
class ZELVOR_DATATYPE_API SchedulePoints : public std::ranges::view_base {
  public:
    class State;

    class Iterator {
      public:
        using value_type = DateTime;
        using difference_type = std::ptrdiff_t;
        using iterator_concept = std::input_iterator_tag;

        Iterator() = default;
        explicit Iterator(State* state) noexcept : mState(state) {}

        // The current point, in UTC. Computing it may throw std::bad_alloc.
        const DateTime& operator*() const;
        Iterator& operator++();
        void operator++(int) { ++*this; }
        // Equal to the sentinel once the schedule has no further point.
        friend bool operator==(const Iterator& it, std::default_sentinel_t) { return it.AtEnd(); }

      private:
        bool AtEnd() const;
        State* mState = nullptr;
    };

    explicit SchedulePoints(std::unique_ptr<State> state) noexcept;
    SchedulePoints(SchedulePoints&&) noexcept;
    SchedulePoints& operator=(SchedulePoints&&) noexcept;
    ~SchedulePoints();

    Iterator begin() { return Iterator(mState.get()); }
    std::default_sentinel_t end() const noexcept { return std::default_sentinel; }

  private:
    std::unique_ptr<State> mState;
};

// The points of GetNextNTimePoints(start, count, ...) for every count: from the first
// matching day at or after `start` (UTC), its times before `start` skipped, a point
// that a repeated hour puts before `start` moved one hour on.
ZELVOR_DATATYPE_API SchedulePoints Points(const TimeSeries& schedule, const DateTime& start);

// The points at or after `from` of the series begun at `start` (both UTC), as
// GetNextNTimePoints(start, from, count, ...) lists them for every count. The walk
// passes every point between `start` and `from` before the first one comes out.
ZELVOR_DATATYPE_API SchedulePoints Points(const TimeSeries& schedule, const DateTime& start,
                                          const DateTime& from);

// The points of GetAllTimePoints(start, end, ...), from `start` up to and including
// `end` (UTC), one at a time instead of in an array; the first day is listed whole,
// as there. Empty when `start` lies after `end`. The third parameter names which
// enumerator: `from` above, `end` here.
struct UpTo {
    DateTime end;
};
ZELVOR_DATATYPE_API SchedulePoints Points(const TimeSeries& schedule, const DateTime& start,
                                          const UpTo& end);

}  // namespace ZelvorDataType
