// The numeric readings shared by comparison and conversion.

#include "variant/VariantAccess.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace ZelvorDataType::internal {

// Narrowing a double to float relies on IEEE 754 rounding, where an overflow gives an
// infinity rather than undefined behaviour.
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);

bool IsIntegerTag(int tag) noexcept {
    return tag == VARIANT_INT || tag == VARIANT_UNSIGNED || tag == VARIANT_SHORT ||
           tag == VARIANT_LONG || tag == VARIANT_INT64;
}

std::uint32_t Bits32(Scalar value) noexcept {
    switch (value.tag) {
        case VARIANT_INT:
        case VARIANT_UNSIGNED:
        case VARIANT_LONG:
            return ReadSlot<std::uint32_t>(value.slot);
        case VARIANT_SHORT:
            return static_cast<std::uint32_t>(
                static_cast<std::int32_t>(ReadSlot<short>(value.slot)));
        default:
            return 0;
    }
}

long long Int64(Scalar value) noexcept {
    switch (value.tag) {
        case VARIANT_INT:
        case VARIANT_LONG:
            return ReadSlot<std::int32_t>(value.slot);
        case VARIANT_UNSIGNED:
            return ReadSlot<std::uint32_t>(value.slot);
        case VARIANT_SHORT:
            return ReadSlot<short>(value.slot);
        case VARIANT_INT64:
            return ReadSlot<long long>(value.slot);
        case VARIANT_DOUBLE:
            return TruncateTo64(ReadSlot<double>(value.slot));
        case VARIANT_FLOAT:
            return TruncateTo64(ReadSlot<float>(value.slot));
        default:
            return 0;
    }
}

double ToDouble(Scalar value) noexcept {
    switch (value.tag) {
        case VARIANT_INT:
        case VARIANT_LONG:
            return ReadSlot<std::int32_t>(value.slot);
        case VARIANT_UNSIGNED:
            return ReadSlot<std::uint32_t>(value.slot);
        case VARIANT_SHORT:
            return ReadSlot<short>(value.slot);
        case VARIANT_INT64:
            return static_cast<double>(ReadSlot<long long>(value.slot));
        case VARIANT_DOUBLE:
            return ReadSlot<double>(value.slot);
        case VARIANT_FLOAT:
            return ReadSlot<float>(value.slot);
        default:
            return 0.0;
    }
}

float ToFloat(Scalar value) noexcept {
    switch (value.tag) {
        case VARIANT_INT:
        case VARIANT_LONG:
            return static_cast<float>(ReadSlot<std::int32_t>(value.slot));
        case VARIANT_UNSIGNED:
            return static_cast<float>(ReadSlot<std::uint32_t>(value.slot));
        case VARIANT_SHORT:
            return ReadSlot<short>(value.slot);
        case VARIANT_INT64:
            return static_cast<float>(ReadSlot<long long>(value.slot));
        case VARIANT_DOUBLE:
            return static_cast<float>(ReadSlot<double>(value.slot));
        case VARIANT_FLOAT:
            return ReadSlot<float>(value.slot);
        default:
            return 0.0F;
    }
}

bool NumericEqual(Scalar a, Scalar b) noexcept {
    const bool aFloating = a.tag == VARIANT_DOUBLE || a.tag == VARIANT_FLOAT;
    const bool bFloating = b.tag == VARIANT_DOUBLE || b.tag == VARIANT_FLOAT;
    if (!aFloating && !bFloating) {
        // A long long on either side widens both to 64 bits; otherwise the pair meets in
        // 32 bits, which makes the int -1 equal to the unsigned 4294967295.
        if (a.tag == VARIANT_INT64 || b.tag == VARIANT_INT64) {
            return Int64(a) == Int64(b);
        }
        return Bits32(a) == Bits32(b);
    }
    // A double on either side decides the type of the comparison; a float meets an
    // integer in float, so a large long long can equal a float that is only near it.
    if (a.tag == VARIANT_DOUBLE || b.tag == VARIANT_DOUBLE) {
        return ToDouble(a) == ToDouble(b);
    }
    return ToFloat(a) == ToFloat(b);
}

long long TruncateTo64(double value) noexcept {
    // 2^63 is exact in a double; anything from it upward, and anything below -2^63, has
    // no long long, so it saturates. A NaN has no sign to saturate by and gives 0.
    constexpr double kLimit = 9223372036854775808.0;
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kLimit) {
        return std::numeric_limits<long long>::max();
    }
    if (value < -kLimit) {
        return std::numeric_limits<long long>::min();
    }
    return static_cast<long long>(value);
}

std::int32_t TruncateTo32(double value) noexcept {
    // Keeping the low bits of the 64-bit truncation, as the integer casts do, gives the
    // unsigned reading of 3e9 as 3000000000.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(TruncateTo64(value)));
}

}  // namespace ZelvorDataType::internal
