#pragma once

// Local wall-clock values as the schedule walks them: a date with its day number and
// day of the week, and a time of day in milliseconds. Stepping a day or a span is
// integer arithmetic here, so a search over thousands of days costs no DateTime
// construction and no platform call per day; the results are those of DateTime plus a
// TimeSpan, which moves the wall clock by exact milliseconds.

#include <ZelvorDataType/DateTime.h>

#include "calendar/CivilCalendar.h"

namespace ZelvorDataType::internal {

struct CivilDay {
    int number;   // day number
    int year;     // 0..65535
    int month;    // 1..12
    int day;      // 1..MonthLength
    int weekday;  // 0 Sunday .. 6 Saturday

    int DaysInThisMonth() const { return MonthLength(year, month); }
};

struct WallTime {
    CivilDay date;
    int time;  // milliseconds since midnight, 0..86399999

    int Hour() const { return time / 3600000; }
    int Minute() const { return time / 60000 % 60; }
    int Second() const { return time / 1000 % 60; }
    int Millisecond() const { return time % 1000; }
    long long TotalMilliseconds() const { return date.number * kMsPerDay + time; }
};

inline bool operator<(const WallTime& a, const WallTime& b) {
    return a.date.number != b.date.number ? a.date.number < b.date.number : a.time < b.time;
}
inline bool operator>(const WallTime& a, const WallTime& b) {
    return b < a;
}

// The day of a day number in kFirstDayNumber..kLastDayNumber.
CivilDay DayFromNumber(int number);
CivilDay DayFromDate(int year, int month, int day);
WallTime FromDateTime(const DateTime& value);
// The wall time of an optional anchor, kept in `storage`: null for no anchor.
inline const WallTime* AnchorOf(const DateTime* anchor, WallTime& storage) {
    if (anchor == nullptr) {
        return nullptr;
    }
    storage = FromDateTime(*anchor);
    return &storage;
}
DateTime ToDateTime(const WallTime& value);

// The next calendar day; false, leaving `day`, past kLastReachableDayNumber.
bool AdvanceDay(CivilDay& day);
// Moves `value` by `milliseconds` (either sign); false, leaving `value`, when the result
// would leave the days DateTime arithmetic reaches.
bool AddMilliseconds(WallTime& value, long long milliseconds);

}  // namespace ZelvorDataType::internal
