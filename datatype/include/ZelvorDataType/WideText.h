#pragma once

#include <string>

#include <ZelvorBase/Buffer.h>

namespace ZelvorDataType {

// A wide text whose memory comes from a Buffer (and is never freed on its own) or, with
// a null Buffer, from the heap. Characters are UTF-32 code points, 4 bytes each.
using WideText =
    std::basic_string<wchar_t, std::char_traits<wchar_t>, ZelvorBase::Allocator<wchar_t>>;

}  // namespace ZelvorDataType
