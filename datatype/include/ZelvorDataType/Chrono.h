#pragma once

// Bridges between the calendar values and the standard library's <chrono> calendar:
// time points, calendar dates, durations and days of the week. Header only; nothing here
// calls the platform's zone functions, so every conversion is pure arithmetic and exact
// over the whole range of DateTime, years 0 to 65535.
//
// A DateTime does not know its zone, so the caller picks the clock: ToSysTime reads the
// fields as UTC, ToLocalTimePoint as local wall-clock time (std::chrono::local_t), and
// the way back takes the same view. Nothing converts between UTC and local time here;
// DateTime::ToUTCTime and ToLocalTime do that.

#include <chrono>
#include <stdexcept>
#include <string>

#include <ZelvorDataType/DateTime.h>
#include <ZelvorDataType/TimeSpan.h>

namespace ZelvorDataType {

namespace chrono_detail {

// Milliseconds from 0000-01-01 to 1970-01-01, and the first and last millisecond since
// 1970-01-01 that a DateTime holds (0000-01-01 00:00:00.000, 65535-12-31 23:59:59.999).
inline constexpr long long kMsPerDay = 86400000;
inline constexpr long long kFirstMs = -719528LL * kMsPerDay;
inline constexpr long long kLastMs = (23242572LL - 25569LL + 1) * kMsPerDay - 1;

// Milliseconds of `value` since 1970-01-01 00:00:00.000 of its own fields.
inline long long EpochMilliseconds(const DateTime& value) noexcept {
    return DateTime::ToMilliseconds(value) - 25569LL * kMsPerDay;
}

// The DateTime of a millisecond count since 1970-01-01, built from its fields so that
// nothing rounds; std::out_of_range outside the years 0 to 65535.
inline DateTime FromEpochMilliseconds(long long ms, const char* what) {
    if (ms < kFirstMs || ms > kLastMs) {
        throw std::out_of_range(std::string(what) + ": " + std::to_string(ms) +
                                " ms from 1970-01-01 lies outside the years 0 to 65535");
    }
    // Floor division: the count is at least kFirstMs, so shift it to be non-negative.
    const long long shifted = ms - kFirstMs;
    const int days = static_cast<int>(shifted / kMsPerDay) - 719528 + 25569;
    const long long time = shifted % kMsPerDay;
    unsigned short year = 0;
    short month = 0;
    short day = 0;
    DateTime::DAYSToYMD(days, year, month, day);
    return DateTime(year, month, day, static_cast<int>(time / 3600000),
                    static_cast<int>(time / 60000 % 60), static_cast<int>(time / 1000 % 60),
                    static_cast<int>(time % 1000));
}

}  // namespace chrono_detail

// The instant whose UTC fields are `value`'s fields: 1970-01-01 00:00:00.001 is
// sys_time{1ms}. Exact for every DateTime.
inline std::chrono::sys_time<std::chrono::milliseconds> ToSysTime(const DateTime& value) noexcept {
    return std::chrono::sys_time<std::chrono::milliseconds>(
        std::chrono::milliseconds(chrono_detail::EpochMilliseconds(value)));
}

// The UTC fields of `point`, with milliseconds. Any duration that converts to
// milliseconds without loss is taken (sys_days, sys_seconds); a finer one does not
// compile. Throws std::out_of_range outside the years 0 to 65535.
template <class Duration>
DateTime DateTimeFromSysTime(std::chrono::sys_time<Duration> point) {
    const std::chrono::sys_time<std::chrono::milliseconds> ms = point;
    return chrono_detail::FromEpochMilliseconds(ms.time_since_epoch().count(),
                                                "DateTimeFromSysTime");
}

// `value`'s fields as local wall-clock time. Exact for every DateTime.
inline std::chrono::local_time<std::chrono::milliseconds> ToLocalTimePoint(
    const DateTime& value) noexcept {
    return std::chrono::local_time<std::chrono::milliseconds>(
        std::chrono::milliseconds(chrono_detail::EpochMilliseconds(value)));
}

// The fields of a local wall-clock time. Throws std::out_of_range outside the years 0 to
// 65535.
template <class Duration>
DateTime DateTimeFromLocalTime(std::chrono::local_time<Duration> point) {
    const std::chrono::local_time<std::chrono::milliseconds> ms = point;
    return chrono_detail::FromEpochMilliseconds(ms.time_since_epoch().count(),
                                                "DateTimeFromLocalTime");
}

// The date of `value`. std::chrono::year stops at 32767, so a later year throws
// std::out_of_range rather than give a wrong date.
inline std::chrono::year_month_day ToYearMonthDay(const DateTime& value) {
    if (value.GetYear() > static_cast<int>(std::chrono::year::max())) {
        throw std::out_of_range("ToYearMonthDay: year " + std::to_string(value.GetYear()) +
                                " is beyond std::chrono::year's 32767");
    }
    return std::chrono::year_month_day(std::chrono::year(value.GetYear()),
                                       std::chrono::month(static_cast<unsigned>(value.GetMonth())),
                                       std::chrono::day(static_cast<unsigned>(value.GetDay())));
}

// Midnight of `date`. Throws std::invalid_argument for a date that does not exist
// (2023-02-29) and std::out_of_range for a year outside 0 to 65535 (a negative one).
inline DateTime DateTimeFromYearMonthDay(std::chrono::year_month_day date) {
    if (!date.ok()) {
        throw std::invalid_argument("DateTimeFromYearMonthDay: not a date of the calendar");
    }
    const int year = static_cast<int>(date.year());
    if (year < 0) {
        throw std::out_of_range("DateTimeFromYearMonthDay: year " + std::to_string(year) +
                                " is before year 0");
    }
    return DateTime(year, static_cast<int>(static_cast<unsigned>(date.month())),
                    static_cast<int>(static_cast<unsigned>(date.day())));
}

// The day of the week of `value`'s date, from the calendar alone.
inline std::chrono::weekday ToWeekday(const DateTime& value) noexcept {
    return std::chrono::weekday(std::chrono::floor<std::chrono::days>(ToSysTime(value)));
}

// The span as a std::chrono::milliseconds; exact, both hold 64-bit counts.
inline std::chrono::milliseconds ToDuration(const TimeSpan& span) noexcept {
    return std::chrono::milliseconds(span.GetTotalMilliseconds());
}

// A span of any duration that converts to milliseconds without loss (hours, seconds,
// milliseconds); a finer one does not compile. Exact.
template <class Rep, class Period>
TimeSpan TimeSpanFromDuration(std::chrono::duration<Rep, Period> duration) noexcept {
    const std::chrono::milliseconds ms = duration;
    return TimeSpan(static_cast<long long>(ms.count()));
}

}  // namespace ZelvorDataType
