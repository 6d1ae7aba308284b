#pragma once

// The Variant's private view, shared by its source files: the slot read and written by
// width, the tag groups, and the numeric readings that comparison and conversion share.

#include <ZelvorDataType/Variant.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace ZelvorDataType::internal {

using VariantError = ZelvorBase::ExceptionImpl<VariantException>;

constexpr bool IsNumericTag(int tag) noexcept {
    switch (tag) {
        case VARIANT_INT:
        case VARIANT_UNSIGNED:
        case VARIANT_DOUBLE:
        case VARIANT_FLOAT:
        case VARIANT_SHORT:
        case VARIANT_LONG:
        case VARIANT_INT64:
            return true;
        default:
            return false;
    }
}

constexpr bool IsDateTag(int tag) noexcept {
    return tag == VARIANT_DATE || tag == VARIANT_TIME || tag == VARIANT_DATETIME;
}

// Bytes of the slot that a tag uses: 2, 4 or 8, and 0 for an empty value (whose slot
// is null).
constexpr std::size_t SlotWidth(int tag) noexcept {
    switch (tag) {
        case VARIANT_SHORT:
            return 2;
        case VARIANT_INT:
        case VARIANT_UNSIGNED:
        case VARIANT_FLOAT:
        case VARIANT_LONG:
            return 4;
        case VARIANT_EMPTY:
            return 0;
        default:
            return 8;
    }
}

// A tag with its slot: a Variant's value without its storage rules, so that a plain
// operand (an int, a double) goes through the same numeric rules as a Variant does.
struct Scalar {
    int tag;
    std::uint64_t slot;
};

// The slot holds its value in its first bytes, as the machine lays it out; memcpy keeps
// the reading well defined whatever was stored last.
template <class T>
T ReadSlot(std::uint64_t slot) noexcept {
    static_assert(sizeof(T) <= sizeof slot);
    T value;
    std::memcpy(&value, &slot, sizeof value);
    return value;
}

template <class T>
std::uint64_t MakeSlot(T value) noexcept {
    static_assert(sizeof(T) <= sizeof(std::uint64_t));
    std::uint64_t slot = 0;
    std::memcpy(&slot, &value, sizeof value);
    return slot;
}

template <class T>
Scalar MakeScalar(int tag, T value) noexcept {
    return Scalar{tag, MakeSlot(value)};
}

// ---- Numeric readings, shared by comparison and conversion --------------------------
//
// The readings of a numeric tag (0 for any other tag):
//  - Bits32: int, unsigned and short sign-extended, as 32 bits;
//  - Int64: the integer extended by its own signedness (tag 2 zero-extended), a
//    floating value truncated toward zero;
//  - ToDouble / ToFloat: the value converted by its own type.
// Truncation toward zero saturates beyond the 64-bit range and gives 0 for a NaN; a
// 32-bit truncation is the low 32 bits of the 64-bit one.
// Narrowing a double to float relies on IEEE 754 rounding, where an overflow gives an
// infinity rather than undefined behaviour.
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559);

inline long long TruncateTo64(double value) noexcept {
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

inline std::int32_t TruncateTo32(double value) noexcept {
    // Keeping the low bits of the 64-bit truncation, as the integer casts do, gives the
    // unsigned reading of 3e9 as 3000000000.
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(TruncateTo64(value)));
}

inline bool IsIntegerTag(int tag) noexcept {
    return tag == VARIANT_INT || tag == VARIANT_UNSIGNED || tag == VARIANT_SHORT ||
           tag == VARIANT_LONG || tag == VARIANT_INT64;
}

inline std::uint32_t Bits32(Scalar value) noexcept {
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

// Calls `convert` with the number a numeric tag holds, in the type it is stored as; any
// other tag reads as R's zero.
template <class R, class F>
R ReadNumber(Scalar value, F convert) noexcept {
    switch (value.tag) {
        case VARIANT_INT:
        case VARIANT_LONG:
            return convert(ReadSlot<std::int32_t>(value.slot));
        case VARIANT_UNSIGNED:
            return convert(ReadSlot<std::uint32_t>(value.slot));
        case VARIANT_SHORT:
            return convert(ReadSlot<short>(value.slot));
        case VARIANT_INT64:
            return convert(ReadSlot<long long>(value.slot));
        case VARIANT_DOUBLE:
            return convert(ReadSlot<double>(value.slot));
        case VARIANT_FLOAT:
            return convert(ReadSlot<float>(value.slot));
        default:
            return R{};
    }
}

inline long long Int64(Scalar value) noexcept {
    return ReadNumber<long long>(value, [](auto number) -> long long {
        if constexpr (std::is_floating_point_v<decltype(number)>) {
            return TruncateTo64(number);
        } else {
            return number;
        }
    });
}

inline double ToDouble(Scalar value) noexcept {
    return ReadNumber<double>(value, [](auto number) { return static_cast<double>(number); });
}

inline float ToFloat(Scalar value) noexcept {
    return ReadNumber<float>(value, [](auto number) { return static_cast<float>(number); });
}

inline bool NumericEqual(Scalar a, Scalar b) noexcept {
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

struct VariantAccess {
    static int Tag(const Variant& v) noexcept { return v.mType; }
    // Stores a value (with this tag) into a Variant that holds nothing.
    static void Set(Variant& v, int tag, std::uint64_t slot) noexcept {
        v.mType = tag;
        v.mValue = slot;
    }
    // A copy of `length` characters as the Variant's text, from its Buffer, or from the
    // heap under its contract when `governed` (length * 4 + 4 bytes), or from the heap.
    static void StoreText(Variant& v, const wchar_t* text, std::size_t length, bool governed);
    // A copy of `size` bytes as the Variant's byte block, governed like a text.
    static void StoreBlock(Variant& v, const unsigned char* data, std::size_t size);
    static Scalar AsScalar(const Variant& v) noexcept { return Scalar{v.mType, v.mValue}; }
    static ZelvorBase::Buffer* GetBuffer(const Variant& v) noexcept { return v.mBuffer; }

    template <class T>
    static T* Pointer(const Variant& v) noexcept {
        return ReadSlot<T*>(v.mValue);
    }
    static const WideText* Text(const Variant& v) noexcept { return Pointer<WideText>(v); }
    static const Binary* Block(const Variant& v) noexcept { return Pointer<Binary>(v); }
    static const DateTime* Date(const Variant& v) noexcept { return Pointer<DateTime>(v); }
    static const BigDecimal* Decimal(const Variant& v) noexcept { return Pointer<BigDecimal>(v); }
    static const CellFmtData* Cell(const Variant& v) noexcept { return Pointer<CellFmtData>(v); }
};

}  // namespace ZelvorDataType::internal
