// BigInt: the truncating division, and the table of multiples of the divisor.
//
// Divide works out the quotient on words of nine digits (long division with a quotient
// estimate from the two leading words, corrected at most twice). The table routines
// below serve a digit by digit long division: the greatest multiple of the divisor
// that fits a slice of the remainder is found by a binary search over the multiples 1
// to 9, each computed once, on first use. Both give the digits of the truncated
// quotient, so they agree to the character.
#include <ZelvorDataType/BigInt.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "decimal/DigitWords.h"

namespace ZelvorDataType {

namespace {

using internal::kWordBase;

// q = u / v for v of one word; q has `ul` words.
void DivideByWord(const uint32_t* u, int64_t ul, uint32_t v, uint32_t* q) noexcept {
    uint64_t rest = 0;
    for (int64_t j = ul - 1; j >= 0; --j) {
        const uint64_t current = rest * kWordBase + u[j];
        q[j] = static_cast<uint32_t>(current / v);
        rest = current % v;
    }
}

// q = u / v for v of `vl` >= 2 words with a non-zero top word, and `ul` >= `vl`.
// `u` needs room for ul + 1 words and is used up; `vn` is scratch for `vl` words; q
// gets ul - vl + 1 words.
void DivideByWords(uint32_t* u, int64_t ul, const uint32_t* v, int64_t vl, uint32_t* vn,
                   uint32_t* q) noexcept {
    // Scale both so that the divisor's top word is at least half the base; the estimate
    // from two words is then at most two above the true quotient word.
    const uint64_t d = kWordBase / (uint64_t{v[vl - 1]} + 1);
    uint64_t carry = 0;
    for (int64_t i = 0; i < vl; ++i) {
        const uint64_t t = v[i] * d + carry;
        vn[i] = static_cast<uint32_t>(t % kWordBase);
        carry = t / kWordBase;
    }
    carry = 0;
    for (int64_t i = 0; i < ul; ++i) {
        const uint64_t t = u[i] * d + carry;
        u[i] = static_cast<uint32_t>(t % kWordBase);
        carry = t / kWordBase;
    }
    u[ul] = static_cast<uint32_t>(carry);

    const uint64_t top = vn[vl - 1];
    const uint64_t next = vn[vl - 2];
    for (int64_t j = ul - vl; j >= 0; --j) {
        // Every value here stays below 2 * 10^18: the remainder's top word never exceeds
        // `top`, so the estimate is below twice the base.
        const uint64_t numerator = uint64_t{u[j + vl]} * kWordBase + u[j + vl - 1];
        uint64_t qhat = numerator / top;
        uint64_t rhat = numerator % top;
        while (qhat >= kWordBase || qhat * next > rhat * kWordBase + u[j + vl - 2]) {
            --qhat;
            rhat += top;
            if (rhat >= kWordBase) {
                break;
            }
        }
        int64_t borrow = 0;
        uint64_t productCarry = 0;
        for (int64_t i = 0; i < vl; ++i) {
            const uint64_t p = qhat * vn[i] + productCarry;
            productCarry = p / kWordBase;
            int64_t t =
                static_cast<int64_t>(u[i + j]) - static_cast<int64_t>(p % kWordBase) - borrow;
            borrow = t < 0 ? 1 : 0;
            t += borrow * kWordBase;
            u[i + j] = static_cast<uint32_t>(t);
        }
        int64_t head =
            static_cast<int64_t>(u[j + vl]) - static_cast<int64_t>(productCarry) - borrow;
        if (head < 0) {
            // The estimate was one too high (rare): add the divisor back once.
            --qhat;
            uint32_t add = 0;
            for (int64_t i = 0; i < vl; ++i) {
                uint32_t s = u[i + j] + vn[i] + add;
                add = s >= kWordBase ? 1 : 0;
                s -= add * kWordBase;
                u[i + j] = s;
            }
            head += add;
        }
        u[j + vl] = static_cast<uint32_t>(head);
        q[j] = static_cast<uint32_t>(qhat);
    }
}

}  // namespace

void BigInt::Divide(char* result, int& resultLength, const BigInt* a, const BigInt* b, int extra) {
    const int64_t r = resultLength;
    if (r <= 0) {
        return;
    }
    result[r] = '\0';
    const char* dividend = a->DigitText();
    const char* divisor = b->DigitText();
    const int64_t zeros = internal::CountLeadingZeros(divisor, b->mLength);
    divisor += zeros;
    const int64_t n = b->mLength - zeros;
    // A negative `extra` cuts digits off the end of the dividend, a positive one appends
    // zeros to it.
    const int64_t dividendLength =
        extra < 0 ? std::max<int64_t>(a->mLength + int64_t{extra}, 0) : int64_t{a->mLength};
    const int64_t appended = extra > 0 ? extra : 0;
    if (n == 0) {
        // No divisor digit: nothing meaningful to compute; the caller rules this out.
        std::memset(result, '0', static_cast<size_t>(r));
        return;
    }
    const int64_t ul = internal::WordCount(dividendLength + appended);
    const int64_t vl = internal::WordCount(n);
    if (ul < vl) {
        std::memset(result, '0', static_cast<size_t>(r));
        return;
    }
    internal::Scratch<uint32_t, 72> us(ul + 1);
    internal::Scratch<uint32_t, 40> vs(2 * vl);
    internal::Scratch<uint32_t, 72> qs(ul);
    uint32_t* u = us.Get();
    uint32_t* v = vs.Get();
    uint32_t* q = qs.Get();
    internal::LoadWords(dividend, dividendLength, appended, u, ul);
    internal::LoadWords(divisor, n, 0, v, vl);
    int64_t ql = 0;
    if (vl == 1) {
        DivideByWord(u, ul, v[0], q);
        ql = ul;
    } else {
        DivideByWords(u, ul, v, vl, v + vl, q);
        ql = ul - vl + 1;
    }
    internal::StoreWords(q, ql, result, r);
}

void BigInt::GenMultiplyList(int m, char** list, bool* filled, const char* divisor,
                             int divisorLength) {
    if (m < 1 || m > 9 || divisorLength < 0) {
        return;
    }
    char* entry = list[m - 1];
    std::memset(entry, 0, static_cast<size_t>(divisorLength) + 2);
    int carry = 0;
    for (int i = divisorLength - 1; i >= 0; --i) {
        const int t = (divisor[i] - '0') * m + carry;
        entry[i + 1] = static_cast<char>(t % 10);
        carry = t / 10;
    }
    entry[0] = static_cast<char>(carry);
    for (int i = 0; i <= divisorLength; ++i) {
        entry[i] = static_cast<char>(entry[i] + '0');
    }
    filled[m - 1] = true;
}

int BigInt::SearchMultiplyList(char** list, bool* filled, const char* slice, int sliceLength,
                               const char* divisor, int divisorLength) {
    const int n = divisorLength;
    if (n < 0 || (sliceLength != n && sliceLength != n + 1)) {
        return 0;
    }
    int lo = 0;   // known not above the slice
    int hi = 10;  // known above it
    while (lo + 1 < hi) {
        const int mid = (lo + hi) / 2;
        if (!filled[mid - 1]) {
            GenMultiplyList(mid, list, filled, divisor, n);
        }
        const char* entry = list[mid - 1];
        int c = 0;
        if (sliceLength == n) {
            // A multiple with a carry digit is one digit wider than the slice.
            c = entry[0] > '0' ? 1 : std::strncmp(entry + 1, slice, static_cast<size_t>(n));
        } else {
            c = std::strncmp(entry, slice, static_cast<size_t>(n) + 1);
        }
        if (c == 0) {
            return mid;
        }
        if (c < 0) {
            lo = mid;
        } else {
            hi = mid;
        }
    }
    return lo;
}

void BigInt::Subtract4divide(char* slice, int sliceLength, int divisorLength, char** list, int m) {
    if (m < 1 || m > 9 || (sliceLength != divisorLength && sliceLength != divisorLength + 1)) {
        return;
    }
    // The entry has divisorLength + 1 digits; its last sliceLength meet the slice.
    const char* entry = list[m - 1] + (divisorLength + 1 - sliceLength);
    int borrow = 0;
    for (int i = sliceLength - 1; i >= 0; --i) {
        int d = (slice[i] - '0') - (entry[i] - '0') - borrow;
        borrow = d < 0 ? 1 : 0;
        d += borrow * 10;
        slice[i] = static_cast<char>('0' + d);
    }
}

}  // namespace ZelvorDataType
