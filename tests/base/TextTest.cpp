#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include <ZelvorBase/ZelvorBase.h>

namespace {

using namespace ZelvorBase;

TEST(ReturnString, NullGivesEmptyAndCopiesAreOwned) {
    EXPECT_STREQ(ReturnString(nullptr).c_str(), "");
    EXPECT_EQ(ReturnString().GetLength(), 0u);
    EXPECT_STREQ(ReturnWString(nullptr).c_str(), L"");
    std::wstring source = L"abc";
    ReturnWString copy(source.c_str());
    source[0] = L'z';
    EXPECT_STREQ(copy.c_str(), L"abc");
    EXPECT_EQ(copy.GetLength(), 3u);
}

TEST(Converters, Utf8RoundTripsAndSubstitutesMalformedInput) {
    const struct {
        const char* utf8;
        const wchar_t* wide;
        const char* back;  // what WideCharToUTF8 gives for `wide`
    } cases[] = {
        {"", L"", ""},
        {"plain", L"plain", "plain"},
        {"\xE2\x82\xAC 5", L"\u20AC 5", "\xE2\x82\xAC 5"},
        {"\xF0\x9F\x98\x80", L"\U0001F600", "\xF0\x9F\x98\x80"},
        {"a\xFFz", L"a\uFFFDz", "a\xEF\xBF\xBDz"},                  // stray byte
        {"\xE2\x82", L"\uFFFD", "\xEF\xBF\xBD"},                    // cut-off sequence
        {"\xC0\xAF", L"\uFFFD\uFFFD", "\xEF\xBF\xBD\xEF\xBF\xBD"},  // overlong
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(UTF8ToWideChar(c.utf8, true).c_str(), c.wide) << c.utf8;
        EXPECT_STREQ(WideCharToUTF8(c.wide, false).c_str(), c.back) << c.utf8;
    }
    EXPECT_STREQ(UTF8ToWideChar(nullptr, true).c_str(), L"");
    EXPECT_STREQ(WideCharToUTF8(nullptr, false).c_str(), "");
    // Wide values that are not characters (a lone surrogate, beyond U+10FFFF) too.
    const wchar_t bad[] = {L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), 0};
    EXPECT_STREQ(WideCharToUTF8(bad, false).c_str(), "a\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Converters, AsciiMultiByteAndUtf16) {
    EXPECT_STREQ(ASCIIToWideChar("Az~", false).c_str(), L"Az~");
    EXPECT_STREQ(ASCIIToWideChar("a\xE9", false).c_str(), L"a\uFFFD");
    // The test process runs in the "C" locale: ASCII passes, the rest is substituted.
    EXPECT_STREQ(MultiByteToWideChar("abc", false).c_str(), L"abc");
    EXPECT_STREQ(WideCharToMultiByte(L"abc", false).c_str(), "abc");
    EXPECT_STREQ(WideCharToMultiByte(L"a\u20AC", false).c_str(), "a?");
    const unsigned short utf16[] = {'h', 0xD83D, 0xDE00, 0xDC00, 'i', 0};
    EXPECT_STREQ(UTF16ToWideChar(utf16, false).c_str(), L"h\U0001F600\uFFFDi");
    EXPECT_STREQ(UTF16ToWideChar(nullptr, false).c_str(), L"");
}

struct SomeTag : Message {};

TEST(Message, NoTextReadsAsEmpty) {
    Message m;
    EXPECT_STREQ(m.GetMessage(), L"");
    m.SetMessage(L"hello");
    m.SetMessage(nullptr);
    EXPECT_STREQ(m.GetMessage(), L"");
}

TEST(ExceptionImpl, TextConstructorsSetUnknownDomainAndIdMinusOne) {
    const struct {
        ExceptionImpl<SomeTag> made;
        const wchar_t* text;
    } cases[] = {
        {ExceptionImpl<SomeTag>(L"Invalid parameter"), L"Invalid parameter"},
        {ExceptionImpl<SomeTag>(static_cast<const wchar_t*>(nullptr)), L""},
        {ExceptionImpl<SomeTag>("Variant types incomparable"), L"Variant types incomparable"},
        {ExceptionImpl<SomeTag>("gr\xC3\xBC\xC3\x9F"), L"gr\u00FC\u00DF"},
        {ExceptionImpl<SomeTag>(static_cast<const char*>(nullptr)), L""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.made.GetDomain(), MESSAGE_DOMAIN_UNKNOWN);
        EXPECT_EQ(c.made.GetID(), -1);
        EXPECT_STREQ(c.made.GetMessage(), c.text);
    }
}

// The code is the id, its bits seen as an int, and the system's description follows the
// text on a line of its own; thrown by value, it is caught as a Message.
TEST(ExceptionImpl, ContractRefusalCarriesCodeAndDescription) {
    try {
        throw ExceptionImpl<ContractManagerAllocException>(L"Refused.", ENOMEM);
    } catch (const Message& m) {
        EXPECT_EQ(m.GetDomain(), MESSAGE_DOMAIN_UNKNOWN);
        EXPECT_EQ(m.GetID(), ENOMEM);
        EXPECT_STREQ(m.GetMessage(), L"Refused.\nCannot allocate memory");
    }
    const ExceptionImpl<ContractManagerAllocException> unknown(L"x", 0xFFFFFFFFu);
    EXPECT_EQ(unknown.GetID(), -1);
    EXPECT_EQ(std::wstring(unknown.GetMessage()).rfind(L"x\n", 0), 0u);
    EXPECT_GT(GetSystemErrorDescription(0xFFFFFFF0u).GetLength(), 0u);  // unknown codes too
}

}  // namespace
