#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <ctime>

#include "CalendarSupport.h"

namespace {

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
    const struct {
        const char* zone;
        DateTime value;
        bool toUtc;
        const char* text;
    } cases[] = {
        {"XXX-1", DateTime(2023, 12, 31, 23, 30), false, "2024-01-01 00:30:00.000"},
        {"XXX-1", DateTime(1000, 1, 1, 0, 30, 0, 7), true, "0999-12-31 23:30:00.007"},
        {"XXX-1", DateTime(3000, 12, 31, 23, 30), false, "3001-01-01 00:30:00.000"},
        {"XXX-1", DateTime(2400, 2, 29, 23, 30), false, "2400-03-01 00:30:00.000"},
        {"XXX-1", DateTime(0, 1, 1, 0, 30), true, "65535-12-31 23:30:00.000"},
        {"XXX-1", DateTime(65535, 12, 31, 23, 30), false, "0000-01-01 00:30:00.000"},
        {"YYY+5:30", DateTime(50000, 3, 1, 2), true, "50000-03-01 07:30:00.000"},
        {"YYY+5:30", DateTime(120, 1, 1, 2), false, "0119-12-31 20:30:00.000"},
    };
    for (const auto& c : cases) {
        const ZoneScope zone(c.zone);
        EXPECT_EQ(Text(c.toUtc ? c.value.ToUTCTime() : c.value.ToLocalTime()), c.text)
            << c.zone << " " << Text(c.value);
    }
}

// Daylight saving follows the zone's rules for the pattern year, far from 1971..2037 too.
TEST(Zones, DaylightSavingInEveryCentury) {
    const struct {
        const char* zone;
        DateTime local;
        const char* utc;
        int bias;
    } cases[] = {
        {"America/New_York", DateTime(2024, 7, 1, 12), "2024-07-01 16:00:00.000", 240},
        {"America/New_York", DateTime(1500, 7, 1, 12), "1500-07-01 16:00:00.000", 240},
        {"America/New_York", DateTime(200, 12, 31, 21), "0201-01-01 02:00:00.000", 300},
        {"America/New_York", DateTime(40000, 8, 9, 22, 15), "40000-08-10 02:15:00.000", 240},
        {"Europe/Berlin", DateTime(9999, 1, 1, 0, 30), "9998-12-31 23:30:00.000", -60},
        // 800 takes the pattern of 1972, before Germany kept summer time.
        {"Europe/Berlin", DateTime(800, 8, 1, 12), "0800-08-01 11:00:00.000", -60},
        {"Asia/Tokyo", DateTime(1066, 10, 14, 8), "1066-10-13 23:00:00.000", -540},
    };
    for (const auto& c : cases) {
        const ZoneScope zone(c.zone);
        const DateTime utc = c.local.ToUTCTime();
        EXPECT_EQ(Text(utc), c.utc) << c.zone << " " << Text(c.local);
        EXPECT_EQ(Text(utc.ToLocalTime()), Text(c.local)) << c.zone;
        EXPECT_EQ(c.local.GetTimeZoneBias(), c.bias) << c.zone << " " << Text(c.local);
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
    const struct {
        long seconds;
        int ms;
        const char* text;
    } cases[] = {
        {0, 0, "1970-01-01 00:00:00.000"},
        {-1, 0, "1969-12-31 23:59:59.000"},
        {-1, 500, "1969-12-31 23:59:59.500"},
        {-1, 1500, "1970-01-01 00:00:00.500"},
        {1709636889, 12, "2024-03-05 11:08:09.012"},
        {-2209161600L, 0, "1899-12-30 00:00:00.000"},
        // Below year 0 the date clamps to year 1 and the fraction runs the other way.
        {-62167219200L, -1, "0001-01-01 00:00:00.001"},
        {253402300800L, 0, "10000-01-01 00:00:00.000"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Text(DateTime(c.seconds, c.ms)), c.text) << c.seconds;
    }
    EXPECT_EQ(Text(DateTime(LONG_MIN, 0)).substr(0, 10), "0001-01-01");
    // Non-negative seconds keep the milliseconds as given until the next copy.
    EXPECT_EQ(DateTime(5L, 1500).GetMillisecond(), 1500);
    const DateTime raw(5L, 1500);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is the point
    const DateTime copy(raw);
    EXPECT_EQ(copy.GetMillisecond(), 999);

    const struct {
        DateTime value;
        long truncated;
        long long rounded;
    } back[] = {
        {DateTime(1970, 1, 1, 0, 0, 1, 999), 1, 2},
        {DateTime(1969, 12, 31, 23, 59, 59, 500), 0, 0},
        {DateTime(1969, 12, 31, 23, 59, 58, 400), -1, -1},
        {DateTime(2024, 3, 5, 11, 8, 9, 500), 1709636889, 1709636890},
    };
    for (const auto& c : back) {
        EXPECT_EQ(c.value.Totime_t(), c.truncated) << Text(c.value);
        EXPECT_EQ(c.value.Totime_t64(), c.rounded) << Text(c.value);
    }
}

}  // namespace
