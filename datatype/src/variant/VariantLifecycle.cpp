// Construction, ownership, assignment and exchange of Variant values.

#include <ZelvorDataType/Variant.h>

#include <cstring>
#include <utility>

#include "variant/VariantAccess.h"

namespace ZelvorDataType {

using internal::MakeSlot;
using internal::ReadSlot;
using internal::SlotWidth;
using internal::VariantAccess;
using internal::VariantError;
using ZelvorBase::Buffer;

// The fields in their fixed order: the tag, the 8-byte slot, the arena, the contract.
static_assert(sizeof(Variant) == 32);

namespace {

constexpr const wchar_t* kRefused = L"Not enough memory left.";

// An object from the arena when there is one, else from the heap. The arena form is
// never deleted; the heap form is deleted by FreeValue.
template <class T, class... Args>
T* Make(Buffer* buffer, Args&&... args) {
    if (buffer == nullptr) {
        return new T(std::forward<Args>(args)...);
    }
    return new (buffer) T(std::forward<Args>(args)...);
}

// Destroys and frees a value that came from the heap. What came from an arena stays
// there until the arena goes.
void FreeValue(int tag, std::uint64_t slot, Buffer* buffer) noexcept {
    if (buffer != nullptr) {
        return;
    }
    switch (tag) {
        case VARIANT_WSTRING:
            delete ReadSlot<WideText*>(slot);
            break;
        case VARIANT_BINARY:
            delete ReadSlot<Binary*>(slot);  // the virtual destructor frees the block
            break;
        case VARIANT_DATE:
        case VARIANT_TIME:
        case VARIANT_DATETIME:
            delete ReadSlot<DateTime*>(slot);
            break;
        case VARIANT_BIGDECIMAL:
            delete ReadSlot<BigDecimal*>(slot);
            break;
        case VARIANT_CELLFMT:
            delete ReadSlot<CellFmtData*>(slot);
            break;
        default:
            break;
    }
}

// The old value of a Variant being assigned, freed when the assignment is over,
// whichever way it ends. Freeing after the new value is made lets a value be assigned
// from a part of itself (its own text, its own DateTime) without reading freed memory;
// the Variant itself is empty from the start, as after a Reset.
class OldValue {
  public:
    OldValue(int tag, std::uint64_t slot, Buffer* buffer) noexcept
        : mTag(tag), mSlot(slot), mBuffer(buffer) {}
    OldValue(const OldValue&) = delete;
    OldValue& operator=(const OldValue&) = delete;
    ~OldValue() { FreeValue(mTag, mSlot, mBuffer); }

  private:
    int mTag;
    std::uint64_t mSlot;
    Buffer* mBuffer;
};

void CopyBits(std::uint64_t& target, std::uint64_t source, std::size_t width) noexcept {
    if (width == 0) {
        target = 0;
        return;
    }
    std::memcpy(&target, &source, width);
}

}  // namespace

namespace internal {

void VariantAccess::StoreText(Variant& v, const wchar_t* text, std::size_t length, bool governed) {
    if (text == nullptr) {
        text = L"";
        length = 0;
    }
    if (v.mBuffer != nullptr) {
        auto* stored =
            new (v.mBuffer) WideText(text, length, ZelvorBase::Allocator<wchar_t>(v.mBuffer));
        Set(v, VARIANT_WSTRING, MakeSlot(stored));
        return;
    }
    if (!governed || !v.mContract) {
        Set(v, VARIANT_WSTRING, MakeSlot(new WideText(text, length)));
        return;
    }
    // Four bytes a character and four for the terminator, whatever the string class
    // really reserves: the count is the contract's unit, not a measurement.
    const std::size_t bytes = length * sizeof(wchar_t) + sizeof(wchar_t);
    if (v.mContract->RequestMemory(bytes, 1) != 0) {
        throw VariantError(kRefused);
    }
    Set(v, VARIANT_WSTRING, MakeSlot(new WideText(text, length)));
    v.mContract->MemoryTaken(bytes);
}

void VariantAccess::StoreBlock(Variant& v, const unsigned char* data, std::size_t size) {
    const bool governed = v.mBuffer == nullptr && v.mContract;
    if (governed && v.mContract->RequestMemory(size, 1) != 0) {
        throw VariantError(kRefused);
    }
    Set(v, VARIANT_BINARY, MakeSlot(CreateBinary(data, size, v.mBuffer)));
    if (governed) {
        v.mContract->MemoryTaken(size);
    }
}

}  // namespace internal

// ---- Construction ----------------------------------------------------------------------

Variant::Variant(Buffer* buffer) noexcept : mType(VARIANT_EMPTY), mValue(0), mBuffer(buffer) {}

Variant::Variant(ZelvorBase::MemoryContract* contract)
    : mType(VARIANT_EMPTY), mValue(0), mBuffer(nullptr), mContract(contract) {}

Variant::Variant(short value, Buffer* buffer) noexcept
    : mType(VARIANT_SHORT), mValue(MakeSlot(value)), mBuffer(buffer) {}

Variant::Variant(int value, Buffer* buffer) noexcept
    : mType(VARIANT_INT), mValue(MakeSlot(value)), mBuffer(buffer) {}

Variant::Variant(unsigned int value, Buffer* buffer) noexcept
    : mType(VARIANT_UNSIGNED), mValue(MakeSlot(value)), mBuffer(buffer) {}

Variant::Variant(long long value, Buffer* buffer) noexcept
    : mType(VARIANT_INT64), mValue(MakeSlot(value)), mBuffer(buffer) {}

Variant::Variant(float value, Buffer* buffer) noexcept
    : mType(VARIANT_FLOAT), mValue(MakeSlot(value)), mBuffer(buffer) {}

Variant::Variant(double value, Buffer* buffer) noexcept
    : mType(VARIANT_DOUBLE), mValue(MakeSlot(value)), mBuffer(buffer) {}

// The delegating constructors below leave a complete empty object before the body runs,
// so a throw in the body destroys it like any other: nothing is held, the contract
// (always null here) is released.
Variant::Variant(const char* text, Buffer* buffer) : Variant(buffer) {
    *this = text;
}

Variant::Variant(const wchar_t* text, Buffer* buffer) : Variant(buffer) {
    *this = text;
}

Variant::Variant(const DateTime& value, Buffer* buffer) : Variant(buffer) {
    *this = value;
}

Variant::Variant(const BigDecimal& value, Buffer* buffer) : Variant(buffer) {
    *this = value;
}

Variant::Variant(const Binary* value, Buffer* buffer) : Variant(buffer) {
    *this = value;
}

Variant::Variant(const CellFmtData& value, Buffer* buffer) : Variant(buffer) {
    *this = value;
}

Variant::Variant(const Variant& other)
    : mType(VARIANT_EMPTY), mValue(0), mBuffer(other.mBuffer), mContract(other.mContract) {
    // A number or an empty value is its slot: copied here without the detour through
    // the assignment, which the numeric copies would otherwise pay for.
    if (other.mType == VARIANT_EMPTY || internal::IsNumericTag(other.mType)) {
        CopyBits(mValue, other.mValue, SlotWidth(other.mType));
        mType = other.mType;
        return;
    }
    *this = other;
}

Variant::~Variant() {
    FreeValue(mType, mValue, mBuffer);
}

void Variant::Reset() noexcept {
    FreeValue(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
}

// ---- Assignment ------------------------------------------------------------------------

Variant& Variant::operator=(short value) noexcept {
    Reset();
    VariantAccess::Set(*this, VARIANT_SHORT, MakeSlot(value));
    return *this;
}

Variant& Variant::operator=(int value) noexcept {
    Reset();
    VariantAccess::Set(*this, VARIANT_INT, MakeSlot(value));
    return *this;
}

Variant& Variant::operator=(unsigned int value) noexcept {
    Reset();
    VariantAccess::Set(*this, VARIANT_UNSIGNED, MakeSlot(value));
    return *this;
}

Variant& Variant::operator=(long long value) noexcept {
    Reset();
    VariantAccess::Set(*this, VARIANT_INT64, MakeSlot(value));
    return *this;
}

Variant& Variant::operator=(float value) noexcept {
    Reset();
    VariantAccess::Set(*this, VARIANT_FLOAT, MakeSlot(value));
    return *this;
}

Variant& Variant::operator=(double value) noexcept {
    Reset();
    VariantAccess::Set(*this, VARIANT_DOUBLE, MakeSlot(value));
    return *this;
}

Variant& Variant::operator=(const char* text) {
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    if (text == nullptr) {
        VariantAccess::StoreText(*this, L"", 0, false);
        return *this;
    }
    const ZelvorBase::ReturnWString wide = ZelvorBase::UTF8ToWideChar(text, true);
    VariantAccess::StoreText(*this, wide.c_str(), wide.GetLength(), true);
    return *this;
}

Variant& Variant::operator=(const wchar_t* text) {
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    const std::size_t length = text == nullptr ? 0 : std::wcslen(text);
    VariantAccess::StoreText(*this, text, length, true);
    return *this;
}

Variant& Variant::operator=(const DateTime& value) {
    SetDate(value);
    mType = VARIANT_DATETIME;
    return *this;
}

void Variant::SetDate(const DateTime& value) {
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    VariantAccess::Set(*this, VARIANT_DATE, MakeSlot(Make<DateTime>(mBuffer, value)));
}

void Variant::SetTime(const DateTime& value) {
    SetDate(value);
    mType = VARIANT_TIME;
}

Variant& Variant::operator=(const BigDecimal& value) {
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    VariantAccess::Set(*this, VARIANT_BIGDECIMAL,
                       MakeSlot(Make<BigDecimal>(mBuffer, value, mBuffer)));
    return *this;
}

Variant& Variant::operator=(const Binary* value) {
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    // A null block is taken as an empty one, as a null text is taken as the empty text.
    if (value == nullptr) {
        VariantAccess::StoreBlock(*this, nullptr, 0);
    } else {
        VariantAccess::StoreBlock(*this, value->c_ptr(), value->GetSize());
    }
    return *this;
}

Variant& Variant::operator=(const CellFmtData& value) {
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    VariantAccess::Set(*this, VARIANT_CELLFMT, MakeSlot(Make<CellFmtData>(mBuffer, value)));
    return *this;
}

Variant& Variant::operator=(const Variant& other) {
    if (this == &other) {
        return *this;
    }
    const OldValue old(mType, mValue, mBuffer);
    mType = VARIANT_EMPTY;
    mValue = 0;
    const int tag = other.mType;
    // A pointer tag with a null slot arises only from TakeValue; it is copied as such.
    const bool hasObject = other.mValue != 0;
    switch (tag) {
        case VARIANT_WSTRING: {
            const WideText* text = VariantAccess::Text(other);
            VariantAccess::StoreText(*this, hasObject ? text->data() : nullptr,
                                     hasObject ? text->size() : 0, true);
            return *this;
        }
        case VARIANT_BINARY: {
            const Binary* block = VariantAccess::Block(other);
            VariantAccess::StoreBlock(*this, hasObject ? block->c_ptr() : nullptr,
                                      hasObject ? block->GetSize() : 0);
            return *this;
        }
        case VARIANT_DATE:
        case VARIANT_TIME:
        case VARIANT_DATETIME:
            if (hasObject) {
                mValue = MakeSlot(Make<DateTime>(mBuffer, *VariantAccess::Date(other)));
            }
            break;
        case VARIANT_BIGDECIMAL:
            if (hasObject) {
                mValue =
                    MakeSlot(Make<BigDecimal>(mBuffer, *VariantAccess::Decimal(other), mBuffer));
            }
            break;
        case VARIANT_CELLFMT:
            if (hasObject) {
                mValue = MakeSlot(Make<CellFmtData>(mBuffer, *VariantAccess::Cell(other)));
            }
            break;
        default:
            CopyBits(mValue, other.mValue, SlotWidth(tag));
            break;
    }
    mType = tag;
    return *this;
}

// ---- Exchange and inspection -----------------------------------------------------------

void Variant::swap(Variant& other) noexcept {
    if (this == &other) {
        return;
    }
    const std::uint64_t mine = mValue;
    const int myTag = mType;
    TakeValue(other);
    CopyBits(other.mValue, mine, SlotWidth(myTag));
    std::swap(mType, other.mType);
    std::swap(mBuffer, other.mBuffer);
}

void Variant::TakeValue(const Variant& other) noexcept {
    CopyBits(mValue, other.mValue, SlotWidth(other.mType));
}

int Variant::GetVarType() const noexcept {
    return mType;
}

bool Variant::IsNull() const noexcept {
    if (mType == VARIANT_EMPTY) {
        return true;
    }
    if (mType == VARIANT_CELLFMT && mValue != 0) {
        return VariantAccess::Cell(*this)->GetType() == CELLFMT_TYPE_NULL;
    }
    return false;
}

void swap(Variant& a, Variant& b) noexcept {
    a.swap(b);
}

}  // namespace ZelvorDataType
