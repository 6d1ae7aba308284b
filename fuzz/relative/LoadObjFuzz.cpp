// Loads any 44 bytes into ZelvorTime values of every form, on the heap and in an arena,
// and checks that the value always has one consistent form, that its saved record is
// stable after one round trip, and that every reading of it is safe.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <ZelvorDataType/ZelvorTime.h>

#include "RelativeFuzz.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    ZelvorFuzz::PinZone();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ZelvorDataType;
    using ZelvorFuzz::Check;
    std::array<std::uint8_t, 44> input{};
    std::memcpy(input.data(), data, size < input.size() ? size : input.size());

    ZelvorBase::Buffer arena;
    for (int start = 0; start < 4; ++start) {
        for (ZelvorBase::Buffer* home : {static_cast<ZelvorBase::Buffer*>(nullptr), &arena}) {
            ZelvorTime value = ZelvorFuzz::MakeForm(start, home);
            auto block = input;
            Check(value.LoadObj(44, block.data()) == 0);
            Check(block == input);  // the block is only read
            ZelvorFuzz::CheckConsistent(value);

            std::array<std::uint8_t, 44> first{};
            std::array<std::uint8_t, 44> second{};
            Check(value.SaveObj(44, first.data()) == 0);
            ZelvorTime again = ZelvorFuzz::MakeForm(3 - start, home);
            auto copy = first;
            Check(again.LoadObj(44, copy.data()) == 0);
            Check(again.GetRealMode() == value.GetRealMode());
            Check(again.SaveObj(44, second.data()) == 0);
            Check(first == second);
            ZelvorFuzz::Exercise(value);
        }
    }
    return 0;
}
