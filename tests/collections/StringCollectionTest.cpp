#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>
#include "AllocationFault.h"

namespace {

using ZelvorDataType::CreateStringCollection;
using ZelvorDataType::StringCollection;

// An entry as the test sees it: a text, or nullopt for a null entry.
using Entries = std::vector<std::optional<std::wstring>>;

Entries Read(const StringCollection& c) {
    Entries out;
    for (size_t i = 0; i < c.GetCount(); ++i) {
        const wchar_t* text = c.GetString(i);
        out.push_back(text == nullptr ? std::nullopt : std::optional<std::wstring>(text));
    }
    return out;
}

std::unique_ptr<StringCollection> Make(const Entries& entries) {
    std::unique_ptr<StringCollection> c(CreateStringCollection());
    for (const auto& e : entries) {
        // Each text is a temporary that dies straight after the call.
        c->Insert(e ? std::wstring(*e).c_str() : nullptr);
    }
    return c;
}

const std::nullopt_t null = std::nullopt;

TEST(StringCollection, InsertTextKeepsOrderNullsEmptiesAndDuplicates) {
    const Entries cases[] = {
        {},
        {null},
        {L""},
        {L"a", null, L"", L"a", L"\u00e9\U0001F600"},
    };
    for (const Entries& entries : cases) {
        EXPECT_EQ(Read(*Make(entries)), entries) << entries.size();
    }
}

TEST(StringCollection, InsertCollectionAppendsCopiesOfAll) {
    const struct {
        Entries mine, theirs;
        bool self;  // insert the collection into itself instead of `theirs`
        Entries expected;
    } cases[] = {
        {{L"x"}, {}, false, {L"x"}},
        {{}, {null, L"b", null}, false, {null, L"b", null}},
        {{L"x"}, {L"a", L""}, false, {L"x", L"a", L""}},
        {{L"a", L"b"}, {}, true, {L"a", L"b", L"a", L"b"}},
        {{null}, {}, true, {null, null}},
        {{}, {}, true, {}},
    };
    for (const auto& c : cases) {
        auto mine = Make(c.mine);
        auto theirs = Make(c.theirs);
        mine->Insert(c.self ? *mine : *theirs);
        EXPECT_EQ(Read(*mine), c.expected);
        EXPECT_EQ(Read(*theirs), c.theirs);
        if (!c.self && !c.theirs.empty() && c.theirs[0]) {  // copies, not shared pointers
            EXPECT_NE(mine->GetString(c.mine.size()), theirs->GetString(0));
        }
    }
}

TEST(StringCollection, ClearEmptiesAndAllowsRefill) {
    auto c = Make({});
    c->Clear();
    EXPECT_EQ(c->GetCount(), 0u);
    c = Make({L"a", null});
    c->Clear();
    EXPECT_EQ(c->GetCount(), 0u);
    c->Insert(L"b");
    EXPECT_EQ(Read(*c), (Entries{L"b"}));
}

TEST(StringCollection, IndexAtCountThrows) {
    auto c = Make({L"a"});
    EXPECT_NO_THROW(c->GetString(0));
    try {
        c->GetString(1);
        FAIL() << "no throw";
    } catch (const ZelvorBase::ExceptionImpl<ZelvorBase::Message>& e) {
        EXPECT_STREQ(e.GetMessage(), L"use out of bound index to access vector");
        EXPECT_EQ(e.GetID(), -1);
    }
}

TEST(StringCollection, FailedInsertChangesNothing) {
    const Entries start = {L"a", null, L"bb"};
    auto c = Make(start);
    auto other = Make({L"x", null, L"yy", L"z"});
    const std::function<void()> inserts[] = {
        [&] { c->Insert(L"new"); },
        [&] { c->Insert(*other); },
        [&] { c->Insert(*c); },
    };
    for (const auto& insert : inserts) {
        const size_t failures =
            ZelvorTest::ForEveryFailingAllocation(insert, [&] { EXPECT_EQ(Read(*c), start); });
        EXPECT_GE(failures, 1u);
        c = Make(start);
    }
}

}  // namespace
