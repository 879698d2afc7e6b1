// Parsing of the simulator's command line (see the usage in main.cpp and README.md).
#include "options.h"

#include <cstring>

#include "names.h"

namespace sim {

namespace {

// Options that take a text value: where each one goes.
std::string *TextOption(Options &a, const std::string &arg) {
    if (arg == "--expect") {
        return &a.expect_file;
    }
    if (arg == "--app") {
        return &a.run.app;
    }
    if (arg == "--record") {
        return &a.record_file;
    }
    if (arg == "--junit") {
        return &a.junit_file;
    }
    if (arg == "--from-log" || arg == "--out") {
        return arg == "--out" ? &a.out_name : &a.from_log;
    }
    if (arg == "--row") {
        return &a.qualify_options.only;
    }
    if (arg == "--require") {
        return &a.qualify_options.require;
    }
    return arg == "--suite" ? &a.qualify_options.suite_dir : nullptr;
}

// Options that take a number.
int *NumberOption(Options &a, const std::string &arg) {
    if (arg == "--log-level") {
        return &a.run.log_level;
    }
    if (arg == "--slow-worker-ms") {
        return &a.run.check.slow_worker_ms;
    }
    if (arg == "--poll-ms" || arg == "--concurrency-s") {
        return arg == "--poll-ms" ? &a.run.poll_ms : &a.qualify_options.concurrency_s;
    }
    if (arg == "--row-timeout") {
        return &a.qualify_options.row_timeout_s;
    }
    return arg == "--slow-ms" ? &a.run.check.slow_ms : nullptr;
}

bool SetRuntime(Options &a, const std::string &what) {
    if (what != "all" && what != "changes" && what != "none") {
        return false;
    }
    a.run.runtime =
        what == "all" ? RuntimeShow::All : (what == "none" ? RuntimeShow::None : RuntimeShow::Changes);
    return true;
}

// A number option's value: an integer, not negative.
bool ParseCount(const char *text, long long *number) {
    return ParseInteger(text, number) && *number >= 0;
}

// Options without a value.
bool FlagOption(Options &a, const std::string &arg) {
    if (arg == "--json" || arg == "--qualify") {
        (arg == "--json" ? a.json : a.qualify) = true;
        return true;
    }
    if (arg == "--no-check" || arg == "--require-all" || arg == "--version") {
        (arg == "--no-check"  ? a.run.check.check
         : arg == "--version" ? a.version
                              : a.qualify_options.require_all) = arg != "--no-check";
        return true;
    }
    if (arg == "--keep-timing") {
        a.keep_timing = true;
        return true;
    }
    return false;
}

// One option, possibly with its value (i moves past it); "" or the problem.
std::string ParseOption(Options &a, int argc, char **argv, int &i) {
    std::string arg = argv[i];
    bool has_value = i + 1 < argc;
    long long number = 0;
    if (FlagOption(a, arg)) {
        return "";
    }
    if (TextOption(a, arg) != nullptr && has_value) {
        *TextOption(a, arg) = argv[++i];
    } else if (NumberOption(a, arg) != nullptr && has_value && ParseCount(argv[i + 1], &number)) {
        *NumberOption(a, arg) = static_cast<int>(number);
        i++;
    } else if (arg == "--runtime" && has_value) {
        return SetRuntime(a, argv[++i]) ? "" : "--runtime takes all, changes or none";
    } else if (arg[0] != '-' && a.scenario_file.empty()) {
        a.scenario_file = arg;
    } else {
        return "unexpected argument '" + arg + "'";
    }
    return "";
}

} // namespace

std::string ParseOptions(int argc, char **argv, Options *out) {
    for (int i = 1; i < argc; i++) {
        if (std::strcmp(argv[i], "-h") == 0 || std::strcmp(argv[i], "--help") == 0) {
            out->help = true;
            return "";
        }
        std::string problem = ParseOption(*out, argc, argv, i);
        if (!problem.empty()) {
            return problem;
        }
    }
    return "";
}

} // namespace sim
