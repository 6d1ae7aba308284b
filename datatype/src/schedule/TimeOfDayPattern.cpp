// Which times of a day belong to a schedule: the test of one time, the odometer that
// finds the next time of a day, the repair at a repeated hour, and the intraday window.
#include <array>

#include "schedule/ScheduleRules.h"

namespace ZelvorDataType::internal {

namespace {

using Wheel = ScheduleRules::Wheel;

int FieldOf(const WallTime& t, const Wheel& w) {
    return t.time / w.unit % w.range;
}

}  // namespace

std::array<Wheel, 4> ScheduleRules::Wheels() const {
    const TimeSeriesImpl& r = mRecord;
    return {{
        {r.mMillisecondRecurrence, r.mMillisecond, 1000, 1},
        {r.mSecondRecurrence, r.mSecond, 60, 1000},
        {r.mMinuteRecurrence, r.mMinute, 60, 60000},
        {r.mHourRecurrence, r.mHour, 24, 3600000},
    }};
}

bool ScheduleRules::CanNeverPlaceATime() const {
    for (const Wheel& w : Wheels()) {
        const long long target = w.value < 0 ? static_cast<long long>(w.value) + w.range : w.value;
        if (w.recurrence == RECURRENCE_FIXED && (target < 0 || target >= w.range)) {
            return true;
        }
    }
    return false;
}

bool ScheduleRules::TimeMatches(const WallTime* anchor, const WallTime& time) const {
    for (const Wheel& w : Wheels()) {
        const int field = FieldOf(time, w);
        if (w.recurrence == RECURRENCE_FIXED) {
            // The stored value as stored: a negative one never matches here.
            if (w.value != field) {
                return false;
            }
        } else if (w.recurrence == RECURRENCE_EVERY && anchor != nullptr && w.value > 0) {
            // Counted across midnight: 01:00 lies 5 hours after 20:00.
            const int since = field + w.range - FieldOf(*anchor, w);
            if (since % w.value != 0) {
                return false;
            }
        }
    }
    return true;
}

bool ScheduleRules::NextTime(const WallTime& previous, WallTime& next) const {
    if (mNoTime) {
        next = previous;
        return false;
    }
    WallTime copy = previous;
    bool advanced = false;
    bool carry = false;
    for (const Wheel& w : Wheels()) {
        const int present = FieldOf(copy, w);
        if (w.recurrence == RECURRENCE_EVERY) {
            // A zero interval would step without moving; such a wheel stands still.
            if (w.value <= 0 || (advanced && !carry)) {
                continue;
            }
            // Below the range the step stays inside the field; at or past its end the
            // field wraps to present + N - range (an interval of a whole range or more
            // moves the fields above it too, as the sum of a span does) and carries.
            const bool wraps = static_cast<long long>(present) + w.value >= w.range;
            const long long span =
                (static_cast<long long>(w.value) - (wraps ? w.range : 0)) * w.unit;
            if (!AddMilliseconds(copy, span)) {
                next = previous;
                return false;
            }
            advanced = !wraps;
            carry = wraps;
        } else if (w.recurrence == RECURRENCE_FIXED) {
            const int target = w.value < 0 ? w.value + w.range : w.value;
            copy.time += (target - present) * w.unit;
            if (target != present) {
                advanced = target > present;
                carry = target < present;
            }
        }
    }
    next = copy;
    return advanced;
}

bool ScheduleRules::NextPoint(WallTime& current, bool anchored) const {
    WallTime previous = current;
    if (NextTime(previous, current)) {
        return true;
    }
    if (!NextDay(current, current)) {
        return false;
    }
    if (TimeMatches(anchored ? &previous : nullptr, current)) {
        return true;
    }
    previous = current;
    return NextTime(previous, current);
}

void ScheduleRules::CorrectRepeatedHour(const DateTime& start, DateTime& stored,
                                        WallTime& current) const {
    // A local time at or after the local start can still come out before `start` in
    // UTC when the zone repeats an hour and the conversion picks its first pass. The
    // running time moves with the point, so the rest of the series stays after it.
    if (start > stored && AddMilliseconds(current, 3600000)) {
        stored = ToUTC(current);
    }
}

bool ScheduleRules::WindowSet() const {
    const TimeSeriesImpl& r = mRecord;
    return r.mHourStart != -1 && r.mMinuteStart != -1 && r.mHourEnd != -1 && r.mMinuteEnd != -1 &&
           r.mExecutingEveryMinutes != -1;
}

void ScheduleRules::OpenDay(WallTime& current, WallTime& close) const {
    const TimeSeriesImpl& r = mRecord;
    close = current;
    close.time = (r.mHourEnd * 60 + r.mMinuteEnd) * 60000;
    current.time = (r.mHourStart * 60 + r.mMinuteStart) * 60000;
}

bool ScheduleRules::Step(WallTime& current, WallTime& close) const {
    if (!AddMilliseconds(current, mRecord.mExecutingEveryMinutes * 60000LL)) {
        return false;
    }
    if (current > close) {
        // Each day's grid starts afresh at the opening; a remainder shorter than the step
        // is dropped. A window that closes before it opens yields its opening alone.
        if (!NextDay(close, current)) {
            return false;
        }
        OpenDay(current, close);
    }
    return true;
}

}  // namespace ZelvorDataType::internal

namespace ZelvorDataType {

bool TimeSeriesImpl::ValidateAndCorrectNextTime(const DateTime& start, int index, DateTime* points,
                                                DateTime& current) const {
    if (index < 0 || points == nullptr) {
        return false;
    }
    if (start > current.ToUTCTime()) {
        current = current + TimeSpan(3600000);
        points[index] = current.ToUTCTime();
    }
    return true;
}

bool TimeSeriesImpl::IsWithinIntradayWindow(const DateTime& time) const {
    // An unset window has -61 for both bounds and so contains nothing.
    const DateTime local = time.ToLocalTime();
    const int minutes = local.GetHour() * 60 + local.GetMinute();
    return minutes >= mHourStart * 60 + mMinuteStart && minutes <= mHourEnd * 60 + mMinuteEnd;
}

}  // namespace ZelvorDataType
