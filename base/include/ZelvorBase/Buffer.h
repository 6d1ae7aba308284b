#pragma once

#include <cstddef>
#include <memory_resource>
#include <new>

#include <ZelvorBase/Export.h>

namespace ZelvorBase {

// An arena. Everything allocated from it goes at once, when the arena is destroyed;
// nothing drawn from it is ever freed on its own, and an object placed in it is never
// destroyed by its owner. A value must not outlive the Buffer it was placed in.
//
// Allocate hands out blocks aligned for any fundamental type. It returns nullptr when
// memory runs out; a derived arena may also refuse on purpose (tests do, to prove that
// callers cope). Not thread-safe: an arena serves one thread at a time.
class ZELVOR_BASE_API Buffer {
  public:
    Buffer();
    virtual ~Buffer();
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    // Returns `size` bytes (at least one byte for a size of 0), or nullptr on refusal.
    virtual void* Allocate(size_t size);

  private:
    std::pmr::monotonic_buffer_resource mResource;
};

// A standard allocator over a Buffer. With a Buffer, memory comes from Buffer::Allocate
// and deallocate does nothing (the arena frees it all at once); a refusal of the arena
// throws std::bad_alloc, as the allocator requirements demand. With nullptr, memory
// comes from the heap and is freed normally. Two allocators are equal when they draw on
// the same Buffer (or both on the heap).
template <class T>
class Allocator {
  public:
    using value_type = T;

    Allocator(Buffer* buffer = nullptr) noexcept : mBuffer(buffer) {}  // NOLINT: implicit by design
    template <class U>
    Allocator(const Allocator<U>& other) noexcept : mBuffer(other.GetBuffer()) {}

    T* allocate(size_t n) {
        if (n > static_cast<size_t>(-1) / sizeof(T)) {
            throw std::bad_array_new_length();
        }
        if (mBuffer == nullptr) {
            return static_cast<T*>(::operator new(n * sizeof(T)));
        }
        void* p = mBuffer->Allocate(n * sizeof(T));
        if (p == nullptr) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(p);
    }

    void deallocate(T* p, size_t /*n*/) noexcept {
        if (mBuffer == nullptr) {
            ::operator delete(p);
        }
    }

    Buffer* GetBuffer() const noexcept { return mBuffer; }

    template <class U>
    bool operator==(const Allocator<U>& other) const noexcept {
        return mBuffer == other.GetBuffer();
    }

  private:
    Buffer* mBuffer;
};

}  // namespace ZelvorBase

// Placement forms that draw on a Buffer. They throw std::bad_alloc when the arena refuses.
// A null Buffer means the heap, so `new (nullptr) T` pairs with a plain `delete`.
// The matching deletes run only when a constructor throws; with a Buffer they free
// nothing, since arena memory goes with the arena.
ZELVOR_BASE_API void* operator new(size_t size, ZelvorBase::Buffer* buffer);
ZELVOR_BASE_API void* operator new[](size_t size, ZelvorBase::Buffer* buffer);
ZELVOR_BASE_API void operator delete(void* p, ZelvorBase::Buffer* buffer) noexcept;
ZELVOR_BASE_API void operator delete[](void* p, ZelvorBase::Buffer* buffer) noexcept;
