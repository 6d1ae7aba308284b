// Hash values of the calendar, decimal and relative-time values, each built from exactly
// what the type's operator== reads.

#include <string>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/TimeSpan.h>
#include <ZelvorDataType/ZelvorTime.h>

#include "hash/HashMix.h"

namespace ZelvorDataType {

using internal::HashMix;

std::size_t HashValue(const DateTime& value) noexcept {
    // The seven fields that operator== compares, as they stand (a millisecond field that
    // a constructor left unclamped is compared, and hashed, as it is).
    std::uint64_t hash = internal::kHashDateTime;
    for (const int field : {value.GetYear(), value.GetMonth(), value.GetDay(), value.GetHour(),
                            value.GetMinute(), value.GetSecond(), value.GetMillisecond()}) {
        hash = HashMix(hash, static_cast<std::uint32_t>(field));
    }
    return static_cast<std::size_t>(hash);
}

std::size_t HashValue(const TimeSpan& span) noexcept {
    return static_cast<std::size_t>(
        HashMix(0, static_cast<std::uint64_t>(span.GetTotalMilliseconds())));
}

std::size_t HashValue(const BigDecimal& value) {
    if (value.IsInvalid()) {
        // Equal to nothing (operator== throws), so any constant will do.
        return static_cast<std::size_t>(HashMix(internal::kHashDecimal, 0xBAD));
    }
    // Equal values differ only in leading zeros, in trailing zeros behind the point and
    // in the scale, so the hash reads the significant digits between the first and last
    // digit that is not 0, and the power of ten of the last one. The sign comes from
    // Signum, not from the digits: a quotient truncated to nothing keeps its sign and
    // equals only such zeros of its own sign.
    const std::string text = value.ToString().c_str();
    std::string digits;
    long long fraction = 0;
    bool behindPoint = false;
    for (const char c : text) {
        if (c == '.') {
            behindPoint = true;
        } else if (c >= '0' && c <= '9') {
            digits += c;
            fraction += behindPoint ? 1 : 0;
        }
    }
    std::uint64_t hash =
        HashMix(internal::kHashDecimal, static_cast<std::uint64_t>(value.Signum()));
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) {
        return static_cast<std::size_t>(hash);
    }
    const std::size_t last = digits.find_last_not_of('0');
    const long long power = static_cast<long long>(digits.size() - 1 - last) - fraction;
    hash = HashMix(hash, static_cast<std::uint64_t>(power));
    return static_cast<std::size_t>(
        internal::HashBytes(hash, digits.data() + first, last - first + 1));
}

std::size_t HashValue(const ZelvorTime& value) noexcept {
    DateTime date(0.0);
    switch (value.GetRealMode()) {
        case TIME_MODE_UTC:
            // operator== compares a UTC value with a local one in local time, and two UTC
            // values field by field; local fields serve both, as UTC to local is a
            // function (two UTC instants of a repeated hour share their local fields, and
            // both equal the one local value).
            value.ToDateTime(true, date);
            return HashValue(date.ToLocalTime());
        case TIME_MODE_LOCAL:
            value.ToDateTime(false, date);
            return HashValue(date);
        case TIME_MODE_DYNAMIC: {
            // Two dynamic values are equal when kind and flags are. Equality between a
            // dynamic and a static value depends on the clock at the moment of the
            // comparison, which no hash can follow; such pairs are left out.
            int kind = 0;
            value.GetDynamicTime(kind);
            return static_cast<std::size_t>(
                HashMix(TIME_MODE_DYNAMIC, static_cast<std::uint32_t>(kind)));
        }
        default:
            return static_cast<std::size_t>(
                HashMix(0, static_cast<std::uint32_t>(TIME_MODE_EMPTY)));
    }
}

}  // namespace ZelvorDataType
