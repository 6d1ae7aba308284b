#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "VariantSupport.h"
#include "support/TestDoubles.h"

namespace {

using VariantTest::Thrown;
using ZelvorDataType::BigDecimal;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;
using ZelvorTest::CountingContract;
using ZelvorTest::RefusingBuffer;

const unsigned char kFive[] = {1, 2, 3, 4, 5};
const CellFmtData kCell(2.5, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL);

std::unique_ptr<ZelvorDataType::Binary> Block() {
    return std::unique_ptr<ZelvorDataType::Binary>(ZelvorDataType::CreateBinary(kFive, 5));
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
    // The copy takes the source's contract, which refuses.
    EXPECT_EQ(Thrown([&] { (void)Variant(source); }), L"Not enough memory left.");
    EXPECT_EQ(contract.refs, 1);  // the failed copy gave its reference back
}

TEST(VariantLifecycle, ArenaHoldsEverythingAndCopiesUseTheTargetsOwn) {
    RefusingBuffer arena;
    Variant inArena(&arena);
    const auto block = Block();
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
    const Variant invalid{BigDecimal("x")};
    EXPECT_TRUE(Variant(invalid).ToBigDecimal()->IsInvalid());  // copied without a throw
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

}  // namespace
