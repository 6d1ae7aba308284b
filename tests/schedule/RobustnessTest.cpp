// Schedules no one should build: every call returns, stays inside its array and hands
// out its points in walking order. (One schedule read by many threads is in threads/.)
#include <gtest/gtest.h>

#include <climits>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

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

// clang-format off
TEST(ScheduleRobustness, OddSchedulesEndAndStayInBounds) {
    ZoneScope zone("UTC0");
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
