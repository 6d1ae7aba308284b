// Loads arbitrary bytes as a saved DateTime, strictly and leniently. The bytes sit in a
// block of exactly their length and that length is the size given, so a read outside
// it is caught by the sanitizer. The result is always 0 or -1; a lenient success is a
// real date that saves and reloads strictly to itself.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

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
    std::unique_ptr<unsigned char[]> block(new unsigned char[size == 0 ? 1 : size]);
    std::memcpy(block.get(), data, size);
    const auto length = static_cast<unsigned int>(size);

    DateTime strict(1999, 1, 2, 3, 4, 5, 6);
    const int strictResult = strict.LoadObj(length, block.get(), false);
    Check(strictResult == 0 || strictResult == -1);

    DateTime lenient(1999, 1, 2, 3, 4, 5, 6);
    const int lenientResult = lenient.LoadObj(length, block.get(), true);
    Check(lenientResult == 0 || lenientResult == -1);
    Check(lenientResult == 0 || size < 44);
    if (lenientResult != 0) {
        return 0;
    }
    Check(lenient.GetMonth() >= 1 && lenient.GetMonth() <= 12 && lenient.GetDay() >= 1 &&
          lenient.GetDay() <= lenient.GetDaysInMonth() && lenient.GetHour() <= 23 &&
          lenient.GetMinute() <= 59 && lenient.GetSecond() <= 59 &&
          lenient.GetMillisecond() <= 999);
    // A strict success means the same value as the lenient one.
    Check(strictResult != 0 || strict == lenient);
    // Reading the caches (unchecked on load) must not crash whatever they hold.
    lenient.GetWeek();
    lenient.GetDayOfWeek();

    unsigned char saved[44];
    Check(lenient.SaveObj(sizeof saved, saved, 1) == 0);
    DateTime reloaded(0.0);
    Check(reloaded.LoadObj(sizeof saved, saved, false) == 0 && reloaded == lenient);
    return 0;
}
