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
    std::string capability;            // "every routed platform command"
    std::string file;                  // the suite scenario
    std::string status;                // "passed", "FAILED", "not exercised"
    std::vector<std::string> problems; // findings, unmet expectations, steps not exercised
    std::vector<std::string> notes;    // info-level findings, which do not fail a row
};

// Findings per class and severity, then a total line.
void PrintFindingSummary(FILE *out, const std::vector<Finding> &findings);

// One line per row: status, capability, and the problems indented under it.
void PrintQualifyTable(FILE *out, const std::vector<QualifyRow> &rows);

// JUnit XML: one test case per row; findings and unmet expectations as failures, rows
// not exercised as skipped, info-level findings as system-out.
std::string JUnitXml(const std::vector<QualifyRow> &rows, const std::string &app);

} // namespace sim
