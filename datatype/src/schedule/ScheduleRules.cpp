#include "schedule/ScheduleRules.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace ZelvorDataType::internal {

ScheduleRules::ScheduleRules(const TimeSeriesImpl& s) noexcept
    : mRecord(s), mNoDay(false), mNoTime(false) {
    mNoDay = CanNeverMatchADay();
    mNoTime = CanNeverPlaceATime();
}

unsigned int ScheduleRules::EstimateCapacity(int startYear, int endYear) const {
    // Beyond this many entries the array starts here and grows with the walk, rather
    // than building entries for points that a dense schedule on a short range never
    // yields. The product itself stays below 2^57, so 64 bits hold it.
    constexpr long long kInitialLimit = 1 << 16;
    const TimeSeriesImpl& r = mRecord;
    long long product =
        r.mYearRecurrence == RECURRENCE_EVERY ? static_cast<long long>(endYear) + 1 - startYear : 1;
    if (r.mMonthRecurrence != RECURRENCE_FIXED) {
        product *= 12;
    }
    if (r.mDayRecurrence != RECURRENCE_FIXED) {
        product *= 31;
    }
    if (r.mWeekRecurrence == RECURRENCE_EVERY) {
        product *= 6;
    }
    if (r.mDayOfWeekRecurrence == RECURRENCE_FIXED) {
        product *= std::popcount(static_cast<unsigned int>(r.mDayOfWeek) & 0x7Fu);
    }
    const std::pair<RECURRENCE, int> timeFactors[] = {{r.mHourRecurrence, 24},
                                                      {r.mMinuteRecurrence, 60},
                                                      {r.mSecondRecurrence, 60},
                                                      {r.mMillisecondRecurrence, 1000}};
    for (const auto& [recurrence, factor] : timeFactors) {
        if (recurrence == RECURRENCE_EVERY) {
            product *= factor;
        }
    }
    return static_cast<unsigned int>(std::clamp(product, 0LL, kInitialLimit - 2) + 2);
}

}  // namespace ZelvorDataType::internal
