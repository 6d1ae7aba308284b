// The schedule commands as built by ScheduleBuilder: the note on an unwalked clock
// field, in text and JSON, and a schedule that can never fire listed as
// before, with no points.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace {

// Runs the tool in the UTC zone; stdout and stderr together, and the exit status.
std::pair<int, std::string> RunTool(const std::string& args) {
    std::string out;
    const std::string command = "TZ=UTC0 " ZELVOR_PROGRAM " " + args + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return {-1, out};
    }
    char chunk[4096];
    for (std::size_t n = 0; (n = fread(chunk, 1, sizeof chunk, pipe)) > 0;) {
        out.append(chunk, n);
    }
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(ScheduleBuilderCli, NotesAnUnwalkedFieldAndListsWhatNeverFires) {
    struct Case {
        const char* args;
        int status;
        const char* present;  // "" for nothing to find
        const char* absent;
    };
    const Case cases[] = {
        {"schedule next --minute every:15 --start 2024-03-01 --count 5", 0,
         "schedule: minute every 15\nnote: hour is unset and stays 0 (an unset field is not "
         "walked), so minute every 15 fires only while hour is 0; add --hour every:1 to walk "
         "every hour\nstart:",
         "00:45:00.000  2024-03-01 01:00"},
        {"schedule next --minute every:15 --hour every:1 --start 2024-03-01 --count 5", 0,
         "  5  2024-03-01 01:00:00.000", "note:"},
        {"schedule series --second every:10 --minute 30 --start 2024-03-01", 0,
         "note: hour is unset", "minute is unset"},
        {"--json schedule next --hour every:2 --second every:10 --start 2024-03-01", 0,
         "\"window\":null},\"note\":\"minute is unset and stays 0", "\"note\":\"hour"},
        {"--json schedule range --hour 9 --minute every:15 --start 2024-03-01 --end 2024-03-02", 0,
         "", "\"note\""},
        // Built all the same, as before the builder: the listing says so.
        {"schedule range --day 31 --month 4 --start 2024-03-01 --end 2024-06-01", 0, "no points",
         "error"},
        {"schedule next --year 2023 --month 2 --day 29", 0, "no points", "error"},
    };
    for (const Case& c : cases) {
        const auto [status, out] = RunTool(c.args);
        EXPECT_EQ(status, c.status) << c.args << "\n" << out;
        EXPECT_NE(out.find(c.present), std::string::npos) << c.args << "\n" << out;
        if (*c.absent != '\0') {
            EXPECT_EQ(out.find(c.absent), std::string::npos) << c.args << "\n" << out;
        }
    }
}

}  // namespace
