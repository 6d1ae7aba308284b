// Any bytes into the text constructor. Nothing may crash; a valid value prints a text
// that parses back to an equal value of the same scale and the same text, in a Buffer
// and on the heap alike, and the digit accessors agree with the text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <ZelvorDataType/BigDecimal.h>

namespace {

using ZelvorDataType::BigDecimal;

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

// True when an exponent in the text has more than five significant digits. Such a
// value is legal, but its digits (or its printed places) run to gigabytes.
bool HugeExponent(const std::string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != 'e' && text[i] != 'E') {
            continue;
        }
        size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) {
            ++j;
        }
        while (j < text.size() && text[j] == '0') {
            ++j;
        }
        size_t digits = 0;
        while (j < text.size() && text[j] >= '0' && text[j] <= '9') {
            ++j;
            ++digits;
        }
        if (digits > 5) {
            return true;
        }
    }
    return false;
}

// The text without zeros in front of its integer digits.
std::string Trimmed(std::string text) {
    const size_t at = text[0] == '-' ? 1 : 0;
    size_t end = at;
    while (end + 1 < text.size() && text[end] == '0' && text[end + 1] >= '0' &&
           text[end + 1] <= '9') {
        ++end;
    }
    return text.erase(at, end - at);
}

void RoundTrip(const BigDecimal& value, ZelvorBase::Buffer* buffer) {
    const std::string printed = value.ToString().c_str();
    const BigDecimal again(printed.c_str(), buffer);
    Check(!again.IsInvalid());
    Check(again.CompareTo(value) == 0);
    Check(again.Scale() == value.Scale() || value.Signum() == 0);
    // Zeros in front print as they were read (".05e2" prints "05"); a heap value keeps
    // them when it reads the text back, a value in a Buffer drops them.
    const std::string reprinted = again.ToString().c_str();
    Check(buffer != nullptr ? Trimmed(printed) == Trimmed(reprinted) : printed == reprinted);
    if (value.Signum() != 0) {
        std::string joined = value.Signum() < 0 ? "-" : "";
        joined += value.GetIntegerDigits().c_str();
        if (value.Scale() > 0) {
            joined += ".";
            joined += value.GetFractionDigits().c_str();
        }
        // Kept zeros that the text gives up for the padding of a short fraction
        // ("0000.5E-1" prints 0.05) are still counted as integer digits.
        Check(Trimmed(joined) == Trimmed(printed));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (HugeExponent(text)) {
        return 0;
    }
    ZelvorBase::Buffer arena;
    const BigDecimal onHeap(text.c_str());
    const BigDecimal inArena(text.c_str(), &arena);
    Check(onHeap.IsInvalid() == inArena.IsInvalid());
    Check(!onHeap.IsEmpty());
    if (onHeap.IsInvalid()) {
        return 0;
    }
    Check(onHeap.CompareTo(inArena) == 0);
    Check(onHeap.Scale() == inArena.Scale());
    RoundTrip(onHeap, nullptr);
    RoundTrip(inArena, &arena);
    Check(onHeap.ToWString().GetLength() == std::strlen(onHeap.ToString().c_str()));
    return 0;
}
