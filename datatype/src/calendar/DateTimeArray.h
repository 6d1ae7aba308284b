#pragma once

#include <cstddef>

#include <ZelvorDataType/DateTime.h>

namespace ZelvorDataType::internal {

// Arrays of DateTime that the library hands to callers, who release them with
// delete[]. Every entry starts as the empty date, 1899-12-30 00:00:00.000.
struct DateTimeArray {
    // Throws std::bad_alloc (or std::bad_array_new_length) like any new-expression.
    static DateTime* New(size_t count) { return new DateTime[count]; }
};

}  // namespace ZelvorDataType::internal
