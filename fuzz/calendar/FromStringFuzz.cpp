// Reads arbitrary text into a DateTime. The text sits in a block of exactly its length
// plus the terminator, so any read past the terminator is caught by the sanitizer.
// A failure must leave the value untouched; a success must give a value whose text
// reads back to itself.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <ZelvorDataType/DateTime.h>

namespace {

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using ZelvorDataType::DateTime;
    std::unique_ptr<char[]> text(new char[size + 1]);
    std::memcpy(text.get(), data, size);
    text[size] = '\0';

    DateTime value(2001, 2, 3, 4, 5, 6, 7, 60, 9);
    const std::string before = value.ToString().c_str();
    const int read = value.FromString(text.get());
    Check(read >= 0 && static_cast<size_t>(read) <= std::strlen(text.get()));
    if (read == 0) {
        Check(before == value.ToString().c_str() && value.GetZoneMinutes() == 60 &&
              value.GetZoneSpare() == 9);
        return 0;
    }
    Check(value.GetMonth() >= 1 && value.GetMonth() <= 12 && value.GetDay() >= 1 &&
          value.GetDay() <= value.GetDaysInMonth() && value.GetHour() <= 23 &&
          value.GetMinute() <= 59 && value.GetSecond() <= 59 && value.GetMillisecond() <= 999);
    Check(value.GetZoneMinutes() == 0 && value.GetZoneSpare() == 0);
    // Year 0 is reachable only through the 16-bit wrap (65536) and can't be written back.
    if (value.GetYear() == 0) {
        return 0;
    }
    const std::string written = value.ToString().c_str();
    DateTime again(0.0);
    Check(again.FromString(written.c_str()) == static_cast<int>(written.size()));
    Check(again == value);
    return 0;
}
