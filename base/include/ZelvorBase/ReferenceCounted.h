#pragma once

#include <cstddef>

#include <ZelvorBase/Export.h>

namespace ZelvorBase {

// An object whose lifetime is governed by a reference count. AddRef takes a reference,
// Release gives one back; what happens at zero is the implementation's affair. The
// destructor is protected: such objects are never deleted directly by their users.
class ZELVOR_BASE_API ReferenceCounted {
  public:
    virtual void AddRef() = 0;
    virtual void Release() = 0;

  protected:
    virtual ~ReferenceCounted();
};

// One counted reference, null allowed. Copying takes a new reference (AddRef); the
// destructor first nulls the pointer, then calls Release, so that a Release that
// re-enters the owner never sees a dangling pointer. Deliberately not movable: a
// "move" is a copy, that is, a new reference.
template <class T>
class SmartPtrI {
  public:
    SmartPtrI() noexcept : mPtr(nullptr) {}
    SmartPtrI(T* p) : mPtr(p) {  // NOLINT: implicit from a raw pointer by design
        if (mPtr != nullptr) {
            mPtr->AddRef();
        }
    }
    SmartPtrI(const SmartPtrI& other) : SmartPtrI(other.mPtr) {}
    SmartPtrI& operator=(const SmartPtrI& other) {
        if (this == &other) {
            return *this;
        }
        if (other.mPtr != nullptr) {
            other.mPtr->AddRef();
        }
        T* old = mPtr;
        mPtr = other.mPtr;
        if (old != nullptr) {
            old->Release();
        }
        return *this;
    }
    ~SmartPtrI() {
        T* old = mPtr;
        mPtr = nullptr;
        if (old != nullptr) {
            old->Release();
        }
    }

    T* Get() const noexcept { return mPtr; }
    T* operator->() const noexcept { return mPtr; }
    T& operator*() const noexcept { return *mPtr; }
    explicit operator bool() const noexcept { return mPtr != nullptr; }

  private:
    T* mPtr;
};

// A caller's budget for memory. Before an allocation of `bytes` that a caller governs,
// the library asks RequestMemory(bytes, 1): 0 grants, any other value refuses and its
// low 32 bits are the error code; nothing is allocated after a refusal. MemoryTaken
// follows once the allocation succeeded. Frees are never reported.
class ZELVOR_BASE_API MemoryContract : public ReferenceCounted {
  public:
    virtual long long RequestMemory(size_t bytes, int count) = 0;
    virtual void MemoryTaken(size_t bytes) = 0;
};

}  // namespace ZelvorBase
