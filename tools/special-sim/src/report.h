// What the simulator prints about an application after a run: the findings summary
// table, a qualification table, and the same rows as JUnit XML.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "app_check.h"

namespace sim {

// One row of the qualification: a capability and how it fared.
struct QualifyRow {
    std::string capability;            // "command kCenPlt2PuSetDevPlanReq"
    std::string kind;                  // "command", "status", ... (the JUnit suite)
    std::string file;                  // the suite scenario
    std::string status;                // "passed", "FAILED", "not applicable", "not exercised"
    std::vector<std::string> problems; // findings, unmet expectations, what happened instead
    std::vector<std::string> notes;    // info-level findings, which do not fail a row
    std::string reason;                // not applicable / not exercised: why
    std::string rerun;                 // FAILED: the command that runs the row alone
};

// The four outcomes, in the order the summary counts them.
extern const char *const kOutcomes[4];

// Findings per class and severity, then a total line.
void PrintFindingSummary(FILE *out, const std::vector<Finding> &findings);

// The closing count: "N passed, N failed, N not applicable, N not exercised".
void PrintQualifySummary(FILE *out, const std::vector<QualifyRow> &rows);

// JUnit XML: one test suite per kind of row, one test case per row; findings and unmet
// expectations as failures, rows not applicable or not exercised as skipped with their
// reason, info-level findings as system-out; the simulator's and the module's versions
// as properties.
std::string JUnitXml(const std::vector<QualifyRow> &rows, const std::string &app);

// "special-sim 2.0.0, module libnoltDevSDK_special 2.0.0".
std::string VersionText();

} // namespace sim
