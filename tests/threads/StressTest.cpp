// Many threads at once in one zone: each resolves dynamic times, converts dates between
// zones, works out decimals and variants of its own and enumerates the same const
// schedules as every other thread; every answer must be the one a single thread gave.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

#include "support/Schedules.h"
#include "support/TestDoubles.h"
#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;
using Job = std::function<std::string()>;
using ScheduleTest::EVERY;
using ScheduleTest::FIXED;
using ScheduleTest::S;
using ZelvorTest::Text;

// Reference dates around the daylight-saving changes, year ends and outside the
// platform's years.
const DateTime kReferences[] = {
    DateTime(2024, 3, 10, 1, 59),   DateTime(2024, 3, 10, 3, 0),
    DateTime(2024, 11, 3, 1, 30),   DateTime(2023, 12, 31, 23, 59, 59, 999),
    DateTime(2024, 2, 29, 12),      DateTime(1066, 12, 25, 12),
    DateTime(2500, 6, 30, 18, 45),  DateTime(1970, 1, 1),
    DateTime(2038, 1, 19, 3, 14, 8)};

std::vector<Job> Jobs(const std::vector<const TimeSeries*>& schedules) {
    std::vector<Job> jobs;
    // Dynamic times of every kind, with and without business days and offsets.
    for (int kind = DYNAMIC_TIME_NOW; kind <= DYNAMIC_TIME_THIS_QUARTER; ++kind) {
        for (const int flags :
             {0, int{DYNAMIC_TIME_BUSINESS_DAY}, int{DYNAMIC_TIME_RELATIVE_HOUR}}) {
            for (const DateTime& reference : kReferences) {
                jobs.emplace_back([=] {
                    DynamicTime rule(static_cast<DYNAMIC_TIME>(kind | flags), -1);
                    rule.PutDay(kind == DYNAMIC_TIME_THIS_MONTH ? 0 : -2);
                    rule.PutWeek(3);
                    rule.PutDayOfWeek(2);
                    rule.PutHour(9);
                    rule.PutDynamicMonthOffset(1);
                    DateTime date = reference;
                    const int result = rule.ToDateTime(date);
                    ZelvorTime value;
                    value.PutDynamicTime(static_cast<DYNAMIC_TIME>(kind | flags));
                    double serial = 0;
                    value.TolocalDATEWithFixedTime(serial, false, 1710430245);
                    return std::to_string(result) + Text(date) + std::to_string(serial);
                });
            }
        }
    }
    for (int year : {1899, 1950, 1971, 2007, 2024, 2037, 2100, 9999}) {
        for (int month = 1; month <= 12; month += 2) {
            jobs.emplace_back([=] {
                const DateTime date(year, month, 7 + month, month * 2, 30);
                const DateTime local = date.ToLocalTime();
                return Text(local) + Text(date.ToUTCTime()) + Text(local.ToUTCTime()) +
                       std::to_string(date.GetTimeZoneBias()) + std::to_string(local.GetWeek()) +
                       std::to_string(local.GetDayOfWeek());
            });
        }
    }
    // The shared schedules, through all three enumerators.
    for (const TimeSeries* schedule : schedules) {
        for (const DateTime& start : kReferences) {
            jobs.emplace_back([=] {
                std::vector<DateTime> points(12, DateTime(0.0));
                const unsigned int n = schedule->GetNextNTimePoints(start, 12, points.data());
                const unsigned int m = schedule->GetNextNTimePoints(
                    start, start + TimeSpan(9, 0, 0, 0, 0), 12, points.data());
                std::string text = std::to_string(n) + "/" + std::to_string(m);
                for (const DateTime& point : points) {
                    text += Text(point);
                }
                DateTime* all = nullptr;
                const unsigned int count =
                    schedule->GetAllTimePoints(start, start + TimeSpan(20, 0, 0, 0, 0), all);
                for (unsigned int i = 0; i < count; i += 7) {
                    text += Text(all[i]);
                }
                delete[] all;
                return text + std::to_string(count);
            });
        }
    }
    for (const char* text : {"-12.50", "3.14159265358979323846264338327950288", "1e40", "0.0001"}) {
        jobs.emplace_back([=] {
            const BigDecimal a(text);
            const BigDecimal b("-7.25");
            const BigDecimalHandle product = a * b;
            const BigDecimalHandle quotient = product->Divide(b, 40);
            Variant v(*quotient);
            const Variant copy(v);
            v = 2.5;
            return std::string(quotient->ToString().c_str()) + (copy.ToString().c_str()) +
                   v.ToString().c_str() + std::to_string(a.ToWString(0x407).GetLength());
        });
    }
    return jobs;
}

TEST(Threads, SharedSchedulesAndConversionsAgreeWithOneThread) {
    // The zone is set once, before any thread starts: changing it while other threads
    // convert is a race by the nature of the process-wide zone.
    ZelvorTest::PinZone("America/New_York");
    const auto weekdays = S().Dow(62).At(9, 30).Make();
    const auto lastDays = S().Day(FIXED, -1).At(0, 30).Hour(EVERY, 5).Make();
    const auto window =
        S().Day(EVERY, 2).At(0, 30).Hour(RECURRENCE_NONE, 0).Window(7, 0, 19, 0, 45).Make();
    const std::vector<Job> jobs = Jobs({weekdays.get(), lastDays.get(), window.get()});

    std::vector<std::string> expected;
    expected.reserve(jobs.size());
    for (const Job& job : jobs) {
        expected.push_back(job());
    }

    const bool small = ZelvorTest::SmallScale();
    const unsigned int threads = small ? 3 : 8;
    const unsigned int rounds = small ? 1 : 12;
    std::atomic<int> mismatches{0};
    std::atomic<size_t> firstBad{jobs.size()};
    std::latch ready(threads);
    std::vector<std::thread> pool;
    for (unsigned int t = 0; t < threads; ++t) {
        pool.emplace_back([&, t] {
            ready.arrive_and_wait();
            // Each thread starts elsewhere in the list, so different jobs overlap.
            for (size_t i = 0; i < rounds * jobs.size(); ++i) {
                const size_t index = (i + t * jobs.size() / threads) % jobs.size();
                if (jobs[index]() != expected[index]) {
                    ++mismatches;
                    firstBad = index;
                }
            }
        });
    }
    for (std::thread& thread : pool) {
        thread.join();
    }
    EXPECT_EQ(mismatches.load(), 0) << "job " << firstBad.load();
}

}  // namespace
