// Relative times and schedules under faults: every change of form of a ZelvorTime, and
// the schedule factories and enumerators.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <ZelvorDataType/TimeSeries.h>
#include <ZelvorDataType/ZelvorTime.h>
#include <ZelvorSerialization/MemoryDataStream.h>

#include "FaultSupport.h"
#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;
using ZelvorFault::Drive;
using ZelvorFault::Probe;
using Record = std::array<std::uint8_t, 44>;

Record Saved(const ZelvorTime& value) {
    Record record{};
    value.SaveObj(44, record.data());
    return record;
}

class TimeFaults : public testing::Test {
  protected:
    void SetUp() override { ZelvorTest::PinZone("Europe/Berlin"); }
};

// One value of each form: empty, UTC, local, dynamic.
std::vector<std::pair<const char*, ZelvorTime>> Forms() {
    std::vector<std::pair<const char*, ZelvorTime>> forms;
    forms.emplace_back("empty", ZelvorTime());
    forms.emplace_back("utc", ZelvorTime(DateTime(2024, 3, 14, 15, 30), TIME_MODE_UTC, true));
    forms.emplace_back("local", ZelvorTime(DateTime(2024, 7, 1, 9, 0), TIME_MODE_LOCAL, false));
    ZelvorTime rule;
    rule.PutDynamicTime(DYNAMIC_TIME_THIS_MONTH);
    rule.PutDay(-1, true);
    rule.PutDynamicMonthOffset(2);
    forms.emplace_back("dynamic", rule);
    return forms;
}

TEST_F(TimeFaults, EveryChangeOfFormGivesTheNewValueOrAnEmptyOne) {
    const auto forms = Forms();
    for (const auto& fromForm : forms) {
        const char* const fromName = fromForm.first;
        const ZelvorTime& from = fromForm.second;
        for (const auto& toForm : forms) {
            const char* const toName = toForm.first;
            const ZelvorTime& to = toForm.second;
            const std::string pair = std::string(fromName) + " to " + toName;
            const Record expected = Saved(to);
            // Assignment, saved record and stream: each takes `target` from `from` to `to`.
            for (const char* how : {"assign", "load", "stream"}) {
                Drive(std::string(how) + " " + pair, [&](Probe& p) {
                    ZelvorTime target(from, p.Arena());
                    Record record = expected;
                    ZelvorSerialization::MemoryDataStream stream;
                    to.SaveToStream(&stream);
                    stream.Rewind();
                    const bool done = p.Attempt([&] {
                        if (how[0] == 'a') {
                            target = to;
                        } else if (how[0] == 'l') {
                            target.LoadObj(44, record.data());
                        } else {
                            target.LoadFromStream(&stream);
                        }
                    });
                    if (done) {
                        EXPECT_EQ(Saved(target), expected);
                    } else {
                        EXPECT_EQ(target.GetRealMode(), TIME_MODE_EMPTY);
                    }
                });
            }
        }
        Drive(std::string("copies, rule, clock and expiry from ") + fromName, [&](Probe& p) {
            std::optional<ZelvorTime> copy;
            ZelvorTime ruled(from, p.Arena());
            ZelvorTime clocked(from, p.Arena());
            ZelvorTime expiry(p.Arena());  // a dynamic `from` expires into it
            const bool done = p.Attempt([&] {
                copy.emplace(from, p.Arena());
                ruled.PutDynamicTime(DYNAMIC_TIME_TODAY);
                clocked.SetToCurrentTime();
                from.GetExpiration(expiry);
            });
            if (done) {
                EXPECT_EQ(Saved(*copy), Saved(from));
                EXPECT_EQ(ruled.GetRealMode(), TIME_MODE_DYNAMIC);
                EXPECT_EQ(clocked.GetRealMode(), TIME_MODE_UTC);
                EXPECT_EQ(expiry.GetRealMode(), from.GetRealMode() == TIME_MODE_DYNAMIC
                                                    ? TIME_MODE_UTC
                                                    : TIME_MODE_EMPTY);
            } else {
                EXPECT_EQ(expiry.GetRealMode(), TIME_MODE_EMPTY);
                // Each one untouched, emptied by its own failure, or done before it.
                const auto consistent = [&](const ZelvorTime& value, TIME_MODE after) {
                    const TIME_MODE mode = value.GetRealMode();
                    return mode == from.GetRealMode() || mode == TIME_MODE_EMPTY || mode == after;
                };
                EXPECT_TRUE(consistent(ruled, TIME_MODE_DYNAMIC));
                EXPECT_TRUE(consistent(clocked, TIME_MODE_UTC));
            }
        });
    }
    Drive("static constructors", [](Probe& p) {
        std::optional<ZelvorTime> a;
        std::optional<ZelvorTime> b;
        if (p.Attempt([&] {
                a.emplace(DateTime(2024, 3, 14), TIME_MODE_LOCAL, true, p.Arena());
                b.emplace(36526.5, 250, TIME_MODE_UTC, true, p.Arena());
            })) {
            EXPECT_EQ(a->GetRealMode(), TIME_MODE_LOCAL);
            EXPECT_EQ(b->GetMilliSeconds(), 250);
        }
    });
}

std::unique_ptr<TimeSeries, void (*)(TimeSeries*)> Owned(TimeSeries* schedule) {
    return {schedule, [](TimeSeries* s) { s->Delete(); }};
}

TEST_F(TimeFaults, SchedulesAreMadeWholeAndListTheirPointsOrNothing) {
    constexpr RECURRENCE F = RECURRENCE_FIXED;
    constexpr RECURRENCE E = RECURRENCE_EVERY;
    constexpr RECURRENCE N = RECURRENCE_NONE;
    const auto make = [=](RECURRENCE secondRecurrence, int second, int step) {
        return CreateTimeSeries(N, 0, N, 0, N, 0, N, 0, F, 62, E, 1, E, 1, secondRecurrence, second,
                                F, 0, step > 0 ? 8 : -1, 0, step > 0 ? 18 : -1, 0, step);
    };
    Drive("factory and clone", [&](Probe& p) {
        std::unique_ptr<TimeSeries, void (*)(TimeSeries*)> made = Owned(nullptr);
        std::unique_ptr<TimeSeries, void (*)(TimeSeries*)> cloned = Owned(nullptr);
        const auto source = Owned(make(F, 0, -1));
        if (p.Attempt([&] {
                made = Owned(make(E, 10, -1));
                cloned = Owned(source->Clone());
            })) {
            EXPECT_EQ(cloned->GetDayOfWeek(), 62);
        }
    });
    // Every 10 seconds of 25 working days outgrows the first array; the window one walks
    // a step of 7 minutes from 08:00 to 18:00.
    const DateTime start(2024, 3, 1, 6, 0);
    const DateTime end(2024, 4, 5, 6, 0);
    for (const int step : {-1, 7}) {
        const auto schedule = Owned(make(step > 0 ? F : E, step > 0 ? 0 : 10, step));
        DateTime* all = nullptr;
        const unsigned int count = schedule->GetAllTimePoints(start, end, all);
        const std::vector<DateTime> expected(all, all + count);
        delete[] all;
        DateTime third[3] = {DateTime(0.0), DateTime(0.0), DateTime(0.0)};
        schedule->GetNextNTimePoints(start, 3, third);
        Drive("all points, step " + std::to_string(step), [&](Probe& p) {
            DateTime sentinel(0.0);
            DateTime* points = &sentinel;
            unsigned int found = 0;
            DateTime next[3] = {DateTime(0.0), DateTime(0.0), DateTime(0.0)};
            if (p.Attempt([&] {
                    schedule->GetNextNTimePoints(start, 3, next);
                    found = schedule->GetAllTimePoints(start, end, points);
                })) {
                ASSERT_EQ(found, expected.size());
                EXPECT_TRUE(std::equal(points, points + found, expected.begin()));
                EXPECT_EQ(next[2], third[2]);
                delete[] points;
            } else {
                EXPECT_EQ(points, &sentinel);
            }
        });
    }
}

}  // namespace
