#include <gtest/gtest.h>

#include <ZelvorDataType/DynamicTime.h>

#include "RelativeSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::kThursday;
using ZelvorRelativeTest::Text;
using ZelvorRelativeTest::Ymd;
using ZelvorRelativeTest::ZoneScope;

constexpr DYNAMIC_TIME kBusiness = DYNAMIC_TIME_BUSINESS_DAY;
constexpr DYNAMIC_TIME kRelHour = DYNAMIC_TIME_RELATIVE_HOUR;
constexpr DYNAMIC_TIME kRelMinute = DYNAMIC_TIME_RELATIVE_MINUTE;

struct Rule {
    DYNAMIC_TIME kind;
    int dayOffset = 0;
    short monthOffset = 0;
    int year = 0;
    int month = 0;
    int week = 0;
    int day = 0;
    int dayOfWeek = -1;
    int hour = 0;
    int minute = 0;
    int second = 0;

    DynamicTime Make() const {
        DynamicTime rule(kind, dayOffset);
        rule.PutDynamicMonthOffset(monthOffset);
        rule.PutYear(year);
        rule.PutMonth(month);
        rule.PutWeek(week);
        rule.PutDay(day);
        rule.PutDayOfWeek(dayOfWeek);
        rule.PutHour(hour);
        rule.PutMinute(minute);
        rule.PutSecond(second);
        return rule;
    }
};

struct Resolution {
    const char* name;
    Rule rule;
    Ymd reference;
    Ymd expectedLocal;
};

// Every answer is local wall-clock time before the final conversion to UTC.
const Resolution kResolutions[] = {
    {"today", {DYNAMIC_TIME_TODAY}, kThursday, {2024, 3, 14}},
    {"now plus two hours keeps seconds",
     {.kind = DYNAMIC_TIME_NOW, .hour = 2},
     kThursday,
     {2024, 3, 14, 17, 30, 45}},
    {"yesterday at nine",
     {.kind = DYNAMIC_TIME_TODAY, .day = -1, .hour = 9},
     kThursday,
     {2024, 3, 13, 9}},
    {"month back from the 31st",
     {.kind = DYNAMIC_TIME_TODAY, .monthOffset = -1},
     {2024, 3, 31, 12},
     {2024, 2, 29}},
    {"month offset before day offset",
     {.kind = DYNAMIC_TIME_TODAY, .dayOffset = -14, .monthOffset = 1},
     {2024, 1, 31},
     {2024, 2, 15}},
    {"business day offset over a weekend",
     {.kind = DYNAMIC_TIME_TODAY | kBusiness, .dayOffset = 2},
     kThursday,
     {2024, 3, 18}},
    {"relative clock time",
     {.kind = DYNAMIC_TIME_TODAY | kRelHour | kRelMinute, .hour = -1, .minute = 30, .second = -15},
     kThursday,
     {2024, 3, 14, 15, 0, 30}},
    {"friday of this week",
     {.kind = DYNAMIC_TIME_THIS_WEEK, .dayOfWeek = 5},
     kThursday,
     {2024, 3, 15}},
    {"monday of last week",
     {.kind = DYNAMIC_TIME_THIS_WEEK, .week = -1, .dayOfWeek = 1},
     kThursday,
     {2024, 3, 4}},
    {"wednesday from a sunday", {DYNAMIC_TIME_THIS_WEDNESDAY}, {2024, 3, 17}, {2024, 3, 20}},
    {"wednesday from a saturday", {DYNAMIC_TIME_THIS_WEDNESDAY}, {2024, 3, 16}, {2024, 3, 13}},
    {"weekday kind with another weekday",
     {.kind = DYNAMIC_TIME_THIS_MONDAY, .dayOfWeek = 5},
     kThursday,
     {2024, 3, 15}},
    {"end of month", {.kind = DYNAMIC_TIME_THIS_MONTH, .day = -1}, {2024, 2, 10}, {2024, 2, 29}},
    {"fifth monday falls back to the fourth",
     {.kind = DYNAMIC_TIME_THIS_MONTH, .week = 5, .dayOfWeek = 1},
     {2024, 2, 10},
     {2024, 2, 26}},
    {"minus fifth monday climbs to minus third",
     {.kind = DYNAMIC_TIME_THIS_MONTH, .week = -5, .dayOfWeek = 1},
     {2024, 2, 10},
     {2024, 2, 5}},
    {"third monday of next month",
     {.kind = DYNAMIC_TIME_THIS_MONTH, .month = 1, .week = 3, .dayOfWeek = 1},
     kThursday,
     {2024, 4, 15}},
    {"third business day",
     {.kind = DYNAMIC_TIME_THIS_MONTH | kBusiness, .day = 3},
     {2024, 6, 12},
     {2024, 6, 5}},
    {"second last business day",
     {.kind = DYNAMIC_TIME_THIS_MONTH | kBusiness, .day = -2},
     {2024, 6, 12},
     {2024, 6, 26}},
    {"last business day heads for monday",
     {.kind = DYNAMIC_TIME_THIS_MONTH | kBusiness, .day = -1},
     kThursday,
     {2024, 4, 1}},
    {"last business day of last month",
     {.kind = DYNAMIC_TIME_THIS_MONTH | kBusiness, .month = -1, .day = -1},
     {2024, 4, 10},
     {2024, 3, 29}},
    {"last business day of the quarter",
     {.kind = DYNAMIC_TIME_THIS_QUARTER | kBusiness, .day = -1},
     kThursday,
     {2024, 3, 29}},
    {"fifth day of the quarter",
     {.kind = DYNAMIC_TIME_THIS_QUARTER, .day = 5},
     {2024, 8, 20},
     {2024, 7, 5}},
    {"end of the quarter",
     {.kind = DYNAMIC_TIME_THIS_QUARTER, .day = -1},
     {2024, 8, 20},
     {2024, 9, 30}},
    {"third monday of the quarter's second month",
     {.kind = DYNAMIC_TIME_THIS_QUARTER, .month = 2, .week = 3, .dayOfWeek = 1},
     {2024, 8, 20},
     {2024, 8, 19}},
    {"negative day ignores the chosen month",
     {.kind = DYNAMIC_TIME_THIS_QUARTER, .month = 1, .week = 1, .day = -1, .dayOfWeek = 1},
     {2024, 8, 20},
     {2024, 9, 30}},
    {"end of february this year",
     {.kind = DYNAMIC_TIME_THIS_YEAR, .month = 2, .day = -1},
     kThursday,
     {2024, 2, 29}},
    {"fourth thursday of november",
     {.kind = DYNAMIC_TIME_THIS_YEAR, .month = 11, .week = 4, .dayOfWeek = 4},
     kThursday,
     {2024, 11, 28}},
    {"fixed date whatever the reference",
     {.kind = DYNAMIC_TIME_FIXED_DATE,
      .year = 2024,
      .month = 2,
      .day = -1,
      .hour = 8,
      .minute = 30},
     {2031, 7, 7, 7},
     {2024, 2, 29, 8, 30}},
    {"fixed occurrence falls back",
     {.kind = DYNAMIC_TIME_NOW | DYNAMIC_TIME_FIXED_DATE,
      .year = 2024,
      .month = 2,
      .week = 5,
      .dayOfWeek = 1,
      .hour = 1},
     kThursday,
     {2024, 2, 26, 16, 30, 45}},
    {"weekend correction forward",
     {.kind = DYNAMIC_TIME_NOW | kBusiness | kRelHour, .dayOfWeek = 0, .hour = 3},
     kThursday,
     {2024, 3, 15, 18, 30, 45}},
    {"weekend correction backward",
     {.kind = DYNAMIC_TIME_NOW | kBusiness | kRelHour, .dayOfWeek = 0, .hour = -3},
     kThursday,
     {2024, 3, 12, 12, 30, 45}},
    {"saturday correction by minutes",
     {.kind = DYNAMIC_TIME_NOW | kBusiness | kRelHour | kRelMinute, .dayOfWeek = 6, .minute = 5},
     kThursday,
     {2024, 3, 16, 15, 35, 45}},
};

class Resolve : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Zones, Resolve, testing::ValuesIn(ZelvorRelativeTest::kZones),
                         [](const auto& zoneInfo) {
                             return std::string(zoneInfo.param).substr(0, 4) == "Asia" ? "Tokyo"
                                                                                       : "NewYork";
                         });

TEST_P(Resolve, RulesAgainstAReferenceTime) {
    ZoneScope zone(GetParam());
    for (const Resolution& c : kResolutions) {
        DateTime date = c.reference.Make();
        ASSERT_EQ(c.rule.Make().ToDateTime(date), 0) << c.name;
        EXPECT_EQ(Text(date), Text(c.expectedLocal.Make().ToUTCTime())) << c.name;
        EXPECT_EQ(Text(date.ToLocalTime()), Text(c.expectedLocal.Make())) << c.name;
    }
}

TEST_P(Resolve, RulesWithoutADateLeaveTheArgument) {
    ZoneScope zone(GetParam());
    const Rule rules[] = {
        {DYNAMIC_TIME_EARLIEST},
        {DYNAMIC_TIME_EARLIEST | DYNAMIC_TIME_FIXED_DATE | kBusiness},
        {DYNAMIC_TIME_LATEST | kRelHour},
        {DYNAMIC_TIME_NONE},
        {static_cast<DYNAMIC_TIME>(15)},
        {static_cast<DYNAMIC_TIME>(0x1FF)},
        {static_cast<DYNAMIC_TIME>(-1)},
        // A weekday above 6 names no day.
        {.kind = DYNAMIC_TIME_THIS_MONTH, .week = 3, .dayOfWeek = 7},
        {.kind = DYNAMIC_TIME_THIS_QUARTER, .month = 1, .week = -2, .dayOfWeek = 9},
    };
    for (const Rule& rule : rules) {
        DateTime date = kThursday.Make();
        EXPECT_EQ(rule.Make().ToDateTime(date), -1) << "kind " << rule.kind;
        EXPECT_EQ(Text(date), Text(kThursday.Make())) << "kind " << rule.kind;
    }
}

TEST_P(Resolve, ExtremeFieldsNeverOverflow) {
    ZoneScope zone(GetParam());
    const int extremes[] = {INT_MIN, -1000000, INT_MAX};
    for (int kind = 0; kind <= DYNAMIC_TIME_THIS_QUARTER; ++kind) {
        for (int value : extremes) {
            Rule r{.kind = static_cast<DYNAMIC_TIME>(kind) | kBusiness | kRelHour | kRelMinute,
                   .dayOffset = value,
                   .monthOffset = static_cast<short>(value),
                   .year = value,
                   .month = value,
                   .week = value,
                   .day = value,
                   .dayOfWeek = 3,
                   .hour = value,
                   .minute = value,
                   .second = value};
            DateTime date = kThursday.Make();
            r.Make().ToDateTime(date);
            EXPECT_GE(date.GetMonth(), 1);
        }
    }
}

}  // namespace
