#include <ZelvorDataType/DynamicTime.h>
#include <ZelvorDataType/TimeSpan.h>

#include "calendar/CivilCalendar.h"
#include "relative/Moves.h"

namespace ZelvorDataType {

namespace {

constexpr int kFlagBits = 0x1E0;
constexpr int kLastKind = DYNAMIC_TIME_THIS_QUARTER;

bool Has(DYNAMIC_TIME value, DYNAMIC_TIME flag) noexcept {
    return (static_cast<int>(value) & static_cast<int>(flag)) != 0;
}

}  // namespace

void DynamicTime::hSetTimeOfDate(DateTime& date) const noexcept {
    // Offsets are positive into the future and the moves count into the past, hence
    // the negations (done in 64 bits, so that INT_MIN negates too).
    if (Has(mDynamicTime, DYNAMIC_TIME_RELATIVE_HOUR)) {
        internal::MoveUnits(date, -static_cast<long long>(mHour), TIME_GRANULARITY_HOUR);
    } else {
        date.PutHour(mHour);
    }
    if (Has(mDynamicTime, DYNAMIC_TIME_RELATIVE_MINUTE)) {
        internal::MoveUnits(date, -static_cast<long long>(mMinute), TIME_GRANULARITY_MINUTE);
        internal::MoveUnits(date, -static_cast<long long>(mSecond), TIME_GRANULARITY_SECOND);
    } else {
        date.PutMinute(mMinute);
        date.PutSecond(mSecond);
    }
    date.PutMillisecond(0);
}

namespace {

// The steps that several kinds share, over the working date of one resolution.
class Resolver {
  public:
    Resolver(const DynamicTime& rule, DateTime& work) noexcept : mRule(rule), mWork(work) {}

    bool Business() const noexcept {
        return Has(mRule.GetDynamicTime(), DYNAMIC_TIME_BUSINESS_DAY);
    }

    void AddYears() noexcept {
        internal::PutWideYear(mWork, mWork.GetYear() + static_cast<long long>(mRule.GetYear()));
    }

    void MoveAhead(long long n, TIME_GRANULARITY unit) noexcept {
        internal::MoveUnits(mWork, -n, unit);
    }

    // Years, months and weeks added to the working date.
    void RelativeDate() noexcept {
        AddYears();
        MoveAhead(mRule.GetMonth(), TIME_GRANULARITY_MONTH);
        MoveAhead(mRule.GetWeek(), TIME_GRANULARITY_WEEK);
    }

    // mDay days, or business days, added. A business walk that starts on a weekend
    // heads for the Monday unless the month offset of the rule looks into the past.
    void DayStep() noexcept {
        if (Business()) {
            internal::MoveBusinessDays(mWork, -static_cast<long long>(mRule.GetDay()),
                                       mRule.GetMonth() >= 0);
        } else {
            MoveAhead(mRule.GetDay(), TIME_GRANULARITY_DAY);
        }
    }

    // Puts the date on the mWeek-th mDayOfWeek of its month. A month that lacks that
    // occurrence (a fifth Monday) is asked for the one before it, stepping towards
    // week 0; false when no step is accepted. Nothing to do, and true, when either
    // field is unset.
    bool SelectOccurrence() noexcept {
        const int weekday = mRule.GetDayOfWeek();
        int week = mRule.GetWeek();
        if (weekday < 0 || week == 0) {
            return true;
        }
        // No month has a weekday more than five times, and a week number at or below
        // -5 counts from before the first occurrence, so any number beyond these bounds
        // is refused exactly like the bound itself: start there rather than step
        // through two billion refusals.
        if (week > 6) {
            week = 6;
        } else if (week < -5) {
            week = -5;
        }
        // A weekday above 6 names no day: every call is refused and the walk reaches
        // week 0, where the selection fails rather than ask the date for a week 0 that
        // it has no meaning for.
        while (!mWork.PutWeekAndDayOfWeek(week, weekday)) {
            week += week > 0 ? -1 : 1;
            if (week == 0) {
                return false;
            }
        }
        return true;
    }

    // The fixed date of kinds 0 and 2; false if its occurrence selection fails.
    bool AbsoluteDate() noexcept {
        mWork.PutYear(mRule.GetYear());
        mWork.PutMonth(mRule.GetMonth());
        if (mRule.GetDay() != 0) {
            mWork.PutDay(mRule.GetDay());
            return true;
        }
        return SelectOccurrence();
    }

    void TimeOfDay() noexcept { mRule.hSetTimeOfDate(mWork); }

    void PutWeekday() noexcept {
        if (mRule.GetDayOfWeek() >= 0) {
            mWork.PutDayOfWeek(mRule.GetDayOfWeek(), true);
        }
    }

  private:
    const DynamicTime& mRule;
    DateTime& mWork;
};

}  // namespace

int DynamicTime::ToDateTime(DateTime& date) const noexcept {
    DateTime work(date);
    if (work == DateTime(0.0)) {
        work = DateTime::Now();
    }
    Resolver step(*this, work);

    internal::MoveUnits(work, -static_cast<long long>(mMonthOffset), TIME_GRANULARITY_MONTH);
    if (step.Business()) {
        internal::MoveBusinessDays(work, -static_cast<long long>(mDayOffset), mMonthOffset >= 0);
    } else {
        step.MoveAhead(mDayOffset, TIME_GRANULARITY_DAY);
    }
    // The quarter is the one the offsets lead to, before any field is applied.
    const int quarterStart = work.GetFirstMonthOfQuater();

    const int kind = static_cast<int>(mDynamicTime) & ~kFlagBits;
    if (static_cast<unsigned>(kind) > static_cast<unsigned>(kLastKind)) {
        return -1;
    }
    const bool fixedDate = Has(mDynamicTime, DYNAMIC_TIME_FIXED_DATE);

    switch (kind) {
        case DYNAMIC_TIME_LATEST:
            if (!fixedDate || !step.AbsoluteDate()) {
                return -1;
            }
            step.TimeOfDay();
            break;
        case DYNAMIC_TIME_EARLIEST:
            return -1;
        case DYNAMIC_TIME_NOW:
            if (fixedDate) {
                if (!step.AbsoluteDate()) {
                    return -1;
                }
            } else {
                step.RelativeDate();
                step.DayStep();
            }
            // NOW always moves the clock time by the three fields, whatever the
            // relative flags say; the seconds of the reference survive unless moved.
            step.MoveAhead(mHour, TIME_GRANULARITY_HOUR);
            step.MoveAhead(mMinute, TIME_GRANULARITY_MINUTE);
            step.MoveAhead(mSecond, TIME_GRANULARITY_SECOND);
            work.PutMillisecond(0);
            break;
        case DYNAMIC_TIME_TODAY:
            step.RelativeDate();
            step.DayStep();
            step.TimeOfDay();
            break;
        case DYNAMIC_TIME_THIS_WEEK:
            step.RelativeDate();
            step.PutWeekday();
            step.TimeOfDay();
            break;
        case DYNAMIC_TIME_THIS_MONTH:
            step.AddYears();
            step.MoveAhead(mMonth, TIME_GRANULARITY_MONTH);
            if (mDay == 0) {
                if (!step.SelectOccurrence()) {
                    return -1;
                }
            } else if (step.Business()) {
                // A positive day walks forward from the 1st, a negative one back from
                // the last day; 1 and -1 only bring a weekend to a weekday.
                long long n = 0;
                if (mDay < 0) {
                    work.PutDay(work.GetDaysInMonth());
                    n = -(static_cast<long long>(mDay) + 1);
                } else {
                    work.PutDay(1);
                    n = -(static_cast<long long>(mDay) - 1);
                }
                internal::MoveBusinessDays(work, n, mMonth >= 0);
            } else {
                work.PutDay(mDay);
            }
            step.TimeOfDay();
            break;
        case DYNAMIC_TIME_THIS_YEAR:
            step.AddYears();
            if (mMonth > 0) {
                // The 1st first, so that the month change cannot cut the day short.
                work.PutDay(1);
                work.PutMonth(mMonth);
            }
            if (mDay != 0) {
                work.PutDay(mDay);
            } else if (!step.SelectOccurrence()) {
                return -1;
            }
            step.TimeOfDay();
            break;
        case DYNAMIC_TIME_THIS_QUARTER: {
            step.AddYears();
            work.PutDay(1);
            work.PutMonth(quarterStart);
            if (mMonth > 0) {
                // A month beyond the quarter's third is out of range and refused by the
                // date (above 12) or lands in a later quarter; the rule says 1 to 3.
                const long long month = quarterStart + static_cast<long long>(mMonth) - 1;
                if (month <= 12) {
                    work.PutMonth(static_cast<int>(month));
                }
                if (!step.SelectOccurrence()) {
                    return -1;
                }
            }
            if (mDay != 0) {
                long long n = 0;
                if (mDay < 0) {
                    // Always from the end of the quarter's third month.
                    work.PutMonth(quarterStart + 2);
                    work.PutDay(work.GetDaysInMonth());
                    n = -(static_cast<long long>(mDay) + 1);
                } else {
                    n = -(static_cast<long long>(mDay) - 1);
                }
                if (step.Business()) {
                    internal::MoveBusinessDays(work, n, mDay > 0);
                } else {
                    internal::MoveUnits(work, n, TIME_GRANULARITY_DAY);
                }
            }
            step.TimeOfDay();
            break;
        }
        default: {
            // THIS_SUNDAY .. THIS_SATURDAY: to the kind's weekday within the
            // Sunday-to-Saturday week of the working date, then as THIS_WEEK.
            const long long shift = kind - DYNAMIC_TIME_THIS_SUNDAY - work.GetDayOfWeek();
            work = work + TimeSpan(shift * internal::kMsPerDay);
            step.RelativeDate();
            step.PutWeekday();
            step.TimeOfDay();
            break;
        }
    }

    // A business-day rule with a relative clock time that ends up named for a weekend
    // is pushed to the weekday on the side the clock offset points to. The test reads
    // the rule's weekday field, not the day the date landed on.
    const bool relativeHour = Has(mDynamicTime, DYNAMIC_TIME_RELATIVE_HOUR);
    const bool relativeMinute = Has(mDynamicTime, DYNAMIC_TIME_RELATIVE_MINUTE);
    if (step.Business() && (relativeHour || relativeMinute)) {
        const bool forward =
            relativeHour && (mHour > 0 || (relativeMinute && mHour == 0 && mMinute >= 0));
        if (mDayOfWeek == 0) {
            step.MoveAhead(forward ? 1 : -2, TIME_GRANULARITY_DAY);
        } else if (mDayOfWeek == 6) {
            step.MoveAhead(forward ? 2 : -1, TIME_GRANULARITY_DAY);
        }
    }

    date = work.ToUTCTime();
    return 0;
}

}  // namespace ZelvorDataType
