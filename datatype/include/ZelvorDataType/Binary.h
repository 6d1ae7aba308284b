#pragma once

#include <cstddef>
#include <memory>

#include <ZelvorBase/Buffer.h>
#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

// A run of bytes with a movable view over it. A caller trims the front and back of the
// block without copying (ZapHead, ZapTail) and undoes every trim at once (UnZap). The
// view always lies inside the allocated block.
//
// Blocks live on the heap or in a caller's Buffer, which decides who frees what: a
// Binary on the heap is deleted through its virtual destructor and frees its block; a
// Binary placed in a Buffer is never deleted, and its block goes with the arena.
class ZELVOR_DATATYPE_API Binary {
  public:
    virtual ~Binary();

    // Makes the view `size` bytes long at the start of the block and fills it with a
    // copy of `data`, or with zeros when `data` is null. A block large enough is
    // reused; otherwise a new one of exactly `size` bytes replaces it and no old byte
    // is carried over. A `size` of 0 does nothing at all (it does not empty the
    // Binary). When a Buffer refuses the new block, the Binary becomes empty. `data`
    // must not point into this Binary's own block.
    virtual void SetBinary(const void* data, size_t size) = 0;

    // True when the two views hold the same bytes (two empty views are equal);
    // capacities do not count.
    virtual bool operator==(const Binary& other) const = 0;

    // Lexicographic order of the views as unsigned bytes: an empty view is less than
    // any non-empty one, and a view is less than a longer one that it begins.
    virtual bool operator<(const Binary& other) const = 0;

    // The length of the view in bytes.
    virtual size_t GetSize() const = 0;

    // The first byte of the view, writable; nullptr when the view is empty.
    virtual unsigned char* c_ptr() const = 0;

    // Drops `n` bytes from the end of the view (all of it if `n` exceeds the size).
    virtual void ZapTail(size_t n) = 0;

    // Drops `n` bytes from the front of the view. If `n` exceeds the size the view
    // becomes empty and its start does not move.
    virtual void ZapHead(size_t n) = 0;

    // Makes the view the whole allocated block again, undoing every trim. After a
    // SetBinary shorter than the block, this exposes the older bytes behind it.
    virtual void UnZap() = 0;

    // Hands the heap block to the caller, who frees it with delete[]; the pointer is
    // the start of the block, whatever the view. The Binary is left empty and usable.
    // Returns nullptr and changes nothing for a Binary in a Buffer (an arena block can't
    // be given away), and nullptr for a Binary that has no block.
    virtual unsigned char* GiveUpBinary() = 0;

    // Like SetBinary without writing any byte: the view becomes `size` bytes at the
    // start of the block. A new block's content is unspecified; a shrink keeps the
    // bytes. A `size` of 0 does nothing.
    virtual void ResetSize(size_t size) = 0;

  protected:
    Binary() = default;
    Binary(const Binary&) = default;
    Binary& operator=(const Binary&) = default;
};

// The one implementation of Binary. It is exported so that callers may place one
// themselves (by `new (buffer) BinaryImpl(...)` or on the stack); the factories below are
// the usual way. Not copyable: it owns its block.
class ZELVOR_DATATYPE_API BinaryImpl final : public Binary {
  public:
    // An empty Binary drawing on `buffer`, or on the heap when it is null.
    explicit BinaryImpl(ZelvorBase::Buffer* buffer = nullptr) noexcept;
    // A Binary holding a copy of `size` bytes of `data` (zeros when `data` is null).
    BinaryImpl(const void* data, size_t size, ZelvorBase::Buffer* buffer = nullptr);
    ~BinaryImpl() override;

    BinaryImpl(const BinaryImpl&) = delete;
    BinaryImpl& operator=(const BinaryImpl&) = delete;

    void SetBinary(const void* data, size_t size) override;
    bool operator==(const Binary& other) const override;
    bool operator<(const Binary& other) const override;
    size_t GetSize() const override;
    unsigned char* c_ptr() const override;
    void ZapTail(size_t n) override;
    void ZapHead(size_t n) override;
    void UnZap() override;
    unsigned char* GiveUpBinary() override;
    void ResetSize(size_t size) override;

  private:
    // Points the view at `size` bytes at the start of a block that holds them,
    // replacing the block when it is too small. False when the arena refused.
    bool Reserve(size_t size);

    ZelvorBase::Buffer* mBuffer;           // fixed at construction; null means the heap
    unsigned char* mOwnedBlock = nullptr;  // the block when it came from new[]
    size_t mCapacity = 0;                  // size of the allocated block
    unsigned char* mBlock = nullptr;       // start of the block, heap or arena
    size_t mSize = 0;                      // length of the view
    unsigned char* mData = nullptr;        // start of the view
};

// Factories. With a Buffer, the object and its block come from the arena and must not
// be deleted; otherwise the caller owns the result and deletes it. They throw what
// `new` throws (std::bad_alloc, also when the arena refuses the object itself); a
// refusal of the block alone leaves an empty Binary.

// An empty Binary.
ZELVOR_DATATYPE_API Binary* CreateBinary(ZelvorBase::Buffer* buffer = nullptr);
// A copy of `size` bytes of `data` (zeros when `data` is null).
ZELVOR_DATATYPE_API Binary* CreateBinary(const void* data, size_t size,
                                         ZelvorBase::Buffer* buffer = nullptr);
// `size` zero bytes. Write `CreateBinary(size_t{0}, nullptr)` for an empty one with an
// explicit heap, so that the literal 0 is not taken for a pointer.
ZELVOR_DATATYPE_API Binary* CreateBinary(size_t size, ZelvorBase::Buffer* buffer = nullptr);

// The heap factories with an owner: the block is deleted with the pointer. There is no
// arena form, since a Binary in a Buffer must never be deleted.
inline std::unique_ptr<Binary> MakeBinary() {
    return std::unique_ptr<Binary>(CreateBinary(nullptr));
}
inline std::unique_ptr<Binary> MakeBinary(const void* data, size_t size) {
    return std::unique_ptr<Binary>(CreateBinary(data, size, nullptr));
}
inline std::unique_ptr<Binary> MakeBinary(size_t size) {
    return std::unique_ptr<Binary>(CreateBinary(size, nullptr));
}

}  // namespace ZelvorDataType
