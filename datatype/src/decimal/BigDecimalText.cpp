// BigDecimal: plain decimal text, the locale's decimal separator, and the digits on
// either side of the point.
#include <ZelvorDataType/BigDecimal.h>

#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>
#include <unicode/utypes.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "decimal/DigitWords.h"

namespace ZelvorDataType {

namespace {

using Exception = ZelvorBase::ExceptionImpl<BigDecimalException>;

// The digits of a non-zero value as the text shows them: `front` zeros put in front of
// the stored digits when these don't reach the point, then the digits; `scale` of them
// stand behind the point. `leadingZeros` are the kept zeros of the text, written before
// everything.
struct TextForm {
    bool negative = false;
    int64_t leadingZeros = 0;
    int64_t front = 0;
    const char* digits = "";
    int64_t length = 0;
    int64_t scale = 0;

    int64_t Padded() const { return front + length; }
    char PaddedDigit(int64_t i) const { return i < front ? '0' : digits[i - front]; }
    // The digits before the point, from the padded digits.
    int64_t IntegerDigits() const { return Padded() - scale; }
};

// The digits of a big integer as it holds them; `digits` may be null for zero.
struct RawForm {
    const char* digits = nullptr;
    int sign = 0;
    int length = 0;
    int leadingZeros = 0;
};

RawForm ReadRawForm(const BigInt& value) {
    RawForm raw;
    value.GetRawForm(raw.digits, raw.sign, raw.length, raw.leadingZeros);
    return raw;
}

TextForm MakeForm(const BigInt& value, int scale) {
    const auto [digits, sign, length, leadingZeros] = ReadRawForm(value);
    TextForm form;
    form.negative = sign < 0;
    form.leadingZeros = leadingZeros;
    form.digits = digits != nullptr ? digits : "";
    form.length = length;
    form.scale = scale;
    if (length < scale) {
        // 5 at scale 2 is shown as 0.05: the kept zeros give way to the padding.
        form.leadingZeros = 0;
        form.front = scale + 1 - length;
    }
    return form;
}

// Copies `count` padded digits from index `from` to `out`.
char* CopyPadded(const TextForm& form, int64_t from, int64_t count, char* out) {
    const int64_t zeros = std::max<int64_t>(0, std::min(form.front - from, count));
    std::memset(out, '0', static_cast<size_t>(zeros));
    out += zeros;
    const int64_t rest = count - zeros;
    if (rest > 0) {
        std::memcpy(out, form.digits + (from + zeros - form.front), static_cast<size_t>(rest));
        out += rest;
    }
    return out;
}

// The sign, the kept zeros and the digits before the point; at least one digit.
char* WriteIntegerPart(const TextForm& form, char* out) {
    if (form.negative) {
        *out++ = '-';
    }
    std::memset(out, '0', static_cast<size_t>(form.leadingZeros));
    out += form.leadingZeros;
    const int64_t k = form.IntegerDigits();
    if (k != 0 || form.leadingZeros != 0) {
        return CopyPadded(form, 0, k, out);
    }
    *out++ = '0';
    return out;
}

char* WriteFraction(const TextForm& form, char* out) {
    return CopyPadded(form, form.IntegerDigits(), form.scale, out);
}

// Room for the integer part and its terminator.
int64_t IntegerBound(const TextForm& form) {
    return 3 + form.leadingZeros + form.Padded();
}

// The decimal separator of a locale, looked up afresh in ICU's data.
wchar_t LocaleDecimalSeparator(unsigned int lcid) {
    char mapped[ULOC_FULLNAME_CAPACITY] = "";
    const char* name = mapped;
    if (lcid == 0 || lcid == 0x400) {
        name = uloc_getDefault();
    } else {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length =
            uloc_getLocaleForLCID(lcid, mapped, static_cast<int32_t>(sizeof mapped), &status);
        if (U_FAILURE(status) || length <= 0 || length >= static_cast<int32_t>(sizeof mapped)) {
            // An identifier ICU does not know gets the root locale, whose separator is
            // the neutral point.
            mapped[0] = '\0';
        }
    }
    const icu::Locale locale(name, nullptr, nullptr, nullptr);
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(locale, status);
    if (U_FAILURE(status)) {
        throw Exception(
            L"ZelvorFormat::GetLocaleDecimalSeparator: Failed to create DecimalFormatSymbols");
    }
    icu::UnicodeString symbol =
        symbols.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    const char16_t* units = symbol.getTerminatedBuffer();
    if (units == nullptr) {
        throw Exception(L"BigDecimal::toWString(LCID): Failed to look up DecimalSeparatorSymbol");
    }
    // The converter takes 16-bit units as unsigned short; copy rather than alias.
    std::vector<unsigned short> copy;
    for (const char16_t* u = units; *u != 0; ++u) {
        copy.push_back(static_cast<unsigned short>(*u));
    }
    copy.push_back(0);
    const ZelvorBase::ReturnWString wide = ZelvorBase::UTF16ToWideChar(copy.data(), false);
    // An empty symbol would end the text early; no locale has one, but keep the point.
    return wide.GetLength() > 0 ? wide.c_str()[0] : L'.';
}

}  // namespace

ZelvorBase::ReturnString BigDecimal::ToString() const {
    CheckValid();
    if (mValue->Signum() == 0) {
        return ZelvorBase::ReturnString("0");
    }
    const TextForm form = MakeForm(*mValue, mScale);
    internal::Scratch<char, 352> text(IntegerBound(form) + 1 + form.scale);
    char* out = WriteIntegerPart(form, text.Get());
    if (form.scale > 0) {
        *out++ = '.';
        out = WriteFraction(form, out);
    }
    *out = '\0';
    return ZelvorBase::ReturnString(text.Get());
}

ZelvorBase::ReturnWString BigDecimal::ToWString() const {
    return ZelvorBase::MultiByteToWideChar(ToString().c_str(), false);
}

ZelvorBase::ReturnWString BigDecimal::ToWString(unsigned int lcid) const {
    CheckValid();
    const wchar_t separator = LocaleDecimalSeparator(lcid);
    if (mValue->Signum() == 0) {
        return ZelvorBase::ReturnWString(L"0");
    }
    const TextForm form = MakeForm(*mValue, mScale);
    std::string narrow(static_cast<size_t>(IntegerBound(form) + form.scale), '\0');
    char* end = WriteIntegerPart(form, narrow.data());
    *end = '\0';
    std::wstring wide = ZelvorBase::MultiByteToWideChar(narrow.c_str(), false).c_str();
    if (form.scale > 0) {
        end = WriteFraction(form, narrow.data());
        *end = '\0';
        wide += separator;
        wide += ZelvorBase::MultiByteToWideChar(narrow.c_str(), false).c_str();
    }
    return ZelvorBase::ReturnWString(wide.c_str());
}

ZelvorBase::ReturnString BigDecimal::GetIntegerDigits() const {
    CheckValid();
    const auto [digits, sign, length, leadingZeros] = ReadRawForm(*mValue);
    if (sign == 0 || static_cast<int64_t>(length) + leadingZeros - mScale < 1) {
        return ZelvorBase::ReturnString("0");
    }
    std::string text(static_cast<size_t>(leadingZeros), '0');
    if (length > mScale) {
        text.append(digits, static_cast<size_t>(length - mScale));
    }
    return ZelvorBase::ReturnString(text.c_str());
}

ZelvorBase::ReturnString BigDecimal::GetFractionDigits() const {
    CheckValid();
    auto [digits, sign, length, leadingZeros] = ReadRawForm(*mValue);
    if (sign == 0) {
        return ZelvorBase::ReturnString("0");
    }
    if (digits == nullptr) {
        digits = "";
    }
    if (mScale <= length) {
        return ZelvorBase::ReturnString(digits + (length - mScale));
    }
    std::string text(static_cast<size_t>(mScale - length), '0');
    text.append(digits, static_cast<size_t>(length));
    return ZelvorBase::ReturnString(text.c_str());
}

ZelvorBase::ReturnWString BigDecimal::MantissaToWString() const {
    CheckValid();
    return ZelvorBase::ReturnWString(L"");
}

}  // namespace ZelvorDataType
