// BigInt: the signed operations. Calculate settles signs and the order of the operands;
// CalculateBuf sizes a work area, runs one digit routine and builds the result from it.
#include <ZelvorDataType/BigInt.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>

#include "decimal/DigitWords.h"

namespace ZelvorDataType {

namespace {

enum Operation { kAdd = 0, kSubtract = 1, kMultiply = 2, kDivide = 3 };

// Work areas below this size sit on the stack: results of up to 255 digits.
constexpr int64_t kLocalArea = 256;

[[noreturn]] void TooLong() {
    throw std::length_error("BigInt: more digits than a 32-bit count holds");
}

int64_t SignificantLength(const BigInt* value) {
    const char* digits = nullptr;
    int sign = 0;
    int length = 0;
    int leadingZeros = 0;
    value->GetRawForm(digits, sign, length, leadingZeros);
    return digits == nullptr ? 0 : length - internal::CountLeadingZeros(digits, length);
}

}  // namespace

BigInt* BigInt::Calculate(int op, const BigInt* a, const BigInt* b, int shift,
                          ZelvorBase::Buffer* buffer, int scaleA, int scaleB, int resultScale) {
    if (a == nullptr || b == nullptr || op < kAdd || op > kDivide) {
        return nullptr;
    }
    if (shift == INT_MIN) {
        TooLong();  // the mirror alignment alone would need more digits than that
    }
    // A zero operand gives the other one, widened by zeros when the zero had the larger
    // scale, so that the copy is right at the result's scale.
    const int padForA = shift < 0 ? -shift : 0;
    const int padForB = shift > 0 ? shift : 0;
    switch (op) {
        case kAdd:
            if (a->mSign == 0) {
                return ClonePadded(*b, padForB, b->mSign, buffer);
            }
            if (b->mSign == 0) {
                return ClonePadded(*a, padForA, a->mSign, buffer);
            }
            if (a->mSign == b->mSign) {
                return CalculateBuf(kAdd, a, b, shift, buffer, a->mSign);
            }
            break;
        case kSubtract:
            if (b->mSign == 0) {
                return ClonePadded(*a, padForA, a->mSign, buffer);
            }
            if (a->mSign == 0) {
                return ClonePadded(*b, padForB, -b->mSign, buffer);
            }
            if (a->mSign != b->mSign) {
                return CalculateBuf(kAdd, a, b, shift, buffer, a->mSign);
            }
            break;
        case kMultiply:
            return CalculateBuf(kMultiply, a, b, 0, buffer, a->mSign * b->mSign);
        default:
            return CalculateBuf(kDivide, a, b, shift, buffer, a->mSign * b->mSign, scaleA, scaleB,
                                resultScale);
    }
    // Magnitudes meet with opposite effective signs: the larger one keeps its sign.
    const int bSign = op == kAdd ? b->mSign : -b->mSign;
    switch (a->CompareABS(*b, shift)) {
        case 1:
            return CalculateBuf(kSubtract, a, b, shift, buffer, a->mSign);
        case -1:
            return CalculateBuf(kSubtract, b, a, -shift, buffer, bSign);
        default:
            return CreateZero(buffer);
    }
}

BigInt* BigInt::CalculateBuf(int op, const BigInt* a, const BigInt* b, int shift,
                             ZelvorBase::Buffer* buffer, int sign, int scaleA, int scaleB,
                             int resultScale) {
    if (a == nullptr || b == nullptr || op < kAdd || op > kDivide) {
        return nullptr;
    }
    const int64_t s = shift;
    const int64_t la = a->mLength;
    const int64_t lb = b->mLength;
    int64_t extra = 0;
    int64_t r = 0;
    switch (op) {
        case kAdd:
            r = std::max(la, lb) + (s < 0 ? -s : s) + 1;
            break;
        case kSubtract:
            r = la + std::max<int64_t>(0, -s);
            break;
        case kMultiply:
            r = la + lb;
            break;
        default:
            extra = int64_t{scaleB} - scaleA + resultScale;
            r = 1 + extra + la - SignificantLength(b);
            break;
    }
    if (sign == 0) {
        // A zero product or quotient, at any scale: nothing to work out.
        return new (buffer) BigInt("", 0, 0, 0, false, buffer);
    }
    if (r >= INT_MAX || extra > INT_MAX || extra < INT_MIN) {
        TooLong();
    }
    if (r <= 0) {
        // The dividend is too short for a single quotient digit: no digits, the sign kept.
        return new (buffer) BigInt("", 0, sign, 0, false, buffer);
    }

    char local[kLocalArea];
    std::unique_ptr<char[]> heap;
    char* area = local;
    if (r >= kLocalArea) {
        heap = std::make_unique_for_overwrite<char[]>(static_cast<size_t>(r) + 1);
        area = heap.get();
    }
    int length = static_cast<int>(r);
    switch (op) {
        case kAdd:
            Plus(area, length, a, b, shift);
            break;
        case kSubtract:
            Minus(area, length, a, b, shift);
            break;
        case kMultiply:
            Times(area, length, a, b);
            break;
        default:
            Divide(area, length, a, b, static_cast<int>(extra));
            break;
    }
    // The routines write digits only, so the text constructor's checks can be skipped;
    // the result is the same object it would build.
    return FromDigits(area, length, sign, buffer);
}

}  // namespace ZelvorDataType
