// Variants against each other and converted to every type, loosely and strictly.
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

constexpr long long kMax64 = std::numeric_limits<long long>::max();

TEST(VariantConvert, NumericCastsNeverFail) {
    const unsigned char bytes[] = {7};
    std::unique_ptr<ZelvorDataType::Binary> block(ZelvorDataType::CreateBinary(bytes, 1));
    const struct {
        const char* name;
        Variant value;
        short s;
        int i;
        unsigned int u;
        long long ll;
        float f;
        double d;
    } cases[] = {
        {"int -1", Variant(-1), -1, -1, 4294967295U, -1, -1.0F, -1.0},
        {"unsigned max", Variant(4294967295U), -1, -1, 4294967295U, 4294967295LL, 4294967296.0F,
         4294967295.0},
        {"short -1", Variant(static_cast<short>(-1)), -1, -1, 4294967295U, -1, -1.0F, -1.0},
        {"long long 2^32", Variant(4294967296LL), 0, 0, 0U, 4294967296LL, 4294967296.0F,
         4294967296.0},
        {"long long 2^53+1", Variant(9007199254740993LL), 1, 1, 1U, 9007199254740993LL,
         9007199254740992.0F, 9007199254740992.0},
        {"double 65537.9", Variant(65537.9), 1, 65537, 65537U, 65537, 65537.9F, 65537.9},
        {"double -1.9", Variant(-1.9), -1, -1, 4294967295U, -1, -1.9F, -1.9},
        {"double 3e9", Variant(3e9), 24064, -1294967296, 3000000000U, 3000000000LL, 3e9F, 3e9},
        {"double 1e30 saturates", Variant(1e30), -1, -1, 4294967295U, kMax64, 1e30F, 1e30},
        {"double 0.1", Variant(0.1), 0, 0, 0U, 0, 0.1F, 0.1},
        {"text 42", Variant(L"42"), 0, 42, 0U, 0, 0.0F, 0.0},
        {"text  -42abc", Variant(" -42abc"), 0, -42, 0U, 0, 0.0F, 0.0},
        {"text, low 32 bits", Variant("99999999999"), 0, 1215752191, 0U, 0, 0.0F, 0.0},
        {"empty", Variant(), 0, 0, 0U, 0, 0.0F, 0.0},
        {"date", Variant(DateTime(2024, 1, 2)), 0, 0, 0U, 0, 0.0F, 0.0},
        {"decimal", Variant(BigDecimal("42")), 0, 0, 0U, 0, 0.0F, 0.0},
        {"block", Variant(block.get()), 0, 0, 0U, 0, 0.0F, 0.0},
        {"cell", Variant(CellFmtData(65537.9, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL)), 1,
         65537, 65537U, 65537, 65537.9F, 65537.9},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(static_cast<short>(c.value), c.s) << c.name;
        EXPECT_EQ(static_cast<int>(c.value), c.i) << c.name;
        EXPECT_EQ(static_cast<unsigned int>(c.value), c.u) << c.name;
        EXPECT_EQ(static_cast<long long>(c.value), c.ll) << c.name;
        EXPECT_EQ(static_cast<float>(c.value), c.f) << c.name;
        EXPECT_EQ(static_cast<double>(c.value), c.d) << c.name;
    }

    const Variant nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(static_cast<int>(nan), 0);
    EXPECT_EQ(static_cast<long long>(nan), 0);
    EXPECT_TRUE(std::isnan(static_cast<float>(nan)));
    EXPECT_EQ(static_cast<long long>(Variant(-1e30)), std::numeric_limits<long long>::min());
}

TEST(VariantConvert, StrictCastsCheckTheTag) {
    const DateTime stored(2024, 3, 5, 7, 8, 9, 12);
    const CellFmtData cell(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL);
    const unsigned char bytes[] = {7};
    std::unique_ptr<ZelvorDataType::Binary> block(ZelvorDataType::CreateBinary(bytes, 1));
    const Variant values[] = {Variant(),
                              Variant(5),
                              Variant(block.get()),
                              Variant(stored),
                              VariantTest::Date(stored),
                              VariantTest::Time(stored),
                              Variant(BigDecimal("1.50")),
                              Variant(cell)};
    for (const Variant& v : values) {
        const int tag = v.GetVarType();
        const bool isDate = tag == 14 || tag == 15 || tag == 16;
        const auto expect = [&](bool right, const wchar_t* error, auto cast) {
            EXPECT_EQ(Thrown([&] { cast(); }), right ? L"" : error) << tag;
        };
        expect(tag == 11, L"Cannot convert to Binary type", [&] { (void)v.ToBinary(); });
        expect(isDate, L"Cannot convert to DateTime type", [&] { (void)v.ToDateTime(); });
        expect(isDate, L"Cannot convert to DateTime type", [&] { (void)static_cast<DateTime>(v); });
        expect(tag == 30, L"Cannot convert to BigDecimal type", [&] { (void)v.ToBigDecimal(); });
        expect(tag == 31, L"Cannot convert to CellFmtData type",
               [&] { (void)static_cast<CellFmtData>(v); });
        if (isDate) {  // every date tag gives back the whole stored value
            EXPECT_TRUE(*v.ToDateTime() == stored) << tag;
            EXPECT_TRUE(static_cast<DateTime>(v) == stored) << tag;
        }
    }
    EXPECT_TRUE(*values[2].ToBinary() == *block);
    EXPECT_EQ(values[6].ToBigDecimal()->Scale(), 2);
    EXPECT_TRUE(static_cast<CellFmtData>(values[7]) == cell);
}

}  // namespace
