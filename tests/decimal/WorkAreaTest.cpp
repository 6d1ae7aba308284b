// Results of up to 255 digits are worked out without a heap work area. The program
// counts every global allocation, so it can see the one that a longer result needs.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include <ZelvorDataType/BigInt.h>

#include "support/TestDoubles.h"

#if defined(__SANITIZE_ADDRESS__) || !ZELVOR_CAN_REPLACE_NEW
#define ZELVOR_TEST_OWN_ALLOCATOR 0  // the sanitizer owns the global allocator
#elif defined(__has_feature)
#define ZELVOR_TEST_OWN_ALLOCATOR !__has_feature(address_sanitizer)
#else
#define ZELVOR_TEST_OWN_ALLOCATOR 1
#endif

namespace {
size_t gHeapAllocations = 0;
}  // namespace

#if ZELVOR_TEST_OWN_ALLOCATOR
void* operator new(size_t size) {
    ++gHeapAllocations;
    if (void* p = std::malloc(size == 0 ? 1 : size)) {
        return p;
    }
    throw std::bad_alloc();
}
void* operator new[](size_t size) {
    return ::operator new(size);
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete[](void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, size_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, size_t) noexcept {
    std::free(p);
}
#endif

namespace {

TEST(BigIntWorkArea, HeapOnlyFrom256Digits) {
    if (!ZELVOR_TEST_OWN_ALLOCATOR) {
        GTEST_SKIP() << "allocations can't be counted under the sanitizer";
    }
    struct Case {
        int op, lengthA, lengthB;
        size_t heapBlocks;  // the result itself lives in the arena
    } cases[] = {{2, 128, 127, 0}, {2, 128, 128, 1}, {0, 254, 10, 0}, {0, 255, 10, 1},
                 {1, 255, 10, 0},  {1, 256, 10, 1},  {3, 260, 6, 0},  {3, 261, 6, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "op " << c.op << " " << c.lengthA << "/" << c.lengthB);
        const std::string a(static_cast<size_t>(c.lengthA), '7');
        const std::string b(static_cast<size_t>(c.lengthB), '3');
        ZelvorBase::Buffer arena;
        const ZelvorDataType::BigInt x(a.c_str(), c.lengthA, 1, 0, false, &arena);
        const ZelvorDataType::BigInt y(b.c_str(), c.lengthB, 1, 0, false, &arena);
        const size_t before = gHeapAllocations;
        ASSERT_NE(ZelvorDataType::BigInt::CalculateBuf(c.op, &x, &y, 0, &arena, 1), nullptr);
        EXPECT_EQ(gHeapAllocations - before, c.heapBlocks);
    }
}

}  // namespace
