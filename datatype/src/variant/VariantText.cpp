// The text forms of Variant values: wide and narrow, owned or copied into a caller's
// array, and their lengths.

#include <ZelvorDataType/Variant.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>

#include "variant/VariantAccess.h"

namespace ZelvorDataType {

using internal::ReadSlot;
using internal::VariantAccess;
using ZelvorBase::ReturnString;
using ZelvorBase::ReturnWString;

namespace {

// Numbers are formed in a local array, so that a number's text costs no heap work
// besides the owned result. Texts are cut to 255 characters.
constexpr std::size_t kNumberChars = 256;

// The formats are used as they stand, so the decimal separator is the one of the
// process's numeric locale.
template <class T>
void Emit(char (&out)[kNumberChars], const char* narrow, const wchar_t* /*wide*/, T value) {
    std::snprintf(out, kNumberChars, narrow, value);
}

// A wide text that doesn't fit (a double near 1e300 under "%.15f" has over 300
// characters) makes swprintf fail without a defined text; it then gets the narrow
// text, cut at 255 bytes, widened, so that the wide and narrow forms still agree.
template <class T>
void Emit(wchar_t (&out)[kNumberChars], const char* narrow, const wchar_t* wide, T value) {
    if (std::swprintf(out, kNumberChars, wide, value) >= 0) {
        return;
    }
    char narrowText[kNumberChars];
    std::snprintf(narrowText, kNumberChars, narrow, value);
    const ReturnWString widened = ZelvorBase::MultiByteToWideChar(narrowText, false);
    const std::size_t length = std::min(widened.GetLength(), kNumberChars - 1);
    std::wmemcpy(out, widened.c_str(), length);
    out[length] = L'\0';
}

// Writes the text of a numeric tag into `out` and returns true; false for any other tag.
// `general` asks for "%.15g" in place of "%.15f".
template <class Char>
bool FormatNumber(const Variant& v, bool general, Char (&out)[kNumberChars]) {
    const std::uint64_t slot = VariantAccess::AsScalar(v).slot;
    switch (v.GetVarType()) {
        case VARIANT_INT:
        case VARIANT_UNSIGNED:
            // An unsigned int prints its 32 bits as a signed number: 4294967295 gives -1.
            Emit(out, "%d", L"%d", ReadSlot<int>(slot));
            return true;
        case VARIANT_SHORT:
            Emit(out, "%d", L"%d", static_cast<int>(ReadSlot<short>(slot)));
            return true;
        case VARIANT_LONG:
            // The 32 bits zero-extended: the only place where this tag reads unsigned.
            Emit(out, "%ld", L"%ld", static_cast<long>(ReadSlot<std::uint32_t>(slot)));
            return true;
        case VARIANT_INT64:
            Emit(out, "%lld", L"%lld", ReadSlot<long long>(slot));
            return true;
        case VARIANT_DOUBLE:
        case VARIANT_FLOAT: {
            const double value = v.GetVarType() == VARIANT_DOUBLE
                                     ? ReadSlot<double>(slot)
                                     : static_cast<double>(ReadSlot<float>(slot));
            if (general) {
                Emit(out, "%.15g", L"%.15g", value);
            } else {
                Emit(out, "%.15f", L"%.15f", value);
            }
            return true;
        }
        default:
            return false;
    }
}

// The wide text of the array and length forms, which give a byte block and a cell
// format the empty text. A date or BigDecimal text is held here until the copy is done.
class WideForm {
  public:
    explicit WideForm(const Variant& v) {
        mNumber[0] = L'\0';
        if (FormatNumber(v, false, mNumber)) {
            mText = mNumber;
            return;
        }
        switch (v.GetVarType()) {
            case VARIANT_WSTRING:
                if (const WideText* text = VariantAccess::Text(v)) {
                    mText = text->c_str();
                }
                break;
            case VARIANT_DATE:
            case VARIANT_TIME:
            case VARIANT_DATETIME:
                if (const DateTime* date = VariantAccess::Date(v)) {
                    mOwned = date->ToWString();
                    mText = mOwned.c_str();
                }
                break;
            case VARIANT_BIGDECIMAL:
                if (const BigDecimal* decimal = VariantAccess::Decimal(v)) {
                    mOwned = decimal->ToWString();
                    mText = mOwned.c_str();
                }
                break;
            default:
                break;
        }
    }
    WideForm(const WideForm&) = delete;
    WideForm& operator=(const WideForm&) = delete;

    const wchar_t* c_str() const noexcept { return mText; }

  private:
    wchar_t mNumber[kNumberChars];
    ReturnWString mOwned;
    const wchar_t* mText = L"";
};

// The narrow counterpart. `vb` selects "%.15g" and the date alone.
class NarrowForm {
  public:
    NarrowForm(const Variant& v, bool vb) {
        mNumber[0] = '\0';
        if (FormatNumber(v, vb, mNumber)) {
            mText = mNumber;
            return;
        }
        switch (v.GetVarType()) {
            case VARIANT_WSTRING:
                if (const WideText* text = VariantAccess::Text(v)) {
                    mOwned = ZelvorBase::WideCharToUTF8(text->c_str(), false);
                    mText = mOwned.c_str();
                }
                break;
            case VARIANT_DATE:
            case VARIANT_TIME:
            case VARIANT_DATETIME:
                if (const DateTime* date = VariantAccess::Date(v)) {
                    mOwned = vb ? date->ToDateString() : date->ToString();
                    mText = mOwned.c_str();
                }
                break;
            case VARIANT_BIGDECIMAL:
                if (const BigDecimal* decimal = VariantAccess::Decimal(v)) {
                    mOwned = decimal->ToString();
                    mText = mOwned.c_str();
                }
                break;
            default:
                break;
        }
    }
    NarrowForm(const NarrowForm&) = delete;
    NarrowForm& operator=(const NarrowForm&) = delete;

    const char* c_str() const noexcept { return mText; }

  private:
    char mNumber[kNumberChars];
    ReturnString mOwned;
    const char* mText = "";
};

}  // namespace

ReturnWString Variant::ToWString() const {
    if (mType == VARIANT_CELLFMT) {
        // The one form that shows a cell format's number.
        const CellFmtData* cell = VariantAccess::Cell(*this);
        if (cell == nullptr) {
            return ReturnWString();
        }
        wchar_t number[kNumberChars];
        Emit(number, "%f", L"%f", cell->GetValue());
        return ReturnWString(number);
    }
    const WideForm text(*this);
    return ReturnWString(text.c_str());
}

void Variant::ToWString(wchar_t* buffer, unsigned int length) const {
    if (buffer == nullptr || length == 0) {
        return;
    }
    const WideForm text(*this);
    std::wcsncpy(buffer, text.c_str(), length);
    buffer[length - 1] = L'\0';
}

unsigned int Variant::GetWStringLength() const {
    // A date or BigDecimal is measured in its narrow text: plain ASCII, so the count of
    // characters is the same.
    if (internal::IsDateTag(mType) || mType == VARIANT_BIGDECIMAL) {
        return GetStringLength();
    }
    const WideForm text(*this);
    return static_cast<unsigned int>(std::wcslen(text.c_str()));
}

ReturnString Variant::ToString() const {
    const NarrowForm text(*this, false);
    return ReturnString(text.c_str());
}

void Variant::ToString(char* buffer, unsigned int length) const {
    if (buffer == nullptr || length == 0) {
        return;
    }
    const NarrowForm text(*this, false);
    std::strncpy(buffer, text.c_str(), length);
    buffer[length - 1] = '\0';
}

unsigned int Variant::GetStringLength() const {
    const NarrowForm text(*this, false);
    return static_cast<unsigned int>(std::strlen(text.c_str()));
}

ReturnString Variant::ToStringVBBehavior() const {
    const NarrowForm text(*this, true);
    return ReturnString(text.c_str());
}

const WideText* Variant::GetRawWString() const noexcept {
    return mType == VARIANT_WSTRING ? VariantAccess::Text(*this) : nullptr;
}

}  // namespace ZelvorDataType
