// Points(...) as ranges: the same sequence as one big call of each enumerator, over
// schedules whose phase runs across days and zones with repeated and missing hours.
#include <gtest/gtest.h>

#include <climits>
#include <ranges>

#include <ZelvorDataType/SchedulePoints.h>

#include "support/Schedules.h"

namespace {

using namespace ScheduleTest;

static_assert(std::ranges::input_range<SchedulePoints>);
static_assert(std::ranges::view<SchedulePoints>);

constexpr unsigned int kCount = 300;

// The texts of the first `n` points, read as a caller's loop reads them.
std::vector<std::string> Texts(SchedulePoints points, unsigned int n = UINT_MAX) {
    std::vector<std::string> texts;
    for (auto it = points.begin(); texts.size() < n && it != points.end(); ++it) {
        texts.push_back(Text(*it));
    }
    return texts;
}

const S kSchedules[] = {
    S().Day(EVERY, 1).At(9, 30),
    S().Hour(EVERY, 5).Minute(FIXED, 0),  // the phase runs across days
    S().Hour(EVERY, 1).Minute(EVERY, 15),
    S().Day(EVERY, 3).Hour(EVERY, 7).Minute(EVERY, 25),  // day spacing and clock phase
    S().Dow(0x3E).At(2, 30),                             // in the missing hour
    S().Hour(EVERY, 1).Minute(FIXED, 30),                // through the repeated hour
    S().Day(EVERY, 1).Window(0, 0, 3, 0, 20),            // the window over both
    S().Week(FIXED, -1).Dow(0x20).At(1, 45),
    S().Minute(EVERY, 7).Second(EVERY, 50),  // the hour unwalked
    S().Month(EVERY, 2).Day(FIXED, 31).At(23, 59),
    S().Year(FIXED, 2024).Month(FIXED, 11).Day(FIXED, 3).Hour(EVERY, 1),
    S().Day(FIXED, 30).Month(FIXED, 2),  // no point at all
};
const char* const kZones[] = {"UTC0", "Europe/Berlin", "America/New_York"};
const char* const kStarts[] = {"2024-03-09 12:17", "2024-10-26 23:00", "2024-11-02 01:40:10"};

TEST(RangeTest, EachEnumeratorMatchesOneBigCall) {
    for (const char* zone : kZones) {
        const ZoneScope pinned(zone);
        for (const S& schedule : kSchedules) {
            const auto s = schedule.Make();
            for (const char* text : kStarts) {
                const DateTime start = T(text).ToUTCTime();
                const DateTime from = start + TimeSpan(2, 3, 0, 0, 0);
                const DateTime end = start + TimeSpan(9, 0, 0, 0, 0);
                SCOPED_TRACE(std::string(zone) + " from " + text);
                std::vector<DateTime> big(kCount, DateTime(0.0));
                unsigned int n = s->GetNextNTimePoints(start, kCount, big.data());
                EXPECT_EQ(Join(Texts(Points(*s, start), kCount)), Join(big.data(), n));
                n = s->GetNextNTimePoints(start, from, kCount, big.data());
                EXPECT_EQ(Join(Texts(Points(*s, start, from), kCount)), Join(big.data(), n));
                DateTime* all = nullptr;
                n = s->GetAllTimePoints(start, end, all);
                const std::unique_ptr<DateTime[]> owned(all);
                EXPECT_EQ(Join(Texts(Points(*s, start, UpTo{end}))), Join(all, n));
            }
        }
    }
}

TEST(RangeTest, AReversedRangeIsEmptyAndAPointIsReadTwice) {
    const ZoneScope pinned("UTC0");
    const auto hourly = S().Hour(EVERY, 1).Minute(FIXED, 0).Make();
    const DateTime start = T("2024-01-01 00:00");
    EXPECT_TRUE(Points(*hourly, start, UpTo{T("2023-12-31 00:00")}).begin() ==
                std::default_sentinel);
    // Reading a point twice computes it once; a point passed unread still counts.
    SchedulePoints points = Points(*hourly, start);
    auto it = points.begin();
    ++it;
    EXPECT_EQ(Text(*it), "2024-01-01 01:00");
    EXPECT_EQ(Text(*it), "2024-01-01 01:00");
}

// clang 14 can't compile the range adaptors of libstdc++ 12 at all; the concepts above
// hold there as well.
#if !defined(__clang__) || __clang_major__ >= 15
TEST(RangeTest, TakeAndTakeWhileStopWhereAsked) {
    const ZoneScope pinned("UTC0");
    const auto hourly = S().Hour(EVERY, 1).Minute(FIXED, 0).Make();
    const DateTime start = T("2024-01-01 00:00");
    auto beforeNoon = [](const DateTime& p) { return p < T("2024-01-01 12:00"); };
    EXPECT_EQ(std::ranges::distance(Points(*hourly, start) | std::views::take_while(beforeNoon)),
              12);
    EXPECT_EQ(std::ranges::distance(Points(*hourly, start) | std::views::take(30)), 30);
}
#endif

}  // namespace
