#pragma once

// Marks the declarations that libZelvorBase exports. The library is built with hidden
// visibility, so anything a caller links against must carry this macro. Templates that
// are instantiated in callers (ExceptionImpl, SmartPtrI) carry it too, so that their
// type information is shared by every library that throws or catches them.
#if defined(__GNUC__) || defined(__clang__)
#define ZELVOR_BASE_API __attribute__((visibility("default")))
#else
#define ZELVOR_BASE_API
#endif
