#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <random>

#include "CalendarSupport.h"
#include "support/TestDoubles.h"

namespace {

using CalendarTest::Text;
using ZelvorDataType::DateTime;
using ZelvorDataType::ODBCDate;
using ZelvorDataType::ODBCDateTime;
using ZelvorDataType::ODBCTime;
namespace chr = std::chrono;

constexpr int kFirstDay = -693959;  // 0000-01-01
constexpr int kLastDay = 23242572;  // 65535-12-31

// Valid dates are all checked by the walk below; these are the fields out of their
// ranges, and the last day, past the years std::chrono can check.
TEST(DayNumbers, FieldsOutOfRangeAndTheLastDay) {
    const struct {
        int year, month, day, expected;
    } cases[] = {
        {2000, 13, 1, 0},     {2000, 0, 1, 0},       {2024, 3, 0, 45351},  // Feb 29
        {2024, 1, -5, 45286}, {2024, 1, 400, 45691}, {65535, 12, 31, kLastDay},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(DateTime::YMDToDAYS(c.year, c.month, c.day), c.expected)
            << c.year << "-" << c.month << "-" << c.day;
    }
}

// Every day of the range: the inverse holds, and successive day numbers walk the
// calendar one day at a time (so the mapping is also the right one, not just a
// bijection). Where std::chrono's years reach (up to 32767) the date, weekday and day of
// the year are checked against it.
TEST(DayNumbers, EveryDayOfTheRange) {
    unsigned short year = 0;
    short month = 0, day = 0;
    int previousYear = -1, previousMonth = 12, previousDay = 31;
    for (int n = kFirstDay; n <= kLastDay; ++n) {
        DateTime::DAYSToYMD(n, year, month, day);
        ASSERT_EQ(DateTime::YMDToDAYS(year, month, day), n) << n;
        const bool nextInMonth =
            year == previousYear && month == previousMonth && day == previousDay + 1;
        const bool nextMonth =
            day == 1 && ((month == previousMonth + 1 && year == previousYear) ||
                         (month == 1 && previousMonth == 12 && year == previousYear + 1));
        ASSERT_TRUE(nextInMonth || nextMonth) << n;
        previousYear = year;
        previousMonth = month;
        previousDay = day;
        if (year > 32767) {
            continue;
        }
        const chr::year_month_day ymd{chr::sys_days{chr::days{n - 25569}}};
        ASSERT_EQ(static_cast<int>(ymd.year()), year) << n;
        ASSERT_EQ(static_cast<unsigned>(ymd.month()), static_cast<unsigned>(month)) << n;
        ASSERT_EQ(static_cast<unsigned>(ymd.day()), static_cast<unsigned>(day)) << n;
        if (n % 13 == 0) {  // a stride prime to 7 and to the month lengths
            const DateTime value(year, month, day);
            const chr::weekday weekday{chr::sys_days{ymd}};
            ASSERT_EQ(value.GetDayOfWeek(), static_cast<int>(weekday.c_encoding())) << n;
            const auto yearStart = chr::sys_days{ymd.year() / chr::January / 1};
            ASSERT_EQ(value.GetDayOfYear(), (chr::sys_days{ymd} - yearStart).count() + 1) << n;
        }
    }
    EXPECT_EQ(year, 65535);
    // Outside the range the year wraps in 16 bits.
    DateTime::DAYSToYMD(kFirstDay - 1, year, month, day);
    EXPECT_EQ(year * 10000 + month * 100 + day, 655351230);
}

TEST(SerialDates, Construction) {
    for (const auto& c : ZelvorTest::ReadCases("calendar/Serial.cases")) {
        EXPECT_EQ(Text(DateTime(std::strtod(c[0].c_str(), nullptr))), c[1]) << c.where;
    }
    EXPECT_EQ(Text(DateTime(DateTime::MillisecondsToDATE(-1))), "1899-12-29 23:59:59.999");
}

// Every count inside the limits comes back to the millisecond: densely at both ends,
// and at random points between.
TEST(SerialDates, MillisecondCountsSurvive) {
    const long long low = kFirstDay * 86400000LL;
    const long long high = (kLastDay - 1) * 86400000LL + 86399999;  // 65535-12-30 23:59:59.999
    const auto check = [](long long ms) {
        const double serial = DateTime::MillisecondsToDATE(ms);
        const DateTime value(serial);
        ASSERT_EQ(DateTime::ToMilliseconds(value), ms) << ms;
        ASSERT_LT(std::fabs(value.ToDATE() - serial) * 86400000.0, 0.5) << ms;
    };
    // A tenth of the walk when the suite runs under valgrind.
    const long long reach = ZelvorTest::SmallScale() ? 300000 : 3000000;
    for (long long ms = 0; ms < reach; ++ms) {
        check(low + ms);
        check(high - ms);
        check(ms - reach / 2);  // across day 0
    }
    std::mt19937_64 random(20240229);
    std::uniform_int_distribution<long long> anywhere(low, high);
    for (long long i = 0; i < reach / 3; ++i) {
        check(anywhere(random));
    }
}

TEST(SerialDates, OdbcRecords) {
    EXPECT_EQ(Text(DateTime(ODBCDateTime{2024, 2, 30, 23, 59, 59, 1000000000})),
              "2024-02-29 23:59:59.000");
    EXPECT_EQ(Text(DateTime(ODBCDateTime{2024, 5, 6, 7, 8, 9, 1999999})),
              "2024-05-06 07:08:09.001");
    EXPECT_EQ(Text(DateTime(ODBCDateTime{2024, 5, 6, 24, 0, 0, 0})), "2024-05-07 00:00:00.000");
    EXPECT_EQ(Text(DateTime(ODBCDate{1, 13, 0})), "0001-12-01 00:00:00.000");
    EXPECT_EQ(Text(DateTime(ODBCTime{13, 14, 15})), "1899-12-31 13:14:15.000");

    const DateTime value(2024, 5, 6, 7, 8, 9, 10);
    const ODBCDateTime full = value.ToODBCDateTime();
    EXPECT_EQ(Text(DateTime(full)), Text(value));
    EXPECT_EQ(full.fraction, 10000000u);
    EXPECT_EQ(Text(DateTime(value.ToODBCDate())), "2024-05-06 00:00:00.000");
    EXPECT_EQ(Text(DateTime(value.ToODBCTime())), "1899-12-31 07:08:09.000");
}

}  // namespace
