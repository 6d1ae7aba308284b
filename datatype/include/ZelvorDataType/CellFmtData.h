#pragma once

#include <cstdint>

#include <ZelvorBase/Guid.h>
#include <ZelvorDataType/Export.h>
#include <ZelvorDataType/WideText.h>

// The type code of a cell value. Two codes mean something to this library: the default
// type of a new CellFmtData, and the code of a null cell (a Variant holding such a cell
// reports itself null). Every other 32-bit value is stored, copied, compared and saved
// unread, so callers may use codes of their own.
enum EnumCellFmtDataTypes : int {
    CELLFMT_TYPE_DEFAULT = 1,
    CELLFMT_TYPE_NULL = 14,
};

namespace ZelvorDataType {

// The full description of a cell format: public fields with fixed defaults. Only the
// defaults and the comparison belong to this library; what the fields mean is the
// caller's affair. The texts live on the heap and are freed with the record.
struct ZELVOR_DATATYPE_API CellFmtStruct {
    // Every field at the default given beside it. Throws std::bad_alloc if a text
    // cannot be made, having freed the texts made before. Copies, moves and the
    // destructor are the implicit ones: field by field.
    CellFmtStruct();

    // True when every field matches. Fields are compared in the order mNumberFormat,
    // mCategory, mTextA, mTextB, mWordA, mWordB, mFlagA, mCodeB, mCodeA, mTextC, mCodeC,
    // mLocale, stopping at the first difference; texts compare by length, then by their
    // characters.
    bool operator==(const CellFmtStruct& other) const;

    int32_t mCategory = 0;
    WideText mNumberFormat{L"#,##0"};
    uint64_t mWordA = 0xFFFFFF;
    uint64_t mWordB = 0;
    WideText mTextA{L"I"};
    uint16_t mCodeA = 2;
    WideText mTextB;
    uint8_t mFlagA = 0;
    uint16_t mCodeB = 0;
    WideText mTextC;
    uint16_t mCodeC = 10;
    uint16_t mLocale = 1033;  // a numeric locale identifier, 0x409
};

// A cell value: a number, its type code, the identifier of its format and, optionally, a
// pointer to the full description of that format. A plain value: copying copies all four
// fields and shares the description, which this class never owns, frees or follows.
//
//     CellFmtData price(12.5, CELLFMT_TYPE_DEFAULT, formatId);
//     price.PutCellFmtStructPtr(&sharedFormat);   // sharedFormat must outlive its use
class ZELVOR_DATATYPE_API CellFmtData {
  public:
    // The size of the saved form, in bytes.
    static constexpr unsigned int kSavedSize = 40;

    // Value 0.0, no description, type CELLFMT_TYPE_DEFAULT (1), format GUID_NULL.
    CellFmtData() noexcept;
    // The three given; no description.
    CellFmtData(double value, EnumCellFmtDataTypes type, const _GUID& fmtID) noexcept;
    CellFmtData(const CellFmtData&) = default;
    CellFmtData& operator=(const CellFmtData&) = default;

    double GetValue() const noexcept { return mValue; }
    CellFmtStruct* GetCellFmtStructPtr() const noexcept { return mFmtStruct; }
    EnumCellFmtDataTypes GetType() const noexcept { return mType; }
    _GUID GetFmtID() const noexcept { return mFmtID; }

    void PutValue(double value) noexcept { mValue = value; }
    // `fmtStruct` is not taken over: the caller keeps it alive while it is used.
    void PutCellFmtStructPtr(CellFmtStruct* fmtStruct) noexcept { mFmtStruct = fmtStruct; }
    void PutType(EnumCellFmtDataTypes type) noexcept { mType = type; }
    void PutFmtID(const _GUID& fmtID) noexcept { mFmtID = fmtID; }

    // True when the values are equal as doubles (so a NaN equals nothing, itself
    // included), the types match and the 16 bytes of the format identifiers match. The
    // description pointer takes no part: cells with different descriptions can be equal.
    bool operator==(const CellFmtData& other) const noexcept;

    // Orders by value alone: true when this value is below the other's. A NaN on either
    // side gives false.
    bool operator<(const CellFmtData& other) const noexcept;

    // Writes the 40-byte saved form to `buffer`, in the machine's byte order: the value
    // (bytes 0-7), the description pointer's bits (8-15), the type (16-19) and the format
    // identifier (20-35). Bytes 36-39 are left as they were. Returns 0, or -1 with nothing
    // written when `size` is below 40 or `buffer` is null. The last argument is unused.
    int SaveObj(unsigned int size, void* buffer, int flags) const noexcept;

    // Reads the saved form back into all four fields and returns 0, or returns -1 and
    // changes nothing when `size` is below 40 or `buffer` is null. Nothing is checked:
    // any 40 bytes load. The pointer comes back as saved, and means something only while
    // the description it pointed to still exists in this process.
    int LoadObj(unsigned int size, void* buffer) noexcept;

  private:
    double mValue;
    CellFmtStruct* mFmtStruct;  // not owned
    EnumCellFmtDataTypes mType;
    _GUID mFmtID;
};

}  // namespace ZelvorDataType
