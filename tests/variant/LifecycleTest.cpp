#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "VariantSupport.h"
#include "support/TestDoubles.h"

namespace {

using VariantTest::Thrown;
using VariantTest::Wide;
using ZelvorDataType::BigDecimal;
using ZelvorDataType::Binary;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;
using ZelvorTest::CountingContract;
using ZelvorTest::RefusingBuffer;

const unsigned char kFive[] = {1, 2, 3, 4, 5};

std::unique_ptr<Binary> Block() {
    return std::unique_ptr<Binary>(ZelvorDataType::CreateBinary(kFive, sizeof kFive));
}

CellFmtData Cell(EnumCellFmtDataTypes type) {
    return CellFmtData(2.5, type, ZelvorBase::GUID_NULL);
}

TEST(VariantLifecycle, TagAndNullAfterEachWayOfSetting) {
    RefusingBuffer arena;
    const struct {
        const char* name;
        std::function<Variant()> make;
        int tag;
        bool isNull;
    } cases[] = {
        {"arena alone", [&] { return Variant(&arena); }, -1, true},
        {"null narrow text", [] { return Variant(static_cast<const char*>(nullptr)); }, 9, false},
        {"null wide text", [] { return Variant(static_cast<const wchar_t*>(nullptr)); }, 9, false},
        {"short", [] { return Variant(static_cast<short>(3)); }, 21, false},
        {"int", [] { return Variant(3); }, 1, false},
        {"unsigned", [] { return Variant(3U); }, 2, false},
        {"long long", [] { return Variant(3LL); }, 34, false},
        {"float", [] { return Variant(3.0F); }, 7, false},
        {"double", [] { return Variant(3.0); }, 6, false},
        {"date-time", [] { return Variant(DateTime(2024, 1, 2)); }, 16, false},
        {"date", [] { return VariantTest::Date(DateTime(2024, 1, 2)); }, 14, false},
        {"time", [] { return VariantTest::Time(DateTime(2024, 1, 2)); }, 15, false},
        {"decimal", [] { return Variant(BigDecimal("1.5")); }, 30, false},
        {"block", [] { return Variant(Block().get()); }, 11, false},
        {"cell", [] { return Variant(Cell(CELLFMT_TYPE_DEFAULT)); }, 31, false},
        {"null cell", [] { return Variant(Cell(CELLFMT_TYPE_NULL)); }, 31, true},
        {"int, then double",
         [] {
             Variant v(7);
             v = 2.5;
             return v;
         },
         6, false},
        {"text, then reset",
         [] {
             Variant v(L"x");
             v.Reset();
             return v;
         },
         -1, true},
    };
    for (const auto& c : cases) {
        const Variant v = c.make();
        EXPECT_EQ(v.GetVarType(), c.tag) << c.name;
        EXPECT_EQ(v.IsNull(), c.isNull) << c.name;
    }
    const size_t calls = arena.Calls();
    const Variant number(2.5, &arena);  // numbers sit in the object itself
    EXPECT_EQ(arena.Calls(), calls);
}

TEST(VariantLifecycle, ContractHearsExactByteCountsForTextsAndBlocks) {
    const auto block = Block();
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
        {"own text again",
         [](Variant& v) {
             v = L"abcd";
             v = v.GetRawWString()->c_str() + 1;
         },
         {20, 16}},
        {"ungoverned kinds",
         [](Variant& v) {
             v = DateTime(2024, 1, 2);
             v = BigDecimal("1.5");
             v = Cell(CELLFMT_TYPE_DEFAULT);
             v = 5;
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
    const auto block = Block();
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
    EXPECT_EQ(Thrown([&] { Variant copy(source); }), L"Not enough memory left.");
    EXPECT_EQ(contract.refs, 1);  // the failed copy gave its reference back
    CountingContract refusing(1);
    try {
        Variant v(&refusing);
        v = L"refused";
        ADD_FAILURE() << "no refusal";
    } catch (const VariantTest::VariantError& e) {
        EXPECT_EQ(e.GetID(), -1);
        EXPECT_EQ(e.GetDomain(), ZelvorBase::MESSAGE_DOMAIN_UNKNOWN);
    }
}

TEST(VariantLifecycle, ArenaHoldsEverythingAndCopiesUseTheTargetsOwn) {
    RefusingBuffer arena;
    CountingContract contract;
    Variant inArena(&arena);
    const auto block = Block();
    size_t calls = arena.Calls();
    for (const auto& assign : std::vector<std::function<void()>>{
             [&] { inArena = L"text"; }, [&] { inArena = "text"; },
             [&] { inArena = DateTime(2024, 1, 2); }, [&] { inArena = BigDecimal("1.5"); },
             [&] { inArena = block.get(); }, [&] { inArena = Cell(CELLFMT_TYPE_DEFAULT); }}) {
        assign();
        EXPECT_GT(arena.Calls(), calls) << inArena.GetVarType();
        calls = arena.Calls();
    }
    inArena = L"in the arena";
    calls = arena.Calls();
    const Variant sameArena(inArena);  // the copy constructor takes the source's arena
    EXPECT_GT(arena.Calls(), calls);
    EXPECT_NE(sameArena.GetRawWString(), inArena.GetRawWString());

    Variant governed(&contract);
    calls = arena.Calls();
    governed = inArena;  // assignment uses the target's heap and contract
    EXPECT_EQ(arena.Calls(), calls);
    EXPECT_EQ(contract.requests, std::vector<size_t>{52});
    EXPECT_TRUE(governed == L"in the arena");

    RefusingBuffer refusing(1);
    Variant v(&refusing);
    EXPECT_THROW(v = L"abc", std::bad_alloc);
    EXPECT_EQ(v.GetVarType(), -1);
}

TEST(VariantLifecycle, CopiesAreDeepAndSelfAssignmentIsHarmless) {
    Variant source(L"abc");
    Variant copy(source);
    copy = L"changed";
    EXPECT_TRUE(source == L"abc");

    Variant& alias = source;
    source = alias;
    EXPECT_TRUE(source == L"abc");
    source = source.GetRawWString()->c_str() + 1;  // from its own text
    EXPECT_TRUE(source == L"bc");

    Variant date(DateTime(2024, 1, 2, 3, 4, 5, 6));
    date = *date.ToDateTime();
    EXPECT_TRUE(date == DateTime(2024, 1, 2, 3, 4, 5, 6));
    const auto block = Block();
    Variant bytes(block.get());
    bytes = bytes.ToBinary();
    EXPECT_TRUE(bytes == *block);
    Variant invalid{BigDecimal("x")};
    const Variant invalidCopy(invalid);  // an invalid decimal copies without a throw
    EXPECT_TRUE(invalidCopy.ToBigDecimal()->IsInvalid());
}

TEST(VariantLifecycle, SwapMovesValuesAndBuffersButNotContracts) {
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
    number = L"goes to the arena";  // the arena came along, the contract stayed
    EXPECT_GT(arena.Calls(), calls);
    EXPECT_TRUE(contract.requests.empty());
    text = L"plain heap";
    EXPECT_TRUE(contract.requests.empty());

    Variant empty;
    Variant real(2.5);
    empty.swap(real);
    EXPECT_TRUE(empty == 2.5);
    EXPECT_EQ(real.GetVarType(), -1);
    EXPECT_EQ(static_cast<long long>(real), 0);
}

TEST(VariantLifecycle, TakeValueCopiesTheSlotByTheSourcesWidth) {
    Variant number(0);
    number.TakeValue(Variant(static_cast<short>(-1)));
    EXPECT_EQ(static_cast<int>(number), 65535);  // 16 bits came over, the tag stayed
    number.TakeValue(Variant());
    EXPECT_EQ(static_cast<int>(number), 0);

    Variant empty;
    Variant text(L"owned by text");
    empty.TakeValue(text);  // an empty tag owns nothing, so only one owner remains
    EXPECT_TRUE(empty.IsNull());
    EXPECT_EQ(Wide(text.ToWString()), L"owned by text");
}

}  // namespace
