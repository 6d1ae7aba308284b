#pragma once

#include <ZelvorBase/Buffer.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/Export.h>
#include <cstddef>
#include <functional>
#include <iosfwd>

namespace ZelvorSerialization {
class WriteDataStream;
class ReadDataStream;
}  // namespace ZelvorSerialization

namespace ZelvorDataType {

// The form of a ZelvorTime. Tested as unsigned: the two static modes are below 2, and
// TIME_MODE_EMPTY counts as above 2.
enum TIME_MODE : int {
    TIME_MODE_UTC = 0,       // a DateTime whose fields are UTC
    TIME_MODE_LOCAL = 1,     // a DateTime whose fields are local wall-clock time
    TIME_MODE_DYNAMIC = 2,   // a DynamicTime, resolved each time it is read
    TIME_MODE_EMPTY = -101,  // no value
};

// Result codes of ZelvorTime, 32-bit patterns held in an int. 0 is success; 1 means
// "nothing to convert" from ToDateTime and "no expiration" from GetExpiration.
constexpr int E_TIME_EMPTY = static_cast<int>(0x800839B8u);  // the value is empty
constexpr int E_TIME_NOT_DYNAMIC =
    static_cast<int>(0x80043080u);                                // dynamic operation, static value
constexpr int E_TIME_UNRESOLVED = static_cast<int>(0x8004307Fu);  // the rule has no date
constexpr int E_TIME_REFUSED = static_cast<int>(0x80043085u);     // the date refused the change
static_assert(E_TIME_EMPTY == -2146944584);

// A time value whose holder need not know its form: a date kept in UTC, a date kept in
// local time, a DynamicTime resolved on each use, or nothing at all.
//
// Ownership. The value owns one record behind one pointer, a DateTime or a DynamicTime.
// With no Buffer the record is on the heap and is freed by the value. With a Buffer
// every record is drawn from it and never destroyed or freed here: it stays in the
// Buffer, which must outlive the value, so a value with a Buffer that changes between
// static and dynamic forms leaves the old record behind in the arena. A record stays
// and is overwritten for as long as the form stays. A copy never shares a record.
//
// Failures. Members report by result code (the E_TIME_* constants above) and throw
// nothing of their own; only the allocation of a record can throw (std::bad_alloc,
// also when a Buffer refuses). A value whose allocation failed is left empty.
//
// Zones. A bool named isUTC says in which zone a value given is, wantUTC in which zone
// an answer is wanted, and raw asks for the stored field without any conversion or
// resolution. Dynamic values resolve against the present moment, to UTC.
class ZELVOR_DATATYPE_API ZelvorTime {
  public:
    // ---- Construction, assignment, release -----------------------------------------

    // An empty value, on the heap or drawing its records from `buffer`.
    ZelvorTime() noexcept;
    explicit ZelvorTime(ZelvorBase::Buffer* buffer) noexcept;

    // A static value. `isUTC` says in which zone `date` is, `mode` in which zone the
    // record holds it; a mode other than TIME_MODE_UTC and TIME_MODE_LOCAL gives
    // TIME_MODE_UTC. ZelvorTime(d, TIME_MODE_LOCAL, true) holds d.ToLocalTime().
    ZelvorTime(const DateTime& date, TIME_MODE mode, bool isUTC,
               ZelvorBase::Buffer* buffer = nullptr);

    // A static value from a serial date (36526.5 is 2000-01-01 12:00), converted as
    // above; then the millisecond field is put, after the conversion. Milliseconds
    // outside 0 to 999 are refused and the record keeps what the serial date gave.
    ZelvorTime(double date, int milliseconds, TIME_MODE mode, bool isUTC,
               ZelvorBase::Buffer* buffer = nullptr);

    // A copy of `other` in a record of its own, on the heap.
    ZelvorTime(const ZelvorTime& other);
    // A copy of `other` in a record of its own, drawn from `buffer` (heap if null).
    ZelvorTime(const ZelvorTime& other, ZelvorBase::Buffer* buffer);

    // Takes the form and contents of `other`. A record of the same form is overwritten
    // in place; a change of form releases the old record and draws a new one from this
    // value's own Buffer (which is never copied). Nothing on self-assignment.
    ZelvorTime& operator=(const ZelvorTime& other);

    // Releases the record (heap) or forgets it (Buffer); the value becomes empty.
    void Reset() noexcept;
    ~ZelvorTime();

    // The value becomes the present moment in UTC, in TIME_MODE_UTC, whatever it was.
    void SetToCurrentTime();

    // ---- Modes and conversion ----------------------------------------------------------

    // TIME_MODE_UTC for a UTC value, TIME_MODE_LOCAL for everything else, dynamic and
    // empty values included.
    TIME_MODE GetMode() const noexcept;
    // The form itself: one of the four TIME_MODE values.
    TIME_MODE GetRealMode() const noexcept;
    // Converts a static value to TIME_MODE_UTC or TIME_MODE_LOCAL: the instant stays,
    // the fields change. 0 when done or when there is nothing to do (same mode, or a
    // dynamic value, which stays dynamic); E_TIME_EMPTY for an empty value. Any other
    // mode is not a conversion: it gives E_TIME_REFUSED on a static value, which stays
    // as it was.
    int SetMode(TIME_MODE mode) noexcept;

    // The value as a DateTime in the zone `wantUTC` names. For a dynamic value `date`
    // is also the reference time, local wall-clock fields, DateTime(0.0) for the
    // present moment; the rule resolves to UTC and is converted to local time after,
    // if wanted. A static value reads nothing of `date`. Returns 0; 1, with `date`
    // untouched, for an empty value; E_TIME_UNRESOLVED, `date` untouched, for a rule
    // without a date.
    int ToDateTime(bool wantUTC, DateTime& date) const noexcept;

    // ---- Field access ------------------------------------------------------------------
    // A Get member returns the field, or E_TIME_EMPTY (-2146944584) in the same int for
    // an empty value. With `raw` true it is the stored field: of the record in its own
    // zone for a static value (`wantUTC` not read), the number in the rule for a dynamic
    // one (an offset, or -1 for an unset weekday). With `raw` false the value is first
    // converted as by ToDateTime(wantUTC, DateTime(0.0)), so a dynamic value resolves
    // against the present moment; one that has no date answers with the field of
    // DateTime(0.0), 1899-12-30.

    int GetYear(bool wantUTC, bool raw) const noexcept;
    int GetMonth(bool wantUTC, bool raw) const noexcept;
    int GetDay(bool wantUTC, bool raw) const noexcept;
    int GetWeek(bool wantUTC, bool raw) const noexcept;
    int GetDayOfWeek(bool wantUTC, bool raw) const noexcept;
    int GetHour(bool wantUTC, bool raw) const noexcept;
    int GetMinutes(bool wantUTC, bool raw) const noexcept;
    // Seconds take no zone: resolved in UTC unless the value is in TIME_MODE_LOCAL.
    int GetSeconds(bool raw) const noexcept;
    // The millisecond of a static record; 0 for a dynamic value.
    int GetMilliSeconds() const noexcept;

    // A Put member returns a result code: E_TIME_EMPTY on an empty value. On a dynamic
    // value the field of the rule takes the number unchanged, zone or not, and the
    // result is 0. On a static value `isUTC` says in which zone the field is meant: if
    // it is not the record's, the record is converted to that zone, the field is put,
    // and the record is converted back (PutHour(5, false) on a UTC record sets the
    // local hour to 5). A value the date refuses (hour 25) leaves the field alone and
    // still gives 0, except for PutWeek and PutDayOfWeek, which then give
    // E_TIME_REFUSED and leave the record untouched.

    int PutYear(int year, bool isUTC) noexcept;
    int PutMonth(int month, bool isUTC) noexcept;
    int PutDay(int day, bool isUTC) noexcept;
    int PutHour(int hour, bool isUTC) noexcept;
    int PutMinutes(int minute, bool isUTC) noexcept;
    int PutWeek(int week, bool isUTC) noexcept;
    // On a static value a move out of the month is always refused; `crossMonth` has no
    // effect there. A dynamic value stores the weekday.
    int PutDayOfWeek(int dayOfWeek, bool isUTC, bool crossMonth) noexcept;
    // Straight to the record, no conversion, in either static mode.
    int PutSeconds(int second) noexcept;
    // Straight to a static record; a dynamic value has no milliseconds (0, nothing
    // changes).
    int PutMilliSeconds(int millisecond) noexcept;

    // ---- The rule of a dynamic value ---------------------------------------------------

    // The kind and flags: those of the rule, or DYNAMIC_TIME_NONE (-100) for a static
    // value; E_TIME_EMPTY, `out` untouched, for an empty one.
    int GetDynamicTime(int& out) const noexcept;
    // Makes the value dynamic with that kind and flags. A value already dynamic keeps
    // its other fields; any other gets a fresh rule (all fields initial), its static
    // record released. DYNAMIC_TIME_NONE changes nothing. Always 0, unless the
    // allocation of the rule throws.
    int PutDynamicTime(int value);
    // The offsets of the rule. E_TIME_EMPTY on an empty value, E_TIME_NOT_DYNAMIC on a
    // static one, `out` untouched; else 0.
    int GetDynamicDayOffset(int& out) const noexcept;
    int PutDynamicDayOffset(int dayOffset) noexcept;
    int GetDynamicMonthOffset(short& out) const noexcept;
    int PutDynamicMonthOffset(short monthOffset) noexcept;

    // ---- Derived dates -----------------------------------------------------------------

    // The value moved n units into the past (DynamicTime::MoveNthTimePointBefore): a
    // static value in its record's own zone, a dynamic one resolved against the present
    // moment, in UTC. E_TIME_EMPTY, or E_TIME_UNRESOLVED, with `out` untouched.
    int GetNthTimePointBefore(int n, TIME_GRANULARITY unit, DateTime& out) const noexcept;
    // The serial date of the value in the zone `wantUTC` names (a dynamic value resolved
    // against the present moment; one without a date gives 0.0). E_TIME_EMPTY for an
    // empty value, else 0.
    int TolocalDATE(double& out, bool wantUTC) const noexcept;
    // As TolocalDATE, but a dynamic value resolves against `fixedTime`, seconds since
    // 1970-01-01 00:00:00, whose UTC fields serve as the local reference time; one
    // without a date gives the serial date of that moment.
    int TolocalDATEWithFixedTime(double& out, bool wantUTC, int fixedTime) const noexcept;

    // ---- Order and expiration ----------------------------------------------------------
    // A static value copies its record, a dynamic one resolves against the present
    // moment (so the answer can change from call to call as the clock moves, and a rule
    // without a date counts as 1899-12-30 00:00). Against a local value the comparison
    // is in local time, otherwise in UTC.

    // Empty equals empty and nothing else. Two dynamic values are equal when their kind
    // and flags are, whatever their fields (two DYNAMIC_TIME_TODAY rules with different
    // days are equal). Otherwise the dates compare: a UTC value equals a local value of
    // the same instant.
    bool operator==(const ZelvorTime& other) const noexcept;
    // DYNAMIC_TIME_EARLIEST (exactly 1, no flags) is before everything else and
    // DYNAMIC_TIME_LATEST (exactly 0) after everything else; neither is before or after
    // itself; two dynamic values of the same kind and flags are neither. An empty value
    // orders after DYNAMIC_TIME_EARLIEST and before every other value, as an empty
    // optional does in the standard library, so that a collection with gaps still sorts
    // by a strict order. Otherwise the dates compare.
    bool operator<(const ZelvorTime& other) const noexcept;
    bool operator>(const ZelvorTime& other) const noexcept;

    // The next instant at which a dynamic value resolves to something else, as a UTC
    // value assigned to `out` (which keeps its own Buffer). Returns 0, or 1 with `out`
    // untouched when the value doesn't expire: static and empty values, LATEST,
    // EARLIEST and every business-day rule. Only the kind and the two offsets count:
    // NOW expires at the next whole second; TODAY at the next local midnight; the week
    // kinds at the local midnight that starts the next Sunday-to-Saturday week; the
    // month, quarter and year kinds at the start of the next month, quarter and year,
    // each shifted back by the offsets. At Thursday 2024-03-14 15:30:45.123 local,
    // DYNAMIC_TIME_THIS_MONTH with a day offset of 3 expires at 2024-03-29 00:00 local.
    int GetExpiration(ZelvorTime& out) const;

    // The same against `reference`, a local wall-clock time, instead of the present
    // moment (which is what the empty date 1899-12-30 00:00 stands for, as in
    // ToDateTime). Lets a caller ask when a rule would change as seen at another time.
    int GetExpiration(const DateTime& reference, ZelvorTime& out) const;

    // ---- Saved forms -------------------------------------------------------------------
    // The record is eleven 32-bit words in the machine's byte order, 44 bytes:
    //
    //   offset  static             dynamic                            empty
    //   0       -100               mMonthOffset << 16 | mDynamicTime  -101
    //   4..24   year, month, day,  mYear, mMonth, mDay, mHour,        0
    //           hour, min, sec     mMinute, mSecond
    //   28      millisecond        mDayOffset                         0
    //   32      week               mWeek                              0
    //   36      day of week        mDayOfWeek                         0
    //   40      mode (0 or 1)      1                                  0
    //
    // The tag of a dynamic value holds the kind in its low 16 bits (a kind beyond them
    // doesn't come back) and the month offset in the high 16 bits.

    // 44.
    static int GetSaveObjSize() noexcept;
    // Writes the record to the first 44 bytes of `block`. -1, writing nothing, if
    // `size` is below 44 or `block` is null; else 0.
    int SaveObj(unsigned int size, void* block) const noexcept;
    // Reads a record from the first 44 bytes of `block`, taking its form: word 0 of
    // -101 empties the value, -100 makes it static (fields out of range are clamped; a
    // mode word other than 0 or 1 gives TIME_MODE_UTC), anything else dynamic. A record
    // of the form the value has is overwritten in place. -1, value unchanged, if `size`
    // is below 44 or `block` is null; else 0. Throws only if a new record can't be
    // allocated, leaving the value empty.
    int LoadObj(unsigned int size, void* block);

    // Writes the mode word, then the record (WriteDateTime or WriteDynamicTime); an
    // empty value is the one integer -101. 0; -1 for a null stream. What the stream
    // throws passes through.
    int SaveToStream(ZelvorSerialization::WriteDataStream* stream) const;
    // Reads a mode word (0 if the stream has none), then for modes 0 and 1 a DateTime,
    // for mode 2 a DynamicTime, into the value's record of that form (reused, or newly
    // drawn); -101 empties the value; any other mode changes nothing and reads no more.
    // 0; -1 for a null stream. What the stream throws passes through.
    int LoadFromStream(ZelvorSerialization::ReadDataStream* stream);

  private:
    bool IsStatic() const noexcept { return static_cast<unsigned>(mMode) < 2u; }
    bool IsDynamic() const noexcept { return mMode == TIME_MODE_DYNAMIC; }
    bool IsEmpty() const noexcept { return !IsStatic() && !IsDynamic(); }
    DateTime* StaticRecord() const noexcept { return static_cast<DateTime*>(mValue); }
    DynamicTime* DynamicRecord() const noexcept { return static_cast<DynamicTime*>(mValue); }

    // Frees a heap record or forgets an arena one; the value becomes empty.
    void ReleaseRecord() noexcept;
    // The record of a static value in `mode`, overwritten or newly drawn.
    DateTime& MakeStatic(TIME_MODE mode, const DateTime& value);
    // The record of a dynamic value, kept as it is or newly drawn as `fresh`.
    DynamicTime& MakeDynamic(const DynamicTime& fresh);
    using DatePut = bool (*)(DateTime& date, int value) noexcept;
    // One Get member: the stored field of either record, or the converted value's.
    int GetField(bool wantUTC, bool raw, int (DateTime::*dateGetter)() const noexcept,
                 int (DynamicTime::*ruleGetter)() const noexcept) const noexcept;
    // One Put member: the rule's field, or the record's field in the zone `isUTC` names.
    int PutField(int value, bool isUTC, bool refusalCounts, DatePut put,
                 void (DynamicTime::*ruleSetter)(int) noexcept) noexcept;
    // The date that comparisons read: the record, or the rule resolved now, in UTC.
    DateTime ReadForComparison() const noexcept;
    // Both sides read and brought to one zone.
    void ReadBoth(const ZelvorTime& other, DateTime& mine, DateTime& theirs) const noexcept;

    ZelvorBase::Buffer* mBuffer;
    TIME_MODE mMode;
    void* mValue;
};

// Writes ToText(value) of <ZelvorDataType/Text.h>: "empty", "2024-03-05 07:08:09.012 UTC",
// "... local", or the rule of a dynamic value ("today + relative-hour; hour 9").
ZELVOR_DATATYPE_API std::ostream& operator<<(std::ostream& os, const ZelvorTime& value);

// A hash consistent with operator== among values whose equality does not hang on the
// clock: empty values hash alike; static values hash by their local wall-clock fields
// (a UTC value through ToLocalTime), since a UTC value equals a local one in local time;
// dynamic values hash by kind and flags, as operator== compares them. A dynamic value
// can equal a static one at one moment and not the next, so that pair is outside what
// a hash can keep: don't mix the two in one unordered container. The hash of a UTC
// value depends on the process's zone, which must not change while it is in use.
ZELVOR_DATATYPE_API std::size_t HashValue(const ZelvorTime& value) noexcept;

}  // namespace ZelvorDataType

// std::hash through HashValue above, for the unordered containers.
namespace std {
template <>
struct hash<ZelvorDataType::ZelvorTime> {
    std::size_t operator()(const ZelvorDataType::ZelvorTime& value) const noexcept {
        return ZelvorDataType::HashValue(value);
    }
};
}  // namespace std
