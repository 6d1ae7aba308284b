// The first N points of a daily schedule through Points(...) against one
// GetNextNTimePoints call into an array of N, the array made for each call as a caller
// needs it. America/New_York, so that the zone conversions do their real work.
#include <benchmark/benchmark.h>

#include <vector>

#include <ZelvorDataType/SchedulePoints.h>

#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;

TimeSeriesImpl Daily() {
    return {RECURRENCE_NONE,  0,  RECURRENCE_NONE,  0, RECURRENCE_EVERY, 1,
            RECURRENCE_NONE,  0,  RECURRENCE_NONE,  0, RECURRENCE_FIXED, 9,
            RECURRENCE_FIXED, 30, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0};
}

void BM_TimeSeries_DailyIntoArray(benchmark::State& state) {
    ZelvorTest::PinZone("America/New_York");
    const TimeSeriesImpl s = Daily();
    const auto count = static_cast<unsigned int>(state.range(0));
    const DateTime start(2010, 3, 1, 12);
    for (auto _ : state) {
        std::vector<DateTime> points(count, DateTime(0.0));
        benchmark::DoNotOptimize(s.GetNextNTimePoints(start, count, points.data()));
        benchmark::DoNotOptimize(points.data());
    }
}
BENCHMARK(BM_TimeSeries_DailyIntoArray)->Arg(10)->Arg(10000);

void BM_TimeSeries_DailyThroughRange(benchmark::State& state) {
    ZelvorTest::PinZone("America/New_York");
    const TimeSeriesImpl s = Daily();
    const auto count = static_cast<unsigned int>(state.range(0));
    const DateTime start(2010, 3, 1, 12);
    for (auto _ : state) {
        // The loop std::views::take(count) makes (clang 14 can't compile the adaptor):
        // no point past the last one read is computed.
        SchedulePoints points = Points(s, start);
        unsigned int read = 0;
        for (auto it = points.begin(); read < count && it != points.end(); ++it, ++read) {
            benchmark::DoNotOptimize(&*it);
        }
    }
}
BENCHMARK(BM_TimeSeries_DailyThroughRange)->Arg(10)->Arg(10000);

}  // namespace
