#include <gtest/gtest.h>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

// The first `n` days of a schedule, by GetFirstDay and then GetNextDay on its own
// result, dates only; "end" where the series ends.
std::string Days(const TimeSeriesImpl& s, const char* from, size_t n) {
    std::vector<std::string> days;
    DateTime day = T(from);
    for (bool found = s.GetFirstDay(day); days.size() < n; found = s.GetNextDay(day, day)) {
        days.push_back(found ? Text(day).substr(0, Text(day).find(' ')) : "end");
        if (!found) {
            break;
        }
    }
    return Join(days);
}

// clang-format off
TEST(SchedulePattern, DaySeries) {
    struct Case { const char* what; S schedule; const char* from; size_t n; const char* days; };
    const Case cases[] = {
        {"months without the 31st are passed over", S().Day(FIXED, 31), "2010-03-01", 3,
         "2010-03-31, 2010-05-31, 2010-07-31"},
        {"31st of every second month", S().Day(FIXED, 31).Month(EVERY, 2), "2010-05-01", 3,
         "2010-05-31, 2010-07-31, 2011-01-31"},
        {"week 5 is days 29 to 31", S().Week(FIXED, 5), "2010-02-01", 4,
         "2010-03-29, 2010-03-30, 2010-03-31, 2010-04-29"},
        {"Mon, Wed, Fri of every second week", S().Week(EVERY, 2).Dow(42), "2010-03-01", 7,
         "2010-03-01, 2010-03-03, 2010-03-05, 2010-03-15, 2010-03-17, 2010-03-19, 2010-03-29"},
        {"Mon, Wed of every third week", S().Week(EVERY, 3).Dow(10), "2010-03-01", 5,
         "2010-03-01, 2010-03-03, 2010-03-22, 2010-03-24, 2010-04-12"},
        {"every second week from a Wednesday", S().Week(EVERY, 2), "2010-03-05", 4,
         "2010-03-05, 2010-03-06, 2010-03-14, 2010-03-15"},
        {"a day interval switches week and mask off", S().Day(EVERY, 7).Week(FIXED, 0).Dow(1),
         "2010-03-02", 2, "2010-03-02, 2010-03-09"},
        {"1 March of every second year", S().Year(EVERY, 2).Month(FIXED, 3).Day(FIXED, 1),
         "2010-01-01", 3, "2010-03-01, 2012-03-01, 2014-03-01"},
        {"every 400 years widens the search", S().Year(EVERY, 400).Month(FIXED, 1).Day(FIXED, 1),
         "2000-01-01", 2, "2000-01-01, 2400-01-01"},
        {"a year ahead: the search resumes after the jumped date",
         S().Year(FIXED, 2012).Day(EVERY, 1), "2010-06-15", 1, "2012-06-16"},
        {"29 February jumps to the 28th", S().Year(FIXED, 2013).Day(EVERY, 1), "2012-02-29", 1,
         "2013-03-01"},
        {"the fixed year's last day ends it", S().Year(FIXED, 2010).Month(FIXED, 12).Day(FIXED, 31),
         "2010-01-01", 2, "2010-12-31, end"},
        {"week 0 matches nothing", S().Week(FIXED, 0), "2010-03-01", 1, "end"},
        {"a fixed year in the past", S().Year(FIXED, 2009), "2010-03-01", 1, "end"},
        {"year every 0 has no search", S().Year(EVERY, 0).Month(FIXED, 5), "2010-03-01", 1, "end"},
        {"no day after 65535-12-30", S().Day(EVERY, 1), "65535-12-29", 3,
         "65535-12-29, 65535-12-30, end"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Days(*c.schedule.Make(), c.from, c.n), c.days) << c.what;
    }
}

TEST(SchedulePattern, TimesOfADay) {
    // GetNextTime from its own result: "+" a later time, "-" false and the time rolled to.
    struct Case { const char* what; S schedule; const char* from; size_t n; const char* times; };
    const Case cases[] = {
        {"the minute carries into the hour's interval", S().Hour(EVERY, 2).Minute(EVERY, 20),
         "2010-03-01", 5, "+00:20, +00:40, +02:00, +02:20, +02:40"},
        {"a remainder runs into the next hour", S().Hour(EVERY, 1).Minute(EVERY, 45),
         "2010-03-01", 3, "+00:45, +01:30, +02:15"},
        {"every 5 hours rolls over on the same date", S().Hour(EVERY, 5), "2010-03-01 20:00", 2,
         "-01:00, +06:00"},
        {"the minute steps before the hour is set", S().Hour(FIXED, 10).Minute(EVERY, 15),
         "2010-03-01", 4, "+10:15, +10:30, +10:45, -10:00"},
        {"a fixed time rolls back", S().At(10, 30), "2010-03-01 12:00", 1, "-10:30"},
        {"seconds counted from the end", S().Minute(EVERY, 5).Second(FIXED, -10), "2010-03-01", 2,
         "+00:00:50, +00:05:50"},
        {"hour -1 is the last hour", S().Hour(FIXED, -1), "2010-03-01", 2, "+23:00, -23:00"},
        {"milliseconds carry into seconds", S().Second(EVERY, 1).Ms(EVERY, 250),
         "2010-03-01 00:00:00.750", 1, "+00:00:01"},
        {"no time field in use", S(), "2010-03-01 07:07", 1, "-07:07"},
        {"an unused hour is never moved", S().Minute(EVERY, 15), "2010-03-01 00:45", 1, "-00:00"},
        {"an interval of a whole range moves the hour", S().Minute(EVERY, 90).Hour(EVERY, 1),
         "2010-03-01 10:50", 1, "+12:20"},
        {"a zero interval stands still", S().Hour(EVERY, 0).Minute(EVERY, 30), "2010-03-01", 2,
         "+00:30, -00:00"},
        {"an hour that can't be placed", S().Hour(FIXED, 30).Minute(EVERY, 5), "2010-03-01 08:00",
         1, "-08:00"},
    };
    for (const Case& c : cases) {
        const auto s = c.schedule.Make();
        std::vector<std::string> times;
        for (DateTime t = T(c.from); times.size() < c.n;) {
            const bool later = s->GetNextTime(t, t);
            times.push_back((later ? "+" : "-") + Text(t).substr(11));
        }
        EXPECT_EQ(Join(times), c.times) << c.what;
    }
}
// clang-format on

TEST(SchedulePattern, TimeAndWindowTests) {
    DateTime anchor = T("2010-03-01 20:00"), one = T("2010-03-02 01:00"),
             eleven = T("2010-03-01 23:00");
    EXPECT_TRUE(S().Hour(EVERY, 5).Make()->IsTimeInPattern(&anchor, one));  // 1 + 24 - 20 is 5
    EXPECT_FALSE(S().Hour(FIXED, -1).Make()->IsTimeInPattern(nullptr, eleven));
    ZoneScope zone("UTC0");
    const auto window = S().Window(9, 0, 10, 0, 30).Make();
    EXPECT_TRUE(window->IsWithinIntradayWindow(T("2010-03-01 10:00:59")));
    EXPECT_FALSE(window->IsWithinIntradayWindow(T("2010-03-01 10:01")));
    EXPECT_FALSE(S().Window(22, 0, 2, 0, 30).Make()->IsWithinIntradayWindow(eleven));
}

}  // namespace
