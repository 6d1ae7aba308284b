#pragma once

// Helpers of the relative-time suites: zones pinned per test, dates built and printed.

#include <gtest/gtest.h>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/ZelvorTime.h>

#include "support/Zone.h"

namespace ZelvorRelativeTest {

using ZelvorDataType::DateTime;

using ZelvorTest::PinZone;
using ZelvorTest::Text;

// A zone east of UTC without daylight saving, and one west of it with daylight saving.
inline constexpr const char* kZones[] = {"Asia/Tokyo", "America/New_York"};

// The fields of a date, for tables (DateTime has no default constructor).
struct Ymd {
    int year, month, day, hour = 0, minute = 0, second = 0, millisecond = 0;
    DateTime Make() const { return DateTime(year, month, day, hour, minute, second, millisecond); }
};

// Thursday 2024-03-14 15:30:45.123, the reference time of most cases.
inline const Ymd kThursday{2024, 3, 14, 15, 30, 45, 123};

// A rule of `kind` with its offsets, as a ZelvorTime.
inline ZelvorDataType::ZelvorTime Dynamic(ZelvorDataType::DYNAMIC_TIME kind, int dayOffset = 0,
                                          short monthOffset = 0) {
    ZelvorDataType::ZelvorTime value;
    value.PutDynamicTime(kind);
    value.PutDynamicDayOffset(dayOffset);
    value.PutDynamicMonthOffset(monthOffset);
    return value;
}

}  // namespace ZelvorRelativeTest
