#pragma once

// Schedules from and to the two common texts for recurrences: iCalendar recurrence rules
// (RRULE values) and the five fields of cron. A translation is exact or refused: a
// schedule made here yields, from any start it accepts, exactly the occurrences of the
// text, and a text made here describes exactly the schedule's points. What can't be
// carried over is refused with an UntranslatableError naming the part and the reason;
// nothing is approximated.
//
// How the two sides meet:
//  - A rule's DTSTART is the start given to GetNextNTimePoints(start, count, points),
//    read as local wall-clock time of the process's zone (to the second): the points
//    from that start are the rule's occurrences from that DTSTART. DTSTART counts only
//    when it matches the rule, as readers of rules do (RFC 5545 leaves the other case
//    undefined). A cron text is read the same way, its first run at or after the start.
//  - Intervals. A schedule counts INTERVAL periods from the first matching day at or
//    after the start; a rule counts them from the week, month or year of DTSTART. The
//    two agree for every start when the interval is 1 or the frequency daily, and only
//    for some starts otherwise (every second week, every second month on the 15th): the
//    first matching day must lie in DTSTART's period, or a multiple of INTERVAL periods
//    on. FromRecurrenceRule(text) refuses those rules; FromRecurrenceRule(text, start)
//    and ToRecurrenceRule(schedule, start) take them when the start is one for which the
//    two agree. Weeks of the schedule run Sunday to Saturday, so a weekly interval needs
//    WKST=SU, or no BYDAY day between Sunday and the WKST day.
//  - Skipped local times (a clock change forward). A time of day the zone skips is
//    taken as RFC 5545 says, at its offset before the change: 02:30 on a night that jumps
//    from 02:00 to 03:00 is the instant the clock shows 03:30. That is what the
//    schedule's own conversion gives (DateTime::ToUTCTime), so no point is moved or
//    dropped by the translation; some calendar programs place such a time an hour
//    earlier instead. cron daemons differ among themselves here; the library gives the
//    same answer for cron.
//  - Repeated local times (a clock change back) come out once, at whichever of their
//    two instants DateTime::ToUTCTime picks (the platform's choice); a start inside the
//    repeated hour may move a point an hour on (see TimeSeries::GetNextNTimePoints).
//  - COUNT and UNTIL are refused: a schedule has no end.
//  - A schedule looks for its next day up to 2928 days ahead (times N for every N
//    years) and ends when it finds none. Days that can lie further apart (a fifth
//    Monday in February, 28 years on) are refused, whatever the start; so are intervals
//    above 2928 days, 418 weeks, 12 months or 100 years.
//
// What translates, rule side: FREQ=DAILY, WEEKLY, MONTHLY or YEARLY; INTERVAL; one
// BYMONTH; one positive BYMONTHDAY; BYDAY days, in MONTHLY and in YEARLY with BYMONTH
// also with one ordinal shared by all days (1MO, -1FR; -5 to 5); WKST; and the times of
// day BYHOUR x BYMINUTE x BYSECOND when they are one time, an evenly spaced run at
// second 0 (BYHOUR=9,10,11;BYMINUTE=0,30 is 09:00 to 11:30 every 30 minutes, the
// schedule's intraday window), or a grid of steps from midnight. Parts a rule leaves out
// come from DTSTART, so the start-free form needs BYHOUR, BYMINUTE and BYSECOND, BYDAY
// in WEEKLY rules, BYMONTHDAY or BYDAY in MONTHLY ones and BYMONTH in YEARLY ones (a
// yearly BYMONTHDAY alone falls in DTSTART's month, as libical reads it; yearly BYDAY
// days alone fall in every month).
// Cron side: `*`, values, ranges, lists and steps in the minute and hour fields (the
// times of day as above), one day of the month or `*`, one month or `*`, and any days of
// the week, with names (mon-fri, jan). A closing hour such as `*/15 9-16 * * 1-5` becomes
// the window 09:00 to 16:45: the window's closing time is its last point.

#include <stdexcept>
#include <string>
#include <string_view>

#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorInterop/Export.h>

namespace ZelvorInterop {

// What every function here throws when a text or schedule can't be translated exactly.
// what() is "<part>: <why>"; Part() is the part alone (a rule part such as "BYSETPOS", a
// cron field such as "day of month", or a schedule field such as "week").
class ZELVOR_INTEROP_API UntranslatableError : public std::invalid_argument {
  public:
    UntranslatableError(const std::string& part, const std::string& why);
    const std::string& Part() const noexcept { return mPart; }

  private:
    std::string mPart;
};

// The schedule of an RRULE value (with or without the leading "RRULE:"), right for every
// start. Refuses, besides what doesn't translate at all, a rule whose points depend on
// the start (an INTERVAL above 1 on weeks, months or years) and a rule that leaves a
// part to DTSTART. The caller owns the result.
ZELVOR_INTEROP_API ZelvorDataType::TimeSeriesPtr FromRecurrenceRule(std::string_view rule);

// The schedule of an RRULE value with DTSTART at `start` (UTC, taken to local time),
// right for that start: parts the rule leaves out are taken from it, and an interval
// that the schedule counts differently from the rule is refused only when the two
// differ for this start.
ZELVOR_INTEROP_API ZelvorDataType::TimeSeriesPtr FromRecurrenceRule(
    std::string_view rule, const ZelvorDataType::DateTime& start);

// The RRULE value (without "RRULE:") of a schedule, for every start. Refuses a schedule
// no rule expresses (a fixed year, a time of day that drifts from day to day, a fixed
// hour above a stepping minute, milliseconds, ...) and one whose intervals depend on
// the start.
ZELVOR_INTEROP_API std::string ToRecurrenceRule(const ZelvorDataType::TimeSeries& schedule);

// The same for a series begun at `start` (UTC): a schedule with intervals is taken when
// the rule with DTSTART at `start` yields the same points.
ZELVOR_INTEROP_API std::string ToRecurrenceRule(const ZelvorDataType::TimeSeries& schedule,
                                                const ZelvorDataType::DateTime& start);

// The schedule of a five-field cron text (minute hour day-of-month month day-of-week).
// Refuses a restricted day of month together with a restricted day of week (cron runs
// on either), a step or several values in the day-of-month or month field, times of day
// that are not one time, an even run or a grid from midnight, and six-field or @ texts.
// The caller owns the result.
ZELVOR_INTEROP_API ZelvorDataType::TimeSeriesPtr FromCron(std::string_view text);

// The cron text of a schedule. Refuses what cron can't say: intervals of days, weeks,
// months or years, weekdays of a week of the month, seconds and milliseconds, and every
// refusal of ToRecurrenceRule.
ZELVOR_INTEROP_API std::string ToCron(const ZelvorDataType::TimeSeries& schedule);

}  // namespace ZelvorInterop
