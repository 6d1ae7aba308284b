#pragma once

#include <cstddef>
#include <vector>

#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReferenceCounted.h>
#include <ZelvorDataType/Binary.h>
#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

// An ordered list of byte blocks that it owns. Data that arrives in many small blocks is
// gathered here, then joined into one block (CreateBinary below) or into a few blocks of
// a bounded size (CombineBinaryCollection). Get one from CreateBinaryCollection().
//
// Every entry is deleted with the collection, through Binary's virtual destructor, so
// only heap blocks may go in: a Binary placed in a Buffer must never be inserted.
// A null entry is accepted and skipped at destruction, but GetTotalLength and the
// joining functions read every entry, so they must not meet a list holding a null.
class ZELVOR_DATATYPE_API BinaryCollection {
  public:
    // Appends `binary`; the collection owns it from then on. Should the list fail to
    // grow (std::bad_alloc), nothing changed and `binary` still belongs to the caller.
    virtual void Insert(Binary* binary) = 0;

    // Moves every entry of `other` to the end of this collection, in order; `other` is
    // left empty and usable, and this collection now owns the blocks. A null `other`
    // does nothing. Refused, with nothing changed, by throwing
    // ZelvorBase::ExceptionImpl<ZelvorBase::Message>:
    //   - "cannot merge a binary collection into itself" when `other` is this one;
    //   - "cannot merge a binary collection of another implementation" when `other`
    //     did not come from CreateBinaryCollection (or BinaryCollectionImpl).
    // On an allocation failure (std::bad_alloc) both collections are unchanged.
    virtual void Merge(BinaryCollection* other) = 0;

    // The number of entries.
    virtual unsigned int GetBinaryCount() const = 0;

    // Entry `index`, still owned by the collection. An `index` at or above the count
    // throws ZelvorBase::ExceptionImpl<ZelvorBase::Message> with "use out of bound index
    // to access vector" (domain MESSAGE_DOMAIN_UNKNOWN, id -1).
    virtual Binary* GetBinary(unsigned int index) const = 0;

    // The sum of GetSize() over the entries.
    virtual size_t GetTotalLength() const = 0;

    // Deletes this collection and every block in it; the pointer is dead afterwards.
    // Calling a member through a null pointer is not allowed in C++, so a caller that
    // may hold null writes BinaryCollection::Delete(collection) instead, which does
    // nothing for null.
    virtual void Delete() = 0;

    // Deletes `collection` and its blocks, as collection->Delete() does; a null
    // `collection` does nothing.
    static void Delete(BinaryCollection* collection);

    virtual ~BinaryCollection();

  protected:
    BinaryCollection() = default;
    BinaryCollection(const BinaryCollection&) = default;
    BinaryCollection& operator=(const BinaryCollection&) = default;
};

// The one implementation of BinaryCollection, exported for callers that place one
// themselves. Not copyable: it owns its blocks.
class ZELVOR_DATATYPE_API BinaryCollectionImpl final : public BinaryCollection {
  public:
    BinaryCollectionImpl() noexcept;
    // Deletes every non-null entry, then frees the list.
    ~BinaryCollectionImpl() override;

    BinaryCollectionImpl(const BinaryCollectionImpl&) = delete;
    BinaryCollectionImpl& operator=(const BinaryCollectionImpl&) = delete;

    void Insert(Binary* binary) override;
    void Merge(BinaryCollection* other) override;
    unsigned int GetBinaryCount() const override;
    Binary* GetBinary(unsigned int index) const override;
    size_t GetTotalLength() const override;
    // `delete this`: only for a collection made by new (CreateBinaryCollection does).
    void Delete() override;
    using BinaryCollection::Delete;

    // Empties the list without deleting any block: the caller, who has taken the
    // pointers out first (GetBinary), now owns them. The list keeps its capacity.
    void GiveUp() noexcept;

  private:
    std::vector<Binary*> mBinaries;  // owned, in insertion order
};

// A new empty collection on the heap; the caller owns it and releases it by Delete
// (or delete).
ZELVOR_DATATYPE_API BinaryCollection* CreateBinaryCollection();

// All blocks of `collection` joined, in order, into one new Binary on the heap, which the
// caller owns. `collection` is only read and keeps its blocks; a null `collection` joins
// like an empty one. An empty collection gives an empty Binary.
//
// With a `contract`, the total size is asked by RequestMemory(total, 1) before the block
// is made (even a total of 0), and MemoryTaken(total) follows it. A refusal throws
// ZelvorBase::ExceptionImpl<ZelvorBase::ContractManagerAllocException>, id the low 32
// bits of the answer, text "No memory to be contracted. Contract request rejected.", a
// line feed and the description of that code. Nothing is left over after a refusal or
// any other throw (std::bad_alloc).
//
// Note: this overloads the byte-block factories of <ZelvorDataType/Binary.h>, so
// `CreateBinary(0, nullptr)` is ambiguous; write `CreateBinary(size_t{0}, nullptr)` for
// an empty block.
ZELVOR_DATATYPE_API Binary* CreateBinary(BinaryCollection* collection,
                                         ZelvorBase::MemoryContract* contract);

// Joins neighbouring blocks of `collection` into a new collection of blocks no larger
// than `maxSize` bytes (0: no limit), which the caller owns. Blocks are taken greedily
// in order and never reordered or split, so a block larger than `maxSize` stands alone
// in a block of its own size. For example sizes 3, 3, 3 give 6, 3 under a limit of 6,
// and sizes 2, 10, 2 give 2, 10, 2 under a limit of 5. `collection` is only read; a
// null or empty `collection` gives an empty result. No contract is consulted.
ZELVOR_DATATYPE_API BinaryCollection* CombineBinaryCollection(BinaryCollection* collection,
                                                              size_t maxSize);

// CombineBinaryCollection under `contract` (which may hold null): every result block is
// asked for by RequestMemory(size, 1) before it is made and reported by
// MemoryTaken(size) after. A refusal throws as CreateBinary above does, and nothing of
// the call remains: every block made so far is freed and `collection` is untouched.
// Memory granted for blocks freed that way is not reported back.
ZELVOR_DATATYPE_API BinaryCollection* CombineBinaryCollectionGoverned(
    BinaryCollection* collection, size_t maxSize,
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract>& contract);

// The worker of CombineBinaryCollection and CombineBinaryCollectionGoverned, with the
// contract of the latter.
ZELVOR_DATATYPE_API BinaryCollection* hCombineBinaryCollection(
    BinaryCollection* collection, size_t maxSize,
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract>& contract);

}  // namespace ZelvorDataType
