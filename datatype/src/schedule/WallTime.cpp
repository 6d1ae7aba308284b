#include "schedule/WallTime.h"

namespace ZelvorDataType::internal {

CivilDay DayFromNumber(int number) {
    const CivilDate date = DaysToCivil(number);
    return CivilDay{number, date.year, date.month, date.day, DayOfWeek(number)};
}

CivilDay DayFromDate(int year, int month, int day) {
    const int number = DayNumberOrZero(static_cast<unsigned short>(year), month, day);
    return CivilDay{number, year, month, day, DayOfWeek(number)};
}

WallTime FromDateTime(const DateTime& value) {
    const int time = ((value.GetHour() * 60 + value.GetMinute()) * 60 + value.GetSecond()) * 1000 +
                     value.GetMillisecond();
    return WallTime{DayFromDate(value.GetYear(), value.GetMonth(), value.GetDay()), time};
}

DateTime ToDateTime(const WallTime& value) {
    return DateTime(value.date.year, value.date.month, value.date.day, value.Hour(), value.Minute(),
                    value.Second(), value.Millisecond());
}

bool AdvanceDay(CivilDay& day) {
    if (day.number >= kLastReachableDayNumber) {
        return false;
    }
    ++day.number;
    day.weekday = day.weekday == 6 ? 0 : day.weekday + 1;
    if (++day.day > day.DaysInThisMonth()) {
        day.day = 1;
        if (++day.month > 12) {
            day.month = 1;
            ++day.year;
        }
    }
    return true;
}

bool AddMilliseconds(WallTime& value, long long milliseconds) {
    // A span is at most an int interval times an hour (below 2^53 ms) and a wall time
    // below 2^51 ms, so the sum can't overflow 64 bits.
    const long long total = value.TotalMilliseconds() + milliseconds;
    long long number = total / kMsPerDay;
    long long time = total % kMsPerDay;
    if (time < 0) {
        time += kMsPerDay;
        --number;
    }
    if (number < kFirstDayNumber || number > kLastReachableDayNumber) {
        return false;
    }
    if (number != value.date.number) {
        value.date = DayFromNumber(static_cast<int>(number));
    }
    value.time = static_cast<int>(time);
    return true;
}

}  // namespace ZelvorDataType::internal
