#include <gtest/gtest.h>

#include <array>

#include "CalendarSupport.h"

namespace {

using CalendarTest::DateOf;
using CalendarTest::Text;
using CalendarTest::Words;
using ZelvorDataType::DateTime;

TEST(Normalisation, ConstructorClampsEachFieldAndCarries) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/Normalise.cases")) {
        EXPECT_EQ(Text(DateOf(c[0])), c[1]) << c.where;
    }
    // Zone words ride along with copies; the hour-24 carry comes off the serial scale,
    // which resets them.
    const DateTime kept(2024, 1, 1, 23, 0, 0, 0, 60, 7), carried(2024, 1, 1, 24, 0, 0, 0, 60, 7);
    EXPECT_EQ(DateTime(kept).GetZoneMinutes() * 100 + DateTime(kept).GetZoneSpare(), 6007);
    EXPECT_EQ(carried.GetZoneMinutes() * 100 + carried.GetZoneSpare(), 0);
}

// One letter per setter (Setters.cases names them).
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
    for (const auto& c : ZelvorTest::ReadCases("calendar/Setters.cases")) {
        DateTime value = DateOf(c[0]);
        EXPECT_EQ(Apply(value, c[1][0], std::stoi(c[2]), std::stoi(c[3])), c[4] == "1") << c.where;
        EXPECT_EQ(Text(value), c[5]) << c.where;
    }
}

TEST(Weeks, DerivedCalendarFacts) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/Weeks.cases")) {
        const DateTime v = DateOf(c[0]);
        EXPECT_EQ((std::array{v.GetWeek(), v.GetDayOfWeek(), v.GetDayOfYear(), v.GetDaysInMonth(),
                              v.GetQuarter(), v.GetFirstMonthOfQuater()}),
                  (std::array{std::stoi(c[1]), std::stoi(c[2]), std::stoi(c[3]), std::stoi(c[4]),
                              std::stoi(c[5]), std::stoi(c[6])}))
            << c.where;
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
