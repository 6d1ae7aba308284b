// Hash values of Variants, consistent with operator== across tags.
//
// operator== is not transitive across numeric tags, yet whatever it calls equal must
// hash alike, so the hash has to be constant on every chain of equal pairs, not only on
// each pair. The chains, and the key each numeric value hashes by:
//  - A value that is not an integer (a float or double with a fraction, an infinity)
//    equals only floating values of exactly the same value: the key is that value.
//  - An integer meets a float in float, so every integer equals the float nearest to it,
//    and all integers with one nearest float are chained through it: the key of an
//    integer value is its nearest float F (0 to 2^24 exactly: the value itself).
//  - int and unsigned meet in 32 bits, so a negative n down to -2^31 equals the unsigned
//    n + 2^32 and takes that value's key. Where n is below -2^24, its own nearest
//    float chains it to neighbours whose 32-bit partners round to other floats, and the
//    chains run on through the whole range: values whose key would lie in
//    [2^31, 2^32 - 2^24 + 256) and values below -2^31 that round to -2^31 share one key.
//  - From 2^53 up (and -2^53 down) a long long rounds once to double and once straight
//    to float, and the two roundings differ next to every midpoint between floats: each
//    pair of neighbouring floats is chained, so the whole range shares one key.
// Date tags: two dates compare by date, two times by time of day, and a date-time on the
// left equals a date or a time with the same whole value. A date-time then chains every
// date to every time and back, so all date tags share one key; a caller who needs
// spread should key by the DateTime itself. A NaN equals nothing, and a pointer tag
// whose slot was emptied by TakeValue equals nothing either.

#include <cmath>

#include <ZelvorDataType/Variant.h>

#include "hash/HashMix.h"
#include "variant/VariantAccess.h"

namespace ZelvorDataType {

using internal::HashMix;
using internal::Scalar;
using internal::VariantAccess;

namespace {

constexpr std::uint64_t kAliased = 1;  // the 32-bit region chained through int and unsigned
constexpr std::uint64_t kHuge = 2;     // from 2^53 up and from -2^53 down
constexpr std::uint64_t kFloatKey = 3;
constexpr std::uint64_t kExactKey = 4;
constexpr std::uint64_t kNothing = 5;  // NaN, and emptied pointer tags

constexpr float kTwo31 = 2147483648.0F;
constexpr float kTwo53 = 9007199254740992.0F;
constexpr float kAliasFloor = 4278190336.0F;  // 2^32 - 2^24 + 256

std::uint64_t FloatKey(float nearest) noexcept {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &nearest, sizeof bits);
    return HashMix(kFloatKey, bits);
}

// An integer value, any integer tag or an integral floating value below 2^63.
std::uint64_t IntegerKey(long long value) noexcept {
    if (value >= 0) {
        const float nearest = static_cast<float>(value);
        if (nearest >= kTwo53) {
            return kHuge;
        }
        return nearest >= kTwo31 && nearest < kAliasFloor ? kAliased : FloatKey(nearest);
    }
    if (value >= -2147483648LL) {
        // The 32-bit partner n + 2^32, in [2^31, 2^32).
        const float nearest = static_cast<float>(value + 4294967296LL);
        return nearest < kAliasFloor ? kAliased : FloatKey(nearest);
    }
    const float nearest = static_cast<float>(value);
    if (nearest <= -kTwo53) {
        return kHuge;
    }
    return nearest >= -kTwo31 ? kAliased : FloatKey(nearest);
}

std::uint64_t NumericKey(Scalar scalar) noexcept {
    if (scalar.tag != VARIANT_DOUBLE && scalar.tag != VARIANT_FLOAT) {
        return IntegerKey(internal::Int64(scalar));
    }
    // A float widens to double exactly, so one reading serves both.
    const double value = internal::ToDouble(scalar);
    if (std::isnan(value)) {
        return kNothing;
    }
    if (std::isinf(value) || value != std::trunc(value)) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return HashMix(kExactKey, bits);
    }
    if (std::fabs(value) >= 9007199254740992.0) {
        return kHuge;
    }
    // Integral and below 2^53: exact as a long long (-0.0 becomes 0).
    return IntegerKey(static_cast<long long>(value));
}

}  // namespace

std::size_t HashValue(const Variant& value) {
    const int tag = value.GetVarType();
    if (internal::IsNumericTag(tag)) {
        return static_cast<std::size_t>(
            HashMix(VARIANT_INT, NumericKey(VariantAccess::AsScalar(value))));
    }
    if (internal::IsDateTag(tag)) {
        return static_cast<std::size_t>(HashMix(VARIANT_DATETIME, 0));
    }
    if (tag == VARIANT_EMPTY) {
        return static_cast<std::size_t>(HashMix(VARIANT_EMPTY, 0));
    }
    if (VariantAccess::AsScalar(value).slot == 0) {
        return static_cast<std::size_t>(HashMix(kNothing, 0));
    }
    const auto seed = static_cast<std::uint64_t>(tag);
    switch (tag) {
        case VARIANT_WSTRING: {
            const WideText& text = *VariantAccess::Text(value);
            return static_cast<std::size_t>(
                internal::HashBytes(seed, text.data(), text.size() * sizeof(wchar_t)));
        }
        case VARIANT_BINARY: {
            const Binary& block = *VariantAccess::Block(value);
            return static_cast<std::size_t>(
                internal::HashBytes(seed, block.c_ptr(), block.GetSize()));
        }
        case VARIANT_BIGDECIMAL:
            return HashValue(*VariantAccess::Decimal(value));
        case VARIANT_CELLFMT: {
            // Equal cells have equal numbers; 0.0 and -0.0 are one number.
            const double number = VariantAccess::Cell(value)->GetValue();
            return static_cast<std::size_t>(
                number == 0.0 ? HashMix(seed, 0)
                              : internal::HashBytes(seed, &number, sizeof number));
        }
        default:
            return static_cast<std::size_t>(HashMix(seed, 0));
    }
}

}  // namespace ZelvorDataType
