#pragma once

// Helpers shared by the calendar suites.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>

#include <ZelvorDataType/DateTime.h>

namespace CalendarTest {

using ZelvorDataType::DateTime;

inline std::string Text(const DateTime& value) {
    return value.ToString().c_str();
}

// The eleven words of the saved form: the one window on the week and day-of-week caches.
inline std::array<int32_t, 11> Words(const DateTime& value, int mode = 0) {
    std::array<int32_t, 11> words{};
    value.SaveObj(sizeof words, words.data(), mode);
    return words;
}

// Pins the process zone for one scope; the suites run with no TZ of their own.
class ZoneScope {
  public:
    explicit ZoneScope(const char* zone) { Set(zone); }
    ~ZoneScope() { Set(nullptr); }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;

  private:
    static void Set(const char* zone) {
        zone != nullptr ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
    }
};

}  // namespace CalendarTest
