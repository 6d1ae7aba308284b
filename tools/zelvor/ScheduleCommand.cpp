// zelvor schedule next|series|range: a schedule defined field by field, and its points.

#include <cctype>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

#include <ZelvorDataType/ScheduleBuilder.h>
#include <ZelvorDataType/SchedulePoints.h>
#include <ZelvorDataType/Text.h>
#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorInterop/Interop.h>
#include <CLI/CLI.hpp>

#include "Common.h"

namespace zelvor {

using ZelvorDataType::DateTime;
using ZelvorDataType::Every;
using ZelvorDataType::RECURRENCE;
using ZelvorDataType::ScheduleBuilder;
using ZelvorDataType::ScheduleField;
using ZelvorDataType::ScheduleFieldLimits;
using ZelvorDataType::TimeSeries;
using ZelvorDataType::TimeSeriesPtr;

namespace {

// The most points a listing holds, and the most a series walks over before --from:
// beyond that a dense schedule would take the memory or the time of the machine.
constexpr unsigned int kMaxPoints = 100000;
constexpr unsigned int kMaxSeriesWalk = 200000;

// The options of one subcommand, as typed.
struct ScheduleOptions {
    std::string year, month, day, week, weekdays, hour, minute, second, millisecond, window;
    std::string rrule, cron;
    std::string start = "now", from = "now", end;
    unsigned int count = 5;
};

// The options of the fields that take a value or every:N. What each accepts lives in
// the library (LimitsOf); the option only names it.
struct FieldOption {
    const char* option;
    ScheduleField field;
    std::string ScheduleOptions::*text;
};
const FieldOption kFieldOptions[] = {
    {"--year", ScheduleField::Year, &ScheduleOptions::year},
    {"--month", ScheduleField::Month, &ScheduleOptions::month},
    {"--day", ScheduleField::Day, &ScheduleOptions::day},
    {"--week", ScheduleField::Week, &ScheduleOptions::week},
    {"--hour", ScheduleField::Hour, &ScheduleOptions::hour},
    {"--minute", ScheduleField::Minute, &ScheduleOptions::minute},
    {"--second", ScheduleField::Second, &ScheduleOptions::second},
    {"--millisecond", ScheduleField::Millisecond, &ScheduleOptions::millisecond},
};

const char* OptionOf(ScheduleField field) {
    for (const FieldOption& known : kFieldOptions) {
        if (known.field == field) {
            return known.option;
        }
    }
    return "";
}

// Sets one field from "N" or "every:N"; nothing for an empty text. The numbers are read
// within the field's limits, so the messages quote the text as typed.
void ParseField(const FieldOption& option, const std::string& text, ScheduleBuilder& builder) {
    if (text.empty()) {
        return;
    }
    const ScheduleFieldLimits limits = LimitsOf(option.field);
    static const std::string every = "every:";
    if (text.compare(0, every.size(), every) == 0) {
        builder.Set(
            option.field,
            Every(static_cast<int>(ParseInteger(std::string(option.option) + " every",
                                                text.substr(every.size()), 1, limits.everyHigh))));
        return;
    }
    const int value =
        static_cast<int>(ParseInteger(option.option, text, limits.fixedLow, limits.fixedHigh));
    try {
        builder.Set(option.field, value);
    } catch (const std::invalid_argument& refused) {
        // The builder names the field; its option is the name with two dashes.
        throw UsageError(std::string("--") + refused.what());
    }
}

// "mon,wed,fri", "mon-fri", "sat-sun" (a range may wrap past Saturday): the bit mask,
// bit 0 Sunday to bit 6 Saturday.
int ParseWeekdays(const std::string& text) {
    int mask = 0;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        std::size_t end = text.find(',', begin);
        if (end == std::string::npos) {
            end = text.size();
        }
        const std::string item = text.substr(begin, end - begin);
        const std::size_t dash = item.find('-');
        if (dash == std::string::npos) {
            mask |= 1 << ParseWeekday("--weekdays", item);
        } else {
            const int first = ParseWeekday("--weekdays", item.substr(0, dash));
            const int last = ParseWeekday("--weekdays", item.substr(dash + 1));
            for (int day = first;; day = (day + 1) % 7) {
                mask |= 1 << day;
                if (day == last) {
                    break;
                }
            }
        }
        begin = end + 1;
    }
    return mask;
}

struct Window {
    int hourStart = -1, minuteStart = -1, hourEnd = -1, minuteEnd = -1, step = -1;
};

// "09:00-17:00/30": opening, closing and the step in minutes.
Window ParseWindow(const std::string& text) {
    Window window;
    if (text.empty()) {
        return window;
    }
    static const std::regex grammar(R"((\d{1,2}):(\d{2})-(\d{1,2}):(\d{2})/(\d+))");
    std::smatch match;
    if (!std::regex_match(text, match, grammar)) {
        throw UsageError("--window: '" + text +
                         "' is not a window (hh:mm-hh:mm/step, e.g. 09:00-17:00/30)");
    }
    window.hourStart =
        static_cast<int>(ParseInteger("--window opening hour", match[1].str(), 0, 23));
    window.minuteStart =
        static_cast<int>(ParseInteger("--window opening minute", match[2].str(), 0, 59));
    window.hourEnd = static_cast<int>(ParseInteger("--window closing hour", match[3].str(), 0, 23));
    window.minuteEnd =
        static_cast<int>(ParseInteger("--window closing minute", match[4].str(), 0, 59));
    window.step = static_cast<int>(ParseInteger("--window step", match[5].str(), 1, 1439));
    if (window.hourEnd * 60 + window.minuteEnd < window.hourStart * 60 + window.minuteStart) {
        throw UsageError("--window: '" + text +
                         "' closes before it opens; a window stays within one day");
    }
    return window;
}

// The builder of the options as typed. Combinations are refused here in the options'
// own words, before the builder would refuse them in the fields'.
ScheduleBuilder BuilderOf(const ScheduleOptions& o) {
    ScheduleBuilder builder;
    for (const FieldOption& option : kFieldOptions) {
        ParseField(option, o.*option.text, builder);
    }
    if (!o.weekdays.empty()) {
        builder.WeekdayMask(ParseWeekdays(o.weekdays));
    }
    const Window window = ParseWindow(o.window);
    if (!o.day.empty() && (!o.week.empty() || !o.weekdays.empty())) {
        throw UsageError("--week and --weekdays choose days only when --day is not given");
    }
    if (!o.window.empty() &&
        !(o.hour.empty() && o.minute.empty() && o.second.empty() && o.millisecond.empty())) {
        throw UsageError(
            "--window replaces --hour, --minute, --second and --millisecond; give one or the "
            "other");
    }
    if (!o.window.empty()) {
        using std::chrono::hours;
        using std::chrono::minutes;
        builder.Window(hours(window.hourStart) + minutes(window.minuteStart),
                       hours(window.hourEnd) + minutes(window.minuteEnd), minutes(window.step));
    }
    return builder;
}

bool HasNamedFields(const ScheduleOptions& o) {
    for (const std::string* field : {&o.year, &o.month, &o.day, &o.week, &o.weekdays, &o.hour,
                                     &o.minute, &o.second, &o.millisecond, &o.window}) {
        if (!field->empty()) {
            return true;
        }
    }
    return false;
}

// The schedule of --rrule or --cron, whose series begins at `start` (UTC): a rule takes
// what it leaves out, and its interval's phase, from that start.
TimeSeriesPtr TranslateSchedule(const ScheduleOptions& o, const DateTime& start) {
    if (!o.rrule.empty() && !o.cron.empty()) {
        throw UsageError("--rrule and --cron are two ways to give one schedule; give one");
    }
    if (HasNamedFields(o)) {
        throw UsageError(std::string(o.rrule.empty() ? "--cron" : "--rrule") +
                         " replaces the field options (--hour, --weekdays, --window, ...); give "
                         "one or the other");
    }
    try {
        return o.rrule.empty() ? ZelvorInterop::FromCron(o.cron)
                               : ZelvorInterop::FromRecurrenceRule(o.rrule, start);
    } catch (const ZelvorInterop::UntranslatableError& e) {
        throw UsageError(std::string(o.rrule.empty() ? "--cron" : "--rrule") + ": " + e.what());
    }
}

// A schedule that can never fire is built all the same: its listing says "no points".
// `start` (UTC) is a rule's DTSTART.
TimeSeriesPtr BuildSchedule(const ScheduleOptions& o, const DateTime& start) {
    if (!o.rrule.empty() || !o.cron.empty()) {
        return TranslateSchedule(o, start);
    }
    const ScheduleBuilder builder = BuilderOf(o);
    try {
        return builder.BuildEvenIfNeverFiring();
    } catch (const std::invalid_argument& refused) {
        throw UsageError(refused.what());
    }
}

// The note under the schedule line when an unset clock field above a stepped one keeps
// it to a fraction of the day, with the options that walk the whole day.
std::optional<std::string> UnwalkedNote(const TimeSeries& s) {
    const std::optional<ZelvorDataType::UnwalkedFields> found = FindUnwalkedFields(s);
    if (!found || found->unset.empty()) {
        return std::nullopt;
    }
    std::string names;
    std::string options;
    for (std::size_t n = 0; n < found->unset.size(); ++n) {
        names += std::string(n == 0                         ? ""
                             : n + 1 == found->unset.size() ? " and "
                                                            : ", ") +
                 LimitsOf(found->unset[n]).name;
        options += std::string(n == 0 ? "" : " ") + OptionOf(found->unset[n]) + " every:1";
    }
    const bool one = found->unset.size() == 1;
    return names + (one ? " is unset and stays 0" : " are unset and stay 0") +
           " (an unset field is not walked), so " + LimitsOf(found->stepped).name + " every " +
           std::to_string(found->interval) + " fires only while " +
           (one ? names + " is" : std::string("they are")) + " 0; add " + options + " to walk " +
           (one ? "every " + names : std::string("them all"));
}

// ---- Describing the schedule as the library stored it --------------------------------

Json FieldJson(RECURRENCE recurrence, int value) {
    if (recurrence == ZelvorDataType::RECURRENCE_EVERY) {
        return Object().Add("every", value);
    }
    if (recurrence == ZelvorDataType::RECURRENCE_FIXED) {
        return Object().Add("at", value);
    }
    return Json();
}

std::vector<std::string> MaskDays(int mask) {
    std::vector<std::string> days;
    for (int day = 0; day < 7; ++day) {
        if ((mask & (1 << day)) != 0) {
            days.push_back(WeekdayShort(day));
        }
    }
    return days;
}

std::string Clock(int hour, int minute) {
    char text[8];
    std::snprintf(text, sizeof text, "%02d:%02d", hour, minute);
    return text;
}

bool HasWindow(const TimeSeries& s) {
    return s.GetHourStart() != -1 && s.GetMinuteStart() != -1 && s.GetHourEnd() != -1 &&
           s.GetMinuteEnd() != -1 && s.GetExecutingEveryMinutes() != -1;
}

Json DescribeJson(const TimeSeries& s) {
    Json weekdays;
    if (s.GetDayOfWeekRecurrence() == ZelvorDataType::RECURRENCE_FIXED) {
        weekdays = Array();
        for (const std::string& day : MaskDays(s.GetDayOfWeek())) {
            weekdays.Push(day);
        }
    }
    Json window;
    if (HasWindow(s)) {
        window = Object()
                     .Add("open", Clock(s.GetHourStart(), s.GetMinuteStart()))
                     .Add("close", Clock(s.GetHourEnd(), s.GetMinuteEnd()))
                     .Add("every_minutes", s.GetExecutingEveryMinutes());
    }
    return Object()
        .Add("year", FieldJson(s.GetYearRecurrence(), s.GetYear()))
        .Add("month", FieldJson(s.GetMonthRecurrence(), s.GetMonth()))
        .Add("day", FieldJson(s.GetDayRecurrence(), s.GetDay()))
        .Add("week", FieldJson(s.GetWeekRecurrence(), s.GetWeek()))
        .Add("weekdays", weekdays)
        .Add("hour", FieldJson(s.GetHourRecurrence(), s.GetHour()))
        .Add("minute", FieldJson(s.GetMinuteRecurrence(), s.GetMinute()))
        .Add("second", FieldJson(s.GetSecondRecurrence(), s.GetSecond()))
        .Add("millisecond", FieldJson(s.GetMillisecondRecurrence(), s.GetMillisecond()))
        .Add("window", window);
}

// The field options that give the schedule again ("--weekdays mon --hour 9").
std::string OptionsText(const TimeSeries& s) {
    const std::pair<const char*, std::pair<RECURRENCE, int>> fields[] = {
        {"--year", {s.GetYearRecurrence(), s.GetYear()}},
        {"--month", {s.GetMonthRecurrence(), s.GetMonth()}},
        {"--day", {s.GetDayRecurrence(), s.GetDay()}},
        {"--week", {s.GetWeekRecurrence(), s.GetWeek()}},
        {"--hour", {s.GetHourRecurrence(), s.GetHour()}},
        {"--minute", {s.GetMinuteRecurrence(), s.GetMinute()}},
        {"--second", {s.GetSecondRecurrence(), s.GetSecond()}},
        {"--millisecond", {s.GetMillisecondRecurrence(), s.GetMillisecond()}}};
    std::string text;
    // The window replaces the four clock fields, the last four.
    for (std::size_t n = 0; n < (HasWindow(s) ? 4 : 8); ++n) {
        const auto& [option, field] = fields[n];
        if (field.first == ZelvorDataType::RECURRENCE_EVERY ||
            field.first == ZelvorDataType::RECURRENCE_FIXED) {
            text += std::string(text.empty() ? "" : " ") + option +
                    (field.first == ZelvorDataType::RECURRENCE_EVERY ? " every:" : " ") +
                    std::to_string(field.second);
        }
    }
    if (s.GetDayOfWeekRecurrence() == ZelvorDataType::RECURRENCE_FIXED) {
        std::string days;
        for (std::string day : MaskDays(s.GetDayOfWeek())) {
            day[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(day[0])));
            days += (days.empty() ? "" : ",") + day;
        }
        text += (text.empty() ? "--weekdays " : " --weekdays ") + days;
    }
    if (HasWindow(s)) {
        text += (text.empty() ? "--window " : " --window ") +
                Clock(s.GetHourStart(), s.GetMinuteStart()) + "-" +
                Clock(s.GetHourEnd(), s.GetMinuteEnd()) + "/" +
                std::to_string(s.GetExecutingEveryMinutes());
    }
    return text;
}

// ---- Running ---------------------------------------------------------------------------

// The n-th point (n from 1) of `points`, walked in constant memory; nothing when the
// schedule has fewer.
std::optional<DateTime> NthPoint(ZelvorDataType::SchedulePoints points, unsigned int n) {
    auto it = points.begin();
    for (unsigned int seen = 1; seen < n && it != points.end(); ++seen) {
        ++it;
    }
    if (it == points.end()) {
        return std::nullopt;
    }
    return *it;
}

// A time option read as UTC: "now", a time ending in Z, or local wall-clock time of the
// call's zone.
DateTime UtcInput(const char* option, const std::string& text) {
    if (text == "now") {
        return DateTime::NowUTC();
    }
    const TimeInput input = ParseTime(option, text, true);
    return input.utc ? input.value : input.value.ToUTCTime();
}

// ---- The other forms of one schedule ---------------------------------------------------

// One translation: the text, or why the form can't say the schedule.
struct Form {
    std::string text;
    std::string refused;
};

template <class Translate>
Form Translated(Translate translate) {
    try {
        return {translate(), {}};
    } catch (const ZelvorInterop::UntranslatableError& e) {
        return {{}, e.what()};
    }
}

int Explain(const Context& context, const ScheduleOptions& o) {
    const DateTime start = UtcInput("--start", o.start);
    const TimeSeriesPtr s = BuildSchedule(o, start);
    const Form rrule = Translated([&] { return ZelvorInterop::ToRecurrenceRule(*s, start); });
    const Form cron = Translated([&] { return ZelvorInterop::ToCron(*s); });
    DateTime first(0.0);
    const bool fires = s->GetNextNTimePoints(start, 1, &first) == 1;
    // Why it never fires, in the library's words when it knows; else the walk found none.
    std::optional<std::string> never = ZelvorDataType::WhyNeverFires(*s, start);
    if (!fires && !never) {
        never =
            "no matching day and time within the schedule's search from " + Text(start) + " UTC";
    }
    if (context.json) {
        const auto formJson = [](const Form& f) {
            return f.refused.empty() ? Object().Add("text", f.text)
                                     : Object().Add("refused", f.refused);
        };
        Json out = Object()
                       .Add("command", std::string("schedule explain"))
                       .Add("zone", context.ZoneLabel())
                       .Add("schedule", DescribeJson(*s))
                       .Add("words", ZelvorDataType::DescribeSchedule(*s));
        if (const std::optional<std::string> note = UnwalkedNote(*s)) {
            out.Add("note", *note);
        }
        out.Add("options", OptionsText(*s))
            .Add("rrule", formJson(rrule))
            .Add("cron", formJson(cron))
            .Add("start", Text(start));
        out.Add("first", fires ? Json(Text(first)) : Json());
        out.Add("never_fires", never ? Json(*never) : Json());
        Print(out.Dump());
        return 0;
    }
    Print("schedule: " + ZelvorDataType::DescribeSchedule(*s));
    if (const std::optional<std::string> note = UnwalkedNote(*s)) {
        Print("note: " + *note);
    }
    if (!o.rrule.empty() || !o.cron.empty()) {
        Print("options:  " + OptionsText(*s));
    }
    const auto show = [](const char* name, const Form& f) {
        Print(std::string(name) + (f.refused.empty() ? f.text : "can't say it: " + f.refused));
    };
    if (o.rrule.empty()) {
        show("rrule:    ", rrule);
    }
    if (o.cron.empty()) {
        show("cron:     ", cron);
    }
    Print(never ? "never fires: " + *never
                : "first:    " + Text(first) + " UTC, " + Text(first.ToLocalTime()) + " local");
    return 0;
}

// ---- Running ---------------------------------------------------------------------------

void Report(const Context& context, const char* mode, const TimeSeries& schedule,
            const std::vector<std::pair<const char*, DateTime>>& bounds, const DateTime* points,
            unsigned int count) {
    if (context.json) {
        Json out = Object()
                       .Add("command", std::string("schedule ") + mode)
                       .Add("zone", context.ZoneLabel())
                       .Add("schedule", DescribeJson(schedule));
        if (const std::optional<std::string> note = UnwalkedNote(schedule)) {
            out.Add("note", *note);
        }
        for (const auto& [name, value] : bounds) {
            out.Add(name, Text(value));
        }
        Json list = Array();
        for (unsigned int n = 0; n < count; ++n) {
            const DateTime local = points[n].ToLocalTime();
            list.Push(Object()
                          .Add("utc", Text(points[n]))
                          .Add("local", Text(local))
                          .Add("weekday", WeekdayShort(local.GetDayOfWeek()))
                          .Add("offset", OffsetText(local, points[n])));
        }
        out.Add("points", list);
        Print(out.Dump());
        return;
    }
    Print("schedule: " + ZelvorDataType::DescribeSchedule(schedule));
    if (const std::optional<std::string> note = UnwalkedNote(schedule)) {
        Print("note: " + *note);
    }
    for (const auto& [name, value] : bounds) {
        Print(std::string(name) + ": " + Text(value) + " UTC, " + Text(value.ToLocalTime()) +
              " local");
    }
    if (count == 0) {
        Print("no points");
        return;
    }
    Print("  #  UTC                      local (" + context.ZoneLabel() + ")");
    for (unsigned int n = 0; n < count; ++n) {
        const DateTime local = points[n].ToLocalTime();
        char index[16];
        std::snprintf(index, sizeof index, "%3u", n + 1);
        Print(std::string(index) + "  " + Text(points[n]) + "  " + Text(local) + " " +
              WeekdayShort(local.GetDayOfWeek()) + " " + OffsetText(local, points[n]));
    }
}

void AddDefinition(CLI::App* sub, ScheduleOptions& o) {
    const char* fieldHelp = "N for a fixed value, every:N for an interval";
    sub->add_option("--year", o.year, std::string("Year: ") + fieldHelp);
    sub->add_option("--month", o.month, std::string("Month 1-12: ") + fieldHelp);
    sub->add_option("--day", o.day, std::string("Day of the month 1-31: ") + fieldHelp);
    sub->add_option("--week", o.week,
                    "Seven-day block of the month, 1-5 from its start (1 = days 1-7), -1 to -5 "
                    "from its end; or every:N weeks");
    sub->add_option("--weekdays", o.weekdays, "Days of the week, e.g. mon,wed,fri or mon-fri");
    sub->add_option("--hour", o.hour, std::string("Hour 0-23: ") + fieldHelp);
    sub->add_option("--minute", o.minute, std::string("Minute 0-59: ") + fieldHelp);
    sub->add_option("--second", o.second, std::string("Second 0-59: ") + fieldHelp);
    sub->add_option("--millisecond", o.millisecond, std::string("Millisecond 0-999: ") + fieldHelp);
    sub->add_option("--window", o.window,
                    "Intraday window hh:mm-hh:mm/step in local time, e.g. 09:00-17:00/30 "
                    "(replaces the time fields)");
    sub->add_option("--rrule", o.rrule,
                    "The schedule as an iCalendar recurrence rule, e.g. "
                    "FREQ=WEEKLY;BYDAY=MO,WE;BYHOUR=9;BYMINUTE=0;BYSECOND=0, with --start as "
                    "its DTSTART (in place of the field options)");
    sub->add_option("--cron", o.cron,
                    "The schedule as five cron fields, e.g. '*/15 9-16 * * mon-fri' (in place "
                    "of the field options)");
}

constexpr const char* kTimeHelp =
    "YYYY-MM-DD[Thh:mm[:ss[.fff]]] in the local zone, with a trailing Z for UTC, or now";

}  // namespace

void AddScheduleCommands(CLI::App& parent, std::vector<Command>& commands) {
    CLI::App* schedule = parent.add_subcommand(
        "schedule", "Define a recurring schedule by its fields and list its points");
    schedule->require_subcommand(1);
    // The options live as long as the actions that read them.
    const auto nextOptions = std::make_shared<ScheduleOptions>();
    const auto seriesOptions = std::make_shared<ScheduleOptions>();
    const auto rangeOptions = std::make_shared<ScheduleOptions>();

    CLI::App* nextApp = schedule->add_subcommand(
        "next", "The first --count points at or after --start; the series begins on that day");
    AddDefinition(nextApp, *nextOptions);
    nextApp->add_option("--start", nextOptions->start, kTimeHelp)->capture_default_str();
    nextApp->add_option("--count", nextOptions->count, "How many points")
        ->check(CLI::Range(1U, kMaxPoints))
        ->capture_default_str();
    commands.push_back({nextApp, [options = nextOptions](const Context& context) {
                            const ScheduleOptions& next = *options;
                            const DateTime start = UtcInput("--start", next.start);
                            const TimeSeriesPtr s = BuildSchedule(next, start);
                            std::vector<DateTime> points(next.count, DateTime(0.0));
                            const unsigned int n =
                                s->GetNextNTimePoints(start, next.count, points.data());
                            Report(context, "next", *s, {{"start", start}}, points.data(), n);
                            return 0;
                        }});

    CLI::App* seriesApp = schedule->add_subcommand(
        "series",
        "The first --count points at or after --from of the series that began at --start");
    AddDefinition(seriesApp, *seriesOptions);
    seriesApp->add_option("--start", seriesOptions->start, kTimeHelp)->required();
    seriesApp->add_option("--from", seriesOptions->from, kTimeHelp)->capture_default_str();
    seriesApp->add_option("--count", seriesOptions->count, "How many points")
        ->check(CLI::Range(1U, kMaxPoints))
        ->capture_default_str();
    commands.push_back(
        {seriesApp, [options = seriesOptions](const Context& context) {
             const ScheduleOptions& series = *options;
             const DateTime start = UtcInput("--start", series.start);
             const TimeSeriesPtr s = BuildSchedule(series, start);
             const DateTime from = UtcInput("--from", series.from);
             // The walk visits every point from --start to --from; refuse
             // one that would run for ever before it stores anything.
             if (from > start) {
                 const std::optional<DateTime> last =
                     NthPoint(ZelvorDataType::Points(*s, start), kMaxSeriesWalk);
                 if (last && *last < from) {
                     throw UsageError("--from: more than " + std::to_string(kMaxSeriesWalk) +
                                      " points lie between --start and --from");
                 }
             }
             std::vector<DateTime> points(series.count, DateTime(0.0));
             const unsigned int n = s->GetNextNTimePoints(start, from, series.count, points.data());
             Report(context, "series", *s, {{"start", start}, {"from", from}}, points.data(), n);
             return 0;
         }});

    const auto explainOptions = std::make_shared<ScheduleOptions>();
    CLI::App* explainApp = schedule->add_subcommand(
        "explain",
        "A schedule given by field options, --rrule or --cron, shown in words and in the other "
        "forms, or why a form can't say it");
    AddDefinition(explainApp, *explainOptions);
    explainApp
        ->add_option("--start", explainOptions->start,
                     std::string(kTimeHelp) + "; the DTSTART of a rule with an interval")
        ->capture_default_str();
    commands.push_back({explainApp, [options = explainOptions](const Context& context) {
                            return Explain(context, *options);
                        }});

    CLI::App* rangeApp =
        schedule->add_subcommand("range", "All points from --start up to and including --end");
    AddDefinition(rangeApp, *rangeOptions);
    rangeApp->add_option("--start", rangeOptions->start, kTimeHelp)->required();
    rangeApp->add_option("--end", rangeOptions->end, kTimeHelp)->required();
    commands.push_back(
        {rangeApp, [options = rangeOptions](const Context& context) {
             const ScheduleOptions& range = *options;
             const DateTime start = UtcInput("--start", range.start);
             const TimeSeriesPtr s = BuildSchedule(range, start);
             const DateTime end = UtcInput("--end", range.end);
             if (end < start) {
                 throw UsageError("--end: " + Text(end) + " UTC lies before --start " +
                                  Text(start) + " UTC");
             }
             // The listing holds every point of the range at once; a dense
             // schedule over a long range is refused before it is walked. The
             // listing starts with the whole first day, so the probe does too.
             DateTime firstDay = start.ToLocalTime();
             firstDay.PutHour(0);
             firstDay.PutMinute(0);
             firstDay.PutSecond(0);
             firstDay.PutMillisecond(0);
             const std::optional<DateTime> beyond =
                 NthPoint(ZelvorDataType::Points(*s, firstDay.ToUTCTime()), kMaxPoints + 1);
             if (beyond && !(end < *beyond)) {
                 throw UsageError("--end: more than " + std::to_string(kMaxPoints) +
                                  " points lie in the range; narrow it");
             }
             DateTime* points = nullptr;
             const unsigned int n = s->GetAllTimePoints(start, end, points);
             const std::unique_ptr<DateTime[]> owned(points);
             Report(context, "range", *s, {{"start", start}, {"end", end}}, points, n);
             return 0;
         }});
}

}  // namespace zelvor
