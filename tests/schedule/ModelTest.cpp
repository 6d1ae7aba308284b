#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

std::vector<int> Window(const TimeSeries& s) {
    return {s.GetHourStart(), s.GetMinuteStart(), s.GetHourEnd(), s.GetMinuteEnd(),
            s.GetExecutingEveryMinutes()};
}

TEST(ScheduleModel, ConstructionRules) {
    struct Case {
        const char* what;
        S schedule;
        std::function<int(const TimeSeries&)> field;
        int expected;
        std::vector<int> window;
    };
    const std::vector<int> unset = {-1, -1, -1, -1, -1};
    const std::vector<int> nineToFive = {9, 0, 17, 0, 30};
    const Case cases[] = {
        {"interval -5 is stored as 5", S().Day(EVERY, -5), &TimeSeries::GetDay, 5, unset},
        {"fixed -5 stays", S().Day(FIXED, -5), &TimeSeries::GetDay, -5, unset},
        {"interval 0 stays 0", S().Hour(EVERY, 0), &TimeSeries::GetHour, 0, unset},
        {"INT_MIN has no magnitude", S().Week(EVERY, INT_MIN), &TimeSeries::GetWeek, INT_MAX,
         unset},
        {"day-of-week interval negated too", S().Set(4, EVERY, -3), &TimeSeries::GetDayOfWeek, 3,
         unset},
        {"fixed out of range kept", S().Month(FIXED, 13), &TimeSeries::GetMonth, 13, unset},
        {"window beside a fixed hour is dropped", S().Hour(FIXED, 9).Window(9, 0, 17, 0, 30),
         &TimeSeries::GetHour, 9, unset},
        {"window beside an unused minute and hour stays",
         S().Second(EVERY, 5).Ms(FIXED, 3).Window(9, 0, 17, 0, 30), &TimeSeries::GetSecond, 5,
         nineToFive},
        {"'unused' must be exactly NONE", S().Hour(RECURRENCE(7), 0).Window(9, 0, 17, 0, 30),
         &TimeSeries::GetHour, 0, unset},
        {"hour start 24 alone is dropped",
         S().Window(24, 0, 17, 0, 30),
         &TimeSeries::GetHourEnd,
         17,
         {-1, 0, 17, 0, 30}},
        {"step 1440 alone is dropped",
         S().Window(9, 0, 17, 0, 1440),
         &TimeSeries::GetHourEnd,
         17,
         {9, 0, 17, 0, -1}},
        {"step 0 is a set window",
         S().Window(9, 0, 17, 0, 0),
         &TimeSeries::GetHourEnd,
         17,
         {9, 0, 17, 0, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto s = c.schedule.Make();
        EXPECT_EQ(c.field(*s), c.expected);
        EXPECT_EQ(Window(*s), c.window);
        EXPECT_EQ(s->IsIntradayWindowSet(), c.window[0] != -1 && c.window[4] != -1);
        EXPECT_TRUE(s->CheckValidity());
    }
}

TEST(ScheduleModel, SettersRefuseAndKeep) {
    struct Case {
        const char* what;
        S schedule;
        std::function<bool(TimeSeries&)> put;
        bool stored;
        std::function<int(const TimeSeries&)> get;
        int expected;
    };
    using TS = TimeSeries;
    const Case cases[] = {
        {"month -1 while fixed", S().Month(FIXED, 3), [](TS& s) { return s.PutMonth(-1); }, true,
         &TS::GetMonth, -1},
        {"month -1 while every", S().Month(EVERY, 3), [](TS& s) { return s.PutMonth(-1); }, false,
         &TS::GetMonth, 3},
        {"month 0", S().Month(FIXED, 3), [](TS& s) { return s.PutMonth(0); }, false, &TS::GetMonth,
         3},
        {"day 0", S().Day(FIXED, 3), [](TS& s) { return s.PutDay(0); }, false, &TS::GetDay, 3},
        {"week -2 while fixed", S().Week(FIXED, 1), [](TS& s) { return s.PutWeek(-2); }, true,
         &TS::GetWeek, -2},
        {"year 0 while every", S().Year(EVERY, 2), [](TS& s) { return s.PutYear(0); }, false,
         &TS::GetYear, 2},
        {"year 0 while fixed", S().Year(FIXED, 2), [](TS& s) { return s.PutYear(0); }, true,
         &TS::GetYear, 0},
        {"mask 0", S().Dow(5), [](TS& s) { return s.PutDayOfWeek(0); }, false, &TS::GetDayOfWeek,
         5},
        {"hour 24", S(), [](TS& s) { return s.PutHour(24); }, false, &TS::GetHour, 0},
        {"hour 0 while every", S().Hour(EVERY, 2), [](TS& s) { return s.PutHour(0); }, true,
         &TS::GetHour, 0},
        {"minute 60", S(), [](TS& s) { return s.PutMinute(60); }, false, &TS::GetMinute, 0},
        {"second -1", S(), [](TS& s) { return s.PutSecond(-1); }, false, &TS::GetSecond, 0},
        {"millisecond 999", S(), [](TS& s) { return s.PutMillisecond(999); }, true,
         &TS::GetMillisecond, 999},
        {"hour start -1", S(), [](TS& s) { return s.PutHourStart(-1); }, true, &TS::GetHourStart,
         -1},
        {"minute end 60", S(), [](TS& s) { return s.PutMinuteEnd(60); }, false, &TS::GetMinuteEnd,
         -1},
        {"step 1439", S(), [](TS& s) { return s.PutExecutingEveryMinutes(1439); }, true,
         &TS::GetExecutingEveryMinutes, 1439},
        {"every lifts day 0 to 1", S(), [](TS& s) { return s.PutDayRecurrence(EVERY); }, true,
         &TS::GetDay, 1},
        {"every keeps day 31", S().Day(FIXED, 31), [](TS& s) { return s.PutDayRecurrence(EVERY); },
         true, &TS::GetDay, 31},
        {"every lifts fixed year -5 to 1", S().Year(FIXED, -5),
         [](TS& s) { return s.PutYearRecurrence(EVERY); }, true, &TS::GetYear, 1},
        {"a mask has no interval", S().Dow(5),
         [](TS& s) { return s.PutDayOfWeekRecurrence(EVERY); }, false,
         [](const TS& s) { return int(s.GetDayOfWeekRecurrence()); }, FIXED},
        {"mask recurrence leaves the mask", S(),
         [](TS& s) { return s.PutDayOfWeekRecurrence(FIXED); }, true, &TS::GetDayOfWeek, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto s = c.schedule.Make();
        EXPECT_EQ(c.put(*s), c.stored);
        EXPECT_EQ(c.get(*s), c.expected);
    }
}

TEST(ScheduleModel, CloneRunsTheConstructionAgain) {
    const std::unique_ptr<TimeSeries> plain(CreateTimeSeries(EVERY, 2, FIXED, 6, FIXED, 15, NONE, 0,
                                                             NONE, 0, NONE, 0, NONE, 0, EVERY, 10,
                                                             FIXED, 0, 9, 0, 17, 0, 30));
    const std::unique_ptr<TimeSeries> copy(plain->Clone());
    EXPECT_EQ(copy->GetYear(), 2);
    EXPECT_EQ(copy->GetDay(), 15);
    EXPECT_EQ(copy->GetSecondRecurrence(), EVERY);
    EXPECT_EQ(Window(*copy), Window(*plain));

    // A window beside an hour in use survives the setters but not the copy.
    const auto s = S().Hour(FIXED, 9).Make();
    for (auto put :
         {&TimeSeries::PutHourStart, &TimeSeries::PutMinuteStart, &TimeSeries::PutHourEnd,
          &TimeSeries::PutMinuteEnd, &TimeSeries::PutExecutingEveryMinutes}) {
        EXPECT_TRUE(((*s).*put)(10));
    }
    EXPECT_TRUE(s->IsIntradayWindowSet());
    TimeSeries* clone = s->Clone();
    EXPECT_EQ(Window(*clone), std::vector<int>(5, -1));
    clone->Delete();
}

}  // namespace
