// Builds a random schedule (any recurrences and values, windows included, a few setter
// calls on top) and runs the three enumerators from a random start: each returns within
// its bound, writes nothing outside its array, and hands out its points in walking
// order. The zone is a fixed offset east of UTC, where local and UTC times keep their
// order, so walking order is ascending UTC order.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <vector>

#include <ZelvorDataType/TimeSeries.h>

#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;

void Check(bool ok) {
    if (!ok) {
        std::abort();
    }
}

class Reader {
  public:
    Reader(const uint8_t* data, size_t size) : mData(data), mSize(size) {}
    uint8_t Byte() { return mPos < mSize ? mData[mPos++] : 0; }
    int32_t Int() {
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i) {
            v = v << 8 | Byte();
        }
        return static_cast<int32_t>(v);
    }
    // Mostly small values near the interesting range, sometimes any 32-bit value.
    int Value(int low, int high) {
        const uint8_t mode = Byte();
        return mode < 200 ? low + Byte() % (high - low + 1) : Int();
    }

  private:
    const uint8_t* mData;
    size_t mSize;
    size_t mPos = 0;
};

RECURRENCE Recurrence(Reader& in) {
    switch (in.Byte() % 4) {
        case 0:
            return RECURRENCE_FIXED;
        case 1:
            return RECURRENCE_EVERY;
        case 2:
            return RECURRENCE_NONE;
        default:
            return static_cast<RECURRENCE>(in.Int());
    }
}

// An upper bound of the times a day can hold: each interval field multiplies the count
// by the values it can take, and a window holds at most one point a minute.
double TimesPerDay(const TimeSeries& s) {
    if (s.GetHourStart() != -1 && s.GetMinuteStart() != -1 && s.GetHourEnd() != -1 &&
        s.GetMinuteEnd() != -1 && s.GetExecutingEveryMinutes() != -1) {
        return 1441;
    }
    const struct {
        RECURRENCE r;
        int v, range;
    } fields[] = {{s.GetHourRecurrence(), s.GetHour(), 24},
                  {s.GetMinuteRecurrence(), s.GetMinute(), 60},
                  {s.GetSecondRecurrence(), s.GetSecond(), 60},
                  {s.GetMillisecondRecurrence(), s.GetMillisecond(), 1000}};
    double times = 1;
    for (const auto& f : fields) {
        if (f.r == RECURRENCE_EVERY && f.v > 0) {
            times *= std::ceil(double(f.range) / f.v);
        }
    }
    return times;
}

void ApplySetter(Reader& in, TimeSeries& s) {
    const int value = in.Value(-3, 60);
    const RECURRENCE r = Recurrence(in);
    switch (in.Byte() % 12) {
        case 0:
            s.PutDay(value);
            break;
        case 1:
            s.PutHour(value);
            break;
        case 2:
            s.PutMinute(value);
            break;
        case 3:
            s.PutMillisecond(value);
            break;
        case 4:
            s.PutWeek(value);
            break;
        case 5:
            s.PutDayRecurrence(r);
            break;
        case 6:
            s.PutHourRecurrence(r);
            break;
        case 7:
            s.PutMinuteRecurrence(r);
            break;
        case 8:
            s.PutDayOfWeekRecurrence(r);
            break;
        case 9:
            s.PutHourStart(value);
            break;
        case 10:
            s.PutExecutingEveryMinutes(value);
            break;
        default:
            s.PutMonthRecurrence(r);
            break;
    }
}

const DateTime kUntouched(1111, 1, 1);

void CheckAscending(const DateTime* points, unsigned int n) {
    for (unsigned int i = 1; i < n; ++i) {
        Check(points[i - 1] < points[i]);
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    ZelvorTest::PinZone("<+0530>-5:30");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Reader in(data, size);
    RECURRENCE r[9];
    int v[9];
    const int ranges[9][2] = {{2000, 2030}, {-13, 13}, {-32, 32}, {-6, 6},      {0, 127},
                              {-25, 25},    {-61, 61}, {-61, 61}, {-1001, 1001}};
    for (int i = 0; i < 9; ++i) {
        r[i] = Recurrence(in);
        v[i] = in.Value(ranges[i][0], ranges[i][1]);
    }
    int window[5];
    const int windowHigh[5] = {24, 60, 24, 60, 1440};
    for (int i = 0; i < 5; ++i) {
        window[i] = in.Value(-2, windowHigh[i]);
    }
    TimeSeries* s = CreateTimeSeries(r[0], v[0], r[1], v[1], r[2], v[2], r[3], v[3], r[4], v[4],
                                     r[5], v[5], r[6], v[6], r[7], v[7], r[8], v[8], window[0],
                                     window[1], window[2], window[3], window[4]);
    for (int i = in.Byte() % 4; i > 0; --i) {
        ApplySetter(in, *s);
    }
    if (in.Byte() % 2 == 1) {
        TimeSeries* clone = s->Clone();
        s->Delete();
        s = clone;
    }

    // Starts in years 1 to 65534: a local time in year 0 would wrap below the calendar
    // when taken to UTC, and one in the last year above it when taken to local time.
    const int year = in.Byte() < 220
                         ? 1995 + in.Byte() % 40
                         : 1 + int(static_cast<unsigned int>(in.Value(0, 65533)) % 65534);
    const double perDay = TimesPerDay(*s);
    // Dense clocks start early in their day, so the walk up to the start stays short. The
    // fields are read one statement each, so every compiler reads them in the same order.
    const int hour = perDay > 1e5 ? 0 : in.Byte() % 24;
    const int month = 1 + in.Byte() % 12;
    const int day = 1 + in.Byte() % 31;
    const int minute = perDay > 1e5 ? 0 : in.Byte() % 60;
    const int second = in.Byte() % 60;
    const DateTime start(year, month, day, hour, minute, second, in.Value(0, 999));
    // A span that holds a bounded number of the schedule's times.
    const double days = std::min(double(1 + in.Byte() % 40), 2e4 / perDay);
    const TimeSpan span(static_cast<long long>(days * 86400000.0));
    const DateTime later = start + span;

    constexpr unsigned int kGuard = 3;
    const unsigned int count = in.Byte() % 17;
    std::vector<DateTime> points(count + kGuard, kUntouched);
    unsigned int n = s->GetNextNTimePoints(start, count, points.data());
    Check(n <= count);
    CheckAscending(points.data(), n);
    Check(n == 0 || points[0] >= start);
    for (size_t i = n; i < points.size(); ++i) {
        Check(points[i] == kUntouched);
    }

    std::fill(points.begin(), points.end(), kUntouched);
    const DateTime& from = in.Byte() % 2 == 0 ? later : start - span;
    n = s->GetNextNTimePoints(start, from, count, points.data());
    Check(n <= count);
    CheckAscending(points.data(), n);
    Check(n == 0 || points[0] >= from);
    for (size_t i = n; i < points.size(); ++i) {
        Check(points[i] == kUntouched);
    }

    DateTime* all = nullptr;
    n = s->GetAllTimePoints(start, later, all);
    Check(n == 0 || all != nullptr);
    CheckAscending(all, n);
    Check(n == 0 || all[n - 1] <= later);
    delete[] all;

    s->Delete();
    return 0;
}
