#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/Binary.h>
#include "support/Cases.h"
#include "support/TestDoubles.h"

namespace {

using ZelvorDataType::Binary;
using ZelvorDataType::BinaryImpl;
using ZelvorDataType::CreateBinary;

using Bytes = std::vector<unsigned char>;

Bytes View(const Binary& b) {
    const unsigned char* p = b.c_ptr();
    return p == nullptr ? Bytes{} : Bytes(p, p + b.GetSize());
}

const Bytes kTen = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};

// Every behaviour holds alike on the heap and in an arena; the fixture runs each test
// in both and owns the heap object.
class BinaryBothHomes : public testing::TestWithParam<bool> {
  protected:
    Binary* Make(const void* data, size_t size) {
        if (GetParam()) {
            return CreateBinary(data, size, &mBuffer);
        }
        mOwned.emplace_back(CreateBinary(data, size));
        return mOwned.back().get();
    }
    Binary* Make(const Bytes& bytes) { return Make(bytes.data(), bytes.size()); }

    ZelvorTest::RefusingBuffer mBuffer;
    std::vector<std::unique_ptr<Binary>> mOwned;
};

INSTANTIATE_TEST_SUITE_P(HeapAndArena, BinaryBothHomes, testing::Bool(),
                         [](const auto& p) { return p.param ? "Arena" : "Heap"; });

TEST_P(BinaryBothHomes, SizesAndNullData) {
    Binary* b = Make(kTen);
    b->SetBinary("xyz", 0);
    b->ResetSize(0);
    EXPECT_EQ(View(*b), kTen);
    b->ResetSize(4);
    EXPECT_EQ(View(*b), (Bytes{0, 1, 2, 3}));
    b->ResetSize(10);  // the bytes past a shrink are kept
    EXPECT_EQ(View(*b), kTen);
    b->ResetSize(20);
    EXPECT_EQ(b->GetSize(), 20u);

    Binary* empty = Make(nullptr, 0);
    EXPECT_EQ(empty->GetSize(), 0u);
    EXPECT_EQ(empty->c_ptr(), nullptr);
    EXPECT_EQ(View(*Make(nullptr, 5)), Bytes(5, 0));
}

TEST_P(BinaryBothHomes, TrimmingMovesOnlyTheView) {
    Binary* b = Make(kTen);
    unsigned char* start = b->c_ptr();
    for (const auto& step : ZelvorTest::ReadCases("blocks/Trim.cases")) {
        SCOPED_TRACE(step.where);
        const char op = step[0].front();
        const std::vector<size_t> n = ZelvorTest::Numbers<size_t>(step[0].substr(1));
        if (op == 'h') {
            b->ZapHead(n.at(0));
        } else if (op == 't') {
            b->ZapTail(n.at(0));
        } else if (op == 'r') {
            b->ResetSize(n.at(0));
        } else {
            b->UnZap();
        }
        EXPECT_EQ(b->GetSize(), std::stoul(step[1]));
        EXPECT_EQ(b->c_ptr(), step[2] == "null" ? nullptr : start + std::stoul(step[2]));
    }
    EXPECT_EQ(View(*b), kTen);
}

TEST_P(BinaryBothHomes, SmallerSetReusesTheBlockLargerReplacesItExactly) {
    Binary* b = Make(kTen);
    unsigned char* block = b->c_ptr();
    b->ZapHead(3);
    const Bytes four = {0xA, 0xB, 0xC, 0xD};
    b->SetBinary(four.data(), four.size());
    EXPECT_EQ(b->c_ptr(), block);  // written from the start of the block
    EXPECT_EQ(View(*b), four);
    b->UnZap();
    EXPECT_EQ(View(*b), (Bytes{0xA, 0xB, 0xC, 0xD, 4, 5, 6, 7, 8, 9}));
    const Bytes twelve(12, 0x55);
    b->SetBinary(twelve.data(), twelve.size());
    EXPECT_EQ(View(*b), twelve);
    b->ZapTail(5);
    b->UnZap();
    EXPECT_EQ(b->GetSize(), 12u);  // no spare room was added
}

TEST_P(BinaryBothHomes, EqualityLooksAtViewsOrderAtUnsignedBytes) {
    Binary* a = Make(kTen);
    Binary* b = Make(Bytes{2, 3, 4});
    EXPECT_FALSE(*a == *b);
    a->ZapHead(2);
    a->ZapTail(5);
    EXPECT_TRUE(*a == *b);
    for (const auto& c : ZelvorTest::ReadCases("blocks/Order.cases")) {
        SCOPED_TRACE(c.where);
        const std::vector<int> l = ZelvorTest::Numbers<int>(c[0]);
        const std::vector<int> r = ZelvorTest::Numbers<int>(c[1]);
        const Binary* left = Make(Bytes(l.begin(), l.end()));
        const Binary* right = Make(Bytes(r.begin(), r.end()));
        EXPECT_EQ(*left == *right, c[2] == "yes");
        EXPECT_EQ(*left < *right, c[3] == "yes");
    }
}

TEST(Binary, GiveUpHandsOverTheWholeHeapBlockButNotArenaMemory) {
    std::unique_ptr<Binary> b(CreateBinary(kTen.data(), kTen.size()));
    b->ZapHead(3);
    std::unique_ptr<unsigned char[]> block(b->GiveUpBinary());
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(Bytes(block.get(), block.get() + 10), kTen);
    EXPECT_EQ(b->GetSize(), 0u);
    b->UnZap();
    EXPECT_EQ(b->GetSize(), 0u);  // no block is left behind the view
    EXPECT_EQ(b->GiveUpBinary(), nullptr);
    b->SetBinary("ab", 2);  // still usable
    EXPECT_EQ(View(*b), (Bytes{'a', 'b'}));

    ZelvorBase::Buffer buffer;
    Binary* inArena = CreateBinary(kTen.data(), kTen.size(), &buffer);
    EXPECT_EQ(inArena->GiveUpBinary(), nullptr);
    EXPECT_EQ(View(*inArena), kTen);
    EXPECT_EQ(CreateBinary(&buffer)->GiveUpBinary(), nullptr);
}

TEST(Binary, FactoriesOnTheHeap) {
    EXPECT_EQ(std::unique_ptr<Binary>(CreateBinary())->GetSize(), 0u);
    EXPECT_EQ(std::unique_ptr<Binary>(CreateBinary(size_t{0}, nullptr))->c_ptr(), nullptr);
    EXPECT_EQ(View(*std::unique_ptr<Binary>(CreateBinary(size_t{3}))), Bytes(3, 0));
    BinaryImpl onStack("hi", 2);
    EXPECT_EQ(View(onStack), (Bytes{'h', 'i'}));
}

TEST(Binary, FailedHeapGrowthKeepsTheOldBlock) {
    ZELVOR_SKIP_UNDER_SANITIZER();
    std::unique_ptr<Binary> b(CreateBinary(kTen.data(), kTen.size()));
    EXPECT_THROW(b->ResetSize(static_cast<size_t>(-1) / 2), std::bad_alloc);
    EXPECT_EQ(View(*b), kTen);
    EXPECT_THROW((void)CreateBinary(static_cast<size_t>(-1) / 2), std::bad_alloc);
}

}  // namespace
