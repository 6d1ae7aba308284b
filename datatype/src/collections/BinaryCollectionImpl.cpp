#include <ZelvorDataType/BinaryCollection.h>

#include <utility>

#include "collections/CollectionIndex.h"

namespace ZelvorDataType {

BinaryCollection::~BinaryCollection() = default;

void BinaryCollection::Delete(BinaryCollection* collection) {
    if (collection != nullptr) {
        collection->Delete();
    }
}

BinaryCollectionImpl::BinaryCollectionImpl() noexcept = default;

BinaryCollectionImpl::~BinaryCollectionImpl() {
    for (Binary* binary : mBinaries) {
        delete binary;
    }
}

void BinaryCollectionImpl::Insert(Binary* binary) {
    mBinaries.push_back(binary);
}

void BinaryCollectionImpl::Merge(BinaryCollection* other) {
    if (other == nullptr) {
        return;
    }
    // Emptying `other` at the end would empty this very list too, and every block with
    // it would be lost or double-owned, so a self-merge is refused before anything moves.
    if (other == this) {
        throw ZelvorBase::ExceptionImpl<ZelvorBase::Message>(
            L"cannot merge a binary collection into itself");
    }
    // Only our own implementation can be emptied without deleting its blocks.
    auto* source = dynamic_cast<BinaryCollectionImpl*>(other);
    if (source == nullptr) {
        throw ZelvorBase::ExceptionImpl<ZelvorBase::Message>(
            L"cannot merge a binary collection of another implementation");
    }
    const unsigned int count = source->GetBinaryCount();
    std::vector<Binary*> merged;
    merged.reserve(mBinaries.size() + count);
    merged.insert(merged.end(), mBinaries.begin(), mBinaries.end());
    for (unsigned int index = 0; index < count; ++index) {
        merged.push_back(source->GetBinary(index));
    }
    // Nothing below can throw, so ownership moves whole or not at all.
    mBinaries.swap(merged);
    source->mBinaries.clear();
}

unsigned int BinaryCollectionImpl::GetBinaryCount() const {
    return static_cast<unsigned int>(mBinaries.size());
}

Binary* BinaryCollectionImpl::GetBinary(unsigned int index) const {
    internal::CheckCollectionIndex(index, mBinaries.size());
    return mBinaries[index];
}

size_t BinaryCollectionImpl::GetTotalLength() const {
    size_t total = 0;
    for (const Binary* binary : mBinaries) {
        total += binary->GetSize();
    }
    return total;
}

void BinaryCollectionImpl::Delete() {
    delete this;
}

void BinaryCollectionImpl::GiveUp() noexcept {
    mBinaries.clear();
}

BinaryCollection* CreateBinaryCollection() {
    return new BinaryCollectionImpl();
}

}  // namespace ZelvorDataType
