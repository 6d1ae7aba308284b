// The three collections: texts copied in order, byte blocks joined and merged, counted
// objects held by one reference per entry.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>
#include "support/Cases.h"
#include "support/TestDoubles.h"
#include "support/Text.h"

namespace {

using ZelvorBase::ExceptionImpl;
using ZelvorDataType::Binary;
using ZelvorDataType::BinaryCollection;
using Bytes = std::vector<unsigned char>;
using Sizes = std::vector<size_t>;
using Governed = ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract>;

struct CollectionDeleter {
    void operator()(BinaryCollection* c) const { BinaryCollection::Delete(c); }
};
using Collection = std::unique_ptr<BinaryCollection, CollectionDeleter>;

// Blocks whose bytes count up across the collection, so a lost or reordered byte shows.
Collection Make(const Sizes& sizes) {
    Collection c(ZelvorDataType::CreateBinaryCollection());
    unsigned char next = 1;
    for (size_t size : sizes) {
        Bytes bytes(size);
        for (auto& b : bytes) {
            b = next++;
        }
        c->Insert(ZelvorDataType::CreateBinary(bytes.data(), bytes.size()));
    }
    return c;
}

struct Content {
    std::vector<Binary*> blocks;
    Bytes bytes;
    Sizes sizes;
};
Content Read(const BinaryCollection& c) {
    Content out;
    for (unsigned int i = 0; i < c.GetBinaryCount(); ++i) {
        Binary* b = c.GetBinary(i);
        out.blocks.push_back(b);
        out.bytes.insert(out.bytes.end(), b->c_ptr(), b->c_ptr() + b->GetSize());
        out.sizes.push_back(b->GetSize());
    }
    return out;
}

TEST(BinaryJoin, GroupsNeighboursGreedilyUnderTheLimit) {
    for (const auto& row : ZelvorTest::ReadCases("collections/Join.cases")) {
        SCOPED_TRACE(row.where);
        const size_t maxSize = std::stoul(row[1]);
        const Sizes expected = ZelvorTest::Numbers<size_t>(row[2]);
        const Collection source = Make(ZelvorTest::Numbers<size_t>(row[0]));
        const Bytes all = Read(*source).bytes;
        ZelvorTest::CountingContract contract;
        Governed governed(&contract);
        const Collection joined(CombineBinaryCollectionGoverned(source.get(), maxSize, governed));
        EXPECT_EQ(Read(*joined).sizes, expected);
        EXPECT_EQ(Read(*joined).bytes, all);
        EXPECT_EQ(contract.requests, expected);
        EXPECT_EQ(contract.taken, expected);
        EXPECT_EQ(contract.counts, std::vector<int>(expected.size(), 1));
        EXPECT_EQ(Read(*Collection(CombineBinaryCollection(source.get(), maxSize))).sizes,
                  expected);

        ZelvorTest::CountingContract whole;
        const std::unique_ptr<Binary> one(CreateBinary(source.get(), &whole));
        EXPECT_EQ(Bytes(one->c_ptr(), one->c_ptr() + one->GetSize()), all);
        EXPECT_EQ(whole.requests, Sizes{all.size()});  // asked even for 0 bytes
        EXPECT_EQ(whole.taken, Sizes{all.size()});
    }
}

// Every request refused in turn; the blocks granted before are freed (LSan checks that
// under the sanitize preset) and the source is untouched.
TEST(BinaryJoin, RefusalLeavesNothingBehind) {
    using Refusal = ExceptionImpl<ZelvorBase::ContractManagerAllocException>;
    const Collection source = Make({4, 4, 4, 4, 4});  // joined by 8: 8, 8, 4
    const Content before = Read(*source);
    for (size_t refused = 1; refused <= 3; ++refused) {
        ZelvorTest::CountingContract contract(refused, 0x7FFFFFFF0000000CLL);
        Governed governed(&contract);
        try {
            const Collection joined(CombineBinaryCollectionGoverned(source.get(), 8, governed));
            ADD_FAILURE() << "no refusal at request " << refused;
        } catch (const Refusal& e) {
            EXPECT_EQ(e.GetID(), 12);  // the low 32 bits of the answer
            EXPECT_EQ(std::wstring(e.GetMessage()),
                      std::wstring(L"No memory to be contracted. Contract request rejected.\n") +
                          ZelvorBase::GetSystemErrorDescription(12).c_str());
        }
        EXPECT_EQ(contract.requests.size(), refused);
        EXPECT_EQ(contract.taken, Sizes(refused - 1, 8));
        EXPECT_EQ(Read(*source).blocks, before.blocks);
        EXPECT_EQ(Read(*source).bytes, before.bytes);
    }
}

TEST(BinaryCollection, MergeMovesOwnershipOrChangesNothing) {
    for (const Sizes& theirSizes : {Sizes{}, Sizes{2, 3}}) {
        const Collection mine = Make({1});
        Collection theirs = Make(theirSizes);
        std::vector<Binary*> expected = Read(*mine).blocks;
        const std::vector<Binary*> moved = Read(*theirs).blocks;
        expected.insert(expected.end(), moved.begin(), moved.end());
        mine->Merge(theirs.get());
        EXPECT_EQ(theirs->GetBinaryCount(), 0u);
        theirs.reset();  // must not take the moved blocks with it
        EXPECT_EQ(Read(*mine).blocks, expected);
        EXPECT_EQ(Read(*mine).bytes.size(), mine->GetTotalLength());
    }
    const Collection mine = Make({1, 2});
    const std::vector<Binary*> before = Read(*mine).blocks;
    EXPECT_THROW(mine->Merge(mine.get()), ExceptionImpl<ZelvorBase::Message>);
    mine->Merge(nullptr);
    EXPECT_EQ(Read(*mine).blocks, before);
    try {
        mine->GetBinary(2);
        ADD_FAILURE() << "no throw";
    } catch (const ExceptionImpl<ZelvorBase::Message>& e) {
        EXPECT_STREQ(e.GetMessage(), L"use out of bound index to access vector");
        EXPECT_EQ(e.GetID(), -1);
    }
    BinaryCollection::Delete(nullptr);
    auto* impl = new ZelvorDataType::BinaryCollectionImpl();
    impl->Insert(mine->GetBinary(0));
    impl->GiveUp();  // deleting it now leaves the block to `mine`
    impl->Delete();
}

using ZelvorDataType::StringCollection;
using ZelvorTest::Texts;
using Entries = std::vector<std::wstring>;
const wchar_t* const null = L"(null)";  // a null entry, as Texts shows it

std::unique_ptr<StringCollection> MakeTexts(const Entries& entries) {
    std::unique_ptr<StringCollection> c(ZelvorDataType::CreateStringCollection());
    for (const auto& e : entries) {  // each text is a temporary, gone after the call
        c->Insert(e == null ? nullptr : std::wstring(e).c_str());
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
        auto mine = MakeTexts(c.mine);
        const auto theirs = MakeTexts(c.theirs);
        mine->Insert(c.self ? *mine : *theirs);
        EXPECT_EQ(Texts(*mine), c.expected);
        EXPECT_EQ(Texts(*theirs), c.theirs);
    }
    auto c = MakeTexts({L"a", null});
    c->Clear();
    c->Insert(L"b");
    EXPECT_EQ(Texts(*c), (Entries{L"b"}));
    EXPECT_THROW(c->GetString(1), ZelvorBase::ExceptionImpl<ZelvorBase::Message>);
}

using ZelvorTest::CountedObject;

TEST(ReferenceCountedObjectCollection, EntriesHoldOneReferenceEach) {
    int destroyed = 0;
    auto* object = new CountedObject(&destroyed);
    object->AddRef();  // the caller's own reference
    auto list = ZelvorDataType::CreateReferenceCountedObjectCollection();
    int value = 0;
    list->Insert(object, &value);
    EXPECT_EQ(object->addRefs, 3);  // the caller's, the temporary's, the list's
    EXPECT_EQ(object->releases, 1);
    list->Insert(object, nullptr);
    list->Insert(nullptr, &destroyed);
    EXPECT_EQ(object->count, 3);
    EXPECT_EQ(list->GetRawValue(0), &value);
    EXPECT_FALSE(list->GetObject(2));
    EXPECT_EQ(list->GetRawValue(2), &destroyed);
    EXPECT_THROW(list->GetRawValue(3), ZelvorBase::ExceptionImpl<ZelvorBase::Message>);
    object->Release();  // the list alone keeps it alive now
    {
        const ZelvorBase::SmartPtrI<ZelvorBase::ReferenceCounted> held = list->GetObject(0);
        EXPECT_EQ(object->count, 3);
        list.reset();
        EXPECT_EQ(destroyed, 0);  // `held` outlives the list
    }
    EXPECT_EQ(destroyed, 1);

    std::vector<int> log;  // releases at destruction go from the last entry to the first
    list = ZelvorDataType::CreateReferenceCountedObjectCollection();
    for (int tag = 1; tag <= 3; ++tag) {
        list->Insert(new CountedObject(nullptr, &log, tag), nullptr);
    }
    log.clear();
    list.reset();
    EXPECT_EQ(log, (std::vector<int>{3, 2, 1}));
}

}  // namespace
