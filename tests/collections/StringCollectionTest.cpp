#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

using ZelvorDataType::StringCollection;
using Entries = std::vector<std::optional<std::wstring>>;  // nullopt: a null entry
const std::nullopt_t null = std::nullopt;

Entries Read(const StringCollection& c) {
    Entries out;
    for (size_t i = 0; i < c.GetCount(); ++i) {
        const wchar_t* text = c.GetString(i);
        out.push_back(text == nullptr ? null : std::optional<std::wstring>(text));
    }
    return out;
}

std::unique_ptr<StringCollection> Make(const Entries& entries) {
    std::unique_ptr<StringCollection> c(ZelvorDataType::CreateStringCollection());
    for (const auto& e : entries) {  // each text is a temporary, gone after the call
        c->Insert(e ? std::wstring(*e).c_str() : nullptr);
    }
    return c;
}

TEST(StringCollection, InsertsCopiesInOrder) {
    const struct {
        Entries mine, theirs;
        bool self;  // insert the collection into itself instead of `theirs`
        Entries expected;
    } cases[] = {
        {{L"a", null, L"", L"a"}, {}, false, {L"a", null, L"", L"a"}},
        {{L"x"}, {null, L"b", L""}, false, {L"x", null, L"b", L""}},
        {{L"a", null}, {}, true, {L"a", null, L"a", null}},
        {{}, {}, true, {}},
    };
    for (const auto& c : cases) {
        auto mine = Make(c.mine);
        const auto theirs = Make(c.theirs);
        mine->Insert(c.self ? *mine : *theirs);
        EXPECT_EQ(Read(*mine), c.expected);
        EXPECT_EQ(Read(*theirs), c.theirs);
    }
    auto c = Make({L"a", null});
    c->Clear();
    c->Insert(L"b");
    EXPECT_EQ(Read(*c), (Entries{L"b"}));
    EXPECT_THROW(c->GetString(1), ZelvorBase::ExceptionImpl<ZelvorBase::Message>);
}

// A source whose N-th entry cannot be read, to show that a bulk insert is all or nothing.
struct FailingSource : StringCollection {
    void Insert(const wchar_t*) override {}
    void Insert(const StringCollection&) override {}
    void Clear() override {}
    size_t GetCount() const override { return 3; }
    const wchar_t* GetString(size_t i) const override {
        static const wchar_t* const texts[] = {L"x", nullptr, L"yy"};
        return i + 1 == failAt ? throw std::bad_alloc() : texts[i];
    }
    size_t failAt = 0;
};

TEST(StringCollection, FailedBulkInsertChangesNothing) {
    auto c = Make({L"a", null});
    FailingSource source;
    for (source.failAt = 1; source.failAt <= 3; ++source.failAt) {
        EXPECT_THROW(c->Insert(source), std::bad_alloc);
        EXPECT_EQ(Read(*c), (Entries{L"a", null}));  // the copies made so far are freed
    }
    c->Insert(source);
    EXPECT_EQ(Read(*c), (Entries{L"a", null, L"x", null, L"yy"}));
}

}  // namespace
