// BM_TimeSeries_* against the peer work they can't avoid or that a plain walk would do:
// BM_DateTime_ZoneConversions (a ToLocalTime and a ToUTCTime per point) and
// BM_DateTime_DayByDayWalk (a DateTime sum and a day of the week per day). All in
// America/New_York, so that the zone conversions do their real work.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>
#include <memory>
#include <vector>

#include <ZelvorDataType/TimeSeries.h>

#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;

constexpr RECURRENCE F = RECURRENCE_FIXED;
constexpr RECURRENCE E = RECURRENCE_EVERY;
constexpr RECURRENCE N = RECURRENCE_NONE;

void NewYork() {
    ZelvorTest::PinZone("America/New_York");
}

std::unique_ptr<TimeSeriesImpl> Daily() {
    return std::make_unique<TimeSeriesImpl>(N, 0, N, 0, E, 1, N, 0, N, 0, F, 9, F, 30, F, 0, F, 0);
}

std::vector<DateTime> Array(size_t n) {
    return std::vector<DateTime>(n, DateTime(0.0));
}

// 1,000 points of a daily schedule.
void BM_TimeSeries_Next1000Daily(benchmark::State& state) {
    NewYork();
    const auto s = Daily();
    auto points = Array(1000);
    const DateTime start(2010, 3, 1, 12);
    for (auto _ : state) {
        benchmark::DoNotOptimize(s->GetNextNTimePoints(start, 1000, points.data()));
    }
}
BENCHMARK(BM_TimeSeries_Next1000Daily);

// The conversions 1,000 points need at the least: each local time to UTC, and as many
// UTC times to local time.
void BM_DateTime_ZoneConversions1000(benchmark::State& state) {
    NewYork();
    auto points = Array(1000);
    DateTime local(2010, 3, 1, 9, 30);
    for (auto _ : state) {
        for (int i = 0; i < 1000; ++i) {
            points[i] = points[i].ToLocalTime();
            points[i] = (local + TimeSpan(i, 0, 0, 0, 0)).ToUTCTime();
        }
        benchmark::DoNotOptimize(points.data());
    }
}
BENCHMARK(BM_DateTime_ZoneConversions1000);

// Searches that find no day: every 100000 days has no next day within the 2928 days of
// the search, which tests each of them; the second Monday that is also a Saturday can't
// exist, which is known without a search; a fixed year in the past passes over whole
// years.
void BM_TimeSeries_NoDayWalk(benchmark::State& state) {
    NewYork();
    const std::unique_ptr<TimeSeriesImpl> schedules[] = {
        std::make_unique<TimeSeriesImpl>(N, 0, N, 0, E, 100000, N, 0, N, 0, F, 9, F, 0, F, 0, F, 0),
        std::make_unique<TimeSeriesImpl>(N, 0, N, 0, N, 0, F, 0, F, 64, F, 9, F, 0, F, 0, F, 0),
        std::make_unique<TimeSeriesImpl>(F, 2009, N, 0, E, 1, N, 0, N, 0, F, 9, F, 0, F, 0, F, 0),
    };
    const TimeSeriesImpl& s = *schedules[state.range(0)];
    const DateTime previous(2010, 3, 1, 9);
    for (auto _ : state) {
        DateTime next = previous;
        benchmark::DoNotOptimize(s.GetNextDay(previous, next));
    }
}
BENCHMARK(BM_TimeSeries_NoDayWalk)->Arg(0)->Arg(1)->Arg(2);

// The same 2928 days walked the plain way: a DateTime sum and a day of the week each.
void BM_DateTime_DayByDayWalk(benchmark::State& state) {
    NewYork();
    const TimeSpan day(1, 0, 0, 0, 0);
    for (auto _ : state) {
        DateTime d(2010, 3, 1, 9);
        int sundays = 0;
        for (int i = 0; i < 2928; ++i) {
            d = d + day;
            sundays += d.GetDayOfWeek() == 0;
        }
        benchmark::DoNotOptimize(sundays);
    }
}
BENCHMARK(BM_DateTime_DayByDayWalk);

// One year of a window from 00:00 to 23:45 every 15 minutes: 35,040 points.
void BM_TimeSeries_AllYearEvery15Minutes(benchmark::State& state) {
    NewYork();
    const TimeSeriesImpl s(N, 0, N, 0, E, 1, N, 0, N, 0, N, 0, N, 0, N, 0, N, 0, 0, 0, 23, 45, 15);
    const DateTime start(2010, 1, 1, 5), end(2011, 1, 1, 4, 59);
    for (auto _ : state) {
        DateTime* points = nullptr;
        benchmark::DoNotOptimize(s.GetAllTimePoints(start, end, points));
        delete[] points;
    }
}
BENCHMARK(BM_TimeSeries_AllYearEvery15Minutes)->Unit(benchmark::kMillisecond);

// The 35,040 conversions to UTC that year needs.
void BM_DateTime_ToUTCYearEvery15Minutes(benchmark::State& state) {
    NewYork();
    const DateTime first(2010, 1, 1);
    auto points = Array(35040);
    for (auto _ : state) {
        for (int i = 0; i < 35040; ++i) {
            points[i] = (first + TimeSpan(0, 0, 15 * i, 0, 0)).ToUTCTime();
        }
        benchmark::DoNotOptimize(points.data());
    }
}
BENCHMARK(BM_DateTime_ToUTCYearEvery15Minutes)->Unit(benchmark::kMillisecond);

}  // namespace
