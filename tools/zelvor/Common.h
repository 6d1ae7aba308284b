#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/TimeSpan.h>

#include "Json.h"

namespace CLI {
class App;
}

namespace zelvor {

// Bad input found after the command line was split into options: the text is the one
// line shown after "zelvor: error: ", and should start with the option it blames.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// What every command sees: the global options, and where its output goes.
struct Context {
    bool json = false;
    std::string zone;  // --tz as given, empty when the process's zone is used

    // The zone's name for people: --tz, else $TZ, else "local".
    std::string ZoneLabel() const;
};

// A command registers its options on `app` and returns the action to run once the whole
// command line is parsed and the zone is set; the action prints the result and returns
// the exit status.
using Action = std::function<int(const Context&)>;
struct Command {
    CLI::App* app;
    Action run;
};
void AddScheduleCommands(CLI::App& parent, std::vector<Command>& commands);
void AddResolveCommand(CLI::App& parent, std::vector<Command>& commands);
void AddDecimalCommand(CLI::App& parent, std::vector<Command>& commands);
void AddDateCommands(CLI::App& parent, std::vector<Command>& commands);

// ---- Reading input -------------------------------------------------------------------

// A whole decimal integer in [low, high]; otherwise a UsageError naming `what`.
long long ParseInteger(std::string_view what, std::string_view text, long long low, long long high);

// A date and time as people write it: "YYYY-MM-DD", optionally followed by "T" or a
// blank and "hh:mm", "hh:mm:ss" or "hh:mm:ss.fff" (exactly three digits of
// milliseconds), optionally followed by "Z" to mark UTC when `zoneAllowed`. Every field
// must be in range for its month and year (years 1 to 65535); the library's own text
// reader then builds the value. A UsageError names `what` and the field at fault.
struct TimeInput {
    ZelvorDataType::DateTime value{0.0};
    bool utc = false;  // ended in "Z"
};
TimeInput ParseTime(std::string_view what, std::string_view text, bool zoneAllowed);

// A day of the week by name ("mon", "Monday", case ignored) or number 0 (Sunday) to 6.
int ParseWeekday(std::string_view what, std::string_view text);

// Checks that `zone` names a time zone the C library will really use (a zone file
// under the zone directory, or a POSIX rule such as "CET-1CEST,M3.5.0,M10.5.0/3" or
// "UTC0"), since an unknown name would silently mean UTC.
void CheckZone(std::string_view zone);

// ---- Writing output ------------------------------------------------------------------

// "2024-03-05 07:08:09.012", the library's text of a value.
std::string Text(const ZelvorDataType::DateTime& value);
// "Sun" to "Sat", and the full name.
std::string WeekdayShort(int dayOfWeek);
std::string WeekdayName(int dayOfWeek);
// A span for people: "-1d 02:00:00.000"; days are left out when 0.
std::string SpanText(const ZelvorDataType::TimeSpan& span);
// The offset of local from UTC between two readings of one instant, "+01:00".
std::string OffsetText(const ZelvorDataType::DateTime& local, const ZelvorDataType::DateTime& utc);
// Writes `line` and a line feed to standard output.
void Print(const std::string& line);

}  // namespace zelvor
