#include <gtest/gtest.h>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

class SchedulePattern : public testing::Test {
  protected:
    ZoneScope mZone{"UTC0"};
};

// The first `n` days of a schedule, by GetFirstDay and then GetNextDay on its own
// result; "end" where the series ends.
std::vector<std::string> Days(const TimeSeriesImpl& s, const char* from, size_t n) {
    std::vector<std::string> days;
    DateTime day = T(from);
    for (bool found = s.GetFirstDay(day); days.size() < n; found = s.GetNextDay(day, day)) {
        days.push_back(found ? Text(day).substr(0, Text(day).find(" ")) : "end");
        if (!found) {
            break;
        }
    }
    return days;
}

TEST_F(SchedulePattern, DaySeries) {
    struct Case {
        const char* what;
        S schedule;
        const char* from;
        std::vector<std::string> days;
    };
    const Case cases[] = {
        {"every 3 days",
         S().Day(EVERY, 3),
         "2010-03-01 17:45",
         {"2010-03-01", "2010-03-04", "2010-03-07"}},
        {"the 31st, passing months without it",
         S().Day(FIXED, 31),
         "2010-03-01",
         {"2010-03-31", "2010-05-31", "2010-07-31", "2010-08-31"}},
        {"31st of every second month",
         S().Day(FIXED, 31).Month(EVERY, 2),
         "2010-01-01",
         {"2010-01-31", "2010-03-31", "2010-05-31", "2010-07-31", "2011-01-31"}},
        {"31st of every third month",
         S().Day(FIXED, 31).Month(EVERY, 3),
         "2010-01-01",
         {"2010-01-31", "2010-07-31", "2010-10-31", "2011-01-31"}},
        {"every day of every second month",
         S().Day(EVERY, 1).Month(EVERY, 2),
         "2010-01-30",
         {"2010-01-30", "2010-01-31", "2010-03-01", "2010-03-02"}},
        {"second Monday",
         S().Week(FIXED, 2).Dow(2),
         "2010-03-01",
         {"2010-03-08", "2010-04-12", "2010-05-10", "2010-06-14"}},
        {"last Friday",
         S().Week(FIXED, -1).Dow(32),
         "2010-03-01",
         {"2010-03-26", "2010-04-30", "2010-05-28", "2010-06-25"}},
        {"week 5 is days 29 to 31",
         S().Week(FIXED, 5),
         "2010-02-01",
         {"2010-03-29", "2010-03-30", "2010-03-31", "2010-04-29"}},
        {"Mon, Wed, Fri of every second week",
         S().Week(EVERY, 2).Dow(42),
         "2010-03-01",
         {"2010-03-01", "2010-03-03", "2010-03-05", "2010-03-15", "2010-03-17", "2010-03-19",
          "2010-03-29", "2010-03-31"}},
        {"Mon, Wed of every third week",
         S().Week(EVERY, 3).Dow(10),
         "2010-03-01",
         {"2010-03-01", "2010-03-03", "2010-03-22", "2010-03-24", "2010-04-12"}},
        {"every second week from a Wednesday",
         S().Week(EVERY, 2),
         "2010-03-03",
         {"2010-03-03", "2010-03-04", "2010-03-05", "2010-03-06", "2010-03-14", "2010-03-15",
          "2010-03-16", "2010-03-17", "2010-03-18", "2010-03-19", "2010-03-20", "2010-03-28"}},
        {"a day-of-week interval tests nothing",
         S().Set(4, EVERY, 1),
         "2010-03-01",
         {"2010-03-01", "2010-03-02"}},
        {"a day interval switches the week off",
         S().Day(EVERY, 7).Week(FIXED, 0).Dow(1),
         "2010-03-02",
         {"2010-03-02", "2010-03-09"}},
        {"29 February",
         S().Month(FIXED, 2).Day(FIXED, 29),
         "2010-06-15",
         {"2012-02-29", "2016-02-29", "2020-02-29"}},
        {"1 March of every second year",
         S().Year(EVERY, 2).Month(FIXED, 3).Day(FIXED, 1),
         "2010-01-01",
         {"2010-03-01", "2012-03-01", "2014-03-01"}},
        {"a fixed year ahead: the search resumes after the jumped date",
         S().Year(FIXED, 2012).Day(EVERY, 1),
         "2010-06-15",
         {"2012-06-16", "2012-06-17"}},
        {"29 February jumps to the 28th, then the 1st",
         S().Year(FIXED, 2013).Day(EVERY, 1),
         "2012-02-29",
         {"2013-03-01"}},
        {"the last day of the fixed year ends the series",
         S().Year(FIXED, 2010).Month(FIXED, 12).Day(FIXED, 31),
         "2010-01-01",
         {"2010-12-31", "end"}},
        {"every 400 years widens the search",
         S().Year(EVERY, 400).Month(FIXED, 1).Day(FIXED, 1),
         "2000-01-01",
         {"2000-01-01", "2400-01-01", "2800-01-01"}},
        {"week 0 matches nothing", S().Week(FIXED, 0), "2010-03-01", {"end"}},
        {"a fixed year in the past", S().Year(FIXED, 2009), "2010-03-01", {"end"}},
        {"year every 0 has no search", S().Year(EVERY, 0).Month(FIXED, 5), "2010-03-01", {"end"}},
        {"no day passes 65535-12-30",
         S().Day(EVERY, 1),
         "65535-12-29",
         {"65535-12-29", "65535-12-30", "end"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(Days(*c.schedule.Make(), c.from, c.days.size()), c.days);
    }
}

TEST_F(SchedulePattern, NextDayKeepsTheTimeOnlyForTheDayAfter) {
    DateTime day = T("2010-03-01 10:30");
    ASSERT_TRUE(S().Day(EVERY, 1).Make()->GetNextDay(day, day));
    EXPECT_EQ(Text(day), "2010-03-02 10:30");
    ASSERT_TRUE(S().Day(EVERY, 2).Make()->GetNextDay(day, day));
    EXPECT_EQ(Text(day), "2010-03-04 00:00");
    DateTime unchanged = T("2010-03-01 10:30");
    EXPECT_FALSE(S().Year(FIXED, 2009).Make()->GetFirstDay(unchanged));
    EXPECT_EQ(Text(unchanged), "2010-03-01 10:30");
}

TEST_F(SchedulePattern, TimeSeries) {
    struct Case {
        const char* what;
        S schedule;
        const char* from;
        std::vector<std::string> times;  // "+" a later time, "-" false and the rolled-over time
    };
    const Case cases[] = {
        {"minute carries into the hour interval",
         S().Hour(EVERY, 2).Minute(EVERY, 20),
         "2010-03-01",
         {"+00:20", "+00:40", "+02:00", "+02:20", "+02:40"}},
        {"minute remainder runs into the next hour",
         S().Hour(EVERY, 1).Minute(EVERY, 45),
         "2010-03-01",
         {"+00:45", "+01:30", "+02:15", "+03:00", "+03:45"}},
        {"every 5 hours rolls over on the same date",
         S().Hour(EVERY, 5),
         "2010-03-01 20:00",
         {"-01:00", "+06:00"}},
        {"the minute steps before the hour is set",
         S().Hour(FIXED, 10).Minute(EVERY, 15),
         "2010-03-01",
         {"+10:15", "+10:30", "+10:45", "-10:00"}},
        {"a fixed time is reached once", S().At(10, 30), "2010-03-01 10:30", {"-10:30"}},
        {"a fixed time rolls back", S().At(10, 30), "2010-03-01 12:00", {"-10:30"}},
        {"seconds counted from the end",
         S().Minute(EVERY, 5).Second(FIXED, -10),
         "2010-03-01",
         {"+00:00:50", "+00:05:50", "+00:10:50"}},
        {"hour -1 is the last hour", S().Hour(FIXED, -1), "2010-03-01", {"+23:00", "-23:00"}},
        {"milliseconds carry into seconds",
         S().Second(EVERY, 1).Ms(EVERY, 250),
         "2010-03-01",
         {"+00:00:00.250", "+00:00:00.500", "+00:00:00.750", "+00:00:01"}},
        {"no time field in use", S(), "2010-03-01 07:07", {"-07:07"}},
        {"every 15 minutes never moves an unused hour",
         S().Minute(EVERY, 15),
         "2010-03-01 00:45",
         {"-00:00"}},
        {"an interval of a whole range moves the hour",
         S().Minute(EVERY, 90).Hour(EVERY, 1),
         "2010-03-01 10:50",
         {"+12:20"}},
        {"a zero interval stands still",
         S().Hour(EVERY, 0).Minute(EVERY, 30),
         "2010-03-01",
         {"+00:30", "-00:00"}},
        {"an hour that can't be placed",
         S().Hour(FIXED, 30).Minute(EVERY, 5),
         "2010-03-01 08:00",
         {"-08:00"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto s = c.schedule.Make();
        std::vector<std::string> times;
        DateTime t = T(c.from);
        while (times.size() < c.times.size()) {
            const bool later = s->GetNextTime(t, t);
            times.push_back((later ? "+" : "-") + Text(t).substr(11));
        }
        EXPECT_EQ(times, c.times);
    }
}

TEST_F(SchedulePattern, TimeTests) {
    struct Case {
        S schedule;
        const char* anchor;  // null: no anchor
        const char* time;
        bool in;
    };
    const Case cases[] = {
        {S().Hour(EVERY, 5), "2010-03-01 20:00", "2010-03-02 01:00", true},
        {S().Hour(EVERY, 5), "2010-03-01 20:00", "2010-03-02 00:00", false},
        {S().Hour(EVERY, 5), nullptr, "2010-03-02 00:07", true},
        {S().Hour(FIXED, -1), nullptr, "2010-03-01 23:00", false},
        {S().At(10, 30), nullptr, "2010-03-01 10:30", true},
        {S().At(10, 30), nullptr, "2010-03-01 10:30:01", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.time);
        DateTime time = T(c.time);
        const DateTime anchor = T(c.anchor == nullptr ? "2000-01-01" : c.anchor);
        EXPECT_EQ(c.schedule.Make()->IsTimeInPattern(c.anchor ? &anchor : nullptr, time), c.in);
    }
}

TEST_F(SchedulePattern, WithinWindow) {
    const auto s = S().Window(9, 0, 10, 0, 30).Make();
    EXPECT_TRUE(s->IsWithinIntradayWindow(T("2010-03-01 10:00:59")));
    EXPECT_FALSE(s->IsWithinIntradayWindow(T("2010-03-01 10:01")));
    EXPECT_TRUE(s->IsWithinIntradayWindow(T("2010-03-01 09:00")));
    EXPECT_FALSE(s->IsWithinIntradayWindow(T("2010-03-01 08:59:59")));
    EXPECT_FALSE(S().Window(22, 0, 2, 0, 30).Make()->IsWithinIntradayWindow(T("2010-03-01 23:00")));
    EXPECT_FALSE(S().Make()->IsWithinIntradayWindow(T("2010-03-01 00:00")));
}

}  // namespace
