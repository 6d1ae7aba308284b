#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include <ZelvorBase/ZelvorBase.h>

namespace {

using ZelvorBase::ContractManagerAllocException;
using ZelvorBase::ExceptionImpl;
using ZelvorBase::Message;
using ZelvorBase::MESSAGE_DOMAIN_UNKNOWN;

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
}

}  // namespace
