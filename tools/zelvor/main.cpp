// zelvor: the data-type library's main jobs from the command line. Each command lives
// in its own file; this one reads the global options, sets the zone and turns every
// failure into one line on standard error and a non-zero status.

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include <ZelvorBase/Message.h>
#include <ZelvorBase/ReturnString.h>
#include <CLI/CLI.hpp>

#include "Common.h"

namespace {

// Exit statuses: 0 done, 2 bad input (the line says what), 1 anything else.
constexpr int kBadInput = 2;
constexpr int kFailure = 1;

int Fail(int status, std::string text) {
    // One line, whatever the source of the text.
    for (char& c : text) {
        if (c == '\n' || c == '\r') {
            c = ' ';
        }
    }
    std::fprintf(stderr, "zelvor: error: %s\n", text.c_str());
    return status;
}

int Run(int argc, char** argv) {
    CLI::App app{
        "Try out the data-type library: recurring schedules, relative times, exact "
        "decimals and calendar dates.",
        "zelvor"};
    app.require_subcommand(1);
    app.fallthrough();  // --json and --tz may stand after the command too
    zelvor::Context context;
    app.add_flag("--json", context.json, "Write one JSON object instead of text");
    app.add_option("--tz", context.zone,
                   "Time zone for this call, e.g. Europe/Berlin or UTC0 (default: $TZ)");

    std::vector<zelvor::Command> commands;
    zelvor::AddScheduleCommands(app, commands);
    zelvor::AddResolveCommand(app, commands);
    zelvor::AddDecimalCommand(app, commands);
    zelvor::AddDateCommands(app, commands);
    for (const zelvor::Command& command : commands) {
        command.app->footer(
            "Global options, before or after the command: --json for one JSON "
            "object instead of text, --tz ZONE for the time zone of the call.");
    }

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        // "-.5" looks like a short option to the parser (digits after the dash do not).
        for (int n = 1; n < argc; ++n) {
            const std::string arg = argv[n];
            if (arg.size() > 2 && arg[0] == '-' && arg[1] == '.' &&
                std::isdigit(static_cast<unsigned char>(arg[2])) != 0) {
                return Fail(kBadInput, "'" + arg + "' reads as an option; write it as -0" +
                                           arg.substr(1) + ", or put -- before the operands");
            }
        }
        return Fail(kBadInput, std::string(e.what()) + " (see --help)");
    }

    try {
        if (!context.zone.empty()) {
            zelvor::CheckZone(context.zone);
            setenv("TZ", context.zone.c_str(), 1);
            tzset();
        }
        for (const zelvor::Command& command : commands) {
            if (command.app->parsed()) {
                const int status = command.run(context);
                std::fflush(stdout);
                return status;
            }
        }
        // A command group (schedule, date) without its subcommand.
        return Fail(kBadInput, "a subcommand is required (see --help)");
    } catch (const zelvor::UsageError& e) {
        return Fail(kBadInput, e.what());
    } catch (const ZelvorBase::Message& e) {
        return Fail(kBadInput, ZelvorBase::WideCharToUTF8(e.GetMessage(), false).c_str());
    } catch (const std::bad_alloc&) {
        return Fail(kFailure, "out of memory");
    } catch (const std::exception& e) {
        return Fail(kFailure, e.what());
    }
}

}  // namespace

// What escapes Run (a failure while the options are set up, or while an error line is
// built) still ends in one line and a failure status, never in std::terminate.
int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (...) {
        std::fputs("zelvor: error: out of memory or internal failure\n", stderr);
        return kFailure;
    }
}
