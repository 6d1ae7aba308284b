// A short tour of the library, built against the installed package.
#include <cstdio>
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

// Rules resolved against a fixed reference time, Thursday 2024-03-14 15:30:45 local;
// answers come back in UTC and are shown in local time.
void RelativeTimeTour() {
    using namespace ZelvorDataType;
    std::puts("== Relative times ==");
    const DateTime reference(2024, 3, 14, 15, 30, 45);
    std::printf("reference                          %s\n", reference.ToString().c_str());

    DynamicTime quarterEnd(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_BUSINESS_DAY, 0);
    quarterEnd.PutDay(-1);
    DynamicTime thirdMonday(DYNAMIC_TIME_THIS_MONTH, 0);
    thirdMonday.PutMonth(1);  // next month
    thirdMonday.PutWeek(3);
    thirdMonday.PutDayOfWeek(1);
    DynamicTime yesterdayAtNine(DYNAMIC_TIME_TODAY, 0);
    yesterdayAtNine.PutDay(-1);
    yesterdayAtNine.PutHour(9);
    DynamicTime firstBusinessDay(DYNAMIC_TIME_THIS_MONTH | DYNAMIC_TIME_BUSINESS_DAY, 0);
    firstBusinessDay.PutMonth(-2);  // two months back
    firstBusinessDay.PutDay(1);

    const struct {
        const char* name;
        const DynamicTime& rule;
    } rules[] = {
        {"last business day of this quarter", quarterEnd},
        {"third Monday of next month", thirdMonday},
        {"yesterday at 09:00", yesterdayAtNine},
        {"first business day two months back", firstBusinessDay},
    };
    for (const auto& r : rules) {
        DateTime date = reference;
        if (r.rule.ToDateTime(date) == 0) {
            std::printf("%-34s %s\n", r.name, date.ToLocalTime().ToString().c_str());
        }
    }

    // A ZelvorTime holds a rule and saves it in its 44-byte record.
    ZelvorTime value;
    value.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH);
    value.PutDay(-1, false);
    unsigned char record[44];
    value.SaveObj(sizeof record, record);
    ZelvorTime restored;
    restored.LoadObj(sizeof record, record);
    DateTime monthEnd = reference;
    restored.ToDateTime(false, monthEnd);
    std::printf("%-34s %s\n", "end of month, saved and reloaded", monthEnd.ToString().c_str());
}

}  // namespace

int main() {
    BinaryTour();
    RelativeTimeTour();
    return 0;
}
