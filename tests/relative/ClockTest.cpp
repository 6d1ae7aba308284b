// The cases that read the clock. ctest runs this program under libfaketime with the
// clock stopped at Thursday 2024-03-14 15:30:45.123 local time, in the zone that TZ
// names (see CMakeLists.txt); run by hand without it, every case is skipped.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include <ZelvorDataType/ZelvorTime.h>

#include "RelativeSupport.h"

namespace {

using namespace ZelvorDataType;
using ZelvorRelativeTest::Dynamic;
using ZelvorRelativeTest::kThursday;
using ZelvorRelativeTest::ReadCases;
using ZelvorRelativeTest::T;
using ZelvorRelativeTest::Text;

const char* TestZone() {
    const char* zone = std::getenv("TZ");
    return zone != nullptr && *zone != '\0' ? zone : "America/New_York";
}

class PinnedClock : public testing::Test {
  protected:
    void SetUp() override {
        const std::string zone = TestZone();  // TZ itself is about to be replaced
        ZelvorRelativeTest::PinZone(zone.c_str());
        if (Text(DateTime::Now()) != Text(kThursday.Make())) {
            GTEST_SKIP() << "the clock is not pinned at " << Text(kThursday.Make()) << " in "
                         << TestZone();
        }
    }
};

TEST_F(PinnedClock, ExpirationIsTheNextLocalBoundary) {
    ZelvorBase::Buffer arena;
    for (const auto& c : ReadCases("relative/Expirations.cases")) {
        SCOPED_TRACE(c.where + ": " + c[0]);
        const ZelvorTime value = Dynamic(ZelvorRelativeTest::Kind(c[1]), std::stoi(c[2]),
                                         static_cast<short>(std::stoi(c[3])));
        ZelvorTime out(&arena);
        ASSERT_EQ(value.GetExpiration(out), 0);
        EXPECT_EQ(out.GetRealMode(), TIME_MODE_UTC);
        DateTime utc(0.0);
        out.ToDateTime(true, utc);
        EXPECT_EQ(Text(utc), Text(T(c[4].c_str()).ToUTCTime()));
        // The pinned moment given as the reference gives the same boundary.
        ZelvorTime atReference(&arena);
        ASSERT_EQ(value.GetExpiration(DateTime(2024, 3, 14, 15, 30, 45, 123), atReference), 0);
        DateTime fromReference(0.0);
        atReference.ToDateTime(true, fromReference);
        EXPECT_EQ(Text(fromReference), Text(utc));
    }

    ZelvorTime out;
    ASSERT_EQ(Dynamic(DYNAMIC_TIME_NOW | DYNAMIC_TIME_RELATIVE_MINUTE).GetExpiration(out), 0);
    DateTime next(0.0);
    out.ToDateTime(false, next);
    EXPECT_EQ(Text(next), Text(DateTime(2024, 3, 14, 15, 30, 46)));
    // The expiration of a NOW rule is that of the moment it names.
    ZelvorTime inAnHour = Dynamic(DYNAMIC_TIME_NOW);
    inAnHour.PutHour(1, true);
    ASSERT_EQ(inAnHour.GetExpiration(out), 0);
    out.ToDateTime(false, next);
    EXPECT_EQ(Text(next), Text(DateTime(2024, 3, 14, 16, 30, 46)));
}

TEST_F(PinnedClock, RulesResolveAgainstThePresent) {
    DynamicTime inTwoHours(DYNAMIC_TIME_NOW, 0);
    inTwoHours.PutHour(2);
    DateTime date(0.0);
    ASSERT_EQ(inTwoHours.ToDateTime(date), 0);
    EXPECT_EQ(Text(date.ToLocalTime()), Text(DateTime(2024, 3, 14, 17, 30, 45)));
    // Only DateTime(0.0) stands for the present; any other date is a reference.
    date = DateTime(1900, 1, 1, 12);
    ASSERT_EQ(DynamicTime(DYNAMIC_TIME_TODAY, 0).ToDateTime(date), 0);
    EXPECT_EQ(Text(date), Text(DateTime(1900, 1, 1).ToUTCTime()));

    const ZelvorTime today = Dynamic(DYNAMIC_TIME_TODAY);
    const DateTime midnightUTC = DateTime(2024, 3, 14).ToUTCTime();
    EXPECT_EQ(today.GetDay(false, false) * 100 + today.GetHour(false, false), 1400);
    EXPECT_EQ(today.GetHour(true, false), midnightUTC.GetHour());
    DateTime before(0.0);
    EXPECT_EQ(today.GetNthTimePointBefore(1, TIME_GRANULARITY_DAY, before), 0);
    EXPECT_EQ(Text(before), Text(DateTime(2024, 3, 13).ToUTCTime()));
    const ZelvorTime noon(DateTime(2024, 3, 14, 12), TIME_MODE_LOCAL, false);
    const ZelvorTime thisHour = Dynamic(DYNAMIC_TIME_TODAY | DYNAMIC_TIME_RELATIVE_HOUR);
    EXPECT_TRUE(today < noon && noon < thisHour && thisHour > today && !(thisHour == today));
}

}  // namespace
