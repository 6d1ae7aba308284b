#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "VariantSupport.h"

namespace {

using VariantTest::Thrown;
using ZelvorDataType::BigDecimal;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;

const unsigned char kBytes12[] = {1, 2};
const unsigned char kBytes13[] = {1, 3};

// One sample of every tag, with the pairs that the rules tell apart: the int -1 and the
// unsigned 4294967295, a float and a double 0.1, dates and times that agree in one half.
std::vector<Variant> Samples() {
    std::unique_ptr<ZelvorDataType::Binary> b12(ZelvorDataType::CreateBinary(kBytes12, 2));
    std::unique_ptr<ZelvorDataType::Binary> b13(ZelvorDataType::CreateBinary(kBytes13, 2));
    const DateTime morning(2024, 3, 5, 10);
    return {
        Variant(),                                          //  0 empty
        Variant(-1),                                        //  1 int -1
        Variant(4294967295U),                               //  2 unsigned 4294967295
        Variant(static_cast<short>(-1)),                    //  3 short -1
        Variant(-1LL),                                      //  4 long long -1
        Variant(1),                                         //  5 int 1
        Variant(1.0),                                       //  6 double 1
        Variant(1.0F),                                      //  7 float 1
        Variant(1.5),                                       //  8 double 1.5
        Variant(1LL),                                       //  9 long long 1
        Variant(std::numeric_limits<double>::quiet_NaN()),  // 10
        Variant(0.1F),                                      // 11 float 0.1
        Variant(0.1),                                       // 12 double 0.1
        Variant("0"),                                       // 13
        Variant(L"ab"),                                     // 14
        Variant("abc"),                                     // 15
        Variant(b12.get()),                                 // 16
        Variant(b13.get()),                                 // 17
        VariantTest::Date(morning),                         // 18 date 2024-03-05 10:00
        VariantTest::Date(DateTime(2024, 3, 5, 12)),        // 19 date, same day at noon
        VariantTest::Time(DateTime(2020, 1, 1, 10)),        // 20 time 10:00 in 2020
        VariantTest::Time(morning),                         // 21 time, the same instant as 18
        Variant(morning),                                   // 22 date-time, the same instant
        Variant(BigDecimal("1.50")),                        // 23
        Variant(BigDecimal("1.5")),                         // 24
        Variant(BigDecimal("2")),                           // 25
        Variant(CellFmtData(1.0, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL)),  // 26
        Variant(CellFmtData(2.0, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL)),  // 27
    };
}

std::string Strip(const char* row) {
    std::string s;
    for (const char* p = row; *p != '\0'; ++p) {
        if (*p != ' ') {
            s += *p;
        }
    }
    return s;
}

// Row: left operand, column: right operand, both in the order of Samples(); groups are
// empty, numbers, texts, blocks, date tags, decimals, cells.
TEST(VariantCompare, EqualityOverAllPairs) {
    const char* rows[] = {
        "1 ............ ... .. ..... ... ..",  //  0 empty
        ". 1111........ ... .. ..... ... ..",  //  1 int -1: 32 bits, sign-extended short
        ". 111......... ... .. ..... ... ..",  //  2 unsigned: zero-extended to long long
        ". 1111........ ... .. ..... ... ..",  //  3
        ". 1.11........ ... .. ..... ... ..",  //  4
        ". ....111.1... ... .. ..... ... ..",  //  5
        ". ....111.1... ... .. ..... ... ..",  //  6
        ". ....111.1... ... .. ..... ... ..",  //  7
        ". .......1.... ... .. ..... ... ..",  //  8
        ". ....111.1... ... .. ..... ... ..",  //  9
        ". ............ ... .. ..... ... ..",  // 10 NaN equals nothing
        ". ..........1. ... .. ..... ... ..",  // 11 float 0.1 is not double 0.1
        ". ...........1 ... .. ..... ... ..",  // 12
        ". ............ 1.. .. ..... ... ..",  // 13 the text "0" is not the number 0
        ". ............ .1. .. ..... ... ..",  // 14
        ". ............ ..1 .. ..... ... ..",  // 15
        ". ............ ... 1. ..... ... ..",  // 16
        ". ............ ... .1 ..... ... ..",  // 17
        ". ............ ... .. 11... ... ..",  // 18 a date compares the date alone
        ". ............ ... .. 11... ... ..",  // 19
        ". ............ ... .. ..11. ... ..",  // 20 a time compares the time alone
        ". ............ ... .. ..11. ... ..",  // 21
        ". ............ ... .. 1..11 ... ..",  // 22 a date-time compares whole values
        ". ............ ... .. ..... 11. ..",  // 23 1.50 equals 1.5
        ". ............ ... .. ..... 11. ..",  // 24
        ". ............ ... .. ..... ..1 ..",  // 25
        ". ............ ... .. ..... ... 1.",  // 26
        ". ............ ... .. ..... ... .1",  // 27
    };
    const std::vector<Variant> samples = Samples();
    ASSERT_EQ(std::size(rows), samples.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        const std::string row = Strip(rows[i]);
        ASSERT_EQ(row.size(), samples.size());
        for (size_t j = 0; j < samples.size(); ++j) {
            EXPECT_EQ(samples[i] == samples[j], row[j] == '1') << i << " == " << j;
        }
    }
}

// T: below, '.': not below, x: "Variant types incomparable" (and IsTypeComparable false).
TEST(VariantCompare, OrderAndComparabilityOverAllPairs) {
    const char* rows[] = {
        ". TTTTTTTTTTTT TTT TT TTTTT TTT TT",  //  0 empty comes first
        ". .T..TTTTT.TT xxx xx xxxxx xxx xx",  //  1 -1 < 4294967295 in double
        ". ............ xxx xx xxxxx xxx xx",  //  2
        ". .T..TTTTT.TT xxx xx xxxxx xxx xx",  //  3
        ". .T..TTTTTTTT xxx xx xxxxx xxx xx",  //  4 long long order: NaN reads as 0
        ". .T.....T.... xxx xx xxxxx xxx xx",  //  5
        ". .T.....T.... xxx xx xxxxx xxx xx",  //  6
        ". .T.....T.... xxx xx xxxxx xxx xx",  //  7
        ". .T.......... xxx xx xxxxx xxx xx",  //  8 1.5 < 1LL is false...
        ". .T.......... xxx xx xxxxx xxx xx",  //  9 ...and so is 1LL < 1.5
        ". ............ xxx xx xxxxx xxx xx",  // 10 NaN is below nothing
        ". .T..TTTTT... xxx xx xxxxx xxx xx",  // 11
        ". .T..TTTTT.T. xxx xx xxxxx xxx xx",  // 12
        ". xxxxxxxxxxxx .TT xx xxxxx xxx xx",  // 13 "0" < "ab"
        ". xxxxxxxxxxxx ..T xx xxxxx xxx xx",  // 14 a prefix comes first
        ". xxxxxxxxxxxx ... xx xxxxx xxx xx",  // 15
        ". xxxxxxxxxxxx xxx .T xxxxx xxx xx",  // 16
        ". xxxxxxxxxxxx xxx .. xxxxx xxx xx",  // 17
        ". xxxxxxxxxxxx xxx xx .T... xxx xx",  // 18 date tags order whole values
        ". xxxxxxxxxxxx xxx xx ..... xxx xx",  // 19
        ". xxxxxxxxxxxx xxx xx TT.TT xxx xx",  // 20
        ". xxxxxxxxxxxx xxx xx .T... xxx xx",  // 21
        ". xxxxxxxxxxxx xxx xx .T... xxx xx",  // 22
        ". xxxxxxxxxxxx xxx xx xxxxx ..T xx",  // 23
        ". xxxxxxxxxxxx xxx xx xxxxx ..T xx",  // 24
        ". xxxxxxxxxxxx xxx xx xxxxx ... xx",  // 25
        ". xxxxxxxxxxxx xxx xx xxxxx xxx .T",  // 26
        ". xxxxxxxxxxxx xxx xx xxxxx xxx ..",  // 27
    };
    std::vector<Variant> samples = Samples();
    ASSERT_EQ(std::size(rows), samples.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        const std::string row = Strip(rows[i]);
        ASSERT_EQ(row.size(), samples.size());
        for (size_t j = 0; j < samples.size(); ++j) {
            EXPECT_EQ(samples[i].IsTypeComparable(samples[j]), row[j] != 'x') << i << ", " << j;
            bool below = false;
            const std::wstring thrown = Thrown([&] { below = samples[i] < samples[j]; });
            if (row[j] == 'x') {
                EXPECT_EQ(thrown, L"Variant types incomparable") << i << " < " << j;
            } else {
                EXPECT_EQ(thrown, L"") << i << " < " << j;
                EXPECT_EQ(below, row[j] == 'T') << i << " < " << j;
            }
        }
    }
}

TEST(VariantCompare, NumericWideningAndPlainOperands) {
    const struct {
        Variant value;
        Variant other;
        bool equal;
    } pairs[] = {
        {Variant(16777217LL), Variant(16777216.0F), true},  // met in float
        {Variant(16777217LL), Variant(16777216.0), false},
        {Variant(4294967295U), Variant(4294967295LL), true},
        {Variant(static_cast<short>(-1)), Variant(65535U), false},
        {Variant(-0.0), Variant(0), true},
    };
    for (const auto& p : pairs) {
        EXPECT_EQ(p.value == p.other, p.equal) << p.value.ToString().c_str();
        EXPECT_EQ(p.other == p.value, p.equal) << p.value.ToString().c_str();
    }

    const DateTime noon(2024, 3, 5, 12);
    const unsigned char bytes[] = {1, 2};
    std::unique_ptr<ZelvorDataType::Binary> block(ZelvorDataType::CreateBinary(bytes, 2));
    const CellFmtData cell(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL);
    EXPECT_TRUE(Variant(-1) == 4294967295U);
    EXPECT_TRUE(Variant(1.0F) == 1);
    EXPECT_TRUE(Variant(static_cast<short>(-1)) == -1LL);
    EXPECT_FALSE(Variant(0.1F) == 0.1);
    EXPECT_FALSE(Variant("0") == 0);
    EXPECT_FALSE(Variant() == 0);
    EXPECT_TRUE(Variant("gr\xC3\xBC\xC3\x9F") == L"gr\u00FC\u00DF");
    EXPECT_TRUE(Variant(L"gr\u00FC\u00DF") == "gr\xC3\xBC\xC3\x9F");
    EXPECT_TRUE(Variant(static_cast<const char*>(nullptr)) == L"");
    EXPECT_FALSE(Variant(L"a") == L"ab");
    // Against a plain DateTime every date tag compares the whole value.
    EXPECT_FALSE(VariantTest::Date(DateTime(2024, 3, 5, 10)) == noon);
    EXPECT_TRUE(VariantTest::Time(noon) == noon);
    EXPECT_TRUE(Variant(BigDecimal("2.50")) == BigDecimal("2.5"));
    EXPECT_FALSE(Variant(2.5) == BigDecimal("2.5"));
    EXPECT_TRUE(Variant(cell) == cell);
    EXPECT_FALSE(Variant(2.5) == cell);
    EXPECT_TRUE(Variant(block.get()) == *block);
    EXPECT_FALSE(Variant("\x01\x02") == *block);
}

TEST(VariantCompare, InvalidBigDecimalThrowsItsOwnError) {
    Variant invalid{BigDecimal("1.2.3")};
    Variant valid{BigDecimal("1")};
    EXPECT_EQ(Thrown([&] { (void)(invalid == valid); }), L"decimal: Invalid BigDecimal");
    EXPECT_EQ(Thrown([&] { (void)(valid == invalid); }), L"decimal: Invalid BigDecimal");
    EXPECT_EQ(Thrown([&] { (void)(invalid < valid); }), L"decimal: Invalid BigDecimal");
    EXPECT_FALSE(invalid == 1);  // a mismatch is settled by the tags alone
}

}  // namespace
