#pragma once

#include <cstddef>
#include <vector>

#include <ZelvorSerialization/DataStream.h>
#include <ZelvorSerialization/Export.h>

namespace ZelvorSerialization {

// Both streams over one growing block of bytes in memory. Writes append; reads start at
// the beginning and give back what was written, value for value, in the same order.
//
// Every item is stored with a one-byte type tag, so a read of the wrong type, like a
// read past the end, stores nothing, consumes nothing and returns non-zero. A DateTime
// comes back field for field (zone words included); a DynamicTime comes back with all
// eleven fields, DYNAMIC_TIME_NONE among the kinds. The bytes are little-endian
// whatever the machine, and any block of bytes is a valid stream to read: a DateTime
// read from arbitrary bytes is clamped into range as its constructor does.
//
// Not thread-safe; copyable (a copy has its own bytes and read position).
class ZELVOR_SERIALIZATION_API MemoryDataStream : public WriteDataStream, public ReadDataStream {
  public:
    // An empty stream.
    MemoryDataStream();
    // A stream whose bytes are a copy of `size` bytes at `bytes` (null with size 0 is an
    // empty stream), to be read from the start: the counterpart of GetData/GetSize.
    MemoryDataStream(const void* bytes, std::size_t size);
    ~MemoryDataStream() override;

    // Append one value; 0. Only a failed allocation (std::bad_alloc) stops them.
    int WriteInt(int value) override;
    int WriteDateTime(const ZelvorDataType::DateTime& value) override;
    int WriteDynamicTime(const ZelvorDataType::DynamicTime& value) override;

    // Read the next value into the argument; 0. Non-zero, with the argument and the
    // read position untouched, when the next item is missing, cut short or of another
    // type, or when `value` is null.
    int ReadInt(int* value) override;
    int ReadDateTime(ZelvorDataType::DateTime& value) override;
    int ReadDynamicTime(ZelvorDataType::DynamicTime& value) override;

    // The bytes written (or given) so far, and how many.
    const unsigned char* GetData() const noexcept;
    std::size_t GetSize() const noexcept;
    // Bytes not yet read.
    std::size_t GetRemaining() const noexcept;
    // Reads start again from the first byte.
    void Rewind() noexcept;

  private:
    // The payload of the next item if it carries `tag` and is whole, else null.
    const unsigned char* Peek(unsigned char tag, std::size_t payload) const noexcept;

    std::vector<unsigned char> mBytes;
    std::size_t mReadPosition = 0;
};

}  // namespace ZelvorSerialization
