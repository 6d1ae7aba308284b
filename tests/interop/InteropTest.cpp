// The translations against independent readers of the same texts: libical's own
// recurrence iterator for rules and python's croniter for cron, over generated texts,
// several zones and starts around clock changes. Then round trips and refusals.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>
#include <libical/ical.h>

#include <ZelvorInterop/Interop.h>

#include "support/Schedules.h"
#include "support/Zone.h"

namespace {

using namespace ZelvorDataType;
using namespace ZelvorInterop;
using ScheduleTest::Parse;
using ScheduleTest::T;
using ZelvorTest::ReadCases;
using ZelvorTest::Text;
using ZelvorTest::ZoneScope;

constexpr unsigned int kPoints = 12;
const char* const kZones[] = {"UTC", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe"};
// Local starts around the clock changes of 2024 in those zones, none inside a repeated
// hour (a start there may move a point an hour on, by the schedule's own rule).
const char* const kStarts[] = {"2024-01-15 08:00:00", "2024-03-09 22:30:00", "2024-03-10 03:00:00",
                               "2024-03-30 23:59:59", "2024-04-06 12:00:00", "2024-10-05 23:00:00",
                               "2024-10-26 12:00:00", "2024-11-02 00:00:00", "2023-12-31 23:59:59"};

// A local wall time the zone skips or repeats.
bool AtClockChange(const DateTime& local) {
    const DateTime utc = local.ToUTCTime();
    bool repeated = false;
    for (const long long shift :
         {-3600000LL, -1800000LL, 1800000LL, 3600000LL}) {  // Lord Howe's half hour
        repeated = repeated || (utc + TimeSpan(shift)).ToLocalTime() == local;
    }
    return repeated || utc.ToLocalTime() != local;
}

std::vector<DateTime> Points(const TimeSeries& s, const DateTime& start) {
    std::vector<DateTime> out(kPoints, DateTime(0.0));
    out.erase(out.begin() + s.GetNextNTimePoints(start, kPoints, out.data()), out.end());
    return out;
}

std::vector<DateTime> Wall(std::vector<DateTime> points) {
    std::transform(points.begin(), points.end(), points.begin(),
                   [](const DateTime& t) { return t.ToLocalTime(); });
    return points;
}

struct Tally {
    int cases = 0, refused = 0, atClockChange = 0;
};

// Expected UTC points against the schedule's: equal, or at a skipped or repeated local
// time the instant DateTime::ToUTCTime gives, as the header promises.
void Compare(const std::vector<std::pair<DateTime, DateTime>>& expected,  // (local, utc)
             const std::vector<DateTime>& got, const std::string& what, Tally& tally) {
    ASSERT_EQ(got.size(), expected.size()) << what;
    for (std::size_t i = 0; i < got.size(); ++i) {
        if (got[i] != expected[i].second) {
            ASSERT_TRUE(AtClockChange(expected[i].first))
                << what << " #" << i << ": " << Text(got[i]) << " vs " << Text(expected[i].second);
            // A skipped time at the instant ToUTCTime gives; a repeated one at either of
            // its instants.
            ASSERT_TRUE(got[i] == expected[i].first.ToUTCTime() ||
                        got[i].ToLocalTime() == expected[i].first)
                << what << " #" << i << ": " << Text(got[i]);
            ++tally.atClockChange;
        }
    }
}

// ---- Rules against libical ---------------------------------------------------------

std::vector<std::pair<DateTime, DateTime>> LibicalOccurrences(const std::string& rule,
                                                              const char* zone,
                                                              const DateTime& local) {
    icaltimezone* tz = icaltimezone_get_builtin_timezone(zone);
    icaltimetype dtstart = icaltime_null_time();
    dtstart.year = local.GetYear(), dtstart.month = local.GetMonth(), dtstart.day = local.GetDay();
    dtstart.hour = local.GetHour(), dtstart.minute = local.GetMinute(),
    dtstart.second = local.GetSecond();
    // Floating times in the iterator, each occurrence placed in the zone on its own:
    // libical's iterator on zoned times carries a skipped hour into later occurrences.
    icalrecur_iterator* it =
        icalrecur_iterator_new(icalrecurrencetype_from_string(rule.c_str()), dtstart);
    std::vector<std::pair<DateTime, DateTime>> out;
    for (icaltimetype t;
         out.size() < kPoints && !icaltime_is_null_time(t = icalrecur_iterator_next(it));) {
        const icaltimetype zoned = icaltime_set_timezone(&t, tz);
        const icaltimetype u = icaltime_convert_to_zone(zoned, icaltimezone_get_utc_timezone());
        const DateTime wall(t.year, t.month, t.day, t.hour, t.minute, t.second);
        // Past 2037 the library's zone rules are those of a year of the same pattern;
        // the wall time is what is checked there.
        out.emplace_back(wall, t.year > 2037
                                   ? wall.ToUTCTime()
                                   : DateTime(u.year, u.month, u.day, u.hour, u.minute, u.second));
    }
    icalrecur_iterator_free(it);
    return out;
}

// A rule from fragments: a frequency, maybe an interval, days (none leaves them to
// DTSTART) and times of day (one time, an even run, a grid, one a clock change skips).
std::string RandomRule(std::mt19937& rng) {
    const auto any = [&](const std::vector<std::string>& list) {
        return list[rng() % list.size()];
    };
    const auto n = [&](int low, int high) {
        return std::to_string(low + static_cast<int>(rng() % (high - low + 1)));
    };
    std::string days;
    for (const std::string day : {"SU", "MO", "TU", "WE", "TH", "FR", "SA"}) {
        days +=
            rng() % 2 != 0 || (day == "SA" && days.empty()) ? (days.empty() ? "" : ",") + day : "";
    }
    const std::string ordinal = any({"1", "2", "4", "5", "-1", "-2"}) + any({"SU", "MO", "FR"});
    const std::vector<std::string> dayParts[] = {
        {"", ";BYDAY=" + days, ";BYMONTH=" + n(1, 12)},
        {"", ";BYDAY=" + days, ";BYDAY=" + days + ";WKST=SU"},
        {"", ";BYMONTHDAY=" + n(1, 31), ";BYDAY=" + ordinal, ";BYDAY=" + days},
        {"", ";BYMONTH=" + n(1, 12) + ";BYMONTHDAY=" + n(1, 31),
         ";BYMONTH=" + n(1, 12) + ";BYDAY=" + ordinal}};
    const std::size_t frequency = rng() % 4;
    const std::string first = n(0, 19);
    const std::string run = ";BYHOUR=" + first + "," + std::to_string(std::stoi(first) + 1) +
                            any({";BYMINUTE=0,15,30,45", ";BYMINUTE=10,40", ";BYMINUTE=0,20,40"});
    const std::string seconds = any({"", ";BYSECOND=0", ";BYSECOND=15"});
    return std::string("FREQ=") +
           std::vector<std::string>{"DAILY", "WEEKLY", "MONTHLY", "YEARLY"}[frequency] +
           any({"", "", ";INTERVAL=" + n(2, 4)}) + any(dayParts[frequency]) +
           any({";BYHOUR=" + n(0, 23) + ";BYMINUTE=" + n(0, 59) + seconds, run + seconds,
                ";BYHOUR=2;BYMINUTE=30" + seconds,
                ";BYHOUR=0,6,12,18;BYMINUTE=0,30;BYSECOND=0,20,40"});
}

TEST(InteropRules, AgreeWithLibicalsIterator) {
    std::mt19937 rng(20240331);
    std::vector<std::string> rules;
    for (const auto& c : ReadCases("interop/Rules.cases")) {
        rules.push_back(c[0]);
    }
    while (rules.size() < 400) {
        rules.push_back(RandomRule(rng));
    }
    Tally tally;
    for (const char* zone : kZones) {
        const ZoneScope pinned(zone);
        for (const std::string& rule : rules) {
            for (const char* startText : kStarts) {
                const DateTime local = T(startText);
                const DateTime start = local.ToUTCTime();
                const std::string what = rule + " from " + startText + " in " + zone;
                TimeSeriesPtr schedule;
                try {
                    schedule = FromRecurrenceRule(rule, start);
                } catch (const UntranslatableError&) {
                    ++tally.refused;
                    continue;
                }
                ++tally.cases;
                const std::vector<DateTime> got = Points(*schedule, start);
                Compare(LibicalOccurrences(rule, zone, local), got, what, tally);
                // The start-free form, when it takes the rule, is the same schedule (by
                // local time: a repeated hour may come out at either instant).
                try {
                    EXPECT_EQ(Wall(Points(*FromRecurrenceRule(rule), start)), Wall(got)) << what;
                } catch (const UntranslatableError&) {
                }
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
    std::printf(
        "libical oracle: %zu rules, %d cases of %u points agree (%d points at a clock "
        "change), %d refused\n",
        rules.size(), tally.cases, kPoints, tally.atClockChange, tally.refused);
    EXPECT_GT(tally.cases, 5000);
}

// ---- Cron against croniter ---------------------------------------------------------

TEST(InteropCron, AgreesWithCroniter) {
    const std::string python = ZELVOR_PYTHON_CRONITER;
    if (python.empty()) {
        GTEST_SKIP() << "python3-croniter is not installed";
    }
    const char* minutes[] = {"0", "*/15", "5,35", "*/7", "30", "0-59/20", "*", "59"};
    const char* hours[] = {"9", "9-16", "*/2", "*", "0", "8-18/2", "23", "2"};
    const char* monthDays[] = {"*", "*", "15", "31", "1"};
    const char* months[] = {"*", "*", "2", "jan", "Dec"};
    const char* weekdays[] = {"*", "1-5", "mon-fri", "0,6", "SUN", "7", "*/2"};
    std::mt19937 rng(7);
    std::vector<std::string> exprs = {"*/15 9-16 * * 1-5", "0 9 * * mon-fri", "30 2 * 3 0"};
    while (exprs.size() < 300) {
        const auto any = [&](const auto& list) {
            return std::string(list[rng() % std::size(list)]);
        };
        exprs.push_back(any(minutes) + " " + any(hours) + " " + any(monthDays) + " " + any(months) +
                        " " + any(weekdays));
    }
    struct Case {
        std::string expr;
        const char* zone;
        const char* start;
        std::vector<DateTime> got;
    };
    std::vector<Case> cases;
    int refused = 0;
    for (const char* zone : kZones) {
        const ZoneScope pinned(zone);
        for (const std::string& expr : exprs) {
            TimeSeriesPtr schedule;
            try {
                schedule = FromCron(expr);
            } catch (const UntranslatableError&) {
                ++refused;
                continue;
            }
            for (const char* start : kStarts) {
                cases.push_back({expr, zone, start, Points(*schedule, T(start).ToUTCTime())});
            }
        }
    }
    // croniter gives the runs strictly after a time, in wall-clock time of a naive start;
    // a text with no run within its search gets an empty line.
    const std::string dir = testing::TempDir();
    std::ofstream in(dir + "/cron_in.txt");
    for (const Case& c : cases) {
        in << c.expr << '|' << c.start << '\n';
    }
    in.close();
    std::ofstream(dir + "/cron.py") << R"(import sys
from datetime import datetime, timedelta
from croniter import croniter
for line in sys.stdin:
    expr, start = line.rstrip('\n').split('|')
    it, runs = croniter(expr, datetime.strptime(start, '%Y-%m-%d %H:%M:%S') - timedelta(seconds=1)), []
    try:
        while len(runs) < 12:
            runs.append(it.get_next(datetime).strftime('%Y-%m-%d_%H:%M:%S'))
    except Exception:
        pass
    print(' '.join(runs)))";
    const std::string run =
        python + " " + dir + "/cron.py <" + dir + "/cron_in.txt >" + dir + "/cron_out.txt";
    ASSERT_EQ(std::system(run.c_str()), 0);
    std::ifstream out(dir + "/cron_out.txt");
    Tally tally;
    for (const Case& c : cases) {
        const ZoneScope pinned(c.zone);
        std::string line;
        ASSERT_TRUE(std::getline(out, line));
        std::istringstream words(line);
        std::vector<std::pair<DateTime, DateTime>> expected;
        for (std::string word; words >> word;) {
            word[10] = ' ';
            const DateTime local = T(word.c_str());
            expected.emplace_back(local, local.ToUTCTime());
        }
        Compare(expected, c.got, c.expr + " from " + c.start + " in " + c.zone, tally);
        if (HasFailure()) {
            return;
        }
        ++tally.cases;
    }
    std::printf("croniter oracle: %zu expressions, %d cases of %u points agree, %d refusals\n",
                exprs.size(), tally.cases, kPoints, refused);
    EXPECT_GT(tally.cases, 1000);
}

// ---- Round trips ---------------------------------------------------------------------

TEST(InteropRoundTrip, TextToScheduleAndBack) {
    const ZoneScope pinned("UTC");
    const DateTime start(2024, 1, 1);  // a Monday
    for (const auto& c : ReadCases("interop/RoundTrips.cases")) {
        const bool cron = c[0].find('=') == std::string::npos;
        const auto from = [&](const std::string& text) {
            return cron ? FromCron(text) : FromRecurrenceRule(text, start);
        };
        const TimeSeriesPtr s = from(c[0]);
        EXPECT_EQ(cron ? ToCron(*s) : ToRecurrenceRule(*s, start), c[1]) << c.where;
        EXPECT_EQ(Wall(Points(*from(c[1]), start)), Wall(Points(*s, start))) << c.where;
    }
}

// ---- Refusals ------------------------------------------------------------------------

TEST(InteropRefusal, NamesThePartThatDoesNotTranslate) {
    const ZoneScope pinned("UTC");
    const DateTime monday(2024, 1, 1);
    for (const auto& c : ReadCases("interop/Refusals.cases")) {
        try {
            c[0].find('=') == std::string::npos ? FromCron(c[0]) : FromRecurrenceRule(c[0]);
            ADD_FAILURE() << c.where << ": " << c[0] << " was taken";
        } catch (const UntranslatableError& e) {
            EXPECT_EQ(e.Part(), c[1]) << c.where << ": " << e.what();
        }
    }
    // With a start, an interval is refused only for starts where the two differ: every
    // second month on the 15th from the 20th of a month begins a month later.
    const char* bimonthly = "FREQ=MONTHLY;INTERVAL=2;BYMONTHDAY=15;BYHOUR=9;BYMINUTE=0;BYSECOND=0";
    EXPECT_NO_THROW(FromRecurrenceRule(bimonthly, DateTime(2024, 1, 15, 10, 0, 0)));
    EXPECT_THROW(FromRecurrenceRule(bimonthly, DateTime(2024, 1, 20)), UntranslatableError);
    // Schedules that a rule or cron can't say.
    for (const auto& c : ReadCases("interop/Unsayable.cases")) {
        const auto s = Parse(c[0]).Make();
        const bool cronOnly = c[2] == "cron";
        for (const bool cron : {false, true}) {
            try {
                cron ? ToCron(*s) : ToRecurrenceRule(*s);
                EXPECT_TRUE(cronOnly && !cron) << c.where << (cron ? " cron" : " rule");
            } catch (const UntranslatableError& e) {
                EXPECT_TRUE(cron || !cronOnly) << c.where << ": " << e.what();
                EXPECT_EQ(e.Part(), c[1]) << c.where << ": " << e.what();
            }
        }
    }
    // A window that the hours times minutes of a rule can't say: 09:00 to 17:00 every 30.
    EXPECT_THROW(ToRecurrenceRule(*Parse("day=E1 window=9:00-17:00/30").Make()),
                 UntranslatableError);
    EXPECT_NO_THROW(ToRecurrenceRule(*FromRecurrenceRule(bimonthly, monday), monday));
}

}  // namespace
