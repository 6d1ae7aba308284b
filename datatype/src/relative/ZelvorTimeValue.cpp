#include <ZelvorDataType/ZelvorTime.h>

namespace ZelvorDataType {

namespace {

// The record of a static value: `date`, given in the zone `isUTC` names, held in the
// zone `mode` names.
DateTime InZone(const DateTime& date, TIME_MODE mode, bool isUTC) noexcept {
    if (mode == TIME_MODE_UTC) {
        return isUTC ? date : date.ToUTCTime();
    }
    return isUTC ? date.ToLocalTime() : date;
}

TIME_MODE StaticMode(TIME_MODE mode) noexcept {
    return static_cast<unsigned>(mode) < 2u ? mode : TIME_MODE_UTC;
}

}  // namespace

ZelvorTime::ZelvorTime() noexcept : mBuffer(nullptr), mMode(TIME_MODE_EMPTY), mValue(nullptr) {}

ZelvorTime::ZelvorTime(ZelvorBase::Buffer* buffer) noexcept
    : mBuffer(buffer), mMode(TIME_MODE_EMPTY), mValue(nullptr) {}

ZelvorTime::ZelvorTime(const DateTime& date, TIME_MODE mode, bool isUTC, ZelvorBase::Buffer* buffer)
    : mBuffer(buffer), mMode(TIME_MODE_EMPTY), mValue(nullptr) {
    const TIME_MODE held = StaticMode(mode);
    MakeStatic(held, InZone(date, held, isUTC));
}

ZelvorTime::ZelvorTime(double date, int milliseconds, TIME_MODE mode, bool isUTC,
                       ZelvorBase::Buffer* buffer)
    : mBuffer(buffer), mMode(TIME_MODE_EMPTY), mValue(nullptr) {
    const TIME_MODE held = StaticMode(mode);
    // The milliseconds go on after the conversion, which keeps them anyway.
    MakeStatic(held, InZone(DateTime(date), held, isUTC)).PutMillisecond(milliseconds);
}

ZelvorTime::ZelvorTime(const ZelvorTime& other)
    : mBuffer(nullptr), mMode(TIME_MODE_EMPTY), mValue(nullptr) {
    *this = other;
}

ZelvorTime::ZelvorTime(const ZelvorTime& other, ZelvorBase::Buffer* buffer)
    : mBuffer(buffer), mMode(TIME_MODE_EMPTY), mValue(nullptr) {
    *this = other;
}

ZelvorTime& ZelvorTime::operator=(const ZelvorTime& other) {
    if (this == &other) {
        return *this;
    }
    if (other.IsStatic()) {
        MakeStatic(other.mMode, *other.StaticRecord());
    } else if (other.IsDynamic()) {
        MakeDynamic(*other.DynamicRecord()) = *other.DynamicRecord();
    } else {
        ReleaseRecord();
    }
    return *this;
}

ZelvorTime::~ZelvorTime() {
    ReleaseRecord();
}

void ZelvorTime::Reset() noexcept {
    ReleaseRecord();
}

void ZelvorTime::ReleaseRecord() noexcept {
    // A record in a Buffer belongs to the arena: it is neither destroyed nor freed.
    if (mValue != nullptr && mBuffer == nullptr) {
        if (IsStatic()) {
            delete StaticRecord();
        } else if (IsDynamic()) {
            delete DynamicRecord();
        }
    }
    mValue = nullptr;
    mMode = TIME_MODE_EMPTY;
}

DateTime& ZelvorTime::MakeStatic(TIME_MODE mode, const DateTime& value) {
    if (IsStatic()) {
        *StaticRecord() = value;
    } else {
        // Released first, so that a failed allocation leaves an empty value and never
        // a record of one form under the mode of the other.
        ReleaseRecord();
        mValue = new (mBuffer) DateTime(value);
    }
    mMode = mode;
    return *StaticRecord();
}

DynamicTime& ZelvorTime::MakeDynamic(const DynamicTime& fresh) {
    if (!IsDynamic()) {
        ReleaseRecord();
        mValue = new (mBuffer) DynamicTime(fresh);
        mMode = TIME_MODE_DYNAMIC;
    }
    return *DynamicRecord();
}

void ZelvorTime::SetToCurrentTime() {
    MakeStatic(TIME_MODE_UTC, DateTime::NowUTC());
}

TIME_MODE ZelvorTime::GetMode() const noexcept {
    return mMode == TIME_MODE_UTC ? TIME_MODE_UTC : TIME_MODE_LOCAL;
}

TIME_MODE ZelvorTime::GetRealMode() const noexcept {
    return mMode;
}

int ZelvorTime::SetMode(TIME_MODE mode) noexcept {
    if (IsEmpty()) {
        return E_TIME_EMPTY;
    }
    if (mode == mMode || IsDynamic()) {
        return 0;
    }
    DateTime& record = *StaticRecord();
    if (mode == TIME_MODE_LOCAL) {
        record = record.ToLocalTime();
    } else if (mode == TIME_MODE_UTC) {
        record = record.ToUTCTime();
    } else {
        // A static value can't become dynamic or empty by a change of zone.
        return E_TIME_REFUSED;
    }
    mMode = mode;
    return 0;
}

int ZelvorTime::ToDateTime(bool wantUTC, DateTime& date) const noexcept {
    if (mMode == TIME_MODE_UTC) {
        date = wantUTC ? *StaticRecord() : StaticRecord()->ToLocalTime();
        return 0;
    }
    if (mMode == TIME_MODE_LOCAL) {
        date = wantUTC ? StaticRecord()->ToUTCTime() : *StaticRecord();
        return 0;
    }
    if (mMode == TIME_MODE_DYNAMIC) {
        DateTime resolved(date);
        if (DynamicRecord()->ToDateTime(resolved) != 0) {
            return E_TIME_UNRESOLVED;
        }
        date = wantUTC ? resolved : resolved.ToLocalTime();
        return 0;
    }
    return 1;
}

}  // namespace ZelvorDataType
