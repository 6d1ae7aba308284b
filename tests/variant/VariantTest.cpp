// The Variant: its life (empty states, contracts, arenas, copies), comparison and
// conversion across every tag, and its texts.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

#include "support/TestDoubles.h"

namespace {

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
Variant Time(const DateTime& value) {
    return Date(value, true);
}

const CellFmtData kCell(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL);

// A heap block of `bytes`.
std::unique_ptr<ZelvorDataType::Binary> Block(const std::string& bytes) {
    return std::unique_ptr<ZelvorDataType::Binary>(
        ZelvorDataType::CreateBinary(bytes.data(), bytes.size()));
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

TEST(VariantLifecycle, RefusalThrowsAndLeavesEmpty) {
    const auto block = Block("\x01\x02\x03\x04\x05");
    const std::function<void(Variant&)> assignments[] = {
        [](Variant& v) { v = L"abc"; },
        [](Variant& v) { v = "abc"; },
        [&](Variant& v) { v = block.get(); },
        [](Variant& v) { v = Variant(L"copied"); },
    };
    for (const auto& assign : assignments) {
        CountingContract contract(2);  // grants the first request, refuses the second
        Variant v(&contract);
        v = L"old value, on the heap";
        EXPECT_EQ(Thrown([&] { assign(v); }), L"Not enough memory left.");
        EXPECT_EQ(v.GetVarType(), -1);
        EXPECT_EQ(contract.taken.size(), 1U);
    }
    CountingContract contract(2);
    Variant source(&contract);
    source = L"text";
    // The copy takes the source's contract, which refuses.
    EXPECT_EQ(Thrown([&] { (void)Variant(source); }), L"Not enough memory left.");
    EXPECT_EQ(contract.refs, 1);  // the failed copy gave its reference back
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

// One sample of every tag, with the pairs that the rules tell apart: the int -1 and the
// unsigned 4294967295, a float and a double 0.1, dates and times that agree in one half.
std::vector<Variant> Samples() {
    const auto b12 = Block("\x01\x02");
    const auto b13 = Block("\x01\x03");
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
        Date(morning),                                      // 18 date 2024-03-05 10:00
        Date(DateTime(2024, 3, 5, 12)),                     // 19 date, same day at noon
        Time(DateTime(2020, 1, 1, 10)),                     // 20 time 10:00 in 2020
        Time(morning),                                      // 21 time, the same instant as 18
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
    const auto block = Block("\x01\x02");
    const CellFmtData& cell = kCell;
    EXPECT_TRUE(Variant(-1) == 4294967295U);
    EXPECT_FALSE(Variant(0.1F) == 0.1);
    EXPECT_TRUE(Variant("gr\xC3\xBC\xC3\x9F") == L"gr\u00FC\u00DF");
    EXPECT_TRUE(Variant(L"gr\u00FC\u00DF") == "gr\xC3\xBC\xC3\x9F");
    // Against a plain DateTime every date tag compares the whole value.
    EXPECT_FALSE(Date(DateTime(2024, 3, 5, 10)) == noon);
    EXPECT_TRUE(Time(noon) == noon);
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
    const auto block = Block("\x07");
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
    const CellFmtData& cell = kCell;
    const auto block = Block("\x07");
    const Variant values[] = {
        Variant(),    Variant(5),   Variant(block.get()),        Variant(stored),
        Date(stored), Time(stored), Variant(BigDecimal("1.50")), Variant(cell)};
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
    const auto block = Block("ab");
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
        {"date", Date(when), L"2024-03-05 07:08:09.012", whenText, "3/5/2024", false},
        {"time", Time(when), L"2024-03-05 07:08:09.012", whenText, "3/5/2024", false},
        {"decimal", Variant(BigDecimal("1.50")), L"1.50", "1.50", "1.50", false},
        {"cell", Variant(kCell), L"2.500000", "", "", true},
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
    const std::wstring cell = Variant(kCell).ToWString().c_str();
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(plain, "1,500000000000000") << found;
    EXPECT_EQ(wide, L"1,500000000000000") << found;
    EXPECT_EQ(general, "1,5") << found;
    EXPECT_EQ(cell, L"2,500000") << found;
}

}  // namespace
