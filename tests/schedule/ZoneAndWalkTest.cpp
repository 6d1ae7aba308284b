// Results in UTC at real daylight-saving changes, and the simple schedules' walk from
// day to day checked against a reference walk of their own built on <chrono>. The
// reference converts with the C library's zone functions, as the library does, so the
// walk check can't see a wrong conversion: the hard-coded instants pin that.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <random>

#include "support/Schedules.h"

namespace {

using namespace ScheduleTest;
namespace chr = std::chrono;

constexpr const char* kNewYork = "America/New_York";

TEST(ScheduleZone, DailyPointsAtRealChanges) {
    const auto s = S().Day(EVERY, 1).At(9, 0).Make();
    for (const auto& c : ReadCases("schedule/ClockChanges.cases")) {
        ZoneScope zone(c[0].c_str());
        EXPECT_EQ(Next(*s, c[1].c_str(), 3), c[2]) << c.where;
    }
    ZoneScope zone(kNewYork);
    // 00:00 UTC is still the 12th in New York, and that day is listed whole.
    EXPECT_EQ(All(*s, "2010-03-13 00:00", "2010-03-14 23:00"),
              "2010-03-12 14:00, 2010-03-13 14:00, 2010-03-14 13:00");
}

TEST(ScheduleZone, RepeatedHour) {
    ZoneScope zone(kNewYork);
    // Which pass of 01:00 on 2010-11-07 the platform gives depends on the offset of its
    // previous conversion; a summer conversion first makes it the earlier one, 05:00.
    const auto summer = [] { DateTime(2010, 7, 1).ToUTCTime(); };
    summer();
    if (DateTime(2010, 11, 7, 1, 0).ToUTCTime() != T("2010-11-07 05:00")) {
        GTEST_SKIP() << "the platform resolves the repeated hour to its second pass";
    }
    const auto s =
        S().Day(EVERY, 1).Hour(EVERY, 1).Minute(EVERY, 30).Second(FIXED, 0).Ms(FIXED, 0).Make();
    // 06:00 UTC is local 01:00 in its second pass. Local 01:00 converts back to the
    // first pass, an hour early: the first enumerator moves it and the series on...
    summer();
    EXPECT_EQ(Next(*s, "2010-11-07 06:00", 2), "2010-11-07 07:00, 2010-11-07 07:30");
    // ...the second keeps it.
    summer();
    EXPECT_EQ(Next(*s, "2010-11-07 06:00", 1, "2010-11-07 06:00"), "2010-11-07 05:00");
}

// ---- The reference walk ------------------------------------------------------------------

// A local date and minute of the day, and the conversions the reference makes by the
// C library alone.
struct Local {
    chr::sys_days day;
    int minute;
    // NOLINTNEXTLINE(modernize-use-nullptr): the check misreads the defaulted comparison
    auto operator<=>(const Local&) const = default;
};

Local ToLocal(const DateTime& utc) {
    const chr::sys_days day{chr::year(utc.GetYear()) / utc.GetMonth() / utc.GetDay()};
    const time_t seconds =
        (day.time_since_epoch().count() * 1440 + utc.GetHour() * 60L + utc.GetMinute()) * 60;
    tm l{};
    localtime_r(&seconds, &l);
    return {chr::sys_days{chr::year(l.tm_year + 1900) / (l.tm_mon + 1) / l.tm_mday},
            l.tm_hour * 60 + l.tm_min};
}

std::string ToUtcText(const Local& local) {
    const chr::year_month_day ymd(local.day);
    tm t{};
    t.tm_year = int(ymd.year()) - 1900, t.tm_mon = int(unsigned(ymd.month())) - 1;
    t.tm_mday = int(unsigned(ymd.day())), t.tm_hour = local.minute / 60;
    t.tm_min = local.minute % 60, t.tm_isdst = -1;
    const time_t seconds = mktime(&t);
    tm u{};
    gmtime_r(&seconds, &u);
    return Text(DateTime(u.tm_year + 1900, u.tm_mon + 1, u.tm_mday, u.tm_hour, u.tm_min));
}

struct Walk {
    const char* what;
    S schedule;
    int minute;  // of the day
    // Whether a day is in the pattern; `since` counts days from the first day looked at.
    std::function<bool(chr::year_month_day, long since)> inPattern;
};

unsigned Weekday(chr::year_month_day d) {
    return chr::weekday(chr::sys_days(d)).c_encoding();
}

const Walk kWalks[] = {
    {"daily at 09:00", S().Day(EVERY, 1).At(9, 0), 540, [](auto, long) { return true; }},
    {"every 3 days at 17:30", S().Day(EVERY, 3).At(17, 30), 1050,
     [](auto, long since) { return since % 3 == 0; }},
    {"Mon, Wed, Fri at 08:15", S().Dow(42).At(8, 15), 495,
     [](auto d, long) { return Weekday(d) % 2 == 1 && Weekday(d) < 6; }},
    {"second Tuesday at 12:00", S().Week(FIXED, 2).Dow(4).At(12, 0), 720,
     [](auto d, long) { return Weekday(d) == 2 && (unsigned(d.day()) - 1) / 7 == 1; }},
    {"last Friday at 17:30", S().Week(FIXED, -1).Dow(32).At(17, 30), 1050,
     [](auto d, long) {
         const auto last = chr::year_month_day_last(d.year(), chr::month_day_last(d.month()));
         return Weekday(d) == 5 && unsigned(d.day()) + 7 > unsigned(last.day());
     }},
    {"29 February at 06:45", S().Month(FIXED, 2).Day(FIXED, 29).At(6, 45), 405,
     [](auto d, long) { return d.month() == chr::February && d.day() == chr::day(29); }},
};

// The reference's points on the days from the one of `start` (the first day it looks at),
// from `lowest` up to `last`, at most `count`.
std::string ReferencePoints(const Walk& m, const Local& start, size_t count, const Local& lowest,
                            const Local& last) {
    std::vector<std::string> points;
    for (long since = 0; points.size() < count && since < 8000; ++since) {
        const Local point{start.day + chr::days(since), m.minute};
        if (point > last) {
            break;
        }
        if (m.inPattern(chr::year_month_day(point.day), since) && !(point < lowest)) {
            points.push_back(ToUtcText(point));
        }
    }
    return Join(points);
}

class ScheduleWalkCheck : public testing::TestWithParam<const char*> {};

std::string ZoneName(const testing::TestParamInfo<const char*>& zone) {
    return zone.index == 0 ? "UTC" : "NewYork";
}

INSTANTIATE_TEST_SUITE_P(Zones, ScheduleWalkCheck, testing::Values("UTC0", kNewYork), ZoneName);

TEST_P(ScheduleWalkCheck, SimpleSchedules) {
    ZoneScope zone(GetParam());
    std::mt19937 random(20100301);
    const DateTime origin(2010, 1, 1);
    const Local never{chr::sys_days::max(), 0}, always{chr::sys_days::min(), 0};
    for (const Walk& m : kWalks) {
        SCOPED_TRACE(m.what);
        const auto s = m.schedule.Make();
        for (int round = 0; round < 60; ++round) {
            const auto minutes = [&](int span) {
                return TimeSpan(0, 0, int(random() % span), 0, 0);
            };
            const DateTime start = origin + minutes(15 * 365 * 1440);
            const DateTime from = start + minutes(60 * 1440) - TimeSpan(10, 0, 0, 0, 0);
            const DateTime end = start + minutes(400 * 1440);
            SCOPED_TRACE(Text(start));
            const Local localStart = ToLocal(start), localFrom = ToLocal(from);
            EXPECT_EQ(Next(*s, Text(start).c_str(), 4),
                      ReferencePoints(m, localStart, 4, localStart, never));
            EXPECT_EQ(Next(*s, Text(start).c_str(), 3, Text(from).c_str()),
                      ReferencePoints(m, localStart, 3, std::max(localStart, localFrom), never));
            // The range lists the first day of the pattern whole, also before the start,
            // and hands out no array when it holds no point.
            const std::string all = ReferencePoints(m, localStart, 1000, always, ToLocal(end));
            EXPECT_EQ(All(*s, Text(start).c_str(), Text(end).c_str()),
                      all.empty() ? "(no array)" : all);
        }
    }
}

}  // namespace
