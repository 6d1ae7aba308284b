#include <gtest/gtest.h>

#include <climits>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

class ScheduleEnumerator : public testing::Test {
  protected:
    ZoneScope mZone{"UTC0"};
};

// clang-format off
const S kDaily1030 = S().Day(EVERY, 1).At(10, 30);
const S kDaily10 = S().Day(EVERY, 1).At(10, 0);
const S kEvery5Hours = S().Day(EVERY, 1).Hour(EVERY, 5).Minute(FIXED, 0).Second(FIXED, 0)
                         .Ms(FIXED, 0);
const S kEvery2Hours = S(kEvery5Hours).Hour(EVERY, 2);
const S kWindow = S().Day(EVERY, 1).Window(9, 0, 10, 0, 30);
const S kOneDate = S().Year(FIXED, 2010).Month(FIXED, 6).Day(FIXED, 15).At(9, 0);

TEST_F(ScheduleEnumerator, NextFromAStartOrALaterTime) {
    struct Case {
        const char *what; S schedule; const char *start, *from; unsigned int n; const char* points;
    };
    const Case cases[] = {
        {"a point equal to the start counts", kDaily1030, "2010-03-01 10:30", nullptr, 1,
         "2010-03-01 10:30"},
        {"hours roll over into the next day", kEvery5Hours, "2010-03-01 19:00", nullptr, 3,
         "2010-03-01 20:00, 2010-03-02 01:00, 2010-03-02 06:00"},
        {"a day after a gap restarts at midnight", S(kEvery5Hours).Day(EVERY, 2),
         "2010-03-01 19:00", nullptr, 3, "2010-03-01 20:00, 2010-03-03 00:00, 2010-03-03 05:00"},
        {"the first day lacks 10:00", S().Hour(FIXED, 10).Minute(EVERY, 15), "2010-03-01",
         nullptr, 4,
         "2010-03-01 10:15, 2010-03-01 10:30, 2010-03-01 10:45, 2010-03-02 10:00"},
        {"window", kWindow, "2010-03-01 09:10", nullptr, 3,
         "2010-03-01 09:30, 2010-03-01 10:00, 2010-03-02 09:00"},
        {"window after the day's close", kWindow, "2010-03-01 10:10", nullptr, 1,
         "2010-03-02 09:00"},
        {"window step 25 drops the remainder", S(kWindow).Window(9, 0, 10, 0, 25),
         "2010-03-01 09:30", nullptr, 2, "2010-03-01 09:50, 2010-03-02 09:00"},
        {"window step 0", S(kWindow).Window(9, 0, 10, 0, 0), "2010-03-01", nullptr, 3, ""},
        {"one date: the series ends", kOneDate, "2010-01-01", nullptr, 3, "2010-06-15 09:00"},
        {"one date, passed that day", kOneDate, "2010-06-15 09:01", nullptr, 3, ""},
        {"a point equal to from counts", kDaily10, "2010-03-01", "2010-03-05 10:00", 1,
         "2010-03-05 10:00"},
        {"midnight after a gap fails the anchor", S(kEvery5Hours).Day(EVERY, 2), "2010-03-01",
         "2010-03-01 20:00", 2, "2010-03-01 20:00, 2010-03-03 05:00"},
        {"the first day runs on from its rolled-over time",
         S().Day(EVERY, 1).Hour(EVERY, 5).Minute(FIXED, 30), "2010-03-01 21:00",
         "2010-03-01 21:00", 3,
         "2010-03-01 21:30, 2010-03-02 02:30, 2010-03-02 07:30"},
        {"midnight in the pattern lists the day from midnight", S().Day(EVERY, 1).Hour(EVERY, 2),
         "2010-03-01 10:00", "2010-02-01", 2, "2010-03-01 00:00, 2010-03-01 02:00"},
        {"then only from gates", S().Day(EVERY, 1).Hour(EVERY, 2), "2010-03-01 10:00",
         "2010-03-01 10:00", 2, "2010-03-01 10:00, 2010-03-01 12:00"},
        {"the window honours the start", kWindow, "2010-03-01 09:10", "2010-02-01", 2,
         "2010-03-01 09:30, 2010-03-01 10:00"},
        {"one date after from", kOneDate, "2010-01-01", "2010-02-01", 3, "2010-06-15 09:00"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Next(*c.schedule.Make(), c.start, c.n, c.from), c.points) << c.what;
    }
}

TEST_F(ScheduleEnumerator, AllInARange) {
    struct Case { const char* what; S schedule; const char *start, *end, *points; };
    const Case cases[] = {
        {"a point equal to end counts", kDaily1030, "2010-03-01 12:00", "2010-03-02 10:30",
         "2010-03-01 10:30, 2010-03-02 10:30"},
        {"end just before a point", kDaily1030, "2010-03-01 12:00", "2010-03-02 10:29",
         "2010-03-01 10:30"},
        {"the first point past end", kDaily1030, "2010-03-01 09:00", "2010-03-01 09:00",
         "(no array)"},
        {"start after end", kDaily1030, "2010-03-02", "2010-03-01", "(no array)"},
        {"days after a gap restart at midnight", S(kEvery5Hours).Day(EVERY, 2), "2010-03-01 19:00",
         "2010-03-03 06:00",
         "2010-03-01 00:00, 2010-03-01 05:00, 2010-03-01 10:00, 2010-03-01 15:00, "
         "2010-03-01 20:00, 2010-03-03 00:00, 2010-03-03 05:00"},
        {"window", kWindow, "2010-03-01 09:10", "2010-03-02 09:30",
         "2010-03-01 09:30, 2010-03-01 10:00, 2010-03-02 09:00, 2010-03-02 09:30"},
        {"window opening past end", kWindow, "2010-03-01 08:00", "2010-03-01 08:30", "(no array)"},
        {"window with no point in range", kWindow, "2010-03-01 09:10", "2010-03-01 09:20", ""},
        {"window step 0", S(kWindow).Window(9, 0, 10, 0, 0), "2010-03-01", "2010-03-09",
         "(no array)"},
        {"more years than the estimate counts", S().Month(FIXED, 6).Day(FIXED, 15), "2010-01-01",
         "2013-12-31", "2010-06-15 00:00, 2011-06-15 00:00, 2012-06-15 00:00, 2013-06-15 00:00"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(All(*c.schedule.Make(), c.start, c.end), c.points) << c.what;
    }
}
// clang-format on

TEST_F(ScheduleEnumerator, ArraySizes) {
    // clang-format off
    struct Case { S schedule; int startYear, endYear; unsigned int capacity; };
    const Case cases[] = {
        {kDaily1030, 2010, 2010, 374}, {kEvery2Hours, 2010, 2010, 8930},
        {S().Week(EVERY, 2).Dow(42), 2010, 2010, 6698},
        {S().Day(EVERY, 1).Year(EVERY, 1), 2010, 2012, 1118},
        {S().Month(FIXED, 6).Day(FIXED, 15), 2010, 2020, 3}, {S().Dow(128), 2010, 2010, 2},
        {S().Month(FIXED, 6).Day(FIXED, 15).Year(EVERY, 1), 2010, 2013, 6},
        {S().Hour(EVERY, 1).Minute(EVERY, 1).Second(EVERY, 1).Ms(EVERY, 1), 2010, 2010, 1u << 16},
    };
    // clang-format on
    for (const Case& c : cases) {
        EXPECT_EQ(c.schedule.Make()->EstimateCapacity(c.startYear, c.endYear), c.capacity);
    }
    // The array has exactly that many entries, the ones past the points empty.
    DateTime* points = nullptr;
    ASSERT_EQ(
        kDaily1030.Make()->GetAllTimePoints(T("2010-03-01 12:00"), T("2010-03-03 12:00"), points),
        3u);
    for (int i = 3; i < 374; ++i) {
        EXPECT_EQ(points[i], DateTime(0.0));
    }
    delete[] points;
    // A window of 96 points a day outgrows an estimate of 374 within a week.
    const auto every15 = S(kWindow).Window(0, 0, 23, 45, 15).Make();
    ASSERT_EQ(every15->GetAllTimePoints(T("2010-03-01"), T("2010-03-07 23:59"), points), 7u * 96);
    EXPECT_EQ(Text(points[7 * 96 - 1]), "2010-03-07 23:45");
    delete[] points;
}

TEST_F(ScheduleEnumerator, NullArrays) {
    const auto s = kDaily1030.Make();
    const DateTime start = T("2010-03-01");
    EXPECT_EQ(s->GetNextNTimePoints(start, 0, nullptr), 0u);
    EXPECT_EQ(s->GetNextNTimePoints(start, start, 0, nullptr), 0u);
    try {
        s->GetNextNTimePoints(start, start, 1, nullptr);
        ADD_FAILURE() << "no throw";
    } catch (const ZelvorBase::ExceptionImpl<TimeSeriesException>& e) {
        EXPECT_STREQ(e.GetMessage(), L"Invalid parameter");
    }
    EXPECT_THROW(s->GetNextNTimePoints(start, 1, nullptr),
                 ZelvorBase::ExceptionImpl<TimeSeriesException>);
}

const DateTime kUntouched(1111, 1, 1);

// The first `n` points strictly ascending within [low, high]; the rest of `points`
// (when given) untouched.
void ExpectWalk(const DateTime* points, unsigned int n, const DateTime& low, const DateTime& high,
                size_t size = 0) {
    for (unsigned int i = 0; i < n; ++i) {
        EXPECT_TRUE(points[i] >= low && points[i] <= high && (i == 0 || points[i - 1] < points[i]))
            << Text(points[i]);
    }
    for (size_t i = n; i < size; ++i) {
        EXPECT_EQ(points[i], kUntouched) << i;
    }
}

// Schedules no one should build: every call returns, stays inside its array and hands
// out its points in walking order.
// clang-format off
TEST_F(ScheduleEnumerator, OddSchedulesEndAndStayInBounds) {
    // `minutes` runs from the start to `from` and to the end of the range.
    struct Case { const char* what; S schedule; const char* start; int minutes; };
    const Case cases[] = {
        {"nothing in use: midnight of every day", S(), "2010-03-01 12:00", 4000},
        {"zero time intervals", S().Hour(EVERY, 0).Minute(EVERY, 0).Second(EVERY, 0).Ms(EVERY, 0),
         "2010-03-01 12:00", 4000},
        {"zero day interval", S().Day(EVERY, 0).At(10, 0), "2010-03-01 12:00", 4000},
        {"zero month and week intervals", S().Month(EVERY, 0).Week(EVERY, 0).Dow(127),
         "2010-03-01", 4000},
        {"zero year interval", S().Year(EVERY, 0).At(10, 0), "2010-03-01 09:00", 4000},
        {"hour 30", S().Day(EVERY, 1).Hour(FIXED, 30).Minute(EVERY, 5), "2010-03-01", 4000},
        {"minute -61, millisecond 1000", S().Minute(FIXED, -61).Ms(FIXED, 1000), "2010-03-01",
         4000},
        {"intervals past their range", S().Hour(EVERY, 100).Minute(EVERY, 1000000).Ms(EVERY,
         INT_MAX),
         "2010-03-01", 100000},
        {"the widest week interval", S().Week(EVERY, INT_MIN).Dow(2), "2010-03-01", 100000},
        {"a year interval past the calendar", S().Year(EVERY, 1000000).Month(FIXED, 5),
         "2010-03-01", 100000},
        {"a year beyond 16 bits", S().Year(FIXED, 70000), "2010-03-01", 4000},
        {"the top of the calendar", S().Hour(EVERY, 7), "65535-12-29 12:00", 4000},
        {"a dense clock", S().Hour(EVERY, 1).Minute(EVERY, 1).Second(EVERY, 1).Ms(EVERY, 1),
         "2010-03-01 00:01", 1},
        {"a window of one point a day", S().Window(23, 59, 23, 59, 1439), "2010-03-01", 4000},
        {"a step past the window", S().Window(9, 0, 9, 30, 45), "2010-03-01 09:10", 4000},
    };
    constexpr unsigned int kCount = 16;
    const DateTime top(65535, 12, 31, 23, 59, 59, 999);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto s = c.schedule.Make();
        const DateTime start = T(c.start), later = start + TimeSpan(0, 0, c.minutes, 0, 0);
        std::vector<DateTime> points(kCount + 2, kUntouched);
        ExpectWalk(points.data(), s->GetNextNTimePoints(start, kCount, points.data()), start, top,
                   points.size());
        std::fill(points.begin(), points.end(), kUntouched);
        ExpectWalk(points.data(), s->GetNextNTimePoints(start, later, kCount, points.data()), later,
                   top, points.size());
        DateTime* all = nullptr;
        const unsigned int n = s->GetAllTimePoints(start, later, all);
        ExpectWalk(all, n, DateTime(start.GetYear(), start.GetMonth(), start.GetDay()), later);
        delete[] all;
    }
}
// clang-format on

}  // namespace
