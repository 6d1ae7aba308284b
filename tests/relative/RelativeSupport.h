#pragma once

// Helpers of the relative-time suites: zones pinned per test, dates built and printed.

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include <ZelvorDataType/DateTime.h>

namespace ZelvorRelativeTest {

using ZelvorDataType::DateTime;

// Pins the process's zone for one test and restores the one before it.
class ZoneScope {
  public:
    explicit ZoneScope(const char* zone) {
        const char* old = std::getenv("TZ");
        mHadZone = old != nullptr;
        if (mHadZone) {
            mOldZone = old;
        }
        Set(zone);
    }
    ~ZoneScope() {
        if (mHadZone) {
            Set(mOldZone.c_str());
        } else {
            unsetenv("TZ");
            tzset();
        }
    }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;

  private:
    static void Set(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    bool mHadZone = false;
    std::string mOldZone;
};

// A zone east of UTC without daylight saving, and one west of it with daylight saving.
inline constexpr const char* kZones[] = {"Asia/Tokyo", "America/New_York"};

// The fields of a date, for tables; DateTime has no default constructor.
struct Ymd {
    int year;
    int month;
    int day;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;

    DateTime Make() const { return DateTime(year, month, day, hour, minute, second, millisecond); }
};

inline std::string Text(const DateTime& date) {
    return date.ToString().c_str();
}

// Thursday 2024-03-14 15:30:45.123, the reference time of most cases.
inline const Ymd kThursday{2024, 3, 14, 15, 30, 45, 123};

}  // namespace ZelvorRelativeTest
