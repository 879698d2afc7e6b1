// --qualify: the suite's rows (qualify_rows.h), each run in a process of its own against
// a user's application, so that a crash or a hang is that row's verdict and every other
// row still runs. Each row's verdict is printed as soon as the row ends.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "qualify_rows.h"
#include "report.h"
#include "runner.h"

namespace sim {

struct QualifyOptions {
    std::string suite_dir;
    std::string only;         // --row: the rows (or kinds) to run, comma separated; "": all
    std::string require;      // --require: rows or kinds a product must support
    bool require_all = false; // --require-all
    int row_timeout_s = 10;   // --row-timeout: a row still running after this is a hang
    int concurrency_s = 3;    // --concurrency-s: how long each concurrency row runs (0: none)
};

// The verdict of one row from what its run left (pure: no process, no application):
// error or warning findings fail it, with every unmet expectation listed too; a
// not-supported answer to what the row needs makes it not applicable (FAILED when
// required); a control request refused makes it not exercised; else its expectations
// decide.
QualifyRow JudgeRow(const RowPlan &plan, const RunReport &report, const std::vector<std::string> &unmet,
                    bool required);

// The data races in a row's ThreadSanitizer log: one the application took part in fails
// the row (a "race" finding); one between the module's, the host SDK's or the simulator's
// own code is a note, not held against the application.
void AddRaces(const std::string &log, const std::string &app, QualifyRow *row,
              std::vector<Finding> *findings);

// Runs one row here, in this process.
QualifyRow RunRowHere(const RowPlan &plan, const RunOptions &options, bool required,
                      std::vector<Finding> *findings);

// Runs the rows, each in a child process, printing each verdict to out as it comes.
std::vector<QualifyRow> RunQualify(const QualifyOptions &qualify, const RunOptions &options, FILE *out,
                                   std::vector<Finding> *findings);

// The verdict of a row whose process ended without one: a crash, an exit or a hang.
QualifyRow LostRow(const RowPlan &plan, const std::string &app, int wait_status, bool timed_out,
                   int timeout_s);

// A row's result and findings as lines for the pipe from its process, and back.
std::string SerializeRow(const QualifyRow &row, const std::vector<Finding> &findings);
bool ParseRow(const std::string &text, QualifyRow *row, std::vector<Finding> *findings);

} // namespace sim
