#pragma once

// Moves of a DateTime by units and by business days, on 64-bit counts so that the
// negated offsets of a resolution (-INT_MIN among them) and the extra weekend days of a
// business-day walk never overflow.

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>

namespace ZelvorDataType::internal {

// n units into the past; a negative n goes into the future. A unit outside 1 to 7
// does nothing.
void MoveUnits(DateTime& date, long long n, TIME_GRANULARITY unit) noexcept;

// n business days into the past, -n into the future; see
// DynamicTime::MoveNthTimePointBefore_BusinessDay.
void MoveBusinessDays(DateTime& date, long long n, bool forward) noexcept;

// PutYear for a year computed in 64 bits. A year beyond the range of int is refused
// like a negative one, leaving the date alone.
void PutWideYear(DateTime& date, long long year) noexcept;

}  // namespace ZelvorDataType::internal
