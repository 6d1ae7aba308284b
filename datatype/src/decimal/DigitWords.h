#pragma once

// Decimal digit strings viewed as words of nine digits (base 10^9). The digit routines
// of BigInt work on these words: the results are the same digit characters as a digit
// by digit loop gives, at a ninth of the steps.
//
// Word k of a digit string is the value of the nine digits that end 9k places from its
// right end; words are numbered from the least significant. A string may be viewed with
// `offset` zeros appended on the right (an alignment shift) without copying it.

#include <cstdint>
#include <cstring>
#include <memory>

namespace ZelvorDataType::internal {

constexpr uint32_t kWordBase = 1000000000;
constexpr int kWordDigits = 9;

constexpr uint32_t kPow10[10] = {1,      10,      100,      1000,      10000,
                                 100000, 1000000, 10000000, 100000000, 1000000000};

// Words needed for `digits` digits.
constexpr int64_t WordCount(int64_t digits) {
    return (digits + kWordDigits - 1) / kWordDigits;
}

// The value of eight ASCII digits at `p` (eight readable bytes), by adding neighbours
// in pairs inside one 64-bit register. Bytes that are not digits give some value but no
// fault: every step is unsigned.
inline uint32_t ParseEight(const char* p) noexcept {
    uint64_t v;
    std::memcpy(&v, p, sizeof v);
    v -= 0x3030303030303030ULL;
    v = v * 10 + (v >> 8);  // each even byte now holds a two-digit value, 0 to 99
    v = (((v & 0x000000FF000000FFULL) * (100 + (1000000ULL << 32))) +
         (((v >> 16) & 0x000000FF000000FFULL) * (1 + (10000ULL << 32)))) >>
        32;
    return static_cast<uint32_t>(v);
}

inline uint32_t ParseNine(const char* p) noexcept {
    return ParseEight(p) * 10 + static_cast<uint32_t>(static_cast<unsigned char>(p[8]) - '0');
}

// Word k of `digits[0, length)` with `offset` zeros appended. Positions left of the
// string read as zeros.
inline uint32_t LoadWord(const char* digits, int64_t length, int64_t offset, int64_t k) noexcept {
    const int64_t end = length + offset - k * kWordDigits;  // one past the word's last digit
    const int64_t start = end - kWordDigits;
    if (end <= 0 || start >= length) {
        return 0;
    }
    if (start >= 0 && end <= length) {
        return ParseNine(digits + start);
    }
    const int64_t first = start < 0 ? 0 : start;
    const int64_t last = end < length ? end : length;
    uint32_t v = 0;
    for (int64_t i = first; i < last; ++i) {
        v = v * 10 + static_cast<uint32_t>(static_cast<unsigned char>(digits[i]) - '0');
    }
    return v * kPow10[end - last];  // end - last < 9: a word of appended zeros returned above
}

// Writes the nine digits of `word` (below 10^9) at `out`.
void WriteNine(char* out, uint32_t word) noexcept;

// Stores `word` as word k of the `length` digit characters at `out`; the digits of the
// top word that fall left of the string are dropped.
inline void StoreWord(char* out, int64_t length, int64_t k, uint32_t word) noexcept {
    const int64_t end = length - k * kWordDigits;
    const int64_t start = end - kWordDigits;
    if (start >= 0) {
        WriteNine(out + start, word);
        return;
    }
    char nine[kWordDigits];
    WriteNine(nine, word);
    std::memcpy(out, nine - start, static_cast<size_t>(end));
}

// `count` words of a digit string (with `offset` zeros appended), least significant
// first.
void LoadWords(const char* digits, int64_t length, int64_t offset, uint32_t* words,
               int64_t count) noexcept;

// Writes the `length` digit characters whose words are `words[0, count)`; words past
// `count` are zeros.
void StoreWords(const uint32_t* words, int64_t count, char* out, int64_t length) noexcept;

// Skips the '0' characters at the front of `digits[0, length)`; returns how many.
inline int64_t CountLeadingZeros(const char* digits, int64_t length) noexcept {
    int64_t n = 0;
    while (n < length && digits[n] == '0') {
        ++n;
    }
    return n;
}

// A scratch array of `T` that lives on the stack when it holds `count` elements or
// fewer, and on the heap otherwise.
template <class T, int64_t kLocal>
class Scratch {
  public:
    explicit Scratch(int64_t count)
        : mHeap(count > kLocal ? std::make_unique_for_overwrite<T[]>(static_cast<size_t>(count))
                               : nullptr) {}
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    T* Get() noexcept { return mHeap != nullptr ? mHeap.get() : mLocal; }

  private:
    T mLocal[kLocal];
    std::unique_ptr<T[]> mHeap;
};

}  // namespace ZelvorDataType::internal
