#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>

#include <ZelvorBase/Buffer.h>
#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReferenceCounted.h>
#include <ZelvorBase/ReturnString.h>
#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/Binary.h>
#include <ZelvorDataType/CellFmtData.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/Export.h>
#include <ZelvorDataType/WideText.h>

namespace ZelvorDataType {

// The tag of a Variant: which kind of value it holds. The numbers are fixed; no other
// value ever occurs. VARIANT_LONG is never created by this library, but every operation
// handles it (as a signed 32-bit integer, except in text, where it prints unsigned).
enum VARIANT_TYPE : int {
    VARIANT_EMPTY = -1,       // nothing
    VARIANT_INT = 1,          // int
    VARIANT_UNSIGNED = 2,     // unsigned int
    VARIANT_DOUBLE = 6,       // double
    VARIANT_FLOAT = 7,        // float
    VARIANT_WSTRING = 9,      // wide text, owned
    VARIANT_BINARY = 11,      // byte block, owned
    VARIANT_DATE = 14,        // DateTime read as a date, owned
    VARIANT_TIME = 15,        // DateTime read as a time of day, owned
    VARIANT_DATETIME = 16,    // DateTime, owned
    VARIANT_SHORT = 21,       // short
    VARIANT_LONG = 22,        // 32-bit integer
    VARIANT_BIGDECIMAL = 30,  // BigDecimal, owned
    VARIANT_CELLFMT = 31,     // CellFmtData, owned
    VARIANT_INT64 = 34,       // long long
};

// The tag of everything a Variant throws, always as
// ZelvorBase::ExceptionImpl<VariantException>, by value, with domain
// MESSAGE_DOMAIN_UNKNOWN and id -1. The texts:
//   "Not enough memory left."            a MemoryContract refused a text or byte block
//   "Variant types incomparable"         operator< on tags that have no common order
//   "Cannot convert to Binary type"      ToBinary on another tag
//   "Cannot convert to DateTime type"    ToDateTime, operator DateTime on another tag
//   "Cannot convert to BigDecimal type"  ToBigDecimal on another tag
//   "Cannot convert to CellFmtData type" operator CellFmtData on another tag
// A BigDecimal that is invalid passes on its own "Invalid BigDecimal"
// (ExceptionImpl<BigDecimalException>) from comparison and text.
class ZELVOR_DATATYPE_API VariantException : public ZelvorBase::Message {};

class Variant;
namespace internal {
struct VariantAccess;
}

// One tagged value: nothing, a number (short, int, unsigned int, long long, float,
// double), a wide text, a byte block, a date or time, an exact decimal or a cell-format
// value. GetVarType() names which.
//
// Storage. Numbers sit in the object itself; a Variant of a number never allocates.
// Texts, byte blocks, DateTimes, BigDecimals and CellFmtData are copies that the Variant
// owns, made from its Buffer when it has one and from the heap otherwise. What came from
// a Buffer is never freed by the Variant: the arena keeps it until it goes, so repeated
// assignment keeps eating the arena, and a Variant must not outlive its Buffer. What came
// from the heap is freed by the next assignment, Reset or the destructor. The Buffer and
// the contract are fixed at construction; only swap exchanges Buffers.
//
// Memory contract. A Variant built with a MemoryContract (and no Buffer) asks the
// contract before every heap allocation of a text or a byte block, by
// RequestMemory(bytes, 1), and reports MemoryTaken(bytes) after it: a text of n
// characters counts n * 4 + 4 bytes, a byte block its size. A refusal throws
// "Not enough memory left." and leaves the Variant empty with nothing allocated. Frees
// are never reported. Numbers, dates, decimals and cell formats are not governed.
//
// Every assignment first releases the old value (Reset), so the tag can change any
// number of times. A Variant is for one thread at a time.
//
// Comparison: operator== never fails on a type mismatch (it gives false) and widens
// numbers pair by pair; operator< orders numbers in double (in long long from a
// long long on the left) and throws "Variant types incomparable" where
// IsTypeComparable() is false. Conversion: the numeric casts never fail (a tag without a
// numeric reading gives 0); the casts to object types throw on any other tag. Text: every
// value has a wide and a narrow text and their lengths.
class ZELVOR_DATATYPE_API Variant {
  public:
    // ---- Construction --------------------------------------------------------------
    // Every constructor but the contract one and the copy takes the Buffer to draw on
    // (null: the heap) and leaves the contract null. They throw what the allocators
    // throw (std::bad_alloc, also when an arena refuses), and then hold nothing.

    // Empty (tag -1).
    explicit Variant(ZelvorBase::Buffer* buffer = nullptr) noexcept;
    // Empty, on the heap, with texts and byte blocks governed by `contract` (which may
    // be null). Keeps a counted reference to it (AddRef) until destruction.
    explicit Variant(ZelvorBase::MemoryContract* contract);

    Variant(short value, ZelvorBase::Buffer* buffer = nullptr) noexcept;         // tag 21
    Variant(int value, ZelvorBase::Buffer* buffer = nullptr) noexcept;           // tag 1
    Variant(unsigned int value, ZelvorBase::Buffer* buffer = nullptr) noexcept;  // tag 2
    Variant(long long value, ZelvorBase::Buffer* buffer = nullptr) noexcept;     // tag 34
    Variant(float value, ZelvorBase::Buffer* buffer = nullptr) noexcept;         // tag 7
    Variant(double value, ZelvorBase::Buffer* buffer = nullptr) noexcept;        // tag 6
    // Tag 9: the UTF-8 text converted to wide characters; null gives the empty text.
    Variant(const char* text, ZelvorBase::Buffer* buffer = nullptr);
    // Tag 9: a copy of the text; null gives the empty text.
    Variant(const wchar_t* text, ZelvorBase::Buffer* buffer = nullptr);
    // Tag 16: a copy of the whole DateTime.
    Variant(const DateTime& value, ZelvorBase::Buffer* buffer = nullptr);
    // Tag 30: a copy bound to `buffer`; an invalid or empty value is copied as such,
    // without a throw.
    Variant(const BigDecimal& value, ZelvorBase::Buffer* buffer = nullptr);
    // Tag 11: a copy of the view of `value` (its bytes between the trims, not the
    // block behind them). A null `value` is taken as an empty block. With a Buffer that
    // refuses the bytes (but not the object) the block is empty, as CreateBinary makes it.
    Variant(const Binary* value, ZelvorBase::Buffer* buffer = nullptr);
    // Tag 31: a copy; the format record it points to is shared, not copied.
    Variant(const CellFmtData& value, ZelvorBase::Buffer* buffer = nullptr);

    // A deep copy that takes `other`'s Buffer and contract: the copy is drawn from the
    // same arena, or governed by the same contract (so copying a text or byte block
    // under a contract may throw "Not enough memory left.").
    Variant(const Variant& other);

    // Releases the value as Reset does, then the contract reference.
    ~Variant();

    // ---- Assignment ----------------------------------------------------------------
    // Each starts with Reset(), returns *this, and keeps this object's Buffer and
    // contract. Only the text and byte-block assignments (and the copy) consult the
    // contract; after a refusal the Variant is empty.

    // Frees the value when it came from the heap (nothing from a Buffer), then the tag
    // is -1. Buffer and contract stay.
    void Reset() noexcept;

    Variant& operator=(short value) noexcept;         // tag 21
    Variant& operator=(int value) noexcept;           // tag 1
    Variant& operator=(unsigned int value) noexcept;  // tag 2
    Variant& operator=(long long value) noexcept;     // tag 34
    Variant& operator=(float value) noexcept;         // tag 7
    Variant& operator=(double value) noexcept;        // tag 6
    // Tag 9 from a UTF-8 text. A null text gives the empty text and never asks the
    // contract; any other text asks for (converted length) * 4 + 4 bytes ("" asks 4).
    Variant& operator=(const char* text);
    // Tag 9. A null text counts as the empty text throughout: under a contract it asks
    // for 4 bytes. The text may point into this Variant's own text.
    Variant& operator=(const wchar_t* text);
    // Tag 16, a copy of the whole value. SetDate and SetTime store the whole value too,
    // with tag 14 (compared as a date) and 15 (compared as a time of day).
    Variant& operator=(const DateTime& value);
    void SetDate(const DateTime& value);
    void SetTime(const DateTime& value);
    // Tag 30, a copy bound to this object's Buffer, its state (invalid, empty) included.
    Variant& operator=(const BigDecimal& value);
    // Tag 11, a copy of the view of `value` (null: an empty block). Under a contract it
    // asks for value->GetSize() bytes (0 for an empty or null block).
    Variant& operator=(const Binary* value);
    // Tag 31, a copy.
    Variant& operator=(const CellFmtData& value);
    // A deep copy of `other`'s value into this object's own Buffer, under this object's
    // own contract. Self-assignment does nothing.
    Variant& operator=(const Variant& other);

    // ---- Exchange ------------------------------------------------------------------

    // Exchanges tags, values and Buffers; each object keeps its own contract, and
    // neither contract hears of it. Nothing is allocated or copied, so it can't fail.
    void swap(Variant& other) noexcept;

    // Copies `other`'s slot into this one by the width of `other`'s tag (16, 32 or 64
    // bits; a null slot for an empty `other`), and nothing else: both tags stay and no
    // ownership moves. A low-level step: for a pointer value the two objects then share
    // one object, and the caller must see that only one of them ever frees it (for
    // instance by taking the value into an empty Variant, whose tag says there is
    // nothing to free).
    void TakeValue(const Variant& other) noexcept;

    // ---- Inspection ----------------------------------------------------------------

    // The tag, a VARIANT_TYPE value.
    int GetVarType() const noexcept;
    // True when empty, and for a cell format whose cell type is 14 (a null cell).
    bool IsNull() const noexcept;

    // ---- Comparison ----------------------------------------------------------------

    // Equal tags (or numeric tags) and equal values; any other pair is false, never an
    // exception. Numbers are widened pair by pair: int and unsigned int compare their 32
    // bits (-1 equals 4294967295), a short is sign-extended, a long long compares in 64
    // bits with the other side extended by its own signedness, a double or float
    // compares with an integer converted to its own type (so a float compares in
    // float), a float with a double is widened. A NaN equals nothing. Texts compare
    // character by character, byte blocks byte by byte. Date tags: two dates (14) compare
    // year, month and day; two times (15) hour to millisecond; a date-time (16) on the
    // left compares the whole value with any of the three, while a date or time on the
    // left equals only its own tag. Two BigDecimals compare by value (1.50 equals 1.5)
    // and throw "Invalid BigDecimal" if either is invalid.
    bool operator==(const Variant& other) const;
    // As a comparison with a Variant of the operand's tag.
    bool operator==(short value) const noexcept;
    bool operator==(int value) const noexcept;
    bool operator==(unsigned int value) const noexcept;
    bool operator==(long long value) const noexcept;
    bool operator==(float value) const noexcept;
    bool operator==(double value) const noexcept;
    // Tag 9 holding the same text. A null text compares as the empty text.
    bool operator==(const wchar_t* text) const noexcept;
    // Tag 9 holding the same text as the UTF-8 `text` converted (null: empty).
    bool operator==(const char* text) const;
    // Any date tag, comparing the whole DateTime, whichever the tag.
    bool operator==(const DateTime& value) const noexcept;
    // Tag 30 and equal by value; throws "Invalid BigDecimal" if either is invalid.
    bool operator==(const BigDecimal& value) const;
    // Tag 31 and equal cell values.
    bool operator==(const CellFmtData& value) const noexcept;
    // Tag 11 holding the same bytes.
    bool operator==(const Binary& value) const;

    // Whether operator< can order the two: always when either side is empty; a number
    // with any number; a text, byte block, BigDecimal or cell format with its own tag
    // only; a date tag with any date tag.
    bool IsTypeComparable(const Variant& other) const noexcept;

    // Strict order. An empty value comes before everything else and two empty values
    // are not below each other. Tags that IsTypeComparable rejects throw "Variant types
    // incomparable". Numbers are ordered as doubles, each side converted by its own type,
    // except that a long long on the left converts the right side to long long (a
    // floating value truncated toward zero): so 1LL < 1.5 is false, and so is 1.5 < 1LL.
    // A NaN is below nothing and nothing is below it. Texts order by their characters
    // as numbers, a prefix first; byte blocks as unsigned bytes; date tags by the whole
    // DateTime whatever the tag; BigDecimals by value (throwing "Invalid BigDecimal" if
    // either is invalid); cell formats by their number.
    bool operator<(const Variant& other);

    // ---- Conversion ----------------------------------------------------------------
    // The numeric casts never fail: a text (but for operator int), byte block, date,
    // BigDecimal or empty value gives 0. Integers convert by their own signedness and
    // keep the low bits when narrowed (the unsigned 4294967295 is the int -1; the long
    // long 4294967296 is the int 0). Floating values truncate toward zero (-1.9 gives
    // -1); past the 32-bit range they are truncated in 64 bits and the low 32 bits kept
    // (3e9 gives the unsigned 3000000000), past the 64-bit range they saturate, and a
    // NaN gives 0. A cell format reads as its number, GetValue().

    operator short() const noexcept;
    // As above; a text is read as a leading base-10 number by wcstol (leading blanks and
    // a sign taken, "42abc" gives 42, "abc" gives 0), low 32 bits kept.
    operator int() const noexcept;
    operator unsigned int() const noexcept;
    operator long long() const noexcept;
    operator float() const noexcept;
    operator double() const noexcept;

    // The stored object, still owned by the Variant and valid until its next assignment,
    // Reset or destruction. Each throws its "Cannot convert to ... type" for another tag.
    const Binary* ToBinary() const;          // tag 11
    const DateTime* ToDateTime() const;      // tags 14, 15, 16
    const BigDecimal* ToBigDecimal() const;  // tag 30
    // Copies of the stored value: the whole DateTime for any of the three date tags.
    operator DateTime() const;
    operator CellFmtData() const;

    // ---- Text ----------------------------------------------------------------------
    // Numbers print with the C library under the process's numeric locale: integers as
    // "%d" (an unsigned int prints its bits as signed: 4294967295 gives -1; tag 22 prints
    // unsigned as "%ld"), long long as "%lld", floating values as "%.15f" (1.5 gives
    // "1.500000000000000", a float is widened first, so 0.1f gives
    // "0.100000001490116"). A text prints as itself, in UTF-8 for the narrow forms.
    // The date tags print the whole DateTime ("2024-03-05 07:08:09.012"), a BigDecimal its
    // own text with its scale ("1.50"). An empty value and a byte block print as the
    // empty text. A cell format prints its number ("%f") in ToWString() only; every other
    // form gives it the empty text and the length 0. A number text is cut at 255
    // characters. None of these throws on its own account, but an invalid BigDecimal
    // passes on "Invalid BigDecimal".

    ZelvorBase::ReturnWString ToWString() const;
    // Copies the wide text into `buffer`, at most `length` characters with the
    // terminator: a longer text is cut and still terminated; the rest of the `length`
    // characters is filled with NULs. A null buffer or a length of 0 writes nothing.
    // A cell format writes the empty text here.
    void ToWString(wchar_t* buffer, unsigned int length) const;
    // Characters of the wide text, without the terminator (0 for a cell format).
    unsigned int GetWStringLength() const;

    ZelvorBase::ReturnString ToString() const;
    // As the wide array form, in bytes of the narrow text.
    void ToString(char* buffer, unsigned int length) const;
    // Bytes of the narrow text, without the terminator: for a text, its UTF-8 length.
    unsigned int GetStringLength() const;

    // As ToString(), except that floating values print as "%.15g" (1.5 gives "1.5",
    // 1e20 gives "1e+20") and the date tags print the date alone ("3/5/2024").
    ZelvorBase::ReturnString ToStringVBBehavior() const;

    // Tag 9: the stored text, still owned by the Variant; null for any other tag.
    const WideText* GetRawWString() const noexcept;

  private:
    friend struct internal::VariantAccess;

    int mType;                    // a VARIANT_TYPE value
    std::uint64_t mValue;         // the number's bits, or the owned pointer
    ZelvorBase::Buffer* mBuffer;  // the arena; null for the heap
    ZelvorBase::SmartPtrI<ZelvorBase::MemoryContract> mContract;  // may be null
};

// a.swap(b).
ZELVOR_DATATYPE_API void swap(Variant& a, Variant& b) noexcept;

// Writes ToString(): numbers as the C library prints them, texts in UTF-8, dates as
// DateTime text, nothing for an empty value. Throws what ToString throws.
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const Variant& value);

// A hash consistent with operator== across tags: whatever compares equal hashes alike.
// As operator== is not transitive across numeric tags (the int -1 equals the unsigned
// 4294967295 and the long long -1, which differ from each other), the hash is constant
// on each chain of equal pairs: integers hash by their nearest float (exactly below
// 2^24), negative 32-bit values by their unsigned partner, and two regions where the
// chains run through everything share one value each (most of [2^31, 2^32) with the
// negatives below -2^24, and magnitudes from 2^53). All three date tags share one
// value, because a date-time equals both a date and a time. Texts, byte blocks,
// decimals and cell formats hash by their contents. Throws only what allocation
// throws. Stable within one run only.
ZELVOR_DATATYPE_API std::size_t HashValue(const Variant& value);

}  // namespace ZelvorDataType

// std::hash through HashValue above, for the unordered containers.
namespace std {
template <>
struct hash<ZelvorDataType::Variant> {
    std::size_t operator()(const ZelvorDataType::Variant& value) const {
        return ZelvorDataType::HashValue(value);
    }
};
}  // namespace std
