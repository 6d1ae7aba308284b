// TimeSpan: a signed count of milliseconds.
#include <ZelvorDataType/TimeSpan.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType {

using internal::WrapAdd;
using internal::WrapSub;

TimeSpan::TimeSpan(long long milliseconds) noexcept : mMilliseconds(milliseconds) {}

// Each product is below 2^31 * 86400000 < 2^58, so the sum cannot overflow 64 bits.
TimeSpan::TimeSpan(int days, int hours, int minutes, int seconds, int milliseconds) noexcept
    : mMilliseconds(days * internal::kMsPerDay + hours * 3600000LL + minutes * 60000LL +
                    seconds * 1000LL + milliseconds) {}

// Totals beyond 32 bits keep their low 32 bits (a modular conversion).
int TimeSpan::GetTotalDays() const noexcept {
    return static_cast<int>(mMilliseconds / internal::kMsPerDay);
}
int TimeSpan::GetTotalHours() const noexcept {
    return static_cast<int>(mMilliseconds / 3600000);
}
int TimeSpan::GetTotalMinutes() const noexcept {
    return static_cast<int>(mMilliseconds / 60000);
}
int TimeSpan::GetTotalSeconds() const noexcept {
    return static_cast<int>(mMilliseconds / 1000);
}
long long TimeSpan::GetTotalMilliseconds() const noexcept {
    return mMilliseconds;
}

TimeSpan& TimeSpan::operator+=(const TimeSpan& other) noexcept {
    mMilliseconds = WrapAdd(mMilliseconds, other.mMilliseconds);
    return *this;
}
TimeSpan& TimeSpan::operator-=(const TimeSpan& other) noexcept {
    mMilliseconds = WrapSub(mMilliseconds, other.mMilliseconds);
    return *this;
}
TimeSpan TimeSpan::operator+(const TimeSpan& other) const noexcept {
    return TimeSpan(WrapAdd(mMilliseconds, other.mMilliseconds));
}
TimeSpan TimeSpan::operator-(const TimeSpan& other) const noexcept {
    return TimeSpan(WrapSub(mMilliseconds, other.mMilliseconds));
}

bool TimeSpan::operator==(const TimeSpan& other) const noexcept {
    return mMilliseconds == other.mMilliseconds;
}
bool TimeSpan::operator!=(const TimeSpan& other) const noexcept {
    return mMilliseconds != other.mMilliseconds;
}
bool TimeSpan::operator<(const TimeSpan& other) const noexcept {
    return mMilliseconds < other.mMilliseconds;
}
bool TimeSpan::operator>(const TimeSpan& other) const noexcept {
    return mMilliseconds > other.mMilliseconds;
}
bool TimeSpan::operator<=(const TimeSpan& other) const noexcept {
    return mMilliseconds <= other.mMilliseconds;
}
bool TimeSpan::operator>=(const TimeSpan& other) const noexcept {
    return mMilliseconds >= other.mMilliseconds;
}

}  // namespace ZelvorDataType
