// BM_BinaryCollection_* against BM_Vector_*: joining 10,000 blocks of 1 to 4,096 bytes
// (about 20 MB), once into blocks of at most 1 MiB and once into a single block, against
// appending the same bytes to one std::vector<unsigned char>.
//
// With glibc's default malloc the figures measure the kernel more than the copy: freeing
// twenty 1 MiB blocks at the top of the heap trims the memory back to the kernel (the
// trim threshold follows the largest block freed, 2 MiB here), and the next join faults
// every page in again, while the single large vector raises the threshold past itself
// and keeps its memory. To compare the copying alone, the program pins the allocator for
// both sides before any benchmark runs (set ZELVOR_BENCH_DEFAULT_MALLOC=1 to see the
// default behaviour instead).
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>

#include <memory>
#include <random>
#include <utility>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

using ZelvorDataType::Binary;
using ZelvorDataType::BinaryCollection;

constexpr size_t kBlocks = 10000;
constexpr size_t kMaxBlock = 4096;
constexpr size_t kLimit = size_t{1} << 20;

// Keeps freed memory in the process and large blocks on the heap, for both sides alike.
const bool kAllocatorPinned = []() noexcept {
    if (std::getenv("ZELVOR_BENCH_DEFAULT_MALLOC") != nullptr) {
        return false;
    }
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    return true;
}();

struct CollectionDeleter {
    void operator()(BinaryCollection* c) const { BinaryCollection::Delete(c); }
};
using Collection = std::unique_ptr<BinaryCollection, CollectionDeleter>;

// The same blocks for every benchmark: sizes and bytes from a fixed seed.
BinaryCollection& Source() {
    static const Collection source = [] {
        Collection c(ZelvorDataType::CreateBinaryCollection());
        std::mt19937 random(20240607);
        std::uniform_int_distribution<size_t> size(1, kMaxBlock);
        std::vector<unsigned char> bytes(kMaxBlock);
        for (size_t i = 0; i < kBlocks; ++i) {
            for (auto& b : bytes) {
                b = static_cast<unsigned char>(random());
            }
            c->Insert(ZelvorDataType::CreateBinary(bytes.data(), size(random)));
        }
        return c;
    }();
    return *source;
}

// The peer reads the same blocks, taken out of the collection beforehand.
std::vector<std::pair<const unsigned char*, size_t>> Spans() {
    std::vector<std::pair<const unsigned char*, size_t>> spans;
    const BinaryCollection& source = Source();
    for (unsigned int i = 0; i < source.GetBinaryCount(); ++i) {
        spans.emplace_back(source.GetBinary(i)->c_ptr(), source.GetBinary(i)->GetSize());
    }
    return spans;
}

void BM_BinaryCollection_CombineToMiB(benchmark::State& state) {
    BinaryCollection& source = Source();
    for (auto _ : state) {
        Collection joined(ZelvorDataType::CombineBinaryCollection(&source, kLimit));
        benchmark::DoNotOptimize(joined->GetBinary(0)->c_ptr());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * source.GetTotalLength()));
}
BENCHMARK(BM_BinaryCollection_CombineToMiB)->Unit(benchmark::kMillisecond);

void BM_BinaryCollection_CreateBinary(benchmark::State& state) {
    BinaryCollection& source = Source();
    for (auto _ : state) {
        std::unique_ptr<Binary> joined(ZelvorDataType::CreateBinary(&source, nullptr));
        benchmark::DoNotOptimize(joined->c_ptr());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * source.GetTotalLength()));
}
BENCHMARK(BM_BinaryCollection_CreateBinary)->Unit(benchmark::kMillisecond);

// Plain appending, letting the vector grow as it goes.
void BM_Vector_Append(benchmark::State& state) {
    const auto spans = Spans();
    for (auto _ : state) {
        std::vector<unsigned char> joined;
        for (const auto& [data, size] : spans) {
            joined.insert(joined.end(), data, data + size);
        }
        benchmark::DoNotOptimize(joined.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Source().GetTotalLength()));
}
BENCHMARK(BM_Vector_Append)->Unit(benchmark::kMillisecond);

// Appending into room reserved for the total, so that each byte is copied once.
void BM_Vector_AppendReserved(benchmark::State& state) {
    const auto spans = Spans();
    const size_t total = Source().GetTotalLength();
    for (auto _ : state) {
        std::vector<unsigned char> joined;
        joined.reserve(total);
        for (const auto& [data, size] : spans) {
            joined.insert(joined.end(), data, data + size);
        }
        benchmark::DoNotOptimize(joined.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * total));
}
BENCHMARK(BM_Vector_AppendReserved)->Unit(benchmark::kMillisecond);

}  // namespace
