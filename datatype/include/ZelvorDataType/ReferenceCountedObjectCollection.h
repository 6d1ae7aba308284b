#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReferenceCounted.h>
#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

// An ordered list of pairs: a counted reference to any ReferenceCounted object, and a
// pointer-sized value the caller attaches to it. The list holds one reference per entry,
// so its objects stay alive until it dies; what the value means is the caller's affair,
// and the list never follows it. The collection itself is not reference counted.
//
//     auto list = CreateReferenceCountedObjectCollection();
//     list->Insert(session, &sessionSlot);   // session gains one reference
//     SmartPtrI<ReferenceCounted> again = list->GetObject(0);
class ZELVOR_DATATYPE_API ReferenceCountedObjectCollection {
  public:
    // Releases the entries from last to first.
    virtual ~ReferenceCountedObjectCollection();

    // The number of entries.
    virtual size_t GetCount() const = 0;

    // Appends `object` with `value`. A non-null `object` gains one reference (a counting
    // object sees AddRef twice and Release once: the insertion's temporary takes and
    // gives back a reference of its own). A null `object` gives an entry with a null
    // reference and the value. The same object may go in any number of times. On an
    // allocation failure (std::bad_alloc) the list and the counts are unchanged.
    virtual void Insert(ZelvorBase::ReferenceCounted* object, void* value) = 0;

    // The object of entry `index`, with one more reference for the caller (null for a
    // null entry). An `index` at or above GetCount() throws
    // ZelvorBase::ExceptionImpl<ZelvorBase::Message> with "use out of bound index to
    // access vector", as every collection of this library does.
    virtual ZelvorBase::SmartPtrI<ZelvorBase::ReferenceCounted> GetObject(size_t index) const = 0;

    // The value of entry `index`; the index is checked as in GetObject.
    virtual void* GetRawValue(size_t index) const = 0;

  protected:
    ReferenceCountedObjectCollection() = default;
    ReferenceCountedObjectCollection(const ReferenceCountedObjectCollection&) = default;
    ReferenceCountedObjectCollection& operator=(const ReferenceCountedObjectCollection&) = default;
};

// The one implementation, exported for callers that place one themselves. Not copyable.
class ZELVOR_DATATYPE_API ReferenceCountedObjectCollectionImpl final
    : public ReferenceCountedObjectCollection {
  public:
    ReferenceCountedObjectCollectionImpl() noexcept;
    // Releases the entries from last to first: each reference is nulled in its slot,
    // then released; then the list is freed.
    ~ReferenceCountedObjectCollectionImpl() override;

    ReferenceCountedObjectCollectionImpl(const ReferenceCountedObjectCollectionImpl&) = delete;
    ReferenceCountedObjectCollectionImpl& operator=(const ReferenceCountedObjectCollectionImpl&) =
        delete;

    size_t GetCount() const override;
    void Insert(ZelvorBase::ReferenceCounted* object, void* value) override;
    ZelvorBase::SmartPtrI<ZelvorBase::ReferenceCounted> GetObject(size_t index) const override;
    void* GetRawValue(size_t index) const override;

  private:
    using Entry = std::pair<ZelvorBase::SmartPtrI<ZelvorBase::ReferenceCounted>, void*>;
    std::vector<Entry> mEntries;  // in insertion order
};

// A new empty collection, owned by the handle returned.
ZELVOR_DATATYPE_API std::unique_ptr<ReferenceCountedObjectCollection>
CreateReferenceCountedObjectCollection();

}  // namespace ZelvorDataType
