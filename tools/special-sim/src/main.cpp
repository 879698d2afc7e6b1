// special-sim: runs the special domain module on a PC inside the host SDK, with a demo
// base station as its application, driven by a scenario file.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "expect.h"
#include "names.h"
#include "runner.h"
#include "scenario.h"
#include "transcript.h"

namespace {

const char kUsage[] =
    "usage: special-sim [--json] [--log-level N] [--runtime all|changes|none] [--expect FILE] SCENARIO\n"
    "  --json          write JSON Lines (one object per line) instead of the text transcript\n"
    "  --log-level N   bring the module's own log lines up to level N (1 error .. 4 info) into the output\n"
    "  --runtime WHAT  which get_runtime_info answers to show (default: changes)\n"
    "  --expect FILE   check the run against an expectation file; exit 1 when one is not met\n"
    "exit status: 0 done, 1 the module did not start or an expectation failed, 2 bad usage or scenario\n";

bool ReadFile(const std::string &path, std::string *text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    std::ostringstream buf;
    buf << in.rdbuf();
    *text = buf.str();
    return true;
}

int Usage(const char *problem) {
    std::fprintf(stderr, "special-sim: %s\n%s", problem, kUsage);
    return 2;
}

} // namespace

int main(int argc, char **argv) {
    sim::RunOptions options;
    bool json = false;
    std::string expect_file, scenario_file;
    for (int i = 1; i < argc; i++) {
        std::string arg = argv[i];
        bool has_value = i + 1 < argc;
        long long number = 0;
        if (arg == "--json") {
            json = true;
        } else if (arg == "--log-level" && has_value && sim::ParseInteger(argv[i + 1], &number)) {
            options.log_level = static_cast<int>(number);
            i++;
        } else if (arg == "--runtime" && has_value) {
            std::string what = argv[++i];
            if (what != "all" && what != "changes" && what != "none") {
                return Usage("--runtime takes all, changes or none");
            }
            options.runtime = what == "all"
                                  ? sim::RuntimeShow::All
                                  : (what == "none" ? sim::RuntimeShow::None : sim::RuntimeShow::Changes);
        } else if (arg == "--expect" && has_value) {
            expect_file = argv[++i];
        } else if (arg == "-h" || arg == "--help") {
            std::fputs(kUsage, stdout);
            return 0;
        } else if (arg[0] != '-' && scenario_file.empty()) {
            scenario_file = arg;
        } else {
            return Usage(("unexpected argument '" + arg + "'").c_str());
        }
    }
    if (scenario_file.empty()) {
        return Usage("no scenario given");
    }
    std::string text, expect_text;
    if (!ReadFile(scenario_file, &text)) {
        std::fprintf(stderr, "special-sim: cannot read %s\n", scenario_file.c_str());
        return 2;
    }
    if (!expect_file.empty() && !ReadFile(expect_file, &expect_text)) {
        std::fprintf(stderr, "special-sim: cannot read %s\n", expect_file.c_str());
        return 2;
    }
    // A scenario is checked as a whole before anything runs.
    sim::Scenario scenario = sim::ParseScenario(text, scenario_file);
    if (!scenario.errors.empty()) {
        for (const std::string &e : scenario.errors) {
            std::fprintf(stderr, "%s\n", e.c_str());
        }
        std::fprintf(stderr, "special-sim: %zu error(s); nothing was run\n", scenario.errors.size());
        return 2;
    }
    sim::Transcript out(stdout, json, !expect_file.empty());
    if (sim::RunScenario(scenario, scenario_file, out, options) != 0) {
        return 1;
    }
    if (!expect_file.empty()) {
        std::vector<std::string> problems = sim::CheckExpectations(out.Lines(), expect_text, expect_file);
        for (const std::string &p : problems) {
            std::fprintf(stderr, "%s\n", p.c_str());
        }
        if (!problems.empty()) {
            std::fprintf(stderr, "special-sim: %zu expectation problem(s)\n", problems.size());
            return 1;
        }
    }
    return 0;
}
