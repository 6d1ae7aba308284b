#include <gtest/gtest.h>

#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>
#include "AllocationFault.h"
#include "support/TestDoubles.h"

namespace {

using ZelvorBase::ContractManagerAllocException;
using ZelvorBase::ExceptionImpl;
using ZelvorBase::Message;
using ZelvorDataType::Binary;
using ZelvorDataType::BinaryCollection;
using ZelvorDataType::BinaryCollectionImpl;

using Bytes = std::vector<unsigned char>;
using Sizes = std::vector<size_t>;

struct CollectionDeleter {
    void operator()(BinaryCollection* c) const { BinaryCollection::Delete(c); }
};
using Collection = std::unique_ptr<BinaryCollection, CollectionDeleter>;

Bytes View(const Binary& b) {
    return b.GetSize() == 0 ? Bytes{} : Bytes(b.c_ptr(), b.c_ptr() + b.GetSize());
}

// Blocks of the given sizes whose bytes count up across the whole collection, so that a
// join in the wrong order or with a byte lost shows.
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

Bytes Joined(const BinaryCollection& c) {
    Bytes all;
    for (unsigned int i = 0; i < c.GetBinaryCount(); ++i) {
        const Bytes part = View(*c.GetBinary(i));
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Sizes SizesOf(const BinaryCollection& c) {
    Sizes sizes;
    for (unsigned int i = 0; i < c.GetBinaryCount(); ++i) {
        sizes.push_back(c.GetBinary(i)->GetSize());
    }
    return sizes;
}

// The contract's records are reserved up front, so that only the library's own
// allocations move the count of live ones.
void ReserveRecords(ZelvorTest::CountingContract& contract) {
    contract.requests.reserve(256);
    contract.counts.reserve(256);
    contract.taken.reserve(256);
}

std::vector<Binary*> Pointers(const BinaryCollection& c) {
    std::vector<Binary*> out;
    for (unsigned int i = 0; i < c.GetBinaryCount(); ++i) {
        out.push_back(c.GetBinary(i));
    }
    return out;
}

TEST(BinaryJoin, GroupsNeighboursGreedilyUnderTheLimit) {
    const struct {
        Sizes sizes;
        size_t maxSize;
        Sizes expected;
    } cases[] = {
        {{}, 0, {}},
        {{3, 3, 3}, 0, {9}},
        {{3, 3, 3}, 9, {9}},
        {{3, 3, 3}, 100, {9}},
        {{3, 3, 3}, 6, {6, 3}},
        {{3, 3, 3}, 5, {3, 3, 3}},
        {{2, 10, 2}, 5, {2, 10, 2}},
        {{2, 3, 5}, 5, {5, 5}},
        {{2, 0, 3}, 5, {5}},
        {{4, 0, 4}, 4, {4, 4}},
        {{5, 1}, 4, {5, 1}},
        {{1, 1, 1, 1, 1}, 2, {2, 2, 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.sizes) + " max " + std::to_string(c.maxSize));
        const Collection source = Make(c.sizes);
        ZelvorTest::CountingContract contract;
        ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> governed(&contract);
        const Collection joined(
            ZelvorDataType::CombineBinaryCollectionGoverned(source.get(), c.maxSize, governed));
        EXPECT_EQ(SizesOf(*joined), c.expected);
        EXPECT_EQ(Joined(*joined), Joined(*source));
        EXPECT_EQ(contract.requests, c.expected);
        EXPECT_EQ(contract.taken, c.expected);
        EXPECT_EQ(contract.counts, std::vector<int>(c.expected.size(), 1));

        const Collection plain(ZelvorDataType::CombineBinaryCollection(source.get(), c.maxSize));
        EXPECT_EQ(SizesOf(*plain), c.expected);

        ZelvorTest::CountingContract whole;
        const std::unique_ptr<Binary> one(ZelvorDataType::CreateBinary(source.get(), &whole));
        EXPECT_EQ(View(*one), Joined(*source));
        const size_t total = std::accumulate(c.sizes.begin(), c.sizes.end(), size_t{0});
        EXPECT_EQ(whole.requests, Sizes{total});  // asked even for 0 bytes
        EXPECT_EQ(whole.taken, Sizes{total});
    }
}

TEST(BinaryJoin, RefusalLeavesNothingBehind) {
    const Collection source = Make({4, 4, 4, 4, 4});  // joined by 8: 8, 8, 4
    const std::vector<Binary*> before = Pointers(*source);
    const Bytes bytes = Joined(*source);
    for (size_t refused = 1; refused <= 3; ++refused) {
        ZelvorTest::CountingContract contract(refused, 0x7FFFFFFF0000000CLL);
        ReserveRecords(contract);
        ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> governed(&contract);
        const long live = ZelvorTest::LiveAllocations();
        try {
            Collection(ZelvorDataType::CombineBinaryCollectionGoverned(source.get(), 8, governed));
            ADD_FAILURE() << "no refusal at request " << refused;
        } catch (const ExceptionImpl<ContractManagerAllocException>& e) {
            EXPECT_EQ(e.GetID(), 12);  // the low 32 bits of the answer
            EXPECT_EQ(std::wstring(e.GetMessage()),
                      std::wstring(L"No memory to be contracted. Contract request rejected.\n") +
                          ZelvorBase::GetSystemErrorDescription(12).c_str());
        }
        EXPECT_EQ(ZelvorTest::LiveAllocations(), live) << "refused at " << refused;
        EXPECT_EQ(contract.requests.size(), refused);
        EXPECT_EQ(contract.taken, Sizes(refused - 1, 8));
        EXPECT_EQ(Pointers(*source), before);
        EXPECT_EQ(Joined(*source), bytes);
    }
    ZelvorTest::CountingContract once(1, 28);
    EXPECT_THROW(ZelvorDataType::CreateBinary(source.get(), &once),
                 ExceptionImpl<ContractManagerAllocException>);
    EXPECT_TRUE(once.taken.empty());
}

TEST(BinaryJoin, FailedAllocationLeavesNothingBehind) {
    const Collection source = Make({3, 5, 2, 7});
    const Bytes bytes = Joined(*source);
    ZelvorTest::CountingContract contract;
    ReserveRecords(contract);
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> governed(&contract);
    auto unchanged = [&] { EXPECT_EQ(Joined(*source), bytes); };
    EXPECT_GE(ZelvorTest::ForEveryFailingAllocation(
                  [&] { Collection(CombineBinaryCollectionGoverned(source.get(), 8, governed)); },
                  unchanged),
              4u);
    EXPECT_GE(
        ZelvorTest::ForEveryFailingAllocation(
            [&] { std::unique_ptr<Binary>(CreateBinary(source.get(), &contract)); }, unchanged),
        2u);
}

TEST(BinaryCollection, IndexAtCountThrows) {
    const Collection c = Make({1, 2});
    EXPECT_EQ(c->GetBinary(1)->GetSize(), 2u);
    try {
        c->GetBinary(2);
        FAIL() << "no throw";
    } catch (const ExceptionImpl<Message>& e) {
        EXPECT_STREQ(e.GetMessage(), L"use out of bound index to access vector");
        EXPECT_EQ(e.GetDomain(), ZelvorBase::MESSAGE_DOMAIN_UNKNOWN);
        EXPECT_EQ(e.GetID(), -1);
    }
    EXPECT_EQ(c->GetTotalLength(), 3u);
}

TEST(BinaryCollection, MergeMovesOwnership) {
    const struct { Sizes mine, theirs; } cases[] = {{{1, 2}, {}}, {{}, {3}}, {{1}, {2, 3}}};
    for (const auto& c : cases) {
        const Collection mine = Make(c.mine);
        Collection theirs = Make(c.theirs);
        std::vector<Binary*> expected = Pointers(*mine);
        for (Binary* b : Pointers(*theirs)) {
            expected.push_back(b);
        }
        mine->Merge(theirs.get());
        EXPECT_EQ(theirs->GetBinaryCount(), 0u);
        theirs.reset();  // must not take the moved blocks with it
        EXPECT_EQ(Pointers(*mine), expected);
        EXPECT_EQ(Joined(*mine).size(), mine->GetTotalLength());
    }
}

TEST(BinaryCollection, MergeRefusalsChangeNothing) {
    struct Foreign : BinaryCollection {
        void Insert(Binary*) override {}
        void Merge(BinaryCollection*) override {}
        unsigned int GetBinaryCount() const override { return 0; }
        Binary* GetBinary(unsigned int) const override { return nullptr; }
        size_t GetTotalLength() const override { return 0; }
        void Delete() override {}
    } foreign;
    const Collection mine = Make({1, 2});
    const Collection other = Make({3});
    const std::vector<Binary*> before = Pointers(*mine);
    EXPECT_THROW(mine->Merge(mine.get()), ExceptionImpl<Message>);
    EXPECT_THROW(mine->Merge(&foreign), ExceptionImpl<Message>);
    mine->Merge(nullptr);
    EXPECT_EQ(Pointers(*mine), before);
    EXPECT_EQ(ZelvorTest::ForEveryFailingAllocation([&] { mine->Merge(other.get()); },
                                                    [&] {
                                                        EXPECT_EQ(Pointers(*mine), before);
                                                        EXPECT_EQ(other->GetBinaryCount(), 1u);
                                                    }),
              1u);
}

TEST(BinaryCollection, GiveUpAndNullSafeDelete) {
    auto* impl = new BinaryCollectionImpl();
    std::unique_ptr<Binary> kept(ZelvorDataType::CreateBinary("abc", 3));
    impl->Insert(kept.get());
    impl->GiveUp();
    EXPECT_EQ(impl->GetBinaryCount(), 0u);
    BinaryCollectionImpl::Delete(impl);
    EXPECT_EQ(View(*kept), (Bytes{'a', 'b', 'c'}));  // still alive, and ours
    BinaryCollection::Delete(nullptr);
    ZelvorDataType::CreateBinaryCollection()->Delete();
}

}  // namespace
