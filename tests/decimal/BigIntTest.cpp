#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/BigInt.h>
#include "support/Cases.h"

namespace {

using ZelvorDataType::BigInt;

struct Raw {
    std::string digits;
    int sign;
    int length;
    int leadingZeros;
};

Raw RawOf(const BigInt& v) {
    const char* digits = nullptr;
    Raw raw{};
    v.GetRawForm(digits, raw.sign, raw.length, raw.leadingZeros);
    raw.digits = digits != nullptr ? digits : "(null)";
    return raw;
}

// A magnitude from text, kept as written behind the point ("0.05" gives "05").
BigInt Make(const std::string& text, int sign = 1) {
    const int points = static_cast<int>(std::count(text.begin(), text.end(), '.'));
    return BigInt(text.c_str(), static_cast<int>(text.size()) - points, sign, 0, false);
}

TEST(BigIntText, ConstructorStripsAndPads) {
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigIntConstruct.cases")) {
        SCOPED_TRACE(c.where);
        const int sign = std::stoi(c[2]);
        const BigInt v(c[0].c_str(), std::stoi(c[1]), sign, std::stoi(c[3]), c[4] == "1");
        const Raw raw = RawOf(v);
        EXPECT_EQ(raw.digits, c[5]);
        EXPECT_EQ(raw.length, static_cast<int>(c[5].size()));
        EXPECT_EQ(raw.leadingZeros, std::stoi(c[6]));
        EXPECT_EQ(v.Precision(), std::stoi(c[7]));
        EXPECT_EQ(v.Signum(), sign);
    }
}

TEST(BigIntCompare, AlignedMagnitudes) {
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigIntCompare.cases")) {
        SCOPED_TRACE(c.where);
        const int shift = std::stoi(c[2]);
        const int expected = std::stoi(c[3]);
        EXPECT_EQ(Make(c[0]).CompareABS(Make(c[1]), shift), expected);
        if (shift != 0) {
            EXPECT_EQ(Make(c[1]).CompareABS(Make(c[0]), -shift), -expected);
        }
    }
    EXPECT_EQ(Make("").CompareABS(BigInt(), 0), 0);
}

TEST(BigIntDigits, RoutinesWriteFixedWidths) {
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigIntRoutines.cases")) {
        SCOPED_TRACE(c.where);
        const BigInt a = Make(c[1]);
        const BigInt b = Make(c[2]);
        const int shiftOrExtra = std::stoi(c[3]);
        std::vector<char> out(512, 'x');
        int length = std::stoi(c[4]);
        switch (c[0][0]) {
            case '+':
                BigInt::Plus(out.data(), length, &a, &b, shiftOrExtra);
                break;
            case '-':
                BigInt::Minus(out.data(), length, &a, &b, shiftOrExtra);
                break;
            case '*':
                BigInt::Times(out.data(), length, &a, &b);
                break;
            default:
                BigInt::Divide(out.data(), length, &a, &b, shiftOrExtra);
                break;
        }
        const std::string& expected = c[5];
        ASSERT_EQ(length, c[0] == "/" ? std::stoi(c[4]) : static_cast<int>(expected.size()));
        EXPECT_EQ(std::string(out.data(), expected.size()), expected);
        if (length > 0) {
            EXPECT_EQ(out[static_cast<size_t>(length)], '\0');
        }
    }
}

struct Table {
    explicit Table(int n) : bytes(9 * static_cast<size_t>(n + 2)) {
        for (int m = 0; m < 9; ++m) {
            list[m] = bytes.data() + static_cast<std::ptrdiff_t>(m) * (n + 2);
        }
    }
    std::vector<char> bytes;
    char* list[9];
    bool filled[9] = {};
};

TEST(BigIntDigits, SearchProbesOnlyWhatItNeeds) {
    for (const auto& c : ZelvorTest::ReadCases("decimal/BigIntSearch.cases")) {
        SCOPED_TRACE(c.where);
        const std::string& divisor = c[1];
        const int n = static_cast<int>(divisor.size());
        const int multiple = std::stoi(c[2]);
        Table t(n);
        std::string slice = c[0];
        EXPECT_EQ(BigInt::SearchMultiplyList(t.list, t.filled, slice.c_str(),
                                             static_cast<int>(slice.size()), divisor.c_str(), n),
                  multiple);
        std::string filled;
        for (int m = 1; m <= 9; ++m) {
            if (t.filled[m - 1]) {
                filled += (filled.empty() ? "" : " ") + std::to_string(m);
                std::string expected = std::to_string(m * std::stoi(divisor));
                expected.insert(0, static_cast<size_t>(n + 1) - expected.size(), '0');
                EXPECT_EQ(std::string(t.list[m - 1]), expected);
            }
        }
        EXPECT_EQ(filled, c[3]);
        BigInt::Subtract4divide(slice.data(), static_cast<int>(slice.size()), n, t.list, multiple);
        EXPECT_EQ(slice, c[4]);
    }
}

TEST(BigIntCalculate, ZeroOperandsAndCancellation) {
    const std::unique_ptr<BigInt> zero(BigInt::CreateZero());
    const BigInt three = Make("3");
    const BigInt five = Make("5");
    const BigInt fiveNeg = Make("5", -1);
    struct Case {
        int op;
        const BigInt* a;
        const BigInt* b;
        int shift;
        const char* digits;
        int sign;
    } cases[] = {
        {0, zero.get(), &three, 2, "300", 1},  // 0.00 + 3 = 3.00
        {0, &three, zero.get(), -2, "300", 1},
        {1, zero.get(), &five, 0, "5", -1},
        {1, &five, zero.get(), 0, "5", 1},
        {0, &five, &fiveNeg, 0, "(null)", 0},  // cancels to a new zero
        {1, &five, &five, 0, "(null)", 0},
        {0, &three, &fiveNeg, 0, "2", -1},
        {1, &three, &five, 1, "47", -1},  // 0.3 - 5 = -4.7
        {2, &fiveNeg, &three, 0, "15", -1},
        {3, &fiveNeg, &three, 0, "1", -1},
        {3, &three, &five, 0, "", 1},  // truncated to nothing, sign kept
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "op " << c.op << " shift " << c.shift);
        const std::unique_ptr<BigInt> r(BigInt::Calculate(c.op, c.a, c.b, c.shift));
        ASSERT_NE(r, nullptr);
        EXPECT_EQ(RawOf(*r).digits, c.digits);
        EXPECT_EQ(r->Signum(), c.sign);
    }
    EXPECT_EQ(BigInt::Calculate(4, &three, &five, 0), nullptr);
    EXPECT_EQ(BigInt::Calculate(-1, &three, &five, 0), nullptr);
}

}  // namespace
