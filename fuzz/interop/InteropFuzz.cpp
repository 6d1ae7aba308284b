// Reads any text as a recurrence rule (first byte even) or a cron text (odd). Each read
// either refuses with UntranslatableError or gives a schedule; a schedule that writes
// back to a text must read back to the same points, which a few steps from a fixed start
// compare. Nothing else may escape, crash or hang.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <ZelvorInterop/Interop.h>

#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;
using namespace ZelvorInterop;

bool SamePoints(const TimeSeries& a, const TimeSeries& b) {
    const DateTime start(2024, 2, 27, 13, 0, 0);
    DateTime pa[4] = {DateTime(0.0), DateTime(0.0), DateTime(0.0), DateTime(0.0)};
    DateTime pb[4] = {DateTime(0.0), DateTime(0.0), DateTime(0.0), DateTime(0.0)};
    const unsigned int na = a.GetNextNTimePoints(start, 4, pa);
    if (na != b.GetNextNTimePoints(start, 4, pb)) {
        return false;
    }
    for (unsigned int i = 0; i < na; ++i) {
        if (pa[i] != pb[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    ZelvorTest::PinZone("UTC");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0 || size > 512) {
        return 0;
    }
    const bool cron = (data[0] & 1u) != 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const DateTime start(2024, 2, 27, 13, 0, 0);
    TimeSeriesPtr schedule;
    try {
        schedule = cron ? FromCron(text) : FromRecurrenceRule(text, start);
    } catch (const UntranslatableError&) {
        return 0;
    }
    std::string back;
    try {
        back = cron ? ToCron(*schedule) : ToRecurrenceRule(*schedule, start);
    } catch (const UntranslatableError&) {
        return 0;
    }
    const TimeSeriesPtr again = cron ? FromCron(back) : FromRecurrenceRule(back, start);
    if (!SamePoints(*schedule, *again)) {
        std::abort();
    }
    return 0;
}
