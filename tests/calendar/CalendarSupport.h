#pragma once

// Helpers shared by the calendar suites.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <ZelvorDataType/DateTime.h>

#include "support/Cases.h"
#include "support/Zone.h"

namespace CalendarTest {

using ZelvorDataType::DateTime;

using ZelvorTest::Numbers;
using ZelvorTest::Text;
using ZelvorTest::ZoneScope;

// The eleven words of the saved form: the one window on the week and day-of-week caches.
inline std::array<int32_t, 11> Words(const DateTime& value, int mode = 0) {
    std::array<int32_t, 11> words{};
    value.SaveObj(sizeof words, words.data(), mode);
    return words;
}

// A date from "year month day [hour minute second millisecond]"; the fields left out are 0.
inline DateTime DateOf(const std::string& field) {
    std::vector<long long> n = Numbers(field);
    n.resize(7, 0);
    return DateTime(static_cast<int>(n[0]), static_cast<int>(n[1]), static_cast<int>(n[2]),
                    static_cast<int>(n[3]), static_cast<int>(n[4]), static_cast<int>(n[5]),
                    static_cast<int>(n[6]));
}

// A span from "days hours minutes seconds milliseconds", or from one count of milliseconds.
inline ZelvorDataType::TimeSpan SpanOf(const std::string& field) {
    const std::vector<long long> n = Numbers(field);
    if (n.size() != 5) {
        return ZelvorDataType::TimeSpan(n.empty() ? 0 : n[0]);
    }
    return ZelvorDataType::TimeSpan(static_cast<int>(n[0]), static_cast<int>(n[1]),
                                    static_cast<int>(n[2]), static_cast<int>(n[3]),
                                    static_cast<int>(n[4]));
}

}  // namespace CalendarTest
