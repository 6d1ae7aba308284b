// Runs the zelvor program as a person or a script does: a command line in, text and an
// exit status out. Every run gets TZ=UTC0 unless the case names another zone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Result {
    int status = -1;
    std::string out;
    std::string err;
};

// `args` is shell text, so a case can quote ('*') or set variables in front (`env`).
Result Zelvor(const std::string& args, const std::string& env = "TZ=UTC0",
              const std::string& wrapper = "") {
    char errPath[] = "/tmp/zelvor-cli-err-XXXXXX";
    const int fd = mkstemp(errPath);
    if (fd < 0) {
        ADD_FAILURE() << "no temporary file";
        return {};
    }
    close(fd);
    // ZELVOR_PROGRAM in the environment points the tests at another build of the tool,
    // an installed one for instance.
    const char* program = std::getenv("ZELVOR_PROGRAM");
    const std::string command =
        env + " " + wrapper + " " +
        (program != nullptr && *program != '\0' ? program : ZELVOR_PROGRAM) + " " + args + " 2>" +
        errPath;
    Result result;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char chunk[4096];
        std::size_t n = 0;
        while ((n = fread(chunk, 1, sizeof chunk, pipe)) > 0) {
            result.out.append(chunk, n);
        }
        const int status = pclose(pipe);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    std::ifstream err(errPath);
    std::stringstream text;
    text << err.rdbuf();
    result.err = text.str();
    unlink(errPath);
    return result;
}

// All "key":"value" strings of a JSON text, in order.
std::vector<std::string> Values(const std::string& json, const std::string& key) {
    const std::regex pattern("\"" + key + "\":\"([^\"]*)\"");
    std::vector<std::string> values;
    for (auto it = std::sregex_iterator(json.begin(), json.end(), pattern);
         it != std::sregex_iterator(); ++it) {
        values.push_back((*it)[1]);
    }
    return values;
}

// One line holding one object whose braces and brackets balance outside strings.
void ExpectOneJsonObject(const std::string& out) {
    ASSERT_FALSE(out.empty());
    EXPECT_EQ(out.front(), '{');
    EXPECT_EQ(out.find('\n'), out.size() - 1) << out;
    int depth = 0;
    bool inString = false;
    for (std::size_t n = 0; n + 1 < out.size(); ++n) {
        const char c = out[n];
        if (inString) {
            n += c == '\\' ? 1 : 0;
            inString = c != '"';
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            --depth;
            EXPECT_TRUE(depth > 0 || n + 2 == out.size()) << out;
        }
    }
    EXPECT_EQ(depth, 0) << out;
    EXPECT_FALSE(inString) << out;
}

void ExpectSuccess(const Result& r, const std::string& args) {
    EXPECT_EQ(r.status, 0) << args << "\n" << r.err;
    EXPECT_EQ(r.err, "") << args;
}

TEST(CliScheduleCommand, ListsThePointsOfEachEnumerator) {
    struct Case {
        std::string args;
        std::vector<std::string> utc;  // the points, in order
    };
    const Case cases[] = {
        {"schedule next --day every:1 --hour 10 --minute 30 --start 2010-03-01T12:00 --count 3",
         {"2010-03-02 10:30:00.000", "2010-03-03 10:30:00.000", "2010-03-04 10:30:00.000"}},
        // The hour runs on across midnight: 20:00 then 01:00.
        {"schedule next --day every:1 --hour every:5 --minute 0 --start 2010-03-01T12:00 --count 3",
         {"2010-03-01 15:00:00.000", "2010-03-01 20:00:00.000", "2010-03-02 01:00:00.000"}},
        {"schedule next --day every:1 --window 09:00-10:00/30 --start 2010-03-01T09:10 --count 5",
         {"2010-03-01 09:30:00.000", "2010-03-01 10:00:00.000", "2010-03-02 09:00:00.000",
          "2010-03-02 09:30:00.000", "2010-03-02 10:00:00.000"}},
        // Last Friday of the month.
        {"schedule next --week -1 --weekdays fri --hour 9 --start 2010-03-01 --count 2",
         {"2010-03-26 09:00:00.000", "2010-04-30 09:00:00.000"}},
        {"schedule next --weekdays mon,wed,fri --week every:2 --hour 9 --start 2010-03-01 "
         "--count 4",
         {"2010-03-01 09:00:00.000", "2010-03-03 09:00:00.000", "2010-03-05 09:00:00.000",
          "2010-03-15 09:00:00.000"}},
        {"schedule next --month 2 --day 29 --hour 9 --start 2010-06-15 --count 2",
         {"2012-02-29 09:00:00.000", "2016-02-29 09:00:00.000"}},
        {"schedule next --year 2001 --day every:1 --start 2010-01-01", {}},
        // Walked in Berlin: 09:00 local is 08:00 UTC before the spring change, 07:00 after.
        {"--tz Europe/Berlin schedule next --weekdays mon-fri --hour 9 --start 2024-03-29 "
         "--count 2",
         {"2024-03-29 08:00:00.000", "2024-04-01 07:00:00.000"}},
        // A start in UTC (Z) is 21:00 in Tokyo, after that day's 10:00.
        {"--tz Asia/Tokyo schedule next --day every:1 --hour 10 --start 2010-03-01T12:00Z "
         "--count 1",
         {"2010-03-02 01:00:00.000"}},
        // The phase comes from --start, the gate from --from.
        {"schedule series --day every:3 --hour 10 --start 2010-03-01 --from 2010-03-08 --count 3",
         {"2010-03-10 10:00:00.000", "2010-03-13 10:00:00.000", "2010-03-16 10:00:00.000"}},
        // The first day is listed whole, also before --start; a point on --end counts.
        {"schedule range --day every:1 --hour 10 --minute 30 --start 2010-03-01T12:00 "
         "--end 2010-03-03T10:30",
         {"2010-03-01 10:30:00.000", "2010-03-02 10:30:00.000", "2010-03-03 10:30:00.000"}},
    };
    for (const Case& c : cases) {
        const Result r = Zelvor("--json " + c.args);
        ExpectSuccess(r, c.args);
        ExpectOneJsonObject(r.out);
        EXPECT_EQ(Values(r.out, "utc"), c.utc) << c.args;
    }
}

TEST(CliScheduleCommand, TextShowsTheRecordAndBothZones) {
    const Result r = Zelvor(
        "--tz Europe/Berlin schedule next --day every:1 --hour 10 --start 2024-03-01 --count 1");
    ExpectSuccess(r, "text");
    EXPECT_THAT(r.out, testing::HasSubstr("schedule: day every 1, hour 10\n"));
    EXPECT_THAT(
        r.out, testing::HasSubstr("2024-03-01 09:00:00.000  2024-03-01 10:00:00.000 Fri +01:00\n"));
}

TEST(CliResolveCommand, ResolvesAgainstAReferenceWithItsExpiration) {
    struct Case {
        std::string args;
        const char* resolved;  // local, or "" when the rule names no date
        const char* expires;   // local, or "" for never
    };
    const std::string thursday = " --at 2024-03-14T15:30:45.123";
    const Case cases[] = {
        {"--kind today" + thursday, "2024-03-14 00:00:00.000", "2024-03-15 00:00:00.000"},
        {"--kind now --hour 2" + thursday, "2024-03-14 17:30:45.000", "2024-03-14 17:30:46.000"},
        {"--kind this-week --weekday fri" + thursday, "2024-03-15 00:00:00.000",
         "2024-03-17 00:00:00.000"},
        {"--kind this-monday --day-offset 2" + thursday, "2024-03-11 00:00:00.000",
         "2024-03-15 00:00:00.000"},
        {"--kind this-month --day-offset 3" + thursday, "2024-03-17 00:00:00.000",
         "2024-03-29 00:00:00.000"},
        {"--kind this-month --day -1 --at 2024-02-10", "2024-02-29 00:00:00.000",
         "2024-03-01 00:00:00.000"},
        {"--kind this-month --business-day --day 3 --at 2024-06-10", "2024-06-05 00:00:00.000", ""},
        {"--kind this-quarter --month 2 --week 3 --weekday mon --at 2024-08-20",
         "2024-08-19 00:00:00.000", "2024-10-01 00:00:00.000"},
        {"--kind this-year --month 2 --day -1" + thursday, "2024-02-29 00:00:00.000",
         "2025-01-01 00:00:00.000"},
        {"--kind latest --fixed-date --year 2024 --month 2 --day -1 --hour 8 --minute 30",
         "2024-02-29 08:30:00.000", ""},
        {"--kind earliest" + thursday, "", ""},
    };
    for (const Case& c : cases) {
        for (const char* zone : {"UTC0", "Asia/Tokyo"}) {
            const Result r = Zelvor("--json --tz " + std::string(zone) + " resolve " + c.args);
            ExpectSuccess(r, c.args);
            ExpectOneJsonObject(r.out);
            const std::vector<std::string> local = Values(r.out, "local");
            std::vector<std::string> expected;
            for (const char* value : {c.resolved, c.expires}) {
                if (*value != '\0') {
                    expected.emplace_back(value);
                }
            }
            EXPECT_EQ(local, expected) << zone << ": " << c.args << "\n" << r.out;
        }
    }
}

#ifdef ZELVOR_FAKETIME_PROGRAM
// Without --at the library's own expiration answers, against the clock; with --at the
// tool takes the same steps against the reference. With the clock stopped at the
// reference both must agree.
TEST(CliResolveCommand, NowAndTheSameReferenceAgree) {
    const char* rules[] = {"--kind today",
                           "--kind now --hour 2",
                           "--kind this-wednesday",
                           "--kind this-month --day-offset 3 --month-offset -1",
                           "--kind this-quarter --day 5",
                           "--kind this-year --day-offset -100",
                           "--kind this-week --business-day"};
    const std::string env =
        "TZ=America/New_York DONT_FAKE_MONOTONIC=1 "
        "ASAN_OPTIONS=${ASAN_OPTIONS}:verify_asan_link_order=0";
    const std::string clock = std::string(ZELVOR_FAKETIME_PROGRAM) + " -f '2024-03-14 15:30:45'";
    for (const char* rule : rules) {
        const Result now = Zelvor(std::string("--json resolve ") + rule, env, clock);
        const Result at =
            Zelvor(std::string("--json resolve --at 2024-03-14T15:30:45 ") + rule, env, clock);
        ExpectSuccess(now, rule);
        ExpectSuccess(at, rule);
        EXPECT_THAT(now.out, testing::HasSubstr("\"reference\":\"2024-03-14 15:30:45"));
        EXPECT_EQ(Values(now.out, "utc"), Values(at.out, "utc")) << rule;
    }
}
#endif

TEST(CliDecimalCommand, ExactArithmeticWithTruncation) {
    struct Case {
        std::string args;
        const char* line;
    };
    const Case cases[] = {
        {"1.50 + 2", "1.50 + 2 = 3.50 (scale 2)"},
        {"1.5 x 0.2", "1.5 x 0.2 = 0.30 (scale 2)"},
        {"1.5 '*' 0.2", "1.5 * 0.2 = 0.30 (scale 2)"},
        {"10.00 / 4", "10.00 / 4 = 2.50 (scale 2)"},
        {"-7 / 2", "-7 / 2 = -3 (scale 0)"},
        {"1 / 3 --scale 5", "1 / 3 = 0.33333 (scale 5)"},
        {"2.999 + 0 --scale 1", "2.999 + 0 = 2.9 (scale 1)"},
        {"007.50 + 0", "007.50 + 0 = 007.50 (scale 2)"},
        {"10.00 / 4 --locale de_DE", "10.00 / 4 = 2,50 (scale 2)"},
        {"10.00 / 4 --locale 0x407", "10.00 / 4 = 2,50 (scale 2)"},
        {"10.00 / 4 --locale en-US", "10.00 / 4 = 2.50 (scale 2)"},
        {"1.50 cmp 1.5", "1.50 cmp 1.5 = 0 (A is equal)"},
        {"-2 cmp -10", "-2 cmp -10 = 1 (A is greater)"},
    };
    for (const Case& c : cases) {
        const Result r = Zelvor("decimal " + c.args);
        ExpectSuccess(r, c.args);
        EXPECT_EQ(r.out, std::string(c.line) + "\n");
    }
    const Result json = Zelvor("decimal 0.04 + 0.05 --json");
    ExpectSuccess(json, "json");
    ExpectOneJsonObject(json.out);
    EXPECT_THAT(json.out, testing::HasSubstr("\"result\":\"0.09\",\"scale\":2"));
    EXPECT_THAT(json.out, testing::HasSubstr("\"fraction_digits\":\"09\""));
}

TEST(CliDateCommand, ConvertsAndCountsWorkingDays) {
    struct Case {
        std::string args;
        std::vector<std::string> lines;  // each must appear as a whole line
    };
    const Case cases[] = {
        {"convert --text 2024-03-05T07:08:09.012",
         {"text:    2024-03-05 07:08:09.012", "unix:    1709622489", "days:    45356",
          "weekday: Tuesday, week 2 of the month, day 65 of the year, quarter 1",
          "US date: 3/5/2024"}},
        {"convert --serial -0.25", {"text:    1899-12-29 18:00:00.000", "days:    -1"}},
        {"convert --serial 36526.5", {"text:    2000-01-01 12:00:00.000", "serial:  36526.5"}},
        {"convert --unix -1 --ms 500", {"text:    1969-12-31 23:59:59.500"}},
        {"convert --unix 1 --ms 999", {"unix:    1 (2 rounded)"}},
        {"convert --days -693959", {"text:    0000-01-01 00:00:00.000", "unix:    -62167219200"}},
        {"convert --days 23242572", {"text:    65535-12-31 00:00:00.000"}},
        {"add 2024-01-05T10:00 --days 1",
         {"working days: 2024-01-08 10:00:00.000 (Mon)",
          "calendar:     2024-01-06 10:00:00.000 (Sat)"}},
        {"add 2024-01-05T20:00 --days 1 --hours 6",
         {"working days: 2024-01-09 02:00:00.000 (Tue)"}},
        {"minus 2024-01-08T10:00 --days 1",
         {"working days: 2024-01-05 10:00:00.000 (Fri)",
          "calendar:     2024-01-07 10:00:00.000 (Sun)"}},
        {"span 2024-01-22 2024-01-12",
         {"working days: 6d 00:00:00.000", "calendar:     10d 00:00:00.000"}},
    };
    for (const Case& c : cases) {
        const Result r = Zelvor("date " + c.args);
        ExpectSuccess(r, c.args);
        for (const std::string& line : c.lines) {
            EXPECT_THAT(r.out, testing::HasSubstr(line + "\n")) << c.args;
        }
    }
    const Result json = Zelvor("--json date convert --text 2024-03-05T07:08:09.012");
    ExpectOneJsonObject(json.out);
    EXPECT_THAT(json.out, testing::HasSubstr("\"unix\":1709622489,\"unix_rounded\":1709622489,"
                                             "\"days\":45356"));
}

TEST(CliBadInput, OneLineNamingTheFaultAndStatusTwo) {
    struct Case {
        std::string args;
        const char* message;  // a part of the error line
    };
    const Case cases[] = {
        {"", "subcommand is required"},
        {"schedule next --bogus", "--bogus"},
        {"schedule next --hour 25", "--hour: 25 is out of range (0 to 23)"},
        {"schedule next --hour ten", "--hour: 'ten' is not a whole number"},
        {"schedule next --day every:0", "--day every: 0 is out of range"},
        {"schedule next --week 0", "--week: 0 matches no day"},
        {"schedule next --weekdays mon,funday", "--weekdays: 'funday' is not a day of the week"},
        {"schedule next --window 17:00-09:00/30", "closes before it opens"},
        {"schedule next --window 9-17", "--window: '9-17' is not a window"},
        {"schedule next --window 09:00-17:00/30 --hour 9", "--window replaces"},
        {"schedule next --day 1 --weekdays mon", "--week and --weekdays"},
        {"schedule next --count 0", "--count"},
        {"schedule next --start 2024-13-01", "--start: '2024-13-01': month 13 is out of range"},
        {"schedule next --start yesterday", "--start: 'yesterday' is not a date"},
        {"schedule series --from 2010-01-01", "--start is required"},
        {"schedule range --start 2010-03-02 --end 2010-03-01", "lies before --start"},
        {"schedule range --hour every:1 --minute every:1 --second every:1 --start 2010-03-01 --end "
         "2010-03-03",
         "more than 100000 points"},
        {"resolve", "--kind is required"},
        {"resolve --kind tomorrow", "--kind: 'tomorrow' is not a kind"},
        {"resolve --kind today --weekday mon", "--weekday is not read by the kind today"},
        {"resolve --kind today --hour 24", "--hour: 24 is out of range"},
        {"resolve --kind this-month --fixed-date", "--fixed-date applies only"},
        {"resolve --kind today --day-offset 99999999999", "--day-offset: 99999999999 is out"},
        {"resolve --kind today --at 1899-12-30", "present moment"},
        {"decimal 1,5 + 2", "A: '1,5' is not a decimal number"},
        {"decimal 1 + 2.5.1", "B: '2.5.1' is not a decimal number"},
        {"decimal 1 / 0", "1 / 0: Divide by Zero"},
        {"decimal 1 % 2", "OP: '%' is not an operation"},
        {"decimal -.5 + 1", "'-.5' reads as an option; write it as -0.5"},
        {"decimal 1 +", "B is required"},
        {"decimal 1 / 3 --scale -1", "--scale: -1 is out of range"},
        {"decimal 1 cmp 2 --scale 2", "--scale does not apply to cmp"},
        {"decimal 1 + 2 --locale xx_YY", "--locale: 'xx_YY' is not a known locale"},
        {"decimal 1 + 2 --locale 0x9999", "--locale: 0x9999 is not a known locale identifier"},
        {"decimal 1e999999 + 1", "exponent of '1e999999' is out of range"},
        {"date convert", "Exactly 1 option"},
        {"date convert --days 1 --serial 1", "Exactly 1 option"},
        {"date convert --serial nan", "--serial: 'nan' is not a number"},
        {"date convert --serial 1e300", "--serial: 1e300 is out of range"},
        {"date convert --days 99999999", "--days: 99999999 is out of range"},
        {"date convert --text 2024-02-30", "day 30 is out of range (1 to 29)"},
        {"date convert --text 2024-03-05Z", "drop the Z"},
        {"date convert --text 2024-03-05T10:00:00.5", "three digits"},
        {"date convert --days 1 --ms 5", "--ms goes with --unix only"},
        {"date add 2024-01-01 --days x", "--days: 'x' is not a whole number"},
        {"date span 2024-01-01", "OTHER is required"},
        {"--tz Mars/Olympus date convert --days 1", "--tz: 'Mars/Olympus' is not a known"},
    };
    for (const Case& c : cases) {
        const Result r = Zelvor(c.args);
        EXPECT_EQ(r.status, 2) << c.args;
        EXPECT_EQ(r.out, "") << c.args;
        EXPECT_THAT(r.err, testing::StartsWith("zelvor: error: ")) << c.args;
        EXPECT_THAT(r.err, testing::HasSubstr(c.message)) << c.args;
        EXPECT_EQ(r.err.find('\n'), r.err.size() - 1) << c.args << ": " << r.err;
    }
}

TEST(CliHelp, EveryCommandExplainsItself) {
    const char* paths[] = {
        "",        "schedule", "schedule next", "schedule series", "schedule range", "resolve",
        "decimal", "date",     "date convert",  "date add",        "date minus",     "date span"};
    for (const std::string path : paths) {
        const Result r = Zelvor(path + " --help");
        ExpectSuccess(r, path);
        const std::string usage = "Usage: zelvor" + (path.empty() ? "" : " " + path) + " [";
        EXPECT_THAT(r.out, testing::HasSubstr(usage)) << path;
    }
}

}  // namespace
