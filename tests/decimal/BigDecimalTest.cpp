#include <gtest/gtest.h>

#include <unicode/uloc.h>

#include <cmath>
#include <limits>
#include <new>
#include <string>
#include <utility>

#include <ZelvorDataType/BigDecimal.h>
#include "support/Cases.h"
#include "support/TestDoubles.h"
#include "support/Text.h"

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::BigDecimalException;
using ZelvorDataType::BigDecimalHandle;
using ZelvorTest::Text;
using Thrown = ZelvorBase::ExceptionImpl<BigDecimalException>;

// The message of the BigDecimalException that `f` throws, or "(none)".
template <class F>
std::wstring MessageOf(F&& f) {
    try {
        f();
    } catch (const Thrown& e) {
        EXPECT_EQ(e.GetDomain(), ZelvorBase::MESSAGE_DOMAIN_UNKNOWN);
        EXPECT_EQ(e.GetID(), -1);
        return e.GetMessage();
    }
    return L"(none)";
}

TEST(BigDecimalParse, Grammar) {
    ZelvorBase::Buffer arena;
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigDecimalParse.cases")) {
        SCOPED_TRACE(c.where);
        const BigDecimal v(c[0].c_str());
        EXPECT_EQ(Text(v), c[1]);
        EXPECT_EQ(v.Scale(), std::stoi(c[2]));
        if (c.fields.size() > 3) {
            EXPECT_EQ(v.Precision(), std::stoi(c[3]));
        }
        if (c.fields.size() > 4) {
            const BigDecimal inArena(c[0].c_str(), &arena);
            EXPECT_EQ(Text(inArena), c[4]);
            EXPECT_EQ(inArena.Precision(), std::stoi(c[5]));
        }
    }
    // Blanks around a number, which the table's reader would trim.
    for (const char* text : {" 1", "1 "}) {
        EXPECT_EQ(BigDecimal(text).Scale(), BigDecimal::ScaleInvalid) << text;
    }
    EXPECT_TRUE(BigDecimal(static_cast<const char*>(nullptr)).IsInvalid());
    EXPECT_TRUE(BigDecimal(static_cast<const wchar_t*>(nullptr)).IsInvalid());
    EXPECT_EQ(BigDecimal("1e-2147483647").Scale(), 2147483647);
}

TEST(BigDecimalParse, NumbersAndWideText) {
    const double infinity = std::numeric_limits<double>::infinity();
    const int lowest = std::numeric_limits<int>::min();
    struct Case {
        BigDecimal value;
        const char* printed;
        int scale;
    } cases[] = {{BigDecimal(1.5), "1.500000", 6},
                 {BigDecimal(1.0), "1.000000", 6},
                 {BigDecimal(0.0), "0", 0},
                 {BigDecimal(1e-7), "0", 0},
                 {BigDecimal(infinity), "(invalid)", -2},
                 {BigDecimal(std::nan("")), "(invalid)", -2},
                 {BigDecimal(-42), "-42", 0},
                 {BigDecimal(lowest), "-2147483648", 0},
                 {BigDecimal(L"-1.25"), "-1.25", 2},
                 {BigDecimal(L"1\u00A0000"), "(invalid)", -2}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.printed);
        EXPECT_EQ(Text(c.value), c.printed);
        EXPECT_EQ(c.value.Scale(), c.scale);
    }
    // The largest double prints 309 integer digits.
    EXPECT_EQ(BigDecimal(std::numeric_limits<double>::max()).Precision(), 315);
}

TEST(BigDecimalState, WrittenOnce) {
    BigDecimal empty;
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_TRUE(empty.IsInvalid());
    EXPECT_EQ(empty.Scale(), -1);
    const BigDecimal invalid("x");
    EXPECT_FALSE(invalid.IsEmpty());
    EXPECT_TRUE(invalid.IsInvalid());

    const std::wstring kInvalid = L"Invalid BigDecimal";
    const std::wstring kLocked = L"Cannot change BigDecimal value after it is initialized";
    const BigDecimal one("1");
    EXPECT_EQ(MessageOf([&] { (void)empty.Signum(); }), kInvalid);
    EXPECT_EQ(MessageOf([&] { (void)(invalid == one); }), kInvalid);
    EXPECT_EQ(MessageOf([&] { (void)(one + invalid); }), kInvalid);
    EXPECT_EQ(MessageOf([&] { (void)invalid.ToWString(0x407); }), kInvalid);
    EXPECT_EQ(MessageOf([&] { (void)empty.MantissaToWString(); }), kInvalid);

    const BigDecimal invalidCopy(invalid);  // no throw: the state is copied
    EXPECT_EQ(invalidCopy.Scale(), -2);
    BigDecimal target;
    target = one;
    EXPECT_EQ(Text(target), "1");
    EXPECT_EQ(MessageOf([&] { target = one; }), kLocked);
    BigDecimal& alias = target;
    EXPECT_EQ(MessageOf([&] { target = alias; }), kLocked);
    BigDecimal invalidTarget("?");
    EXPECT_EQ(MessageOf([&] { invalidTarget = one; }), kLocked);
    EXPECT_EQ(MessageOf([&] { target._StrToBigDecimal("2"); }), kLocked);
    EXPECT_EQ(one.MantissaToWString().GetLength(), 0u);
}

TEST(BigDecimalState, SwapKeepsEachBufferWithItsDigits) {
    ZelvorTest::RefusingBuffer arena;
    BigDecimal heap("1.5");
    BigDecimal inArena("-2", &arena);
    ZelvorDataType::swap(heap, inArena);
    EXPECT_EQ(Text(heap), "-2");
    EXPECT_EQ(Text(inArena), "1.5");
    ZelvorDataType::swap(&heap, &heap);
    ZelvorDataType::swap(&heap, &inArena);
    EXPECT_EQ(Text(heap), "1.5");
    // Destroying both must free exactly the heap digits (checked by the leak checker).
}

TEST(BigDecimalArithmetic, ZerosScalesAndSigns) {
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigDecimalArithmetic.cases")) {
        SCOPED_TRACE(c.where);
        const BigDecimal a(c[0].c_str());
        const BigDecimal b(c[2].c_str());
        const BigDecimalHandle r = c[1] == "+"   ? a + b
                                   : c[1] == "-" ? a - b
                                   : c[1] == "*" ? a * b
                                                 : a / b;
        EXPECT_EQ(Text(*r), c[3]);
        EXPECT_EQ(r->Scale(), std::stoi(c[4]));
        EXPECT_EQ(r->Signum(), std::stoi(c[5]));
    }
    // Results are values like any other: (1.5 - 1.5) + 3 is 3.0.
    const BigDecimal x("1.5");
    const BigDecimal three("3");
    EXPECT_EQ(Text(*(*(x - x) + three)), "3.0");
    EXPECT_TRUE(*(BigDecimal("0.04") + BigDecimal("0.05")) > BigDecimal("0.07"));
}

TEST(BigDecimalArithmetic, DivideChecksInOrder) {
    const BigDecimal one("1");
    const BigDecimal zero("0.0");
    const BigDecimal three("3");
    const BigDecimal invalid("bad");
    const BigDecimal computedZero(*(three - three));
    const BigDecimal nothing(*(one / BigDecimal("7")));  // sign 1, no digits
    struct Case {
        const BigDecimal* a;
        const BigDecimal* b;
        int scale;
        const wchar_t* message;
        const char* printed;
    } cases[] = {{&invalid, &zero, -5, L"Invalid BigDecimal", nullptr},
                 {&one, &invalid, -5, L"Invalid BigDecimal", nullptr},
                 {&one, &zero, -2, L"Invalid scale request", nullptr},
                 {&one, &zero, 2, L"Divide by Zero", nullptr},
                 {&one, &computedZero, -1, L"Divide by Zero", nullptr},
                 {&one, &nothing, 3, L"Divide by Zero", nullptr},
                 {&one, &three, 5, L"(none)", "0.33333"},
                 {&one, &three, -1, L"(none)", "0"},
                 {&one, &three, 0, L"(none)", "0"},
                 {&computedZero, &three, 4, L"(none)", "0"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.scale);
        BigDecimalHandle r;
        EXPECT_EQ(MessageOf([&] { r = c.a->Divide(*c.b, c.scale); }), c.message);
        if (c.printed != nullptr) {
            EXPECT_EQ(Text(*r), c.printed);
        }
    }
    EXPECT_EQ(MessageOf([&] { (void)(one / zero); }), L"Divide by Zero");
    EXPECT_EQ(Text(*BigDecimal("1.234").Divide(BigDecimal("2"), 1)), "0.6");
}

TEST(BigDecimalCompare, ByValueAcrossScales) {
    const BigDecimal third(*(BigDecimal("1") / BigDecimal("3")));        // 0, sign 1
    const BigDecimal minusThird(*(BigDecimal("-1") / BigDecimal("3")));  // 0, sign -1
    struct Case {
        BigDecimal a;
        BigDecimal b;
        int expected;
    } cases[] = {{BigDecimal("-2"), BigDecimal("-10"), 1},
                 {BigDecimal("0"), BigDecimal("0.00"), 0},
                 {BigDecimal("1.50"), BigDecimal("1.5"), 0},
                 {BigDecimal("0.05"), BigDecimal("5e-2"), 0},
                 {BigDecimal("1e3"), BigDecimal("999.999"), 1},
                 {BigDecimal("-1e3"), BigDecimal("-999.999"), -1},
                 {BigDecimal(third), BigDecimal("0"), 1},
                 {BigDecimal(minusThird), BigDecimal("0"), -1},
                 {BigDecimal(third), BigDecimal("0.005"), -1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(Text(c.a) + " vs " + Text(c.b));
        EXPECT_EQ(c.a.CompareTo(c.b), c.expected);
        EXPECT_EQ(c.b.CompareTo(c.a), -c.expected);
        EXPECT_EQ(c.a == c.b, c.expected == 0);
        EXPECT_EQ(c.a < c.b, c.expected < 0);
        EXPECT_EQ(c.a > c.b, c.expected > 0);
    }
}

TEST(BigDecimalText, DigitsOnEachSide) {
    ZelvorBase::Buffer arena;
    struct Case {
        BigDecimal value;
        const char* integer;
        const char* fraction;
    } cases[] = {{BigDecimal("123.45"), "123", "45"},
                 {BigDecimal("0.5"), "0", "5"},
                 {BigDecimal("0.5", &arena), "0", "5"},
                 {BigDecimal("1.50"), "1", "50"},
                 {BigDecimal("12"), "12", ""},
                 {BigDecimal("0"), "0", "0"},
                 {BigDecimal("007.5"), "007", "5"},
                 {BigDecimal(*(BigDecimal("5") * BigDecimal("0.01"))), "0", "05"},
                 {BigDecimal(*(BigDecimal("1") / BigDecimal("3"))), "0", ""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(Text(c.value));
        EXPECT_STREQ(c.value.GetIntegerDigits().c_str(), c.integer);
        EXPECT_STREQ(c.value.GetFractionDigits().c_str(), c.fraction);
    }
}

TEST(BigDecimalText, LocaleSeparator) {
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigDecimalLocale.cases")) {
        SCOPED_TRACE(c.where);
        const auto lcid = static_cast<unsigned int>(std::stoul(c[1], nullptr, 16));
        EXPECT_EQ(std::wstring(BigDecimal(c[0].c_str()).ToWString(lcid).c_str()),
                  std::wstring(c[2].begin(), c[2].end()));
    }
    EXPECT_STREQ(BigDecimal("-0.25").ToWString().c_str(), L"-0.25");

    // 0 and 0x400 follow the default locale.
    const std::string saved = uloc_getDefault();
    UErrorCode status = U_ZERO_ERROR;
    uloc_setDefault("de_DE", &status);
    ASSERT_TRUE(U_SUCCESS(status));
    const std::wstring german0 = BigDecimal("2.5").ToWString(0).c_str();
    const std::wstring german400 = BigDecimal("2.5").ToWString(0x400).c_str();
    uloc_setDefault("en_US", &status);
    const std::wstring english = BigDecimal("2.5").ToWString(0).c_str();
    uloc_setDefault(saved.c_str(), &status);
    EXPECT_EQ(german0, L"2,5");
    EXPECT_EQ(german400, L"2,5");
    EXPECT_EQ(english, L"2.5");
}

TEST(BigDecimalMemory, ResultsComeFromTheLeftOperandsBuffer) {
    ZelvorTest::RefusingBuffer arena;
    const BigDecimal a("12.5", &arena);
    const BigDecimal b("0.5");
    const size_t before = arena.Calls();
    BigDecimalHandle fromArena = a * b;  // value, BigInt and digits: three blocks
    EXPECT_EQ(arena.Calls(), before + 3);
    EXPECT_EQ(Text(*fromArena), "6.25");
    BigDecimalHandle fromHeap = b - a;
    EXPECT_EQ(arena.Calls(), before + 3);
    EXPECT_EQ(Text(*fromHeap), "-12.0");
    // A refusal of any of the three blocks surfaces as std::bad_alloc; parsing and copies
    // under refusals, and what is left behind, are driven in the fault suite.
    for (size_t refuse = 1; refuse <= 3; ++refuse) {
        arena.RefuseFrom(arena.Calls() + refuse);
        EXPECT_THROW((void)(a + b), std::bad_alloc);
        arena.RefuseFrom(0);
    }
    BigDecimal* released = fromHeap.Release();
    EXPECT_FALSE(fromHeap);
    delete released;
}

}  // namespace
