#pragma once

// Moves of a DateTime by units and by business days, on 64-bit counts so that the
// negated offsets of a resolution (-INT_MIN among them) and the extra weekend days of a
// business-day walk never overflow.

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>

namespace ZelvorDataType::internal {

// n units into the past; a negative n goes into the future. A unit outside 1 to 7
// does nothing, and so does n 0: the fields stay as they are (only the public move,
// which goes through the millisecond scale even then, also clears the zone words).
void MoveUnits(DateTime& date, long long n, TIME_GRANULARITY unit) noexcept;

// The calendar days, into the past, of a walk of n business days into the past (-n
// into the future) from `date`; see DynamicTime::MoveNthTimePointBefore_BusinessDay.
long long BusinessDaysToCalendarDays(const DateTime& date, long long n, bool forward) noexcept;

// That walk, by MoveUnits.
void MoveBusinessDays(DateTime& date, long long n, bool forward) noexcept;

// PutYear for a year computed in 64 bits. A year beyond the range of int is refused
// like a negative one, leaving the date alone.
void PutWideYear(DateTime& date, long long year) noexcept;

}  // namespace ZelvorDataType::internal
