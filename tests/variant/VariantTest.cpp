// The Variant: its life (empty states, contracts, arenas, copies), comparison and
// conversion across every tag, and its texts.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

#include "support/Cases.h"
#include "support/Schedules.h"
#include "support/TestDoubles.h"

namespace {

using ScheduleTest::T;
using ZelvorDataType::BigDecimal;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;
using ZelvorTest::CountingContract;
using ZelvorTest::RefusingBuffer;

using VariantError = ZelvorBase::ExceptionImpl<ZelvorDataType::VariantException>;
using DecimalError = ZelvorBase::ExceptionImpl<ZelvorDataType::BigDecimalException>;

// The text of the VariantException (or, prefixed "decimal: ", the BigDecimalException)
// that `f` throws; "" when it throws nothing.
template <class F>
std::wstring Thrown(F&& f) {
    try {
        f();
    } catch (const VariantError& e) {
        return e.GetMessage();
    } catch (const DecimalError& e) {
        return std::wstring(L"decimal: ") + e.GetMessage();
    }
    return L"";
}

// Tag 14 (a date) or 15 (a time) holding `value`.
Variant Date(const DateTime& value, bool time = false) {
    Variant v;
    time ? v.SetTime(value) : v.SetDate(value);
    return v;
}

const CellFmtData kCell(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL);

// A heap block of `bytes`.
std::unique_ptr<ZelvorDataType::Binary> Block(const std::string& bytes) {
    return std::unique_ptr<ZelvorDataType::Binary>(
        ZelvorDataType::CreateBinary(bytes.data(), bytes.size()));
}

// UTF-8 text as wide characters: the tables keep their texts in UTF-8.
std::wstring Wide(const std::string& utf8) {
    std::wstring wide;
    for (size_t i = 0; i < utf8.size(); ++i) {
        unsigned int c = static_cast<unsigned char>(utf8[i]);
        const int more = c < 0x80 ? 0 : c < 0xE0 ? 1 : 2;
        c &= more == 0 ? 0x7FU : more == 1 ? 0x1FU : 0x0FU;
        for (int k = 0; k < more && i + 1 < utf8.size(); ++k) {
            c = (c << 6) | (static_cast<unsigned char>(utf8[++i]) & 0x3FU);
        }
        wide += static_cast<wchar_t>(c);
    }
    return wide;
}

// The Variant a table row names by kind and value: a text in double quotes keeps its
// spaces, a block is written in hex, dates as "2024-03-05 07:08:09.012" (read by the
// schedule suites' T), a cell by its number.
Variant Make(const std::string& kind, std::string value) {
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
        value = value.substr(1, value.size() - 2);
    }
    using Maker = std::function<Variant(const std::string&)>;
    static const std::map<std::string, Maker> makers = {
        {"empty", [](const std::string&) { return Variant(); }},
        {"int", [](const std::string& v) { return Variant(std::stoi(v)); }},
        {"unsigned",
         [](const std::string& v) { return Variant(static_cast<unsigned int>(std::stoul(v))); }},
        {"short", [](const std::string& v) { return Variant(static_cast<short>(std::stoi(v))); }},
        {"long", [](const std::string& v) { return Variant(std::stoll(v)); }},
        {"float", [](const std::string& v) { return Variant(std::stof(v)); }},
        {"double", [](const std::string& v) { return Variant(std::stod(v)); }},
        {"text", [](const std::string& v) { return Variant(v.c_str()); }},
        {"wide", [](const std::string& v) { return Variant(Wide(v).c_str()); }},
        {"date", [](const std::string& v) { return Date(T(v.c_str())); }},
        {"time", [](const std::string& v) { return Date(T(v.c_str()), true); }},
        {"datetime", [](const std::string& v) { return Variant(T(v.c_str())); }},
        {"decimal", [](const std::string& v) { return Variant(BigDecimal(v.c_str())); }},
        {"cell",
         [](const std::string& v) {
             return Variant(CellFmtData(std::stod(v), CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL));
         }},
        {"block",
         [](const std::string& v) {
             std::string bytes;
             for (size_t i = 0; i + 1 < v.size(); i += 2) {
                 bytes += static_cast<char>(std::stoi(v.substr(i, 2), nullptr, 16));
             }
             return Variant(Block(bytes).get());
         }},
    };
    return makers.at(kind)(value);
}

TEST(VariantLifecycle, EmptyAndNullStates) {
    RefusingBuffer arena;
    Variant nullCell(CellFmtData(0.0, CELLFMT_TYPE_NULL, ZelvorBase::GUID_NULL));
    Variant reassigned(7);
    reassigned = 2.5;
    Variant reset(L"x");
    reset.Reset();
    const struct {
        Variant v;  // a copy, which keeps the tag and the null state
        int tag;
        bool isNull;
    } cases[] = {
        {Variant(&arena), -1, true},
        {Variant(static_cast<const char*>(nullptr)), 9, false},
        {Variant(static_cast<const wchar_t*>(nullptr)), 9, false},
        {Variant(kCell), 31, false},
        {nullCell, 31, true},
        {reassigned, 6, false},
        {reset, -1, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.v.GetVarType(), c.tag) << c.v.ToString().c_str();
        EXPECT_EQ(c.v.IsNull(), c.isNull) << c.v.ToString().c_str();
    }
    EXPECT_TRUE(reassigned == 2.5);
}

TEST(VariantLifecycle, ContractHearsExactByteCountsForTextsAndBlocks) {
    const auto block = Block("\x01\x02\x03\x04\x05");
    const struct {
        const char* name;
        std::function<void(Variant&)> assign;
        std::vector<size_t> bytes;
    } cases[] = {
        {"wide text", [](Variant& v) { v = L"abc"; }, {16}},
        {"null wide text", [](Variant& v) { v = static_cast<const wchar_t*>(nullptr); }, {4}},
        {"null narrow text", [](Variant& v) { v = static_cast<const char*>(nullptr); }, {}},
        {"empty narrow text", [](Variant& v) { v = ""; }, {4}},
        {"UTF-8 counts characters", [](Variant& v) { v = "gr\xC3\xBC\xC3\x9F"; }, {20}},
        {"block", [&](Variant& v) { v = block.get(); }, {5}},
        {"copy of a text", [](Variant& v) { v = Variant(L"hello"); }, {24}},
        {"copy of a block", [&](Variant& v) { v = Variant(block.get()); }, {5}},
        {"from its own text",
         [](Variant& v) {
             v = L"abcd";
             v = v.GetRawWString()->c_str() + 1;
         },
         {20, 16}},
        {"ungoverned kinds",
         [](Variant& v) {
             v = DateTime(2024, 1, 2);
             v = BigDecimal("1.5");
             v = kCell;
             v = Variant(1.5);
         },
         {}},
    };
    for (const auto& c : cases) {
        CountingContract contract;
        {
            Variant v(&contract);
            EXPECT_EQ(contract.refs, 1) << c.name;
            c.assign(v);
        }
        EXPECT_EQ(contract.requests, c.bytes) << c.name;
        EXPECT_EQ(contract.taken, c.bytes) << c.name;
        EXPECT_EQ(contract.counts, std::vector<int>(c.bytes.size(), 1)) << c.name;
        EXPECT_EQ(contract.refs, 0) << c.name;
    }
}

TEST(VariantLifecycle, ArenaHoldsEverythingAndCopiesUseTheTargetsOwn) {
    RefusingBuffer arena;
    Variant inArena(&arena);
    const auto block = Block("\x01\x02\x03\x04\x05");
    for (const auto& assign : std::vector<std::function<void()>>{
             [&] { inArena = L"text"; }, [&] { inArena = DateTime(2024, 1, 2); },
             [&] { inArena = BigDecimal("1.5"); }, [&] { inArena = block.get(); },
             [&] { inArena = kCell; }, [&] { inArena = L"in the arena"; }}) {
        const size_t calls = arena.Calls();
        assign();
        EXPECT_GT(arena.Calls(), calls) << inArena.GetVarType();
    }
    size_t calls = arena.Calls();
    const Variant sameArena(inArena);  // the copy constructor takes the source's arena
    EXPECT_GT(arena.Calls(), calls);
    EXPECT_NE(sameArena.GetRawWString(), inArena.GetRawWString());

    CountingContract contract;
    Variant governed(&contract);
    calls = arena.Calls();
    governed = inArena;  // assignment uses the target's heap and contract
    EXPECT_EQ(arena.Calls(), calls);
    EXPECT_EQ(contract.requests, std::vector<size_t>{52});
}

TEST(VariantLifecycle, CopiesAreDeepAndSelfAssignmentIsHarmless) {
    Variant source(L"abc");
    Variant copy(source);
    copy = L"changed";
    EXPECT_TRUE(source == L"abc");
    Variant& alias = source;
    source = alias;
    EXPECT_TRUE(source == L"abc");

    Variant date(DateTime(2024, 1, 2, 3, 4, 5, 6));
    date = *date.ToDateTime();  // from its own parts: nothing is read after it is freed
    EXPECT_TRUE(date == DateTime(2024, 1, 2, 3, 4, 5, 6));
}

TEST(VariantLifecycle, SwapAndTakeValue) {
    RefusingBuffer arena;
    CountingContract contract;
    Variant number(&contract);
    number = 5;
    Variant text(&arena);
    text = L"text";
    swap(number, text);
    EXPECT_TRUE(number == L"text");
    EXPECT_TRUE(text == 5);
    const size_t calls = arena.Calls();
    number = L"to the arena";  // the arena came along, the contract stayed
    text = L"to the plain heap";
    EXPECT_GT(arena.Calls(), calls);
    EXPECT_TRUE(contract.requests.empty());

    Variant empty;
    Variant real(2.5);
    empty.swap(real);
    EXPECT_TRUE(empty == 2.5);
    EXPECT_EQ(real.GetVarType(), -1);

    Variant narrow(0);
    narrow.TakeValue(Variant(static_cast<short>(-1)));
    EXPECT_EQ(static_cast<int>(narrow), 65535);  // 16 bits came over, the tag stayed
    narrow.TakeValue(Variant());
    EXPECT_EQ(static_cast<int>(narrow), 0);
}

// Every pair of the samples in variant/Compare.cases: equality, order and comparability.
TEST(VariantCompare, EqualityOrderAndComparabilityOverAllPairs) {
    const auto cases = ZelvorTest::ReadCases("variant/Compare.cases");
    std::vector<Variant> samples;
    for (const auto& c : cases) {
        samples.push_back(Make(c[0], c[1]));
        EXPECT_EQ(samples.back().GetVarType(), std::stoi(c[2])) << c.where;
    }
    for (size_t i = 0; i < samples.size(); ++i) {
        SCOPED_TRACE(cases[i].where);
        std::string row = cases[i][3];
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
    const auto block = Block("\x01\x02");
    const CellFmtData& cell = kCell;
    EXPECT_TRUE(Variant(-1) == 4294967295U);
    EXPECT_FALSE(Variant(0.1F) == 0.1);
    EXPECT_TRUE(Variant("gr\xC3\xBC\xC3\x9F") == L"gr\u00FC\u00DF");
    EXPECT_TRUE(Variant(L"gr\u00FC\u00DF") == "gr\xC3\xBC\xC3\x9F");
    // Against a plain DateTime every date tag compares the whole value.
    EXPECT_FALSE(Date(DateTime(2024, 3, 5, 10)) == noon);
    EXPECT_TRUE(Date(noon, true) == noon);
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

TEST(VariantConvert, NumericCastsNeverFail) {
    for (const auto& c : ZelvorTest::ReadCases("variant/Casts.cases")) {
        const Variant value = Make(c[0], c[1]);
        EXPECT_EQ(static_cast<short>(value), static_cast<short>(std::stoi(c[2]))) << c.where;
        EXPECT_EQ(static_cast<int>(value), std::stoi(c[3])) << c.where;
        EXPECT_EQ(static_cast<unsigned int>(value), std::stoul(c[4])) << c.where;
        EXPECT_EQ(static_cast<long long>(value), std::stoll(c[5])) << c.where;
        EXPECT_EQ(static_cast<float>(value), std::stof(c[6])) << c.where;
        EXPECT_EQ(static_cast<double>(value), std::stod(c[7])) << c.where;
    }

    const Variant nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(static_cast<int>(nan), 0);
    EXPECT_EQ(static_cast<long long>(nan), 0);
    EXPECT_TRUE(std::isnan(static_cast<float>(nan)));
    EXPECT_EQ(static_cast<long long>(Variant(-1e30)), std::numeric_limits<long long>::min());
}

TEST(VariantConvert, StrictCastsCheckTheTag) {
    const DateTime stored(2024, 3, 5, 7, 8, 9, 12);
    const CellFmtData& cell = kCell;
    const auto block = Block("\x07");
    const Variant values[] = {
        Variant(),    Variant(5),         Variant(block.get()),        Variant(stored),
        Date(stored), Date(stored, true), Variant(BigDecimal("1.50")), Variant(cell)};
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
    for (const auto& c : ZelvorTest::ReadCases("variant/Texts.cases")) {
        const Variant value = Make(c[0], c[1]);
        const std::wstring wide = Wide(c[2]);
        EXPECT_EQ(std::wstring(value.ToWString().c_str()), wide) << c.where;
        EXPECT_EQ(std::string(value.ToString().c_str()), c[3]) << c.where;
        EXPECT_EQ(std::string(value.ToStringVBBehavior().c_str()), c[4]) << c.where;
        const std::wstring arrayWide = c[5] == "cell" ? L"" : wide;
        EXPECT_EQ(value.GetWStringLength(), arrayWide.size()) << c.where;
        EXPECT_EQ(value.GetStringLength(), c[3].size()) << c.where;
        CheckArrayForms(value, arrayWide, c[3], c.where.c_str());
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
    const std::wstring cell = Variant(kCell).ToWString().c_str();
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(plain, "1,500000000000000") << found;
    EXPECT_EQ(wide, L"1,500000000000000") << found;
    EXPECT_EQ(general, "1,5") << found;
    EXPECT_EQ(cell, L"2,500000") << found;
}

}  // namespace
