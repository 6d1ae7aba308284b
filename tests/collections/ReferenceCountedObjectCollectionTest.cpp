#include <gtest/gtest.h>

#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>
#include "support/TestDoubles.h"

namespace {

using ZelvorTest::CountedObject;

// Logs its tag at every Release, to show the order of releases.
class Tagged : public CountedObject {
  public:
    Tagged(int tag, std::vector<int>* log) : mTag(tag), mLog(log) {}
    void Release() override {
        mLog->push_back(mTag);
        CountedObject::Release();
    }

  private:
    int mTag;
    std::vector<int>* mLog;
};

TEST(ReferenceCountedObjectCollection, EntriesHoldOneReferenceEach) {
    int destroyed = 0;
    auto* object = new CountedObject(&destroyed);
    object->AddRef();  // the caller's own reference
    auto list = ZelvorDataType::CreateReferenceCountedObjectCollection();
    int value = 0;
    list->Insert(object, &value);
    EXPECT_EQ(object->addRefs, 3);  // the caller's, the temporary's, the list's
    EXPECT_EQ(object->releases, 1);
    list->Insert(object, nullptr);
    list->Insert(nullptr, &destroyed);
    for (int i = 0; i < 8; ++i) {  // growth moves references without changing counts
        list->Insert(nullptr, nullptr);
    }
    EXPECT_EQ(object->count, 3);
    EXPECT_EQ(list->GetRawValue(0), &value);
    EXPECT_FALSE(list->GetObject(2));
    EXPECT_EQ(list->GetRawValue(2), &destroyed);
    EXPECT_THROW(list->GetRawValue(11), ZelvorBase::ExceptionImpl<ZelvorBase::Message>);
    object->Release();  // the list alone keeps it alive now
    {
        const ZelvorBase::SmartPtrI<ZelvorBase::ReferenceCounted> held = list->GetObject(0);
        EXPECT_EQ(object->count, 3);
        list.reset();
        EXPECT_EQ(destroyed, 0);  // `held` outlives the list
    }
    EXPECT_EQ(destroyed, 1);

    std::vector<int> log;  // releases at destruction go from the last entry to the first
    list = ZelvorDataType::CreateReferenceCountedObjectCollection();
    for (int tag = 1; tag <= 3; ++tag) {
        list->Insert(new Tagged(tag, &log), nullptr);
    }
    log.clear();
    list.reset();
    EXPECT_EQ(log, (std::vector<int>{3, 2, 1}));
}

}  // namespace
