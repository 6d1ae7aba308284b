#include <gtest/gtest.h>

#include <array>

#include "CalendarSupport.h"

namespace {

using CalendarTest::Text;
using CalendarTest::Words;
using ZelvorDataType::DateTime;

TEST(Normalisation, ConstructorClampsEachFieldAndCarries) {
    const struct {
        int y, mo, d, h, mi, s, ms;
        const char* text;
    } cases[] = {
        {2024, 2, 30, 0, 0, 0, 0, "2024-02-29 00:00:00.000"},
        {1900, 2, 30, 0, 0, 0, 0, "1900-02-28 00:00:00.000"},
        {2000, 2, 30, 0, 0, 0, 0, "2000-02-29 00:00:00.000"},
        {2024, 13, 40, 25, 61, 61, 1500, "2024-12-31 23:59:59.999"},
        {2024, 0, 0, -1, -1, -1, -1, "2024-01-01 00:00:00.000"},
        {2023, 12, 31, 24, 0, 0, 0, "2024-01-01 00:00:00.000"},
        {2024, 2, 28, 24, 0, 0, 500, "2024-02-29 00:00:00.500"},
        {2024, 5, 6, 24, 1, 0, 0, "2024-05-06 23:01:00.000"},
        {65535, 12, 31, 24, 0, 0, 0, "65535-12-30 00:00:00.000"},
        {0, 2, 29, 0, 0, 0, 0, "0000-02-29 00:00:00.000"},
        {70000, 1, 1, 0, 0, 0, 0, "4464-01-01 00:00:00.000"},
        {-1, 65537, 1, 0, 0, 0, 0, "65535-01-01 00:00:00.000"},  // low 16 bits of each
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Text(DateTime(c.y, c.mo, c.d, c.h, c.mi, c.s, c.ms)), c.text) << c.text;
    }
    // Zone words ride along with copies; the hour-24 carry comes off the serial scale,
    // which resets them.
    const DateTime kept(2024, 1, 1, 23, 0, 0, 0, 60, 7), carried(2024, 1, 1, 24, 0, 0, 0, 60, 7);
    EXPECT_EQ(DateTime(kept).GetZoneMinutes() * 100 + DateTime(kept).GetZoneSpare(), 6007);
    EXPECT_EQ(carried.GetZoneMinutes() * 100 + carried.GetZoneSpare(), 0);
}

// One letter per setter, so that a row reads as "start, call, result":
// Y M D h m f PutYear, PutMonth, PutDay, PutHour, PutMinute, PutMillisecond; W PutWeek; w / x
// PutDayOfWeek without / with crossing the month; O PutWeekAndDayOfWeek(a, b).
// clang-format off
bool Apply(DateTime& d, char op, int a, int b) {
    switch (op) {
        case 'Y': return d.PutYear(a);
        case 'M': return d.PutMonth(a);
        case 'D': return d.PutDay(a);
        case 'h': return d.PutHour(a);
        case 'm': return d.PutMinute(a);
        case 'f': return d.PutMillisecond(a);
        case 'W': return d.PutWeek(a);
        case 'w': return d.PutDayOfWeek(a, false);
        case 'x': return d.PutDayOfWeek(a, true);
        default: return d.PutWeekAndDayOfWeek(a, b);
    }
}
// clang-format on

TEST(Setters, AcceptRepairOrRefuse) {
    const struct {
        DateTime start;
        char op;
        int a, b;
        bool accepted;
        const char* text;  // the value after the call
    } cases[] = {
        {DateTime(2024, 3, 31, 10), 'M', 2, 0, true, "2024-02-29 10:00:00.000"},
        {DateTime(2024, 3, 31), 'M', 13, 0, false, "2024-03-31 00:00:00.000"},
        {DateTime(2024, 2, 29), 'Y', 2023, 0, true, "2023-02-28 00:00:00.000"},
        {DateTime(2024, 2, 29), 'Y', -1, 0, false, "2024-02-29 00:00:00.000"},
        {DateTime(2024, 2, 29), 'Y', 65536, 0, true, "0000-02-29 00:00:00.000"},
        {DateTime(2024, 4, 5), 'D', 0, 0, false, "2024-04-05 00:00:00.000"},
        {DateTime(2024, 4, 5), 'D', 31, 0, true, "2024-04-30 00:00:00.000"},
        {DateTime(2023, 2, 5), 'D', -1, 0, true, "2023-02-28 00:00:00.000"},
        {DateTime(2024, 2, 5), 'D', -1, 0, true, "2024-02-29 00:00:00.000"},
        {DateTime(2024, 4, 5), 'D', -31, 0, true, "2024-04-01 00:00:00.000"},
        {DateTime(2024, 4, 5), 'h', 24, 0, false, "2024-04-05 00:00:00.000"},
        {DateTime(2024, 4, 5), 'f', 1000, 0, false, "2024-04-05 00:00:00.000"},
        {DateTime(2024, 1, 15, 8), 'W', 6, 0, false, "2024-01-15 08:00:00.000"},
        {DateTime(2024, 1, 15, 8), 'W', 5, 0, true, "2024-01-29 08:00:00.000"},
        {DateTime(2024, 5, 1), 'w', 0, 0, false, "2024-05-01 00:00:00.000"},
        {DateTime(2024, 5, 1), 'x', 0, 0, true, "2024-04-28 00:00:00.000"},
        {DateTime(2024, 5, 1), 'w', 6, 0, true, "2024-05-04 00:00:00.000"},
        {DateTime(2024, 5, 1), 'w', 7, 0, false, "2024-05-01 00:00:00.000"},
        {DateTime(2024, 1, 15, 9), 'O', 1, 1, true, "2024-01-01 09:00:00.000"},
        {DateTime(2024, 1, 15), 'O', 5, 1, true, "2024-01-29 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', 5, 0, false, "2024-01-15 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', 1, 0, true, "2024-01-07 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', -1, 1, true, "2024-01-22 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', -4, 1, true, "2024-01-01 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', -5, 1, false, "2024-01-15 00:00:00.000"},
        {DateTime(2024, 2, 10), 'O', -3, 1, true, "2024-02-05 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', 0, 1, false, "2024-01-15 00:00:00.000"},
        {DateTime(2024, 1, 15), 'O', 1, 7, false, "2024-01-15 00:00:00.000"},
    };
    for (const auto& c : cases) {
        DateTime value(c.start);
        EXPECT_EQ(Apply(value, c.op, c.a, c.b), c.accepted) << c.op << c.a << " " << c.text;
        EXPECT_EQ(Text(value), c.text) << c.op << c.a;
    }
}

TEST(Weeks, DerivedCalendarFacts) {
    const struct {
        int y, m, d;
        int week, dayOfWeek, dayOfYear, daysInMonth, quarter, firstMonth;
    } cases[] = {
        {2024, 1, 1, 1, 1, 1, 31, 1, 1},      {2024, 1, 6, 1, 6, 6, 31, 1, 1},
        {2024, 1, 7, 2, 0, 7, 31, 1, 1},      {2024, 6, 1, 1, 6, 153, 30, 2, 4},
        {2024, 6, 2, 2, 0, 154, 30, 2, 4},    {2024, 6, 30, 6, 0, 182, 30, 2, 4},
        {2024, 12, 31, 5, 2, 366, 31, 4, 10}, {2023, 12, 31, 6, 0, 365, 31, 4, 10},
        {2024, 2, 29, 5, 4, 60, 29, 1, 1},    {0, 12, 31, 6, 0, 366, 31, 4, 10},
        {65000, 3, 1, 1, 6, 60, 31, 1, 1},    {1899, 12, 30, 5, 6, 364, 31, 4, 10},
    };
    for (const auto& c : cases) {
        const DateTime v(c.y, c.m, c.d, 12);
        EXPECT_EQ(
            (std::array{v.GetWeek(), v.GetDayOfWeek(), v.GetDayOfYear(), v.GetDaysInMonth(),
                        v.GetQuarter(), v.GetFirstMonthOfQuater()}),
            (std::array{c.week, c.dayOfWeek, c.dayOfYear, c.daysInMonth, c.quarter, c.firstMonth}))
            << Text(v);
    }
    EXPECT_EQ(DateTime::WeekFromDayAndDayOfWeek(1, 6), 1);
    EXPECT_EQ(DateTime::WeekFromDayAndDayOfWeek(2, 0), 2);
    EXPECT_EQ(DateTime::WeekFromDayAndDayOfWeek(31, 3), 5);
}

// The caches fill on demand, even through const, and a change of the date empties them;
// a time setter keeps them.
TEST(Weeks, CachesFollowTheDate) {
    DateTime value(2024, 1, 15);
    EXPECT_EQ(Words(value)[8], -1);
    static_cast<const DateTime&>(value).GetWeek();
    EXPECT_EQ(Words(value)[8] * 10 + Words(value)[9], 31);
    value.PutHour(5);
    EXPECT_EQ(Words(value)[9], 1);
    value.PutDay(16);
    EXPECT_EQ(Words(value)[8] * 10 + Words(value)[9], -11);
    value.PutWeekAndDayOfWeek(2, 3);  // Wednesday the 10th, set directly
    EXPECT_EQ(Words(value)[8] * 10 + Words(value)[9], 23);
    EXPECT_EQ(value.GetDay(), 10);
}

}  // namespace
