// The tour: recurring schedules and their next runs.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include <ZelvorDataType/ZelvorDataType.h>

#include "Tour.h"

namespace ZelvorTour {

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

}  // namespace ZelvorTour
