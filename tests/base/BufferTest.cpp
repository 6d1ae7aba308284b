#include <gtest/gtest.h>

#include <cstdint>
#include <new>

#include <ZelvorDataType/WideText.h>
#include "support/TestDoubles.h"

namespace {

using ZelvorBase::Allocator;
using ZelvorBase::Buffer;
using ZelvorBase::SmartPtrI;

TEST(Buffer, AllocationsAreDistinctAlignedAndWritable) {
    Buffer buffer;
    void* previous = nullptr;
    for (size_t size : {0, 1, 3, 16, 100, 4096, 100000}) {
        auto* p = static_cast<unsigned char*>(buffer.Allocate(size));
        ASSERT_NE(p, nullptr) << size;
        EXPECT_NE(p, previous);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % alignof(std::max_align_t), 0u) << size;
        for (size_t i = 0; i < size; ++i) {
            p[i] = static_cast<unsigned char>(i);
        }
        previous = p;
    }
}

TEST(Buffer, HugeRequestIsRefusedWithNull) {
    ZELVOR_SKIP_UNDER_SANITIZER();
    Buffer buffer;
    EXPECT_EQ(buffer.Allocate(static_cast<size_t>(-1) / 2), nullptr);
    EXPECT_NE(buffer.Allocate(8), nullptr);  // still usable afterwards
}

struct Throwing {
    Throwing() { throw 42; }
};

TEST(Buffer, PlacementNewFromTheArenaOrTheHeap) {
    ZelvorTest::RefusingBuffer buffer(2);
    int* first = new (&buffer) int(7);
    EXPECT_EQ(*first, 7);
    EXPECT_THROW((void)new (&buffer) int(8), std::bad_alloc);
    EXPECT_THROW((void)new (&buffer) int[4], std::bad_alloc);
    int* p = new (static_cast<Buffer*>(nullptr)) int(5);
    EXPECT_EQ(*p, 5);
    delete p;  // pairs with plain delete: the memory came from ::operator new
    // A failed constructor runs the placement delete: nothing to observe for an arena but
    // the absence of a crash or a leak report.
    Buffer arena;
    EXPECT_THROW((void)new (&arena) Throwing, int);
    EXPECT_THROW((void)new (static_cast<Buffer*>(nullptr)) Throwing, int);
}

TEST(Allocator, WideTextInAnArenaAndOnTheHeap) {
    ZelvorTest::RefusingBuffer buffer;
    ZelvorDataType::WideText inArena(L"a text long enough to leave the small-string store",
                                     Allocator<wchar_t>(&buffer));
    EXPECT_GT(buffer.Calls(), 0u);
    ZelvorDataType::WideText onHeap(inArena.c_str());
    EXPECT_EQ(inArena, onHeap);
    EXPECT_EQ(onHeap.get_allocator().GetBuffer(), nullptr);
    EXPECT_TRUE(Allocator<int>(&buffer) == Allocator<char>(&buffer));
    EXPECT_FALSE(Allocator<int>(&buffer) == Allocator<int>());
    buffer.RefuseFrom(1);
    Allocator<wchar_t> allocator(&buffer);
    EXPECT_THROW((void)allocator.allocate(100), std::bad_alloc);
    EXPECT_THROW((void)allocator.allocate(static_cast<size_t>(-1) / 2), std::bad_array_new_length);
}

struct Counted : ZelvorBase::ReferenceCounted {
    int addRefs = 0, releases = 0;
    void AddRef() override { ++addRefs; }
    void Release() override { ++releases; }
};

TEST(SmartPtrI, CopiesTakeReferencesAndDestructionGivesThemBack) {
    Counted object;
    {
        SmartPtrI<Counted> a(&object);
        SmartPtrI<Counted> b(a);
        SmartPtrI<Counted> c;
        c = b;
        // A "move" is a copy: a new reference, and the source keeps its own.
        SmartPtrI<Counted> d(std::move(c));  // NOLINT(performance-move-const-arg)
        EXPECT_TRUE(static_cast<bool>(c));   // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(d.Get(), &object);
        EXPECT_EQ(&*d, &object);
        EXPECT_EQ(object.addRefs, 4);
        EXPECT_EQ(object.releases, 0);
        SmartPtrI<Counted>& alias = a;
        a = alias;  // self-assignment keeps the balance
        EXPECT_EQ(object.addRefs - object.releases, 4);
    }
    EXPECT_EQ(object.addRefs, object.releases);
    SmartPtrI<Counted> empty;
    EXPECT_FALSE(static_cast<bool>(empty));
    EXPECT_EQ(empty.Get(), nullptr);
}

TEST(SmartPtrI, DestructorNullsThePointerBeforeRelease) {
    struct Watcher : ZelvorBase::ReferenceCounted {
        SmartPtrI<Watcher>* holder = nullptr;
        Watcher* seen = reinterpret_cast<Watcher*>(1);
        void AddRef() override {}
        void Release() override { seen = holder->Get(); }
    };
    Watcher watcher;
    {
        SmartPtrI<Watcher> p(&watcher);
        watcher.holder = &p;
    }
    EXPECT_EQ(watcher.seen, nullptr);
}

}  // namespace
