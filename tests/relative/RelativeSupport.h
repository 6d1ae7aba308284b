#pragma once

// Helpers of the relative-time suites: zones pinned per test, dates built, read and
// printed, and the names of kinds and units that tables of cases use.

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/ZelvorTime.h>

#include "support/Cases.h"
#include "support/Schedules.h"
#include "support/Zone.h"

namespace ZelvorRelativeTest {

using ZelvorDataType::DateTime;

using ScheduleTest::T;
using ZelvorTest::PinZone;
using ZelvorTest::ReadCases;
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

// The value `text` names: names from `names` joined by '+' ("TODAY+BUSINESS_DAY"), their
// values or'ed together, or a number ("0x1FF") standing for itself.
inline int Named(const std::string& text,
                 std::initializer_list<std::pair<std::string, int>> names) {
    int value = 0;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, '+');) {
        const auto named = std::find_if(names.begin(), names.end(),
                                        [&](const auto& name) { return name.first == part; });
        value |= named != names.end() ? named->second : std::stoi(part, nullptr, 0);
    }
    return value;
}

// A rule's kind and flags by their names without "DYNAMIC_TIME_".
inline ZelvorDataType::DYNAMIC_TIME Kind(const std::string& text) {
    using namespace ZelvorDataType;
    return static_cast<DYNAMIC_TIME>(Named(text, {{"NONE", DYNAMIC_TIME_NONE},
                                                  {"LATEST", DYNAMIC_TIME_LATEST},
                                                  {"EARLIEST", DYNAMIC_TIME_EARLIEST},
                                                  {"NOW", DYNAMIC_TIME_NOW},
                                                  {"TODAY", DYNAMIC_TIME_TODAY},
                                                  {"THIS_WEEK", DYNAMIC_TIME_THIS_WEEK},
                                                  {"THIS_MONTH", DYNAMIC_TIME_THIS_MONTH},
                                                  {"THIS_QUARTER", DYNAMIC_TIME_THIS_QUARTER},
                                                  {"THIS_YEAR", DYNAMIC_TIME_THIS_YEAR},
                                                  {"THIS_MONDAY", DYNAMIC_TIME_THIS_MONDAY},
                                                  {"THIS_WEDNESDAY", DYNAMIC_TIME_THIS_WEDNESDAY},
                                                  {"FIXED_DATE", DYNAMIC_TIME_FIXED_DATE},
                                                  {"RELATIVE_HOUR", DYNAMIC_TIME_RELATIVE_HOUR},
                                                  {"RELATIVE_MINUTE", DYNAMIC_TIME_RELATIVE_MINUTE},
                                                  {"BUSINESS_DAY", DYNAMIC_TIME_BUSINESS_DAY}}));
}

}  // namespace ZelvorRelativeTest
