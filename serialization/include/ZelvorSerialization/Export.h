#pragma once

// Marks the declarations that the serialization library exports (see ZelvorBase/Export.h).
#if defined(__GNUC__) || defined(__clang__)
#define ZELVOR_SERIALIZATION_API __attribute__((visibility("default")))
#else
#define ZELVOR_SERIALIZATION_API
#endif
