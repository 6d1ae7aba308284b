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

constexpr size_t kValueAt = 0;
constexpr size_t kPointerAt = 8;
constexpr size_t kTypeAt = 16;
constexpr size_t kFmtIDAt = 20;
constexpr size_t kWrittenSize = 36;

static_assert(sizeof(double) == 8 && sizeof(CellFmtStruct*) == 8 && sizeof(_GUID) == 16);
static_assert(kFmtIDAt + sizeof(_GUID) == kWrittenSize);
static_assert(kWrittenSize <= CellFmtData::kSavedSize);

}  // namespace

int CellFmtData::SaveObj(unsigned int size, void* buffer, int /*flags*/) const noexcept {
    if (size < kSavedSize || buffer == nullptr) {
        return -1;
    }
    auto* out = static_cast<unsigned char*>(buffer);
    std::memcpy(out + kValueAt, &mValue, sizeof mValue);
    std::memcpy(out + kPointerAt, &mFmtStruct, sizeof mFmtStruct);
    std::memcpy(out + kTypeAt, &mType, sizeof mType);
    std::memcpy(out + kFmtIDAt, &mFmtID, sizeof mFmtID);
    return 0;
}

int CellFmtData::LoadObj(unsigned int size, void* buffer) noexcept {
    if (size < kSavedSize || buffer == nullptr) {
        return -1;
    }
    // Byte copies: the buffer need not be aligned, and every bit pattern is a valid
    // double, pointer value, type code (the enumeration spans all of int) and identifier.
    const auto* in = static_cast<const unsigned char*>(buffer);
    std::memcpy(&mValue, in + kValueAt, sizeof mValue);
    std::memcpy(&mFmtStruct, in + kPointerAt, sizeof mFmtStruct);
    std::memcpy(&mType, in + kTypeAt, sizeof mType);
    std::memcpy(&mFmtID, in + kFmtIDAt, sizeof mFmtID);
    return 0;
}

}  // namespace ZelvorDataType
