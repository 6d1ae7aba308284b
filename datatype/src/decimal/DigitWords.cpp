#include "decimal/DigitWords.h"

namespace ZelvorDataType::internal {

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
