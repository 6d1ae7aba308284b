// BigDecimal: states, construction, the grammar of decimal text, assignment and swap.
#include <ZelvorDataType/BigDecimal.h>

#include <charconv>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <system_error>
#include <type_traits>
#include <utility>

namespace ZelvorDataType {

// Scale, then the Buffer and the digits: three fields and nothing else.
static_assert(std::is_standard_layout_v<BigDecimal> && sizeof(BigDecimal) == 24);

namespace {

using Exception = ZelvorBase::ExceptionImpl<BigDecimalException>;

// The exponent's digits [begin, end) as a magnitude; false when there are none or
// when they exceed what an int holds (such an exponent has no meaning we could give it).
bool ReadExponent(const char* begin, const char* end, int& value) {
    const auto [last, error] = std::from_chars(begin, end, value);
    return begin != end && error == std::errc() && last == end;
}

}  // namespace

BigDecimal::BigDecimal(ZelvorBase::Buffer* buffer) noexcept : mBuffer(buffer) {}

BigDecimal::BigDecimal(const char* text, ZelvorBase::Buffer* buffer) : mBuffer(buffer) {
    _StrToBigDecimal(text);
}

BigDecimal::BigDecimal(const wchar_t* text, ZelvorBase::Buffer* buffer) : mBuffer(buffer) {
    const ZelvorBase::ReturnString narrow = ZelvorBase::WideCharToMultiByte(text, false);
    _StrToBigDecimal(narrow.c_str());
}

BigDecimal::BigDecimal(int value, ZelvorBase::Buffer* buffer) : mBuffer(buffer) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    _StrToBigDecimal(text);
}

BigDecimal::BigDecimal(double value, ZelvorBase::Buffer* buffer) : mBuffer(buffer) {
    // "%f" of the largest finite double is 317 characters.
    char text[320];
    // The process's numeric locale decides the separator that "%f" writes; 1.0 shows it
    // at index 2 of "+1.0".
    std::snprintf(text, sizeof text, "%+1.1f", 1.0);
    const char separator = text[2];
    std::snprintf(text, sizeof text, "%f", value);
    if (separator != '.' && (separator < '0' || separator > '9')) {
        if (char* at = std::strchr(text, separator); at != nullptr) {
            *at = '.';
        }
    }
    _StrToBigDecimal(text);
}

BigDecimal::BigDecimal(const BigDecimal& other, ZelvorBase::Buffer* buffer) : mBuffer(buffer) {
    *this = other;
}

BigDecimal::~BigDecimal() {
    if (mBuffer == nullptr) {
        delete mValue;
    }
}

BigDecimal& BigDecimal::operator=(const BigDecimal& other) {
    if (!IsEmpty()) {
        throw Exception(L"Cannot change BigDecimal value after it is initialized");
    }
    if (this == &other) {
        return *this;  // an empty value assigned to itself stays empty
    }
    if (!other.IsInvalid()) {
        mValue = new (mBuffer) BigInt(*other.mValue, mBuffer);
    }
    mScale = other.mScale;
    return *this;
}

BigDecimal* BigDecimal::CreateBigDecimal(void* bigInt, int scale, ZelvorBase::Buffer* buffer) {
    BigInt* value = static_cast<BigInt*>(bigInt);
    BigDecimal* result = nullptr;
    try {
        result = new (buffer) BigDecimal(buffer);
    } catch (...) {
        // The digits were handed over; with nowhere to put them, a heap value goes.
        if (buffer == nullptr) {
            delete value;
        }
        throw;
    }
    result->mScale = scale;
    result->mValue = value;
    return result;
}

const char* BigDecimal::_FindChr(const char* begin, const char* end, char c) noexcept {
    if (begin == nullptr || end <= begin) {
        return nullptr;
    }
    return static_cast<const char*>(std::memchr(begin, c, static_cast<size_t>(end - begin)));
}

bool BigDecimal::_CheckDigits(const char* begin, const char* end, bool& allZero,
                              char allowed) noexcept {
    allZero = true;
    if (begin == nullptr || end == nullptr || begin > end) {
        return true;
    }
    bool allowedSeen = false;
    for (const char* p = begin; p <= end; ++p) {
        const char c = *p;
        if (c >= '1' && c <= '9') {
            allZero = false;
        } else if (c != '0') {
            if (allowed == '\0' || c != allowed || allowedSeen) {
                return false;
            }
            allowedSeen = true;
        }
    }
    return true;
}

void BigDecimal::_StrToBigDecimal(const char* text) {
    if (!IsEmpty()) {
        throw Exception(L"Cannot change BigDecimal value after it is initialized");
    }
    mScale = ScaleInvalid;  // every early return below leaves the value invalid
    if (text == nullptr || *text == '\0') {
        return;
    }
    int sign = 1;
    const char* p = text;
    if (*p == '-') {
        sign = -1;
        ++p;
    } else if (*p == '+') {
        ++p;
        if (*p == '-') {
            return;
        }
    }
    const size_t rest = std::strlen(p);
    if (rest == 0 || rest >= static_cast<size_t>(INT_MAX)) {
        return;
    }
    const char* end = p + rest;

    // The exponent letter is looked for in all but the last character, lower case
    // first; a letter in the last place stays in the mantissa and fails there.
    long long exponent = 0;
    const char* mantissaEnd = end;
    if (rest > 1) {
        const char* letter = _FindChr(p, end - 1, 'e');
        if (letter == nullptr) {
            letter = _FindChr(p, end - 1, 'E');
        }
        if (letter != nullptr) {
            if (letter == p) {
                return;
            }
            const char* digits = letter + 1;
            bool negative = false;
            if (*digits == '+') {
                ++digits;
                if (*digits == '\0' || *digits == '-') {
                    return;
                }
            } else if (*digits == '-') {
                negative = true;
                ++digits;
            }
            bool unused = false;
            int magnitude = 0;
            if (!_CheckDigits(digits, end - 1, unused, '\0') ||
                !ReadExponent(digits, end, magnitude)) {
                return;
            }
            exponent = negative ? -static_cast<long long>(magnitude) : magnitude;
            mantissaEnd = letter;
        }
    }

    bool allZero = false;
    if (!_CheckDigits(p, mantissaEnd - 1, allZero, '.')) {
        return;
    }
    const char* point = _FindChr(p, mantissaEnd, '.');
    const int mantissaLength = static_cast<int>(mantissaEnd - p);
    const int digitCount = mantissaLength - (point != nullptr ? 1 : 0);
    const bool keepLeadingZeros = mBuffer == nullptr;

    if (allZero) {
        // Zero, a lone point included: scale 0 and no sign, whatever the exponent said.
        mValue = new (mBuffer) BigInt(p, digitCount, 0, 0, keepLeadingZeros, mBuffer);
        mScale = 0;
        return;
    }
    const long long places = point != nullptr ? mantissaEnd - point - 1 : 0;
    const long long scale = places - exponent;
    if (scale > INT_MAX) {
        return;
    }
    // A negative scale becomes zeros appended to the digits: the scale is never below 0.
    const long long padZeros = scale < 0 ? -scale : 0;
    if (digitCount + padZeros >= INT_MAX) {
        return;  // more digits than the 32-bit count holds
    }
    mValue = new (mBuffer)
        BigInt(p, digitCount, sign, static_cast<int>(padZeros), keepLeadingZeros, mBuffer);
    mScale = scale < 0 ? 0 : static_cast<int>(scale);
}

void BigDecimal::swap(BigDecimal& other) noexcept {
    std::swap(mScale, other.mScale);
    std::swap(mBuffer, other.mBuffer);
    std::swap(mValue, other.mValue);
}

void swap(BigDecimal& a, BigDecimal& b) noexcept {
    a.swap(b);
}

void swap(BigDecimal* a, BigDecimal* b) noexcept {
    if (a != b && a != nullptr && b != nullptr) {
        a->swap(*b);
    }
}

}  // namespace ZelvorDataType
