// Where the library promises to stay off the heap, the hook's count of blocks says
// whether it did.
#include <gtest/gtest.h>

#include <cstddef>
#include <memory_resource>
#include <string>

#include <ZelvorDataType/BigInt.h>
#include <ZelvorDataType/Binary.h>
#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorDataType/ZelvorTime.h>

#include "support/HeapHook.h"
#include "support/TestDoubles.h"
#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;
using ZelvorTest::HeapAllocations;

// An arena over a fixed block that never falls back on the heap.
class FixedArena : public ZelvorBase::Buffer {
  public:
    void* Allocate(std::size_t size) override {
        return mResource.allocate(size, alignof(std::max_align_t));
    }

  private:
    alignas(std::max_align_t) unsigned char mBlock[64 * 1024];
    std::pmr::monotonic_buffer_resource mResource{mBlock, sizeof mBlock,
                                                  std::pmr::null_memory_resource()};
};

class HeapUse : public testing::Test {
  protected:
    void SetUp() override {
        if (!ZELVOR_CAN_REPLACE_NEW) {
            GTEST_SKIP() << "allocations can't be counted under ThreadSanitizer";
        }
    }
};

TEST_F(HeapUse, ZelvorTimeInABufferNeverUsesTheHeap) {
    const ZelvorTest::ZoneScope zone("Europe/Berlin");
    ZelvorTime rule;
    rule.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH);
    rule.PutDay(-1, true);
    const ZelvorTime sources[] = {
        ZelvorTime(),
        ZelvorTime(DateTime(2024, 3, 14, 15, 30), TIME_MODE_UTC, true),
        ZelvorTime(DateTime(2024, 3, 14, 15, 30), TIME_MODE_LOCAL, false),
        rule,
    };
    static FixedArena arena;

    const long long before = HeapAllocations();
    for (const ZelvorTime& first : sources) {
        for (const ZelvorTime& second : sources) {
            ZelvorTime value(first, &arena);
            value = second;
            value = first;
            ZelvorTime copy(value, &arena);
            copy = second;
            copy.PutDynamicTime(DYNAMIC_TIME_TODAY);
            copy.SetToCurrentTime();
            copy.GetExpiration(value);
            rule.GetExpiration(copy);
            EXPECT_EQ(value == copy, copy == value);
        }
    }
    EXPECT_EQ(HeapAllocations() - before, 0);
}

// Results of up to 255 digits are worked out without a heap work area.
TEST_F(HeapUse, BigIntWorkAreaOnlyFrom256Digits) {
    struct Case {
        int op, lengthA, lengthB;
        long long heapBlocks;  // the result itself lives in the arena
    } cases[] = {{2, 128, 127, 0}, {2, 128, 128, 1}, {0, 254, 10, 0}, {0, 255, 10, 1},
                 {1, 255, 10, 0},  {1, 256, 10, 1},  {3, 260, 6, 0},  {3, 261, 6, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "op " << c.op << " " << c.lengthA << "/" << c.lengthB);
        const std::string a(static_cast<size_t>(c.lengthA), '7');
        const std::string b(static_cast<size_t>(c.lengthB), '3');
        ZelvorBase::Buffer arena;
        const BigInt x(a.c_str(), c.lengthA, 1, 0, false, &arena);
        const BigInt y(b.c_str(), c.lengthB, 1, 0, false, &arena);
        const long long before = HeapAllocations();
        ASSERT_NE(BigInt::CalculateBuf(c.op, &x, &y, 0, &arena, 1), nullptr);
        EXPECT_EQ(HeapAllocations() - before, c.heapBlocks);
    }
}

// The owning pointers give back every block they hold, and a null one is fine.
TEST_F(HeapUse, OwningPointersFreeWhatTheyHold) {
    const long long before = ZelvorTest::LiveHeapBlocks();
    {
        const TimeSeriesPtr daily = MakeTimeSeries(
            RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
            RECURRENCE_NONE, 0, RECURRENCE_FIXED, 9, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
            RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1);
        DateTime point(0.0);
        EXPECT_EQ(daily->GetNextNTimePoints(DateTime(2024, 3, 8), 1, &point), 1u);
        const std::unique_ptr<Binary> block = MakeBinary("abc", 3);
        EXPECT_EQ(block->GetSize(), 3u);
        EXPECT_EQ(MakeBinary(size_t{16})->GetSize(), 16u);
        EXPECT_EQ(MakeBinary()->GetSize(), 0u);
        TimeSeriesPtr none;
        EXPECT_GT(ZelvorTest::LiveHeapBlocks(), before);
    }
    EXPECT_EQ(ZelvorTest::LiveHeapBlocks(), before);
}

}  // namespace
