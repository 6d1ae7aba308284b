#pragma once

// The text form of every value type as a std::string: one overload per type, the form
// that its stream operator (`os << value`) writes and that `{}` gives in fmt (see
// <ZelvorDataType/Format.h>). Types with a text member of their own give exactly that
// text; the others get the forms described here. Each returns a new string owned by the
// caller and reads the value only.

#include <array>
#include <string>

#include <ZelvorDataType/Export.h>

namespace ZelvorDataType {

namespace text_detail {
// English names, Sunday first and January first, shared by the texts here and the
// formatters of <ZelvorDataType/Format.h>; the short forms are their first three letters.
inline constexpr const char* kWeekdayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                 "Thursday", "Friday", "Saturday"};
inline constexpr const char* kMonthNames[12] = {"January",   "February", "March",    "April",
                                                "May",       "June",     "July",     "August",
                                                "September", "October",  "November", "December"};
// The DynamicTime kinds 0 to 14 by name, and its flags with their bits, as the text of
// a rule writes them (and the zelvor tool reads them).
inline constexpr std::array<const char*, 15> kKindNames = {
    "latest",         "earliest",      "now",         "today",         "this-week",
    "this-month",     "this-year",     "this-sunday", "this-monday",   "this-tuesday",
    "this-wednesday", "this-thursday", "this-friday", "this-saturday", "this-quarter"};
struct FlagName {
    const char* name;
    int bit;  // the DYNAMIC_TIME flag
};
inline constexpr std::array<FlagName, 4> kFlagNames = {{{"fixed-date", 0x20},
                                                        {"relative-hour", 0x40},
                                                        {"relative-minute", 0x80},
                                                        {"business-day", 0x100}}};
}  // namespace text_detail

class BigDecimal;
class BigDecimalHandle;
class DateTime;
class DynamicTime;
class TimeSeries;
class TimeSpan;
class Variant;
class ZelvorTime;

// DateTime::ToString: "2024-03-05 07:08:09.012".
ZELVOR_DATATYPE_API std::string ToText(const DateTime& value);

// "[-][<days>d ]hh:mm:ss.fff": TimeSpan(0, 26, 0, 0, 5) is "1d 02:00:00.005", -1 ms is
// "-00:00:00.001", zero "00:00:00.000". Days are left out when there are none.
ZELVOR_DATATYPE_API std::string ToText(const TimeSpan& span);

// BigDecimal::ToString ("-1.50"). Throws ExceptionImpl<BigDecimalException>("Invalid
// BigDecimal") for an empty or invalid value, as ToString does.
ZELVOR_DATATYPE_API std::string ToText(const BigDecimal& value);
// The text of the value the handle holds; "(none)" for an empty handle.
ZELVOR_DATATYPE_API std::string ToText(const BigDecimalHandle& handle);

// The rule in words: the kind by name ("latest", "earliest", "now", "today",
// "this-week", "this-month", "this-year", "this-sunday" to "this-saturday",
// "this-quarter"), each flag as " + fixed-date", " + relative-hour",
// " + relative-minute", " + business-day", then after "; " the fields that are not 0
// (year, month, week, day, hour, minute, second), the weekday when one is set
// ("weekday Mon"), and the day and month offsets when not 0:
//   DYNAMIC_TIME_TODAY | DYNAMIC_TIME_RELATIVE_HOUR, day offset -1, hour 9
//   gives "today + relative-hour; hour 9, day offset -1".
// DYNAMIC_TIME_NONE prints "none", a kind above 14 "kind <number>".
ZELVOR_DATATYPE_API std::string ToText(const DynamicTime& rule);

// "empty"; a static value as its record's text with its zone, "2024-03-05 07:08:09.012
// UTC" or "... local"; a dynamic value as the text of its rule (see above). Reads the
// stored record only: nothing is converted or resolved.
ZELVOR_DATATYPE_API std::string ToText(const ZelvorTime& value);

// Variant::ToString: numbers as the C library prints them ("1.500000000000000"), texts
// in UTF-8, dates as DateTime text, "" for an empty value. Throws what ToString throws
// (an invalid BigDecimal's "Invalid BigDecimal").
ZELVOR_DATATYPE_API std::string ToText(const Variant& value);

// The schedule in words, the fields that take part in the order year, month, day, week,
// weekdays, hour, minute, second, millisecond, window, joined by ", ": a fixed field as
// "hour 9", an interval as "day every 3", the weekdays as "on Mon,Tue,Wed,Thu,Fri" ("on
// no day" for an empty mask), the window as "window 09:00-17:00 every 30 min". Every
// weekday at 09:00:00.000 is "on Mon,Tue,Wed,Thu,Fri, hour 9, minute 0, second 0,
// millisecond 0"; a schedule with no field at all is "every day at midnight (no field
// set)".
ZELVOR_DATATYPE_API std::string DescribeSchedule(const TimeSeries& schedule);
// The same text.
ZELVOR_DATATYPE_API std::string ToText(const TimeSeries& schedule);

}  // namespace ZelvorDataType
