#pragma once

#include <cstddef>
#include <string>

#include <ZelvorBase/Export.h>

namespace ZelvorBase {

// An owned copy of a narrow text, handed back by value. A null argument gives "".
class ZELVOR_BASE_API ReturnString {
  public:
    explicit ReturnString(const char* text = nullptr);
    const char* c_str() const noexcept { return mText.c_str(); }
    // Length in bytes, without the terminator.
    size_t GetLength() const noexcept { return mText.size(); }

  private:
    std::string mText;
};

// An owned copy of a wide text, handed back by value. A null argument gives L"".
class ZELVOR_BASE_API ReturnWString {
  public:
    explicit ReturnWString(const wchar_t* text = nullptr);
    const wchar_t* c_str() const noexcept { return mText.c_str(); }
    // Length in characters, without the terminator.
    size_t GetLength() const noexcept { return mText.size(); }

  private:
    std::wstring mText;
};

// Character converters. wchar_t holds UTF-32 code points. Every converter accepts null
// (giving an empty text) and never fails on malformed input: a byte sequence or code
// unit that does not form a valid character becomes U+FFFD (or '?' in a narrow
// multibyte target that can't represent it). The bool flag is accepted so that
// callers written against the sibling base library compile unchanged; this
// implementation always substitutes, so the flag does not change the result.
ZELVOR_BASE_API ReturnWString UTF8ToWideChar(const char* text, bool flag);
ZELVOR_BASE_API ReturnString WideCharToUTF8(const wchar_t* text, bool flag);
// Bytes 0x00 to 0x7F map to themselves; any other byte is not ASCII and becomes U+FFFD.
ZELVOR_BASE_API ReturnWString ASCIIToWideChar(const char* text, bool flag);
// Through the multibyte encoding of the process's current C locale (LC_CTYPE).
ZELVOR_BASE_API ReturnWString MultiByteToWideChar(const char* text, bool flag);
ZELVOR_BASE_API ReturnString WideCharToMultiByte(const wchar_t* text, bool flag);
// From UTF-16 code units, terminated by a zero unit; unpaired surrogates become U+FFFD.
ZELVOR_BASE_API ReturnWString UTF16ToWideChar(const unsigned short* text, bool flag);

// The C library's description of an errno-style code ("Cannot allocate memory" for
// 12); a code the C library does not know gives its generic "Unknown error N" text.
ZELVOR_BASE_API ReturnWString GetSystemErrorDescription(unsigned int code);

}  // namespace ZelvorBase
