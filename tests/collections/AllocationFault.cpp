#include "AllocationFault.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

size_t gFailAt = 0;  // 0: never fail
size_t gCalls = 0;   // operator new calls since arming
long gLive = 0;      // allocations not yet freed

void* Allocate(size_t size) {
    if (gFailAt != 0 && ++gCalls == gFailAt) {
        throw std::bad_alloc();
    }
    void* p = std::malloc(size == 0 ? 1 : size);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    ++gLive;
    return p;
}

void Free(void* p) noexcept {
    if (p != nullptr) {
        --gLive;
        std::free(p);
    }
}

}  // namespace

void* operator new(size_t size) {
    return Allocate(size);
}
void* operator new[](size_t size) {
    return Allocate(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}
void operator delete(void* p) noexcept {
    Free(p);
}
void operator delete[](void* p) noexcept {
    Free(p);
}
void operator delete(void* p, size_t) noexcept {
    Free(p);
}
void operator delete[](void* p, size_t) noexcept {
    Free(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    Free(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    Free(p);
}

namespace ZelvorTest {

long LiveAllocations() {
    return gLive;
}

size_t ForEveryFailingAllocation(const std::function<void()>& action,
                                 const std::function<void()>& afterFailure) {
    for (size_t n = 1;; ++n) {
        const long liveBefore = gLive;
        gCalls = 0;
        gFailAt = n;
        try {
            action();
        } catch (const std::bad_alloc&) {
            gFailAt = 0;
            EXPECT_EQ(gLive, liveBefore)
                << "allocations left behind when allocation " << n << " failed";
            afterFailure();
            continue;
        } catch (...) {
            gFailAt = 0;
            throw;
        }
        gFailAt = 0;
        if (gCalls < n) {
            return n - 1;
        }
        ADD_FAILURE() << "allocation " << n << " failed but the action went on";
        return n;
    }
}

}  // namespace ZelvorTest
