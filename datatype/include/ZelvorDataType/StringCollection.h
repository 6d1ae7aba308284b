#pragma once

#include <cstddef>
#include <vector>

#include <ZelvorBase/Message.h>
#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

// An ordered list of wide texts that owns a copy of every text put into it. A null text
// is a legal entry of its own, distinct from the empty text L"". Get one from
// CreateStringCollection(); the caller deletes it through the virtual destructor.
//
//     std::unique_ptr<StringCollection> names(CreateStringCollection());
//     names->Insert(L"alpha");
//     names->Insert(nullptr);        // GetString(1) == nullptr
//     names->Insert(*names);         // alpha, null, alpha, null
class ZELVOR_DATATYPE_API StringCollection {
  public:
    virtual ~StringCollection();

    // Appends a copy of `text` up to its terminator, or a null entry when `text` is
    // null. The caller may free `text` straight after the call. On an allocation
    // failure (std::bad_alloc) the collection is unchanged.
    virtual void Insert(const wchar_t* text) = 0;

    // Appends copies of all entries of `other`, in order, nulls kept as nulls: all of
    // them or, when anything throws, none (the collection is then unchanged). `other` is
    // read only through this interface and may be this very collection, whose entries
    // then appear twice: a, b becomes a, b, a, b.
    virtual void Insert(const StringCollection& other) = 0;

    // The number of entries, null entries included.
    virtual size_t GetCount() const = 0;

    // The text of entry `index`, or nullptr for a null entry. The pointer is into the
    // collection and stays good until Clear or destruction. An `index` at or above
    // GetCount() throws ZelvorBase::ExceptionImpl<ZelvorBase::Message> with "use out of
    // bound index to access vector", as every collection of this library does.
    virtual const wchar_t* GetString(size_t index) const = 0;

    // Frees every text and empties the list; the collection can be filled again.
    virtual void Clear() = 0;

  protected:
    StringCollection() = default;
    StringCollection(const StringCollection&) = default;
    StringCollection& operator=(const StringCollection&) = default;
};

// The one implementation of StringCollection, exported for callers that place one
// themselves (on the stack, as a member). Not copyable: use Insert(other) to copy
// entries between collections.
class ZELVOR_DATATYPE_API StringCollectionImpl final : public StringCollection {
  public:
    StringCollectionImpl() noexcept;
    ~StringCollectionImpl() override;

    StringCollectionImpl(const StringCollectionImpl&) = delete;
    StringCollectionImpl& operator=(const StringCollectionImpl&) = delete;

    void Insert(const wchar_t* text) override;
    void Insert(const StringCollection& other) override;
    size_t GetCount() const override;
    const wchar_t* GetString(size_t index) const override;
    void Clear() override;

  private:
    // Frees the texts of a vector when it goes out of scope, unless dismissed. It leaves
    // the vector's size alone and nulls each slot it frees.
    class StringVectorGuard {
      public:
        explicit StringVectorGuard(std::vector<wchar_t*>& strings) noexcept : mVector(strings) {}
        ~StringVectorGuard();
        StringVectorGuard(const StringVectorGuard&) = delete;
        StringVectorGuard& operator=(const StringVectorGuard&) = delete;

        void Dismiss() noexcept { mDismissed = true; }

      private:
        std::vector<wchar_t*>& mVector;
        bool mDismissed = false;
    };

    std::vector<wchar_t*> mStrings;  // owned texts (new[]) or null, in insertion order
    StringVectorGuard mGuard;        // declared last, so it frees the texts first
};

// A new empty collection on the heap; the caller owns it and deletes it.
ZELVOR_DATATYPE_API StringCollection* CreateStringCollection();

}  // namespace ZelvorDataType
