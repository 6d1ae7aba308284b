// ScheduleBuilder's records and refusals, and WhyNeverFires held to what the
// enumerators actually find.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include <ZelvorDataType/ScheduleBuilder.h>

#include "support/Schedules.h"

namespace {

using namespace ScheduleTest;
using namespace std::chrono;
using namespace std::chrono_literals;
using Builder = std::function<ScheduleBuilder()>;

// "year month day week weekdays hour minute second millisecond window": F9, E15, - for
// unused, the mask as a number, the window as h:m-h:m/step.
std::string Record(const TimeSeries& s) {
    auto field = [](RECURRENCE r, int v) {
        return r == EVERY ? "E" + std::to_string(v) : r == FIXED ? "F" + std::to_string(v) : "-";
    };
    std::string text = field(s.GetYearRecurrence(), s.GetYear()) + " " +
                       field(s.GetMonthRecurrence(), s.GetMonth()) + " " +
                       field(s.GetDayRecurrence(), s.GetDay()) + " " +
                       field(s.GetWeekRecurrence(), s.GetWeek()) + " " +
                       field(s.GetDayOfWeekRecurrence(), s.GetDayOfWeek()) + " " +
                       field(s.GetHourRecurrence(), s.GetHour()) + " " +
                       field(s.GetMinuteRecurrence(), s.GetMinute()) + " " +
                       field(s.GetSecondRecurrence(), s.GetSecond()) + " " +
                       field(s.GetMillisecondRecurrence(), s.GetMillisecond());
    if (s.GetExecutingEveryMinutes() != -1) {
        text += " " + std::to_string(s.GetHourStart()) + ":" + std::to_string(s.GetMinuteStart()) +
                "-" + std::to_string(s.GetHourEnd()) + ":" + std::to_string(s.GetMinuteEnd()) +
                "/" + std::to_string(s.GetExecutingEveryMinutes());
    }
    return text;
}

TEST(BuilderTest, NamedFieldsFillTheRecord) {
    const std::pair<Builder, const char*> cases[] = {
        {[] { return ScheduleBuilder().Weekdays(Monday, Friday).Hour(9).Minute(Every(15)); },
         "- - - - F62 F9 E15 - -"},
        {[] { return ScheduleBuilder().Minute(Every(15)).AllDay(); }, "- - - - - E1 E15 - -"},
        {[] { return ScheduleBuilder().AllDay().Second(Every(30)).Hour(9); },
         "- - - - - F9 E1 E30 -"},
        {[] { return ScheduleBuilder().Hour(Every(1)).AllDay(); }, "- - - - - E1 - - -"},
        {[] { return ScheduleBuilder().Weekdays(Friday, Monday).Week(-1); },
         "- - - F-1 F99 - - - -"},
        {[] {
             return ScheduleBuilder().Weekdays({Sunday, Wednesday}).Millisecond(500);
         },
         "- - - - F9 - - - F500"},
        {[] { return ScheduleBuilder().Day(Every(1)).Window(9h, 17h + 30min, 45min); },
         "- - E1 - - - - - - 9:0-17:30/45"},
        {[] { return ScheduleBuilder().Year(Every(4)).Month(2).Day(29); }, "E4 F2 F29 - - - - - -"},
        {[] { return ScheduleBuilder().Year(2024).Month(2).Day(29).Second(59); },
         "F2024 F2 F29 - - - - F59 -"},
    };
    for (const auto& [build, record] : cases) {
        EXPECT_EQ(Record(*build().Build()), record);
    }
}

TEST(BuilderTest, RefusesWithTheFieldAndItsValues) {
    const std::pair<Builder, const char*> cases[] = {
        {[] { return ScheduleBuilder().Hour(24); }, "hour: 24 is out of range (0 to 23)"},
        {[] { return ScheduleBuilder().Minute(Every(60)); },
         "minute: every 60 is out of range (every 1 to every 59)"},
        {[] { return ScheduleBuilder().Year(Every(0)); }, "year: every 0 is out of range"},
        {[] { return ScheduleBuilder().Week(0); }, "week: 0 matches no day"},
        {[] { return ScheduleBuilder().WeekdayMask(128); }, "weekdays: the mask 128"},
        {[] { return ScheduleBuilder().Weekdays({}); }, "weekdays: the mask 0"},
        {[] { return ScheduleBuilder().Weekdays(weekday(9), Monday); }, "Sunday to Saturday"},
        {[] { return ScheduleBuilder().Window(17h, 9h, 30min); },
         "window: it closes at 9:00, before it opens at 17:00"},
        {[] { return ScheduleBuilder().Window(9h, 17h, 0min); }, "window: a step of 0 minutes"},
        {[] { return ScheduleBuilder().Window(9h, 24h, 5min); }, "closing 1440 minutes"},
        {[] { return ScheduleBuilder().Month(4).Day(31); },
         "never fire: day 31 never falls in April, which has 30 days"},
        {[] { return ScheduleBuilder().Month(2).Day(30); }, "28 days, 29 in a leap year"},
        {[] { return ScheduleBuilder().Year(2023).Month(2).Day(29); }, "2023 is not a leap year"},
        {[] { return ScheduleBuilder().Year(2023).Month(2).Week(-5).WeekdayMask(127); },
         "week -5 never falls in February 2023"},
        {[] { return ScheduleBuilder().Day(1).Weekdays(Monday, Monday); },
         "week and weekdays choose days only while the day is unset"},
        {[] { return ScheduleBuilder().Window(9h, 17h, 30min).Hour(9); }, "window: it replaces"},
        {[] { return ScheduleBuilder().Hour(9).AllDay(); }, "all day: needs"},
        {[] { return ScheduleBuilder().Window(0h, 1h, 5min).AllDay(); }, "all day: needs"},
    };
    for (const auto& [build, message] : cases) {
        std::string refusal;
        try {
            build().Build();
            ADD_FAILURE() << "built: " << message;
        } catch (const std::invalid_argument& e) {
            refusal = e.what();
            EXPECT_NE(refusal.find(message), std::string::npos) << refusal;
        }
        // Only the never-firing schedules are built on request; the rest stay refused.
        bool built = false;
        try {
            built = build().BuildEvenIfNeverFiring() != nullptr;
        } catch (const std::invalid_argument&) {
        }
        EXPECT_EQ(built, refusal.find("could never fire") != std::string::npos) << refusal;
    }
}

// Each reason is checked against the enumerator: a schedule said never to fire has no
// point, one with no reason has one (within the default search).
TEST(BuilderTest, WhyNeverFiresMatchesTheEnumerator) {
    const ZoneScope pinned("Europe/Berlin");
    for (const auto& c : ReadCases("schedule/NeverFires.cases")) {
        const auto s = Parse(c[0]).Make();
        const DateTime start = T(c[1].c_str()).ToUTCTime();
        const std::optional<std::string> why = WhyNeverFires(*s, start);
        EXPECT_EQ(why.value_or("").substr(0, c[2].size()), c[2]) << c.where;
        EXPECT_EQ(why.has_value(), !c[2].empty()) << c.where << ": " << why.value_or("");
        DateTime point(0.0);
        EXPECT_EQ(s->GetNextNTimePoints(start, 1, &point), why ? 0u : 1u) << c.where;
    }
}

TEST(BuilderTest, UnwalkedFieldsAboveTheFinestStep) {
    const std::pair<S, std::vector<ScheduleField>> cases[] = {
        {S().Minute(EVERY, 15), {ScheduleField::Hour}},
        {S().Hour(EVERY, 2).Second(EVERY, 10), {ScheduleField::Minute}},
        {S().Ms(EVERY, 100), {ScheduleField::Hour, ScheduleField::Minute, ScheduleField::Second}},
        {S().Hour(FIXED, 9).Minute(EVERY, 15), {}},
    };
    for (const auto& [schedule, unset] : cases) {
        const std::optional<UnwalkedFields> found = FindUnwalkedFields(*schedule.Make());
        ASSERT_TRUE(found);
        EXPECT_EQ(found->unset, unset);
    }
    EXPECT_FALSE(FindUnwalkedFields(*S().Hour(FIXED, 9).Make()));
    EXPECT_FALSE(FindUnwalkedFields(*S().Day(EVERY, 1).Window(9, 0, 10, 0, 5).Make()));
}

}  // namespace
