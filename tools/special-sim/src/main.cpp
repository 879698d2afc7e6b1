// special-sim: runs the special domain module on a PC inside the host SDK, driven by a
// scenario file, with a demo base station or the user's own application library as its
// application; with an application, checks its callbacks against the header's contract.
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "crash_board.h"
#include "expect.h"
#include "log_replay.h"
#include "log_scenario.h"
#include "names.h"
#include "options.h"
#include "qualify.h"
#include "record.h"
#include "report.h"
#include "runner.h"
#include "scenario.h"
#include "transcript.h"

namespace {

const char kUsage[] =
    "Usage: special-sim [OPTIONS] SCENARIO\n"
    "       special-sim --qualify --app LIB.so [--junit FILE] [--suite DIR] [--row NAME] [--require LIST]\n"
    "       special-sim --from-log LOG [--out NAME] [--app LIB.so] [--keep-timing]\n"
    "       special-sim --version\n"
    "  --json          write JSON Lines (one object per line) instead of the text transcript\n"
    "  --log-level N   bring the module's own log lines up to level N (1 error .. 4 info) into the output\n"
    "  --runtime WHAT  which get_runtime_info answers to show (default: changes)\n"
    "  --expect FILE   check the run against an expectation file; exit 1 when one is not met\n"
    "  --app LIB.so    run the application library (noltdev_app_start) in place of the demo device\n"
    "  --no-check      with --app: do not check the callbacks against the contract\n"
    "  --slow-ms N     with --app: a callback holding the kernel's, the poller's or the shadow thread\n"
    "                  longer than N ms is a finding (500)\n"
    "  --slow-worker-ms N  with --app: the same for a custom-voice worker (default: not checked)\n"
    "  --record FILE   write the scenario to FILE and the run's answers to FILE's .expect\n"
    "  --qualify       run the qualification suite against --app; one row per capability\n"
    "  --junit FILE    with --qualify: write the rows as JUnit XML\n"
    "  --suite DIR     with --qualify: the suite's scenarios (default: installed beside the simulator)\n"
    "  --row LIST      with --qualify: run only these rows or kinds (comma separated)\n"
    "  --require LIST  with --qualify: rows or kinds that must be supported (not applicable fails)\n"
    "  --require-all   with --qualify: every row must be supported\n"
    "  --row-timeout S with --qualify: a row still running after S seconds is a hang (10)\n"
    "  --poll-ms N     the report-status service polls on its own thread every N ms, as on a device\n"
    "  --concurrency-s S  with --qualify: how long each concurrency row runs (3; 0: none)\n"
    "  --version       print the simulator's and the module's versions\n"
    "  --from-log LOG  a device's log as a scenario: --out NAME writes NAME.scn and NAME.expect,\n"
    "                  --app LIB.so replays it and prints where the PC run departs from the device\n"
    "  --keep-timing   with --from-log: wait between commands as long as the log's timestamps say\n"
    "exit status: 0 done, 1 the module or application did not start, an expectation failed, an\n"
    "error-level finding was made, a qualification row FAILED or a replay departed from the log,\n"
    "2 bad usage or scenario, or nothing in the log can be replayed; a crash of the application in\n"
    "a plain run is reported, then ends the simulator with its signal\n";

using Args = sim::Options;

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

bool WriteFile(const std::string &path, const std::string &text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    return static_cast<bool>(out);
}

int Usage(const std::string &problem) {
    std::fprintf(stderr, "special-sim: %s\n%s", problem.c_str(), kUsage);
    return 2;
}

// The suite installed beside the simulator (bin/../share/special-sim/qualify), else the
// one in the source tree it was built from.
std::string DefaultSuite() {
    char exe[4096] = {};
    ssize_t n = readlink("/proc/self/exe", exe, sizeof exe - 1);
    std::string dir = n > 0 ? std::string(exe, static_cast<size_t>(n)) : "";
    dir = dir.substr(0, dir.rfind('/'));
    std::string installed = dir + "/../share/special-sim/qualify";
    return access(installed.c_str(), R_OK) == 0 ? installed : SIM_QUALIFY_DIR;
}

int Qualify(const Args &a) {
    if (a.run.app.empty()) {
        return Usage("--qualify needs --app LIB.so");
    }
    sim::QualifyOptions q = a.qualify_options;
    q.suite_dir = q.suite_dir.empty() ? DefaultSuite() : q.suite_dir;
    std::printf("%s\n", sim::VersionText().c_str());
    std::vector<sim::Finding> findings;
    std::vector<sim::QualifyRow> rows = sim::RunQualify(q, a.run, stdout, &findings);
    sim::PrintFindingSummary(stdout, findings);
    sim::PrintQualifySummary(stdout, rows);
    if (!a.junit_file.empty() && !WriteFile(a.junit_file, sim::JUnitXml(rows, a.run.app))) {
        std::fprintf(stderr, "special-sim: cannot write %s\n", a.junit_file.c_str());
        return 2;
    }
    if (rows.empty()) {
        std::fprintf(stderr, "special-sim: no row matches '%s'\n", q.only.c_str());
        return 2;
    }
    bool failed = false;
    for (const sim::QualifyRow &r : rows) {
        failed = failed || r.status == sim::kOutcomes[1];
    }
    return failed ? 1 : 0;
}

// Writes the scenario and the expectations of its run (--record).
bool Record(const Args &a, const std::string &text, sim::Transcript &out) {
    std::string expect_path = sim::ExpectPathFor(a.record_file);
    if (!WriteFile(a.record_file, text) || !WriteFile(expect_path, sim::RecordExpectations(out.Lines()))) {
        std::fprintf(stderr, "special-sim: cannot write %s\n", a.record_file.c_str());
        return false;
    }
    std::fprintf(stderr, "special-sim: recorded %s and %s\n", a.record_file.c_str(), expect_path.c_str());
    return true;
}

bool CheckExpect(const Args &a, sim::Transcript &out) {
    std::string expect_text;
    if (a.expect_file.empty()) {
        return true;
    }
    ReadFile(a.expect_file, &expect_text);
    std::vector<std::string> problems = sim::CheckExpectations(out.Lines(), expect_text, a.expect_file);
    for (const std::string &p : problems) {
        std::fprintf(stderr, "%s\n", p.c_str());
    }
    if (!problems.empty()) {
        std::fprintf(stderr, "special-sim: %zu expectation problem(s)\n", problems.size());
    }
    return problems.empty();
}

// Reads and checks the scenario as a whole before anything runs; 0, or the exit status.
int LoadScenario(const Args &a, std::string *text, sim::Scenario *scenario) {
    std::string ignored;
    if (!ReadFile(a.scenario_file, text) || (!a.expect_file.empty() && !ReadFile(a.expect_file, &ignored))) {
        std::fprintf(stderr, "special-sim: cannot read %s\n",
                     text->empty() ? a.scenario_file.c_str() : a.expect_file.c_str());
        return 2;
    }
    *scenario = sim::ParseScenario(*text, a.scenario_file);
    for (const std::string &e : scenario->errors) {
        std::fprintf(stderr, "%s\n", e.c_str());
    }
    if (!scenario->errors.empty()) {
        std::fprintf(stderr, "special-sim: %zu error(s); nothing was run\n", scenario->errors.size());
        return 2;
    }
    return 0;
}

// The findings table after a run with an application; whether an error was found.
bool ReportFindings(const Args &a, const sim::RunReport &report) {
    if (a.run.app.empty() || !a.run.check.check) {
        return false;
    }
    sim::PrintFindingSummary(a.json ? stderr : stdout, report.findings);
    bool errors = false;
    for (const sim::Finding &f : report.findings) {
        errors = errors || f.issue.severity == sim::Severity::Error;
    }
    return errors;
}

int Play(const Args &a) {
    std::string text;
    sim::Scenario scenario;
    int rc = LoadScenario(a, &text, &scenario);
    if (rc != 0) {
        return rc;
    }
    sim::Transcript out(stdout, a.json, !a.expect_file.empty() || !a.record_file.empty());
    sim::RunReport report;
    if (!a.run.app.empty()) {
        sim::InstallCrashReport(STDERR_FILENO);
        sim::InstallExitReport(STDERR_FILENO);
    }
    if (sim::RunScenario(scenario, a.scenario_file, out, a.run, &report) != 0) {
        return 1;
    }
    bool errors = ReportFindings(a, report);
    bool recorded = a.record_file.empty() || Record(a, text, out);
    return CheckExpect(a, out) && recorded && !errors ? 0 : 1;
}

// --from-log with --out: writes the scenario and its expectations.
bool WriteConversion(const std::string &scn, const sim::LogConversion &conv) {
    std::string expect = sim::ExpectPathFor(scn);
    if (!WriteFile(scn, conv.scenario) || !WriteFile(expect, conv.expectations)) {
        std::fprintf(stderr, "special-sim: cannot write %s\n", scn.c_str());
        return false;
    }
    std::fprintf(stderr, "special-sim: wrote %s and %s (%d command(s) to replay, %zu left out)\n",
                 scn.c_str(), expect.c_str(), conv.replayable, conv.left_out.size());
    return true;
}

// --from-log with --app: runs the converted scenario and prints the first departure.
int ReplayLog(const Args &a, const sim::DeviceLog &log, const std::string &scn, const std::string &text) {
    sim::Scenario scenario = sim::ParseScenario(text, scn);
    for (const std::string &e : scenario.errors) {
        std::fprintf(stderr, "%s\n", e.c_str());
    }
    if (!scenario.errors.empty()) {
        return 2;
    }
    sim::Transcript out(stdout, a.json, true);
    sim::RunReport report;
    if (sim::RunScenario(scenario, scn, out, a.run, &report) != 0) {
        return 1;
    }
    bool errors = ReportFindings(a, report);
    sim::Departure d = sim::FindDeparture(log, a.from_log, out.Lines());
    std::fputs(d.text.c_str(), a.json ? stderr : stdout);
    return d.found || errors ? 1 : 0;
}

// --from-log: converts a device's log; lists what cannot be replayed (exit 2 when
// nothing can), then writes it (--out) and replays it (--app).
int FromLog(const Args &a) {
    std::string text;
    if (a.out_name.empty() && a.run.app.empty()) {
        return Usage("--from-log needs --out NAME or --app LIB.so");
    }
    if (!ReadFile(a.from_log, &text)) {
        std::fprintf(stderr, "special-sim: cannot read %s\n", a.from_log.c_str());
        return 2;
    }
    sim::DeviceLog log = sim::ReadDeviceLog(text);
    sim::LogConversion conv = sim::ConvertLog(log, a.from_log, a.keep_timing);
    for (const std::string &why : conv.left_out) {
        std::fprintf(stderr, "%s:%s\n", a.from_log.c_str(), why.c_str());
    }
    if (conv.replayable == 0) {
        std::fprintf(stderr, "special-sim: nothing in %s can be replayed\n", a.from_log.c_str());
        return 2;
    }
    // NAME.scn beside NAME.expect; without --out the name only labels the transcript's steps
    std::string scn = a.out_name.empty() ? a.from_log : a.out_name;
    scn += scn.size() > 4 && scn.compare(scn.size() - 4, 4, ".scn") == 0 ? "" : ".scn";
    if (!a.out_name.empty() && !WriteConversion(scn, conv)) {
        return 2;
    }
    return a.run.app.empty() ? 0 : ReplayLog(a, log, scn, conv.scenario);
}

} // namespace

int main(int argc, char **argv) {
    Args args;
    std::string problem = sim::ParseOptions(argc, argv, &args);
    if (!problem.empty()) {
        return Usage(problem);
    }
    if (args.help || args.version) {
        std::fputs(args.help ? kUsage : (sim::VersionText() + "\n").c_str(), stdout);
        return 0;
    }
    if (args.qualify) {
        return Qualify(args);
    }
    if (!args.from_log.empty()) {
        return FromLog(args);
    }
    return args.scenario_file.empty() ? Usage("no scenario given") : Play(args);
}
