#include <gtest/gtest.h>

#include <string>

#include <ZelvorDataType/DynamicTime.h>

#include "RelativeSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::Text;
using ZelvorRelativeTest::Ymd;

constexpr DYNAMIC_TIME kBiz = DYNAMIC_TIME_BUSINESS_DAY;
constexpr DYNAMIC_TIME kRelH = DYNAMIC_TIME_RELATIVE_HOUR;
constexpr DYNAMIC_TIME kRelM = DYNAMIC_TIME_RELATIVE_MINUTE;
constexpr DYNAMIC_TIME kToday = DYNAMIC_TIME_TODAY;
constexpr DYNAMIC_TIME kMonth = DYNAMIC_TIME_THIS_MONTH;
constexpr DYNAMIC_TIME kQuarter = DYNAMIC_TIME_THIS_QUARTER;
const Ymd kThu = ZelvorRelativeTest::kThursday;

struct Rule {
    DYNAMIC_TIME kind;
    int dayOffset = 0, monthOffset = 0, year = 0, month = 0, week = 0, day = 0, dayOfWeek = -1;
    int hour = 0, minute = 0, second = 0;

    DynamicTime Make() const {
        DynamicTime rule(kind, dayOffset);
        rule.PutDynamicMonthOffset(static_cast<short>(monthOffset));
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

// Answers in local wall-clock time, before the final conversion to UTC.
const struct {
    const char* name;
    Rule rule;
    Ymd reference, local;
} kResolutions[] = {
    // clang-format off
    {"today", {kToday}, kThu, {2024, 3, 14}},
    {"now plus 2h keeps seconds", {.kind = DYNAMIC_TIME_NOW, .hour = 2}, kThu, {2024, 3, 14, 17, 30, 45}},
    {"yesterday at nine", {.kind = kToday, .day = -1, .hour = 9}, kThu, {2024, 3, 13, 9}},
    {"month back from the 31st", {.kind = kToday, .monthOffset = -1}, {2024, 3, 31, 12}, {2024, 2, 29}},
    {"months before days", {.kind = kToday, .dayOffset = -14, .monthOffset = 1}, {2024, 1, 31}, {2024, 2, 15}},
    {"business day offset", {.kind = kToday | kBiz, .dayOffset = 2}, kThu, {2024, 3, 18}},
    {"relative clock", {.kind = kToday | kRelH | kRelM, .hour = -1, .minute = 30, .second = -15}, kThu,
     {2024, 3, 14, 15, 0, 30}},
    {"friday this week", {.kind = DYNAMIC_TIME_THIS_WEEK, .dayOfWeek = 5}, kThu, {2024, 3, 15}},
    {"monday last week", {.kind = DYNAMIC_TIME_THIS_WEEK, .week = -1, .dayOfWeek = 1}, kThu, {2024, 3, 4}},
    {"wednesday from sunday", {DYNAMIC_TIME_THIS_WEDNESDAY}, {2024, 3, 17}, {2024, 3, 20}},
    {"wednesday from saturday", {DYNAMIC_TIME_THIS_WEDNESDAY}, {2024, 3, 16}, {2024, 3, 13}},
    {"weekday kind, other weekday", {.kind = DYNAMIC_TIME_THIS_MONDAY, .dayOfWeek = 5}, kThu, {2024, 3, 15}},
    {"end of month", {.kind = kMonth, .day = -1}, {2024, 2, 10}, {2024, 2, 29}},
    {"5th monday falls to 4th", {.kind = kMonth, .week = 5, .dayOfWeek = 1}, {2024, 2, 10}, {2024, 2, 26}},
    {"-5th monday climbs to -3rd", {.kind = kMonth, .week = -5, .dayOfWeek = 1}, {2024, 2, 10}, {2024, 2, 5}},
    {"3rd monday next month", {.kind = kMonth, .month = 1, .week = 3, .dayOfWeek = 1}, kThu, {2024, 4, 15}},
    {"3rd business day", {.kind = kMonth | kBiz, .day = 3}, {2024, 6, 12}, {2024, 6, 5}},
    {"2nd last business day", {.kind = kMonth | kBiz, .day = -2}, {2024, 6, 12}, {2024, 6, 26}},
    {"last business day to monday", {.kind = kMonth | kBiz, .day = -1}, kThu, {2024, 4, 1}},
    {"last business day last month", {.kind = kMonth | kBiz, .month = -1, .day = -1}, {2024, 4, 10},
     {2024, 3, 29}},
    {"last business day of quarter", {.kind = kQuarter | kBiz, .day = -1}, kThu, {2024, 3, 29}},
    {"5th day of quarter", {.kind = kQuarter, .day = 5}, {2024, 8, 20}, {2024, 7, 5}},
    {"end of quarter", {.kind = kQuarter, .day = -1}, {2024, 8, 20}, {2024, 9, 30}},
    {"3rd monday, 2nd month", {.kind = kQuarter, .month = 2, .week = 3, .dayOfWeek = 1}, {2024, 8, 20},
     {2024, 8, 19}},
    {"negative day wins over month", {.kind = kQuarter, .month = 1, .week = 1, .day = -1, .dayOfWeek = 1},
     {2024, 8, 20}, {2024, 9, 30}},
    {"end of february", {.kind = DYNAMIC_TIME_THIS_YEAR, .month = 2, .day = -1}, kThu, {2024, 2, 29}},
    {"4th thursday of november", {.kind = DYNAMIC_TIME_THIS_YEAR, .month = 11, .week = 4, .dayOfWeek = 4},
     kThu, {2024, 11, 28}},
    {"fixed date", {.kind = DYNAMIC_TIME_FIXED_DATE, .year = 2024, .month = 2, .day = -1, .hour = 8,
     .minute = 30}, {2031, 7, 7}, {2024, 2, 29, 8, 30}},
    {"fixed occurrence falls back", {.kind = DYNAMIC_TIME_NOW | DYNAMIC_TIME_FIXED_DATE, .year = 2024,
     .month = 2, .week = 5, .dayOfWeek = 1, .hour = 1}, kThu, {2024, 2, 26, 16, 30, 45}},
    {"weekend fix forward", {.kind = DYNAMIC_TIME_NOW | kBiz | kRelH, .dayOfWeek = 0, .hour = 3}, kThu,
     {2024, 3, 15, 18, 30, 45}},
    {"weekend fix backward", {.kind = DYNAMIC_TIME_NOW | kBiz | kRelH, .dayOfWeek = 0, .hour = -3}, kThu,
     {2024, 3, 12, 12, 30, 45}},
    {"saturday fix by minutes", {.kind = DYNAMIC_TIME_NOW | kBiz | kRelH | kRelM, .dayOfWeek = 6,
     .minute = 5}, kThu, {2024, 3, 16, 15, 35, 45}},
    // clang-format on
};

class Resolve : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ZelvorRelativeTest::PinZone(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Zones, Resolve, testing::ValuesIn(ZelvorRelativeTest::kZones),
                         [](const auto& zone) {
                             return std::string(zone.param) == "Asia/Tokyo" ? "Tokyo" : "NewYork";
                         });

TEST_P(Resolve, RulesAgainstAReferenceTime) {
    for (const auto& c : kResolutions) {
        DateTime date = c.reference.Make();
        ASSERT_EQ(c.rule.Make().ToDateTime(date), 0) << c.name;
        EXPECT_EQ(Text(date), Text(c.local.Make().ToUTCTime())) << c.name;
    }
}

TEST_P(Resolve, RulesWithoutADateLeaveTheArgument) {
    const Rule rules[] = {
        {DYNAMIC_TIME_EARLIEST},
        {DYNAMIC_TIME_EARLIEST | DYNAMIC_TIME_FIXED_DATE | kBiz},
        {DYNAMIC_TIME_LATEST | kRelH},
        {DYNAMIC_TIME_NONE},
        {static_cast<DYNAMIC_TIME>(15)},
        {static_cast<DYNAMIC_TIME>(0x1FF)},
        {.kind = kMonth, .week = 3, .dayOfWeek = 7},  // a weekday above 6 names no day
        {.kind = kQuarter, .month = 1, .week = -2, .dayOfWeek = 9},
    };
    for (const Rule& rule : rules) {
        DateTime date = kThu.Make();
        EXPECT_EQ(rule.Make().ToDateTime(date), -1) << "kind " << rule.kind;
        EXPECT_EQ(Text(date), Text(kThu.Make())) << "kind " << rule.kind;
    }
}

}  // namespace
