#pragma once

#include <cstddef>

#include <ZelvorBase/Message.h>

namespace ZelvorDataType::internal {

// Every collection refuses an index at or above its count with the same message, so that
// a caller can catch one kind of error for all of them.
inline void CheckCollectionIndex(size_t index, size_t count) {
    if (index >= count) {
        throw ZelvorBase::ExceptionImpl<ZelvorBase::Message>(
            L"use out of bound index to access vector");
    }
}

}  // namespace ZelvorDataType::internal
