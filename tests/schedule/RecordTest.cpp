// What a schedule records of the parameters it is built from and hands back: the
// rules of construction, the window, copies and the saved record.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
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

}  // namespace
