#pragma once

// Pins the process zone, for tests, fuzz targets and benchmarks alike: each sets the
// zone it needs and never assumes the one it was started in.

#include <cstdlib>
#include <ctime>
#include <string>

#include <ZelvorDataType/DateTime.h>

namespace ZelvorTest {

inline void PinZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

// Pins the zone for one scope, then leaves the process with no TZ of its own.
class ZoneScope {
  public:
    explicit ZoneScope(const char* zone) { PinZone(zone); }
    ~ZoneScope() {
        unsetenv("TZ");
        tzset();
    }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;
};

// "2024-03-14 15:30:45.123": a date as its text, for messages and comparisons.
inline std::string Text(const ZelvorDataType::DateTime& value) {
    return value.ToString().c_str();
}

}  // namespace ZelvorTest
