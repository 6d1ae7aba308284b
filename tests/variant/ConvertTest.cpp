#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "VariantSupport.h"

namespace {

using VariantTest::Thrown;
using ZelvorDataType::BigDecimal;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;

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
