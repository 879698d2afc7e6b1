// The qualification's rows: one per capability, each a scenario and its expectations.
// The suite's files hold the steps: a "# row: NAME" line starts a row's section, the
// lines before the first one are every row's prologue. The status items' rows come from
// the table of status items over the suite's "# row template: status" section, and
// each command's failure path from the command's own row.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace sim {

struct RowPlan {
    std::string name;        // "command kCenPlt2PuSetDevPlanReq", "status 12382 Battery_WorkStatus"
    std::string kind;        // its first word: command, status, request, shadow, raw, custom, failure
    std::string file;        // the scenario file, for "file:line"
    std::string scenario;    // the file's text with the other rows' lines blanked
    std::string expect_file; // where the expectations come from
    std::string expect;      // the row's expectations, one per line
    // What the row needs of the application: (callback, type). A not-supported answer
    // to one of them makes the row not applicable.
    std::vector<std::pair<std::string, int>> needs;
    // A concurrency row: the rows whose steps it runs one after another, again and again
    // (the row's own scenario is the "repeat" step), each row's expectations checked.
    std::vector<RowPlan> members;
};

// The kind of the concurrency rows, and the kinds that have one, in suite order: every
// kind but the failure paths, whose steps make the application fail on purpose.
extern const char kConcurrencyKind[];
std::vector<std::string> ConcurrencyKinds(const std::vector<RowPlan> &rows);

// The concurrency row of a kind ("concurrency command"), its members not yet chosen.
RowPlan ConcurrencyRow(const std::string &kind);

// Chooses the members of a concurrency row: their steps are repeated for ms milliseconds.
void SetMembers(RowPlan *row, const std::vector<RowPlan> &members, int ms);

// Every row of the suite in dir, in file order; a problem with the suite goes to *problems.
std::vector<RowPlan> SuiteRows(const std::string &dir, std::vector<std::string> *problems);

// The (callback, type) pairs named by expectation lines ("recv_msg name=X", "get_runtime_info
// type=N") and by "# needs: CALLBACK TYPE" lines of a scenario.
std::vector<std::pair<std::string, int>> RowNeeds(const std::string &scenario, const std::string &expect);

// Whether a row is selected by a list of rows or kinds ("status,command kCenPlt2PuWakeReq").
bool RowSelected(const RowPlan &row, const std::string &list);

} // namespace sim
