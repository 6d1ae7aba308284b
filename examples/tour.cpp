// A short tour of the library, built against the installed package.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

namespace {

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

void CalendarTour() {
    using ZelvorDataType::DateTime;
    using ZelvorDataType::TimeSpan;
    std::puts("\n== Calendar time ==");
    // One instant in UTC, read in three zones, and a date far outside the platform's
    // years, which goes through a year of the same calendar pattern.
    const DateTime call(2024, 7, 1, 15, 30);
    const DateTime coronation(1066, 12, 25, 12, 0);
    std::printf("%-17s %-23s   %s\n", "local time in", "of 2024-07-01 15:30 UTC",
                "of 1066-12-25 12:00 UTC");
    for (const char* zone : {"America/New_York", "Europe/Berlin", "Asia/Tokyo"}) {
        setenv("TZ", zone, 1);
        tzset();
        std::printf("%-17s %s   %s\n", zone, call.ToLocalTime().ToString().c_str(),
                    coronation.ToLocalTime().ToString().c_str());
    }
    const DateTime friday(2024, 1, 5, 10);
    const DateTime due = friday.Add(TimeSpan(3, 0, 0, 0, 0));
    std::printf("%s plus 3 working days is %s (calendar sum: %s)\n", friday.ToString().c_str(),
                due.ToString().c_str(), (friday + TimeSpan(3, 0, 0, 0, 0)).ToString().c_str());
    std::printf("working days between them: %d\n", due.Span(friday).GetTotalDays());
}

}  // namespace

int main() {
    BinaryTour();
    CalendarTour();
    return 0;
}
