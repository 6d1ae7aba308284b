#include <ZelvorDataType/ZelvorTime.h>

namespace ZelvorDataType {

int ZelvorTime::GetField(bool wantUTC, bool raw, int (DateTime::*dateGetter)() const noexcept,
                         int (DynamicTime::*ruleGetter)() const noexcept) const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    if (raw) {
        return IsStatic() ? (StaticRecord()->*dateGetter)() : (DynamicRecord()->*ruleGetter)();
    }
    // A value that doesn't convert (a rule without a date) answers with the field of
    // DateTime(0.0), which is what `date` then still holds.
    DateTime date(0.0);
    ToDateTime(wantUTC, date);
    return (date.*dateGetter)();
}

int ZelvorTime::GetYear(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetYear, &DynamicTime::GetYear);
}
int ZelvorTime::GetMonth(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetMonth, &DynamicTime::GetMonth);
}
int ZelvorTime::GetDay(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetDay, &DynamicTime::GetDay);
}
int ZelvorTime::GetWeek(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetWeek, &DynamicTime::GetWeek);
}
int ZelvorTime::GetDayOfWeek(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetDayOfWeek, &DynamicTime::GetDayOfWeek);
}
int ZelvorTime::GetHour(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetHour, &DynamicTime::GetHour);
}
int ZelvorTime::GetMinutes(bool wantUTC, bool raw) const noexcept {
    return GetField(wantUTC, raw, &DateTime::GetMinute, &DynamicTime::GetMinute);
}

int ZelvorTime::GetSeconds(bool raw) const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    if (raw) {
        return IsStatic() ? StaticRecord()->GetSecond() : DynamicRecord()->GetSecond();
    }
    DateTime date(0.0);
    ToDateTime(mMode != TIME_MODE_LOCAL, date);
    return date.GetSecond();
}

int ZelvorTime::GetMilliSeconds() const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    return IsStatic() ? StaticRecord()->GetMillisecond() : 0;
}

int ZelvorTime::PutField(int value, bool isUTC, bool refusalCounts, DatePut put,
                         void (DynamicTime::*ruleSetter)(int) noexcept) noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    if (IsDynamic()) {
        // What the number means is the rule's business (an offset or a field).
        (DynamicRecord()->*ruleSetter)(value);
        return 0;
    }
    DateTime& record = *StaticRecord();
    const bool recordIsUTC = mMode == TIME_MODE_UTC;
    if (recordIsUTC == isUTC) {
        return put(record, value) || !refusalCounts ? 0 : E_TIME_REFUSED;
    }
    // The field is meant in the other zone: set it on the record's reading there and
    // bring the result back, so the instant moves by what the field changed.
    DateTime other = recordIsUTC ? record.ToLocalTime() : record.ToUTCTime();
    if (!put(other, value) && refusalCounts) {
        return E_TIME_REFUSED;
    }
    record = recordIsUTC ? other.ToUTCTime() : other.ToLocalTime();
    return 0;
}

int ZelvorTime::PutYear(int year, bool isUTC) noexcept {
    return PutField(
        year, isUTC, false, [](DateTime& d, int v) noexcept { return d.PutYear(v); },
        &DynamicTime::PutYear);
}
int ZelvorTime::PutMonth(int month, bool isUTC) noexcept {
    return PutField(
        month, isUTC, false, [](DateTime& d, int v) noexcept { return d.PutMonth(v); },
        &DynamicTime::PutMonth);
}
int ZelvorTime::PutDay(int day, bool isUTC) noexcept {
    return PutField(
        day, isUTC, false, [](DateTime& d, int v) noexcept { return d.PutDay(v); },
        &DynamicTime::PutDay);
}
int ZelvorTime::PutHour(int hour, bool isUTC) noexcept {
    return PutField(
        hour, isUTC, false, [](DateTime& d, int v) noexcept { return d.PutHour(v); },
        &DynamicTime::PutHour);
}
int ZelvorTime::PutMinutes(int minute, bool isUTC) noexcept {
    return PutField(
        minute, isUTC, false, [](DateTime& d, int v) noexcept { return d.PutMinute(v); },
        &DynamicTime::PutMinute);
}
int ZelvorTime::PutWeek(int week, bool isUTC) noexcept {
    return PutField(
        week, isUTC, true, [](DateTime& d, int v) noexcept { return d.PutWeek(v); },
        &DynamicTime::PutWeek);
}

int ZelvorTime::PutDayOfWeek(int dayOfWeek, bool isUTC, bool /*crossMonth*/) noexcept {
    // A static value stays in its month: the move across is refused whatever the
    // caller asked, so the edge of a week never silently changes the month.
    return PutField(
        dayOfWeek, isUTC, true,
        [](DateTime& d, int v) noexcept { return d.PutDayOfWeek(v, false); },
        &DynamicTime::PutDayOfWeek);
}

int ZelvorTime::PutSeconds(int second) noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    if (IsDynamic()) {
        DynamicRecord()->PutSecond(second);
    } else {
        StaticRecord()->PutSecond(second);
    }
    return 0;
}

int ZelvorTime::PutMilliSeconds(int millisecond) noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    if (IsStatic()) {
        StaticRecord()->PutMillisecond(millisecond);
    }
    return 0;
}

int ZelvorTime::GetDynamicTime(int& out) const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    out = IsDynamic() ? DynamicRecord()->GetDynamicTime() : DYNAMIC_TIME_NONE;
    return 0;
}

int ZelvorTime::PutDynamicTime(int value) {
    if (value == DYNAMIC_TIME_NONE) {
        return 0;
    }
    const auto kind = static_cast<DYNAMIC_TIME>(value);
    if (IsDynamic()) {
        DynamicRecord()->PutDynamicTime(kind);
    } else {
        MakeDynamic(DynamicTime(kind, 0));
    }
    return 0;
}

int ZelvorTime::GetDynamicDayOffset(int& out) const noexcept {
    if (!IsDynamic()) {
        return IsEmpty() ? E_TIME_EMPTY : E_TIME_NOT_DYNAMIC;
    }
    out = DynamicRecord()->GetDynamicDayOffset();
    return 0;
}

int ZelvorTime::PutDynamicDayOffset(int dayOffset) noexcept {
    if (!IsDynamic()) {
        return IsEmpty() ? E_TIME_EMPTY : E_TIME_NOT_DYNAMIC;
    }
    DynamicRecord()->PutDynamicDayOffset(dayOffset);
    return 0;
}

int ZelvorTime::GetDynamicMonthOffset(short& out) const noexcept {
    if (!IsDynamic()) {
        return IsEmpty() ? E_TIME_EMPTY : E_TIME_NOT_DYNAMIC;
    }
    out = DynamicRecord()->GetDynamicMonthOffset();
    return 0;
}

int ZelvorTime::PutDynamicMonthOffset(short monthOffset) noexcept {
    if (!IsDynamic()) {
        return IsEmpty() ? E_TIME_EMPTY : E_TIME_NOT_DYNAMIC;
    }
    DynamicRecord()->PutDynamicMonthOffset(monthOffset);
    return 0;
}

int ZelvorTime::GetNthTimePointBefore(int n, TIME_GRANULARITY unit, DateTime& out) const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    DateTime date(0.0);
    if (IsDynamic()) {
        if (DynamicRecord()->ToDateTime(date) != 0) {
            return E_TIME_UNRESOLVED;
        }
    } else {
        date = *StaticRecord();
    }
    DynamicTime::MoveNthTimePointBefore(date, n, unit);
    out = date;
    return 0;
}

int ZelvorTime::TolocalDATE(double& out, bool wantUTC) const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    DateTime date(0.0);
    ToDateTime(wantUTC, date);
    out = date.ToDATE();
    return 0;
}

int ZelvorTime::TolocalDATEWithFixedTime(double& out, bool wantUTC, int fixedTime) const noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    DateTime date(static_cast<long>(fixedTime), 0);
    ToDateTime(wantUTC, date);
    out = date.ToDATE();
    return 0;
}

}  // namespace ZelvorDataType
