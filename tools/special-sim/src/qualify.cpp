// The qualification runner (see qualify.h): one child process per row, the verdict sent
// back over a pipe; the crash board (crash_board.h) tells what a child that died was doing.
#include "qualify.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>

#include "crash_board.h"
#include "expect.h"
#include "race_capture.h"
#include "race_report.h"
#include "scenario.h"

namespace sim {

namespace {

const char kEnd[] = "end";
// How a row whose process ended without a verdict begins its problems.
const char kCrashTag[] = "crash: ";
const char kHangTag[] = "hang: ";
const char kExitTag[] = "exit: ";
const char *const kLostTags[] = {kCrashTag, kHangTag, kExitTag};

// Whether an answer's text ("CODE to CALLBACK NAME (TYPE)") is for that callback and type.
bool AnswerFor(const std::string &answer, const std::pair<std::string, int> &what) {
    return answer.find(" to " + what.first + " ") != std::string::npos && answer.size() > 2 &&
           answer.compare(answer.rfind('('), std::string::npos, "(" + std::to_string(what.second) + ")") == 0;
}

// The application's answers to what the row needs.
std::vector<std::string> NeededAnswers(const RowPlan &plan, const RunReport &report) {
    std::vector<std::string> out;
    for (const std::string &a : report.answers) {
        if (std::any_of(plan.needs.begin(), plan.needs.end(),
                        [&a](const auto &n) { return AnswerFor(a, n); })) {
            out.push_back(a);
        }
    }
    return out;
}

// A not-supported answer to something the row needs (its text in *which); *declined
// when it was the answer to a command (recv_msg), which the row cannot pass with.
bool Needed(const RowPlan &plan, const RunReport &report, std::string *which, bool *declined) {
    bool found = false;
    for (const auto &ns : report.not_supported) {
        if (std::find(plan.needs.begin(), plan.needs.end(), ns) == plan.needs.end()) {
            continue;
        }
        for (const std::string &a : report.answers) {
            *which = AnswerFor(a, ns) && (which->empty() || ns.first == "recv_msg") ? a : *which;
        }
        *declined = *declined || ns.first == "recv_msg";
        found = true;
    }
    return found;
}

std::string Escape(const std::string &text) {
    std::string out;
    for (char c : text) {
        out += c == '\n'   ? std::string("\\n")
               : c == '\t' ? std::string("\\t")
               : c == '\\' ? "\\\\"
                           : std::string(1, c);
    }
    return out;
}

std::string Unescape(const std::string &text) {
    std::string out;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            char c = text[++i];
            out += c == 'n' ? '\n' : c == 't' ? '\t' : c;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::vector<std::string> Fields(const std::string &line) {
    std::vector<std::string> fields;
    size_t start = 0;
    for (size_t tab = line.find('\t');; tab = line.find('\t', start)) {
        fields.push_back(
            Unescape(line.substr(start, tab == std::string::npos ? std::string::npos : tab - start)));
        if (tab == std::string::npos) {
            return fields;
        }
        start = tab + 1;
    }
}

// Reads the child's pipe until it closes or the deadline passes; false on the deadline.
bool ReadUntil(int fd, std::chrono::steady_clock::time_point deadline, std::string *text) {
    char buf[4096];
    for (;;) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline -
                                                                          std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return false;
        }
        pollfd p{fd, POLLIN, 0};
        int ready = poll(&p, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            return ready == 0 ? false : true;
        }
        ssize_t n = read(fd, buf, sizeof buf);
        if (n <= 0) {
            return true;
        }
        text->append(buf, static_cast<size_t>(n));
    }
}

void PrintRow(FILE *out, const QualifyRow &r) {
    std::fprintf(out, "%-14s %s\n", r.status.c_str(), r.capability.c_str());
    if (r.status != kOutcomes[1] && !r.reason.empty()) {
        std::fprintf(out, "    %s\n", r.reason.c_str());
    }
    for (const std::string &p : r.problems) {
        std::fprintf(out, "    %s\n", p.c_str());
    }
    for (const std::string &n : r.notes) {
        std::fprintf(out, "    %s\n", n.c_str());
    }
    if (!r.rerun.empty()) {
        std::fprintf(out, "    run it alone: %s\n", r.rerun.c_str());
    }
    std::fflush(out);
}

std::string Quote(const std::string &text) {
    return text.find(' ') == std::string::npos ? text : "\"" + text + "\"";
}

bool HeldOnTwoThreads(const std::vector<InFlight> &in) {
    return std::any_of(in.begin(), in.end(), [&in](const InFlight &f) { return f.thread != in[0].thread; });
}

// A callback and record type that hung for a whole row timeout: in a later row the same
// one is given only kKnownHangMs before the row is stopped, so an application that hangs
// in a status poll (which every row makes) does not cost every row the whole timeout.
struct KnownHang {
    std::string callback;
    int type;
};
constexpr long long kKnownHangMs = 500;

bool HeldByKnownHang(const std::vector<KnownHang> &known) {
    for (const InFlight &f : BoardInFlight()) {
        for (const KnownHang &k : known) {
            if (f.callback == k.callback && f.type == k.type && f.held_ms >= kKnownHangMs) {
                return true;
            }
        }
    }
    return false;
}

// Reads the row's result until the deadline, or until a callback that hung in an earlier
// row is held again; *again tells which of the two ended the wait.
bool ReadRow(int fd, std::chrono::steady_clock::time_point deadline, const std::vector<KnownHang> &known,
             std::string *text, bool *again) {
    *again = false;
    for (;;) {
        auto slice = std::min(deadline, std::chrono::steady_clock::now() + std::chrono::milliseconds(100));
        if (ReadUntil(fd, slice, text)) {
            return true;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        if (!known.empty() && HeldByKnownHang(known)) {
            *again = true;
            return false;
        }
    }
}

// The row's verdict from the board as the hang left it (read before the kill), then the
// row's process ended; the callbacks still held are remembered as hung. timeout_s 0: the
// row was stopped as a known hang.
QualifyRow StopHungRow(const RowPlan &plan, const std::string &app, pid_t pid, int timeout_s,
                       std::vector<KnownHang> *known) {
    QualifyRow hung = LostRow(plan, app, 0, true, timeout_s);
    for (const InFlight &f : BoardInFlight()) {
        known->push_back(KnownHang{f.callback, f.type});
    }
    int status = 0;
    kill(pid, SIGKILL);
    waitpid(pid, &status, 0);
    return hung;
}

// Runs the row in a child process (*child); its verdict, or what its end tells when it
// gave none.
QualifyRow RunRowProcess(const RowPlan &plan, const RunOptions &options, int timeout_s, bool required,
                         std::vector<KnownHang> *known, std::vector<Finding> *findings, pid_t *child) {
    int fds[2];
    if (pipe(fds) != 0) {
        return RunRowHere(plan, options, required, findings);
    }
    ResetCrashBoard();
    std::fflush(nullptr);
    pid_t pid = fork();
    *child = pid;
    if (pid == 0) {
        CaptureRaces();
        close(fds[0]);
        InstallCrashReport(-1);
        InstallExitReport(-1);
        std::vector<Finding> mine;
        QualifyRow row = RunRowHere(plan, options, required, &mine);
        std::string text = SerializeRow(row, mine);
        for (size_t done = 0; done < text.size();) {
            ssize_t n = write(fds[1], text.data() + done, text.size() - done);
            done += n > 0 ? static_cast<size_t>(n) : text.size();
        }
        _exit(0); // the module's threads and the application are not wound down: the row is over
    }
    close(fds[1]);
    std::string text;
    bool again = false;
    bool in_time =
        pid > 0 && ReadRow(fds[0], std::chrono::steady_clock::now() + std::chrono::seconds(timeout_s), *known,
                           &text, &again);
    close(fds[0]);
    int status = 0;
    if (pid > 0 && !in_time) {
        return StopHungRow(plan, options.app, pid, again ? 0 : timeout_s, known);
    }
    if (pid > 0) {
        waitpid(pid, &status, 0);
    }
    QualifyRow row;
    if (pid > 0 && ParseRow(text, &row, findings)) {
        return row;
    }
    return LostRow(plan, options.app, status, false, timeout_s);
}

QualifyRow RunRowIsolated(const RowPlan &plan, const RunOptions &options, int timeout_s, bool required,
                          std::vector<KnownHang> *known, std::vector<Finding> *findings) {
    pid_t child = -1;
    QualifyRow row = RunRowProcess(plan, options, timeout_s, required, known, findings, &child);
    AddRaces(child > 0 ? TakeRaces(child) : "", options.app, &row, findings);
    return row;
}

} // namespace

void AddRaces(const std::string &log, const std::string &app, QualifyRow *row,
              std::vector<Finding> *findings) {
    for (const Race &r : ParseRaces(log, app)) {
        if (!r.involves_app) {
            row->notes.push_back("race outside the application (ours to fix; please report it): " +
                                 DescribeRace(r));
            continue;
        }
        row->problems.push_back("race: " + DescribeRace(r));
        const RaceAccess &a = r.current.in_app ? r.current : r.previous;
        Issue issue{FaultClass::Race, DescribeLocation(r.location, r.current.address), DescribeRace(r),
                    Severity::Error};
        findings->push_back(Finding{a.callback, 0, "", issue, "", a.role, r.count - 1});
    }
    if (!row->problems.empty() && row->status != kOutcomes[1]) {
        row->status = kOutcomes[1];
        row->reason.clear();
    }
}

// The outcome and its reason, findings aside.
void Outcome(const RowPlan &plan, const RunReport &report, const std::vector<std::string> &unmet,
             bool required, QualifyRow *row) {
    std::string which;
    bool declined = false;
    // a status the module still reported, unchanged and unasked, although one of its
    // questions was not supported, passes
    bool not_supported = Needed(plan, report, &which, &declined) &&
                         (declined || !unmet.empty() || !report.not_exercised.empty());
    if (!row->problems.empty()) {
        row->status = kOutcomes[1];
    } else if (not_supported) {
        row->status = required ? kOutcomes[1] : kOutcomes[2];
        row->reason = "the application answered " + which;
    } else if (!report.not_exercised.empty()) {
        row->status = kOutcomes[3];
        row->reason = report.not_exercised[0];
    } else {
        row->status = unmet.empty() ? kOutcomes[0] : kOutcomes[1];
    }
}

QualifyRow JudgeRow(const RowPlan &plan, const RunReport &report, const std::vector<std::string> &unmet,
                    bool required) {
    QualifyRow row;
    row.capability = plan.name;
    row.kind = plan.kind;
    row.file = plan.file;
    for (const Finding &f : report.findings) {
        (f.issue.severity != Severity::Info ? row.problems : row.notes).push_back(DescribeFinding(f));
    }
    Outcome(plan, report, unmet, required, &row);
    if (row.status != kOutcomes[1]) {
        return row;
    }
    row.problems.insert(row.problems.end(), report.not_exercised.begin(), report.not_exercised.end());
    row.problems.insert(row.problems.end(), unmet.begin(), unmet.end());
    for (const std::string &a : unmet.empty() ? std::vector<std::string>() : NeededAnswers(plan, report)) {
        row.problems.push_back("the application answered " + a);
    }
    if (!row.reason.empty()) {
        row.problems.push_back("the row is required (--require or --require-all)");
        row.reason.clear();
    }
    return row;
}

QualifyRow RunRowHere(const RowPlan &plan, const RunOptions &options, bool required,
                      std::vector<Finding> *findings) {
    Scenario scenario = ParseScenario(plan.scenario, plan.file);
    for (const RowPlan &member : plan.members) {
        Scenario part = ParseScenario(member.scenario, member.file);
        scenario.steps.insert(scenario.steps.end(), part.steps.begin(), part.steps.end());
        scenario.errors.insert(scenario.errors.end(), part.errors.begin(), part.errors.end());
    }
    if (!scenario.errors.empty()) {
        QualifyRow row{plan.name, plan.kind, plan.file, "FAILED", scenario.errors, {}, "", ""};
        return row;
    }
    FILE *sink = std::fopen("/dev/null", "w");
    Transcript out(sink ? sink : stderr, true, true);
    RunReport report;
    int rc = RunScenario(scenario, plan.file, out, options, &report);
    if (sink != nullptr) {
        std::fclose(sink);
    }
    std::vector<std::string> unmet = CheckExpectations(out.Lines(), plan.expect, plan.expect_file);
    for (const RowPlan &member : plan.members) {
        for (const std::string &u : CheckExpectations(out.Lines(), member.expect, member.expect_file)) {
            unmet.push_back(member.name + ": " + u);
        }
    }
    if (rc != 0) {
        unmet.insert(unmet.begin(), "the application did not start");
    }
    findings->insert(findings->end(), report.findings.begin(), report.findings.end());
    QualifyRow row = JudgeRow(plan, report, unmet, required);
    return row;
}

QualifyRow LostRow(const RowPlan &plan, const std::string &app, int wait_status, bool timed_out,
                   int timeout_s) {
    QualifyRow row{plan.name, plan.kind, plan.file, "FAILED", {}, {}, "", ""};
    std::vector<InFlight> in = BoardInFlight();
    if (timed_out) {
        for (const InFlight &f : in) {
            row.problems.push_back(std::string(kHangTag) + (timeout_s > 0
                                                                ? DescribeHang(f, timeout_s)
                                                                : DescribeKnownHang(f, kKnownHangMs)));
        }
        if (HeldOnTwoThreads(in)) {
            row.problems.push_back(std::string(kHangTag) +
                                   "callbacks are held on more than one thread at once: each may wait "
                                   "for a lock the other holds (a deadlock)");
        }
        if (in.empty()) {
            CrashReport board = BoardCrash();
            row.problems.push_back(std::string(kHangTag) + "the row did not end within " +
                                   std::to_string(timeout_s) + " s (at " +
                                   (board.step.empty() ? std::string("start-up") : board.step) +
                                   "; no callback was running)");
        }
        return row;
    }
    CrashReport crash = BoardCrash();
    if (WIFSIGNALED(wait_status) && crash.signal != 0) {
        crash.frames = AppFrames(crash.frames, app);
        row.problems.push_back(std::string(kCrashTag) + DescribeCrash(crash));
    } else if (WIFSIGNALED(wait_status)) {
        row.problems.push_back(std::string(kCrashTag) + "the row's process was ended by signal " +
                               std::to_string(WTERMSIG(wait_status)));
    } else {
        std::string inside = in.empty() ? " outside the application's callbacks"
                                        : " inside " + in[0].callback + " " + in[0].type_name + " (" +
                                              std::to_string(in[0].type) + ") at " + in[0].where +
                                              " on the " + in[0].thread;
        row.problems.push_back(std::string(kExitTag) + "the application ended the process (exit status " +
                               std::to_string(WEXITSTATUS(wait_status)) + ")" + inside);
    }
    return row;
}

std::string SerializeRow(const QualifyRow &row, const std::vector<Finding> &findings) {
    std::string text = "row\t" + Escape(row.capability) + "\t" + Escape(row.kind) + "\t" + Escape(row.file) +
                       "\t" + Escape(row.status) + "\t" + Escape(row.reason) + "\n";
    for (const std::string &p : row.problems) {
        text += "problem\t" + Escape(p) + "\n";
    }
    for (const std::string &n : row.notes) {
        text += "note\t" + Escape(n) + "\n";
    }
    for (const Finding &f : findings) {
        text += "finding\t" + Escape(f.callback) + "\t" + std::to_string(f.type) + "\t" +
                Escape(f.type_name) + "\t" + std::to_string(static_cast<int>(f.issue.fault)) + "\t" +
                std::to_string(static_cast<int>(f.issue.severity)) + "\t" + Escape(f.issue.path) + "\t" +
                Escape(f.issue.what) + "\t" + Escape(f.where) + "\t" + Escape(f.thread) + "\t" +
                std::to_string(f.repeats) + "\n";
    }
    return text + kEnd + "\n";
}

bool ParseRow(const std::string &text, QualifyRow *row, std::vector<Finding> *findings) {
    bool ended = false;
    for (const std::string &line : SplitLines(text)) {
        std::vector<std::string> f = Fields(line);
        if (f[0] == "row" && f.size() == 6) {
            *row = QualifyRow{f[1], f[2], f[3], f[4], {}, {}, f[5], ""};
        } else if ((f[0] == "problem" || f[0] == "note") && f.size() == 2) {
            (f[0] == "problem" ? row->problems : row->notes).push_back(f[1]);
        } else if (f[0] == "finding" && f.size() == 11) {
            Finding g{f[1],
                      std::atoi(f[2].c_str()),
                      f[3],
                      Issue{static_cast<FaultClass>(std::atoi(f[4].c_str())), f[6], f[7],
                            static_cast<Severity>(std::atoi(f[5].c_str()))},
                      f[8],
                      f[9],
                      std::atoi(f[10].c_str())};
            findings->push_back(g);
        } else {
            ended = ended || line == kEnd;
        }
    }
    return ended;
}

namespace {

std::vector<Finding> Joined(std::vector<Finding> a, const std::vector<Finding> &b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// What a row's verdict makes it in its kind's concurrency row: "passed" (a member),
// "FAILED" (a member without its expectations: it failed by them or by findings), or
// "out" (not applicable, not exercised, or its process crashed, exited or hung).
std::string Membership(const QualifyRow &row) {
    bool lost = std::any_of(row.problems.begin(), row.problems.end(), [](const std::string &p) {
        return std::any_of(std::begin(kLostTags), std::end(kLostTags),
                           [&p](const char *tag) { return p.compare(0, std::strlen(tag), tag) == 0; });
    });
    return row.status == kOutcomes[0] || (row.status == kOutcomes[1] && !lost) ? row.status : "out";
}

// The report-status thread's period in the concurrency rows, unless --poll-ms says.
constexpr int kConcurrencyPollMs = 10;

// One qualification run: the rows' verdicts so far and what the rows learnt.
struct QualifyRun {
    const QualifyOptions &qualify;
    const RunOptions &options;
    FILE *out;
    std::vector<Finding> *findings;
    std::vector<QualifyRow> rows;
    std::map<std::string, std::string> outcome; // row name -> Membership(its verdict), every row run
    std::vector<KnownHang> known;
    std::vector<Finding> quiet; // the findings of rows run without a verdict of their own

    bool Required(const RowPlan &plan) const {
        return qualify.require_all || (!qualify.require.empty() && RowSelected(plan, qualify.require));
    }
    // Prints the row's verdict (with how to run it alone when it failed) and keeps it.
    void Keep(const RowPlan &plan, QualifyRow row) {
        if (row.status == kOutcomes[1]) {
            row.rerun = "special-sim --qualify --app " + Quote(options.app) + " --row " + Quote(plan.name);
        }
        PrintRow(out, row);
        rows.push_back(row);
    }
    void RunSingle(const RowPlan &plan) {
        QualifyRow row =
            RunRowIsolated(plan, options, qualify.row_timeout_s, Required(plan), &known, findings);
        outcome[plan.name] = Membership(row);
        Keep(plan, row);
    }
    // The rows of a kind that ran to their end alone: those that passed, and those that
    // failed only by findings or expectations (their steps still drive the callbacks; their
    // expectations, unmet alone already, are not asked again). Rows of the kind not run
    // yet (left out by --row) are run first, without a verdict of their own.
    std::vector<RowPlan> RanAlone(const std::string &kind, const std::vector<RowPlan> &plans) {
        std::vector<RowPlan> members;
        for (const RowPlan &plan : plans) {
            if (plan.kind == kind && outcome.count(plan.name) == 0) {
                outcome[plan.name] =
                    Membership(RunRowIsolated(plan, options, qualify.row_timeout_s, false, &known, &quiet));
            }
            if (plan.kind == kind && outcome[plan.name] == kOutcomes[0]) {
                members.push_back(plan);
            } else if (plan.kind == kind && outcome[plan.name] == kOutcomes[1]) {
                members.push_back(plan);
                members.back().expect.clear();
                members.back().needs.clear();
            }
        }
        return members;
    }
    // A kind's rows that ran alone, together and again and again for a few seconds,
    // while the report-status service polls on its own thread and the custom-voice
    // workers run: what only shows when the application's callbacks overlap.
    void RunTogether(const std::string &kind, const std::vector<RowPlan> &plans) {
        RowPlan together = ConcurrencyRow(kind);
        if (!qualify.only.empty() && !RowSelected(together, qualify.only)) {
            return;
        }
        SetMembers(&together, RanAlone(kind, plans), qualify.concurrency_s * 1000);
        if (together.members.empty()) {
            QualifyRow row{
                together.name, together.kind, "", kOutcomes[2], {}, {}, "no " + kind + " row ran alone", ""};
            if (Required(together)) {
                row.status = kOutcomes[1];
                row.problems = {row.reason, "the row is required (--require or --require-all)"};
                row.reason.clear();
            }
            Keep(together, row);
            return;
        }
        RunOptions threaded = options;
        threaded.poll_ms = options.poll_ms > 0 ? options.poll_ms : kConcurrencyPollMs;
        threaded.check.note_overlap = false; // the row makes them overlap on purpose
        // what the rows found alone is theirs; this row reports what overlap adds
        for (const Finding &f : Joined(*findings, quiet)) {
            threaded.check.already_found.insert(
                FindingKey(f.issue.fault, f.callback, f.type, AnyIndex(f.issue.path)));
        }
        Keep(together, RunRowIsolated(together, threaded, qualify.row_timeout_s + qualify.concurrency_s,
                                      Required(together), &known, findings));
    }
};

} // namespace

std::vector<QualifyRow> RunQualify(const QualifyOptions &qualify, const RunOptions &options, FILE *out,
                                   std::vector<Finding> *findings) {
    std::vector<std::string> problems;
    std::vector<RowPlan> plans = SuiteRows(qualify.suite_dir, &problems);
    for (const std::string &p : problems) {
        std::fprintf(out, "suite: %s\n", p.c_str());
    }
    ShareCrashBoard();
    RaceDir(); // made before the first row, so that every row's process writes into it
    std::fprintf(out, "\n== qualification\n");
    QualifyRun run{qualify, options, out, findings, {}, {}, {}, {}};
    for (const RowPlan &plan : plans) {
        if (qualify.only.empty() || RowSelected(plan, qualify.only)) {
            run.RunSingle(plan);
        }
    }
    for (const std::string &kind :
         qualify.concurrency_s > 0 ? ConcurrencyKinds(plans) : std::vector<std::string>()) {
        run.RunTogether(kind, plans);
    }
    RemoveRaceDir();
    return run.rows;
}

} // namespace sim
