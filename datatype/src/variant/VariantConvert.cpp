// The numeric casts, which never fail, and the strict casts to object types.

#include <ZelvorDataType/Variant.h>

#include <cstdint>
#include <cwchar>

#include "variant/VariantAccess.h"

namespace ZelvorDataType {

using internal::ReadSlot;
using internal::VariantAccess;
using internal::VariantError;

namespace {

// The value a cast reads: for integer tags the integer extended to 64 bits by its own
// signedness, for floating tags and cell formats the double. The casts then narrow.
struct Reading {
    enum Kind { None, Integer, Floating } kind;
    long long integer;
    double floating;
};

Reading Read(const Variant& v) noexcept {
    const int tag = v.GetVarType();
    if (internal::IsIntegerTag(tag)) {
        return {Reading::Integer, internal::Int64(VariantAccess::AsScalar(v)), 0.0};
    }
    if (tag == VARIANT_DOUBLE || tag == VARIANT_FLOAT) {
        return {Reading::Floating, 0, internal::ToDouble(VariantAccess::AsScalar(v))};
    }
    if (tag == VARIANT_CELLFMT && VariantAccess::Cell(v) != nullptr) {
        return {Reading::Floating, 0, VariantAccess::Cell(v)->GetValue()};
    }
    return {Reading::None, 0, 0.0};
}

// The low 32 bits of a reading, as the int and unsigned int casts take them.
std::uint32_t Low32(const Reading& r) noexcept {
    switch (r.kind) {
        case Reading::Integer:
            return static_cast<std::uint32_t>(r.integer);
        case Reading::Floating:
            return static_cast<std::uint32_t>(internal::TruncateTo32(r.floating));
        default:
            return 0;
    }
}

}  // namespace

Variant::operator short() const noexcept {
    return static_cast<short>(Low32(Read(*this)));
}

Variant::operator int() const noexcept {
    if (mType == VARIANT_WSTRING) {
        const WideText* text = VariantAccess::Text(*this);
        if (text == nullptr) {
            return 0;
        }
        // The stored text always ends in a NUL, so wcstol stops inside it.
        return static_cast<int>(std::wcstol(text->c_str(), nullptr, 10));
    }
    return static_cast<int>(Low32(Read(*this)));
}

Variant::operator unsigned int() const noexcept {
    return Low32(Read(*this));
}

Variant::operator long long() const noexcept {
    const Reading r = Read(*this);
    switch (r.kind) {
        case Reading::Integer:
            return r.integer;
        case Reading::Floating:
            return internal::TruncateTo64(r.floating);
        default:
            return 0;
    }
}

Variant::operator float() const noexcept {
    if (mType == VARIANT_FLOAT) {
        return ReadSlot<float>(mValue);
    }
    // A long long goes to float directly: through double it could round twice.
    if (internal::IsIntegerTag(mType)) {
        return internal::ToFloat(VariantAccess::AsScalar(*this));
    }
    return static_cast<float>(static_cast<double>(*this));
}

Variant::operator double() const noexcept {
    const Reading r = Read(*this);
    switch (r.kind) {
        case Reading::Integer:
            return static_cast<double>(r.integer);
        case Reading::Floating:
            return r.floating;
        default:
            return 0.0;
    }
}

const Binary* Variant::ToBinary() const {
    if (mType != VARIANT_BINARY) {
        throw VariantError(L"Cannot convert to Binary type");
    }
    return VariantAccess::Block(*this);
}

const DateTime* Variant::ToDateTime() const {
    if (!internal::IsDateTag(mType)) {
        throw VariantError(L"Cannot convert to DateTime type");
    }
    return VariantAccess::Date(*this);
}

const BigDecimal* Variant::ToBigDecimal() const {
    if (mType != VARIANT_BIGDECIMAL) {
        throw VariantError(L"Cannot convert to BigDecimal type");
    }
    return VariantAccess::Decimal(*this);
}

Variant::operator DateTime() const {
    const DateTime* stored = ToDateTime();
    if (stored == nullptr) {
        throw VariantError(L"Cannot convert to DateTime type");
    }
    return *stored;
}

Variant::operator CellFmtData() const {
    if (mType != VARIANT_CELLFMT || mValue == 0) {
        throw VariantError(L"Cannot convert to CellFmtData type");
    }
    return *VariantAccess::Cell(*this);
}

}  // namespace ZelvorDataType
