// BigInt: addition, subtraction and multiplication of magnitudes.
//
// The routines give the digit characters of the exact result, zeros in front up to the
// stated width. Sums and differences run the digit-by-digit loop eight digits at a
// step on lanes; products work on words of nine digits (see DigitWords.h). A digit by
// digit loop gives the same characters, since the exact result written to a fixed width
// is one string.
#include <ZelvorDataType/BigInt.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "decimal/DigitWords.h"

namespace ZelvorDataType {

namespace {

using internal::kWordBase;

struct Digits {
    const char* text;
    int64_t length;
};
using internal::LoadWord;
using internal::StoreWord;
using internal::WordCount;

// Rows of a product that can be added into one 64-bit column before it has to be
// brought back below 10^9: 18 * (10^9 - 1)^2 + 10^9 is still below 2^64.
constexpr int64_t kRowsPerCarry = 18;

void CarryColumns(uint64_t* columns, int64_t count) noexcept {
    uint64_t carry = 0;
    for (int64_t i = 0; i < count; ++i) {
        const uint64_t t = columns[i] + carry;
        columns[i] = t % kWordBase;
        carry = t / kWordBase;
    }
}

}  // namespace

void BigInt::Plus(char* result, int& resultLength, const BigInt* a, const BigInt* b, int shift) {
    // `low` is the operand whose digits reach further right; the other one is seen
    // with `s` zeros appended.
    Digits low{a->DigitText(), a->mLength};
    Digits high{b->DigitText(), b->mLength};
    int64_t s = shift;
    if (s < 0) {
        std::swap(low, high);
        s = -s;
    }
    const int64_t n = std::max(high.length + s, low.length) + 1;  // one more for the carry
    const int64_t lanes = internal::LaneCount(n);
    // Lanes fullFrom .. fullTo - 1 lie inside both texts (none of high's appended zeros,
    // nothing left of either start) and inside the result, which is longer than both:
    // they go without the edge checks. fullTo <= (n - 1) / 8 < lanes.
    const int64_t fullFrom = (s + internal::kLaneDigits - 1) / internal::kLaneDigits;
    const int64_t fullTo = std::min(low.length, high.length + s) / internal::kLaneDigits;
    const auto edgeLane = [&](int64_t k, uint64_t& carry) {
        const uint64_t sum =
            internal::AddLanes(internal::LoadLanes(low.text, low.length, 0, k),
                               internal::LoadLanes(high.text, high.length, s, k), carry);
        internal::StoreLanes(result, n, k, sum);
    };
    uint64_t carry = 0;
    int64_t k = 0;
    for (; k < std::min(fullFrom, lanes); ++k) {
        edgeLane(k, carry);
    }
    for (; k < fullTo; ++k) {
        const int64_t back = internal::kLaneDigits * (k + 1);  // the lane ends 8k from the right
        const uint64_t sum =
            internal::AddLanes(internal::LoadFullLanes(low.text + low.length - back),
                               internal::LoadFullLanes(high.text + high.length + s - back), carry);
        internal::StoreFullLanes(result + n - back, sum);
    }
    for (; k < lanes; ++k) {
        edgeLane(k, carry);
    }
    resultLength = static_cast<int>(n);
    result[n] = '\0';
}

void BigInt::Minus(char* result, int& resultLength, const BigInt* a, const BigInt* b, int shift) {
    const Digits x{a->DigitText(), a->mLength};
    const Digits y{b->DigitText(), b->mLength};
    const int64_t s = shift;
    const int64_t offsetA = s < 0 ? -s : 0;  // b has more places: a gets implied zeros
    const int64_t offsetB = s > 0 ? s : 0;
    const int64_t n = x.length + offsetA;
    const int64_t lanes = internal::LaneCount(n);
    // Lanes fullFrom .. fullTo - 1 lie inside both texts, clear of the appended zeros,
    // and below the result's top lane: they go without the edge checks and the mask.
    const int64_t fullFrom =
        (std::max(offsetA, offsetB) + internal::kLaneDigits - 1) / internal::kLaneDigits;
    const int64_t fullTo = std::min(n, y.length + offsetB) / internal::kLaneDigits;
    const auto edgeLane = [&](int64_t k, uint64_t& borrow) {
        uint64_t subtrahend = internal::LoadLanes(y.text, y.length, offsetB, k);
        const int64_t inside = n - k * internal::kLaneDigits;
        if (inside < internal::kLaneDigits) {
            // Digits of b left of the result's first position are zeros when |a| >= |b|;
            // they are never read, as a digit by digit loop would not reach them.
            subtrahend &= (uint64_t{1} << (8 * inside)) - 1;
        }
        const uint64_t difference = internal::SubtractLanes(
            internal::LoadLanes(x.text, x.length, offsetA, k), subtrahend, borrow);
        internal::StoreLanes(result, n, k, difference);
    };
    uint64_t borrow = 0;
    int64_t k = 0;
    for (; k < std::min(fullFrom, lanes); ++k) {
        edgeLane(k, borrow);
    }
    for (; k < fullTo; ++k) {
        const int64_t back = internal::kLaneDigits * (k + 1);  // the lane ends 8k from the right
        const uint64_t difference = internal::SubtractLanes(
            internal::LoadFullLanes(x.text + n - back),
            internal::LoadFullLanes(y.text + y.length + offsetB - back), borrow);
        internal::StoreFullLanes(result + n - back, difference);
    }
    for (; k < lanes; ++k) {
        edgeLane(k, borrow);
    }
    resultLength = static_cast<int>(n);
    result[n] = '\0';
}

void BigInt::Times(char* result, int& resultLength, const BigInt* a, const BigInt* b) {
    const Digits x = Digits{a->DigitText(), a->mLength};
    const Digits y = Digits{b->DigitText(), b->mLength};
    const int64_t n = x.length + y.length;
    resultLength = static_cast<int>(n);
    result[n] = '\0';
    if (x.length == 0 || y.length == 0) {
        std::memset(result, '0', static_cast<size_t>(n));
        return;
    }
    const int64_t wx = WordCount(x.length);
    const int64_t wy = WordCount(y.length);
    const int64_t wp = wx + wy;
    // Products of up to 255 digits stay on the stack.
    internal::Scratch<uint32_t, 32> xs(wx);
    internal::Scratch<uint32_t, 32> ys(wy);
    internal::Scratch<uint64_t, 64> ps(wp);
    uint32_t* xw = xs.Get();
    uint32_t* yw = ys.Get();
    uint64_t* pw = ps.Get();
    internal::LoadWords(x.text, x.length, 0, xw, wx);
    internal::LoadWords(y.text, y.length, 0, yw, wy);
    std::fill(pw, pw + wp, uint64_t{0});
    // Schoolbook rows without a carry chain in the inner loop; the columns are brought
    // back below 10^9 every kRowsPerCarry rows, before they could overflow.
    for (int64_t i = 0; i < wx; ++i) {
        const uint64_t xi = xw[i];
        uint64_t* row = pw + i;
        for (int64_t j = 0; j < wy; ++j) {
            row[j] += xi * yw[j];
        }
        if ((i + 1) % kRowsPerCarry == 0 || i + 1 == wx) {
            CarryColumns(pw, std::min(wp, i + wy + 1));
        }
    }
    for (int64_t k = 0, words = WordCount(n); k < words; ++k) {
        StoreWord(result, n, k, static_cast<uint32_t>(k < wp ? pw[k] : 0));
    }
}

}  // namespace ZelvorDataType
