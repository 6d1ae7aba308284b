#pragma once

// Pins the process zone, for tests, fuzz targets and benchmarks alike: each sets the
// zone it needs and never assumes the one it was started in.

#include <cstdlib>
#include <ctime>

#include "Text.h"  // Text(DateTime), for the suites that compare dates in zones

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

}  // namespace ZelvorTest
