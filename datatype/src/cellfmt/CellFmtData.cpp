#include <ZelvorDataType/CellFmtData.h>

#include <cstring>
#include <type_traits>

namespace ZelvorDataType {

// A plain value that a Variant copies as bytes and saves field by field.
static_assert(std::is_trivially_copyable_v<CellFmtData>);
static_assert(sizeof(EnumCellFmtDataTypes) == 4);

CellFmtData::CellFmtData() noexcept
    : CellFmtData(0.0, CELLFMT_TYPE_DEFAULT, ZelvorBase::GUID_NULL) {}

CellFmtData::CellFmtData(double value, EnumCellFmtDataTypes type, const _GUID& fmtID) noexcept
    : mValue(value), mFmtStruct(nullptr), mType(type), mFmtID(fmtID) {}

bool CellFmtData::operator==(const CellFmtData& other) const noexcept {
    // Identifiers compare as bytes, not field by field: _GUID has no padding, so the
    // two agree, and bytes are what the saved form keeps.
    return mValue == other.mValue && mType == other.mType &&
           std::memcmp(&mFmtID, &other.mFmtID, sizeof mFmtID) == 0;
}

bool CellFmtData::operator<(const CellFmtData& other) const noexcept {
    return mValue < other.mValue;
}

}  // namespace ZelvorDataType
