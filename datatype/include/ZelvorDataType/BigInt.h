#pragma once

#include <ZelvorBase/Buffer.h>
#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

// An integer of any length, held as decimal digit characters: the store under
// BigDecimal. It knows no decimal point; the scale of a number lives in BigDecimal and
// reaches BigInt only as an alignment `shift` between two operands, or as the three
// scale arguments of a division.
//
// Representation: `mDigits` holds `mLength` ASCII digits, most significant first, and a
// NUL terminator; `mSign` is -1, 0 or +1. A zero has `mLength` 0. Two states need care:
//   - a digit array read from text may start with zero digits that stood behind the
//     point (0.05 gives the array "05");
//   - a quotient that truncates to nothing keeps its non-zero sign with no digits.
// Every operation here gives the right answer for both.
//
// Alignment `shift`: the scale of the first operand minus the scale of the second. With
// `shift` 2, the last digit of the second operand stands two places left of the last
// digit of the first one (25 at scale 2 against 5 at scale 0 means 0.25 against 5).
//
// Ownership: with `mBuffer` null the object owns `mDigits` (array new) and frees them;
// with a Buffer the digits live as long as the arena. Objects made by Calculate,
// CalculateBuf, Clone and CreateZero come from the given Buffer, or from the heap when
// it is null; their owner deletes a heap object and abandons an arena one.
//
// Allocation failures surface as std::bad_alloc. A result whose digit count can't be
// held in 32 bits throws std::length_error. Nothing else throws.
class ZELVOR_DATATYPE_API BigInt {
  public:
    // A zero with no digit array and no Buffer.
    BigInt() noexcept;

    // Reads `length` digits from `digits` (a '.' among them is skipped and not
    // counted), appends `padZeros` '0' digits and takes `sign`. The '0' characters at the
    // front of the text are dropped (the scan stops at the first other character, a point
    // included); their count becomes `mLeadingZeros` when `keepLeadingZeros` is set.
    // A `sign` of 0 stores no digits. Examples: ("12", 2, 1, 3, ...) is 12000;
    // ("0.05", 3, 1, 0, true, ...) stores "05" with one leading zero kept.
    // The text is read up to its terminator at the latest, and a character that is not
    // a digit is stored as '0', so a malformed call can't read past the text or leave
    // anything but digits. Digits come from `buffer`, or from the heap when it is null.
    BigInt(const char* digits, int length, int sign, int padZeros, bool keepLeadingZeros,
           ZelvorBase::Buffer* buffer = nullptr);

    // A copy of `other` (sign, digits, leading-zero count) whose digits come from
    // `buffer`, or from the heap when it is null.
    BigInt(const BigInt& other, ZelvorBase::Buffer* buffer = nullptr);

    // Values are rebuilt, never overwritten.
    BigInt& operator=(const BigInt&) = delete;

    // Frees the digits when they came from the heap.
    ~BigInt();

    // Lends out the fields: `digits` stays owned by this object (and may be null for a
    // zero).
    void GetRawForm(const char*& digits, int& sign, int& length, int& leadingZeros) const noexcept;

    // -1, 0 or +1.
    int Signum() const noexcept { return mSign; }

    // Stored digits plus kept leading zeros: 3 for "007" read with leading zeros kept,
    // 1 without. Trailing zeros count.
    int Precision() const noexcept { return mLength + mLeadingZeros; }

    // Compares magnitudes under the alignment `shift`; 1, 0 or -1. With `shift` 1, 125
    // against 12 gives 1 (12.5 > 12) and 120 against 12 gives 0. Zero digits at the
    // front of either array don't count.
    int CompareABS(const BigInt& other, int shift) const noexcept;

    // A new object built as the copy constructor builds one, from `buffer` or the heap.
    // The int is accepted for callers that pass one and is ignored.
    BigInt* Clone(ZelvorBase::Buffer* buffer = nullptr, int unused = 0) const;

    // A new zero (no digits, no Buffer recorded) allocated from `buffer` or the heap.
    static BigInt* CreateZero(ZelvorBase::Buffer* buffer = nullptr);

    // The signed operation `op` (0 add, 1 subtract, 2 multiply, 3 divide) on `a` and
    // `b`, aligned by `shift` for 0 and 1. For a division, `scaleA` and `scaleB` are the
    // operands' scales and `resultScale` the wanted scale of the truncated quotient; the
    // divisor must not be zero. Returns a new object from `buffer` (heap if null), or
    // nullptr for an `op` outside 0 to 3. A zero operand gives a copy of the other one
    // (negated for 0 - b), extended with zeros on the right when the zero had the larger
    // scale. Magnitudes that cancel give a new zero.
    static BigInt* Calculate(int op, const BigInt* a, const BigInt* b, int shift,
                             ZelvorBase::Buffer* buffer = nullptr, int scaleA = 0, int scaleB = 0,
                             int resultScale = 0);

    // The magnitude operation `op` (0 to 3 only) with the sign of the result given.
    // Subtraction requires |a| >= |b| under the alignment. Results of up to 255 digits
    // use a work area on the stack, longer ones one on the heap; the Buffer only ever
    // holds the result. Zero digits at the front of the result are stripped; a quotient
    // that truncates to nothing has no digits and keeps `sign`.
    static BigInt* CalculateBuf(int op, const BigInt* a, const BigInt* b, int shift,
                                ZelvorBase::Buffer* buffer, int sign, int scaleA = 0,
                                int scaleB = 0, int resultScale = 0);

    // Digit routines on magnitudes. Each writes the result digits, most significant
    // first, into `result`, sets `resultLength` and writes a NUL behind them. They take
    // nothing from a Buffer; Times and Divide use stack scratch for short operands and
    // heap scratch for long ones, released before they return.

    // a + b aligned by `shift`, one digit wider than the wider aligned operand (the
    // first digit is '0' without a carry): 999 + 1 gives "1000", 25 (scale 2) + 5
    // (scale 0) gives "0525". Capacity: max(a, b digits) + |shift| + 2 bytes.
    static void Plus(char* result, int& resultLength, const BigInt* a, const BigInt* b, int shift);

    // a - b aligned by `shift`, in a's digit count plus max(0, -shift) digits: 1000 - 1
    // gives "0999". Requires |a| >= |b| under the alignment. Capacity: that count + 1.
    static void Minus(char* result, int& resultLength, const BigInt* a, const BigInt* b, int shift);

    // a * b in exactly a's plus b's digit count: 5 * 2 gives "10", 99 * 99 "9801".
    // Capacity: that count + 1.
    static void Times(char* result, int& resultLength, const BigInt* a, const BigInt* b);

    // The truncated quotient (a * 10^extra) / b, where a negative `extra` leaves that
    // many digits at the end of `a` out. `resultLength` is set by the caller to the
    // digit count wanted, R = digits of the dividend - significant digits of b + 1, and
    // is left unchanged; the quotient is written with zeros in front to R digits
    // (1500 / 3 with R 4 gives "0500"). R of 0 or less writes nothing. Capacity: R + 1.
    // A `b` without a non-zero digit has no quotient; R zeros are written. Work areas
    // of long operands come from the heap and are released before it returns.
    static void Divide(char* result, int& resultLength, const BigInt* a, const BigInt* b,
                       int extra);

    // Helpers of the long division by a table of multiples. `list` holds 9 entries of
    // `divisorLength` + 2 bytes (entry m - 1: m times the divisor as `divisorLength` + 1
    // ASCII digits with zeros in front, then a NUL), `filled` 9 flags; `divisor` is
    // `divisorLength` digits without zeros in front.

    // The greatest m in 0 to 9 with m * divisor not above the slice of `sliceLength`
    // (`divisorLength` or one more) digits, by a binary search that fills the entries
    // it touches.
    static int SearchMultiplyList(char** list, bool* filled, const char* slice, int sliceLength,
                                  const char* divisor, int divisorLength);

    // Fills entry m - 1 (m from 1 to 9) and sets its flag.
    static void GenMultiplyList(int m, char** list, bool* filled, const char* divisor,
                                int divisorLength);

    // Subtracts the (filled) multiple m from the slice in place, with borrow; m of 0
    // does nothing.
    static void Subtract4divide(char* slice, int sliceLength, int divisorLength, char** list,
                                int m);

  private:
    // The digit array, or "" for a zero that has none.
    const char* DigitText() const noexcept { return mDigits != nullptr ? mDigits : ""; }

    // Builds a result from digits that are known to be digits: the zeros in front are
    // dropped, nothing else is looked at.
    static BigInt* FromDigits(const char* digits, int length, int sign, ZelvorBase::Buffer* buffer);

    // A copy of `source` with `pad` '0' digits appended and the sign `sign`.
    static BigInt* ClonePadded(const BigInt& source, int pad, int sign, ZelvorBase::Buffer* buffer);

    int mSign = 0;
    int mLength = 0;
    int mLeadingZeros = 0;
    char* mDigits = nullptr;
    ZelvorBase::Buffer* mBuffer = nullptr;
};

}  // namespace ZelvorDataType
