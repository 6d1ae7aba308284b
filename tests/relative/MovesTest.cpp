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
        // clang-format off
        {{2024, 3, 31}, 1, TIME_GRANULARITY_MONTH, {2024, 2, 29}},
        {{2023, 1, 31}, -1, TIME_GRANULARITY_MONTH, {2023, 2, 28}},
        {{2024, 1, 15}, 12, TIME_GRANULARITY_MONTH, {2023, 1, 15}},
        {{2024, 1, 15}, 24, TIME_GRANULARITY_MONTH, {2022, 1, 15}},
        {{2024, 12, 15}, -1, TIME_GRANULARITY_MONTH, {2025, 1, 15}},
        {{2024, 12, 31}, -2, TIME_GRANULARITY_MONTH, {2025, 2, 28}},
        {{2024, 5, 31}, -13, TIME_GRANULARITY_MONTH, {2025, 6, 30}},
        {{2024, 2, 29}, 13, TIME_GRANULARITY_MONTH, {2023, 1, 28}},  // year step cuts the day first
        {{2024, 2, 29, 7, 8}, 0, TIME_GRANULARITY_MONTH, {2024, 2, 29, 7, 8}},
        {{0, 3, 15}, 13, TIME_GRANULARITY_MONTH, {0, 2, 15}},  // year -1 refused, month still moves
        {{2024, 2, 29}, 1, TIME_GRANULARITY_YEAR, {2023, 2, 28}},
        {{2024, 6, 1}, 2025, TIME_GRANULARITY_YEAR, {2024, 6, 1}},
        {{2024, 6, 1}, INT_MIN, TIME_GRANULARITY_YEAR, {2024, 6, 1}},
        {{2024, 3, 1, 0, 0, 0, 5}, 1, TIME_GRANULARITY_SECOND, {2024, 2, 29, 23, 59, 59, 5}},
        {{2024, 3, 1}, -90, TIME_GRANULARITY_MINUTE, {2024, 3, 1, 1, 30}},
        {{2024, 3, 1}, 25, TIME_GRANULARITY_HOUR, {2024, 2, 28, 23}},
        {{2024, 3, 14}, 2, TIME_GRANULARITY_WEEK, {2024, 2, 29}},
        {{2024, 3, 14, 1}, 1, static_cast<TIME_GRANULARITY>(8), {2024, 3, 14, 1}},
        // clang-format on
    };
    for (const auto& c : cases) {
        DateTime date = c.from.Make();
        DynamicTime::MoveNthTimePointBefore(date, c.n, c.unit);
        EXPECT_EQ(Text(date), Text(c.to.Make())) << Text(c.from.Make()) << " n " << c.n;
    }
    // Even a null exact move comes out of the millisecond scale, zone words cleared.
    DateTime zoned(2024, 3, 15, 1, 2, 3, 4, 60, 7);
    DynamicTime::MoveNthTimePointBefore(zoned, 0, TIME_GRANULARITY_HOUR);
    EXPECT_EQ(zoned.GetZoneMinutes(), 0);
}

TEST(MoveByBusinessDays, EveryRowOfTheWeekTable) {
    // From each day of March 2024, n business days back (negative: ahead).
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
    // n 0 only leaves the weekend: forward to Monday the 18th, back to Friday the 15th.
    const struct {
        int from;
        bool forward;
        int to;
    } zeros[] = {{16, true, 18}, {17, true, 18}, {16, false, 15}, {17, false, 15}, {14, true, 14}};
    for (const auto& c : zeros) {
        DateTime date(2024, 3, c.from, 8);
        rule.MoveNthTimePointBefore_BusinessDay(date, 0, c.forward);
        EXPECT_EQ(Text(date), Text(DateTime(2024, 3, c.to, 8))) << c.from << " " << c.forward;
    }
}

}  // namespace
