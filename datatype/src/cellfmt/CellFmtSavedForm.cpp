// The 40-byte saved form of a CellFmtData, in the machine's byte order:
//   0   8  value, IEEE 754 double
//   8   8  description pointer, its bits
//  16   4  type code
//  20  16  format identifier
//  36   4  neither written nor read
#include <ZelvorDataType/CellFmtData.h>

#include <cstddef>
#include <cstring>

namespace ZelvorDataType {

namespace {

struct Field {
    size_t offset;
    size_t size;
};
constexpr Field kValue = {0, 8};
constexpr Field kPointer = {8, 8};
constexpr Field kType = {16, 4};
constexpr Field kFmtID = {20, 16};

static_assert(sizeof(double) == kValue.size && sizeof(void*) == kPointer.size);
static_assert(sizeof(EnumCellFmtDataTypes) == kType.size && sizeof(_GUID) == kFmtID.size);
static_assert(kFmtID.offset + kFmtID.size + 4 == CellFmtData::kSavedSize);

}  // namespace

int CellFmtData::SaveObj(unsigned int size, void* buffer, int /*flags*/) const noexcept {
    if (size < kSavedSize || buffer == nullptr) {
        return -1;
    }
    auto* out = static_cast<unsigned char*>(buffer);
    std::memcpy(out + kValue.offset, &mValue, kValue.size);
    std::memcpy(out + kPointer.offset, &mFmtStruct, kPointer.size);
    std::memcpy(out + kType.offset, &mType, kType.size);
    std::memcpy(out + kFmtID.offset, &mFmtID, kFmtID.size);
    return 0;
}

int CellFmtData::LoadObj(unsigned int size, void* buffer) noexcept {
    if (size < kSavedSize || buffer == nullptr) {
        return -1;
    }
    // Byte copies: the buffer need not be aligned, and every bit pattern is a valid
    // double, pointer value, type code (the enumeration spans all of int) and identifier.
    const auto* in = static_cast<const unsigned char*>(buffer);
    std::memcpy(&mValue, in + kValue.offset, kValue.size);
    std::memcpy(&mFmtStruct, in + kPointer.offset, kPointer.size);
    std::memcpy(&mType, in + kType.offset, kType.size);
    std::memcpy(&mFmtID, in + kFmtID.offset, kFmtID.size);
    return 0;
}

}  // namespace ZelvorDataType
