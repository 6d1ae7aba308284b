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
#include <vector>

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

// Karatsuba's split halves operands down to below kKaratsubaWords words, where the
// schoolbook rows take over. It is used for operands of kKaratsubaFrom words and more,
// within a factor of two of each other: measured, below about 2,300 digits the extra
// passes and work areas cost more than the multiplications saved (bench_decimal, Mul).
constexpr int64_t kKaratsubaWords = 40;
constexpr int64_t kKaratsubaFrom = 256;

// x * y for nx-word x and ny-word y into the nx + ny entries of `columns`, each below
// 10^9 at the end. Schoolbook rows without a carry chain in the inner loop; the columns
// are brought back below 10^9 every kRowsPerCarry rows, before they could overflow.
void MultiplyColumns(const uint32_t* x, int64_t nx, const uint32_t* y, int64_t ny,
                     uint64_t* columns) noexcept {
    const int64_t width = nx + ny;
    std::fill(columns, columns + width, uint64_t{0});
    for (int64_t i = 0; i < nx; ++i) {
        const uint64_t xi = x[i];
        uint64_t* row = columns + i;
        for (int64_t j = 0; j < ny; ++j) {
            row[j] += xi * y[j];
        }
        if ((i + 1) % kRowsPerCarry == 0 || i + 1 == nx) {
            CarryColumns(columns, std::min(width, i + ny + 1));
        }
    }
}

// x * y for n-word x and y into out[0, 2n); words below 10^9 in and out. `columns` holds
// 2n entries.
void SchoolbookWords(const uint32_t* x, const uint32_t* y, int64_t n, uint32_t* out,
                     uint64_t* columns) noexcept {
    MultiplyColumns(x, n, y, n, columns);
    // The product has 2n words, so no carry leaves the top column.
    for (int64_t k = 0; k < 2 * n; ++k) {
        out[k] = static_cast<uint32_t>(columns[k]);
    }
}

// a[0, n) += b[0, m) for m <= n, carrying on to the end of a; returns the carry out.
uint32_t AddWords(uint32_t* a, int64_t n, const uint32_t* b, int64_t m) noexcept {
    uint32_t carry = 0;
    int64_t i = 0;
    for (; i < m; ++i) {
        const uint32_t t = a[i] + b[i] + carry;  // below 2 * 10^9 + 1 < 2^32
        carry = t >= kWordBase ? 1 : 0;
        a[i] = t - carry * kWordBase;
    }
    for (; carry != 0 && i < n; ++i) {
        const uint32_t t = a[i] + 1;
        carry = t == kWordBase ? 1 : 0;
        a[i] = t - carry * kWordBase;
    }
    return carry;
}

// a[0, n) -= b[0, m) for m <= n, with a >= b: no borrow leaves the top word.
void SubtractWords(uint32_t* a, int64_t n, const uint32_t* b, int64_t m) noexcept {
    uint32_t borrow = 0;
    int64_t i = 0;
    for (; i < m; ++i) {
        const uint32_t t = b[i] + borrow;  // at most 10^9
        borrow = a[i] < t ? 1 : 0;
        a[i] = a[i] + borrow * kWordBase - t;
    }
    for (; borrow != 0 && i < n; ++i) {
        borrow = a[i] == 0 ? 1 : 0;
        a[i] = borrow != 0 ? kWordBase - 1 : a[i] - 1;
    }
}

// Scratch words KaratsubaWords needs for n-word operands, its own level and all below.
int64_t KaratsubaScratch(int64_t n) noexcept {
    int64_t total = 0;
    while (n >= kKaratsubaWords) {
        const int64_t half = n - n / 2 + 1;  // the sums' length
        total += 4 * half;
        n = half;
    }
    return total;
}

// x * y for n-word x and y into out[0, 2n): x0 y0 and x1 y1 go to the two halves of out,
// (x0 + x1)(y0 + y1) - x0 y0 - x1 y1 = x0 y1 + x1 y0 is added in the middle. That middle
// term is never negative and is below 2 * 10^(9 (low + high)), so it fits the words it is
// added to, and the whole sum is the 2n-word product: nothing carries out of out.
void KaratsubaWords(const uint32_t* x, const uint32_t* y, int64_t n, uint32_t* out,
                    uint32_t* scratch, uint64_t* columns) noexcept {
    if (n < kKaratsubaWords) {
        SchoolbookWords(x, y, n, out, columns);
        return;
    }
    const int64_t low = n / 2;
    const int64_t high = n - low;  // low <= high <= low + 1
    const int64_t half = high + 1;
    uint32_t* sx = scratch;
    uint32_t* sy = sx + half;
    uint32_t* middle = sy + half;  // 2 * half words
    uint32_t* deeper = middle + 2 * half;
    KaratsubaWords(x, y, low, out, deeper, columns);
    KaratsubaWords(x + low, y + low, high, out + 2 * low, deeper, columns);
    std::copy(x + low, x + n, sx);
    sx[high] = AddWords(sx, high, x, low);
    std::copy(y + low, y + n, sy);
    sy[high] = AddWords(sy, high, y, low);
    KaratsubaWords(sx, sy, half, middle, deeper, columns);
    SubtractWords(middle, 2 * half, out, 2 * low);
    SubtractWords(middle, 2 * half, out + 2 * low, 2 * high);
    // The top words of the middle term are zeros past what is added (see above).
    AddWords(out + low, 2 * n - low, middle, std::min(2 * half, 2 * n - low));
}

// Lanes counted from the right: `edge` for those outside fullFrom .. fullTo - 1, which
// need the checks at the ends of the texts, and `full` for those inside, in order, so a
// carry or borrow passes from each lane to the next.
template <class Edge, class Full>
void ForEachLane(int64_t lanes, int64_t fullFrom, int64_t fullTo, Edge&& edge, Full&& full) {
    int64_t k = 0;
    for (; k < std::min(fullFrom, lanes); ++k) {
        edge(k);
    }
    for (; k < fullTo; ++k) {
        full(k);
    }
    for (; k < lanes; ++k) {
        edge(k);
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
    uint64_t carry = 0;
    ForEachLane(
        lanes, fullFrom, fullTo,
        [&](int64_t k) {
            const uint64_t sum =
                internal::AddLanes(internal::LoadLanes(low.text, low.length, 0, k),
                                   internal::LoadLanes(high.text, high.length, s, k), carry);
            internal::StoreLanes(result, n, k, sum);
        },
        [&](int64_t k) {
            const int64_t back =
                internal::kLaneDigits * (k + 1);  // the lane ends 8k from the right
            const uint64_t sum = internal::AddLanes(
                internal::LoadFullLanes(low.text + low.length - back),
                internal::LoadFullLanes(high.text + high.length + s - back), carry);
            internal::StoreFullLanes(result + n - back, sum);
        });
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
    uint64_t borrow = 0;
    const auto edgeLane = [&](int64_t k) {
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
    ForEachLane(lanes, fullFrom, fullTo, edgeLane, [&](int64_t k) {
        const int64_t back = internal::kLaneDigits * (k + 1);  // the lane ends 8k from the right
        const uint64_t difference = internal::SubtractLanes(
            internal::LoadFullLanes(x.text + n - back),
            internal::LoadFullLanes(y.text + y.length + offsetB - back), borrow);
        internal::StoreFullLanes(result + n - back, difference);
    });
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
    const int64_t shorter = std::min(wx, wy);
    const int64_t longer = std::max(wx, wy);
    if (shorter >= kKaratsubaFrom && longer <= 2 * shorter) {
        // Both operands padded with zero words to the longer length.
        std::vector<uint32_t> xw(static_cast<size_t>(longer), 0);
        std::vector<uint32_t> yw(static_cast<size_t>(longer), 0);
        std::vector<uint32_t> product(static_cast<size_t>(2 * longer));
        std::vector<uint32_t> scratch(static_cast<size_t>(KaratsubaScratch(longer)));
        uint64_t columns[2 * kKaratsubaWords];
        internal::LoadWords(x.text, x.length, 0, xw.data(), wx);
        internal::LoadWords(y.text, y.length, 0, yw.data(), wy);
        KaratsubaWords(xw.data(), yw.data(), longer, product.data(), scratch.data(), columns);
        for (int64_t k = 0, words = WordCount(n); k < words; ++k) {
            StoreWord(result, n, k, product[static_cast<size_t>(k)]);
        }
        return;
    }
    // Products of up to 255 digits stay on the stack.
    internal::Scratch<uint32_t, 32> xs(wx);
    internal::Scratch<uint32_t, 32> ys(wy);
    internal::Scratch<uint64_t, 64> ps(wp);
    uint32_t* xw = xs.Get();
    uint32_t* yw = ys.Get();
    uint64_t* pw = ps.Get();
    internal::LoadWords(x.text, x.length, 0, xw, wx);
    internal::LoadWords(y.text, y.length, 0, yw, wy);
    MultiplyColumns(xw, wx, yw, wy, pw);
    for (int64_t k = 0, words = WordCount(n); k < words; ++k) {
        StoreWord(result, n, k, static_cast<uint32_t>(k < wp ? pw[k] : 0));
    }
}

}  // namespace ZelvorDataType
