#include <optional>

#include <ZelvorDataType/TimeSpan.h>
#include <ZelvorDataType/ZelvorTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

namespace {

// Kinds compared here with their flags: only exactly 0 and exactly 1 are the open ends.
constexpr int kOpenLatest = DYNAMIC_TIME_LATEST;
constexpr int kOpenEarliest = DYNAMIC_TIME_EARLIEST;

}  // namespace

DateTime ZelvorTime::ReadForComparison() const noexcept {
    DateTime date(0.0);
    if (IsStatic()) {
        date = *StaticRecord();
    } else if (IsDynamic()) {
        // A rule without a date compares as DateTime(0.0), which `date` still holds.
        DynamicRecord()->ToDateTime(date);
    }
    return date;
}

void ZelvorTime::ReadBoth(const ZelvorTime& other, DateTime& mine,
                          DateTime& theirs) const noexcept {
    mine = ReadForComparison();
    theirs = other.ReadForComparison();
    // A comparison with a local value happens in local time, any other in UTC (the
    // dynamic side resolved to UTC).
    if (mMode == other.mMode) {
        return;
    }
    if (mMode == TIME_MODE_LOCAL) {
        theirs = theirs.ToLocalTime();
    } else if (other.mMode == TIME_MODE_LOCAL) {
        mine = mine.ToLocalTime();
    }
}

bool ZelvorTime::operator==(const ZelvorTime& other) const noexcept {
    if (IsEmpty() || other.IsEmpty()) {
        return IsEmpty() && other.IsEmpty();
    }
    if (IsDynamic() && other.IsDynamic()) {
        return DynamicRecord()->GetDynamicTime() == other.DynamicRecord()->GetDynamicTime();
    }
    if (mMode == other.mMode) {
        return *StaticRecord() == *other.StaticRecord();
    }
    DateTime mine(0.0);
    DateTime theirs(0.0);
    ReadBoth(other, mine, theirs);
    return mine == theirs;
}

namespace {

// The kind and flags of a dynamic value; a static or empty value matches neither open
// end.
int OrderTag(const ZelvorTime& value) noexcept {
    int tag = DYNAMIC_TIME_NONE;
    if (value.GetRealMode() == TIME_MODE_DYNAMIC) {
        value.GetDynamicTime(tag);
    }
    return tag;
}

// Where an open end sorts: EARLIEST before every other value, LATEST after every other.
int OpenRank(int tag) noexcept {
    return tag == kOpenEarliest ? 0 : tag == kOpenLatest ? 2 : 1;
}

// The order of two values that their dates don't decide, as -1, 0 or 1: an open end
// against anything, two rules of the same kind (neither before the other), and an
// empty value, which has no date and sorts before every dated value (after EARLIEST),
// keeping the order strict and total. Empty when the dates decide.
std::optional<int> UndatedOrder(const ZelvorTime& a, const ZelvorTime& b) noexcept {
    // The forms by their mode: 0 and 1 are the static modes, anything but those and
    // TIME_MODE_DYNAMIC is empty.
    const auto dynamic = [](const ZelvorTime& v) { return v.GetRealMode() == TIME_MODE_DYNAMIC; };
    const auto empty = [&](const ZelvorTime& v) {
        return static_cast<unsigned>(v.GetRealMode()) >= 2u && !dynamic(v);
    };
    const int mine = OrderTag(a);
    const int theirs = OrderTag(b);
    if (OpenRank(mine) != 1 || OpenRank(theirs) != 1) {
        return (OpenRank(mine) > OpenRank(theirs)) - (OpenRank(mine) < OpenRank(theirs));
    }
    if (dynamic(a) && dynamic(b) && mine == theirs) {
        return 0;
    }
    if (empty(a) || empty(b)) {
        return int(!empty(a)) - int(!empty(b));
    }
    return std::nullopt;
}

}  // namespace

bool ZelvorTime::operator<(const ZelvorTime& other) const noexcept {
    if (const std::optional<int> order = UndatedOrder(*this, other)) {
        return *order < 0;
    }
    DateTime left(0.0);
    DateTime right(0.0);
    ReadBoth(other, left, right);
    return left < right;
}

bool ZelvorTime::operator>(const ZelvorTime& other) const noexcept {
    if (const std::optional<int> order = UndatedOrder(*this, other)) {
        return *order > 0;
    }
    DateTime left(0.0);
    DateTime right(0.0);
    ReadBoth(other, left, right);
    return left > right;
}

int ZelvorTime::GetExpiration(ZelvorTime& out) const {
    return GetExpiration(DateTime(0.0), out);
}

int ZelvorTime::GetExpiration(const DateTime& reference, ZelvorTime& out) const {
    if (!IsDynamic()) {
        return 1;
    }
    const DynamicTime& rule = *DynamicRecord();
    // The relative and fixed flags don't change when a rule's answer changes; the
    // business-day flag stays in and puts such rules beyond every kind below.
    const int kind = static_cast<int>(rule.GetDynamicTime()) & ~0xE0;

    if (kind == DYNAMIC_TIME_NOW) {
        DateTime now = reference;
        ToDateTime(true, now);
        now.PutMillisecond(0);
        out.MakeStatic(TIME_MODE_UTC, now + TimeSpan(1000));
        return 0;
    }

    const int dayOffset = rule.GetDynamicDayOffset();
    const short monthOffset = rule.GetDynamicMonthOffset();
    if (kind < DYNAMIC_TIME_TODAY || kind > DYNAMIC_TIME_THIS_QUARTER) {
        return 1;
    }

    // A rule that resolves to the boundary at which this one next changes, with the
    // offsets of this one so that the boundary is that of the shifted reference time.
    const auto shifted = [&](DYNAMIC_TIME boundaryKind) {
        DynamicTime withOffsets(boundaryKind, dayOffset);
        withOffsets.PutDynamicMonthOffset(monthOffset);
        return withOffsets;
    };
    DynamicTime boundary(DYNAMIC_TIME_TODAY, 0);
    bool nextQuarter = false;
    switch (kind) {
        case DYNAMIC_TIME_TODAY:
            boundary.PutDay(1);
            break;
        case DYNAMIC_TIME_THIS_MONTH:
            boundary = shifted(DYNAMIC_TIME_THIS_MONTH);
            boundary.PutDay(1);
            boundary.PutMonth(1);
            break;
        case DYNAMIC_TIME_THIS_YEAR:
            boundary = shifted(DYNAMIC_TIME_THIS_YEAR);
            boundary.PutMonth(1);
            boundary.PutDay(1);
            boundary.PutYear(1);
            break;
        case DYNAMIC_TIME_THIS_QUARTER:
            // The first day of the shifted reference quarter, moved on by three months
            // below: a quarter rule changes when the next quarter begins, just as a
            // month rule changes on the 1st of the next month. Expiring at the start of
            // the current quarter would name a moment already past.
            boundary = shifted(DYNAMIC_TIME_THIS_QUARTER);
            boundary.PutDay(1);
            nextQuarter = true;
            break;
        default:  // THIS_WEEK and the seven weekday kinds: the Sunday of the next week
            boundary = shifted(DYNAMIC_TIME_THIS_WEEK);
            boundary.PutDayOfWeek(0);
            boundary.PutWeek(1);
            break;
    }

    DateTime edge = reference;
    if (boundary.ToDateTime(edge) == 0) {
        edge = edge.ToLocalTime();
    }
    edge.PutHour(0);
    edge.PutMinute(0);
    edge.PutSecond(0);
    edge.PutMillisecond(0);
    if (nextQuarter) {
        DynamicTime::MoveNthTimePointBefore(edge, -3, TIME_GRANULARITY_MONTH);
    }
    if (kind != DYNAMIC_TIME_TODAY) {
        // The resolution added the offsets to the present; taking them out again gives
        // the moment at which the present itself reaches the boundary.
        if (dayOffset != 0) {
            edge = edge - TimeSpan(dayOffset * internal::kMsPerDay);
        }
        if (monthOffset != 0) {
            DynamicTime::MoveNthTimePointBefore(edge, monthOffset, TIME_GRANULARITY_MONTH);
        }
    }
    out.MakeStatic(TIME_MODE_UTC, edge.ToUTCTime());
    return 0;
}

}  // namespace ZelvorDataType
