// BigInt: construction, copies and the comparison of magnitudes.
#include <ZelvorDataType/BigInt.h>

#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "decimal/DigitWords.h"

namespace ZelvorDataType {

// Sign, length and leading-zero count, then the two pointers: the record keeps its
// order and its size on the 64-bit targets we build for.
static_assert(std::is_standard_layout_v<BigInt> && sizeof(BigInt) == 32);

namespace {

// `count` + 1 bytes for digits and their terminator, from the arena or the heap.
char* AllocateDigits(int count, ZelvorBase::Buffer* buffer) {
    const size_t bytes = static_cast<size_t>(count) + 1;
    if (buffer != nullptr) {
        return new (buffer) char[bytes];
    }
    return new char[bytes];
}

bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

}  // namespace

BigInt::BigInt() noexcept = default;

BigInt::BigInt(const char* digits, int length, int sign, int padZeros, bool keepLeadingZeros,
               ZelvorBase::Buffer* buffer)
    : mSign(sign), mBuffer(buffer) {
    if (digits == nullptr) {
        digits = "";
    }
    if (length < 0) {
        length = 0;
    }
    if (padZeros < 0 || sign == 0) {
        padZeros = 0;
    }
    // The scan for zeros in front stops at the point, so that the zeros behind it stay
    // digits (0.05 keeps "05"); it never runs past the digits the caller counted.
    int zeros = 0;
    while (zeros < length && digits[zeros] == '0') {
        ++zeros;
    }
    const char* source = digits + zeros;
    const long long total = static_cast<long long>(length) + padZeros - zeros;
    if (total >= INT_MAX) {
        throw std::length_error("BigInt: more digits than a 32-bit count holds");
    }
    mLength = sign == 0 ? 0 : static_cast<int>(total);
    mLeadingZeros = keepLeadingZeros ? zeros : 0;
    mDigits = AllocateDigits(mLength, buffer);
    mDigits[mLength] = '\0';

    // Copy runs of characters between points, never past the text's terminator, then
    // turn anything that is not a digit into '0'.
    const size_t copied = static_cast<size_t>(mLength - padZeros);
    size_t stored = 0;
    while (stored < copied) {
        const size_t run = strnlen(source, copied - stored);
        const char* point = static_cast<const char*>(std::memchr(source, '.', run));
        const size_t take = point != nullptr ? static_cast<size_t>(point - source) : run;
        std::memcpy(mDigits + stored, source, take);
        stored += take;
        source += take;
        if (point == nullptr) {
            break;
        }
        ++source;
    }
    for (size_t i = 0; i < stored; ++i) {
        if (!IsDigit(mDigits[i])) {
            mDigits[i] = '0';
        }
    }
    // A text shorter than announced, and the requested padding, both end in zeros.
    std::memset(mDigits + stored, '0', static_cast<size_t>(mLength) - stored);
}

BigInt::BigInt(const BigInt& other, ZelvorBase::Buffer* buffer)
    : mSign(other.mSign),
      mLength(other.mLength),
      mLeadingZeros(other.mLeadingZeros),
      mDigits(AllocateDigits(other.mLength, buffer)),
      mBuffer(buffer) {
    if (other.mDigits != nullptr) {
        std::memcpy(mDigits, other.mDigits, static_cast<size_t>(mLength) + 1);
    } else {
        mDigits[0] = '\0';  // a zero made by CreateZero has no array; mLength is 0
    }
}

BigInt::~BigInt() {
    if (mBuffer == nullptr) {
        delete[] mDigits;
    }
}

void BigInt::GetRawForm(const char*& digits, int& sign, int& length,
                        int& leadingZeros) const noexcept {
    digits = mDigits;
    sign = mSign;
    length = mLength;
    leadingZeros = mLeadingZeros;
}

int BigInt::CompareABS(const BigInt& other, int shift) const noexcept {
    // Level digits that both start with a significant one, the common case: the longer
    // is the greater, equal lengths compare as text. The general path below gives the
    // same answer after its longer way.
    if (shift == 0 && mLength > 0 && other.mLength > 0 && mDigits[0] != '0' &&
        other.mDigits[0] != '0') {
        if (mLength != other.mLength) {
            return mLength > other.mLength ? 1 : -1;
        }
        const int c = std::memcmp(mDigits, other.mDigits, static_cast<size_t>(mLength));
        return c > 0 ? 1 : (c < 0 ? -1 : 0);
    }
    const BigInt* a = this;
    const BigInt* b = &other;
    long long s = shift;  // 64 bits: negating the lowest int must not overflow
    int flip = 1;
    if (s < 0) {
        std::swap(a, b);
        s = -s;
        flip = -1;
    }
    const char* da = a->mDigits != nullptr ? a->mDigits : "";
    const char* db = b->mDigits != nullptr ? b->mDigits : "";
    const int64_t za = internal::CountLeadingZeros(da, a->mLength);
    const int64_t zb = internal::CountLeadingZeros(db, b->mLength);
    da += za;
    db += zb;
    const int64_t la = a->mLength - za;
    const int64_t lb = b->mLength - zb;
    // Without significant digits a magnitude is zero, whatever the alignment: a quotient
    // truncated to nothing is below 0.005, not above it.
    if (la == 0 || lb == 0) {
        return la == lb ? 0 : (la > 0 ? flip : -flip);
    }
    // K digits of A stand level with the lb digits of B; the other s digits of A face
    // the zeros that B's alignment implies. Both start with a non-zero digit, so the
    // longer one is the greater.
    const int64_t k = la - s;
    if (k != lb) {
        return k > lb ? flip : -flip;
    }
    const int c = std::memcmp(da, db, static_cast<size_t>(k));
    if (c != 0) {
        return c > 0 ? flip : -flip;
    }
    for (int64_t i = k; i < la; ++i) {
        if (da[i] != '0') {
            return flip;
        }
    }
    return 0;
}

BigInt* BigInt::Clone(ZelvorBase::Buffer* buffer, int /*unused*/) const {
    return new (buffer) BigInt(*this, buffer);
}

BigInt* BigInt::CreateZero(ZelvorBase::Buffer* buffer) {
    return new (buffer) BigInt();
}

BigInt* BigInt::FromDigits(const char* digits, int length, int sign, ZelvorBase::Buffer* buffer) {
    const int64_t zeros = internal::CountLeadingZeros(digits, length);
    const int count = sign == 0 ? 0 : length - static_cast<int>(zeros);
    std::unique_ptr<char[]> owned;
    char* copy = nullptr;
    if (buffer != nullptr) {
        copy = AllocateDigits(count, buffer);
    } else {
        owned.reset(AllocateDigits(count, nullptr));
        copy = owned.get();
    }
    std::memcpy(copy, digits + zeros, static_cast<size_t>(count));
    copy[count] = '\0';
    BigInt* result = new (buffer) BigInt();
    result->mSign = sign;
    result->mLength = count;
    result->mBuffer = buffer;
    result->mDigits = buffer != nullptr ? copy : owned.release();
    return result;
}

BigInt* BigInt::ClonePadded(const BigInt& source, int pad, int sign, ZelvorBase::Buffer* buffer) {
    if (pad <= 0 || source.mSign == 0) {
        // A zero stays without digits whatever the scale it is wanted at.
        BigInt* copy = source.Clone(buffer);
        copy->mSign = source.mSign == 0 ? 0 : sign;
        return copy;
    }
    const long long total = static_cast<long long>(source.mLength) + pad;
    if (total >= INT_MAX) {
        throw std::length_error("BigInt: more digits than a 32-bit count holds");
    }
    const int length = static_cast<int>(total);
    // The digits are kept as they stand, zeros in front included, like any clone.
    std::unique_ptr<char[]> owned;
    char* digits = nullptr;
    if (buffer != nullptr) {
        digits = AllocateDigits(length, buffer);
    } else {
        owned.reset(AllocateDigits(length, nullptr));
        digits = owned.get();
    }
    if (source.mLength > 0) {
        std::memcpy(digits, source.mDigits, static_cast<size_t>(source.mLength));
    }
    std::memset(digits + source.mLength, '0', static_cast<size_t>(pad));
    digits[length] = '\0';
    BigInt* copy = new (buffer) BigInt();
    copy->mSign = sign;
    copy->mLength = length;
    copy->mLeadingZeros = source.mLeadingZeros;
    copy->mBuffer = buffer;
    copy->mDigits = buffer != nullptr ? digits : owned.release();
    return copy;
}

}  // namespace ZelvorDataType
