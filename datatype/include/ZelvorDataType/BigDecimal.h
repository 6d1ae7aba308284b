#pragma once

#include <ZelvorBase/Buffer.h>
#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReturnString.h>
#include <ZelvorDataType/BigInt.h>
#include <ZelvorDataType/Export.h>
#include <cstddef>
#include <functional>
#include <iosfwd>

namespace ZelvorDataType {

// The tag of every exception of the exact decimals, thrown by value as
// ZelvorBase::ExceptionImpl<BigDecimalException> with domain MESSAGE_DOMAIN_UNKNOWN, id -1
// and one of these texts:
//   "Cannot change BigDecimal value after it is initialized"   assigning a set value
//   "Invalid BigDecimal"                                      using an empty or invalid value
//   "Divide by Zero"                                          dividing by zero
//   "Invalid scale request"                                   Divide with a scale below -1
//   "ZelvorFormat::GetLocaleDecimalSeparator: Failed to create DecimalFormatSymbols"
//   "BigDecimal::toWString(LCID): Failed to look up DecimalSeparatorSymbol"
class ZELVOR_DATATYPE_API BigDecimalException : public ZelvorBase::Message {};

class BigDecimal;

// The owner of a BigDecimal made by arithmetic. Move-only. A value that came from the
// heap is destroyed with the handle; one that came from a Buffer is left to the arena.
// Release() hands the pointer over: the caller then deletes a heap value (one whose
// left operand had no Buffer) and leaves an arena value alone.
class ZELVOR_DATATYPE_API BigDecimalHandle {
  public:
    // Owns nothing.
    BigDecimalHandle() noexcept = default;
    BigDecimalHandle(BigDecimalHandle&& other) noexcept;
    BigDecimalHandle& operator=(BigDecimalHandle&& other) noexcept;
    BigDecimalHandle(const BigDecimalHandle&) = delete;
    BigDecimalHandle& operator=(const BigDecimalHandle&) = delete;
    ~BigDecimalHandle();

    BigDecimal* operator->() const noexcept { return mValue; }
    BigDecimal& operator*() const noexcept { return *mValue; }
    BigDecimal* Get() const noexcept { return mValue; }
    // Gives up ownership; the handle is empty afterwards.
    BigDecimal* Release() noexcept;
    explicit operator bool() const noexcept { return mValue != nullptr; }

  private:
    friend class BigDecimal;
    BigDecimalHandle(BigDecimal* value, bool onHeap) noexcept;

    BigDecimal* mValue = nullptr;
    // Where the object itself came from, fixed when it was made: a later swap may move
    // a Buffer into the value, but not the object out of the heap.
    bool mOnHeap = false;
};

// An exact decimal number of any length: digits and a scale, the number of digits behind
// the point. Its value is sign * digits * 10^-scale; the scale is never negative, and it
// is part of the value's form (1.50 has scale 2 and prints as 1.50), not of its
// comparison (1.50 equals 1.5). Nothing rounds: divisions truncate.
//
// States. A value is empty (no value yet), invalid (a text that failed to parse) or
// valid. It is written once: an empty value may be parsed or assigned, and from then on
// it does not change. Bad text never throws; it leaves the invalid state, and the first
// use of the value as a number throws "Invalid BigDecimal".
//
// Memory. Every constructor takes the Buffer that the digits come from, null for the
// heap. A heap value owns its digits; a value with a Buffer frees nothing, and must not
// outlive the arena. Results of arithmetic come from the left operand's Buffer.
//
// Text. Decimal notation with an optional sign, an optional point and an optional
// exponent: "-12.50", ".5", "5.", "1.5e-3", "+7E2". Nothing else is accepted: no white
// space, group separator or currency sign anywhere. Leading zeros of the text are kept
// by a heap value ("007.50" prints as 007.50) and dropped by one in a Buffer (7.50).
class ZELVOR_DATATYPE_API BigDecimal {
  public:
    static constexpr int ScaleEmpty = -1;
    static constexpr int ScaleInvalid = -2;

    // An empty value drawing on `buffer` (heap if null).
    explicit BigDecimal(ZelvorBase::Buffer* buffer = nullptr) noexcept;

    // Parses `text` (see Text above); null, empty or malformed text gives the invalid
    // state. "1e5" is 100000 at scale 0, "1.5e-1" is 0.15 at scale 2, "-0.00" is zero
    // at scale 0. A value whose scale or digit count would not fit in 32 bits is
    // invalid too.
    explicit BigDecimal(const char* text, ZelvorBase::Buffer* buffer = nullptr);

    // The same for a wide text, narrowed through the process's multibyte encoding.
    explicit BigDecimal(const wchar_t* text, ZelvorBase::Buffer* buffer = nullptr);

    // An integer at scale 0: BigDecimal(-42) prints as -42.
    explicit BigDecimal(int value, ZelvorBase::Buffer* buffer = nullptr);

    // The value as "%f" writes it, so always six places: 1.5 is 1.500000 at scale 6,
    // 1e-7 and 0.0 are zero at scale 0. Infinities and NaN give the invalid state. The
    // process's decimal separator is read as a point.
    explicit BigDecimal(double value, ZelvorBase::Buffer* buffer = nullptr);

    // An empty value on `buffer` assigned from `other`: a copy of its state, scale and
    // digits (an invalid `other` gives an invalid copy, without a throw).
    BigDecimal(const BigDecimal& other, ZelvorBase::Buffer* buffer = nullptr);

    // Destroys the digits of a heap value; a value in a Buffer frees nothing.
    ~BigDecimal();

    // Writes `other` into this still empty value. Throws "Cannot change BigDecimal value
    // after it is initialized" when this value is valid or invalid, self-assignment
    // included.
    BigDecimal& operator=(const BigDecimal& other);

    // True only for the empty state.
    bool IsEmpty() const noexcept { return mScale == ScaleEmpty; }
    // True when the value can't be used as a number: invalid or empty.
    bool IsInvalid() const noexcept { return mScale < 0; }

    // A new value object from `buffer` (heap if null) that takes over `bigInt` (a
    // BigInt* from the same place) with `scale`, without a copy or a check. Should the
    // object itself not be allocated, a heap `bigInt` is deleted before the throw.
    static BigDecimal* CreateBigDecimal(void* bigInt, int scale,
                                        ZelvorBase::Buffer* buffer = nullptr);

    // Marks this value invalid.
    void _CreateInvalidBigDecimal() noexcept { mScale = ScaleInvalid; }

    // Parses `text` into this still empty value (valid or invalid afterwards). A value
    // already set throws "Cannot change BigDecimal value after it is initialized";
    // otherwise only allocation throws.
    void _StrToBigDecimal(const char* text);

    // The first `c` in [begin, end), or null.
    static const char* _FindChr(const char* begin, const char* end, char c) noexcept;

    // True when [begin, end] (both included; empty when begin is after end) holds only
    // digits and at most one `allowed` character (none when `allowed` is NUL).
    // `allZero` tells whether no digit 1 to 9 was met before the end or the first fault.
    static bool _CheckDigits(const char* begin, const char* end, bool& allZero,
                             char allowed) noexcept;

    // Exchanges scale, Buffer and digits with `other`; each digit array stays with the
    // Buffer it came from.
    void swap(BigDecimal& other) noexcept;

    // Comparison by value, across scales: -1, 0 or 1. A quotient truncated to nothing
    // keeps its sign, so 1/3 (printed "0") compares above zero. Throws "Invalid
    // BigDecimal" for an empty or invalid operand, as do all operations below but
    // Scale.
    int CompareTo(const BigDecimal& other) const;
    bool operator==(const BigDecimal& other) const { return CompareTo(other) == 0; }
    bool operator<(const BigDecimal& other) const { return CompareTo(other) < 0; }
    bool operator>(const BigDecimal& other) const { return CompareTo(other) > 0; }
    // Deliberately absent: != , <= and >= are not offered.
    bool operator!=(const BigDecimal& other) const = delete;

    // Exact sums and differences at the larger scale (1.5 + 2 is 3.5), products at the
    // sum of the scales (1.5 * 0.2 is 0.30).
    BigDecimalHandle operator+(const BigDecimal& other) const;
    BigDecimalHandle operator-(const BigDecimal& other) const;
    BigDecimalHandle operator*(const BigDecimal& other) const;

    // The quotient truncated at this value's scale: 10 / 4 is 2, 10.00 / 4 is 2.50,
    // -7 / 2 is -3. Throws "Divide by Zero" for a zero divisor.
    BigDecimalHandle operator/(const BigDecimal& other) const;

    // The quotient truncated at `scale` places (-1: this value's scale, as operator/).
    // 1 / 3 at scale 5 is 0.33333. Checks in this order: an empty or invalid operand
    // ("Invalid BigDecimal"), a scale below -1 ("Invalid scale request"), a zero
    // divisor ("Divide by Zero").
    BigDecimalHandle Divide(const BigDecimal& other, int scale) const;

    // All arithmetic throws std::length_error when a result's scale or digit count
    // does not fit in 32 bits, and what allocation throws.

    // -1, 0 or 1.
    int Signum() const;
    // The scale, with no check: ScaleEmpty or ScaleInvalid come through as they are.
    int Scale() const noexcept { return mScale; }
    // Stored digits, trailing zeros and kept leading zeros included: 3 for 0.30.
    int Precision() const;

    // Plain decimal text, never an exponent, with '.' and exactly `Scale()` places:
    // "-1.50", "0.05", "1000" for 1e3. Zero prints "0" at any scale; a quotient
    // truncated to nothing prints its places with its sign ("-0.00").
    ZelvorBase::ReturnString ToString() const;
    // ToString widened.
    ZelvorBase::ReturnWString ToWString() const;
    // The same text with the decimal separator of the locale `lcid` (a numeric locale
    // identifier: 0x407 German gives "1,50", 0x409 US English "1.50"; 0 and 0x400 mean
    // the default locale). The minus sign and digits stay ASCII, with no grouping. An
    // identifier without a known locale gets the neutral separator '.'.
    ZelvorBase::ReturnWString ToWString(unsigned int lcid) const;
    // The digits before the point, without sign: "123" for -123.45, "0" for 0.5.
    ZelvorBase::ReturnString GetIntegerDigits() const;
    // The digits behind the point: "45" for 123.45, "50" for 1.50, "" for 12, "0" for
    // zero.
    ZelvorBase::ReturnString GetFractionDigits() const;
    // The empty wide text, for every valid value.
    ZelvorBase::ReturnWString MantissaToWString() const;

  private:
    // Throws "Invalid BigDecimal" unless the value is valid.
    void CheckValid() const {
        if (IsInvalid()) {
            ThrowInvalid();
        }
    }
    [[noreturn]] static void ThrowInvalid();
    // A new value from this value's Buffer holding `op` of the two operands.
    BigDecimalHandle Combine(int op, const BigDecimal& other, int resultScale,
                             int divisionScale) const;

    int mScale = ScaleEmpty;
    ZelvorBase::Buffer* mBuffer = nullptr;
    BigInt* mValue = nullptr;
};

// Exchange two values, as BigDecimal::swap does.
ZELVOR_DATATYPE_API void swap(BigDecimal& a, BigDecimal& b) noexcept;
// The same through pointers; the same pointer twice does nothing.
ZELVOR_DATATYPE_API void swap(BigDecimal* a, BigDecimal* b) noexcept;

// Writes ToString() ("-1.50"); throws "Invalid BigDecimal" as ToString does.
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const BigDecimal& value);
// Writes the value the handle holds, or "(none)" for an empty handle.
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const BigDecimalHandle& handle);

// A hash of the value, not of its form: values that operator== finds equal (1.5 and
// 1.50, 007 and 7) hash alike, and so do two quotients truncated to nothing with the
// same sign. An empty or invalid value, which equals nothing, hashes to a constant
// instead of throwing. Throws only what allocation throws. Stable within one run only.
ZELVOR_DATATYPE_API std::size_t HashValue(const BigDecimal& value);

}  // namespace ZelvorDataType

// std::hash through HashValue above, for the unordered containers.
namespace std {
template <>
struct hash<ZelvorDataType::BigDecimal> {
    std::size_t operator()(const ZelvorDataType::BigDecimal& value) const {
        return ZelvorDataType::HashValue(value);
    }
};
}  // namespace std
