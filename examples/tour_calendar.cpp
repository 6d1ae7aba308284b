// The tour: calendar time across zones.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <string>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

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

}  // namespace ZelvorTour
