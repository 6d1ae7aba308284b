// The tour: the code shown in README.md, run as it stands so that it can't rot. Each
// block between "// [readme]" and "// [/readme]" is, line for line, a ```cpp block of
// the README (tests/readme checks that), and the checks after it hold it to the values
// its comments promise: a mismatch ends the tour with a message.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <ranges>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <ZelvorDataType/Format.h>
#include <ZelvorDataType/ZelvorDataType.h>
#include <ZelvorInterop/Interop.h>

#include "Tour.h"

namespace ZelvorTour {

namespace {

using namespace ZelvorDataType;

void Check(bool ok, const char* claim) {
    if (!ok) {
        std::fprintf(stderr, "README snippet broken: %s\n", claim);
        std::exit(1);
    }
}

void ByteBlocks() {
    // [readme]
    std::unique_ptr<Binary> block(CreateBinary("\xCA\xFEhello", 7));
    block->ZapHead(2);  // the view is now "hello", nothing was copied
    block->UnZap();     // and the whole block is back

    ZelvorBase::Buffer arena;  // or in an arena: freed with it, never deleted
    Binary* scratch = CreateBinary(size_t{64}, &arena);
    // [/readme]
    Check(block->GetSize() == 7 && scratch->GetSize() == 64, "block sizes 7 and 64");
}

void CalendarTime() {
    // [readme]
    const DateTime meeting(2024, 3, 8, 16, 30);  // Friday, local time
    const DateTime utc = meeting.ToUTCTime();    // 2024-03-08 21:30:00.000 in New York
    const DateTime due = meeting.Add(TimeSpan(2, 0, 0, 0, 0));  // two working days on
    std::string text = due.ToString().c_str();                  // "2024-03-12 16:30:00.000"
    const double serial = meeting.ToDATE();                     // days since 1899-12-30, 45359.6875
    // [/readme]
    Check(std::string(utc.ToString().c_str()) == "2024-03-08 21:30:00.000", "utc");
    Check(text == "2024-03-12 16:30:00.000", "due");
    // 45359.6875 is exact in binary; the margin is a few units in the last place.
    Check(serial > 45359.6875 - 3e-11 && serial < 45359.6875 + 3e-11, "serial");
}

void ExactDecimals() {
    // [readme]
    const BigDecimal price("19.99");
    BigDecimalHandle total = price * BigDecimal(3);                       // "59.97", exact
    BigDecimalHandle third = BigDecimal("1").Divide(BigDecimal("3"), 4);  // "0.3333"
    std::wstring german = total->ToWString(0x407).c_str();                // L"59,97"
    // [/readme]
    Check(std::string(total->ToString().c_str()) == "59.97", "total");
    Check(std::string(third->ToString().c_str()) == "0.3333", "third");
    Check(german == L"59,97", "german");
}

void RelativeTimes() {
    // [readme]
    DynamicTime quarterEnd(DYNAMIC_TIME_THIS_QUARTER | DYNAMIC_TIME_BUSINESS_DAY, 0);
    quarterEnd.PutDay(-1);                                      // its last business day
    DateTime when(2024, 2, 14, 15, 30);                         // the reference, local time
    const int failed = quarterEnd.ToDateTime(when);             // 0; when is now in UTC
    std::string local = when.ToLocalTime().ToString().c_str();  // "2024-03-29 00:00:00.000"
    // [/readme]
    Check(failed == 0, "failed");
    Check(local == "2024-03-29 00:00:00.000", "local");
}

void Schedules() {
    // [readme]
    // Every weekday (Monday to Friday: bits 1 to 5 of the day-of-week mask) at 09:00.
    TimeSeries* weekdays = CreateTimeSeries(
        RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
        RECURRENCE_FIXED, 0x3E, RECURRENCE_FIXED, 9, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
        RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1);
    DateTime runs[5] = {DateTime(0.0), DateTime(0.0), DateTime(0.0), DateTime(0.0), DateTime(0.0)};
    const unsigned found = weekdays->GetNextNTimePoints(DateTime(2024, 3, 8, 15), 5, runs);
    // found is 5; runs[0] is Monday 2024-03-11 13:00 UTC (09:00 in New York)
    weekdays->Delete();
    // [/readme]
    Check(found == 5, "found");
    Check(std::string(runs[0].ToString().c_str()) == "2024-03-11 13:00:00.000", "runs[0]");
}

void NamedSchedules() {
    using namespace std::chrono;
    // [readme]
    // Monday to Friday at 09:30.
    TimeSeriesPtr standup = ScheduleBuilder().Weekdays(Monday, Friday).Hour(9).Minute(30).Build();
    // Every 15 minutes all day: hour Every(1) and minute Every(15) in the record. Without
    // AllDay() the unset hour is never walked, and only 00:00 to 00:45 would fire.
    TimeSeriesPtr quarterHours = ScheduleBuilder().Minute(Every(15)).AllDay().Build();
    // Refused, with the reason: std::invalid_argument "the schedule could never fire:
    // day 31 never falls in April, which has 30 days". WhyNeverFires says it of any
    // schedule, in constant time.
    std::optional<std::string> why = WhyNeverFires(*standup);  // nothing: it fires
    // [/readme]
    Check(!why, "why");
    DateTime first(0.0);
    Check(standup->GetNextNTimePoints(DateTime(2024, 3, 8, 15), 1, &first) == 1 &&
              first == DateTime(2024, 3, 11, 13, 30),
          "standup");
    std::vector<DateTime> day(97, DateTime(0.0));
    Check(quarterHours->GetNextNTimePoints(DateTime(2024, 3, 5, 5), 97, day.data()) == 97 &&
              day[96] == DateTime(2024, 3, 6, 5),
          "quarterHours");
    try {
        ScheduleBuilder().Month(4).Day(31).Build();
        Check(false, "31 April refused");
    } catch (const std::invalid_argument& refused) {
        Check(std::string(refused.what()) ==
                  "the schedule could never fire: day 31 never falls in April, which has 30 days",
              "31 April refused");
    }

    // [readme]
    // The points one at a time, in constant memory: the same as one big call.
    std::vector<DateTime> firstThree;
    const DateTime friday(2024, 3, 8, 15);                  // UTC
    for (const DateTime& utc : Points(*standup, friday)) {  // or | std::views::take(3)
        firstThree.push_back(utc);  // 13:30 UTC on Monday 2024-03-11, Tuesday, Wednesday
        if (firstThree.size() == 3) {
            break;  // nothing past the third is computed
        }
    }
    // Points(s, start, from) for a series, Points(s, start, UpTo{end}) for a range.
    // [/readme]
    Check(firstThree.size() == 3 && firstThree[2] == DateTime(2024, 3, 13, 13, 30), "firstThree");
}

void Variants() {
    // [readme]
    const Variant count(42);
    const Variant ratio(42.0);
    const bool same = count == ratio;  // true: equal as numbers
    Variant label(L"42 apples");
    const int leading = static_cast<int>(label);                           // 42, read by wcstol
    std::string printed = Variant(BigDecimal("1.50")).ToString().c_str();  // "1.50"
    // [/readme]
    Check(same, "same");
    Check(leading == 42, "leading");
    Check(printed == "1.50", "printed");
}

void OwningPointers() {
    // [readme]
    TimeSeriesPtr hourly = MakeTimeSeries(  // Delete() runs when `hourly` goes
        RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
        RECURRENCE_NONE, 0, RECURRENCE_EVERY, 1, RECURRENCE_FIXED, 0, RECURRENCE_FIXED, 0,
        RECURRENCE_FIXED, 0, -1, -1, -1, -1, -1);
    std::unique_ptr<Binary> greeting = MakeBinary("hello", 5);  // heap only: never an arena's
    // [/readme]
    DateTime next(0.0);
    Check(hourly->GetNextNTimePoints(DateTime(2024, 3, 8, 15, 10), 1, &next) == 1 &&
              next == DateTime(2024, 3, 8, 16),
          "hourly");
    Check(greeting->GetSize() == 5, "greeting");
}

void RulesAndCron() {
    // [readme]
    // Every 15 minutes from 09:00 to 16:45 on weekdays: the window 09:00-16:45/15.
    TimeSeriesPtr office = ZelvorInterop::FromCron("*/15 9-16 * * mon-fri");
    const std::string rule = ZelvorInterop::ToRecurrenceRule(*office);
    // "FREQ=WEEKLY;BYSECOND=0;BYMINUTE=0,15,30,45;BYHOUR=9,10,11,12,13,14,15,16;BYDAY=MO,..."
    const DateTime start(2024, 3, 5, 12);  // UTC: Tuesday 07:00 in New York, the DTSTART
    TimeSeriesPtr fortnightly = ZelvorInterop::FromRecurrenceRule(
        "FREQ=WEEKLY;INTERVAL=2;BYDAY=TU;BYHOUR=18;BYMINUTE=0;BYSECOND=0", start);
    // its points from `start`: 03-05, 03-19, 04-02 at 18:00 New York time
    std::string refused;
    try {
        ZelvorInterop::FromCron("0 9 15 * mon");  // cron: the 15th OR any Monday
    } catch (const ZelvorInterop::UntranslatableError& e) {
        refused = e.Part();  // "day of month"; e.what() says why
    }
    // [/readme]
    Check(rule.rfind("FREQ=WEEKLY;BYSECOND=0;BYMINUTE=0,15,30,45;BYHOUR=9,10,11,12,13,14,15,16;"
                     "BYDAY=MO,TU,WE,TH,FR",
                     0) == 0,
          "rule");
    DateTime runs[3] = {DateTime(0.0), DateTime(0.0), DateTime(0.0)};
    Check(fortnightly->GetNextNTimePoints(start, 3, runs) == 3 &&
              runs[0] == DateTime(2024, 3, 5, 23) && runs[1] == DateTime(2024, 3, 19, 22) &&
              runs[2] == DateTime(2024, 4, 2, 22),
          "fortnightly");
    Check(refused == "day of month", "refused");
}

void ChronoBridges() {
    using namespace std::chrono;
    // [readme]
    const DateTime launch(2024, 3, 8, 16, 30, 0, 250);
    const sys_time<milliseconds> instant = ToSysTime(launch);  // the fields read as UTC
    const DateTime back = DateTimeFromSysTime(instant);        // exact, years 0 to 65535
    const year_month_day date = ToYearMonthDay(launch);        // 2024-03-08; throws past 32767
    const weekday day = ToWeekday(launch);                     // Friday
    const TimeSpan shift = TimeSpanFromDuration(hours(8));     // 28800000 ms
    // [/readme]
    Check(instant.time_since_epoch() == milliseconds(1709915400250), "instant");
    Check(back == launch, "back");
    Check(date == year(2024) / March / 8 && day == Friday, "date and weekday");
    Check(shift.GetTotalMilliseconds() == 28800000, "shift");
}

void Printing() {
    // [readme]
    const DateTime meeting(2024, 3, 8, 16, 30, 5, 250);
    std::ostringstream os;
    os << meeting << " | " << BigDecimal("19.99") << " | " << TimeSpan(0, 26, 0, 0, 0);
    // os.str() is "2024-03-08 16:30:05.250 | 19.99 | 1d 02:00:00.000"
    std::string line = fmt::format("{:>8}|{:*^11}", BigDecimal("-1.50"), Variant(42));
    // "   -1.50|****42*****"
    std::string when = fmt::format("{:%a %d %b %Y, %H:%M}", meeting);    // "Fri 08 Mar 2024, 16:30"
    std::string exact = fmt::format("{:%T}|{:.0%T}", meeting, meeting);  // "16:30:05.250|16:30:05"
    std::string year = fmt::format("{:%F}", DateTime(40000, 1, 1));      // "40000-01-01"
    std::string plan = DescribeSchedule(*MakeTimeSeries(
        RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
        RECURRENCE_FIXED, 0x3E, RECURRENCE_FIXED, 9, RECURRENCE_NONE, 0, RECURRENCE_NONE, 0,
        RECURRENCE_NONE, 0, -1, -1, -1, -1, -1));  // "on Mon,Tue,Wed,Thu,Fri, hour 9"
    // [/readme]
    Check(os.str() == "2024-03-08 16:30:05.250 | 19.99 | 1d 02:00:00.000", "os");
    Check(line == "   -1.50|****42*****", "line");
    Check(when == "Fri 08 Mar 2024, 16:30", "when");
    Check(exact == "16:30:05.250|16:30:05", "exact");
    Check(year == "40000-01-01", "year");
    Check(plan == "on Mon,Tue,Wed,Thu,Fri, hour 9", "plan");
}

void Hashing() {
    // [readme]
    std::unordered_set<BigDecimal> prices{BigDecimal("1.5"), BigDecimal("1.50"), BigDecimal("2")};
    // 2 entries: 1.5 and 1.50 are equal, so they hash alike
    std::unordered_map<Variant, std::string> names;
    names[Variant(2)] = "two";
    const std::string& same = names[Variant(2.0)];  // "two": int 2 equals double 2.0
    std::unordered_set<DateTime> days{DateTime(2024, 3, 8), DateTime(2024, 3, 8, 0, 0, 0, 0, 60)};
    // 1 entry: the zone words take no part in == nor in the hash
    // [/readme]
    Check(prices.size() == 2, "prices");
    Check(same == "two" && names.size() == 1, "same");
    Check(days.size() == 1, "days");
}

}  // namespace

void ReadmeTour() {
    std::puts("\n== The README's snippets ==");
    // The README's times are New York's.
    const char* zone = std::getenv("TZ");
    const std::string previousZone = zone != nullptr ? zone : "";
    setenv("TZ", "America/New_York", 1);
    tzset();
    ByteBlocks();
    CalendarTime();
    ExactDecimals();
    RelativeTimes();
    Schedules();
    NamedSchedules();
    Variants();
    OwningPointers();
    ChronoBridges();
    Printing();
    Hashing();
    RulesAndCron();
    zone != nullptr ? setenv("TZ", previousZone.c_str(), 1) : unsetenv("TZ");
    tzset();
    std::puts("each does what the README says");
}

}  // namespace ZelvorTour
