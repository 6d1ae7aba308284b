#pragma once

// Helpers shared by the schedule suites: a builder for the 23 parameters, short texts
// for dates, and a scope that pins the process zone.

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include <ZelvorDataType/TimeSeries.h>

namespace ScheduleTest {

using namespace ZelvorDataType;

constexpr RECURRENCE FIXED = RECURRENCE_FIXED;
constexpr RECURRENCE EVERY = RECURRENCE_EVERY;
constexpr RECURRENCE NONE = RECURRENCE_NONE;

// Every field unused and no window; each call sets one pair.
struct S {
    RECURRENCE rec[9] = {NONE, NONE, NONE, NONE, NONE, NONE, NONE, NONE, NONE};
    int val[9] = {};
    int window[5] = {-1, -1, -1, -1, -1};

    S& Set(int i, RECURRENCE r, int v) { return rec[i] = r, val[i] = v, *this; }
    S& Year(RECURRENCE r, int v) { return Set(0, r, v); }
    S& Month(RECURRENCE r, int v) { return Set(1, r, v); }
    S& Day(RECURRENCE r, int v) { return Set(2, r, v); }
    S& Week(RECURRENCE r, int v) { return Set(3, r, v); }
    S& Dow(int mask) { return Set(4, FIXED, mask); }
    S& Hour(RECURRENCE r, int v) { return Set(5, r, v); }
    S& Minute(RECURRENCE r, int v) { return Set(6, r, v); }
    S& Second(RECURRENCE r, int v) { return Set(7, r, v); }
    S& Ms(RECURRENCE r, int v) { return Set(8, r, v); }
    // A fixed time of day, seconds and milliseconds 0.
    S& At(int hour, int minute) {
        return Hour(FIXED, hour).Minute(FIXED, minute).Second(FIXED, 0).Ms(FIXED, 0);
    }
    S& Window(int hs, int ms, int he, int me, int step) {
        window[0] = hs, window[1] = ms, window[2] = he, window[3] = me, window[4] = step;
        return *this;
    }
    std::unique_ptr<TimeSeriesImpl> Make() const {
        return std::make_unique<TimeSeriesImpl>(
            rec[0], val[0], rec[1], val[1], rec[2], val[2], rec[3], val[3], rec[4], val[4], rec[5],
            val[5], rec[6], val[6], rec[7], val[7], rec[8], val[8], window[0], window[1], window[2],
            window[3], window[4]);
    }
};

// "2010-03-01 10:30", seconds and milliseconds optional (":15.250").
inline DateTime T(const char* text) {
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0, ms = 0;
    std::sscanf(text, "%d-%d-%d %d:%d:%d.%d", &y, &mo, &d, &h, &mi, &s, &ms);
    return DateTime(y, mo, d, h, mi, s, ms);
}

// The short form T reads: seconds and milliseconds only when not 0.
inline std::string Text(const DateTime& value) {
    std::string text = value.ToString().c_str();
    if (text.compare(text.size() - 7, 7, ":00.000") == 0) {
        text.resize(text.size() - 7);
    } else if (text.compare(text.size() - 4, 4, ".000") == 0) {
        text.resize(text.size() - 4);
    }
    return text;
}

inline std::vector<std::string> Texts(const DateTime* points, unsigned int n) {
    std::vector<std::string> texts;
    for (unsigned int i = 0; i < n; ++i) {
        texts.push_back(Text(points[i]));
    }
    return texts;
}

// Pins the process zone for one scope.
class ZoneScope {
  public:
    explicit ZoneScope(const char* zone) { Set(zone); }
    ~ZoneScope() { Set(nullptr); }
    ZoneScope(const ZoneScope&) = delete;
    ZoneScope& operator=(const ZoneScope&) = delete;

  private:
    static void Set(const char* zone) {
        zone != nullptr ? setenv("TZ", zone, 1) : unsetenv("TZ");
        tzset();
    }
};

// GetNextNTimePoints from `start` (and `from`, when given) as texts.
inline std::vector<std::string> Next(const TimeSeries& s, const char* start, unsigned int n,
                                     const char* from = nullptr) {
    std::vector<DateTime> points(n, DateTime(0.0));
    const unsigned int got = from == nullptr
                                 ? s.GetNextNTimePoints(T(start), n, points.data())
                                 : s.GetNextNTimePoints(T(start), T(from), n, points.data());
    return Texts(points.data(), got);
}

// GetAllTimePoints as texts; `capacity` receives the array's size when known (it is
// read through the entries past the points, which must hold the empty date).
inline std::vector<std::string> All(const TimeSeries& s, const char* start, const char* end,
                                    bool* delivered = nullptr) {
    DateTime* points = nullptr;
    const unsigned int got = s.GetAllTimePoints(T(start), T(end), points);
    std::vector<std::string> texts = Texts(points, got);
    if (delivered != nullptr) {
        *delivered = points != nullptr;
    }
    delete[] points;
    return texts;
}

}  // namespace ScheduleTest
