// Schedules from their parameters on: what they record and hand back, their day and
// time-of-day patterns, and the three enumerators, with schedules no one should build.
#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "ScheduleSupport.h"

namespace {

using namespace ScheduleTest;

using TS = TimeSeries;

std::vector<int> Window(const TS& s) {
    return {s.GetHourStart(), s.GetMinuteStart(), s.GetHourEnd(), s.GetMinuteEnd(),
            s.GetExecutingEveryMinutes()};
}

// clang-format off
TEST(ScheduleRecord, ConstructionRules) {
    struct Case {
        const char* what; S schedule; int (TS::*get)() const; int stored; std::vector<int> window;
    };
    const std::vector<int> unset(5, -1);
    const Case cases[] = {
        {"an interval is stored as its magnitude", S().Day(EVERY, -5), &TS::GetDay, 5, unset},
        {"a fixed value stays as given", S().Day(FIXED, -5), &TS::GetDay, -5, unset},
        {"interval 0 stays 0", S().Hour(EVERY, 0), &TS::GetHour, 0, unset},
        {"INT_MIN has no magnitude", S().Week(EVERY, INT_MIN), &TS::GetWeek, INT_MAX, unset},
        {"the mask is negated too", S().Set(4, EVERY, -3), &TS::GetDayOfWeek, 3, unset},
        {"a window beside a fixed hour goes", S().Hour(FIXED, 9).Window(9, 0, 17, 0, 30),
         &TS::GetHour, 9, unset},
        {"a window beside unused hour and minute stays", S().Second(EVERY, 5).Window(9, 0, 17, 0,
         30),
         &TS::GetSecond, 5, {9, 0, 17, 0, 30}},
        {"'unused' means exactly NONE", S().Hour(RECURRENCE(7), 0).Window(9, 0, 17, 0, 30),
         &TS::GetHour, 0, unset},
        {"hour start 24 alone goes", S().Window(24, 0, 17, 0, 30), &TS::GetHourEnd, 17,
         {-1, 0, 17, 0, 30}},
        {"step 1440 alone goes", S().Window(9, 0, 17, 0, 1440), &TS::GetHourEnd, 17, {9, 0, 17, 0,
         -1}},
        {"step 0 is a set window", S().Window(9, 0, 17, 0, 0), &TS::GetHourEnd, 17, {9, 0, 17, 0,
         0}},
    };
    for (const Case& c : cases) {
        const auto s = c.schedule.Make();
        EXPECT_EQ(((*s).*c.get)(), c.stored) << c.what;
        EXPECT_EQ(Window(*s), c.window) << c.what;
        EXPECT_EQ(s->IsIntradayWindowSet(), c.window[0] != -1 && c.window[4] != -1) << c.what;
    }
}

TEST(ScheduleRecord, SettersRefuseAndKeep) {
    // A setter with its argument, whether it stores, and the value read back.
    struct Case {
        S schedule; bool (TS::*put)(int); int arg; bool ok; int (TS::*get)() const; int value;
    };
    const Case cases[] = {
        {S().Month(FIXED, 3), &TS::PutMonth, -1, true, &TS::GetMonth, -1},
        {S().Month(EVERY, 3), &TS::PutMonth, -1, false, &TS::GetMonth, 3},
        {S().Day(FIXED, 3), &TS::PutDay, 0, false, &TS::GetDay, 3},
        {S().Year(EVERY, 2), &TS::PutYear, 0, false, &TS::GetYear, 2},
        {S().Year(FIXED, 2), &TS::PutYear, 0, true, &TS::GetYear, 0},
        {S().Dow(5), &TS::PutDayOfWeek, 0, false, &TS::GetDayOfWeek, 5},
        {S(), &TS::PutHour, 24, false, &TS::GetHour, 0},
        {S().Hour(EVERY, 2), &TS::PutHour, 0, true, &TS::GetHour, 0},
        {S(), &TS::PutMillisecond, 1000, false, &TS::GetMillisecond, 0},
        {S(), &TS::PutMinuteEnd, 60, false, &TS::GetMinuteEnd, -1},
        {S(), &TS::PutExecutingEveryMinutes, 1439, true, &TS::GetExecutingEveryMinutes, 1439},
    };
    for (const Case& c : cases) {
        const auto s = c.schedule.Make();
        EXPECT_EQ(((*s).*c.put)(c.arg), c.ok) << c.arg;
        EXPECT_EQ(((*s).*c.get)(), c.value) << c.arg;
    }
    // Turning a field into an interval lifts a value below 1 to 1; a mask has none.
    const auto s = S().Day(FIXED, 0).Week(FIXED, 31).Dow(5).Make();
    EXPECT_TRUE(s->PutDayRecurrence(EVERY) && s->PutWeekRecurrence(EVERY));
    EXPECT_EQ(s->GetDay() * 100 + s->GetWeek(), 131);
    EXPECT_FALSE(s->PutDayOfWeekRecurrence(EVERY));
    EXPECT_EQ(s->GetDayOfWeekRecurrence(), FIXED);
}
// clang-format on

TEST(ScheduleRecord, CloneRunsTheConstructionAgain) {
    const std::unique_ptr<TS> plain(CreateTimeSeries(EVERY, 2, FIXED, 6, FIXED, 15, NONE, 0, NONE,
                                                     0, NONE, 0, NONE, 0, EVERY, 10, FIXED, 0, 9, 0,
                                                     17, 0, 30));
    const std::unique_ptr<TS> copy(plain->Clone());
    EXPECT_EQ(copy->GetYear() * 100 + copy->GetSecond(), 210);
    EXPECT_EQ(Window(*copy), Window(*plain));
    // A window beside an hour in use survives the setters but not the copy.
    const auto s = S().Hour(FIXED, 9).Window(9, 0, 17, 0, 30).Make();
    EXPECT_TRUE(s->PutHourStart(9) && s->PutMinuteStart(0) && s->PutHourEnd(17) &&
                s->PutMinuteEnd(0) && s->PutExecutingEveryMinutes(30) && s->IsIntradayWindowSet());
    TS* clone = s->Clone();
    EXPECT_EQ(Window(*clone), std::vector<int>(5, -1));
    clone->Delete();
}

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
