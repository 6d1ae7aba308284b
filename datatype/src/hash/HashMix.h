#pragma once

// The mixing steps behind the library's hash values: a seed folded with one word at a
// time, each step ending in the splitmix64 finaliser so that nearby inputs (consecutive
// days, digits one apart) land far apart. Values are stable within one run of a program
// only; nobody should save them.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ZelvorDataType::internal {

constexpr std::uint64_t HashMix(std::uint64_t seed, std::uint64_t word) noexcept {
    std::uint64_t x = seed ^ (word + 0x9E3779B97F4A7C15ULL + (seed << 6) + (seed >> 2));
    x ^= x >> 30;
    x *= 0xBF58476D1CE4E5B9ULL;
    x ^= x >> 27;
    x *= 0x94D049BB133111EBULL;
    return x ^ (x >> 31);
}

// Bytes folded eight at a time, the length first so that a prefix differs from the whole.
inline std::uint64_t HashBytes(std::uint64_t seed, const void* data, std::size_t size) noexcept {
    std::uint64_t hash = HashMix(seed, size);
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (std::size_t at = 0; at < size; at += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + at, size - at < 8 ? size - at : 8);
        hash = HashMix(hash, word);
    }
    return hash;
}

// Distinct seeds per family, so that values of different kinds rarely meet by chance.
constexpr std::uint64_t kHashDateTime = 0x44415445;  // "DATE"
constexpr std::uint64_t kHashDecimal = 0x4445434D;   // "DECM"

}  // namespace ZelvorDataType::internal
