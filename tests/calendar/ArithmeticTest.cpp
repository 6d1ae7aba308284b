#include <gtest/gtest.h>

#include "CalendarSupport.h"

namespace {

using CalendarTest::DateOf;
using CalendarTest::SpanOf;
using CalendarTest::Text;
using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSpan;

constexpr long long kDay = 86400000;

TEST(TimeSpans, TotalsTruncateTowardZero) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/TimeSpans.cases")) {
        SCOPED_TRACE(c.where);
        const TimeSpan span = SpanOf(c[0]);
        EXPECT_EQ(span.GetTotalDays(), std::stoi(c[1]));
        EXPECT_EQ(span.GetTotalHours(), std::stoi(c[2]));
        EXPECT_EQ(span.GetTotalMinutes(), std::stoi(c[3]));
        EXPECT_EQ(span.GetTotalSeconds(), std::stoi(c[4]));
        EXPECT_EQ(span.GetTotalMilliseconds(), std::stoll(c[5]));
    }
}

TEST(CalendarArithmetic, SumsDifferencesAndClamps) {
    const DateTime a(2023, 12, 31, 22, 30, 15, 250);
    const DateTime b(2024, 3, 1, 1, 2, 3, 4);
    const TimeSpan gap = b - a;
    EXPECT_EQ(gap.GetTotalMilliseconds(), 61 * kDay - (21 * 3600000LL + 28 * 60000LL + 12246));
    EXPECT_EQ(a + gap, b);
    EXPECT_EQ(b - gap, a);
    EXPECT_EQ(Text(DateTime(2024, 1, 5, 10) + TimeSpan(kDay)), "2024-01-06 10:00:00.000");
    EXPECT_EQ(Text(DateTime(1899, 12, 30) - TimeSpan(1)), "1899-12-29 23:59:59.999");
    EXPECT_EQ(Text(DateTime(65535, 12, 31) + TimeSpan(kDay)), "65535-12-30 00:00:00.000");
    EXPECT_EQ(Text(DateTime(1, 1, 1) - TimeSpan(INT64_MAX)).substr(0, 10), "0001-01-01");
    // The result comes off the serial scale: zone words 0.
    EXPECT_EQ((DateTime(2024, 1, 1, 0, 0, 0, 0, 60) + TimeSpan(0)).GetZoneMinutes(), 0);
}

TEST(WorkingDays, AddAndMinusStepOverWeekends) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/WorkingDays.cases")) {
        const DateTime start = DateOf(c[0]);
        const TimeSpan span = SpanOf(c[2]);
        EXPECT_EQ(Text(c[1] == "+" ? start.Add(span) : start.Minus(span)), c[3]) << c.where;
    }
}

TEST(WorkingDays, SpanRemovesWeekends) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/WorkingSpans.cases")) {
        EXPECT_EQ(DateOf(c[0]).Span(DateOf(c[1])).GetTotalMilliseconds(),
                  SpanOf(c[2]).GetTotalMilliseconds())
            << c.where;
    }
}

TEST(Order, FieldsDecideCachesAndZonesDoNot) {
    const DateTime base(2024, 5, 6, 7, 8, 9, 10);
    const DateTime others[] = {DateTime(2025, 1, 1), DateTime(2024, 5, 7),
                               DateTime(2024, 5, 6, 7, 8, 9, 11), DateTime(40000, 1, 1)};
    for (const DateTime& later : others) {
        EXPECT_TRUE(later > base && base < later && base <= later && later >= base) << Text(later);
        EXPECT_TRUE(later != base && !(later == base)) << Text(later);
        EXPECT_EQ(DateTime::DateTimeOrder(later, base), 1);
        EXPECT_EQ(DateTime::DateTimeOrder(base, later), -1);
    }
    DateTime cached(2024, 5, 6, 7, 8, 9, 10, -300, 9);
    cached.GetWeek();
    EXPECT_TRUE(cached == base && cached <= base && cached >= base);
    EXPECT_EQ(DateTime::DateTimeOrder(cached, base), 0);
}

TEST(RoundToSeconds, CarriesLikeAnOdometer) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/RoundToSeconds.cases")) {
        EXPECT_EQ(Text(DateOf(c[0]).RoundToSeconds()), c[1]) << c.where;
    }
    EXPECT_EQ(DateTime(2024, 1, 1, 0, 0, 0, 700, 120).RoundToSeconds().GetZoneMinutes(), 120);
}

}  // namespace
