#pragma once

// Test doubles shared by the suites: arenas and contracts that count and refuse.

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <vector>

#include <ZelvorBase/ZelvorBase.h>

// Which sanitizer the program is built with: g++ says so by macros, clang by features.
#if defined(__has_feature)
#define ZELVOR_HAS_FEATURE(name) __has_feature(name)
#else
#define ZELVOR_HAS_FEATURE(name) 0
#endif

// ThreadSanitizer's runtime defines the global operator new and delete itself, and a
// program that defines them too does not link; programs that count or fail heap
// allocations keep the runtime's allocator under it and skip what needs their own.
#if defined(__SANITIZE_THREAD__) || ZELVOR_HAS_FEATURE(thread_sanitizer)
#define ZELVOR_CAN_REPLACE_NEW 0
#else
#define ZELVOR_CAN_REPLACE_NEW 1
#endif

// The sanitizers report a failed operator new as a fatal error instead of letting it
// throw std::bad_alloc, and valgrind aborts the program there, so tests that provoke a
// real heap exhaustion skip under them.
#if !ZELVOR_CAN_REPLACE_NEW || defined(__SANITIZE_ADDRESS__) || \
    ZELVOR_HAS_FEATURE(address_sanitizer)
#define ZELVOR_UNDER_SANITIZER 1
#endif
#if __has_include(<valgrind/valgrind.h>)
#include <valgrind/valgrind.h>
#define ZELVOR_UNDER_VALGRIND() (RUNNING_ON_VALGRIND != 0)
#else
#define ZELVOR_UNDER_VALGRIND() false
#endif
#ifdef ZELVOR_UNDER_SANITIZER
#define ZELVOR_SKIP_UNDER_SANITIZER() GTEST_SKIP() << "heap exhaustion aborts under a sanitizer"
#else
#define ZELVOR_SKIP_UNDER_SANITIZER() \
    if (!ZELVOR_UNDER_VALGRIND()) {   \
    } else                            \
        GTEST_SKIP() << "heap exhaustion aborts under valgrind"
#endif

namespace ZelvorTest {

// True when ZELVOR_TEST_SCALE=small asks the slow suites for a smaller input, as the run
// under valgrind does.
inline bool SmallScale() {
    const char* scale = std::getenv("ZELVOR_TEST_SCALE");
    return scale != nullptr && std::strcmp(scale, "small") == 0;
}

// An arena that counts its allocations and refuses the N-th one (1-based) and every
// one after it when `refuseFrom` is set; 0 never refuses.
class RefusingBuffer : public ZelvorBase::Buffer {
  public:
    explicit RefusingBuffer(size_t refuseFrom = 0) : mRefuseFrom(refuseFrom) {}
    void* Allocate(size_t size) override {
        ++mCalls;
        if (mRefuseFrom != 0 && mCalls >= mRefuseFrom) {
            return nullptr;
        }
        return Buffer::Allocate(size);
    }
    size_t Calls() const { return mCalls; }
    void RefuseFrom(size_t n) { mRefuseFrom = n; }

  private:
    size_t mRefuseFrom;
    size_t mCalls = 0;
};

// A memory contract that records every request and every amount taken, and refuses
// the N-th request (1-based) with `code` when `refuseAt` is set; 0 never refuses. Arm
// moves that to the n-th request from now on; Disarm ends it and says whether it came.
// Lives on the stack: AddRef and Release only count.
class CountingContract : public ZelvorBase::MemoryContract {
  public:
    explicit CountingContract(size_t refuseAt = 0, long long code = 12)
        : mRefuseAt(refuseAt), mCode(code) {}

    long long RequestMemory(size_t bytes, int count) override {
        requests.push_back(bytes);
        counts.push_back(count);
        if (mRefuseAt != 0 && requests.size() == mRefuseAt) {
            return mCode;
        }
        return 0;
    }
    void MemoryTaken(size_t bytes) override { taken.push_back(bytes); }
    void Arm(size_t n) { mRefuseAt = requests.size() + n; }
    bool Disarm() {
        const bool fired = mRefuseAt != 0 && requests.size() >= mRefuseAt;
        mRefuseAt = 0;
        return fired;
    }
    void AddRef() override { ++refs; }
    void Release() override { --refs; }

    std::vector<size_t> requests;
    std::vector<int> counts;
    std::vector<size_t> taken;
    int refs = 0;

  private:
    size_t mRefuseAt;
    long long mCode;
};

// A counted object that records AddRef and Release calls and deletes itself at zero;
// with a log, every Release appends `tag` to it, to show the order of releases.
class CountedObject : public ZelvorBase::ReferenceCounted {
  public:
    explicit CountedObject(int* destroyed = nullptr, std::vector<int>* log = nullptr, int tag = 0)
        : mDestroyed(destroyed), mLog(log), mTag(tag) {}
    void AddRef() override {
        ++count;
        ++addRefs;
    }
    void Release() override {
        ++releases;
        if (mLog != nullptr) {
            mLog->push_back(mTag);
        }
        if (--count == 0) {
            delete this;
        }
    }
    int count = 0;
    int addRefs = 0;
    int releases = 0;

  protected:
    ~CountedObject() override {
        if (mDestroyed != nullptr) {
            ++*mDestroyed;
        }
    }

  private:
    int* mDestroyed;
    std::vector<int>* mLog;
    int mTag;
};

}  // namespace ZelvorTest
