// Results of up to 255 digits are worked out without a heap work area. The program
// counts every global allocation, so it can see the one that a longer result needs.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include <ZelvorDataType/BigInt.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZELVOR_TEST_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define ZELVOR_TEST_ASAN 1
#endif

#ifndef ZELVOR_TEST_ASAN
namespace {
size_t gHeapAllocations = 0;
}  // namespace

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

using ZelvorDataType::BigInt;

TEST(BigIntWorkArea, HeapOnlyFrom256Digits) {
#ifdef ZELVOR_TEST_ASAN
    GTEST_SKIP() << "the sanitizer owns the global allocator";
#else
    struct Case {
        int op;
        int lengthA, lengthB;
        size_t heapBlocks;  // allocations besides the result, which lives in the arena
    } cases[] = {
        {2, 128, 127, 0},  // product of R = 255 digits
        {2, 128, 128, 1},  // R = 256
        {0, 254, 10, 0},   // sum, R = 255
        {0, 255, 10, 1},  {1, 255, 10, 0}, {1, 256, 10, 1}, {3, 260, 6, 0},  // quotient, R = 255
        {3, 261, 6, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "op " << c.op << " " << c.lengthA << "/" << c.lengthB);
        const std::string a(static_cast<size_t>(c.lengthA), '7');
        const std::string b(static_cast<size_t>(c.lengthB), '3');
        ZelvorBase::Buffer arena;
        const BigInt x(a.c_str(), c.lengthA, 1, 0, false, &arena);
        const BigInt y(b.c_str(), c.lengthB, 1, 0, false, &arena);
        const size_t before = gHeapAllocations;
        BigInt* r = BigInt::CalculateBuf(c.op, &x, &y, 0, &arena, 1);
        const size_t used = gHeapAllocations - before;
        ASSERT_NE(r, nullptr);
        EXPECT_EQ(used, c.heapBlocks);
    }
#endif
}

}  // namespace
