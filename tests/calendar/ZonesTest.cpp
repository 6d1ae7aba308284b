#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <ctime>

#include "CalendarSupport.h"

namespace {

using CalendarTest::DateOf;
using CalendarTest::Text;
using CalendarTest::ZoneScope;
using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSpan;

TEST(SamePattern, RepresentativesShareWeekdayAndLeapStatus) {
    const struct {
        int year, pattern;
    } cases[] = {{2000, 2000}, {2037, 2037}, {1971, 1971}, {1970, 1981}, {2038, 1971},
                 {-1, -1},     {0, 1972},    {1, 1973},    {3, 1997},    {1600, 1972}};
    for (const auto& c : cases) {
        EXPECT_EQ(DateTime::YearOfSamePattern(c.year), c.pattern) << c.year;
    }
    for (int year = 0; year <= 65535; year += (year < 3000 ? 1 : 97)) {
        const int pattern = DateTime::YearOfSamePattern(year);
        ASSERT_TRUE(pattern >= 1971 && pattern <= 2037) << year;
        ASSERT_EQ(DateTime::IsLeapYear(pattern), DateTime::IsLeapYear(year)) << year;
        ASSERT_EQ(DateTime(pattern, 1, 1).GetDayOfWeek(), DateTime(year, 1, 1).GetDayOfWeek())
            << year;
    }
}

TEST(Zones, UtcLeavesEveryYearAlone) {
    const ZoneScope zone("UTC0");
    for (int year = 0; year <= 65535; ++year) {
        const DateTime values[] = {DateTime(year, 7, 15, 12, 34, 56, 789),
                                   DateTime(year, 12, 31, 23, 59, 59, 999),
                                   DateTime(year, 2, 29, 0, 0, 0, 1)};
        for (const DateTime& value : values) {
            ASSERT_EQ(Text(value.ToUTCTime()), Text(value)) << year;
            ASSERT_EQ(Text(value.ToLocalTime()), Text(value)) << year;
        }
    }
}

TEST(Zones, FixedOffsetsPutTheRealYearBack) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/FixedOffsets.cases")) {
        const ZoneScope zone(c[0].c_str());
        const DateTime value = DateOf(c[1]);
        EXPECT_EQ(Text(c[2] == "utc" ? value.ToUTCTime() : value.ToLocalTime()), c[3]) << c.where;
    }
}

TEST(Zones, DaylightSavingInEveryCentury) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/DaylightSaving.cases")) {
        SCOPED_TRACE(c.where);
        const ZoneScope zone(c[0].c_str());
        const DateTime local = DateOf(c[1]);
        const DateTime utc = local.ToUTCTime();
        EXPECT_EQ(Text(utc), c[2]);
        EXPECT_EQ(Text(utc.ToLocalTime()), Text(local));
        EXPECT_EQ(local.GetTimeZoneBias(), std::stoi(c[3]));
    }
}

// The conversions against the platform's own steps (mktime then gmtime_r; localtime_r)
// every 20 minutes through years with transitions, in zones with half-hour saving, a
// skipped day and old rules. Gaps and repeated hours must come out as the platform says.
TEST(Zones, MatchThePlatformThroughTransitions) {
    const char* zones[] = {"America/New_York", "Australia/Lord_Howe", "Pacific/Apia",
                           "Europe/London"};
    const int years[] = {1978, 2011, 2024, 3011};
    for (const char* name : zones) {
        const ZoneScope zone(name);
        for (const int year : years) {
            for (int minute = 0; minute < 366 * 1440; minute += 20) {
                const DateTime local =
                    DateTime(year, 1, 1, 0, 0, 0, 321) + TimeSpan(minute * 60000LL);
                const int pattern = DateTime::YearOfSamePattern(local.GetYear());
                tm fields{};  // loaded through the pattern year, then handed to mktime
                const time_t seconds = static_cast<int32_t>(local.mktime(fields));
                tm utc{};
                gmtime_r(&seconds, &utc);
                const DateTime expectUtc(local.GetYear() + utc.tm_year - fields.tm_year,
                                         utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min,
                                         utc.tm_sec, 321);
                ASSERT_TRUE(local.ToUTCTime() == expectUtc) << name << " " << Text(local);

                DateTime patternUtc(local);
                patternUtc.PutYear(pattern);
                const time_t since1970 = patternUtc.Totime_t();
                tm back{};
                localtime_r(&since1970, &back);
                const DateTime expectLocal(local.GetYear() + back.tm_year + 1900 - pattern,
                                           back.tm_mon + 1, back.tm_mday, back.tm_hour, back.tm_min,
                                           back.tm_sec, 321);
                ASSERT_TRUE(local.ToLocalTime() == expectLocal) << name << " " << Text(local);
            }
        }
    }
}

TEST(Clock, NowCarriesTheZone) {
    const ZoneScope zone("XXX-3");
    const DateTime local = DateTime::Now();
    const DateTime utc = DateTime::NowUTC();
    EXPECT_EQ(local.GetZoneMinutes(), 180);
    EXPECT_EQ(utc.GetZoneMinutes(), 0);
    EXPECT_NEAR(static_cast<double>((local - utc).GetTotalMilliseconds()), 3 * 3600000.0, 2000.0);
    int minutes = 0;
    EXPECT_TRUE(DateTime::GetTimeZoneInfo(minutes));
    EXPECT_EQ(minutes, 180);
}

TEST(SecondsSince1970, BothWays) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/SecondsSince1970.cases")) {
        EXPECT_EQ(Text(DateTime(std::stol(c[0]), std::stoi(c[1]))), c[2]) << c.where;
    }
    EXPECT_EQ(Text(DateTime(LONG_MIN, 0)).substr(0, 10), "0001-01-01");
    // Non-negative seconds keep the milliseconds as given until the next copy.
    EXPECT_EQ(DateTime(5L, 1500).GetMillisecond(), 1500);
    const DateTime raw(5L, 1500);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is the point
    const DateTime copy(raw);
    EXPECT_EQ(copy.GetMillisecond(), 999);

    for (const auto& c : ZelvorTest::ReadCases("calendar/ToSeconds.cases")) {
        EXPECT_EQ(DateOf(c[0]).Totime_t(), std::stol(c[1])) << c.where;
        EXPECT_EQ(DateOf(c[0]).Totime_t64(), std::stoll(c[2])) << c.where;
    }
}

}  // namespace
