#pragma once

// Helpers shared by the calendar suites.

#include <array>
#include <cstdint>
#include <string>

#include <ZelvorDataType/DateTime.h>

#include "support/Zone.h"

namespace CalendarTest {

using ZelvorDataType::DateTime;

using ZelvorTest::Text;
using ZelvorTest::ZoneScope;

// The eleven words of the saved form: the one window on the week and day-of-week caches.
inline std::array<int32_t, 11> Words(const DateTime& value, int mode = 0) {
    std::array<int32_t, 11> words{};
    value.SaveObj(sizeof words, words.data(), mode);
    return words;
}

}  // namespace CalendarTest
