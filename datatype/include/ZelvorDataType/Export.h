#pragma once

// Marks the declarations that libZelvorDataType exports. The library is built with hidden
// visibility: public classes, their implementation classes named by the interface, free
// functions and the exception tags carry this macro.
#if defined(__GNUC__) || defined(__clang__)
#define ZELVOR_DATATYPE_API __attribute__((visibility("default")))
#else
#define ZELVOR_DATATYPE_API
#endif
