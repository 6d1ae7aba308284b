// Reads ZelvorTime values from a memory stream holding any bytes, into values of every
// form, and checks that each value read has one consistent form and survives a write
// and a second read unchanged.
#include <array>
#include <cstddef>
#include <cstdint>

#include <ZelvorDataType/ZelvorTime.h>
#include <ZelvorSerialization/MemoryDataStream.h>

#include "RelativeFuzz.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    ZelvorFuzz::PinZone();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ZelvorDataType;
    using ZelvorFuzz::Check;
    ZelvorBase::Buffer arena;
    for (int start = 0; start < 4; ++start) {
        ZelvorSerialization::MemoryDataStream stream(data, size);
        ZelvorTime value = ZelvorFuzz::MakeForm(start, start % 2 == 0 ? nullptr : &arena);
        // Each load reads a mode word and at most one record; stop when one reads nothing.
        for (int round = 0; round < 16; ++round) {
            const std::size_t before = stream.GetRemaining();
            Check(value.LoadFromStream(&stream) == 0);
            ZelvorFuzz::CheckConsistent(value);

            ZelvorSerialization::MemoryDataStream echo;
            Check(value.SaveToStream(&echo) == 0);
            ZelvorTime back = ZelvorFuzz::MakeForm(3 - start, &arena);
            Check(back.LoadFromStream(&echo) == 0);
            Check(echo.GetRemaining() == 0);
            Check(back.GetRealMode() == value.GetRealMode());
            std::array<std::uint8_t, 44> mine{};
            std::array<std::uint8_t, 44> theirs{};
            value.SaveObj(44, mine.data());
            back.SaveObj(44, theirs.data());
            Check(mine == theirs);
            ZelvorFuzz::Exercise(value);
            if (stream.GetRemaining() == before) {
                break;
            }
        }
    }
    return 0;
}
