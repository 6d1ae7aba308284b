#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstring>
#include <cwchar>
#include <initializer_list>
#include <limits>
#include <memory>
#include <string>

#include "VariantSupport.h"

namespace {

using VariantTest::Thrown;
using ZelvorDataType::BigDecimal;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;

constexpr size_t kArray = 48;

// The array forms against the owned text: at most `length` characters with the
// terminator, NULs after the text, and nothing written at or past `length`.
void CheckArrayForms(const Variant& v, const std::wstring& wide, const std::string& narrow,
                     const char* name) {
    for (unsigned int length : {1U, 3U, 40U}) {
        wchar_t w[kArray];
        char n[kArray];
        std::fill(std::begin(w), std::end(w), L'#');
        std::fill(std::begin(n), std::end(n), '#');
        v.ToWString(w, length);
        v.ToString(n, length);
        const size_t wideKept = std::min<size_t>(wide.size(), length - 1);
        const size_t narrowKept = std::min<size_t>(narrow.size(), length - 1);
        EXPECT_EQ(std::wstring(w, wideKept), wide.substr(0, wideKept)) << name << length;
        EXPECT_EQ(std::string(n, narrowKept), narrow.substr(0, narrowKept)) << name << length;
        for (size_t i = 0; i < kArray; ++i) {
            EXPECT_EQ(w[i], i < wideKept ? w[i] : i < length ? L'\0' : L'#') << name << i;
            EXPECT_EQ(n[i], i < narrowKept ? n[i] : i < length ? '\0' : '#') << name << i;
        }
    }
}

TEST(VariantText, EveryFormByTag) {
    const unsigned char bytes[] = {'a', 'b'};
    std::unique_ptr<ZelvorDataType::Binary> block(ZelvorDataType::CreateBinary(bytes, 2));
    const DateTime when(2024, 3, 5, 7, 8, 9, 12);
    const char* whenText = "2024-03-05 07:08:09.012";
    const struct {
        const char* name;
        Variant value;
        const wchar_t* wide;  // ToWString()
        const char* narrow;   // ToString()
        const char* vb;       // ToStringVBBehavior()
        bool cell;            // the array and length forms give the empty text
    } cases[] = {
        {"empty", Variant(), L"", "", "", false},
        {"int", Variant(-5), L"-5", "-5", "-5", false},
        {"unsigned", Variant(4294967295U), L"-1", "-1", "-1", false},
        {"short", Variant(static_cast<short>(-1)), L"-1", "-1", "-1", false},
        {"double 1.5", Variant(1.5), L"1.500000000000000", "1.500000000000000", "1.5", false},
        {"double 0.1", Variant(0.1), L"0.100000000000000", "0.100000000000000", "0.1", false},
        {"double 1e20", Variant(1e20), L"100000000000000000000.000000000000000",
         "100000000000000000000.000000000000000", "1e+20", false},
        {"float 0.1", Variant(0.1F), L"0.100000001490116", "0.100000001490116", "0.100000001490116",
         false},
        {"long long min", Variant(std::numeric_limits<long long>::min()), L"-9223372036854775808",
         "-9223372036854775808", "-9223372036854775808", false},
        {"text", Variant(L"gr\u00FC\u00DF"), L"gr\u00FC\u00DF", "gr\xC3\xBC\xC3\x9F",
         "gr\xC3\xBC\xC3\x9F", false},
        {"block", Variant(block.get()), L"", "", "", false},
        {"date", VariantTest::Date(when), L"2024-03-05 07:08:09.012", whenText, "3/5/2024", false},
        {"time", VariantTest::Time(when), L"2024-03-05 07:08:09.012", whenText, "3/5/2024", false},
        {"decimal", Variant(BigDecimal("1.50")), L"1.50", "1.50", "1.50", false},
        {"cell", Variant(CellFmtData(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL)),
         L"2.500000", "", "", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(std::wstring(c.value.ToWString().c_str()), c.wide) << c.name;
        EXPECT_EQ(std::string(c.value.ToString().c_str()), c.narrow) << c.name;
        EXPECT_EQ(std::string(c.value.ToStringVBBehavior().c_str()), c.vb) << c.name;
        const std::wstring arrayWide = c.cell ? L"" : c.wide;
        EXPECT_EQ(c.value.GetWStringLength(), arrayWide.size()) << c.name;
        EXPECT_EQ(c.value.GetStringLength(), std::strlen(c.narrow)) << c.name;
        CheckArrayForms(c.value, arrayWide, c.narrow, c.name);
    }
}

TEST(VariantText, EdgesOfTheForms) {
    wchar_t wide[1] = {L'#'};
    char narrow[1] = {'#'};
    Variant(12345).ToWString(nullptr, 10);
    Variant(12345).ToWString(wide, 0);
    Variant(12345).ToString(narrow, 0);
    EXPECT_EQ(wide[0], L'#');
    EXPECT_EQ(narrow[0], '#');

    // A number too long for the 256-character array is cut at 255, wide as narrow.
    const Variant huge(1e300);
    EXPECT_EQ(huge.GetStringLength(), 255U);
    EXPECT_EQ(huge.GetWStringLength(), 255U);
    const std::string cut = huge.ToString().c_str();
    EXPECT_EQ(std::wstring(huge.ToWString().c_str()), std::wstring(cut.begin(), cut.end()));

    EXPECT_EQ(Variant(5).GetRawWString(), nullptr);
    EXPECT_EQ(Variant(L"").GetRawWString()->size(), 0U);

    const Variant invalid{BigDecimal("1,5")};
    EXPECT_EQ(Thrown([&] { (void)invalid.ToWString(); }), L"decimal: Invalid BigDecimal");
    EXPECT_EQ(Thrown([&] { (void)invalid.GetStringLength(); }), L"decimal: Invalid BigDecimal");
}

// The floating formats follow the process's numeric locale as they stand.
TEST(VariantText, FloatingTextsUseTheNumericLocale) {
    const char* found = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"}) {
        if (std::setlocale(LC_NUMERIC, name) != nullptr) {
            found = name;
            break;
        }
    }
    if (found == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    const std::string plain = Variant(1.5).ToString().c_str();
    const std::wstring wide = Variant(1.5).ToWString().c_str();
    const std::string general = Variant(1.5).ToStringVBBehavior().c_str();
    const std::wstring cell =
        Variant(CellFmtData(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL)).ToWString().c_str();
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(plain, "1,500000000000000") << found;
    EXPECT_EQ(wide, L"1,500000000000000") << found;
    EXPECT_EQ(general, "1,5") << found;
    EXPECT_EQ(cell, L"2,500000") << found;
}

}  // namespace
