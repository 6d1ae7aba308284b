// Text forms: the stream operators, ToText and the fmt formatters agree, and DateTime
// patterns agree with the C library's strftime wherever it can be asked.

#include <cstdio>
#include <ctime>
#include <random>
#include <sstream>
#include <string>

#include <ZelvorDataType/Chrono.h>
#include <ZelvorDataType/Format.h>
#include <gtest/gtest.h>

#include "support/Cases.h"
#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;

template <class T>
std::string Streamed(const T& value) {
    std::ostringstream os;
    os << value;
    return os.str();
}

// The three ways to print agree, and give `expected`.
template <class T>
void ExpectText(const T& value, const std::string& expected) {
    EXPECT_EQ(Streamed(value), expected);
    EXPECT_EQ(ToText(value), expected);
    EXPECT_EQ(fmt::format("{}", value), expected);
}

TEST(TextForm, EveryTypeAlike) {
    ExpectText(DateTime(2024, 3, 5, 7, 8, 9, 12), "2024-03-05 07:08:09.012");
    ExpectText(DateTime(65535, 12, 31, 23, 59, 59, 999), "65535-12-31 23:59:59.999");
    for (const auto& [ms, text] : std::initializer_list<std::pair<long long, const char*>>{
             {0, "00:00:00.000"},
             {-1, "-00:00:00.001"},
             {TimeSpan(1, 2, 0, 0, 5).GetTotalMilliseconds(), "1d 02:00:00.005"},
             {-9223372036854775807LL - 1, "-106751991167d 07:12:55.808"}}) {
        ExpectText(TimeSpan(ms), text);
    }
    ExpectText(BigDecimal("-1.50"), "-1.50");
    ExpectText(BigDecimal("1") / BigDecimal("3"), "0");
    ExpectText(BigDecimalHandle(), "(none)");
    ExpectText(Variant(1.5), "1.500000000000000");
    ExpectText(Variant(L"z\u00e9"), "z\xc3\xa9");
    ExpectText(Variant(), "");
    ExpectText(DateTime(2024, 3, 5, 7, 8, 9, 12, 60, 7), "2024-03-05 07:08:09.012");  // zone words
}

TEST(TextForm, RulesAndRelativeTimes) {
    DynamicTime today(DYNAMIC_TIME_TODAY | DYNAMIC_TIME_RELATIVE_HOUR, -1);
    today.PutHour(9);
    DynamicTime quarter(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_BUSINESS_DAY, 0);
    quarter.PutDay(-1);
    quarter.PutDayOfWeek(1);
    quarter.PutDynamicMonthOffset(-3);
    const struct {
        DynamicTime rule;
        const char* text;
    } rules[] = {
        {today, "today + relative-hour; hour 9, day offset -1"},
        {quarter, "this-quarter + business-day; day -1, weekday Mon, month offset -3"},
        {DynamicTime(DYNAMIC_TIME_LATEST, 0), "latest"},
        {DynamicTime(DYNAMIC_TIME_NONE, 0), "none"},
        {DynamicTime(static_cast<DYNAMIC_TIME>(15 | DYNAMIC_TIME_FIXED_DATE), 0),
         "kind 15 + fixed-date"},
    };
    for (const auto& [rule, text] : rules) {
        ExpectText(rule, text);
    }
    ZelvorTime dynamic;  // a dynamic value prints its rule
    dynamic.PutDynamicTime(quarter.GetDynamicTime());
    dynamic.PutDay(-1, false);
    dynamic.PutDayOfWeek(1, false, true);
    dynamic.PutDynamicMonthOffset(-3);
    ExpectText(dynamic, rules[1].text);
    ExpectText(ZelvorTime(), "empty");
    const DateTime date(2024, 3, 5, 7, 8, 9, 12);
    ExpectText(ZelvorTime(date, TIME_MODE_UTC, true), "2024-03-05 07:08:09.012 UTC");
    ExpectText(ZelvorTime(date, TIME_MODE_LOCAL, false), "2024-03-05 07:08:09.012 local");
}

TEST(TextForm, Schedules) {
    const auto N = RECURRENCE_NONE;
    const auto F = RECURRENCE_FIXED;
    const auto E = RECURRENCE_EVERY;
    const struct {
        TimeSeriesPtr schedule;
        const char* text;
    } cases[] = {
        {MakeTimeSeries(N, 0, N, 0, N, 0, N, 0, F, 62, F, 9, N, 0, N, 0, N, 0, -1, -1, -1, -1, -1),
         "on Mon,Tue,Wed,Thu,Fri, hour 9"},
        {MakeTimeSeries(N, 0, F, 2, E, 3, N, 0, F, 0, N, 0, N, 0, N, 0, N, 0, 9, 0, 17, 30, 45),
         "month 2, day every 3, on no day, window 09:00-17:30 every 45 min"},
        {MakeTimeSeries(N, 0, N, 0, N, 0, N, 0, N, 0, N, 0, N, 0, N, 0, N, 0, -1, -1, -1, -1, -1),
         "every day at midnight (no field set)"},
    };
    for (const auto& [schedule, text] : cases) {
        ExpectText(*schedule, text);
        EXPECT_EQ(DescribeSchedule(*schedule), text);
    }
}

TEST(Format, WidthFillAndAlignment) {
    const struct {
        std::string got, want;
    } cases[] = {
        {fmt::format("{:>8}", BigDecimal("-1.50")), "   -1.50"},
        {fmt::format("{:*^20}", TimeSpan(90000)), "****00:01:30.000****"},
        {fmt::format("{:<6}|", Variant(7)), "7     |"},
        {fmt::format("{:.3}", Variant(L"abcdef")), "abc"},
        {fmt::format("{:>25}", DateTime(2024, 3, 5)), "  2024-03-05 00:00:00.000"},
        {fmt::format("{:\u00b7^9%R}", DateTime(2024, 3, 5, 7, 8)), "\u00b7\u00b707:08\u00b7\u00b7"},
        {fmt::format("{:.0}", DateTime(2024, 3, 5, 7, 8, 9, 999)), "2024-03-05 07:08:09"},
        {fmt::format("{:.1%T}", DateTime(2024, 3, 5, 7, 8, 9, 987)), "07:08:09.9"},
        {fmt::format("{:%Y-%m-%d %H:%M}", DateTime(2024, 3, 5, 7, 8)), "2024-03-05 07:08"},
        {fmt::format("{:%Y|%C|%y|%G|%V}", DateTime(0, 1, 1)), "0000|00|00|-001|52"},
        {fmt::format("{:%Y %j %a %G-W%V-%u}", DateTime(65535, 12, 31)),
         "65535 365 Tue 65536-W01-2"},
        {fmt::format("{:%e|%I%p|%n|%t|%%}", DateTime(2024, 3, 5, 0, 8)), " 5|12AM|\n|\t|%"},
        // A width is honoured in full; only one past 2,147,483,639 is refused.
        {std::to_string(fmt::formatted_size("{:>100000%Y}", DateTime(2024, 3, 5))), "100000"},
    };
    for (const auto& [got, want] : cases) {
        EXPECT_EQ(got, want);
    }
}

TEST(Format, RefusedFormatsNameTheirFault) {
    const DateTime date(2024, 3, 5);
    for (const auto& c : ZelvorTest::ReadCases("format/RefusedFormats.cases")) {
        try {
            (void)fmt::format(fmt::runtime(c[0]), date, 30);
            ADD_FAILURE() << c.where << ": " << c[0] << " was accepted";
        } catch (const fmt::format_error& e) {
            EXPECT_NE(std::string(e.what()).find(c[1]), std::string::npos)
                << c.where << ": " << e.what();
        }
    }
}

// Every conversion against glibc's strftime, which formats any year of a 64-bit time_t,
// on random instants over the whole range and around each new year.
TEST(Format, ConversionsMatchStrftime) {
    const char* const conversions[] = {"%y", "%m", "%d", "%e", "%j", "%H", "%I", "%M",
                                       "%p", "%a", "%A", "%b", "%B", "%h", "%u", "%w",
                                       "%U", "%W", "%V", "%g", "%D", "%R", "%n"};
    std::mt19937_64 random(20261124);
    std::uniform_int_distribution<long long> seconds(chrono_detail::kFirstMs / 1000,
                                                     chrono_detail::kLastMs / 1000);
    int checked = 0;
    for (int n = 0; n < 4000; ++n) {
        // Half of the instants fall in the first or last days of a year.
        long long s = seconds(random);
        if (n % 2 == 1) {
            const DateTime at =
                DateTimeFromSysTime(std::chrono::sys_seconds(std::chrono::seconds(s)));
            const int year = at.GetYear() == 65535 ? 65534 : at.GetYear();
            s = (static_cast<long long>(DateTime::YMDToDAYS(year + 1, 1, 1)) - 25569) * 86400 +
                (static_cast<long long>(n % 7) - 3) * 86400;
        }
        const DateTime value =
            DateTimeFromSysTime(std::chrono::sys_seconds(std::chrono::seconds(s)));
        const time_t t = static_cast<time_t>(s);
        tm parts{};
        ASSERT_NE(gmtime_r(&t, &parts), nullptr);
        for (const char* conversion : conversions) {
            char want[64];
            std::strftime(want, sizeof want, conversion, &parts);
            EXPECT_EQ(fmt::format(fmt::runtime(std::string("{:") + conversion + "}"), value), want)
                << conversion << " of " << value;
            ++checked;
        }
        // glibc pads the years and centuries to no width, the formatter to four and two
        // digits.
        char years[48];
        std::strftime(years, sizeof years, "%Y %G %C", &parts);
        int year = 0;
        int isoYear = 0;
        int century = 0;
        ASSERT_EQ(std::sscanf(years, "%d %d %d", &year, &isoYear, &century), 3);
        EXPECT_EQ(fmt::format("{:%Y %G %C}", value),
                  fmt::format("{:04} {:04} {:02}", year, isoYear, century));
    }
    EXPECT_GT(checked, 90000);
}

}  // namespace
