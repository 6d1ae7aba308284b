// zelvor date convert|add|minus|span: the calendar's scales side by side, and working-day
// arithmetic beside the plain calendar sum.

#include <charconv>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/DateTime.h>
#include <CLI/CLI.hpp>

#include "Common.h"

namespace zelvor {

using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSpan;

namespace {

// The calendar's limits: day numbers of 0000-01-01 and 65535-12-31. A serial date
// carries the time of day in its fraction and stops a day earlier (65535-12-30), as
// DateTime(double) does; seconds since 1970 cover the whole range to 65535-12-31
// 23:59:59.
constexpr long long kFirstDay = -693959;
constexpr long long kLastDay = 23242572;
constexpr long long kUnixEpochDay = 25569;
constexpr long long kFirstSecond = (kFirstDay - kUnixEpochDay) * 86400;
constexpr long long kLastSecond = (kLastDay + 1 - kUnixEpochDay) * 86400 - 1;

struct ConvertOptions {
    std::string text, serial, seconds, days;
    int milliseconds = 0;
};

struct SpanOptions {
    std::string date, other;
    std::string days, hours, minutes, seconds, milliseconds;
};

std::string SerialText(double serial) {
    char text[64];
    const auto result = std::to_chars(text, text + sizeof text, serial);
    return std::string(text, result.ptr);
}

double ParseSerial(const std::string& text) {
    double value = 0;
    const char* first = text.data();
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(first, last, value);
    if (text.empty() || error != std::errc() || end != last || !std::isfinite(value)) {
        throw UsageError("--serial: '" + text + "' is not a number");
    }
    if (value < static_cast<double>(kFirstDay) || value >= static_cast<double>(kLastDay)) {
        throw UsageError("--serial: " + text + " is out of range (" + std::to_string(kFirstDay) +
                         " to below " + std::to_string(kLastDay) + ", 0000-01-01 to 65535-12-30)");
    }
    return value;
}

int Convert(const Context& context, const ConvertOptions& o) {
    DateTime value(0.0);
    if (!o.text.empty()) {
        value = ParseTime("--text", o.text, false).value;
    } else if (!o.serial.empty()) {
        value = DateTime(ParseSerial(o.serial));
    } else if (!o.seconds.empty()) {
        const long long seconds = ParseInteger("--unix", o.seconds, kFirstSecond, kLastSecond);
        value = DateTime(static_cast<long>(seconds), o.milliseconds);
    } else {
        const long long days = ParseInteger("--days", o.days, kFirstDay, kLastDay);
        unsigned short year = 0;
        short month = 0;
        short day = 0;
        DateTime::DAYSToYMD(static_cast<int>(days), year, month, day);
        value = DateTime(year, month, day);
    }

    const int dayNumber = DateTime::YMDToDAYS(static_cast<unsigned short>(value.GetYear()),
                                              static_cast<short>(value.GetMonth()),
                                              static_cast<short>(value.GetDay()));
    const double serial = value.ToDATE();
    const long unixSeconds = value.Totime_t();
    const long long unixRounded = value.Totime_t64();
    const int weekday = value.GetDayOfWeek();
    if (context.json) {
        Print(Object()
                  .Add("command", "date convert")
                  .Add("text", Text(value))
                  .Add("serial", SerialText(serial))
                  .Add("unix", unixSeconds)
                  .Add("unix_rounded", unixRounded)
                  .Add("days", dayNumber)
                  .Add("weekday", WeekdayName(weekday))
                  .Add("week_of_month", value.GetWeek())
                  .Add("day_of_year", value.GetDayOfYear())
                  .Add("quarter", value.GetQuarter())
                  .Add("us_date", std::string(value.ToDateString().c_str()))
                  .Dump());
        return 0;
    }
    Print("text:    " + Text(value));
    Print("serial:  " + SerialText(serial));
    Print("unix:    " + std::to_string(unixSeconds) +
          (unixRounded != unixSeconds ? " (" + std::to_string(unixRounded) + " rounded)" : ""));
    Print("days:    " + std::to_string(dayNumber));
    Print("weekday: " + WeekdayName(weekday) + ", week " + std::to_string(value.GetWeek()) +
          " of the month, day " + std::to_string(value.GetDayOfYear()) + " of the year, quarter " +
          std::to_string(value.GetQuarter()));
    Print("US date: " + std::string(value.ToDateString().c_str()));
    return 0;
}

TimeSpan SpanOf(const SpanOptions& o) {
    auto part = [](const char* option, const std::string& text) {
        return text.empty()
                   ? 0
                   : static_cast<int>(ParseInteger(option, text, -2147483647LL - 1, 2147483647LL));
    };
    return TimeSpan(part("--days", o.days), part("--hours", o.hours), part("--minutes", o.minutes),
                    part("--seconds", o.seconds), part("--ms", o.milliseconds));
}

Json MomentJson(const DateTime& value) {
    return Object().Add("text", Text(value)).Add("weekday", WeekdayShort(value.GetDayOfWeek()));
}

std::string MomentText(const DateTime& value) {
    return Text(value) + " (" + WeekdayShort(value.GetDayOfWeek()) + ")";
}

// add and minus: the working-day result beside the calendar one.
int Move(const Context& context, const SpanOptions& o, bool forward) {
    const DateTime date = ParseTime("DATE", o.date, false).value;
    const TimeSpan span = SpanOf(o);
    const DateTime working = forward ? date.Add(span) : date.Minus(span);
    const DateTime calendar = forward ? date + span : date - span;
    if (context.json) {
        Print(Object()
                  .Add("command", forward ? "date add" : "date minus")
                  .Add("date", MomentJson(date))
                  .Add("span", SpanText(span))
                  .Add("span_ms", span.GetTotalMilliseconds())
                  .Add("working", MomentJson(working))
                  .Add("calendar", MomentJson(calendar))
                  .Dump());
        return 0;
    }
    const std::string sign = forward ? " + " : " - ";
    Print(MomentText(date) + sign + SpanText(span));
    Print("working days: " + MomentText(working));
    Print("calendar:     " + MomentText(calendar));
    return 0;
}

int Span(const Context& context, const SpanOptions& o) {
    const DateTime later = ParseTime("DATE", o.date, false).value;
    const DateTime earlier = ParseTime("OTHER", o.other, false).value;
    const TimeSpan working = later.Span(earlier);
    const TimeSpan calendar = later - earlier;
    if (context.json) {
        Print(Object()
                  .Add("command", "date span")
                  .Add("date", MomentJson(later))
                  .Add("other", MomentJson(earlier))
                  .Add("working", SpanText(working))
                  .Add("working_ms", working.GetTotalMilliseconds())
                  .Add("calendar", SpanText(calendar))
                  .Add("calendar_ms", calendar.GetTotalMilliseconds())
                  .Dump());
        return 0;
    }
    Print("from " + MomentText(earlier) + " to " + MomentText(later));
    Print("working days: " + SpanText(working));
    Print("calendar:     " + SpanText(calendar));
    return 0;
}

void AddSpanOptions(CLI::App* app, SpanOptions& o) {
    app->add_option("--days", o.days, "Days of the span (may be negative)");
    app->add_option("--hours", o.hours, "Hours of the span");
    app->add_option("--minutes", o.minutes, "Minutes of the span");
    app->add_option("--seconds", o.seconds, "Seconds of the span");
    app->add_option("--ms", o.milliseconds, "Milliseconds of the span");
}

constexpr const char* kDateHelp = "YYYY-MM-DD[Thh:mm[:ss[.fff]]], no zone";

}  // namespace

void AddDateCommands(CLI::App& parent, std::vector<Command>& commands) {
    CLI::App* date =
        parent.add_subcommand("date", "Calendar conversions and working-day arithmetic");
    date->require_subcommand(1);

    const auto convert = std::make_shared<ConvertOptions>();
    CLI::App* convertApp = date->add_subcommand(
        "convert",
        "Show one date as text, serial date, seconds since 1970 (fields read as "
        "UTC) and day number; give exactly one of the four");
    CLI::Option_group* source = convertApp->add_option_group("source", "The value to convert");
    source->add_option("--text", convert->text, kDateHelp);
    source->add_option("--serial", convert->serial,
                       "Serial date: days since 1899-12-30, the fraction the time of day");
    source->add_option("--unix", convert->seconds, "Seconds since 1970-01-01 00:00:00 UTC");
    source->add_option("--days", convert->days, "Day number, 0 = 1899-12-30");
    source->require_option(1);
    convertApp->add_option("--ms", convert->milliseconds, "Milliseconds added to --unix")
        ->check(CLI::Range(0, 999));
    commands.push_back({convertApp, [convert](const Context& context) {
                            if (convert->milliseconds != 0 && convert->seconds.empty()) {
                                throw UsageError("--ms goes with --unix only");
                            }
                            return Convert(context, *convert);
                        }});

    const auto add = std::make_shared<SpanOptions>();
    CLI::App* addApp =
        date->add_subcommand("add",
                             "Add a span counting working days only (Monday to Friday), beside the "
                             "calendar sum");
    addApp->add_option("DATE", add->date, kDateHelp)->required();
    AddSpanOptions(addApp, *add);
    commands.push_back(
        {addApp, [add](const Context& context) { return Move(context, *add, true); }});

    const auto minus = std::make_shared<SpanOptions>();
    CLI::App* minusApp = date->add_subcommand(
        "minus", "Subtract a span counting working days only, beside the calendar difference");
    minusApp->add_option("DATE", minus->date, kDateHelp)->required();
    AddSpanOptions(minusApp, *minus);
    commands.push_back(
        {minusApp, [minus](const Context& context) { return Move(context, *minus, false); }});

    const auto span = std::make_shared<SpanOptions>();
    CLI::App* spanApp = date->add_subcommand(
        "span", "The working-day distance from OTHER to DATE, beside the calendar one");
    spanApp->add_option("DATE", span->date, kDateHelp)->required();
    spanApp->add_option("OTHER", span->other, kDateHelp)->required();
    commands.push_back({spanApp, [span](const Context& context) { return Span(context, *span); }});
}

}  // namespace zelvor
