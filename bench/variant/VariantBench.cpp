// BM_Variant_* against BM_StdVariant_*: the same work on a std::variant over the same
// alternatives (the wide text a std::wstring, the byte block a std::vector). Each
// benchmark reports heap allocations per iteration, counted by the operator new below:
// a numeric Variant must show none.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

std::atomic<long long> gAllocations{0};

}  // namespace

void* operator new(std::size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size == 0 ? 1 : size)) {
        return p;
    }
    throw std::bad_alloc();
}

// g++ pairs its own idea of operator new with free() and warns; the pair here is
// malloc and free on purpose.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
void operator delete(void* p) noexcept {
    std::free(p);
}

void operator delete(void* p, std::size_t /*size*/) noexcept {
    std::free(p);
}
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

namespace {

using ZelvorDataType::BigDecimal;
using ZelvorDataType::CellFmtData;
using ZelvorDataType::DateTime;
using ZelvorDataType::Variant;

using Peer =
    std::variant<std::monostate, short, int, unsigned int, long long, float, double, std::wstring,
                 std::vector<unsigned char>, DateTime, BigDecimal, CellFmtData>;

const wchar_t* const kShortText = L"hello";
const wchar_t* const kLongText = L"a text long enough to need the heap in both classes";

// Allocations per iteration of the timed loop.
class AllocationCounter {
  public:
    explicit AllocationCounter(benchmark::State& state)
        : mState(state), mStart(gAllocations.load()) {}
    ~AllocationCounter() {
        const double allocations = static_cast<double>(gAllocations.load() - mStart);
        mState.counters["allocs"] =
            benchmark::Counter(allocations / static_cast<double>(mState.iterations()));
    }

  private:
    benchmark::State& mState;
    long long mStart;
};

// ---- Construction ---------------------------------------------------------------------

void BM_Variant_ConstructDouble(benchmark::State& state) {
    double value = 1.5;
    AllocationCounter count(state);
    for (auto _ : state) {
        Variant v(value);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_Variant_ConstructDouble);

void BM_StdVariant_ConstructDouble(benchmark::State& state) {
    double value = 1.5;
    AllocationCounter count(state);
    for (auto _ : state) {
        Peer v(value);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_StdVariant_ConstructDouble);

void BM_Variant_ConstructText(benchmark::State& state) {
    const wchar_t* text = state.range(0) == 0 ? kShortText : kLongText;
    AllocationCounter count(state);
    for (auto _ : state) {
        Variant v(text);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_Variant_ConstructText)->Arg(0)->Arg(1);

void BM_StdVariant_ConstructText(benchmark::State& state) {
    const wchar_t* text = state.range(0) == 0 ? kShortText : kLongText;
    AllocationCounter count(state);
    for (auto _ : state) {
        Peer v(std::in_place_type<std::wstring>, text);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_StdVariant_ConstructText)->Arg(0)->Arg(1);

// ---- Copy -----------------------------------------------------------------------------

void BM_Variant_CopyDouble(benchmark::State& state) {
    const Variant source(1.5);
    AllocationCounter count(state);
    for (auto _ : state) {
        Variant copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_Variant_CopyDouble);

void BM_StdVariant_CopyDouble(benchmark::State& state) {
    const Peer source(1.5);
    AllocationCounter count(state);
    for (auto _ : state) {
        Peer copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_StdVariant_CopyDouble);

void BM_Variant_CopyText(benchmark::State& state) {
    const Variant source(state.range(0) == 0 ? kShortText : kLongText);
    AllocationCounter count(state);
    for (auto _ : state) {
        Variant copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_Variant_CopyText)->Arg(0)->Arg(1);

void BM_StdVariant_CopyText(benchmark::State& state) {
    const Peer source(std::wstring(state.range(0) == 0 ? kShortText : kLongText));
    AllocationCounter count(state);
    for (auto _ : state) {
        Peer copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_StdVariant_CopyText)->Arg(0)->Arg(1);

// ---- Comparison -----------------------------------------------------------------------

// The peer's numeric equality across alternatives, in double, as a caller would write it.
bool PeerNumericEqual(const Peer& a, const Peer& b) {
    return std::visit(
        [](const auto& x, const auto& y) {
            using X = std::decay_t<decltype(x)>;
            using Y = std::decay_t<decltype(y)>;
            if constexpr (std::is_arithmetic_v<X> && std::is_arithmetic_v<Y>) {
                return static_cast<double>(x) == static_cast<double>(y);
            } else {
                return false;
            }
        },
        a, b);
}

bool PeerNumericLess(const Peer& a, const Peer& b) {
    return std::visit(
        [](const auto& x, const auto& y) {
            using X = std::decay_t<decltype(x)>;
            using Y = std::decay_t<decltype(y)>;
            if constexpr (std::is_arithmetic_v<X> && std::is_arithmetic_v<Y>) {
                return static_cast<double>(x) < static_cast<double>(y);
            } else {
                return false;
            }
        },
        a, b);
}

void BM_Variant_CompareNumeric(benchmark::State& state) {
    Variant a(3);
    const Variant b(3.5);
    AllocationCounter count(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
        benchmark::DoNotOptimize(a < b);
    }
}
BENCHMARK(BM_Variant_CompareNumeric);

void BM_StdVariant_CompareNumeric(benchmark::State& state) {
    const Peer a(3);
    const Peer b(3.5);
    AllocationCounter count(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(PeerNumericEqual(a, b));
        benchmark::DoNotOptimize(PeerNumericLess(a, b));
    }
}
BENCHMARK(BM_StdVariant_CompareNumeric);

void BM_Variant_CompareText(benchmark::State& state) {
    Variant a(L"a text long enough to need the heap in both classes, first");
    const Variant b(L"a text long enough to need the heap in both classes, second");
    AllocationCounter count(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
        benchmark::DoNotOptimize(a < b);
    }
}
BENCHMARK(BM_Variant_CompareText);

void BM_StdVariant_CompareText(benchmark::State& state) {
    const Peer a(std::wstring(L"a text long enough to need the heap in both classes, first"));
    const Peer b(std::wstring(L"a text long enough to need the heap in both classes, second"));
    AllocationCounter count(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a == b);
        benchmark::DoNotOptimize(a < b);
    }
}
BENCHMARK(BM_StdVariant_CompareText);

}  // namespace
