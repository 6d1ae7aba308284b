// BM_DynamicTime_ToDateTime/<kind> against BM_DateTime_ToUTCTime: every resolution ends
// in one conversion of its local answer to UTC, so that conversion is the peer, and the
// ratio tells what the rule itself costs. BM_ZelvorTime_* copy and assign between
// forms in an arena.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>
#include <memory>

#include <ZelvorDataType/ZelvorTime.h>

#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;

void PinZone() {
    ZelvorTest::PinZone("America/New_York");
}

const DateTime kReference(2024, 3, 14, 15, 30, 45, 123);

void BM_DateTime_ToUTCTime(benchmark::State& state) {
    PinZone();
    for (auto _ : state) {
        DateTime date = kReference;
        benchmark::DoNotOptimize(date);
        DateTime utc = date.ToUTCTime();
        benchmark::DoNotOptimize(utc);
    }
}
BENCHMARK(BM_DateTime_ToUTCTime);

// A typical rule of each kind: kind 0 with a fixed date, the others with the fields
// that they read most often.
DynamicTime RuleOfKind(int kind) {
    DynamicTime rule(static_cast<DYNAMIC_TIME>(kind), 0);
    switch (kind) {
        case DYNAMIC_TIME_LATEST:
            rule.PutDynamicTime(DYNAMIC_TIME_LATEST | DYNAMIC_TIME_FIXED_DATE);
            rule.PutYear(2024);
            rule.PutMonth(2);
            rule.PutDay(-1);
            break;
        case DYNAMIC_TIME_NOW:
            rule.PutHour(-3);
            break;
        case DYNAMIC_TIME_TODAY:
            rule.PutDay(-1);
            rule.PutHour(9);
            break;
        case DYNAMIC_TIME_THIS_WEEK:
            rule.PutDayOfWeek(5);
            break;
        case DYNAMIC_TIME_THIS_MONTH:
            rule.PutMonth(1);
            rule.PutWeek(3);
            rule.PutDayOfWeek(1);
            break;
        case DYNAMIC_TIME_THIS_YEAR:
            rule.PutMonth(11);
            rule.PutWeek(4);
            rule.PutDayOfWeek(4);
            break;
        case DYNAMIC_TIME_THIS_QUARTER:
            rule.PutDynamicTime(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_BUSINESS_DAY);
            rule.PutDay(-1);
            break;
        default:
            rule.PutWeek(-1);
            break;
    }
    return rule;
}

void BM_DynamicTime_ToDateTime(benchmark::State& state) {
    PinZone();
    const DynamicTime rule = RuleOfKind(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        DateTime date = kReference;
        benchmark::DoNotOptimize(date);
        benchmark::DoNotOptimize(rule.ToDateTime(date));
        benchmark::DoNotOptimize(date);
    }
}
BENCHMARK(BM_DynamicTime_ToDateTime)->DenseRange(2, 14)->Arg(0);

// Copying between a static and a dynamic form in an arena draws a new record each time;
// the arena is replaced every so often so that memory stays bounded.
void BM_ZelvorTime_AssignAcrossForms(benchmark::State& state) {
    PinZone();
    const ZelvorTime date(kReference, TIME_MODE_UTC, true);
    ZelvorTime rule;
    rule.PutDynamicTime(DYNAMIC_TIME_TODAY);
    auto arena = std::make_unique<ZelvorBase::Buffer>();
    auto value = std::make_unique<ZelvorTime>(arena.get());
    int round = 0;
    for (auto _ : state) {
        *value = date;
        *value = rule;
        benchmark::DoNotOptimize(value.get());
        if (++round == 4096) {
            state.PauseTiming();
            value.reset();
            arena = std::make_unique<ZelvorBase::Buffer>();
            value = std::make_unique<ZelvorTime>(arena.get());
            round = 0;
            state.ResumeTiming();
        }
    }
}
BENCHMARK(BM_ZelvorTime_AssignAcrossForms);

// The same two assignments between values of one form: records overwritten in place.
void BM_ZelvorTime_AssignSameForm(benchmark::State& state) {
    PinZone();
    const ZelvorTime first(kReference, TIME_MODE_UTC, true);
    const ZelvorTime second(DateTime(2025, 1, 1), TIME_MODE_UTC, true);
    ZelvorBase::Buffer arena;
    ZelvorTime value(first, &arena);
    for (auto _ : state) {
        value = second;
        value = first;
        benchmark::DoNotOptimize(&value);
    }
}
BENCHMARK(BM_ZelvorTime_AssignSameForm);

}  // namespace
