// The schedule commands given a recurrence rule or a cron text, and `schedule explain`.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

// Standard output and error of one run, and its exit status; `args` is shell text.
std::pair<int, std::string> RunZelvor(const std::string& args) {
    std::string out;
    FILE* pipe = popen(("TZ=Europe/Berlin " ZELVOR_PROGRAM " " + args + " 2>&1").c_str(), "r");
    char chunk[4096];
    for (std::size_t n; pipe != nullptr && (n = fread(chunk, 1, sizeof chunk, pipe)) > 0;) {
        out.append(chunk, n);
    }
    const int status = pipe != nullptr ? pclose(pipe) : -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(CliInterop, RuleAndCronGiveTheSchedule) {
    struct Row {
        const char* args;
        int status;
        const char* expected;  // a part of the output
    };
    const Row rows[] = {
        // The window's closing time is its last point: 16:45 is in, 17:00 is not.
        {"schedule range --cron '*/15 9-16 * * 1-5' --start 2024-03-28 --end 2024-03-28T23:59", 0,
         " 32  2024-03-28 15:45:00.000  2024-03-28 16:45:00.000 Thu +01:00\n"},
        // Berlin skips 02:30 on 2024-03-31: it fires when the clock shows 03:30, as the
        // offset before the change places it (libical's conversion would say 01:30).
        {"schedule next --rrule 'FREQ=DAILY;BYHOUR=2;BYMINUTE=30;BYSECOND=0' --start "
         "2024-03-30T12:00 "
         "--count 1",
         0, "  1  2024-03-31 01:30:00.000  2024-03-31 03:30:00.000 Sun +02:00"},
        {"schedule next --rrule 'FREQ=WEEKLY;BYDAY=MO,WE,FR;BYHOUR=9;BYMINUTE=0;BYSECOND=0' "
         "--start 2024-03-28 --count 3",
         0, "  2  2024-04-01 07:00:00.000  2024-04-01 09:00:00.000 Mon +02:00"},
        // A rule takes what it leaves out, here the day, hour and minute, from --start.
        {"schedule next --rrule 'FREQ=MONTHLY;INTERVAL=2' --start 2024-01-15T09:30 --count 2", 0,
         "  2  2024-03-15 08:30:00.000  2024-03-15 09:30:00.000 Fri +01:00"},
        {"schedule next --rrule 'FREQ=MONTHLY;INTERVAL=2;BYMONTHDAY=15' --start 2024-01-20", 2,
         "zelvor: error: --rrule: INTERVAL: every 2 months counts from the start's month"},
        {"schedule series --cron '0 9 * * *' --start 2024-01-01 --from 2024-01-03 --count 1", 0,
         "2024-01-03 08:00:00.000  2024-01-03 09:00:00.000 Wed"},
        {"schedule next --cron '0 9 15 * mon'", 2, "--cron: day of month: restricted together"},
        {"schedule next --cron '0 9 * * *' --hour 9", 2, "--cron replaces the field options"},
        {"schedule next --cron '0 9 * * *' --rrule FREQ=DAILY", 2, "give one"},
        {"schedule next --help", 0, "--rrule TEXT"},
    };
    for (const Row& row : rows) {
        const auto [status, out] = RunZelvor(row.args);
        EXPECT_EQ(status, row.status) << row.args << "\n" << out;
        EXPECT_NE(out.find(row.expected), std::string::npos) << row.args << "\n" << out;
    }
}

TEST(CliInterop, ExplainShowsTheOtherFormsOrWhyNot) {
    const char* explain = "schedule explain --start 2024-01-01 ";
    struct Row {
        const char* args;
        const char* expected;
    };
    const Row rows[] = {
        {"--cron '*/15 9-16 * * mon-fri'",
         "options:  --weekdays mon,tue,wed,thu,fri --window 09:00-16:45/15\n"
         "rrule:    FREQ=WEEKLY;BYSECOND=0;BYMINUTE=0,15,30,45;BYHOUR=9,10,11,12,13,14,15,16;"
         "BYDAY=MO,TU,WE,TH,FR\n"},
        {"--weekdays mon-fri --week -1 --hour 9",
         "rrule:    FREQ=MONTHLY;BYSECOND=0;BYMINUTE=0;BYHOUR=9;BYDAY=-1MO,-1TU,-1WE,-1TH,-1FR\n"
         "cron:     can't say it: week: cron has no n-th weekday of the month\n"},
        {"--rrule 'FREQ=DAILY;INTERVAL=3;BYHOUR=10;BYMINUTE=0;BYSECOND=0'",
         "cron:     can't say it: day: every 3"},
        {"--hour every:5", "rrule:    can't say it: hour: every 5 does not divide 24"},
        {"--month 2 --day 30 --hour 9", "never fires: "},
        {"--minute every:15", "minute every 15\nnote: hour is unset and stays 0"},
        {"--json --cron '0 9 * * 1'",
         "\"rrule\":{\"text\":\"FREQ=WEEKLY;BYSECOND=0;BYMINUTE=0;"
         "BYHOUR=9;BYDAY=MO\"},\"cron\":{\"text\":\"0 9 * * 1\"}"},
    };
    for (const Row& row : rows) {
        const auto [status, out] = RunZelvor(explain + std::string(row.args));
        EXPECT_EQ(status, 0) << row.args << "\n" << out;
        EXPECT_NE(out.find(row.expected), std::string::npos) << row.args << "\n" << out;
    }
}

}  // namespace
