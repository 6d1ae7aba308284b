#include <ZelvorDataType/CellFmtData.h>

namespace ZelvorDataType {

// The defaults sit beside the fields. Should a text fail to allocate, the texts built
// before it are destroyed as members of a half-built object, so nothing leaks.
CellFmtStruct::CellFmtStruct() = default;

bool CellFmtStruct::operator==(const CellFmtStruct& other) const {
    // The order is the one documented; text equality already tests lengths first.
    return mNumberFormat == other.mNumberFormat && mCategory == other.mCategory &&
           mTextA == other.mTextA && mTextB == other.mTextB && mWordA == other.mWordA &&
           mWordB == other.mWordB && mFlagA == other.mFlagA && mCodeB == other.mCodeB &&
           mCodeA == other.mCodeA && mTextC == other.mTextC && mCodeC == other.mCodeC &&
           mLocale == other.mLocale;
}

}  // namespace ZelvorDataType
