// ZelvorTime with a Buffer must never touch the heap, whatever it is copied from or
// assigned. Global operator new is counted here, so this suite is a program of its own.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <memory_resource>
#include <new>

#include <ZelvorDataType/ZelvorTime.h>

#include "RelativeSupport.h"
#include "support/TestDoubles.h"

namespace {

std::size_t gHeapAllocations = 0;

}  // namespace

#if ZELVOR_CAN_REPLACE_NEW
void* operator new(std::size_t size) {
    ++gHeapAllocations;
    if (void* p = std::malloc(size == 0 ? 1 : size)) {
        return p;
    }
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}
#endif

namespace {

using namespace ZelvorDataType;

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

TEST(ZelvorTimeInABuffer, CopiesAndAssignmentsNeverUseTheHeap) {
    if (!ZELVOR_CAN_REPLACE_NEW) {
        GTEST_SKIP() << "allocations can't be counted under ThreadSanitizer";
    }
    ZelvorRelativeTest::PinZone("Europe/Berlin");
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

    const std::size_t before = gHeapAllocations;
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
    EXPECT_EQ(gHeapAllocations - before, 0u);
}

}  // namespace
