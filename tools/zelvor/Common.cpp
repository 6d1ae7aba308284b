#include "Common.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <regex>

namespace zelvor {

using ZelvorDataType::DateTime;
using ZelvorDataType::TimeSpan;

std::string Context::ZoneLabel() const {
    if (!zone.empty()) {
        return zone;
    }
    const char* fromEnvironment = std::getenv("TZ");
    return fromEnvironment != nullptr && *fromEnvironment != '\0' ? fromEnvironment : "local";
}

long long ParseInteger(std::string_view what, std::string_view text, long long low,
                       long long high) {
    long long value = 0;
    const char* first = text.data();
    const char* last = text.data() + text.size();
    // from_chars takes no plus sign; people write one for offsets.
    if (first != last && *first == '+') {
        ++first;
    }
    const auto [end, error] = std::from_chars(first, last, value);
    if (first == last || error == std::errc::invalid_argument || end != last) {
        throw UsageError(std::string(what) + ": '" + std::string(text) + "' is not a whole number");
    }
    if (error == std::errc::result_out_of_range || value < low || value > high) {
        throw UsageError(std::string(what) + ": " + std::string(text) + " is out of range (" +
                         std::to_string(low) + " to " + std::to_string(high) + ")");
    }
    return value;
}

TimeInput ParseTime(std::string_view what, std::string_view text, bool zoneAllowed) {
    static const std::regex grammar(
        R"((\d{1,5})-(\d{2})-(\d{2})(?:[T ](\d{2}):(\d{2})(?::(\d{2})(?:\.(\d+))?)?)?(Z?))");
    const std::string subject(text);
    std::smatch match;
    const std::string where = std::string(what) + ": '" + subject + "'";
    if (!std::regex_match(subject, match, grammar)) {
        throw UsageError(where +
                         " is not a date (YYYY-MM-DD, optionally followed by T or a blank "
                         "and hh:mm, hh:mm:ss or hh:mm:ss.fff" +
                         (zoneAllowed ? ", and Z for UTC)" : ")"));
    }
    TimeInput result;
    result.utc = match[8].length() > 0;
    if (result.utc && !zoneAllowed) {
        throw UsageError(where + ": this command reads dates without a zone; drop the Z");
    }
    if (match[7].matched && match[7].length() != 3) {
        throw UsageError(where + ": milliseconds take exactly three digits after the point");
    }
    auto field = [&](int index, const char* name, int low, int high) {
        const int value = match[index].matched ? std::stoi(match[index].str()) : 0;
        if (value < low || value > high) {
            throw UsageError(where + ": " + name + " " + match[index].str() + " is out of range (" +
                             std::to_string(low) + " to " + std::to_string(high) + ")");
        }
        return value;
    };
    const int year = field(1, "year", 1, 65535);
    const int month = field(2, "month", 1, 12);
    const int monthLength =
        DateTime(year, month, 1).GetDaysInMonth();  // the library's own leap-year rule
    const int day = field(3, "day", 1, monthLength);
    const int hour = field(4, "hour", 0, 23);
    const int minute = field(5, "minute", 0, 59);
    const int second = field(6, "second", 0, 59);
    const int millisecond = field(7, "millisecond", 0, 999);

    char normal[32];
    const int length = std::snprintf(normal, sizeof normal, "%04d-%02d-%02d %02d:%02d:%02d.%03d",
                                     year, month, day, hour, minute, second, millisecond);
    if (result.value.FromString(normal) != length) {
        throw UsageError(where + " was refused by the date reader");
    }
    return result;
}

namespace {

constexpr std::array<const char*, 7> kWeekdayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

std::string Lower(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

}  // namespace

int ParseWeekday(std::string_view what, std::string_view text) {
    const std::string name = Lower(text);
    for (int day = 0; day < 7; ++day) {
        const std::string full = Lower(kWeekdayNames[static_cast<std::size_t>(day)]);
        if (name == full || name == full.substr(0, 3)) {
            return day;
        }
    }
    if (!name.empty() && std::isdigit(static_cast<unsigned char>(name[0]))) {
        return static_cast<int>(ParseInteger(what, text, 0, 6));
    }
    throw UsageError(std::string(what) + ": '" + std::string(text) +
                     "' is not a day of the week (sun, mon, tue, wed, thu, fri, sat or 0-6)");
}

void CheckZone(std::string_view zone) {
    std::string name(zone);
    if (!name.empty() && name[0] == ':') {
        name.erase(0, 1);
    }
    // A POSIX rule: a name of three or more letters (or <...>), then an offset, then
    // optionally a daylight-saving name, offset and rules.
    static const std::regex posix(
        R"(([A-Za-z]{3,}|<[+\-0-9A-Za-z]{3,}>)[+\-]?\d{1,2}(:\d{2}){0,2}(([A-Za-z]{3,}|<[+\-0-9A-Za-z]{3,}>)([+\-]?\d{1,2}(:\d{2}){0,2})?(,[^,]+,[^,]+)?)?)");
    if (std::regex_match(name, posix)) {
        return;
    }
    const char* directory = std::getenv("TZDIR");
    const std::filesystem::path root =
        directory != nullptr && *directory != '\0' ? directory : "/usr/share/zoneinfo";
    const bool plainName = !name.empty() && name.find("..") == std::string::npos &&
                           name[0] != '/' &&
                           std::regex_match(name, std::regex(R"([A-Za-z0-9_+\-/]+)"));
    std::error_code ignored;
    if (plainName && std::filesystem::is_regular_file(root / name, ignored)) {
        return;
    }
    throw UsageError("--tz: '" + std::string(zone) +
                     "' is not a known time zone (a name such as Europe/Berlin, or a POSIX "
                     "rule such as UTC0 or CET-1CEST,M3.5.0,M10.5.0/3)");
}

std::string Text(const DateTime& value) {
    return value.ToString().c_str();
}

std::string WeekdayName(int dayOfWeek) {
    return dayOfWeek >= 0 && dayOfWeek < 7 ? kWeekdayNames[static_cast<std::size_t>(dayOfWeek)]
                                           : "?";
}

std::string WeekdayShort(int dayOfWeek) {
    return WeekdayName(dayOfWeek).substr(0, 3);
}

std::string SpanText(const TimeSpan& span) {
    long long ms = span.GetTotalMilliseconds();
    std::string sign;
    if (ms < 0) {
        sign = "-";
        ms = -ms;
    }
    const long long days = ms / 86400000;
    ms %= 86400000;
    char clock[32];
    std::snprintf(clock, sizeof clock, "%02lld:%02lld:%02lld.%03lld", ms / 3600000, ms / 60000 % 60,
                  ms / 1000 % 60, ms % 1000);
    return sign + (days != 0 ? std::to_string(days) + "d " : std::string()) + clock;
}

std::string OffsetText(const DateTime& local, const DateTime& utc) {
    const long long minutes = (local - utc).GetTotalMilliseconds() / 60000;
    const long long size = minutes < 0 ? -minutes : minutes;
    char text[48];
    std::snprintf(text, sizeof text, "%c%02lld:%02lld", minutes < 0 ? '-' : '+', size / 60,
                  size % 60);
    return text;
}

void Print(const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

}  // namespace zelvor
