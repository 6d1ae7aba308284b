// zelvor resolve: a relative time built from its kind, flags, fields and offsets,
// resolved against the present or a given reference time, with its expiration.

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/Text.h>
#include <ZelvorDataType/ZelvorTime.h>
#include <CLI/CLI.hpp>

#include "Common.h"

namespace zelvor {

using ZelvorDataType::DateTime;
using ZelvorDataType::DynamicTime;
using ZelvorDataType::TimeSpan;
using ZelvorDataType::ZelvorTime;

namespace {

using ZelvorDataType::text_detail::kKindNames;
constexpr const auto& kFlags = ZelvorDataType::text_detail::kFlagNames;

struct ResolveOptions {
    std::string kind;
    std::array<bool, 4> flags{};
    std::string year, month, week, day, weekday, hour, minute, second, dayOffset, monthOffset;
    std::string at;
};

int KindByName(const std::string& name) {
    for (std::size_t kind = 0; kind < kKindNames.size(); ++kind) {
        if (name == kKindNames[kind]) {
            return static_cast<int>(kind);
        }
    }
    std::string known;
    for (const char* k : kKindNames) {
        known += (known.empty() ? "" : ", ") + std::string(k);
    }
    throw UsageError("--kind: '" + name + "' is not a kind (" + known + ")");
}

// Which fields a kind reads, and which of them are absolute values with a range rather
// than offsets. Anything given that the kind does not read is refused, since the
// library would silently pass it by.
struct Reading {
    bool year, month, week, day, weekday, time;
};

Reading ReadsOf(int kind, bool fixedDate) {
    using namespace ZelvorDataType;
    if (kind == DYNAMIC_TIME_EARLIEST || (kind == DYNAMIC_TIME_LATEST && !fixedDate)) {
        return {false, false, false, false, false, false};
    }
    if (fixedDate || kind == DYNAMIC_TIME_THIS_MONTH || kind == DYNAMIC_TIME_THIS_YEAR ||
        kind == DYNAMIC_TIME_THIS_QUARTER) {
        return {true, true, true, true, true, true};
    }
    if (kind == DYNAMIC_TIME_NOW || kind == DYNAMIC_TIME_TODAY) {
        return {true, true, true, true, false, true};
    }
    return {true, true, true, false, true, true};  // this-week and the weekday kinds
}

std::optional<int> Given(const char* option, const std::string& text, long long low,
                         long long high) {
    if (text.empty()) {
        return std::nullopt;
    }
    return static_cast<int>(ParseInteger(option, text, low, high));
}

constexpr long long kIntMin = -2147483647LL - 1;
constexpr long long kIntMax = 2147483647LL;

ZelvorTime BuildRule(const ResolveOptions& o) {
    using namespace ZelvorDataType;
    const int kind = KindByName(o.kind);
    int value = kind;
    for (std::size_t n = 0; n < kFlags.size(); ++n) {
        if (o.flags[n]) {
            value |= kFlags[n].bit;
        }
    }
    const bool fixedDate = o.flags[0];
    const bool relativeHour = o.flags[1];
    const bool relativeMinute = o.flags[2];
    if (fixedDate && kind != DYNAMIC_TIME_LATEST && kind != DYNAMIC_TIME_NOW) {
        throw UsageError("--fixed-date applies only to the kinds latest and now");
    }
    const Reading reads = ReadsOf(kind, fixedDate);
    const std::array<std::pair<const char*, std::pair<const std::string*, bool>>, 7> fields = {{
        {"--year", {&o.year, reads.year}},
        {"--month", {&o.month, reads.month}},
        {"--week", {&o.week, reads.week}},
        {"--day", {&o.day, reads.day}},
        {"--weekday", {&o.weekday, reads.weekday}},
        {"--hour", {&o.hour, reads.time}},
        {"--minute", {&o.minute, reads.time}},
    }};
    for (const auto& [option, field] : fields) {
        if (!field.first->empty() && !field.second) {
            throw UsageError(std::string(option) + " is not read by the kind " + o.kind +
                             (fixedDate ? " with --fixed-date" : ""));
        }
    }
    if (!o.second.empty() && !reads.time) {
        throw UsageError("--second is not read by the kind " + o.kind);
    }

    // Absolute fields get their ranges; offsets take any 32-bit value. Kind now adds
    // the time fields as offsets whatever the flags say.
    const bool occurrenceKind = fixedDate || kind == DYNAMIC_TIME_THIS_MONTH ||
                                kind == DYNAMIC_TIME_THIS_YEAR || kind == DYNAMIC_TIME_THIS_QUARTER;
    const bool timeOffsets = kind == DYNAMIC_TIME_NOW;
    std::optional<int> year, month, week, day, hour, minute, second;
    year =
        fixedDate ? Given("--year", o.year, 0, 65535) : Given("--year", o.year, kIntMin, kIntMax);
    if (fixedDate) {
        month = Given("--month", o.month, 1, 12);
    } else if (kind == DYNAMIC_TIME_THIS_YEAR) {
        month = Given("--month", o.month, 0, 12);
    } else if (kind == DYNAMIC_TIME_THIS_QUARTER) {
        month = Given("--month", o.month, 0, 3);
    } else {
        month = Given("--month", o.month, kIntMin, kIntMax);
    }
    week =
        occurrenceKind ? Given("--week", o.week, -6, 6) : Given("--week", o.week, kIntMin, kIntMax);
    if (kind == DYNAMIC_TIME_THIS_QUARTER) {
        day = Given("--day", o.day, -92, 92);
    } else if (occurrenceKind) {
        day = Given("--day", o.day, -31, 31);
    } else {
        day = Given("--day", o.day, kIntMin, kIntMax);
    }
    const bool hourOffset = timeOffsets || relativeHour;
    const bool minuteOffset = timeOffsets || relativeMinute;
    hour = Given("--hour", o.hour, hourOffset ? kIntMin : 0, hourOffset ? kIntMax : 23);
    minute = Given("--minute", o.minute, minuteOffset ? kIntMin : 0, minuteOffset ? kIntMax : 59);
    second = Given("--second", o.second, minuteOffset ? kIntMin : 0, minuteOffset ? kIntMax : 59);
    const int dayOffset =
        o.dayOffset.empty()
            ? 0
            : static_cast<int>(ParseInteger("--day-offset", o.dayOffset, kIntMin, kIntMax));
    const int monthOffset =
        o.monthOffset.empty()
            ? 0
            : static_cast<int>(ParseInteger("--month-offset", o.monthOffset, -32768, 32767));

    ZelvorTime rule;
    rule.PutDynamicTime(value);
    rule.PutDynamicDayOffset(dayOffset);
    rule.PutDynamicMonthOffset(static_cast<short>(monthOffset));
    if (year) {
        rule.PutYear(*year, false);
    }
    if (month) {
        rule.PutMonth(*month, false);
    }
    if (week) {
        rule.PutWeek(*week, false);
    }
    if (day) {
        rule.PutDay(*day, false);
    }
    if (!o.weekday.empty()) {
        rule.PutDayOfWeek(ParseWeekday("--weekday", o.weekday), false, true);
    }
    if (hour) {
        rule.PutHour(*hour, false);
    }
    if (minute) {
        rule.PutMinutes(*minute, false);
    }
    if (second) {
        rule.PutSeconds(*second);
    }
    return rule;
}

// The rule as the library holds it, field by field.
Json RuleJson(const ZelvorTime& rule, const std::string& kindName) {
    int value = 0;
    rule.GetDynamicTime(value);
    Json flags = Array();
    for (const auto& flag : kFlags) {
        if ((value & flag.bit) != 0) {
            flags.Push(flag.name);
        }
    }
    int dayOffset = 0;
    short monthOffset = 0;
    rule.GetDynamicDayOffset(dayOffset);
    rule.GetDynamicMonthOffset(monthOffset);
    return Object()
        .Add("kind", kindName)
        .Add("flags", flags)
        .Add("value", value)
        .Add("year", rule.GetYear(false, true))
        .Add("month", rule.GetMonth(false, true))
        .Add("week", rule.GetWeek(false, true))
        .Add("day", rule.GetDay(false, true))
        .Add("weekday", rule.GetDayOfWeek(false, true))
        .Add("hour", rule.GetHour(false, true))
        .Add("minute", rule.GetMinutes(false, true))
        .Add("second", rule.GetSeconds(true))
        .Add("day_offset", dayOffset)
        .Add("month_offset", static_cast<int>(monthOffset));
}

Json MomentJson(const std::optional<DateTime>& utc) {
    if (!utc) {
        return Json();
    }
    return Object().Add("utc", Text(*utc)).Add("local", Text(utc->ToLocalTime()));
}

std::string MomentText(const DateTime& utc) {
    const DateTime local = utc.ToLocalTime();
    return Text(local) + " local (" + WeekdayShort(local.GetDayOfWeek()) + "), " + Text(utc) +
           " UTC";
}

int Run(const Context& context, const ResolveOptions& o) {
    const ZelvorTime rule = BuildRule(o);

    // The reference is local wall-clock time, as the resolution reads it.
    std::optional<DateTime> reference;
    if (!o.at.empty() && o.at != "now") {
        const TimeInput input = ParseTime("--at", o.at, true);
        reference = input.utc ? input.value.ToLocalTime() : input.value;
        if (*reference == DateTime(0.0)) {
            throw UsageError(
                "--at: 1899-12-30 00:00:00.000 local stands for the present "
                "moment in the library; leave --at out to resolve against now");
        }
    }
    const DateTime shownReference = reference ? *reference : DateTime::Now();

    DateTime resolved = reference ? *reference : DateTime(0.0);
    std::optional<DateTime> answer;
    if (rule.ToDateTime(true, resolved) == 0) {
        answer = resolved;
    }
    // The empty date asks the library for the present moment.
    std::optional<DateTime> expiration;
    ZelvorTime out;
    if (rule.GetExpiration(reference ? *reference : DateTime(0.0), out) == 0) {
        DateTime utc(0.0);
        out.ToDateTime(true, utc);
        expiration = utc;
    }

    if (context.json) {
        Print(Object()
                  .Add("command", "resolve")
                  .Add("zone", context.ZoneLabel())
                  .Add("rule", RuleJson(rule, o.kind))
                  .Add("reference", Text(shownReference))
                  .Add("reference_is_now", !reference.has_value())
                  .Add("resolved", MomentJson(answer))
                  .Add("expires", MomentJson(expiration))
                  .Dump());
        return 0;
    }
    Print("rule: " + ZelvorDataType::ToText(rule));
    Print("reference: " + Text(shownReference) + " local" + (reference ? "" : " (now)") +
          ", zone " + context.ZoneLabel());
    Print("resolves to: " +
          (answer ? MomentText(*answer) : std::string("no date (the rule names none)")));
    Print("expires: " + (expiration ? MomentText(*expiration) : std::string("never")));
    return 0;
}

}  // namespace

void AddResolveCommand(CLI::App& parent, std::vector<Command>& commands) {
    const auto options = std::make_shared<ResolveOptions>();
    CLI::App* app = parent.add_subcommand(
        "resolve",
        "Resolve a relative time (a kind with flags, fields and offsets) and show "
        "when its answer changes");
    std::string kinds;
    for (const char* k : kKindNames) {
        kinds += (kinds.empty() ? "" : ", ") + std::string(k);
    }
    app->add_option("--kind", options->kind, "The kind: " + kinds)->required();
    app->add_flag("--fixed-date", options->flags[0],
                  "latest and now: --year, --month, --day are an absolute date");
    app->add_flag("--relative-hour", options->flags[1], "--hour is an offset in hours");
    app->add_flag("--relative-minute", options->flags[2], "--minute and --second are offsets");
    app->add_flag("--business-day", options->flags[3],
                  "Day offsets count business days (Monday to Friday)");
    app->add_option("--year", options->year, "Years moved, or the year with --fixed-date");
    app->add_option("--month", options->month,
                    "Months moved; the month with this-year (1-12) and --fixed-date; the month "
                    "of the quarter (1-3) with this-quarter");
    app->add_option("--week", options->week,
                    "Weeks moved; with --weekday and no --day, the occurrence of that weekday "
                    "in the month (negative from the end)");
    app->add_option("--day", options->day,
                    "Days moved (now, today); day of the month, negative from its end "
                    "(this-month, this-year, --fixed-date); days from the quarter's start "
                    "(this-quarter)");
    app->add_option("--weekday", options->weekday, "Day of the week: sun to sat, or 0-6");
    app->add_option("--hour", options->hour, "Hour 0-23, or an offset with --relative-hour");
    app->add_option("--minute", options->minute,
                    "Minute 0-59, or an offset with --relative-minute");
    app->add_option("--second", options->second,
                    "Second 0-59, or an offset with --relative-minute");
    app->add_option("--day-offset", options->dayOffset,
                    "Days the reference moves before the kind applies (positive: future)");
    app->add_option("--month-offset", options->monthOffset,
                    "Months the reference moves first (positive: future)");
    app->add_option("--at", options->at,
                    "Reference time YYYY-MM-DD[Thh:mm[:ss[.fff]]] local, Z for UTC; "
                    "default now");
    commands.push_back({app, [options](const Context& context) { return Run(context, *options); }});
}

}  // namespace zelvor
