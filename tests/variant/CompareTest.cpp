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

// Row: left operand, column: right operand, both in the order of Samples(); groups are
// empty, numbers, texts, blocks, date tags, decimals, cells. '=': equal, '<': below,
// '+': both, '.': neither, 'x': ordering throws "Variant types incomparable" (and
// IsTypeComparable is false; such pairs are never equal).
TEST(VariantCompare, EqualityOrderAndComparabilityOverAllPairs) {
    const char* rows[] = {
        "= <<<<<<<<<<<< <<< << <<<<< <<< <<",  //  0 empty: equal to itself, below the rest
        ". =+==<<<<<.<< xxx xx xxxxx xxx xx",  //  1 int -1 equals 4294967295, yet is below
        ". ===......... xxx xx xxxxx xxx xx",  //  2 zero-extended to meet a long long
        ". =+==<<<<<.<< xxx xx xxxxx xxx xx",  //  3 a short is sign-extended
        ". =<==<<<<<<<< xxx xx xxxxx xxx xx",  //  4 long long order: NaN reads as 0
        ". .<..===<=... xxx xx xxxxx xxx xx",  //  5
        ". .<..===<=... xxx xx xxxxx xxx xx",  //  6
        ". .<..===<=... xxx xx xxxxx xxx xx",  //  7
        ". .<.....=.... xxx xx xxxxx xxx xx",  //  8 1.5 < 1LL is false...
        ". .<..===.=... xxx xx xxxxx xxx xx",  //  9 ...and so is 1LL < 1.5
        ". ............ xxx xx xxxxx xxx xx",  // 10 NaN: not equal, not below, not above
        ". .<..<<<<<.=. xxx xx xxxxx xxx xx",  // 11 float 0.1 is not double 0.1
        ". .<..<<<<<.<= xxx xx xxxxx xxx xx",  // 12
        ". xxxxxxxxxxxx =<< xx xxxxx xxx xx",  // 13 the text "0" is not the number 0
        ". xxxxxxxxxxxx .=< xx xxxxx xxx xx",  // 14 a prefix comes first
        ". xxxxxxxxxxxx ..= xx xxxxx xxx xx",  // 15
        ". xxxxxxxxxxxx xxx =< xxxxx xxx xx",  // 16
        ". xxxxxxxxxxxx xxx .= xxxxx xxx xx",  // 17
        ". xxxxxxxxxxxx xxx xx =+... xxx xx",  // 18 equal as dates, ordered as instants
        ". xxxxxxxxxxxx xxx xx ==... xxx xx",  // 19
        ". xxxxxxxxxxxx xxx xx <<=+< xxx xx",  // 20 equal as times, ordered as instants
        ". xxxxxxxxxxxx xxx xx .<==. xxx xx",  // 21
        ". xxxxxxxxxxxx xxx xx =<.== xxx xx",  // 22 a date-time compares whole values
        ". xxxxxxxxxxxx xxx xx xxxxx ==< xx",  // 23 1.50 equals 1.5
        ". xxxxxxxxxxxx xxx xx xxxxx ==< xx",  // 24
        ". xxxxxxxxxxxx xxx xx xxxxx ..= xx",  // 25
        ". xxxxxxxxxxxx xxx xx xxxxx xxx =<",  // 26
        ". xxxxxxxxxxxx xxx xx xxxxx xxx .=",  // 27
    };
    // The tag each way of setting gives, in the same order.
    const int tags[] = {-1, 1, 2,  21, 34, 1,  6,  7,  6,  34, 6,  7,  6,  9,
                        9,  9, 11, 11, 14, 14, 15, 15, 16, 30, 30, 30, 31, 31};
    std::vector<Variant> samples = Samples();
    ASSERT_EQ(std::size(rows), samples.size());
    ASSERT_EQ(std::size(tags), samples.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        EXPECT_EQ(samples[i].GetVarType(), tags[i]) << i;
        std::string row = rows[i];
        std::erase(row, ' ');
        ASSERT_EQ(row.size(), samples.size());
        for (size_t j = 0; j < samples.size(); ++j) {
            const char cell = row[j];
            EXPECT_EQ(samples[i] == samples[j], cell == '=' || cell == '+') << i << " == " << j;
            EXPECT_EQ(samples[i].IsTypeComparable(samples[j]), cell != 'x') << i << ", " << j;
            bool below = false;
            const std::wstring thrown = Thrown([&] { below = samples[i] < samples[j]; });
            EXPECT_EQ(thrown, cell == 'x' ? L"Variant types incomparable" : L"") << i << ", " << j;
            EXPECT_EQ(below, cell == '<' || cell == '+') << i << " < " << j;
        }
    }
}

TEST(VariantCompare, NumericWideningAndPlainOperands) {
    // Symmetric pairs beyond the samples: a long long meets a float in float.
    EXPECT_TRUE(Variant(16777217LL) == Variant(16777216.0F));
    EXPECT_TRUE(Variant(16777216.0F) == Variant(16777217LL));
    EXPECT_FALSE(Variant(16777217LL) == Variant(16777216.0));
    EXPECT_FALSE(Variant(static_cast<short>(-1)) == Variant(65535U));

    const DateTime noon(2024, 3, 5, 12);
    std::unique_ptr<ZelvorDataType::Binary> block(ZelvorDataType::CreateBinary(kBytes12, 2));
    const CellFmtData cell(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL);
    EXPECT_TRUE(Variant(-1) == 4294967295U);
    EXPECT_FALSE(Variant(0.1F) == 0.1);
    EXPECT_TRUE(Variant("gr\xC3\xBC\xC3\x9F") == L"gr\u00FC\u00DF");
    EXPECT_TRUE(Variant(L"gr\u00FC\u00DF") == "gr\xC3\xBC\xC3\x9F");
    // Against a plain DateTime every date tag compares the whole value.
    EXPECT_FALSE(VariantTest::Date(DateTime(2024, 3, 5, 10)) == noon);
    EXPECT_TRUE(VariantTest::Time(noon) == noon);
    EXPECT_TRUE(Variant(BigDecimal("2.50")) == BigDecimal("2.5"));
    EXPECT_FALSE(Variant(2.5) == BigDecimal("2.5"));
    EXPECT_TRUE(Variant(cell) == cell);
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
