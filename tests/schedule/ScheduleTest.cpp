// Schedules from their parameters on: what they record and hand back, their day and
// time-of-day patterns, and the three enumerators, with schedules no one should build.
#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "support/Schedules.h"

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

TEST(SchedulePattern, DaySeries) {
    for (const auto& c : ReadCases("schedule/DaySeries.cases")) {
        EXPECT_EQ(Days(*Parse(c[1]).Make(), c[2].c_str(), std::stoul(c[3])), c[4])
            << c.where << ": " << c[0];
    }
}

TEST(SchedulePattern, TimesOfADay) {
    for (const auto& c : ReadCases("schedule/TimesOfADay.cases")) {
        const auto s = Parse(c[1]).Make();
        std::vector<std::string> times;
        for (DateTime t = T(c[2].c_str()); times.size() < std::stoul(c[3]);) {
            const bool later = s->GetNextTime(t, t);
            times.push_back((later ? "+" : "-") + Text(t).substr(11));
        }
        EXPECT_EQ(Join(times), c[4]) << c.where << ": " << c[0];
    }
}

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

const S kDaily1030 = S().Day(EVERY, 1).At(10, 30);
const S kWindow = S().Day(EVERY, 1).Window(9, 0, 10, 0, 30);

TEST_F(ScheduleEnumerator, NextFromAStartOrALaterTime) {
    for (const auto& c : ReadCases("schedule/NextPoints.cases")) {
        EXPECT_EQ(Next(*Parse(c[1]).Make(), c[2].c_str(), std::stoul(c[4]),
                       c[3].empty() ? nullptr : c[3].c_str()),
                  c[5])
            << c.where << ": " << c[0];
    }
}

TEST_F(ScheduleEnumerator, AllInARange) {
    for (const auto& c : ReadCases("schedule/AllPoints.cases")) {
        EXPECT_EQ(All(*Parse(c[1]).Make(), c[2].c_str(), c[3].c_str()), c[4])
            << c.where << ": " << c[0];
    }
}

TEST_F(ScheduleEnumerator, ArraySizes) {
    // clang-format off
    struct Case { S schedule; int startYear, endYear; unsigned int capacity; };
    const Case cases[] = {
        {kDaily1030, 2010, 2010, 374},
        {Parse("day=E1 hour=E2 minute=F0 second=F0 ms=F0"), 2010, 2010, 8930},
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
TEST_F(ScheduleEnumerator, OddSchedulesEndAndStayInBounds) {
    constexpr unsigned int kCount = 16;
    const DateTime top(65535, 12, 31, 23, 59, 59, 999);
    for (const auto& c : ReadCases("schedule/OddSchedules.cases")) {
        SCOPED_TRACE(c.where + ": " + c[0]);
        const auto s = Parse(c[1]).Make();
        const DateTime start = T(c[2].c_str());
        const DateTime later = start + TimeSpan(0, 0, std::stoi(c[3]), 0, 0);
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

}  // namespace
