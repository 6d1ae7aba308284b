// Character conversions, on ICU's UTF converters and the C library's multibyte
// functions. wchar_t is 32 bits wide on every platform we build for.
#include <ZelvorBase/ReturnString.h>

#include <unicode/ustring.h>
#include <unicode/utypes.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <cwchar>
#include <string>

static_assert(sizeof(wchar_t) == 4, "wide characters are UTF-32 code points");

namespace ZelvorBase {

ReturnString::ReturnString(const char* text) : mText(text != nullptr ? text : "") {}
ReturnWString::ReturnWString(const wchar_t* text) : mText(text != nullptr ? text : L"") {}

namespace {

constexpr UChar32 kReplacement = 0xFFFD;

// UTF-16 to UTF-32, substituting U+FFFD for unpaired surrogates.
std::wstring Utf16ToWide(const std::u16string& utf16) {
    std::wstring wide(utf16.size(), L'\0');  // never more code points than units
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF32WithSub(reinterpret_cast<UChar32*>(wide.data()), static_cast<int32_t>(wide.size()),
                        &length, utf16.data(), static_cast<int32_t>(utf16.size()), kReplacement,
                        nullptr, &status);
    if (U_FAILURE(status)) {
        return {};
    }
    wide.resize(static_cast<size_t>(length));
    return wide;
}

// UTF-32 to UTF-16, substituting U+FFFD for values that are not Unicode scalar values.
std::u16string WideToUtf16(const wchar_t* text) {
    const size_t n = std::wcslen(text);
    std::u16string utf16(2 * n, u'\0');
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF32WithSub(utf16.data(), static_cast<int32_t>(utf16.size()), &length,
                          reinterpret_cast<const UChar32*>(text), static_cast<int32_t>(n),
                          kReplacement, nullptr, &status);
    if (U_FAILURE(status)) {
        return {};
    }
    utf16.resize(static_cast<size_t>(length));
    return utf16;
}

// ICU measures lengths in int32_t; longer texts are converted in no case we serve, and
// are refused with an empty result rather than truncated silently.
bool FitsIcu(size_t n) {
    return n < static_cast<size_t>(INT32_MAX) / 4;
}

}  // namespace

ReturnWString UTF8ToWideChar(const char* text, bool /*flag*/) {
    if (text == nullptr || !FitsIcu(std::strlen(text))) {
        return ReturnWString();
    }
    const size_t n = std::strlen(text);
    std::u16string utf16(n, u'\0');  // never more UTF-16 units than UTF-8 bytes
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(utf16.data(), static_cast<int32_t>(utf16.size()), &length, text,
                         static_cast<int32_t>(n), kReplacement, nullptr, &status);
    if (U_FAILURE(status)) {
        return ReturnWString();
    }
    utf16.resize(static_cast<size_t>(length));
    return ReturnWString(Utf16ToWide(utf16).c_str());
}

ReturnString WideCharToUTF8(const wchar_t* text, bool /*flag*/) {
    if (text == nullptr || !FitsIcu(std::wcslen(text))) {
        return ReturnString();
    }
    const std::u16string utf16 = WideToUtf16(text);
    std::string utf8(3 * utf16.size(), '\0');  // at most 3 bytes per UTF-16 unit
    int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(utf8.data(), static_cast<int32_t>(utf8.size()), &length, utf16.data(),
                       static_cast<int32_t>(utf16.size()), kReplacement, nullptr, &status);
    if (U_FAILURE(status)) {
        return ReturnString();
    }
    utf8.resize(static_cast<size_t>(length));
    return ReturnString(utf8.c_str());
}

ReturnWString ASCIIToWideChar(const char* text, bool /*flag*/) {
    if (text == nullptr) {
        return ReturnWString();
    }
    std::wstring wide;
    for (const char* p = text; *p != '\0'; ++p) {
        const auto byte = static_cast<unsigned char>(*p);
        wide += byte < 0x80 ? static_cast<wchar_t>(byte) : static_cast<wchar_t>(kReplacement);
    }
    return ReturnWString(wide.c_str());
}

ReturnWString MultiByteToWideChar(const char* text, bool /*flag*/) {
    if (text == nullptr) {
        return ReturnWString();
    }
    std::wstring wide;
    std::mbstate_t state{};
    const char* p = text;
    size_t left = std::strlen(text);
    while (left > 0) {
        wchar_t c = 0;
        const size_t used = std::mbrtowc(&c, p, left, &state);
        if (used == static_cast<size_t>(-1) || used == static_cast<size_t>(-2)) {
            // An invalid or cut-off sequence: replace one byte and start afresh.
            wide += static_cast<wchar_t>(kReplacement);
            state = std::mbstate_t{};
            ++p;
            --left;
            continue;
        }
        wide += c;
        p += used;
        left -= used;
    }
    return ReturnWString(wide.c_str());
}

ReturnString WideCharToMultiByte(const wchar_t* text, bool /*flag*/) {
    if (text == nullptr) {
        return ReturnString();
    }
    std::string narrow;
    std::mbstate_t state{};
    char bytes[MB_LEN_MAX];
    for (const wchar_t* p = text; *p != L'\0'; ++p) {
        const size_t used = std::wcrtomb(bytes, *p, &state);
        if (used == static_cast<size_t>(-1)) {
            narrow += '?';
            state = std::mbstate_t{};
            continue;
        }
        narrow.append(bytes, used);
    }
    return ReturnString(narrow.c_str());
}

ReturnWString UTF16ToWideChar(const unsigned short* text, bool /*flag*/) {
    if (text == nullptr) {
        return ReturnWString();
    }
    std::u16string utf16;
    for (const unsigned short* p = text; *p != 0; ++p) {
        utf16 += static_cast<char16_t>(*p);
    }
    return ReturnWString(Utf16ToWide(utf16).c_str());
}

namespace {
// strerror_r comes in two shapes; each overload picks up the one the C library has.
[[maybe_unused]] const char* ErrorText(int result, const char* buffer) {
    return result == 0 ? buffer : nullptr;
}
[[maybe_unused]] const char* ErrorText(const char* result, const char* /*buffer*/) {
    return result;
}
}  // namespace

ReturnWString GetSystemErrorDescription(unsigned int code) {
    char buffer[256] = {};
    const char* text = ErrorText(strerror_r(static_cast<int>(code), buffer, sizeof buffer), buffer);
    if (text == nullptr) {
        return ReturnWString();
    }
    // The C library's messages are plain ASCII in every locale we run under, but take
    // them through the multibyte converter so a translated catalogue still reads right.
    return MultiByteToWideChar(text, false);
}

}  // namespace ZelvorBase
