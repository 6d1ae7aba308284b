#include <ZelvorDataType/ReferenceCountedObjectCollection.h>

#include "collections/CollectionIndex.h"

namespace ZelvorDataType {

ReferenceCountedObjectCollection::~ReferenceCountedObjectCollection() = default;

ReferenceCountedObjectCollectionImpl::ReferenceCountedObjectCollectionImpl() noexcept = default;

ReferenceCountedObjectCollectionImpl::~ReferenceCountedObjectCollectionImpl() {
    // The vector would destroy its elements first to last; entries go last to first, and
    // each SmartPtrI nulls its slot before it calls Release.
    while (!mEntries.empty()) {
        mEntries.pop_back();
    }
}

size_t ReferenceCountedObjectCollectionImpl::GetCount() const {
    return mEntries.size();
}

void ReferenceCountedObjectCollectionImpl::Insert(ZelvorBase::ReferenceCounted* object,
                                                  void* value) {
    // The temporary takes a reference and the copy in the vector another (SmartPtrI is
    // not movable); the temporary gives its own back, also when the vector fails to grow.
    const Entry entry(object, value);
    mEntries.push_back(entry);
}

ZelvorBase::SmartPtrI<ZelvorBase::ReferenceCounted> ReferenceCountedObjectCollectionImpl::GetObject(
    size_t index) const {
    internal::CheckCollectionIndex(index, mEntries.size());
    return mEntries[index].first;
}

void* ReferenceCountedObjectCollectionImpl::GetRawValue(size_t index) const {
    internal::CheckCollectionIndex(index, mEntries.size());
    return mEntries[index].second;
}

std::unique_ptr<ReferenceCountedObjectCollection> CreateReferenceCountedObjectCollection() {
    return std::make_unique<ReferenceCountedObjectCollectionImpl>();
}

}  // namespace ZelvorDataType
