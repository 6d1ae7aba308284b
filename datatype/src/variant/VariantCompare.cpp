// Equality, comparability and order of Variant values.

#include <ZelvorDataType/Variant.h>

#include <cwchar>

#include "variant/VariantAccess.h"

namespace ZelvorDataType {

using internal::IsDateTag;
using internal::IsNumericTag;
using internal::MakeScalar;
using internal::Scalar;
using internal::VariantAccess;

namespace {

// Pointer tags hold a null slot only after TakeValue; such a value equals nothing and
// reads as the empty text or block where one is needed.
bool SameText(const WideText* text, const wchar_t* other, std::size_t length) noexcept {
    const std::size_t size = text == nullptr ? 0 : text->size();
    return size == length && (size == 0 || std::wmemcmp(text->data(), other, size) == 0);
}

bool NumericEqualsPlain(const Variant& v, Scalar plain) noexcept {
    return IsNumericTag(v.GetVarType()) &&
           internal::NumericEqual(VariantAccess::AsScalar(v), plain);
}

}  // namespace

bool Variant::operator==(const Variant& other) const {
    const int tag = mType;
    const int otherTag = other.mType;
    if (IsNumericTag(tag)) {
        return IsNumericTag(otherTag) && internal::NumericEqual(VariantAccess::AsScalar(*this),
                                                                VariantAccess::AsScalar(other));
    }
    if (tag == VARIANT_EMPTY) {
        return otherTag == VARIANT_EMPTY;
    }
    // Every pointer tag below needs an object on both sides.
    const bool accepts = tag == otherTag || (tag == VARIANT_DATETIME && IsDateTag(otherTag));
    if (!accepts || mValue == 0 || other.mValue == 0) {
        return false;
    }
    switch (tag) {
        case VARIANT_WSTRING: {
            const WideText* text = VariantAccess::Text(other);
            return SameText(VariantAccess::Text(*this), text->data(), text->size());
        }
        case VARIANT_BINARY:
            return *VariantAccess::Block(other) == *VariantAccess::Block(*this);
        case VARIANT_DATE: {
            const DateTime& a = *VariantAccess::Date(*this);
            const DateTime& b = *VariantAccess::Date(other);
            return a.GetYear() == b.GetYear() && a.GetMonth() == b.GetMonth() &&
                   a.GetDay() == b.GetDay();
        }
        case VARIANT_TIME: {
            const DateTime& a = *VariantAccess::Date(*this);
            const DateTime& b = *VariantAccess::Date(other);
            return a.GetHour() == b.GetHour() && a.GetMinute() == b.GetMinute() &&
                   a.GetSecond() == b.GetSecond() && a.GetMillisecond() == b.GetMillisecond();
        }
        case VARIANT_DATETIME:
            return *VariantAccess::Date(*this) == *VariantAccess::Date(other);
        case VARIANT_BIGDECIMAL:
            return *VariantAccess::Decimal(other) == *VariantAccess::Decimal(*this);
        case VARIANT_CELLFMT:
            return *VariantAccess::Cell(other) == *VariantAccess::Cell(*this);
        default:
            return false;
    }
}

bool Variant::operator==(short value) const noexcept {
    return NumericEqualsPlain(*this, MakeScalar(VARIANT_SHORT, value));
}

bool Variant::operator==(int value) const noexcept {
    return NumericEqualsPlain(*this, MakeScalar(VARIANT_INT, value));
}

bool Variant::operator==(unsigned int value) const noexcept {
    return NumericEqualsPlain(*this, MakeScalar(VARIANT_UNSIGNED, value));
}

bool Variant::operator==(long long value) const noexcept {
    return NumericEqualsPlain(*this, MakeScalar(VARIANT_INT64, value));
}

bool Variant::operator==(float value) const noexcept {
    return NumericEqualsPlain(*this, MakeScalar(VARIANT_FLOAT, value));
}

bool Variant::operator==(double value) const noexcept {
    return NumericEqualsPlain(*this, MakeScalar(VARIANT_DOUBLE, value));
}

bool Variant::operator==(const wchar_t* text) const noexcept {
    if (mType != VARIANT_WSTRING || mValue == 0) {
        return false;
    }
    if (text == nullptr) {
        text = L"";
    }
    return SameText(VariantAccess::Text(*this), text, std::wcslen(text));
}

bool Variant::operator==(const char* text) const {
    if (mType != VARIANT_WSTRING || mValue == 0) {
        return false;
    }
    const ZelvorBase::ReturnWString wide = ZelvorBase::UTF8ToWideChar(text, true);
    return SameText(VariantAccess::Text(*this), wide.c_str(), wide.GetLength());
}

bool Variant::operator==(const DateTime& value) const noexcept {
    return IsDateTag(mType) && mValue != 0 && *VariantAccess::Date(*this) == value;
}

bool Variant::operator==(const BigDecimal& value) const {
    return mType == VARIANT_BIGDECIMAL && mValue != 0 && *VariantAccess::Decimal(*this) == value;
}

bool Variant::operator==(const CellFmtData& value) const noexcept {
    return mType == VARIANT_CELLFMT && mValue != 0 && *VariantAccess::Cell(*this) == value;
}

bool Variant::operator==(const Binary& value) const {
    return mType == VARIANT_BINARY && mValue != 0 && *VariantAccess::Block(*this) == value;
}

bool Variant::IsTypeComparable(const Variant& other) const noexcept {
    const int tag = mType;
    const int otherTag = other.mType;
    if (tag == VARIANT_EMPTY || otherTag == VARIANT_EMPTY) {
        return true;
    }
    if (IsNumericTag(tag)) {
        return IsNumericTag(otherTag);
    }
    if (IsDateTag(tag)) {
        return IsDateTag(otherTag);
    }
    switch (tag) {
        case VARIANT_WSTRING:
        case VARIANT_BINARY:
        case VARIANT_BIGDECIMAL:
        case VARIANT_CELLFMT:
            return tag == otherTag;
        default:
            return false;
    }
}

bool Variant::operator<(const Variant& other) {
    const int tag = mType;
    const int otherTag = other.mType;
    if (tag == VARIANT_EMPTY) {
        return otherTag != VARIANT_EMPTY;
    }
    if (otherTag == VARIANT_EMPTY) {
        return false;
    }
    if (!IsTypeComparable(other)) {
        throw internal::VariantError(L"Variant types incomparable");
    }
    if (IsNumericTag(tag)) {
        const Scalar mine = VariantAccess::AsScalar(*this);
        const Scalar theirs = VariantAccess::AsScalar(other);
        // From a long long the right side is read as a long long, floating values
        // truncated: 1LL < 1.5 is false. Every other left side compares in double, where
        // a NaN makes the answer false.
        if (tag == VARIANT_INT64) {
            return internal::Int64(mine) < internal::Int64(theirs);
        }
        return internal::ToDouble(mine) < internal::ToDouble(theirs);
    }
    // A null slot (after TakeValue) orders before an object of the same kind.
    if (mValue == 0 || other.mValue == 0) {
        return mValue == 0 && other.mValue != 0;
    }
    switch (tag) {
        case VARIANT_WSTRING: {
            const WideText& a = *VariantAccess::Text(*this);
            const WideText& b = *VariantAccess::Text(other);
            // The characters compared as wchar_t numbers over the shorter length, then the
            // shorter text first: the string's own compare.
            return a.compare(b) < 0;
        }
        case VARIANT_BINARY:
            return *VariantAccess::Block(*this) < *VariantAccess::Block(other);
        case VARIANT_DATE:
        case VARIANT_TIME:
        case VARIANT_DATETIME:
            return *VariantAccess::Date(*this) < *VariantAccess::Date(other);
        case VARIANT_BIGDECIMAL:
            return VariantAccess::Decimal(*this)->CompareTo(*VariantAccess::Decimal(other)) == -1;
        case VARIANT_CELLFMT:
            return *VariantAccess::Cell(*this) < *VariantAccess::Cell(other);
        default:
            return false;
    }
}

}  // namespace ZelvorDataType
