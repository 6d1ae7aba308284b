#include "schedule/WallTime.h"

namespace ZelvorDataType::internal {

CivilDay DayFromNumber(int number) {
    unsigned short year = 0;
    short month = 0;
    short day = 0;
    DateTime::DAYSToYMD(number, year, month, day);
    return CivilDay{number, year, month, day, WeekdayOf(number)};
}

CivilDay DayFromDate(int year, int month, int day) {
    const int number = DateTime::YMDToDAYS(static_cast<unsigned short>(year),
                                           static_cast<short>(month), static_cast<short>(day));
    return CivilDay{number, year, month, day, WeekdayOf(number)};
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
    if (day.number >= kLastDayNumber) {
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
    long long number = total / kMillisecondsPerDay;
    long long time = total % kMillisecondsPerDay;
    if (time < 0) {
        time += kMillisecondsPerDay;
        --number;
    }
    if (number < kFirstDayNumber || number > kLastDayNumber) {
        return false;
    }
    if (number != value.date.number) {
        value.date = DayFromNumber(static_cast<int>(number));
    }
    value.time = static_cast<int>(time);
    return true;
}

}  // namespace ZelvorDataType::internal
