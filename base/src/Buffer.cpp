#include <ZelvorBase/Buffer.h>

#include <cstddef>
#include <new>

namespace ZelvorBase {

Buffer::Buffer() : mResource(std::pmr::new_delete_resource()) {}

Buffer::~Buffer() = default;

void* Buffer::Allocate(size_t size) {
    // The resource never hands out a zero-byte block; ask for one byte so that every
    // success is a distinct, usable pointer.
    try {
        return mResource.allocate(size == 0 ? 1 : size, alignof(std::max_align_t));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace ZelvorBase

void* operator new(size_t size, ZelvorBase::Buffer* buffer) {
    if (buffer == nullptr) {
        return ::operator new(size);
    }
    void* p = buffer->Allocate(size);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    return p;
}

void* operator new[](size_t size, ZelvorBase::Buffer* buffer) {
    if (buffer == nullptr) {
        return ::operator new[](size);
    }
    void* p = buffer->Allocate(size);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    return p;
}

void operator delete(void* p, ZelvorBase::Buffer* buffer) noexcept {
    if (buffer == nullptr) {
        ::operator delete(p);
    }
}

void operator delete[](void* p, ZelvorBase::Buffer* buffer) noexcept {
    if (buffer == nullptr) {
        ::operator delete[](p);
    }
}
