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

// The eight digits of `v` (below 10^8) as ASCII bytes in reading order. Splits v into
// two 4-digit halves, each half into two 2-digit quarters and each quarter into two
// digits, all lanes of one register at a time; the multiply-shift pairs divide
// exactly by 10^4, 10^2 and 10 over the ranges that occur.
inline uint64_t EightDigits(uint32_t v) noexcept {
    const uint64_t halves = v + ((uint64_t{1} << 32) - 10000) * ((v * uint64_t{109951163}) >> 40);
    const uint64_t quarters =
        halves + ((uint64_t{1} << 16) - 100) *
                     (((halves * 10486) >> 20) & ((uint64_t{0x7F} << 32) | uint64_t{0x7F}));
    const uint64_t digits =
        quarters + ((uint64_t{1} << 8) - 10) *
                       (((quarters * 103) >> 10) & ((uint64_t{0xF} << 48) | (uint64_t{0xF} << 32) |
                                                    (uint64_t{0xF} << 16) | uint64_t{0xF}));
    // The lowest byte holds the last digit; memory wants the first digit first.
    return __builtin_bswap64(digits) + 0x3030303030303030ULL;
}

// Writes the nine digits of `word` (below 10^9) at `out`.
inline void WriteNine(char* out, uint32_t word) noexcept {
    out[0] = static_cast<char>('0' + word / 100000000);
    const uint64_t eight = EightDigits(word % 100000000);
    std::memcpy(out + 1, &eight, sizeof eight);
}

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

// Eight digits in the eight bytes of a register, one digit value (0 to 9) a byte, the
// least significant digit in the lowest byte: "lanes". Sums and differences of lanes
// carry and borrow from byte to byte as decimal digits do (see AddLanes), so a
// digit-by-digit loop runs eight digits a step with no conversion at all.
constexpr int kLaneDigits = 8;
constexpr uint64_t kLaneZeros = 0x3030303030303030ULL;  // "00000000"
constexpr uint64_t kLaneLowBits = 0x0101010101010101ULL;

constexpr int64_t LaneCount(int64_t digits) {
    return (digits + kLaneDigits - 1) / kLaneDigits;
}

// Up to eight bytes from `p` into the low bytes of a register, in memory order, by
// loads of 4, 2 and 1 bytes: a copy through a stack buffer would stall the load that
// follows it.
inline uint64_t LoadBytes(const char* p, int64_t count) noexcept {
    uint64_t value = 0;
    int shift = 0;
    if ((count & 4) != 0) {
        uint32_t part;
        std::memcpy(&part, p, sizeof part);
        value = part;
        p += 4;
        shift = 32;
    }
    if ((count & 2) != 0) {
        uint16_t part;
        std::memcpy(&part, p, sizeof part);
        value |= uint64_t{part} << shift;
        p += 2;
        shift += 16;
    }
    if ((count & 1) != 0) {
        value |= uint64_t{static_cast<unsigned char>(*p)} << shift;
    }
    return value;
}

// The low `count` (below 8) bytes of `value` to `out`, in memory order.
inline void StoreBytes(char* out, uint64_t value, int64_t count) noexcept {
    if ((count & 4) != 0) {
        const auto part = static_cast<uint32_t>(value);
        std::memcpy(out, &part, sizeof part);
        out += 4;
        value >>= 32;
    }
    if ((count & 2) != 0) {
        const auto part = static_cast<uint16_t>(value);
        std::memcpy(out, &part, sizeof part);
        out += 2;
        value >>= 16;
    }
    if ((count & 1) != 0) {
        *out = static_cast<char>(value);
    }
}

// Lane k (counted from the right, like words) of `digits[0, length)` with `offset` zeros
// appended; positions outside the string are zeros.
inline uint64_t LoadLanes(const char* digits, int64_t length, int64_t offset, int64_t k) noexcept {
    const int64_t end = length + offset - k * kLaneDigits;
    const int64_t start = end - kLaneDigits;
    uint64_t text = kLaneZeros;
    if (start >= 0 && end <= length) {
        std::memcpy(&text, digits + start, sizeof text);
    } else if (end > 0 && start < length) {
        const int64_t first = start < 0 ? 0 : start;
        const int64_t last = end < length ? end : length;
        const int64_t count = last - first;
        const int64_t at = 8 * (first - start);  // bit position of the first byte read
        const uint64_t range = ((uint64_t{1} << (8 * count)) - 1) << at;  // count < 8 here
        text = (kLaneZeros & ~range) | (LoadBytes(digits + first, count) << at);
    }
    return __builtin_bswap64(text) - kLaneZeros;  // reading order puts the first digit lowest
}

// The eight digits at `p`, all inside the string, as lanes: LoadLanes without the edges.
inline uint64_t LoadFullLanes(const char* p) noexcept {
    uint64_t text;
    std::memcpy(&text, p, sizeof text);
    return __builtin_bswap64(text) - kLaneZeros;
}

// Eight digits to `out`, all inside the string: StoreLanes without the edges.
inline void StoreFullLanes(char* out, uint64_t lanes) noexcept {
    const uint64_t text = __builtin_bswap64(lanes + kLaneZeros);
    std::memcpy(out, &text, sizeof text);
}

// Writes lane k of the `length` digit characters at `out`, dropping digits of the top
// lane that fall left of the string.
inline void StoreLanes(char* out, int64_t length, int64_t k, uint64_t lanes) noexcept {
    const uint64_t text = __builtin_bswap64(lanes + kLaneZeros);
    const int64_t end = length - k * kLaneDigits;
    const int64_t start = end - kLaneDigits;
    if (start >= 0) {
        std::memcpy(out + start, &text, sizeof text);
    } else {
        StoreBytes(out, text >> (8 * -start), end);
    }
}

// x + y + carry on lanes. Adding 246 to every byte makes a byte overflow into the next
// one exactly when its digit sum reaches 10, so the binary carry chain is the decimal
// one. Bytes that did not overflow hold digit + 246 (their top bit is set) and get the
// 246 back; bytes that did hold digit sum - 10. `carry` goes in at the lowest digit and
// comes out of the highest.
inline uint64_t AddLanes(uint64_t x, uint64_t y, uint64_t& carry) noexcept {
    const uint64_t sum = x + y + carry;  // each byte at most 19: no byte overflows yet
    const uint64_t shifted = sum + 0xF6F6F6F6F6F6F6F6ULL;
    carry = shifted < sum ? 1 : 0;
    const uint64_t kept = (shifted >> 7) & kLaneLowBits;
    return shifted - kept * 0xF6;
}

// x - y - borrow on lanes. A byte that goes below zero borrows from the next one in
// the binary subtraction just as a decimal digit does, and holds digit + 256 - 10 too
// many; those bytes have their top bit set and get 246 taken off.
inline uint64_t SubtractLanes(uint64_t x, uint64_t y, uint64_t& borrow) noexcept {
    const uint64_t partial = x - y;
    const uint64_t difference = partial - borrow;
    borrow = (x < y || partial < borrow) ? 1 : 0;
    const uint64_t borrowed = (difference >> 7) & kLaneLowBits;
    return difference - borrowed * 0xF6;
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
