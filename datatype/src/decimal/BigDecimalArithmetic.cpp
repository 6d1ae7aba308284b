// BigDecimal: comparison, the four operations, division to a scale, and the measures.
#include <ZelvorDataType/BigDecimal.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <stdexcept>

namespace ZelvorDataType {

namespace {

using Exception = ZelvorBase::ExceptionImpl<BigDecimalException>;

enum Operation { kAdd = 0, kSubtract = 1, kMultiply = 2, kDivide = 3 };

// Zero as a divisor: no sign, or no digit but zeros (a quotient truncated to nothing
// keeps its sign but is still nothing to divide by).
bool IsZeroDivisor(const BigInt& value) {
    const char* digits = nullptr;
    int sign = 0;
    int length = 0;
    int leadingZeros = 0;
    value.GetRawForm(digits, sign, length, leadingZeros);
    if (sign == 0 || digits == nullptr) {
        return true;
    }
    return std::all_of(digits, digits + length, [](char c) { return c == '0'; });
}

}  // namespace

BigDecimalHandle::BigDecimalHandle(BigDecimal* value, bool onHeap) noexcept
    : mValue(value), mOnHeap(onHeap) {}

BigDecimalHandle::BigDecimalHandle(BigDecimalHandle&& other) noexcept
    : mValue(other.mValue), mOnHeap(other.mOnHeap) {
    other.mValue = nullptr;
}

BigDecimalHandle& BigDecimalHandle::operator=(BigDecimalHandle&& other) noexcept {
    if (this != &other) {
        if (mOnHeap) {
            delete mValue;
        }
        mValue = other.mValue;
        mOnHeap = other.mOnHeap;
        other.mValue = nullptr;
    }
    return *this;
}

BigDecimalHandle::~BigDecimalHandle() {
    if (mOnHeap) {
        delete mValue;
    }
}

BigDecimal* BigDecimalHandle::Release() noexcept {
    BigDecimal* value = mValue;
    mValue = nullptr;
    return value;
}

void BigDecimal::ThrowInvalid() {
    throw Exception(L"Invalid BigDecimal");
}

int BigDecimal::CompareTo(const BigDecimal& other) const {
    CheckValid();
    other.CheckValid();
    const int s = mValue->Signum();
    const int t = other.mValue->Signum();
    if (s != t && s != 0 && t != 0) {
        return s > t ? 1 : -1;
    }
    if (s == 0) {
        return -t;
    }
    if (t == 0) {
        return s;
    }
    const int c = mValue->CompareABS(*other.mValue, mScale - other.mScale);
    return s < 0 ? -c : c;
}

BigDecimalHandle BigDecimal::Combine(int op, const BigDecimal& other, int resultScale,
                                     int divisionScale) const {
    const int shift = op == kAdd || op == kSubtract ? mScale - other.mScale : 0;
    BigInt* digits = BigInt::Calculate(op, mValue, other.mValue, shift, mBuffer, mScale,
                                       other.mScale, divisionScale);
    return BigDecimalHandle(CreateBigDecimal(digits, resultScale, mBuffer), mBuffer == nullptr);
}

BigDecimalHandle BigDecimal::operator+(const BigDecimal& other) const {
    CheckValid();
    other.CheckValid();
    return Combine(kAdd, other, std::max(mScale, other.mScale), 0);
}

BigDecimalHandle BigDecimal::operator-(const BigDecimal& other) const {
    CheckValid();
    other.CheckValid();
    return Combine(kSubtract, other, std::max(mScale, other.mScale), 0);
}

BigDecimalHandle BigDecimal::operator*(const BigDecimal& other) const {
    CheckValid();
    other.CheckValid();
    const long long scale = static_cast<long long>(mScale) + other.mScale;
    if (scale > INT_MAX) {
        throw std::length_error("BigDecimal: product scale beyond a 32-bit count");
    }
    return Combine(kMultiply, other, static_cast<int>(scale), 0);
}

BigDecimalHandle BigDecimal::operator/(const BigDecimal& other) const {
    return Divide(other, -1);
}

BigDecimalHandle BigDecimal::Divide(const BigDecimal& other, int scale) const {
    CheckValid();
    other.CheckValid();
    if (scale < -1) {
        throw Exception(L"Invalid scale request");
    }
    if (IsZeroDivisor(*other.mValue)) {
        throw Exception(L"Divide by Zero");
    }
    const int resultScale = scale == -1 ? mScale : scale;
    return Combine(kDivide, other, resultScale, resultScale);
}

int BigDecimal::Signum() const {
    CheckValid();
    return mValue->Signum();
}

int BigDecimal::Precision() const {
    CheckValid();
    return mValue->Precision();
}

}  // namespace ZelvorDataType
