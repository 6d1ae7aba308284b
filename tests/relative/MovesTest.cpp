#include <gtest/gtest.h>

#include <string>

#include <ZelvorDataType/DynamicTime.h>

#include "RelativeSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::ReadCases;
using ZelvorRelativeTest::T;
using ZelvorRelativeTest::Text;

TEST(MoveByUnits, CalendarAndExactUnits) {
    for (const auto& c : ReadCases("relative/Moves.cases")) {
        DateTime date = T(c[0].c_str());
        const auto unit = static_cast<TIME_GRANULARITY>(
            ZelvorRelativeTest::Named(c[2], {{"SECOND", TIME_GRANULARITY_SECOND},
                                             {"MINUTE", TIME_GRANULARITY_MINUTE},
                                             {"HOUR", TIME_GRANULARITY_HOUR},
                                             {"MONTH", TIME_GRANULARITY_MONTH},
                                             {"YEAR", TIME_GRANULARITY_YEAR},
                                             {"WEEK", TIME_GRANULARITY_WEEK}}));
        DynamicTime::MoveNthTimePointBefore(date, std::stoi(c[1]), unit);
        EXPECT_EQ(Text(date), Text(T(c[3].c_str()))) << c.where;
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
