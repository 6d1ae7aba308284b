// A short tour of the library, built against the installed package.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

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

void DecimalTour() {
    using ZelvorDataType::BigDecimal;
    std::puts("\n== Exact decimals ==");
    const BigDecimal tenth("0.1");
    const BigDecimal fifth("0.2");
    const auto sum = tenth + fifth;
    std::printf("0.1 + 0.2       = %s (equals 0.3: %s)\n", sum->ToString().c_str(),
                *sum == BigDecimal("0.3") ? "yes" : "no");

    const BigDecimal price("19.99");
    const BigDecimal rate("0.075");
    const auto subtotal = price * BigDecimal(3);
    const auto tax = *subtotal * rate;  // scales add up: 2 + 3 places
    const auto total = *subtotal + *tax;
    std::printf("19.99 * 3       = %s\n", subtotal->ToString().c_str());
    std::printf("  + 7.5%% tax    = %s (tax %s)\n", total->ToString().c_str(),
                tax->ToString().c_str());

    // Division truncates at the scale asked for; nothing rounds.
    const BigDecimal one("1");
    const BigDecimal seven("7");
    std::printf("1 / 7 to 30     = %s\n", one.Divide(seven, 30)->ToString().c_str());
    std::printf("1 / 7 as is     = %s (the dividend's scale, 0)\n",
                (one / seven)->ToString().c_str());

    const BigDecimal big("123456789012345678901234567890.5");
    std::printf("big * big       = %s\n", (big * big)->ToString().c_str());

    // 0x407 is German (Germany): a comma before the decimals.
    std::printf("total in German = %ls\n", total->ToWString(0x407).c_str());
}

// Prints the next `count` runs of a schedule from `start`, in UTC and in local time.
void PrintRuns(const char* title, const ZelvorDataType::TimeSeries& schedule,
               const ZelvorDataType::DateTime& start) {
    using ZelvorDataType::DateTime;
    std::vector<DateTime> runs(5, DateTime(0.0));
    const unsigned int found = schedule.GetNextNTimePoints(start, 5, runs.data());
    std::printf("%s\n", title);
    for (unsigned int i = 0; i < found; ++i) {
        std::printf("  %s UTC   %s local\n", runs[i].ToString().c_str(),
                    runs[i].ToLocalTime().ToString().c_str());
    }
}

void ScheduleTour() {
    using namespace ZelvorDataType;
    std::puts("\n== Recurring schedules ==");
    // New York time, so the output is the same everywhere; daylight saving starts on
    // 2024-03-10 and the UTC hour of the runs moves with it.
    const char* zone = std::getenv("TZ");
    const std::string previousZone = zone != nullptr ? zone : "";
    setenv("TZ", "America/New_York", 1);
    tzset();

    const DateTime start(2024, 3, 7, 12, 0);  // UTC
    std::printf("from %s UTC, local time in America/New_York\n", start.ToString().c_str());
    // Mask 62: Monday to Friday. Week -1: the last seven days of the month.
    const std::unique_ptr<TimeSeries> weekdays(CreateTimeSeries(
        RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
        RECURRENCE_FIXED, 62, RECURRENCE_FIXED, 9, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
        RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1));
    PrintRuns("every weekday at 09:00", *weekdays, start);
    const std::unique_ptr<TimeSeries> lastFriday(CreateTimeSeries(
        RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_FIXED, -1,
        RECURRENCE_FIXED, 32, RECURRENCE_FIXED, 17, RECURRENCE_FIXED, 30, RECURRENCE_FIXED, 0,
        RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1));
    PrintRuns("last Friday of each month at 17:30", *lastFriday, start);

    zone != nullptr ? setenv("TZ", previousZone.c_str(), 1) : unsetenv("TZ");
    tzset();
}

// Rules resolved against a fixed reference time, Thursday 2024-03-14 15:30:45 local;
// answers come back in UTC and are shown in local time.
void RelativeTimeTour() {
    using namespace ZelvorDataType;
    std::puts("\n== Relative times ==");
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
    CalendarTour();
    DecimalTour();
    ScheduleTour();
    RelativeTimeTour();
    return 0;
}
