#pragma once

// The Variant's private view, shared by its source files: the slot read and written by
// width, the tag groups, and the numeric readings that comparison and conversion share.

#include <ZelvorDataType/Variant.h>

#include <cstdint>
#include <cstring>

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

// The numeric readings of a numeric tag (0 for any other tag):
//  - Bits32: int, unsigned and short sign-extended, as 32 bits;
//  - Int64: the integer extended by its own signedness (tag 2 zero-extended);
//  - Double / Float: the value converted by its own type.
std::uint32_t Bits32(Scalar value) noexcept;
long long Int64(Scalar value) noexcept;
double ToDouble(Scalar value) noexcept;
float ToFloat(Scalar value) noexcept;
// True for the integer tags 1, 2, 21, 22, 34.
bool IsIntegerTag(int tag) noexcept;

// Numeric equality of two numeric scalars, with the widening of each pair.
bool NumericEqual(Scalar a, Scalar b) noexcept;

// Truncation toward zero. Beyond the 64-bit range the value saturates and a NaN gives 0;
// a 32-bit truncation is the low 32 bits of the 64-bit one.
long long TruncateTo64(double value) noexcept;
std::int32_t TruncateTo32(double value) noexcept;

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
