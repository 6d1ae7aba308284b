#include <ZelvorDataType/Binary.h>

#include <algorithm>
#include <cstring>

namespace ZelvorDataType {

Binary::~Binary() = default;

BinaryImpl::BinaryImpl(ZelvorBase::Buffer* buffer) noexcept : mBuffer(buffer) {}

BinaryImpl::BinaryImpl(const void* data, size_t size, ZelvorBase::Buffer* buffer)
    : mBuffer(buffer) {
    // SetBinary either succeeds or throws before it owns a block, so a throw leaves
    // nothing for this constructor to free.
    SetBinary(data, size);
}

BinaryImpl::~BinaryImpl() {
    delete[] mOwnedBlock;
}

bool BinaryImpl::Reserve(size_t size) {
    if (size <= mCapacity) {
        mData = mBlock;
        return true;
    }
    unsigned char* block = nullptr;
    if (mBuffer != nullptr) {
        block = static_cast<unsigned char*>(mBuffer->Allocate(size));
    } else {
        // Allocate before freeing, so that a throwing new[] leaves the old block intact.
        block = new unsigned char[size];
        delete[] mOwnedBlock;
        mOwnedBlock = block;
    }
    mBlock = block;
    mData = block;
    if (block == nullptr) {
        // A refused arena is a quiet failure: the caller sees an empty Binary.
        mCapacity = 0;
        mSize = 0;
        return false;
    }
    mCapacity = size;
    return true;
}

void BinaryImpl::SetBinary(const void* data, size_t size) {
    if (size == 0 || !Reserve(size)) {
        return;
    }
    mSize = size;
    if (data != nullptr) {
        std::memcpy(mData, data, size);
    } else {
        std::memset(mData, 0, size);
    }
}

void BinaryImpl::ResetSize(size_t size) {
    if (size == 0 || !Reserve(size)) {
        return;
    }
    mSize = size;
}

bool BinaryImpl::operator==(const Binary& other) const {
    const size_t otherSize = other.GetSize();
    if (mSize != otherSize) {
        return false;
    }
    return mSize == 0 || std::memcmp(mData, other.c_ptr(), mSize) == 0;
}

bool BinaryImpl::operator<(const Binary& other) const {
    const size_t otherSize = other.GetSize();
    if (otherSize == 0) {
        return false;
    }
    if (mSize == 0) {
        return true;
    }
    // memcmp compares as unsigned char, so 0x80 and above sort after 0x7F.
    const int order = std::memcmp(mData, other.c_ptr(), std::min(mSize, otherSize));
    return order < 0 || (order == 0 && mSize < otherSize);
}

size_t BinaryImpl::GetSize() const {
    return mSize;
}

unsigned char* BinaryImpl::c_ptr() const {
    return mSize == 0 ? nullptr : mData;
}

void BinaryImpl::ZapTail(size_t n) {
    mSize = n > mSize ? 0 : mSize - n;
}

void BinaryImpl::ZapHead(size_t n) {
    if (n > mSize) {
        mSize = 0;
        return;
    }
    mSize -= n;
    mData += n;
}

void BinaryImpl::UnZap() {
    mSize = mCapacity;
    mData = mBlock;
}

unsigned char* BinaryImpl::GiveUpBinary() {
    if (mBuffer != nullptr) {
        return nullptr;
    }
    unsigned char* block = mOwnedBlock;
    mOwnedBlock = nullptr;
    mCapacity = 0;
    mBlock = nullptr;
    mSize = 0;
    mData = nullptr;
    return block;
}

Binary* CreateBinary(ZelvorBase::Buffer* buffer) {
    if (buffer != nullptr) {
        return new (buffer) BinaryImpl(buffer);
    }
    return new BinaryImpl();
}

Binary* CreateBinary(const void* data, size_t size, ZelvorBase::Buffer* buffer) {
    // If the constructor throws, the matching placement delete gives the object's
    // memory back (to nobody, for an arena).
    if (buffer != nullptr) {
        return new (buffer) BinaryImpl(data, size, buffer);
    }
    return new BinaryImpl(data, size);
}

Binary* CreateBinary(size_t size, ZelvorBase::Buffer* buffer) {
    return CreateBinary(nullptr, size, buffer);
}

}  // namespace ZelvorDataType
