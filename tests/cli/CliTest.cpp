// Runs the zelvor program as a person or a script does and compares what it writes with the
// transcripts beside this file. Each case there is a "$ " line with the command line after the
// program (shell text; VAR=value words in front set the environment, TZ=UTC0 otherwise), the
// standard output verbatim, each line of standard error after "! ", and "? " with the exit
// status, which closes the case. Blank lines and '#' comments go between cases. Both texts are
// compared whole, except that "<now>" in the output stands for the clock's reading and a last
// output line "..." leaves the rest, which follows the clock, unread.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

#include "support/Cases.h"

namespace {

struct Result {
    int status = -1;  // -1 too while a transcript's case waits for its status
    std::string out, err;
};

// `before` goes in front of the program (variables, a wrapper), `args` after it.
Result Zelvor(const std::string& before, const std::string& args) {
    // One program runs one case at a time, so its process id names its file for stderr.
    const std::string errPath = testing::TempDir() + "zelvor-cli-" + std::to_string(getpid());
    // ZELVOR_PROGRAM in the environment points the tests at another build, an installed one.
    const char* program = std::getenv("ZELVOR_PROGRAM");
    const std::string command =
        before + " " + (program != nullptr && *program != '\0' ? program : ZELVOR_PROGRAM) + " " +
        args + " 2>" + errPath;
    Result result;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char chunk[4096];
        for (std::size_t n = 0; (n = fread(chunk, 1, sizeof chunk, pipe)) > 0;) {
            result.out.append(chunk, n);
        }
        const int status = pclose(pipe);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    std::ifstream err(errPath);
    std::getline(err, result.err, '\0');
    unlink(errPath.c_str());
    return result;
}

// One line holding one object: with its strings taken out, the braces and brackets left
// balance and close only at the end.
void ExpectOneJsonObject(const std::string& out) {
    ASSERT_FALSE(out.empty());
    const std::string bare = std::regex_replace(out, std::regex(R"("(?:[^"\\]|\\.)*")"), "");
    EXPECT_EQ(bare.find_first_of("\"\n"), bare.size() - 1) << out;
    int depth = 0;
    for (std::size_t n = 0; n < bare.size(); ++n) {
        depth += bare[n] == '{' || bare[n] == '[' ? 1 : bare[n] == '}' || bare[n] == ']' ? -1 : 0;
        EXPECT_TRUE(n == 0 ? bare[n] == '{' : depth > 0 || n + 2 >= bare.size()) << out;
    }
    EXPECT_EQ(depth, 0) << out;
}

struct Case : Result {
    std::string where, args;  // "cli/date.transcript:12", the command line
};

std::vector<Case> ReadTranscript(const std::string& name) {
    std::ifstream in(std::string(ZELVOR_TEST_DATA) + "/" + name);
    std::vector<Case> cases;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        const bool open = !cases.empty() && cases.back().status < 0;
        if (!open && line.rfind('$', 0) == 0) {
            cases.push_back({{}, name + ":" + std::to_string(number), line.substr(1)});
        } else if (open && line.rfind("? ", 0) == 0) {
            cases.back().status = std::stoi(line.substr(2));
        } else if (open && line.rfind("! ", 0) == 0) {
            cases.back().err += line.substr(2) + '\n';
        } else if (open) {
            cases.back().out += line + '\n';
        } else if (!line.empty() && line.front() != '#') {
            ADD_FAILURE() << name << ":" << number << ": neither a case nor a comment";
        }
    }
    EXPECT_FALSE(cases.empty() || cases.back().status < 0) << name << ": none, or one open";
    return cases;
}

TEST(CliTranscript, EachCaseWritesWhatItShows) {
    const std::regex environment(R"(^\s*((?:[A-Z_]+=\S*\s+)*)(.*)$)");
    const std::regex oneError("zelvor: error: [^\n]*\n");
    const std::regex clock(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3})");
    for (const char* topic :
         {"schedule", "resolve", "decimal", "date", "errors", "help", "interop", "builder"}) {
        for (const Case& c : ReadTranscript(std::string("cli/") + topic + ".transcript")) {
            SCOPED_TRACE(c.where);
            std::smatch words;
            ASSERT_TRUE(std::regex_match(c.args, words, environment));
            Result r = Zelvor("TZ=UTC0 " + words[1].str(), words[2].str());
            for (auto at = c.out.find("<now>"); at != std::string::npos && at + 23 <= r.out.size();
                 at = c.out.find("<now>", at + 1)) {
                if (std::regex_match(r.out.substr(at, 23), clock)) {
                    r.out.replace(at, 23, "<now>");
                }
            }
            if (c.out == "...\n" || c.out.ends_with("\n...\n")) {
                r.out = r.out.substr(0, c.out.size() - 4) + "...\n";
            }
            EXPECT_EQ(r.out, c.out);
            EXPECT_EQ(r.err, c.err);
            EXPECT_EQ(r.status, c.status);
            if (r.status != 0) {
                EXPECT_TRUE(std::regex_match(r.err, oneError)) << r.err;
            } else if (c.args.find("--json") != std::string::npos) {
                ExpectOneJsonObject(r.out);
            }
        }
    }
}

#ifdef ZELVOR_FAKETIME_PROGRAM
// Without --at the library's own expiration answers, against the clock; with --at the
// tool takes the same steps against the reference. With the clock stopped at the
// reference both must write the same, but for saying where their reference came from.
TEST(CliResolveCommand, NowAndTheSameReferenceAgree) {
    const std::string clock =
        "TZ=America/New_York DONT_FAKE_MONOTONIC=1 "
        "ASAN_OPTIONS=${ASAN_OPTIONS}:verify_asan_link_order=0 " ZELVOR_FAKETIME_PROGRAM
        " -f '2024-03-14 15:30:45'";
    for (const ZelvorTest::Case& row : ZelvorTest::ReadCases("cli/Clock.cases")) {
        SCOPED_TRACE(row.where);
        Result now = Zelvor(clock, "--json resolve " + row[0]);
        const Result at = Zelvor(clock, "--json resolve --at 2024-03-14T15:30:45 " + row[0]);
        EXPECT_TRUE(now.status == 0 && at.status == 0) << now.status << " " << at.status;
        EXPECT_EQ(now.err + at.err, "");
        EXPECT_NE(now.out.find("\"reference\":\"2024-03-14 15:30:45"), std::string::npos);
        const auto flag = now.out.find("\"reference_is_now\":true");
        ASSERT_NE(flag, std::string::npos) << now.out;
        EXPECT_EQ(now.out.replace(flag + 19, 4, "false"), at.out);
    }
}
#endif

}  // namespace
