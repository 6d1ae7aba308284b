// BM_Binary_* against BM_Vector_*: the same work on a std::vector<unsigned char>.
#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <vector>

#include <ZelvorDataType/Binary.h>

namespace {

using ZelvorDataType::Binary;
using ZelvorDataType::CreateBinary;

std::vector<unsigned char> Payload(size_t size) {
    std::vector<unsigned char> bytes(size);
    for (size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<unsigned char>(i * 31);
    }
    return bytes;
}

// Refilling a block of the same size: a copy into the existing storage.
void BM_Binary_SetBinary(benchmark::State& state) {
    const auto payload = Payload(static_cast<size_t>(state.range(0)));
    std::unique_ptr<Binary> b(CreateBinary(payload.size()));
    for (auto _ : state) {
        b->SetBinary(payload.data(), payload.size());
        benchmark::DoNotOptimize(b->c_ptr());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Binary_SetBinary)->Arg(16)->Arg(256)->Arg(4096)->Arg(65536);

void BM_Vector_Assign(benchmark::State& state) {
    const auto payload = Payload(static_cast<size_t>(state.range(0)));
    std::vector<unsigned char> v(payload.size());
    for (auto _ : state) {
        v.assign(payload.begin(), payload.end());
        benchmark::DoNotOptimize(v.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Vector_Assign)->Arg(16)->Arg(256)->Arg(4096)->Arg(65536);

// Trimming four bytes off the front and restoring the block. The vector has no view,
// so trimming means moving the bytes and restoring means copying them back.
void BM_Binary_ZapHeadUnZap(benchmark::State& state) {
    const auto payload = Payload(static_cast<size_t>(state.range(0)));
    std::unique_ptr<Binary> b(CreateBinary(payload.data(), payload.size()));
    for (auto _ : state) {
        b->ZapHead(4);
        benchmark::DoNotOptimize(b->c_ptr());
        b->UnZap();
        benchmark::DoNotOptimize(b->c_ptr());
    }
}
BENCHMARK(BM_Binary_ZapHeadUnZap)->Arg(16)->Arg(4096)->Arg(65536);

void BM_Vector_EraseHeadRestore(benchmark::State& state) {
    const auto payload = Payload(static_cast<size_t>(state.range(0)));
    std::vector<unsigned char> v(payload);
    for (auto _ : state) {
        v.erase(v.begin(), v.begin() + 4);
        benchmark::DoNotOptimize(v.data());
        v.insert(v.begin(), payload.begin(), payload.begin() + 4);
        benchmark::DoNotOptimize(v.data());
    }
}
BENCHMARK(BM_Vector_EraseHeadRestore)->Arg(16)->Arg(4096)->Arg(65536);

}  // namespace
