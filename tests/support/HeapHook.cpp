// The global allocator of the fault program: malloc and free underneath (so the
// sanitizers and valgrind still see every block), with a count of live blocks and a
// per-thread trap that makes one chosen allocation throw std::bad_alloc. Under
// ThreadSanitizer the runtime's allocator stays: no block is counted and no trap springs,
// so the heap runs of each case end at once and the arena and contract runs remain.
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "HeapHook.h"
#include "TestDoubles.h"

namespace {

std::atomic<long long> gLive{0};
std::atomic<long long> gTaken{0};

// Allocations left before the trap springs on this thread; 0 when unarmed.
thread_local std::size_t tCountdown = 0;
thread_local bool tFired = false;

#if ZELVOR_CAN_REPLACE_NEW
void* Take(std::size_t size) {
    if (tCountdown != 0 && --tCountdown == 0) {
        tFired = true;
        throw std::bad_alloc();
    }
    void* p = std::malloc(size == 0 ? 1 : size);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    gLive.fetch_add(1, std::memory_order_relaxed);
    gTaken.fetch_add(1, std::memory_order_relaxed);
    return p;
}

void Give(void* p) noexcept {
    if (p != nullptr) {
        gLive.fetch_sub(1, std::memory_order_relaxed);
        std::free(p);
    }
}
#endif

}  // namespace

namespace ZelvorTest {

long long LiveHeapBlocks() noexcept {
    return gLive.load(std::memory_order_relaxed);
}

long long HeapAllocations() noexcept {
    return gTaken.load(std::memory_order_relaxed);
}

void ArmHeapFault(std::size_t n) noexcept {
    tCountdown = n;
    tFired = false;
}

bool DisarmHeapFault() noexcept {
    tCountdown = 0;
    return tFired;
}

}  // namespace ZelvorTest

#if ZELVOR_CAN_REPLACE_NEW
// Every replaceable form but the over-aligned ones, which the runtime keeps as a
// matched pair of its own (nothing in the library asks for more than the default
// alignment).
void* operator new(std::size_t size) {
    return Take(size);
}
void* operator new[](std::size_t size) {
    return Take(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return Take(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return ::operator new(size, std::nothrow);
}
void operator delete(void* p) noexcept {
    Give(p);
}
void operator delete[](void* p) noexcept {
    Give(p);
}
void operator delete(void* p, std::size_t) noexcept {
    Give(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    Give(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    Give(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    Give(p);
}
#endif
