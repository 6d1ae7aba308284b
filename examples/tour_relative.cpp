// The tour: relative times resolved against a reference.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

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

}  // namespace ZelvorTour
