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

TEST(ExceptionImpl, ContractRefusalCarriesCodeAndDescription) {
    ExceptionImpl<ContractManagerAllocException> e(L"Refused.", ENOMEM);
    EXPECT_EQ(e.GetDomain(), MESSAGE_DOMAIN_UNKNOWN);
    EXPECT_EQ(e.GetID(), ENOMEM);
    const std::wstring expected =
        std::wstring(L"Refused.\n") + ZelvorBase::GetSystemErrorDescription(ENOMEM).c_str();
    EXPECT_EQ(expected, e.GetMessage());
}

TEST(ExceptionImpl, CaughtAsMessageAfterThrowByValue) {
    try {
        throw ExceptionImpl<ContractManagerAllocException>(L"x", 0xFFFFFFFFu);
    } catch (const Message& m) {
        EXPECT_EQ(m.GetID(), -1);  // the code's bits, seen as an int
        EXPECT_EQ(std::wstring(m.GetMessage()).rfind(L"x\n", 0), 0u);
    }
}

TEST(Guid, NullIsAllZero) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&ZelvorBase::GUID_NULL);
    for (size_t i = 0; i < sizeof(_GUID); ++i) {
        EXPECT_EQ(bytes[i], 0) << i;
    }
}

}  // namespace
