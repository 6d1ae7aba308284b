// The <chrono> bridges: exact both ways over the whole year range, checked against the
// standard library's own calendar wherever its years reach.
#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>

#include <ZelvorDataType/Chrono.h>
#include <ZelvorDataType/DateTime.h>

namespace {

using namespace std::chrono;
using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSpan;

TEST(ChronoBridge, RoundTripsOverTheWholeRange) {
    // Every 997th day from 0000-01-01 to 65535-12-31 and the last day, each at a time of
    // day that moves with it.
    int checked = 0;
    for (long long n = -693959; n <= 23242572 + 996; n += 997) {
        const int number = static_cast<int>(n > 23242572 ? 23242572 : n);
        unsigned short y = 0;
        short m = 0;
        short d = 0;
        DateTime::DAYSToYMD(number, y, m, d);
        const long long t = (n * 7919) % 86400000;
        const DateTime value(y, m, d, int(t / 3600000), int(t / 60000 % 60), int(t / 1000 % 60),
                             int(t % 1000));
        const auto sys = ZelvorDataType::ToSysTime(value);
        ASSERT_EQ(ZelvorDataType::DateTimeFromSysTime(sys), value) << number;
        const auto local = ZelvorDataType::ToLocalTimePoint(value);
        ASSERT_EQ(local.time_since_epoch(), sys.time_since_epoch());
        ASSERT_EQ(ZelvorDataType::DateTimeFromLocalTime(local), value) << number;
        // The standard library's calendar agrees on the date and the weekday.
        if (y <= 32767) {
            const year_month_day date(floor<days>(sys));
            ASSERT_EQ(date, ZelvorDataType::ToYearMonthDay(value)) << number;
            ASSERT_EQ(ZelvorDataType::DateTimeFromYearMonthDay(date).ToDATE(),
                      DateTime(y, m, d).ToDATE());
        }
        ASSERT_EQ(ZelvorDataType::ToWeekday(value).c_encoding(),
                  static_cast<unsigned>(DateTime(y, m, d).GetDayOfWeek()))
            << number;
        ++checked;
    }
    EXPECT_GT(checked, 23000);
}

TEST(ChronoBridge, EdgesAndRefusals) {
    const DateTime first(0, 1, 1);
    const DateTime last(65535, 12, 31, 23, 59, 59, 999);
    EXPECT_EQ(ZelvorDataType::ToSysTime(DateTime(1970, 1, 1, 0, 0, 0, 1)).time_since_epoch(), 1ms);
    EXPECT_EQ(ZelvorDataType::ToSysTime(first), sys_days(year(0) / January / 1));
    const auto end = ZelvorDataType::ToSysTime(last);
    EXPECT_EQ(ZelvorDataType::DateTimeFromSysTime(end), last);
    EXPECT_THROW(ZelvorDataType::DateTimeFromSysTime(end + 1ms), std::out_of_range);
    EXPECT_THROW(ZelvorDataType::DateTimeFromSysTime(ZelvorDataType::ToSysTime(first) - 1ms),
                 std::out_of_range);
    EXPECT_THROW(ZelvorDataType::DateTimeFromLocalTime(local_days(year(-1) / December / 31)),
                 std::out_of_range);
    // Coarser time points convert without loss.
    EXPECT_EQ(ZelvorDataType::DateTimeFromSysTime(sys_days(year(2024) / 2 / 29)),
              DateTime(2024, 2, 29));

    EXPECT_EQ(ZelvorDataType::ToYearMonthDay(DateTime(32767, 12, 31)), year(32767) / 12 / 31);
    EXPECT_THROW(ZelvorDataType::ToYearMonthDay(DateTime(32768, 1, 1)), std::out_of_range);
    EXPECT_THROW(ZelvorDataType::DateTimeFromYearMonthDay(year(2023) / 2 / 29),
                 std::invalid_argument);
    EXPECT_THROW(ZelvorDataType::DateTimeFromYearMonthDay(year(-1) / 1 / 1), std::out_of_range);
}

TEST(ChronoBridge, SpansAreExactDurations) {
    const struct {
        TimeSpan span;
        milliseconds ms;
    } cases[] = {
        {TimeSpan(1, 1, 0, 0, 0), hours(25)},
        {TimeSpan(-1), -1ms},
        {TimeSpan(0), 0ms},
        {TimeSpan(9223372036854775807LL), milliseconds::max()},
        {TimeSpan(-9223372036854775807LL - 1), milliseconds::min()},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ZelvorDataType::ToDuration(c.span), c.ms);
        EXPECT_EQ(ZelvorDataType::TimeSpanFromDuration(c.ms), c.span);
    }
    EXPECT_EQ(ZelvorDataType::TimeSpanFromDuration(minutes(90)), TimeSpan(0, 1, 30, 0, 0));
}

}  // namespace
