#pragma once

#include <ZelvorDataType/Export.h>
#include <cstddef>
#include <functional>
#include <iosfwd>

namespace ZelvorDataType {

// A signed duration: one 64-bit count of milliseconds, with no limit beyond that width.
// A day is always 86400000 milliseconds; no time zone or daylight saving enters. A plain
// value, cheap to copy; nothing here allocates or throws.
class ZELVOR_DATATYPE_API TimeSpan {
  public:
    // Takes the count as it is: TimeSpan(90000) is a minute and a half.
    explicit TimeSpan(long long milliseconds) noexcept;

    // days * 86400000 + hours * 3600000 + minutes * 60000 + seconds * 1000 +
    // milliseconds, summed in 64 bits. The parts may be negative or exceed their units:
    // TimeSpan(0, 25, 0, 0, -1) is a day and an hour less a millisecond.
    TimeSpan(int days, int hours, int minutes, int seconds, int milliseconds) noexcept;

    TimeSpan(const TimeSpan& other) noexcept = default;
    TimeSpan& operator=(const TimeSpan& other) noexcept = default;
    ~TimeSpan() = default;

    // Totals, not components, each the count divided by the length of the unit and
    // truncated toward zero: 90 minutes has GetTotalHours 1 and GetTotalMinutes 90, and
    // -1 millisecond has GetTotalSeconds 0. A total beyond 32 bits keeps its low 32 bits.
    int GetTotalDays() const noexcept;
    int GetTotalHours() const noexcept;
    int GetTotalMinutes() const noexcept;
    int GetTotalSeconds() const noexcept;
    // The count itself.
    long long GetTotalMilliseconds() const noexcept;

    // Add or subtract the other count (wrapping in 64 bits); return this.
    TimeSpan& operator+=(const TimeSpan& other) noexcept;
    TimeSpan& operator-=(const TimeSpan& other) noexcept;
    // The sum or difference as a new span.
    TimeSpan operator+(const TimeSpan& other) const noexcept;
    TimeSpan operator-(const TimeSpan& other) const noexcept;

    // Order of the signed counts.
    bool operator==(const TimeSpan& other) const noexcept;
    bool operator!=(const TimeSpan& other) const noexcept;
    bool operator<(const TimeSpan& other) const noexcept;
    bool operator>(const TimeSpan& other) const noexcept;
    bool operator<=(const TimeSpan& other) const noexcept;
    bool operator>=(const TimeSpan& other) const noexcept;

  private:
    long long mMilliseconds;
};

// Writes ToText(span) of <ZelvorDataType/Text.h>: "[-][<days>d ]hh:mm:ss.fff",
// "1d 02:00:00.005".
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const TimeSpan& span);

// A hash of the count, so equal spans hash alike. Stable within one run only.
ZELVOR_DATATYPE_API std::size_t HashValue(const TimeSpan& span) noexcept;

}  // namespace ZelvorDataType

// std::hash through HashValue above, for the unordered containers.
namespace std {
template <>
struct hash<ZelvorDataType::TimeSpan> {
    std::size_t operator()(const ZelvorDataType::TimeSpan& value) const noexcept {
        return ZelvorDataType::HashValue(value);
    }
};
}  // namespace std
