#pragma once

#include <cstdint>

#include <ZelvorBase/Export.h>

// A 16-byte globally unique identifier, in the classic four-part layout.
struct _GUID {  // NOLINT(bugprone-reserved-identifier): the name callers know
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
};
static_assert(sizeof(_GUID) == 16, "a GUID is 16 bytes");

namespace ZelvorBase {
// The all-zero GUID.
ZELVOR_BASE_API extern const _GUID GUID_NULL;
}  // namespace ZelvorBase
