#include <gtest/gtest.h>

#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>
#include "AllocationFault.h"
#include "support/TestDoubles.h"

namespace {

using ZelvorBase::ReferenceCounted;
using ZelvorBase::SmartPtrI;
using ZelvorTest::CountedObject;

// A counted object that logs its tag at every Release, to show the order of releases.
class Tagged : public CountedObject {
  public:
    Tagged(int tag, std::vector<int>* log, int* destroyed)
        : CountedObject(destroyed), mTag(tag), mLog(log) {}
    void Release() override {
        mLog->push_back(mTag);
        CountedObject::Release();
    }

  private:
    int mTag;
    std::vector<int>* mLog;
};

TEST(ReferenceCountedObjectCollection, InsertTakesOneNetReference) {
    int destroyed = 0;
    auto* object = new CountedObject(&destroyed);
    object->AddRef();  // the caller's own reference
    {
        auto list = ZelvorDataType::CreateReferenceCountedObjectCollection();
        int slot = 0;
        list->Insert(object, &slot);
        EXPECT_EQ(object->addRefs, 3);  // the caller's, the temporary's, the list's
        EXPECT_EQ(object->releases, 1);
        list->Insert(object, nullptr);
        list->Insert(nullptr, &destroyed);
        EXPECT_EQ(object->count, 3);
        EXPECT_EQ(list->GetCount(), 3u);
        EXPECT_EQ(list->GetRawValue(0), &slot);
        EXPECT_EQ(list->GetRawValue(1), nullptr);
        EXPECT_FALSE(list->GetObject(2));
        EXPECT_EQ(list->GetRawValue(2), &destroyed);
        object->Release();  // the caller lets go; the list keeps it alive
        EXPECT_EQ(destroyed, 0);
        SmartPtrI<ReferenceCounted> held = list->GetObject(0);
        EXPECT_EQ(held.Get(), object);
        EXPECT_EQ(object->count, 3);
        list.reset();
        EXPECT_EQ(destroyed, 0);  // `held` outlives the list
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(ReferenceCountedObjectCollection, DestructionReleasesLastToFirst) {
    std::vector<int> log;
    int destroyed = 0;
    {
        auto list = ZelvorDataType::CreateReferenceCountedObjectCollection();
        for (int tag = 1; tag <= 20; ++tag) {  // enough to make the vector grow
            list->Insert(new Tagged(tag, &log, &destroyed), nullptr);
        }
        log.clear();
        EXPECT_EQ(destroyed, 0);
        EXPECT_THROW(list->GetObject(20), ZelvorBase::ExceptionImpl<ZelvorBase::Message>);
    }
    std::vector<int> expected;
    for (int tag = 20; tag >= 1; --tag) {
        expected.push_back(tag);
    }
    EXPECT_EQ(log, expected);
    EXPECT_EQ(destroyed, 20);
}

TEST(ReferenceCountedObjectCollection, FailedInsertChangesNoCount) {
    auto list = ZelvorDataType::CreateReferenceCountedObjectCollection();
    auto* object = new CountedObject();
    object->AddRef();
    for (int i = 0; i < 4; ++i) {  // a full vector, so the next insert must grow it
        list->Insert(object, nullptr);
    }
    EXPECT_EQ(ZelvorTest::ForEveryFailingAllocation([&] { list->Insert(object, nullptr); },
                                                    [&] {
                                                        EXPECT_EQ(object->count, 5);
                                                        EXPECT_EQ(list->GetCount(), 4u);
                                                    }),
              1u);
    EXPECT_EQ(object->count, 6);  // growth moved the references without changing the count
    list.reset();
    EXPECT_EQ(object->count, 1);
    object->Release();
}

}  // namespace
