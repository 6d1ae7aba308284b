#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>

#include <ZelvorDataType/DynamicTime.h>

#include "RelativeSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::kThursday;
using ZelvorRelativeTest::ReadCases;
using ZelvorRelativeTest::T;
using ZelvorRelativeTest::Text;

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

// A rule as the tables of cases write it: its kind, then words "field=value" for the
// offsets (days, months) and the fields (year, month, week, day, dow, hour, minute,
// second) it sets: "TODAY+BUSINESS_DAY days=2".
Rule ParseRule(const std::string& text) {
    const std::pair<std::string, int Rule::*> fields[] = {
        {"days", &Rule::dayOffset}, {"months", &Rule::monthOffset}, {"year", &Rule::year},
        {"month", &Rule::month},    {"week", &Rule::week},          {"day", &Rule::day},
        {"dow", &Rule::dayOfWeek},  {"hour", &Rule::hour},          {"minute", &Rule::minute},
        {"second", &Rule::second}};
    std::istringstream words(text);
    std::string kind;
    words >> kind;
    Rule rule{ZelvorRelativeTest::Kind(kind)};
    for (std::string word; words >> word;) {
        const auto field = std::find_if(std::begin(fields), std::end(fields), [&](const auto& f) {
            return word.substr(0, word.find('=')) == f.first;
        });
        if (field == std::end(fields) || word.find('=') == std::string::npos) {
            ADD_FAILURE() << "not a rule word: " << word;
            continue;
        }
        rule.*(field->second) = std::stoi(word.substr(word.find('=') + 1));
    }
    return rule;
}

class Resolve : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ZelvorRelativeTest::PinZone(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Zones, Resolve, testing::ValuesIn(ZelvorRelativeTest::kZones),
                         [](const auto& zone) {
                             return std::string(zone.param) == "Asia/Tokyo" ? "Tokyo" : "NewYork";
                         });

TEST_P(Resolve, RulesAgainstAReferenceTime) {
    for (const auto& c : ReadCases("relative/Resolutions.cases")) {
        DateTime date = T(c[2].c_str());
        ASSERT_EQ(ParseRule(c[1]).Make().ToDateTime(date), 0) << c.where << ": " << c[0];
        EXPECT_EQ(Text(date), Text(T(c[3].c_str()).ToUTCTime())) << c.where << ": " << c[0];
    }
}

TEST_P(Resolve, RulesWithoutADateLeaveTheArgument) {
    for (const auto& c : ReadCases("relative/Unresolved.cases")) {
        DateTime date = kThursday.Make();
        EXPECT_EQ(ParseRule(c[0]).Make().ToDateTime(date), -1) << c.where;
        EXPECT_EQ(Text(date), Text(kThursday.Make())) << c.where;
    }
}

}  // namespace
