#pragma once

// Schedules by named fields: ScheduleBuilder fills the 23 parameters of CreateTimeSeries
// from calls such as Hour(9) and Minute(Every(15)), checks every value and every
// combination as it goes, and refuses to build a schedule that could never fire.
// WhyNeverFires answers the same question for any schedule, in constant time.

#include <array>
#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/Export.h>
#include <ZelvorDataType/TimeSeries.h>

namespace ZelvorDataType {

// An interval for one field of a ScheduleBuilder: Minute(Every(15)) is every 15th
// minute (RECURRENCE_EVERY with 15 in the record).
struct Every {
    constexpr explicit Every(int n) noexcept : interval(n) {}
    int interval;
};

// The calendar and clock fields of a schedule that take a fixed value or an interval.
enum class ScheduleField { Year, Month, Day, Week, Hour, Minute, Second, Millisecond };

// What a ScheduleBuilder accepts for one field: a fixed value in fixedLow..fixedHigh
// (0 excluded when zeroRefused), or Every(N) with N in 1..everyHigh.
struct ScheduleFieldLimits {
    const char* name;  // "year", "month", ...: the name in messages
    int fixedLow;
    int fixedHigh;
    bool zeroRefused;
    int everyHigh;
};

// The limits of `field`. A week is a seven-day block of the month: 1 the days 1-7, 5
// the days 29-35, and -1 to -5 the same counted from the month's end; 0 matches no day.
// Intervals of the clock fields stay below the field's range (an interval that wraps
// the whole range is not a schedule anybody means); those of the date fields stop where
// the day search would take years.
constexpr ScheduleFieldLimits LimitsOf(ScheduleField field) noexcept {
    switch (field) {
        case ScheduleField::Year:
            return {"year", 1, 65535, false, 100};
        case ScheduleField::Month:
            return {"month", 1, 12, false, 120};
        case ScheduleField::Day:
            return {"day", 1, 31, false, 3660};
        case ScheduleField::Week:
            return {"week", -5, 5, true, 520};
        case ScheduleField::Hour:
            return {"hour", 0, 23, false, 23};
        case ScheduleField::Minute:
            return {"minute", 0, 59, false, 59};
        case ScheduleField::Second:
            return {"second", 0, 59, false, 59};
        case ScheduleField::Millisecond:
            break;
    }
    return {"millisecond", 0, 999, false, 999};
}

// Builds a schedule from named fields. Every field starts unset (RECURRENCE_NONE in the
// record); a setter given a value out of its limits throws std::invalid_argument at
// once, with a message naming the field and its allowed values, and leaves the
// builder as it was. Build() checks the combination and throws std::invalid_argument
// for what the record would silently ignore or could never fire: day together with a
// week or weekdays (they choose days only while the day is unset), a window together
// with a clock field, and whatever WhyNeverFires reports (31 April, 30 February, 29
// February in a fixed common year, ...).
//
//   TimeSeriesPtr s = ScheduleBuilder().Weekdays(Monday, Friday).Hour(9)
//                         .Minute(Every(15)).Build();
//
// The record walks that as 09:00, 09:15, 09:30 and 09:45 on a day that follows a day
// of the series, but from 09:15 on a day it opens at midnight (the first day, and a
// Monday after the weekend): from midnight the minute steps before the hour is placed.
// Window(9h, 9h + 45min, 15min) lists 09:00 to 09:45 on every day of the pattern.
//
// The trap of the record: an unset clock field is not walked. Minute(Every(15)) alone
// gives 00:00, 00:15, 00:30 and 00:45 of each day and nothing else, because the unset
// hour stays at 0. AllDay() says "all day": see there.
//
// A builder is a plain value (copyable); Build() may be called any number of times.
class ZELVOR_DATATYPE_API ScheduleBuilder {
  public:
    ScheduleBuilder() = default;

    // Fixed values and intervals of the fields, within LimitsOf(field).
    ScheduleBuilder& Set(ScheduleField field, int value);
    ScheduleBuilder& Set(ScheduleField field, Every every);

    ScheduleBuilder& Year(int year) { return Set(ScheduleField::Year, year); }
    ScheduleBuilder& Year(Every every) { return Set(ScheduleField::Year, every); }
    ScheduleBuilder& Month(int month) { return Set(ScheduleField::Month, month); }
    ScheduleBuilder& Month(Every every) { return Set(ScheduleField::Month, every); }
    ScheduleBuilder& Day(int day) { return Set(ScheduleField::Day, day); }
    ScheduleBuilder& Day(Every every) { return Set(ScheduleField::Day, every); }
    ScheduleBuilder& Week(int week) { return Set(ScheduleField::Week, week); }
    ScheduleBuilder& Week(Every every) { return Set(ScheduleField::Week, every); }
    ScheduleBuilder& Hour(int hour) { return Set(ScheduleField::Hour, hour); }
    ScheduleBuilder& Hour(Every every) { return Set(ScheduleField::Hour, every); }
    ScheduleBuilder& Minute(int minute) { return Set(ScheduleField::Minute, minute); }
    ScheduleBuilder& Minute(Every every) { return Set(ScheduleField::Minute, every); }
    ScheduleBuilder& Second(int second) { return Set(ScheduleField::Second, second); }
    ScheduleBuilder& Second(Every every) { return Set(ScheduleField::Second, every); }
    ScheduleBuilder& Millisecond(int millisecond) {
        return Set(ScheduleField::Millisecond, millisecond);
    }
    ScheduleBuilder& Millisecond(Every every) { return Set(ScheduleField::Millisecond, every); }

    // The days of the week from `first` to `last`, wrapping past Saturday (Friday to
    // Monday is Fri, Sat, Sun, Mon). Refuses a weekday that is not ok().
    ScheduleBuilder& Weekdays(std::chrono::weekday first, std::chrono::weekday last);
    // Exactly these days of the week. Refuses an empty set and a weekday not ok().
    ScheduleBuilder& Weekdays(std::initializer_list<std::chrono::weekday> days);
    // The record's mask: bit 0 Sunday to bit 6 Saturday, 1 to 127.
    ScheduleBuilder& WeekdayMask(int mask);

    // The intraday window, in local time: the opening, every `step` after it up to and
    // including the closing, on each day of the day pattern (seconds and milliseconds
    // 0). Whole minutes from midnight, 0 to 23:59, the step 1 to 1439 minutes; a window
    // closing before it opens is refused. The window replaces the clock fields: Build()
    // refuses both together.
    ScheduleBuilder& Window(std::chrono::minutes opening, std::chrono::minutes closing,
                            std::chrono::minutes step);

    // Makes the finest stepped clock field run all day: at Build(), each unset clock
    // field above it becomes Every(1), so Minute(Every(15)).AllDay() is stored as hour
    // EVERY 1 and minute EVERY 15 (00:00, 00:15, ... 23:45 every day), and
    // Second(Every(30)).Hour(9).AllDay() as hour 9, minute EVERY 1, second EVERY 30.
    // Fixed fields stay fixed. Build() refuses AllDay() without a stepped clock field.
    ScheduleBuilder& AllDay();

    // The schedule, owned by the returned pointer (deleted by Delete()). Throws
    // std::invalid_argument for a combination refused above, std::bad_alloc when
    // memory runs out.
    TimeSeriesPtr Build() const;

    // As Build(), except that a schedule WhyNeverFires reports is built rather than
    // refused: its enumerators simply find no point. For a caller that says so in its
    // own way (the zelvor tool lists "no points" for it); every other refusal stays.
    TimeSeriesPtr BuildEvenIfNeverFiring() const;

  private:
    struct Slot {
        RECURRENCE recurrence = RECURRENCE_NONE;
        int value = 0;
    };
    std::array<Slot, 8> mFields{};
    int mWeekdayMask = 0;  // 0: the day of the week takes no part
    int mOpening = -1;     // minutes from midnight; -1 while no window is given
    int mClosing = -1;
    int mStep = -1;
    bool mAllDay = false;
};

// Why `schedule` can never fire, in plain words, or nothing when its fields alone
// don't rule every point out. Constant time: it reads the fields and never walks a
// day. It reports a fixed value no calendar has (month 13, hour 25, minute 60, day 32,
// week 0, a year outside 0..65535), a day the fixed month lacks (31 April, 30 February,
// and 29 February or week 5 of February while the year is fixed to a common year; 29
// February with any other year fires in leap years), an empty weekday mask and a
// window whose step is 0. Fields the record ignores (a week beside a day, the clock
// fields beside a window) are not judged. No answer does not promise a point: a week
// block and a weekday set that never meet in a fixed month, say, pass.
ZELVOR_DATATYPE_API std::optional<std::string> WhyNeverFires(const TimeSeries& schedule);

// As above, and also for the series begun at `start` (UTC, read in local time): a
// fixed year before the start's year, a fixed month before the start's month in that
// year and a fixed day before the start's day in that month. These hold for all three
// enumerators, which all search days from the start's date on.
ZELVOR_DATATYPE_API std::optional<std::string> WhyNeverFires(const TimeSeries& schedule,
                                                             const DateTime& start);

// The clock fields that a stepped field below them leaves standing: the finest clock
// field at Every(N) (N above 0) and the unset clock fields above it, highest first.
// The walk never turns an unset field, so it keeps 0 (the days open at midnight) and
// the stepped field repeats only within it: minute every 15 with the hour unset fires
// at 00:00, 00:15, 00:30 and 00:45 of a day. Nothing while the window is set or when
// no clock field above the stepped one is unset.
struct UnwalkedFields {
    ScheduleField stepped;
    int interval;
    std::vector<ScheduleField> unset;
};
ZELVOR_DATATYPE_API std::optional<UnwalkedFields> FindUnwalkedFields(const TimeSeries& schedule);

}  // namespace ZelvorDataType
