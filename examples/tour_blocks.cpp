// The tour: byte blocks.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

std::string Hex(const ZelvorDataType::Binary& block) {
    std::string text;
    char byte[4];
    for (size_t i = 0; i < block.GetSize(); ++i) {
        std::snprintf(byte, sizeof byte, "%02x ", block.c_ptr()[i]);
        text += byte;
    }
    return text.empty() ? "(empty)" : text;
}

void BinaryTour() {
    std::puts("== Byte blocks ==");
    const unsigned char packet[] = {0xCA, 0xFE, 'h', 'e', 'l', 'l', 'o', 0x0D, 0x0A};
    std::unique_ptr<ZelvorDataType::Binary> block(
        ZelvorDataType::CreateBinary(packet, sizeof packet));
    std::printf("built     %zu bytes: %s\n", block->GetSize(), Hex(*block).c_str());
    block->ZapHead(2);  // drop the two-byte header
    block->ZapTail(2);  // and the line end
    std::printf("trimmed   %zu bytes: %s\n", block->GetSize(), Hex(*block).c_str());
    block->UnZap();
    std::printf("restored  %zu bytes: %s\n", block->GetSize(), Hex(*block).c_str());

    ZelvorBase::Buffer arena;
    ZelvorDataType::Binary* inArena = ZelvorDataType::CreateBinary(packet + 2, 5, &arena);
    std::printf("in arena  %zu bytes: %s (freed with the arena)\n", inArena->GetSize(),
                Hex(*inArena).c_str());
}

}  // namespace ZelvorTour
