// The qualification suite runner (see qualify.h).
#include "qualify.h"

#include <dirent.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "expect.h"
#include "scenario.h"

namespace sim {

namespace {

std::vector<std::string> SuiteFiles(const std::string &dir) {
    std::vector<std::string> files;
    DIR *d = opendir(dir.c_str());
    // readdir64: a 32-bit readdir fails on file systems with 64-bit inode numbers
    for (struct dirent64 *e = d ? readdir64(d) : nullptr; e != nullptr; e = readdir64(d)) {
        std::string name = e->d_name;
        if (name.size() > 4 && name.compare(name.size() - 4, 4, ".scn") == 0) {
            files.push_back(name);
        }
    }
    if (d != nullptr) {
        closedir(d);
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool Slurp(const std::string &path, std::string *text) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream buf;
    buf << in.rdbuf();
    *text = buf.str();
    return static_cast<bool>(in);
}

std::string Capability(const std::string &text, const std::string &fallback) {
    const std::string tag = "# capability:";
    if (text.compare(0, tag.size(), tag) != 0) {
        return fallback;
    }
    size_t end = text.find('\n');
    size_t start = text.find_first_not_of(' ', tag.size());
    return text.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

// The row's verdict from what its run left: a finding fails it; a step not exercised
// makes it "not exercised" (its unmet expectations are then no surprise), never passed.
void Judge(const RunReport &report, const std::vector<std::string> &unmet, QualifyRow *row,
           std::vector<Finding> *findings) {
    for (const Finding &f : report.findings) {
        findings->push_back(f);
        (f.issue.severity != Severity::Info ? row->problems : row->notes).push_back(DescribeFinding(f));
    }
    if (!row->problems.empty()) {
        row->status = "FAILED";
        return;
    }
    row->problems = report.not_exercised;
    row->problems.insert(row->problems.end(), unmet.begin(), unmet.end());
    row->status = !report.not_exercised.empty() ? "not exercised" : (unmet.empty() ? "passed" : "FAILED");
}

QualifyRow RunRow(const std::string &dir, const std::string &name, const RunOptions &options,
                  std::vector<Finding> *findings) {
    QualifyRow row;
    row.file = name;
    std::string path = dir + "/" + name, text, expect_text;
    Slurp(path, &text);
    row.capability = Capability(text, name);
    Scenario scenario = ParseScenario(text, name);
    if (!scenario.errors.empty()) {
        row.status = "FAILED";
        row.problems = scenario.errors;
        return row;
    }
    FILE *sink = std::fopen("/dev/null", "w");
    Transcript out(sink ? sink : stderr, true, true);
    RunReport report;
    int rc = RunScenario(scenario, name, out, options, &report);
    if (sink != nullptr) {
        std::fclose(sink);
    }
    std::string base = name.substr(0, name.size() - 4);
    std::vector<std::string> unmet;
    if (Slurp(dir + "/" + base + ".expect", &expect_text)) {
        unmet = CheckExpectations(out.Lines(), expect_text, base + ".expect");
    }
    if (rc != 0) {
        row.problems.push_back("the application did not start");
    }
    Judge(report, unmet, &row, findings);
    return row;
}

} // namespace

std::vector<QualifyRow> RunQualify(const std::string &suite_dir, const RunOptions &options,
                                   std::vector<Finding> *findings) {
    std::vector<QualifyRow> rows;
    for (const std::string &name : SuiteFiles(suite_dir)) {
        rows.push_back(RunRow(suite_dir, name, options, findings));
    }
    return rows;
}

} // namespace sim
