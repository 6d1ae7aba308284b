#pragma once

// Marks the declarations that libZelvorInterop exports; everything else is hidden.
#if defined(__GNUC__) || defined(__clang__)
#define ZELVOR_INTEROP_API __attribute__((visibility("default")))
#else
#define ZELVOR_INTEROP_API
#endif
