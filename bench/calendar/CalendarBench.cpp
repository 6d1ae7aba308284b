// BM_DateTime_* against a peer doing the same work with the standard library or the bare
// platform call: BM_Chrono_* (std::chrono calendar types), BM_Platform_* (mktime,
// localtime_r, snprintf, sscanf). Each pair walks the same inputs.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include <ZelvorDataType/DateTime.h>

#include "support/Zone.h"

namespace {

using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSpan;
namespace chr = std::chrono;

constexpr int kDayNumberOf1970 = 25569;

// Day numbers spread over 1900..2100 with a stride prime to every month length.
std::vector<int> DayNumbers() {
    std::vector<int> days;
    days.reserve(73000 / 7 + 1);
    for (int day = 0; day < 73000; day += 7) {
        days.push_back(day);
    }
    return days;
}

struct Fields {
    int year, month, day, hour, minute, second;
};

// Dates of the platform's band, at assorted times of day, shared by both sides.
std::vector<Fields> Dates(int firstYear, int years) {
    std::vector<Fields> dates;
    dates.reserve(4096);
    for (int i = 0; i < 4096; ++i) {
        dates.push_back(
            Fields{firstYear + i % years, 1 + i % 12, 1 + i % 28, i % 24, i % 60, (i * 7) % 60});
    }
    return dates;
}

void PinZone() {
    ZelvorTest::PinZone("America/New_York");
}

void BM_DateTime_DayNumbersRoundTrip(benchmark::State& state) {
    const std::vector<int> days = DayNumbers();
    for (auto _ : state) {
        long long sum = 0;
        for (const int n : days) {
            unsigned short year;
            short month, day;
            DateTime::DAYSToYMD(n, year, month, day);
            sum += DateTime::YMDToDAYS(year, month, day);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(days.size()));
}
BENCHMARK(BM_DateTime_DayNumbersRoundTrip);

void BM_Chrono_DayNumbersRoundTrip(benchmark::State& state) {
    const std::vector<int> days = DayNumbers();
    for (auto _ : state) {
        long long sum = 0;
        for (const int n : days) {
            const chr::year_month_day ymd{chr::sys_days{chr::days{n - kDayNumberOf1970}}};
            benchmark::DoNotOptimize(ymd);
            sum += chr::sys_days{ymd}.time_since_epoch().count();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(days.size()));
}
BENCHMARK(BM_Chrono_DayNumbersRoundTrip);

// Values whose caches are empty, asked for day of week and week. Between rounds the
// values are made fresh again with the clock paused.
void BM_DateTime_WeekdayAndWeek(benchmark::State& state) {
    std::vector<DateTime> fresh;
    for (const Fields& f : Dates(1600, 800)) {
        fresh.emplace_back(f.year, f.month, f.day);
    }
    std::vector<DateTime> values = fresh;
    for (auto _ : state) {
        long long sum = 0;
        for (const DateTime& value : values) {
            sum += value.GetDayOfWeek() + value.GetWeek();
        }
        benchmark::DoNotOptimize(sum);
        state.PauseTiming();
        values = fresh;
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(values.size()));
}
BENCHMARK(BM_DateTime_WeekdayAndWeek);

void BM_Chrono_WeekdayAndWeek(benchmark::State& state) {
    std::vector<chr::year_month_day> dates;
    for (const Fields& f : Dates(1600, 800)) {
        dates.emplace_back(chr::year{f.year}, chr::month(f.month), chr::day(f.day));
    }
    for (auto _ : state) {
        long long sum = 0;
        for (const chr::year_month_day& ymd : dates) {
            const int weekday = static_cast<int>(chr::weekday{chr::sys_days{ymd}}.c_encoding());
            const int day = static_cast<int>(static_cast<unsigned>(ymd.day()));
            // The Sunday-first row of the month that holds the day.
            sum += weekday + (day - 1 - weekday + 13) / 7;
        }
        benchmark::DoNotOptimize(sum);
        state.PauseTiming();
        benchmark::ClobberMemory();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(dates.size()));
}
BENCHMARK(BM_Chrono_WeekdayAndWeek);

// Made from the fields and asked at once: construction included on both sides.
void BM_DateTime_NewValueWeekdayAndWeek(benchmark::State& state) {
    const std::vector<Fields> dates = Dates(1600, 800);
    for (auto _ : state) {
        long long sum = 0;
        for (const Fields& f : dates) {
            const DateTime value(f.year, f.month, f.day);
            sum += value.GetDayOfWeek() + value.GetWeek();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(dates.size()));
}
BENCHMARK(BM_DateTime_NewValueWeekdayAndWeek);

void BM_Chrono_NewValueWeekdayAndWeek(benchmark::State& state) {
    const std::vector<Fields> dates = Dates(1600, 800);
    for (auto _ : state) {
        long long sum = 0;
        for (const Fields& f : dates) {
            const chr::year_month_day ymd{chr::year{f.year}, chr::month(f.month), chr::day(f.day)};
            const int weekday = static_cast<int>(chr::weekday{chr::sys_days{ymd}}.c_encoding());
            sum += weekday + (f.day - 1 - weekday + 13) / 7;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(dates.size()));
}
BENCHMARK(BM_Chrono_NewValueWeekdayAndWeek);

void BM_DateTime_ToUTCTime(benchmark::State& state) {
    PinZone();
    std::vector<DateTime> values;
    for (const Fields& f : Dates(1971, 67)) {
        values.emplace_back(f.year, f.month, f.day, f.hour, f.minute, f.second);
    }
    for (auto _ : state) {
        for (const DateTime& value : values) {
            benchmark::DoNotOptimize(value.ToUTCTime());
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(values.size()));
}
BENCHMARK(BM_DateTime_ToUTCTime);

void BM_Platform_mktime(benchmark::State& state) {
    PinZone();
    const std::vector<Fields> dates = Dates(1971, 67);
    for (auto _ : state) {
        for (const Fields& f : dates) {
            tm fields{};
            fields.tm_year = f.year - 1900;
            fields.tm_mon = f.month - 1;
            fields.tm_mday = f.day;
            fields.tm_hour = f.hour;
            fields.tm_min = f.minute;
            fields.tm_sec = f.second;
            fields.tm_isdst = -1;
            benchmark::DoNotOptimize(mktime(&fields));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(dates.size()));
}
BENCHMARK(BM_Platform_mktime);

void BM_DateTime_ToLocalTime(benchmark::State& state) {
    PinZone();
    std::vector<DateTime> values;
    for (const Fields& f : Dates(1971, 67)) {
        values.emplace_back(f.year, f.month, f.day, f.hour, f.minute, f.second);
    }
    for (auto _ : state) {
        for (const DateTime& value : values) {
            benchmark::DoNotOptimize(value.ToLocalTime());
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(values.size()));
}
BENCHMARK(BM_DateTime_ToLocalTime);

void BM_Platform_localtime_r(benchmark::State& state) {
    PinZone();
    std::vector<time_t> seconds;
    for (const Fields& f : Dates(1971, 67)) {
        seconds.push_back(DateTime(f.year, f.month, f.day, f.hour, f.minute, f.second).Totime_t());
    }
    for (auto _ : state) {
        for (const time_t s : seconds) {
            tm local;
            benchmark::DoNotOptimize(localtime_r(&s, &local));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(seconds.size()));
}
BENCHMARK(BM_Platform_localtime_r);

// Far years go through the year of the same pattern; reported beside the band.
void BM_DateTime_ToUTCTimeFarYears(benchmark::State& state) {
    PinZone();
    std::vector<DateTime> values;
    for (const Fields& f : Dates(0, 65535)) {
        values.emplace_back(f.year * 13 % 65536, f.month, f.day, f.hour, f.minute, f.second);
    }
    for (auto _ : state) {
        for (const DateTime& value : values) {
            benchmark::DoNotOptimize(value.ToUTCTime());
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(values.size()));
}
BENCHMARK(BM_DateTime_ToUTCTimeFarYears);

void BM_DateTime_PlusSpan(benchmark::State& state) {
    const DateTime start(2024, 3, 5, 7, 8, 9, 12);
    long long step = 0;
    for (auto _ : state) {
        step += 3600007;
        benchmark::DoNotOptimize(start + TimeSpan(step));
    }
}
BENCHMARK(BM_DateTime_PlusSpan);

// The same sum with chrono, down to calendar fields again.
void BM_Chrono_PlusSpan(benchmark::State& state) {
    const chr::sys_time<chr::milliseconds> start = chr::sys_days{chr::year{2024} / 3 / 5} +
                                                   chr::hours{7} + chr::minutes{8} +
                                                   chr::seconds{9} + chr::milliseconds{12};
    long long step = 0;
    for (auto _ : state) {
        step += 3600007;
        const auto sum = start + chr::milliseconds{step};
        const auto day = chr::floor<chr::days>(sum);
        const chr::year_month_day ymd{day};
        const chr::hh_mm_ss<chr::milliseconds> time{sum - day};
        benchmark::DoNotOptimize(ymd);
        benchmark::DoNotOptimize(time);
    }
}
BENCHMARK(BM_Chrono_PlusSpan);

void BM_DateTime_ToString(benchmark::State& state) {
    const DateTime value(2024, 3, 5, 7, 8, 9, 12);
    for (auto _ : state) {
        benchmark::DoNotOptimize(value.ToString());
    }
}
BENCHMARK(BM_DateTime_ToString);

void BM_Platform_snprintf(benchmark::State& state) {
    char text[64];
    for (auto _ : state) {
        std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u.%03u", 2024u, 3u, 5u, 7u,
                      8u, 9u, 12u);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_Platform_snprintf);

void BM_DateTime_FromString(benchmark::State& state) {
    DateTime value(0.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(value.FromString("2024-03-05 07:08:09.012"));
    }
}
BENCHMARK(BM_DateTime_FromString);

void BM_Platform_sscanf(benchmark::State& state) {
    int fields[7];
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::sscanf("2024-03-05 07:08:09.012", "%d-%d-%d %d:%d:%d.%d",
                                             &fields[0], &fields[1], &fields[2], &fields[3],
                                             &fields[4], &fields[5], &fields[6]));
    }
}
BENCHMARK(BM_Platform_sscanf);

}  // namespace
