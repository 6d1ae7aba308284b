#include <gtest/gtest.h>

#include <climits>

#include <ZelvorDataType/DynamicTime.h>

#include "RelativeSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::Text;
using ZelvorRelativeTest::Ymd;

TEST(MoveByUnits, CalendarAndExactUnits) {
    const struct {
        Ymd from;
        int n;
        TIME_GRANULARITY unit;
        Ymd to;
    } cases[] = {
        {{2024, 3, 31}, 1, TIME_GRANULARITY_MONTH, {2024, 2, 29}},
        {{2023, 1, 31}, -1, TIME_GRANULARITY_MONTH, {2023, 2, 28}},
        {{2024, 1, 15}, 1, TIME_GRANULARITY_MONTH, {2023, 12, 15}},
        {{2024, 1, 15}, 12, TIME_GRANULARITY_MONTH, {2023, 1, 15}},
        {{2024, 1, 15}, 24, TIME_GRANULARITY_MONTH, {2022, 1, 15}},
        {{2024, 12, 15}, -1, TIME_GRANULARITY_MONTH, {2025, 1, 15}},
        {{2024, 12, 31}, -2, TIME_GRANULARITY_MONTH, {2025, 2, 28}},
        {{2024, 5, 31}, -13, TIME_GRANULARITY_MONTH, {2025, 6, 30}},
        // The year step shortens the day before the month step runs.
        {{2024, 2, 29}, 13, TIME_GRANULARITY_MONTH, {2023, 1, 28}},
        {{2024, 2, 29, 7, 8, 9, 10}, 0, TIME_GRANULARITY_MONTH, {2024, 2, 29, 7, 8, 9, 10}},
        // A year step below 0 is refused; the month step still runs.
        {{0, 3, 15}, 13, TIME_GRANULARITY_MONTH, {0, 2, 15}},
        {{2024, 2, 29}, 1, TIME_GRANULARITY_YEAR, {2023, 2, 28}},
        {{2024, 6, 1}, 2025, TIME_GRANULARITY_YEAR, {2024, 6, 1}},
        {{2024, 6, 1}, INT_MIN, TIME_GRANULARITY_YEAR, {2024, 6, 1}},
        {{2024, 2, 28, 23}, -1, TIME_GRANULARITY_DAY, {2024, 2, 29, 23}},
        {{2024, 3, 1, 0, 0, 0, 5}, 1, TIME_GRANULARITY_SECOND, {2024, 2, 29, 23, 59, 59, 5}},
        {{2024, 3, 1}, -90, TIME_GRANULARITY_MINUTE, {2024, 3, 1, 1, 30}},
        {{2024, 3, 1}, 25, TIME_GRANULARITY_HOUR, {2024, 2, 28, 23}},
        {{2024, 3, 14}, 2, TIME_GRANULARITY_WEEK, {2024, 2, 29}},
        {{2024, 3, 14, 1}, 1, static_cast<TIME_GRANULARITY>(0), {2024, 3, 14, 1}},
        {{2024, 3, 14, 1}, 1, static_cast<TIME_GRANULARITY>(8), {2024, 3, 14, 1}},
    };
    for (const auto& c : cases) {
        DateTime date = c.from.Make();
        DynamicTime::MoveNthTimePointBefore(date, c.n, c.unit);
        EXPECT_EQ(Text(date), Text(c.to.Make()))
            << Text(c.from.Make()) << " n " << c.n << " unit " << c.unit;
    }
}

TEST(MoveByBusinessDays, EveryRowOfTheWeekTable) {
    // From each day, n business days back (negative: ahead), March 2024.
    const int counts[] = {1, 2, 4, 5, 6, -1, -2, -5};
    const struct {
        int from;
        int to[8];
    } rows[] = {
        {11, {8, 7, 5, 4, 1, 12, 13, 18}},     // Monday
        {15, {14, 13, 11, 8, 7, 18, 19, 22}},  // Friday
        {16, {15, 14, 12, 9, 8, 19, 20, 25}},  // Saturday
        {17, {13, 12, 10, 7, 6, 19, 20, 25}},  // Sunday
    };
    const DynamicTime rule(DYNAMIC_TIME_TODAY, 0);
    for (const auto& row : rows) {
        for (int i = 0; i < 8; ++i) {
            DateTime date(2024, 3, row.from, 10, 20);
            rule.MoveNthTimePointBefore_BusinessDay(date, counts[i], true);
            EXPECT_EQ(Text(date), Text(DateTime(2024, 3, row.to[i], 10, 20)))
                << "from March " << row.from << " n " << counts[i];
        }
    }
}

TEST(MoveByBusinessDays, ZeroOnlyLeavesTheWeekend) {
    const struct {
        int from;
        bool forward;
        int to;
    } cases[] = {
        {16, true, 18}, {17, true, 18},  {16, false, 15}, {17, false, 15},
        {14, true, 14}, {14, false, 14}, {18, false, 18},
    };
    const DynamicTime rule(DYNAMIC_TIME_NONE, 0);
    for (const auto& c : cases) {
        DateTime date(2024, 3, c.from, 8);
        rule.MoveNthTimePointBefore_BusinessDay(date, 0, c.forward);
        EXPECT_EQ(Text(date), Text(DateTime(2024, 3, c.to, 8)))
            << "from March " << c.from << (c.forward ? " forward" : " back");
    }
}

TEST(DynamicTimeRecord, FieldsAreStoredAsGiven) {
    DynamicTime rule(DYNAMIC_TIME_TODAY | DYNAMIC_TIME_BUSINESS_DAY, -7);
    EXPECT_EQ(rule.GetDayOfWeek(), -1);
    EXPECT_EQ(rule.GetDynamicDayOffset(), -7);
    rule.PutDynamicTime(DYNAMIC_TIME_NONE);
    EXPECT_EQ(rule.GetDynamicTime(), 0x103);
    rule.PutDayOfWeek(99);
    rule.PutMonth(INT_MIN);
    rule.PutDynamicMonthOffset(-32768);
    const DynamicTime copy(rule);
    EXPECT_EQ(copy.GetDayOfWeek(), 99);
    EXPECT_EQ(copy.GetMonth(), INT_MIN);
    EXPECT_EQ(copy.GetDynamicMonthOffset(), -32768);
}

}  // namespace
