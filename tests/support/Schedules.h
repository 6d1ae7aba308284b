#pragma once

// Helpers for every suite that builds schedules or reads dates from tables of cases: a
// builder for the 23 parameters and the text it is read from, short texts for dates and
// lists of them, and the zone scope.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <ZelvorDataType/TimeSeries.h>

#include "support/Cases.h"
#include "support/Zone.h"

namespace ScheduleTest {

using namespace ZelvorDataType;

constexpr RECURRENCE FIXED = RECURRENCE_FIXED;
constexpr RECURRENCE EVERY = RECURRENCE_EVERY;
constexpr RECURRENCE NONE = RECURRENCE_NONE;

// Every field unused and no window; each call sets one pair.
struct S {
    RECURRENCE rec[9] = {NONE, NONE, NONE, NONE, NONE, NONE, NONE, NONE, NONE};
    int val[9] = {};
    int win[5] = {-1, -1, -1, -1, -1};

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
    S& At(int h, int m) { return Hour(FIXED, h).Minute(FIXED, m).Second(FIXED, 0).Ms(FIXED, 0); }
    S& Window(int hs, int ms, int he, int me, int step) {
        return win[0] = hs, win[1] = ms, win[2] = he, win[3] = me, win[4] = step, *this;
    }
    std::unique_ptr<TimeSeriesImpl> Make() const {
        return std::make_unique<TimeSeriesImpl>(rec[0], val[0], rec[1], val[1], rec[2], val[2],
                                                rec[3], val[3], rec[4], val[4], rec[5], val[5],
                                                rec[6], val[6], rec[7], val[7], rec[8], val[8],
                                                win[0], win[1], win[2], win[3], win[4]);
    }
};

// A schedule as the tables of cases write it, words of "field=value": the fields year,
// month, day, week, dow (the weekday mask), hour, minute, second and ms, each F (fixed)
// or E (every) and its number; "at=10:30" a fixed time of day to the millisecond;
// "window=9:00-17:00/30". No word leaves every field unused.
inline S Parse(const std::string& text) {
    static const std::string kFields[] = {"year", "month",  "day",    "week", "dow",
                                          "hour", "minute", "second", "ms"};
    S s;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::string name = word.substr(0, word.find('='));
        const char* value = word.c_str() + std::min(name.size() + 1, word.size());
        const auto field = std::find(std::begin(kFields), std::end(kFields), name);
        int h = 0, m = 0, he = 0, me = 0, step = 0;
        if (name == "at" && std::sscanf(value, "%d:%d", &h, &m) == 2) {
            s.At(h, m);
        } else if (name == "window" &&
                   std::sscanf(value, "%d:%d-%d:%d/%d", &h, &m, &he, &me, &step) == 5) {
            s.Window(h, m, he, me, step);
        } else if (field != std::end(kFields) && (*value == 'F' || *value == 'E')) {
            s.Set(int(field - std::begin(kFields)), *value == 'F' ? FIXED : EVERY,
                  std::atoi(value + 1));
        } else {
            ADD_FAILURE() << "not a schedule word: " << word;
        }
    }
    return s;
}

// "2010-03-01 10:30", seconds and milliseconds optional (":15.250").
inline DateTime T(const char* text) {
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0, ms = 0;
    std::sscanf(text, "%d-%d-%d %d:%d:%d.%d", &y, &mo, &d, &h, &mi, &s, &ms);
    return DateTime(y, mo, d, h, mi, s, ms);
}

// The form T reads, seconds and milliseconds only when not 0.
inline std::string Text(const DateTime& value) {
    const std::string text = value.ToString().c_str();
    const size_t dot = text.size() - 4;
    return text.substr(dot) != ".000"         ? text
           : text.substr(dot - 3, 3) == ":00" ? text.substr(0, dot - 3)
                                              : text.substr(0, dot);
}

// Points as one text: "2010-03-02 10:30, 2010-03-03 10:30".
inline std::string Join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& t : texts) {
        joined += (joined.empty() ? "" : ", ") + t;
    }
    return joined;
}
inline std::string Join(const DateTime* points, unsigned int n) {
    std::vector<std::string> texts(n);
    std::transform(points, points + n, texts.begin(), Text);
    return Join(texts);
}

using ZelvorTest::ReadCases;
using ZelvorTest::ZoneScope;

// GetNextNTimePoints from `start` (and `from`, when given).
inline std::string Next(const TimeSeries& s, const char* start, unsigned int n,
                        const char* from = nullptr) {
    std::vector<DateTime> points(n, DateTime(0.0));
    const unsigned int got = from == nullptr
                                 ? s.GetNextNTimePoints(T(start), n, points.data())
                                 : s.GetNextNTimePoints(T(start), T(from), n, points.data());
    return Join(points.data(), got);
}

// GetAllTimePoints; "(no array)" when `points` was left alone.
inline std::string All(const TimeSeries& s, const char* start, const char* end) {
    DateTime* points = nullptr;
    const unsigned int got = s.GetAllTimePoints(T(start), T(end), points);
    const std::string joined = points == nullptr ? "(no array)" : Join(points, got);
    delete[] points;
    return joined;
}

}  // namespace ScheduleTest
