#pragma once

// fmt formatters for the value types. Header only and the one public header that needs
// fmt: link the CMake target Zelvor::Format (or fmt::fmt yourself) to use it; the
// library itself never links fmt.
//
// `{}` gives a value's text form, the one ToText of <ZelvorDataType/Text.h> gives and
// its stream operator writes. Fill, alignment, width and precision work as they do for
// strings: fmt::format("{:>30}", decimal), fmt::format("{:*^20}", span).
//
// DateTime takes, besides, a pattern of strftime conversions after the width and
// precision, as fmt's chrono formatters do: fmt::format("{:%Y-%m-%d %H:%M}", date) is
// "2024-03-05 07:08". The conversions are worked out from the fields and the library's
// day numbers, never handed to the C library, so every year from 0 to 65535 prints:
//   %Y year, at least four digits   %C year / 100, two digits   %y year % 100, two digits
//   %m month 01-12                  %d day 01-31                %e day, blank-padded
//   %j day of the year 001-366      %H hour 00-23               %I hour 01-12
//   %M minute 00-59                 %S second with milliseconds, "09.012"
//   %p AM or PM                     %a %A weekday, "Tue" "Tuesday"
//   %b %h %B month, "Mar" "March"   %u weekday 1-7, Monday 1    %w weekday 0-6, Sunday 0
//   %U week of the year 00-53 from its first Sunday, %W from its first Monday
//   %V ISO 8601 week 01-53, %G its year (at least four digits), %g that year % 100
//   %F %Y-%m-%d   %T %H:%M:%S   %R %H:%M   %D %m/%d/%y   %n newline   %t tab   %% percent
// The milliseconds of %S and %T follow the precision: three places by default, fewer
// when asked ("{:.0%T}" is "07:08:09"); a precision above 3 is refused. A precision
// without a pattern applies to the default text, "%F %T". The names are English, the
// zone is not known (%z and %Z are refused), and a width may not come from an
// argument. Anything else after a '%' throws fmt::format_error naming it (at compile
// time for a checked format string).

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include <ZelvorDataType/BigDecimal.h>
#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/Text.h>
#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorDataType/TimeSpan.h>
#include <ZelvorDataType/Variant.h>
#include <ZelvorDataType/ZelvorTime.h>
#include <fmt/format.h>

namespace ZelvorDataType::format_detail {

// A value printed as its text, formatted as a string.
template <class T>
struct TextFormatter : fmt::formatter<fmt::string_view> {
    template <class FormatContext>
    auto format(const T& value, FormatContext& ctx) const -> decltype(ctx.out()) {
        const std::string text = ToText(value);
        return fmt::formatter<fmt::string_view>::format(fmt::string_view(text), ctx);
    }
};

[[noreturn]] inline void Refuse(const std::string& what) {
    throw fmt::format_error("DateTime format: " + what);
}

[[noreturn]] inline void RefuseConversion(char conversion) {
    Refuse(std::string("unknown conversion '%") + conversion +
           "' (see <ZelvorDataType/Format.h> for those supported; the zone conversions %z "
           "and %Z are not, a DateTime knows no zone)");
}

constexpr bool IsConversion(char c) {
    return std::string_view("YCymdejHIMSpaAbBhuwUWVGgFTRDnt%").find(c) != std::string_view::npos;
}

inline void AppendNumber(std::string& out, const char* form, long long number) {
    char text[32];
    std::snprintf(text, sizeof text, form, number);
    out += text;
}

// The calendar facts of one value that the conversions read, from the fields and the
// day numbers alone.
struct Calendar {
    int year, month, day, hour, minute, second, millisecond;
    int weekday;  // 0 Sunday to 6 Saturday
    int yearDay;  // 0 for January 1
    int isoYear;  // the year of the ISO week, one off near January 1
    int isoWeek;  // 1 to 53

    explicit Calendar(const DateTime& value)
        : year(value.GetYear()),
          month(value.GetMonth()),
          day(value.GetDay()),
          hour(value.GetHour()),
          minute(value.GetMinute()),
          second(value.GetSecond()),
          millisecond(value.GetMillisecond()) {
        const auto days = static_cast<long long>(DateTime::YMDToDAYS(
            static_cast<unsigned short>(year), static_cast<short>(month), static_cast<short>(day)));
        const auto newYear =
            static_cast<long long>(DateTime::YMDToDAYS(static_cast<unsigned short>(year), 1, 1));
        // Day 0, 1899-12-30, is a Saturday; the shift keeps the remainder non-negative
        // down to year 0 (day -693959).
        weekday = static_cast<int>((days + 6 + 7LL * 200000) % 7);
        yearDay = static_cast<int>(days - newYear);
        // The ISO week is the week of its Thursday, and belongs to that Thursday's year.
        // Neighbouring years are reached by their lengths, as year 0 - 1 and 65535 + 1
        // have no day number of their own.
        const long long thursday = days - (weekday + 6) % 7 + 3;
        long long start = newYear;
        isoYear = year;
        if (thursday < start) {
            --isoYear;
            start -= DateTime::IsLeapYear(isoYear) ? 366 : 365;
        } else if (thursday >= start + (DateTime::IsLeapYear(year) ? 366 : 365)) {
            start += DateTime::IsLeapYear(year) ? 366 : 365;
            ++isoYear;
        }
        isoWeek = static_cast<int>((thursday - start) / 7 + 1);
    }
};

// A value in use holds a month 1 to 12; one that a refused LoadObj left half written may
// not, and prints "???" rather than read past the names.
inline const char* MonthName(int month) {
    return month >= 1 && month <= 12 ? text_detail::kMonthNames[month - 1] : "???";
}

inline void AppendSeconds(std::string& out, const Calendar& c, int precision) {
    AppendNumber(out, "%02lld", c.second);
    if (precision > 0) {
        std::string fraction;
        AppendNumber(fraction, "%03lld", c.millisecond);
        out += '.';
        out.append(fraction, 0, static_cast<std::size_t>(precision));
    }
}

// The pattern with its conversions replaced; `pattern` was checked by the parser.
inline std::string Expand(const DateTime& value, std::string_view pattern, int precision) {
    const Calendar c(value);
    std::string out;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] != '%' || at + 1 == pattern.size()) {
            out += pattern[at];
            continue;
        }
        switch (pattern[++at]) {
            case 'Y':
                AppendNumber(out, "%04lld", c.year);
                break;
            case 'C':
                AppendNumber(out, "%02lld", c.year / 100);
                break;
            case 'y':
                AppendNumber(out, "%02lld", c.year % 100);
                break;
            case 'm':
                AppendNumber(out, "%02lld", c.month);
                break;
            case 'd':
                AppendNumber(out, "%02lld", c.day);
                break;
            case 'e':
                AppendNumber(out, "%2lld", c.day);
                break;
            case 'j':
                AppendNumber(out, "%03lld", c.yearDay + 1);
                break;
            case 'H':
                AppendNumber(out, "%02lld", c.hour);
                break;
            case 'I':
                AppendNumber(out, "%02lld", c.hour % 12 == 0 ? 12 : c.hour % 12);
                break;
            case 'M':
                AppendNumber(out, "%02lld", c.minute);
                break;
            case 'S':
                AppendSeconds(out, c, precision);
                break;
            case 'p':
                out += c.hour < 12 ? "AM" : "PM";
                break;
            case 'a':
                out.append(text_detail::kWeekdayNames[c.weekday], 3);
                break;
            case 'A':
                out += text_detail::kWeekdayNames[c.weekday];
                break;
            case 'b':
            case 'h':
                out.append(MonthName(c.month), 3);
                break;
            case 'B':
                out += MonthName(c.month);
                break;
            case 'u':
                AppendNumber(out, "%lld", c.weekday == 0 ? 7 : c.weekday);
                break;
            case 'w':
                AppendNumber(out, "%lld", c.weekday);
                break;
            case 'U':
                AppendNumber(out, "%02lld", (c.yearDay + 7 - c.weekday) / 7);
                break;
            case 'W':
                AppendNumber(out, "%02lld", (c.yearDay + 7 - (c.weekday + 6) % 7) / 7);
                break;
            case 'V':
                AppendNumber(out, "%02lld", c.isoWeek);
                break;
            case 'G':
                AppendNumber(out, "%04lld", c.isoYear);
                break;
            case 'g':
                AppendNumber(out, "%02lld", (c.isoYear % 100 + 100) % 100);
                break;
            case 'F':
                out += Expand(value, "%Y-%m-%d", precision);
                break;
            case 'T':
                out += Expand(value, "%H:%M:%S", precision);
                break;
            case 'R':
                out += Expand(value, "%H:%M", precision);
                break;
            case 'D':
                out += Expand(value, "%m/%d/%y", precision);
                break;
            case 'n':
                out += '\n';
                break;
            case 't':
                out += '\t';
                break;
            default:
                out += '%';
                break;
        }
    }
    return out;
}

}  // namespace ZelvorDataType::format_detail

template <>
struct fmt::formatter<ZelvorDataType::DateTime> {
    // [[fill]align][width][.precision][pattern], the pattern starting at a '%'.
    template <class ParseContext>
    constexpr auto parse(ParseContext& ctx) -> decltype(ctx.begin()) {
        auto it = ctx.begin();
        const auto end = ctx.end();
        if (it == end || *it == '}') {
            return it;
        }
        // The fill is one character, which may take up to four bytes of UTF-8.
        const auto lead = static_cast<unsigned char>(*it);
        const long fillSize = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const auto isAlign = [](char c) { return c == '<' || c == '>' || c == '^'; };
        if (end - it > fillSize && isAlign(it[fillSize])) {
            fill_ = fmt::string_view(it, static_cast<std::size_t>(fillSize));
            align_ = it[fillSize];
            it += fillSize + 1;
        } else if (isAlign(*it)) {
            align_ = *it++;
        }
        for (; it != end && *it >= '0' && *it <= '9'; ++it) {
            // fmt refuses a width past INT_MAX too; checked before it can overflow.
            if (width_ > (std::numeric_limits<int>::max() - 9) / 10) {
                ZelvorDataType::format_detail::Refuse("a width too large");
            }
            width_ = width_ * 10 + (*it - '0');
        }
        if (it != end && *it == '{') {
            ZelvorDataType::format_detail::Refuse("a width or precision from an argument");
        }
        if (it != end && *it == '.') {
            precision_ = 0;
            for (++it; it != end && *it >= '0' && *it <= '9'; ++it) {
                precision_ = precision_ * 10 + (*it - '0');
                if (precision_ > 3) {
                    ZelvorDataType::format_detail::Refuse("a precision above 3 (milliseconds)");
                }
            }
        }
        const auto patternStart = it;
        if (it != end && *it == '%') {
            for (; it != end && *it != '}'; ++it) {
                if (*it == '%') {
                    if (++it == end || !ZelvorDataType::format_detail::IsConversion(*it)) {
                        ZelvorDataType::format_detail::RefuseConversion(it == end ? ' ' : *it);
                    }
                }
            }
            pattern_ = fmt::string_view(patternStart, static_cast<std::size_t>(it - patternStart));
        }
        if (it != end && *it != '}') {
            ZelvorDataType::format_detail::Refuse(std::string("unexpected '") + *it +
                                                  "' (a pattern starts with '%')");
        }
        return it;
    }

    template <class FormatContext>
    auto format(const ZelvorDataType::DateTime& value, FormatContext& ctx) const
        -> decltype(ctx.out()) {
        const std::string text =
            pattern_.size() == 0 && precision_ < 0
                ? ZelvorDataType::ToText(value)
                : ZelvorDataType::format_detail::Expand(
                      value,
                      pattern_.size() == 0 ? std::string_view("%F %T")
                                           : std::string_view(pattern_.data(), pattern_.size()),
                      precision_ < 0 ? 3 : precision_);
        // Width counts characters, and a pattern may hold UTF-8: count lead bytes only.
        const auto length = static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        }));
        const int pad = std::max(0, width_ - length);
        const int before = align_ == '>' ? pad : align_ == '^' ? pad / 2 : 0;
        auto out = ctx.out();
        for (int n = 0; n < before; ++n) {
            out = std::copy(fill_.begin(), fill_.end(), out);
        }
        out = std::copy(text.begin(), text.end(), out);
        for (int n = before; n < pad; ++n) {
            out = std::copy(fill_.begin(), fill_.end(), out);
        }
        return out;
    }

  private:
    fmt::string_view fill_ = " ";
    char align_ = '<';
    int width_ = 0;
    int precision_ = -1;  // -1: not given
    fmt::string_view pattern_;
};

template <>
struct fmt::formatter<ZelvorDataType::TimeSpan>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::TimeSpan> {};
template <>
struct fmt::formatter<ZelvorDataType::BigDecimal>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::BigDecimal> {};
template <>
struct fmt::formatter<ZelvorDataType::BigDecimalHandle>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::BigDecimalHandle> {};
template <>
struct fmt::formatter<ZelvorDataType::DynamicTime>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::DynamicTime> {};
template <>
struct fmt::formatter<ZelvorDataType::ZelvorTime>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::ZelvorTime> {};
template <>
struct fmt::formatter<ZelvorDataType::Variant>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::Variant> {};
// A schedule is met through its interface or its implementation class alike.
template <class Schedule>
struct fmt::formatter<Schedule, char,
                      std::enable_if_t<std::is_base_of_v<ZelvorDataType::TimeSeries, Schedule>>>
    : ZelvorDataType::format_detail::TextFormatter<ZelvorDataType::TimeSeries> {};
