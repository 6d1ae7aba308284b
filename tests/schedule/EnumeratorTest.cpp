#include <gtest/gtest.h>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

class ScheduleEnumerator : public testing::Test {
  protected:
    ZoneScope mZone{"UTC0"};
};

const S kDaily1030 = S().Day(EVERY, 1).At(10, 30);
const S kDaily10 = S().Day(EVERY, 1).At(10, 0);
const S kEvery5Hours =
    S().Day(EVERY, 1).Hour(EVERY, 5).Minute(FIXED, 0).Second(FIXED, 0).Ms(FIXED, 0);
const S kEvery2Hours = S(kEvery5Hours).Hour(EVERY, 2);
const S kWindow = S().Day(EVERY, 1).Window(9, 0, 10, 0, 30);
const S kOneDate = S().Year(FIXED, 2010).Month(FIXED, 6).Day(FIXED, 15).At(9, 0);

TEST_F(ScheduleEnumerator, NextFromAStart) {
    struct Case {
        const char* what;
        S schedule;
        const char* start;
        unsigned int count;
        std::vector<std::string> points;
    };
    const Case cases[] = {
        {"the day's time has passed",
         kDaily1030,
         "2010-03-01 12:00",
         2,
         {"2010-03-02 10:30", "2010-03-03 10:30"}},
        {"a point equal to the start counts",
         kDaily1030,
         "2010-03-01 10:30",
         1,
         {"2010-03-01 10:30"}},
        {"the interval counts from the first day",
         S().Day(EVERY, 3).At(10, 0),
         "2010-03-01 12:00",
         3,
         {"2010-03-04 10:00", "2010-03-07 10:00", "2010-03-10 10:00"}},
        {"hours roll over into the next day",
         kEvery5Hours,
         "2010-03-01",
         7,
         {"2010-03-01 00:00", "2010-03-01 05:00", "2010-03-01 10:00", "2010-03-01 15:00",
          "2010-03-01 20:00", "2010-03-02 01:00", "2010-03-02 06:00"}},
        {"a day after a gap restarts at midnight",
         S(kEvery5Hours).Day(EVERY, 2),
         "2010-03-01 19:00",
         3,
         {"2010-03-01 20:00", "2010-03-03 00:00", "2010-03-03 05:00"}},
        {"an unused hour is never moved",
         S().Minute(EVERY, 15),
         "2010-03-01 00:20",
         4,
         {"2010-03-01 00:30", "2010-03-01 00:45", "2010-03-02 00:00", "2010-03-02 00:15"}},
        {"the first day lacks 10:00",
         S().Hour(FIXED, 10).Minute(EVERY, 15),
         "2010-03-01",
         4,
         {"2010-03-01 10:15", "2010-03-01 10:30", "2010-03-01 10:45", "2010-03-02 10:00"}},
        {"window",
         kWindow,
         "2010-03-01 09:10",
         4,
         {"2010-03-01 09:30", "2010-03-01 10:00", "2010-03-02 09:00", "2010-03-02 09:30"}},
        {"window after the day's close", kWindow, "2010-03-01 10:10", 1, {"2010-03-02 09:00"}},
        {"window step 25 drops the remainder",
         S(kWindow).Window(9, 0, 10, 0, 25),
         "2010-03-01",
         4,
         {"2010-03-01 09:00", "2010-03-01 09:25", "2010-03-01 09:50", "2010-03-02 09:00"}},
        {"window closing before it opens",
         S(kWindow).Window(22, 0, 2, 0, 30),
         "2010-03-01",
         2,
         {"2010-03-01 22:00", "2010-03-02 22:00"}},
        {"window step 0", S(kWindow).Window(9, 0, 10, 0, 0), "2010-03-01", 3, {}},
        {"a fixed year in the past", S(kDaily1030).Year(FIXED, 2009), "2010-03-01", 3, {}},
        {"a fixed year ahead",
         S(kDaily1030).Year(FIXED, 2012),
         "2010-06-15",
         1,
         {"2012-06-16 10:30"}},
        {"one date: the series ends", kOneDate, "2010-01-01", 3, {"2010-06-15 09:00"}},
        {"one date, passed that day", kOneDate, "2010-06-15 09:01", 3, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Next(*c.schedule.Make(), c.start, c.count), c.points);
    }
}

TEST_F(ScheduleEnumerator, NextFromALaterTime) {
    struct Case {
        const char* what;
        S schedule;
        const char* start;
        const char* from;
        unsigned int count;
        std::vector<std::string> points;
    };
    const Case cases[] = {
        {"the phase comes from the start",
         S().Day(EVERY, 3).At(10, 0),
         "2010-03-01",
         "2010-03-08",
         3,
         {"2010-03-10 10:00", "2010-03-13 10:00", "2010-03-16 10:00"}},
        {"a point equal to from counts",
         kDaily10,
         "2010-03-01",
         "2010-03-05 10:00",
         2,
         {"2010-03-05 10:00", "2010-03-06 10:00"}},
        {"the start's day has passed",
         kDaily10,
         "2010-03-01 12:00",
         "2010-03-01 12:00",
         2,
         {"2010-03-02 10:00", "2010-03-03 10:00"}},
        {"midnight after a gap fails the anchor",
         S(kEvery5Hours).Day(EVERY, 2),
         "2010-03-01",
         "2010-03-01",
         8,
         {"2010-03-01 00:00", "2010-03-01 05:00", "2010-03-01 10:00", "2010-03-01 15:00",
          "2010-03-01 20:00", "2010-03-03 05:00", "2010-03-03 10:00", "2010-03-03 15:00"}},
        {"the first day runs on from its rolled-over time",
         S().Day(EVERY, 1).Hour(EVERY, 5).Minute(FIXED, 30),
         "2010-03-01 21:00",
         "2010-03-01 21:00",
         4,
         {"2010-03-01 21:30", "2010-03-02 02:30", "2010-03-02 07:30", "2010-03-02 12:30"}},
        {"midnight in the pattern lists the day from midnight",
         S().Day(EVERY, 1).Hour(EVERY, 2),
         "2010-03-01 10:00",
         "2010-02-01",
         4,
         {"2010-03-01 00:00", "2010-03-01 02:00", "2010-03-01 04:00", "2010-03-01 06:00"}},
        {"then only from gates",
         S().Day(EVERY, 1).Hour(EVERY, 2),
         "2010-03-01 10:00",
         "2010-03-01 10:00",
         2,
         {"2010-03-01 10:00", "2010-03-01 12:00"}},
        {"the window honours the start",
         kWindow,
         "2010-03-01 09:10",
         "2010-02-01",
         3,
         {"2010-03-01 09:30", "2010-03-01 10:00", "2010-03-02 09:00"}},
        {"the window from a later day",
         kWindow,
         "2010-03-01 09:10",
         "2010-03-05 09:10",
         3,
         {"2010-03-05 09:30", "2010-03-05 10:00", "2010-03-06 09:00"}},
        {"window step 0", S(kWindow).Window(9, 0, 10, 0, 0), "2010-03-01", "2010-03-01", 3, {}},
        {"one date before from", kOneDate, "2010-01-01", "2010-07-01", 3, {}},
        {"one date after from", kOneDate, "2010-01-01", "2010-02-01", 3, {"2010-06-15 09:00"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Next(*c.schedule.Make(), c.start, c.count, c.from), c.points);
    }
}

TEST_F(ScheduleEnumerator, AllInARange) {
    struct Case {
        const char* what;
        S schedule;
        const char* start;
        const char* end;
        std::vector<std::string> points;
        bool delivered;
    };
    const std::vector<std::string> three = {"2010-03-01 10:30", "2010-03-02 10:30",
                                            "2010-03-03 10:30"};
    const Case cases[] = {
        {"the first day is listed whole", kDaily1030, "2010-03-01 12:00", "2010-03-03 12:00", three,
         true},
        {"a point equal to end counts", kDaily1030, "2010-03-01 12:00", "2010-03-03 10:30", three,
         true},
        {"end just before a point",
         kDaily1030,
         "2010-03-01 12:00",
         "2010-03-03 10:29",
         {three[0], three[1]},
         true},
        {"start and end on the point",
         kDaily1030,
         "2010-03-01 10:30",
         "2010-03-01 10:30",
         {three[0]},
         true},
        {"the first point past end", kDaily1030, "2010-03-01 09:00", "2010-03-01 09:00", {}, false},
        {"start after end", kDaily1030, "2010-03-02", "2010-03-01", {}, false},
        {"days after a gap restart at midnight",
         S(kEvery5Hours).Day(EVERY, 2),
         "2010-03-01 03:00",
         "2010-03-03 06:00",
         {"2010-03-01 00:00", "2010-03-01 05:00", "2010-03-01 10:00", "2010-03-01 15:00",
          "2010-03-01 20:00", "2010-03-03 00:00", "2010-03-03 05:00"},
         true},
        {"window",
         kWindow,
         "2010-03-01 09:10",
         "2010-03-02 09:30",
         {"2010-03-01 09:30", "2010-03-01 10:00", "2010-03-02 09:00", "2010-03-02 09:30"},
         true},
        {"window opening past end", kWindow, "2010-03-01 08:00", "2010-03-01 08:30", {}, false},
        {"window with no point in range",
         kWindow,
         "2010-03-01 09:10",
         "2010-03-01 09:20",
         {},
         true},
        {"window step 0", S(kWindow).Window(9, 0, 10, 0, 0), "2010-03-01", "2010-03-09", {}, false},
        {"a fixed year in the past",
         S(kDaily1030).Year(FIXED, 2009),
         "2010-03-01",
         "2011-01-01",
         {},
         false},
        {"more years than the estimate counts",
         S().Month(FIXED, 6).Day(FIXED, 15),
         "2010-01-01",
         "2014-12-31",
         {"2010-06-15 00:00", "2011-06-15 00:00", "2012-06-15 00:00", "2013-06-15 00:00",
          "2014-06-15 00:00"},
         true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        bool delivered = false;
        EXPECT_EQ(All(*c.schedule.Make(), c.start, c.end, &delivered), c.points);
        EXPECT_EQ(delivered, c.delivered);
    }

    // Every 2 hours from 10:00 lists the whole first day: 12 points and 3 the next.
    EXPECT_EQ(All(*kEvery2Hours.Make(), "2010-03-01 10:00", "2010-03-02 05:00").size(), 15u);
    // A window of 96 points a day outgrows an estimate of 374 within a week.
    EXPECT_EQ(
        All(*S(kWindow).Window(0, 0, 23, 45, 15).Make(), "2010-03-01", "2010-03-07 23:59").size(),
        7u * 96);
}

TEST_F(ScheduleEnumerator, CapacityEstimate) {
    struct Case {
        S schedule;
        int startYear, endYear;
        unsigned int capacity;
    };
    const Case cases[] = {
        {kDaily1030, 2010, 2010, 374},
        {kEvery2Hours, 2010, 2010, 8930},
        {S().Week(EVERY, 2).Dow(42), 2010, 2010, 6698},
        {S().Day(EVERY, 1).Year(EVERY, 1), 2010, 2012, 1118},
        {S().Month(FIXED, 6).Day(FIXED, 15), 2010, 2020, 3},
        {S().Month(FIXED, 6).Day(FIXED, 15).Year(EVERY, 1), 2010, 2013, 6},
        {S().Dow(128), 2010, 2010, 2},
        {S().Hour(EVERY, 1).Minute(EVERY, 1).Second(EVERY, 1).Ms(EVERY, 1), 2010, 2010, 1u << 16},
    };
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
}

TEST_F(ScheduleEnumerator, NullArrays) {
    const auto s = kDaily1030.Make();
    EXPECT_EQ(s->GetNextNTimePoints(T("2010-03-01"), 0, nullptr), 0u);
    EXPECT_EQ(s->GetNextNTimePoints(T("2010-03-01"), T("2010-03-01"), 0, nullptr), 0u);
    try {
        s->GetNextNTimePoints(T("2010-03-01"), 1, nullptr);
        ADD_FAILURE() << "no throw";
    } catch (const ZelvorBase::ExceptionImpl<TimeSeriesException>& e) {
        EXPECT_STREQ(e.GetMessage(), L"Invalid parameter");
        EXPECT_EQ(e.GetID(), -1);
    }
    EXPECT_THROW(s->GetNextNTimePoints(T("2010-03-01"), T("2010-03-01"), 1, nullptr),
                 ZelvorBase::ExceptionImpl<TimeSeriesException>);
}

}  // namespace
