#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/BigInt.h>

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
    struct Case {
        const char* text;
        int length, sign, pad;
        bool keep;
        const char* digits;
        int leadingZeros, precision;
    } cases[] = {{"000", 3, 0, 0, true, "", 3, 3},
                 {"000", 3, 0, 0, false, "", 0, 0},
                 {"12", 2, 1, 3, false, "12000", 0, 5},
                 {"0.05", 3, 1, 0, true, "05", 1, 3},
                 {"0.05", 3, -1, 0, false, "05", 0, 2},
                 {"007", 3, 1, 0, true, "7", 2, 3},
                 {"007", 3, 1, 0, false, "7", 0, 1},
                 {"1.25", 3, 1, 2, false, "12500", 0, 5},
                 // Malformed calls stay inside the text and store digits only.
                 {"12", 5, 1, 0, false, "12000", 0, 5},
                 {"1x3", 3, 1, 0, false, "103", 0, 3},
                 {"5", -4, 1, 0, false, "", 0, 0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const BigInt v(c.text, c.length, c.sign, c.pad, c.keep);
        const Raw raw = RawOf(v);
        EXPECT_EQ(raw.digits, c.digits);
        EXPECT_EQ(raw.length, static_cast<int>(std::string(c.digits).size()));
        EXPECT_EQ(raw.leadingZeros, c.leadingZeros);
        EXPECT_EQ(v.Precision(), c.precision);
        EXPECT_EQ(v.Signum(), c.sign);
    }
}

TEST(BigIntCompare, AlignedMagnitudes) {
    const BigInt empty("", 0, 1, 0, false);  // a quotient truncated to nothing
    struct Case {
        const char* a;
        const char* b;
        int shift, expected;
    } cases[] = {{"125", "12", 1, 1},       {"120", "12", 1, 0}, {"0.05", "5", 0, 0},
                 {"999", "1000", 0, -1},    {"1", "999", -3, 1}, {"1", "1001", -3, -1},
                 {"5", "", 3, 1},           {"", "5", 0, -1},    {"", "", 2, 0},
                 {"100", "1", 2, 0},        {"101", "1", 2, 1},  {"19", "2", 0, 1},
                 {"5", "5", -2147483647, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.a) + " vs " + c.b + " shift " + std::to_string(c.shift));
        const BigInt a = *c.a != '\0' ? Make(c.a) : BigInt("", 0, 1, 0, false);
        const BigInt b = *c.b != '\0' ? Make(c.b) : BigInt("", 0, 1, 0, false);
        EXPECT_EQ(a.CompareABS(b, c.shift), c.expected);
        if (c.shift != 0) {
            EXPECT_EQ(b.CompareABS(a, -c.shift), -c.expected);
        }
    }
    EXPECT_EQ(empty.CompareABS(BigInt(), 0), 0);
}

// The digit routines, with the width and the zeros in front that they promise.
TEST(BigIntDigits, RoutinesWriteFixedWidths) {
    enum Op { kPlus, kMinus, kTimes, kDivide };
    struct Case {
        Op op;
        const char* a;
        const char* b;
        int shiftOrExtra;
        int r;  // result length a division is asked for
        const char* expected;
    } cases[] = {
        {kPlus, "999", "1", 0, 0, "1000"},
        {kPlus, "99999999999999999", "1", 0, 0, "100000000000000000"},
        {kPlus, "25", "5", 2, 0, "0525"},
        {kPlus, "5", "7", 3, 0, "07005"},
        {kPlus, "0.05", "1", 0, 0, "006"},
        {kMinus, "225", "5", 1, 0, "175"},
        {kMinus, "15", "5", -2, 0, "1495"},
        {kMinus, "1000", "1", 0, 0, "0999"},
        {kMinus, "1000000000000000000", "1", 0, 0, "0999999999999999999"},
        {kTimes, "99", "99", 0, 0, "9801"},
        {kTimes, "5", "2", 0, 0, "10"},
        {kTimes, "0.05", "3", 0, 0, "015"},
        {kDivide, "1500", "3", 0, 4, "0500"},
        {kDivide, "10", "3", 2, 4, "0333"},
        {kDivide, "1", "3", 0, 1, "0"},
        {kDivide, "7", "7", 0, 1, "1"},
        {kDivide, "1000", "10", 0, 3, "100"},
        {kDivide, "1", "1000", 4, 2, "10"},
        {kDivide, "99", "0.05", 2, 4, "1980"},
        {kDivide, "1234", "2", -2, 2, "06"},
        {kDivide, "45", "9", 0, 1, "5"},
        {kDivide, "123456789012345678901234567890", "987654321987654321", 0, 13, "0124999998748"},
        // The quotient estimate from the leading words overshoots here and is taken back.
        {kDivide, "147637168024606590365083135726121591", "539061234472907871999999999", 0, 10,
         "0273878287"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.a) + " op " + std::to_string(c.op) + " " + c.b);
        const BigInt a = Make(c.a);
        const BigInt b = Make(c.b);
        std::vector<char> out(512, 'x');
        int length = c.r;
        switch (c.op) {
            case kPlus:
                BigInt::Plus(out.data(), length, &a, &b, c.shiftOrExtra);
                break;
            case kMinus:
                BigInt::Minus(out.data(), length, &a, &b, c.shiftOrExtra);
                break;
            case kTimes:
                BigInt::Times(out.data(), length, &a, &b);
                break;
            case kDivide:
                BigInt::Divide(out.data(), length, &a, &b, c.shiftOrExtra);
                break;
        }
        const std::string expected = c.expected;
        ASSERT_EQ(length, c.op == kDivide ? c.r : static_cast<int>(expected.size()));
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
    struct Case {
        const char* slice;
        const char* divisor;
        int expected;
        std::vector<int> filled;  // multiples worked out
        const char* rest;         // the slice less the multiple
    } cases[] = {{"45", "9", 5, {5}, "00"},
                 {"3", "7", 0, {1, 2, 5}, "3"},
                 {"63", "7", 9, {5, 7, 8, 9}, "00"},
                 {"100", "25", 4, {2, 3, 4, 5}, "000"},
                 {"99", "12", 8, {5, 7, 8, 9}, "03"},
                 {"12", "12", 1, {1, 2, 5}, "00"},
                 {"1000", "125", 8, {5, 7, 8}, "0000"},
                 {"712", "95", 7, {5, 7, 8}, "047"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.slice) + " / " + c.divisor);
        const int n = static_cast<int>(std::string(c.divisor).size());
        Table t(n);
        EXPECT_EQ(
            BigInt::SearchMultiplyList(t.list, t.filled, c.slice,
                                       static_cast<int>(std::string(c.slice).size()), c.divisor, n),
            c.expected);
        std::vector<int> filled;
        for (int m = 1; m <= 9; ++m) {
            if (t.filled[m - 1]) {
                filled.push_back(m);
                std::string expected = std::to_string(m * std::stoi(c.divisor));
                expected.insert(0, static_cast<size_t>(n + 1) - expected.size(), '0');
                EXPECT_EQ(std::string(t.list[m - 1]), expected);
            }
        }
        EXPECT_EQ(filled, c.filled);
        std::string slice = c.slice;
        BigInt::Subtract4divide(slice.data(), static_cast<int>(slice.size()), n, t.list,
                                c.expected);
        EXPECT_EQ(slice, c.rest);
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
