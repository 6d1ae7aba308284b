// The enumerators as lazy ranges: the walk stops after each point and goes on from its
// position when the next one is read.
#include <ZelvorDataType/SchedulePoints.h>

#include <variant>

#include "schedule/Walk.h"

namespace ZelvorDataType {

using internal::WallTime;

class SchedulePoints::State final : public internal::PointStore {
  public:
    // The sink of one enumerator: only its point rules differ.
    using Sink = std::variant<internal::FirstPoints, internal::GatedPoints, internal::RangePoints>;

    State(const TimeSeries& schedule, const DateTime& start, internal::FirstPoint first)
        : mOwned(OwnCopyUnlessOurs(schedule)),
          mRules(mOwned ? *mOwned : static_cast<const TimeSeriesImpl&>(schedule)),
          mLocalStart(internal::FromDateTime(start.ToLocalTime())),
          mFirst(first) {}

    void UseFirstPoints(const DateTime& start) {
        mSink.emplace(std::in_place_type<internal::FirstPoints>, mRules, start, *this);
    }
    void UseGate(const DateTime& from) {
        mSink.emplace(std::in_place_type<internal::GatedPoints>,
                      internal::FromDateTime(from.ToLocalTime()), *this);
    }
    void UseEnd(const DateTime& end) {
        mSink.emplace(std::in_place_type<internal::RangePoints>,
                      internal::FromDateTime(end.ToLocalTime()), *this);
    }
    void Finish() { mDone = true; }

    bool Put(const DateTime& point, const WallTime&) override {
        mPoint = point;
        mFilled = true;
        // One point at a time: the walk stops here and resumes from its position.
        return false;
    }

    // Computes the current point unless it is there or the walk has ended.
    void Ensure() {
        if (mFilled || mDone) {
            return;
        }
        internal::PointSink& sink =
            std::visit([](auto& s) -> internal::PointSink& { return s; }, *mSink);
        if (!mStarted) {
            mStarted = true;
            bool more = false;
            if (!internal::BeginWalk(mRules, mLocalStart, mFirst, sink, mPosition, more)) {
                mDone = true;
                return;
            }
            // The first point may be walked over (a series' phase, a gate) without
            // being stored; the walk goes on to the first stored one.
            if (mFilled || !more) {
                mDone = !mFilled;
                return;
            }
        }
        internal::ContinueWalk(mRules, mPosition, sink);
        mDone = !mFilled;
    }

    const DateTime& Point() {
        Ensure();
        return mPoint;
    }
    void Consume() {
        Ensure();
        mFilled = false;
    }
    bool AtEnd() {
        Ensure();
        return mDone;
    }

  private:
    static std::unique_ptr<TimeSeriesImpl> OwnCopyUnlessOurs(const TimeSeries& s) {
        if (dynamic_cast<const TimeSeriesImpl*>(&s) != nullptr) {
            return nullptr;
        }
        return std::make_unique<TimeSeriesImpl>(
            s.GetYearRecurrence(), s.GetYear(), s.GetMonthRecurrence(), s.GetMonth(),
            s.GetDayRecurrence(), s.GetDay(), s.GetWeekRecurrence(), s.GetWeek(),
            s.GetDayOfWeekRecurrence(), s.GetDayOfWeek(), s.GetHourRecurrence(), s.GetHour(),
            s.GetMinuteRecurrence(), s.GetMinute(), s.GetSecondRecurrence(), s.GetSecond(),
            s.GetMillisecondRecurrence(), s.GetMillisecond(), s.GetHourStart(), s.GetMinuteStart(),
            s.GetHourEnd(), s.GetMinuteEnd(), s.GetExecutingEveryMinutes());
    }

    std::unique_ptr<TimeSeriesImpl> mOwned;  // a copy of a schedule of another implementation
    internal::ScheduleRules mRules;
    WallTime mLocalStart;
    internal::FirstPoint mFirst;
    std::optional<Sink> mSink;
    internal::WalkPosition mPosition;
    DateTime mPoint = DateTime(0.0);
    bool mStarted = false;
    bool mFilled = false;  // mPoint is the current point, not yet passed
    bool mDone = false;
};

const DateTime& SchedulePoints::Iterator::operator*() const {
    return mState->Point();
}

SchedulePoints::Iterator& SchedulePoints::Iterator::operator++() {
    mState->Consume();
    return *this;
}

bool SchedulePoints::Iterator::AtEnd() const {
    return mState == nullptr || mState->AtEnd();
}

SchedulePoints::SchedulePoints(std::unique_ptr<State> state) noexcept : mState(std::move(state)) {}
SchedulePoints::SchedulePoints(SchedulePoints&&) noexcept = default;
SchedulePoints& SchedulePoints::operator=(SchedulePoints&&) noexcept = default;
SchedulePoints::~SchedulePoints() = default;

SchedulePoints Points(const TimeSeries& schedule, const DateTime& start) {
    auto state = std::make_unique<SchedulePoints::State>(schedule, start,
                                                         internal::FirstPoint::AtOrAfterStart);
    state->UseFirstPoints(start);
    return SchedulePoints(std::move(state));
}

SchedulePoints Points(const TimeSeries& schedule, const DateTime& start, const DateTime& from) {
    auto state =
        std::make_unique<SchedulePoints::State>(schedule, start, internal::FirstPoint::SeriesPhase);
    state->UseGate(from);
    return SchedulePoints(std::move(state));
}

SchedulePoints Points(const TimeSeries& schedule, const DateTime& start, const UpTo& end) {
    auto state =
        std::make_unique<SchedulePoints::State>(schedule, start, internal::FirstPoint::FirstOfDay);
    state->UseEnd(end.end);
    if (start > end.end) {
        state->Finish();
    }
    return SchedulePoints(std::move(state));
}

}  // namespace ZelvorDataType
