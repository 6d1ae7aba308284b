// Joining the blocks of a collection into one block or into blocks of a bounded size,
// with every new block's size approved by the caller's memory contract first.
#include <ZelvorDataType/BinaryCollection.h>

#include <cstring>
#include <limits>
#include <memory>

namespace ZelvorDataType {

namespace {

// Asks `contract` (when there is one) for `bytes`; a non-zero answer stops the work.
void RequestOrThrow(ZelvorBase::MemoryContract* contract, size_t bytes) {
    if (contract == nullptr) {
        return;
    }
    const long long answer = contract->RequestMemory(bytes, 1);
    if (answer != 0) {
        throw ZelvorBase::ExceptionImpl<ZelvorBase::ContractManagerAllocException>(
            L"No memory to be contracted. Contract request rejected.",
            static_cast<unsigned int>(answer));  // the low 32 bits are the code
    }
}

// A heap block of `bytes` whose content the caller overwrites entirely. ResetSize
// allocates without the zero fill that CreateBinary(size) would add, so each joined byte
// is written once. A size of 0 leaves the block empty.
std::unique_ptr<Binary> NewBlock(ZelvorBase::MemoryContract* contract, size_t bytes) {
    RequestOrThrow(contract, bytes);
    auto block = std::make_unique<BinaryImpl>();
    block->ResetSize(bytes);
    if (contract != nullptr) {
        contract->MemoryTaken(bytes);
    }
    return block;
}

// Copies the entries [first, end) of `collection` one after the other into `target`.
void CopyBlocks(const BinaryCollection& collection, unsigned int first, unsigned int end,
                Binary& target) {
    unsigned char* out = target.c_ptr();
    for (unsigned int index = first; index < end; ++index) {
        const Binary* source = collection.GetBinary(index);
        const size_t size = source->GetSize();
        if (size != 0) {  // an empty view has a null c_ptr(), which memcpy must not see
            std::memcpy(out, source->c_ptr(), size);
            out += size;
        }
    }
}

}  // namespace

Binary* CreateBinary(BinaryCollection* collection, ZelvorBase::MemoryContract* contract) {
    const unsigned int count = collection == nullptr ? 0 : collection->GetBinaryCount();
    size_t total = 0;
    for (unsigned int index = 0; index < count; ++index) {
        total += collection->GetBinary(index)->GetSize();
    }
    std::unique_ptr<Binary> result = NewBlock(contract, total);
    if (count != 0) {
        CopyBlocks(*collection, 0, count, *result);
    }
    return result.release();
}

BinaryCollection* hCombineBinaryCollection(
    BinaryCollection* collection, size_t maxSize,
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract>& contract) {
    const size_t limit = maxSize == 0 ? std::numeric_limits<size_t>::max() : maxSize;
    // Should anything throw, the result goes with every block made so far; the block
    // being built lives in its own handle until the result has taken it.
    auto result = std::make_unique<BinaryCollectionImpl>();
    const unsigned int count = collection == nullptr ? 0 : collection->GetBinaryCount();
    unsigned int start = 0;
    while (start < count) {
        unsigned int end = start;
        size_t sum = 0;
        while (end < count) {
            const size_t size = collection->GetBinary(end)->GetSize();
            if (size > limit - sum) {  // sum <= limit holds, so this cannot wrap
                break;
            }
            sum += size;
            ++end;
        }
        if (end == start) {
            // A block over the limit alone is never split: it makes a block of its own.
            sum = collection->GetBinary(start)->GetSize();
            end = start + 1;
        }
        std::unique_ptr<Binary> block = NewBlock(contract.Get(), sum);
        CopyBlocks(*collection, start, end, *block);
        result->Insert(block.get());
        static_cast<void>(block.release());  // the result owns it now
        start = end;
    }
    return result.release();
}

BinaryCollection* CombineBinaryCollection(BinaryCollection* collection, size_t maxSize) {
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> none;
    return hCombineBinaryCollection(collection, maxSize, none);
}

BinaryCollection* CombineBinaryCollectionGoverned(
    BinaryCollection* collection, size_t maxSize,
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract>& contract) {
    return hCombineBinaryCollection(collection, maxSize, contract);
}

}  // namespace ZelvorDataType
