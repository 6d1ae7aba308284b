#include "decimal/DigitWords.h"

#include <array>

namespace ZelvorDataType::internal {

namespace {

// "00" to "99", two characters each.
constexpr std::array<char, 200> MakePairs() {
    std::array<char, 200> pairs{};
    for (int i = 0; i < 100; ++i) {
        pairs[static_cast<size_t>(2 * i)] = static_cast<char>('0' + i / 10);
        pairs[static_cast<size_t>(2 * i + 1)] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> kPairs = MakePairs();

void WritePair(char* out, uint32_t pair) noexcept {
    std::memcpy(out, &kPairs[2 * pair], 2);
}

}  // namespace

void WriteNine(char* out, uint32_t word) noexcept {
    out[0] = static_cast<char>('0' + word / 100000000);
    const uint32_t low = word % 100000000;
    const uint32_t high4 = low / 10000;
    const uint32_t low4 = low % 10000;
    WritePair(out + 1, high4 / 100);
    WritePair(out + 3, high4 % 100);
    WritePair(out + 5, low4 / 100);
    WritePair(out + 7, low4 % 100);
}

void LoadWords(const char* digits, int64_t length, int64_t offset, uint32_t* words,
               int64_t count) noexcept {
    for (int64_t k = 0; k < count; ++k) {
        words[k] = LoadWord(digits, length, offset, k);
    }
}

void StoreWords(const uint32_t* words, int64_t count, char* out, int64_t length) noexcept {
    const int64_t needed = WordCount(length);
    for (int64_t k = 0; k < needed; ++k) {
        StoreWord(out, length, k, k < count ? words[k] : 0);
    }
}

}  // namespace ZelvorDataType::internal
