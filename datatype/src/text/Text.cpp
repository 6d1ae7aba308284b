// Text forms of the value types as std::string, and the stream operators that write
// them.

#include <ZelvorDataType/Text.h>

#include <array>
#include <cstdio>
#include <ostream>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/TimeSpan.h>
#include <ZelvorDataType/Variant.h>
#include <ZelvorDataType/ZelvorTime.h>

namespace ZelvorDataType {

namespace {

using text_detail::kFlagNames;
using text_detail::kKindNames;
static_assert(kFlagNames[0].bit == DYNAMIC_TIME_FIXED_DATE &&
              kFlagNames[1].bit == DYNAMIC_TIME_RELATIVE_HOUR &&
              kFlagNames[2].bit == DYNAMIC_TIME_RELATIVE_MINUTE &&
              kFlagNames[3].bit == DYNAMIC_TIME_BUSINESS_DAY);
constexpr int kFlagBits = 0x1E0;

void Append(std::string& parts, const std::string& part) {
    parts += (parts.empty() ? "" : ", ") + part;
}

}  // namespace

std::string ToText(const DateTime& value) {
    return value.ToString().c_str();
}

std::string ToText(const TimeSpan& span) {
    const long long count = span.GetTotalMilliseconds();
    // The magnitude in unsigned arithmetic, where the most negative count has one too.
    unsigned long long ms = count < 0 ? 0ULL - static_cast<unsigned long long>(count)
                                      : static_cast<unsigned long long>(count);
    const unsigned long long days = ms / 86400000;
    ms %= 86400000;
    char clock[32];
    std::snprintf(clock, sizeof clock, "%02llu:%02llu:%02llu.%03llu", ms / 3600000, ms / 60000 % 60,
                  ms / 1000 % 60, ms % 1000);
    return (count < 0 ? "-" : "") + (days != 0 ? std::to_string(days) + "d " : std::string()) +
           clock;
}

std::string ToText(const BigDecimal& value) {
    return value.ToString().c_str();
}

std::string ToText(const BigDecimalHandle& handle) {
    return handle ? ToText(*handle) : "(none)";
}

std::string ToText(const DynamicTime& rule) {
    const int value = rule.GetDynamicTime();
    if (value == DYNAMIC_TIME_NONE) {
        return "none";
    }
    const int kind = value & ~kFlagBits;
    std::string text = static_cast<unsigned>(kind) < kKindNames.size()
                           ? kKindNames[static_cast<std::size_t>(kind)]
                           : "kind " + std::to_string(kind);
    for (const auto& flag : kFlagNames) {
        if ((value & flag.bit) != 0) {
            text += " + " + std::string(flag.name);
        }
    }
    const std::array<std::pair<const char*, int>, 7> fields = {{
        {"year", rule.GetYear()},
        {"month", rule.GetMonth()},
        {"week", rule.GetWeek()},
        {"day", rule.GetDay()},
        {"hour", rule.GetHour()},
        {"minute", rule.GetMinute()},
        {"second", rule.GetSecond()},
    }};
    std::string parts;
    for (const auto& [name, field] : fields) {
        if (field != 0) {
            Append(parts, std::string(name) + " " + std::to_string(field));
        }
    }
    const int weekday = rule.GetDayOfWeek();
    if (weekday >= 0) {
        Append(parts,
               "weekday " + (weekday < 7 ? std::string(text_detail::kWeekdayNames[weekday], 3)
                                         : std::to_string(weekday)));
    }
    if (rule.GetDynamicDayOffset() != 0) {
        Append(parts, "day offset " + std::to_string(rule.GetDynamicDayOffset()));
    }
    if (rule.GetDynamicMonthOffset() != 0) {
        Append(parts, "month offset " + std::to_string(rule.GetDynamicMonthOffset()));
    }
    return parts.empty() ? text : text + "; " + parts;
}

std::string ToText(const ZelvorTime& value) {
    switch (value.GetRealMode()) {
        case TIME_MODE_UTC:
        case TIME_MODE_LOCAL: {
            DateTime stored(0.0);
            // Asking for the record's own zone reads it without a conversion.
            const bool utc = value.GetRealMode() == TIME_MODE_UTC;
            value.ToDateTime(utc, stored);
            return ToText(stored) + (utc ? " UTC" : " local");
        }
        case TIME_MODE_DYNAMIC: {
            // The rule rebuilt from what the value hands out, field by field.
            int kind = DYNAMIC_TIME_NONE;
            int dayOffset = 0;
            short monthOffset = 0;
            value.GetDynamicTime(kind);
            value.GetDynamicDayOffset(dayOffset);
            value.GetDynamicMonthOffset(monthOffset);
            DynamicTime rule(static_cast<DYNAMIC_TIME>(kind), dayOffset);
            rule.PutDynamicMonthOffset(monthOffset);
            rule.PutYear(value.GetYear(false, true));
            rule.PutMonth(value.GetMonth(false, true));
            rule.PutWeek(value.GetWeek(false, true));
            rule.PutDay(value.GetDay(false, true));
            rule.PutDayOfWeek(value.GetDayOfWeek(false, true));
            rule.PutHour(value.GetHour(false, true));
            rule.PutMinute(value.GetMinutes(false, true));
            rule.PutSecond(value.GetSeconds(true));
            return ToText(rule);
        }
        default:
            return "empty";
    }
}

std::string ToText(const Variant& value) {
    return value.ToString().c_str();
}

std::ostream& operator<<(std::ostream& os, const DateTime& value) {
    return os << ToText(value);
}

std::ostream& operator<<(std::ostream& os, const TimeSpan& span) {
    return os << ToText(span);
}

std::ostream& operator<<(std::ostream& os, const BigDecimal& value) {
    return os << ToText(value);
}

std::ostream& operator<<(std::ostream& os, const BigDecimalHandle& handle) {
    return os << ToText(handle);
}

std::ostream& operator<<(std::ostream& os, const DynamicTime& rule) {
    return os << ToText(rule);
}

std::ostream& operator<<(std::ostream& os, const ZelvorTime& value) {
    return os << ToText(value);
}

std::ostream& operator<<(std::ostream& os, const Variant& value) {
    return os << ToText(value);
}

}  // namespace ZelvorDataType
