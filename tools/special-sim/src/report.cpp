// Summary tables and JUnit XML (see report.h); the XML is written by pugixml.
#include "report.h"

#include <map>
#include <sstream>

#include <pugixml.hpp>

namespace sim {

namespace {

std::string JoinLines(const std::vector<std::string> &lines) {
    std::string out;
    for (const std::string &l : lines) {
        out += l + "\n";
    }
    return out;
}

int CountStatus(const std::vector<QualifyRow> &rows, const std::string &status) {
    int n = 0;
    for (const QualifyRow &r : rows) {
        n += r.status == status ? 1 : 0;
    }
    return n;
}

} // namespace

void PrintFindingSummary(FILE *out, const std::vector<Finding> &findings) {
    std::map<std::string, int[3]> counts; // class -> info, warning, error
    int total[3] = {0, 0, 0};
    for (const Finding &f : findings) {
        int s = static_cast<int>(f.issue.severity);
        counts[FaultClassName(f.issue.fault)][s]++;
        total[s]++;
    }
    std::fprintf(out, "\n== contract findings\n%-12s %7s %7s %7s\n", "class", "error", "warning", "info");
    for (const auto &c : counts) {
        std::fprintf(out, "%-12s %7d %7d %7d\n", c.first.c_str(), c.second[2], c.second[1], c.second[0]);
    }
    std::fprintf(out, "%-12s %7d %7d %7d\n", "total", total[2], total[1], total[0]);
}

void PrintQualifyTable(FILE *out, const std::vector<QualifyRow> &rows) {
    std::fprintf(out, "\n== qualification\n");
    for (const QualifyRow &r : rows) {
        std::fprintf(out, "%-14s %s  (%s)\n", r.status.c_str(), r.capability.c_str(), r.file.c_str());
        for (const std::string &p : r.problems) {
            std::fprintf(out, "    %s\n", p.c_str());
        }
        for (const std::string &n : r.notes) {
            std::fprintf(out, "    %s\n", n.c_str());
        }
    }
    std::fprintf(out, "%d passed, %d failed, %d not exercised\n", CountStatus(rows, "passed"),
                 CountStatus(rows, "FAILED"), CountStatus(rows, "not exercised"));
}

std::string JUnitXml(const std::vector<QualifyRow> &rows, const std::string &app) {
    pugi::xml_document doc;
    pugi::xml_node decl = doc.append_child(pugi::node_declaration);
    decl.append_attribute("version") = "1.0";
    decl.append_attribute("encoding") = "UTF-8";
    pugi::xml_node suite = doc.append_child("testsuites").append_child("testsuite");
    suite.append_attribute("name") = ("special-sim qualify " + app).c_str();
    suite.append_attribute("tests") = static_cast<unsigned>(rows.size());
    suite.append_attribute("failures") = CountStatus(rows, "FAILED");
    suite.append_attribute("skipped") = CountStatus(rows, "not exercised");
    for (const QualifyRow &r : rows) {
        pugi::xml_node test = suite.append_child("testcase");
        test.append_attribute("classname") = ("qualify." + r.file).c_str();
        test.append_attribute("name") = r.capability.c_str();
        if (r.status == "FAILED") {
            pugi::xml_node failure = test.append_child("failure");
            failure.append_attribute("message") = (std::to_string(r.problems.size()) + " problem(s)").c_str();
            failure.text() = JoinLines(r.problems).c_str();
        } else if (r.status != "passed") {
            pugi::xml_node skipped = test.append_child("skipped");
            skipped.append_attribute("message") = "not exercised";
            skipped.text() = JoinLines(r.problems).c_str();
        }
        if (!r.notes.empty()) {
            test.append_child("system-out").text() = JoinLines(r.notes).c_str();
        }
    }
    std::ostringstream out;
    doc.save(out, "  ");
    return out.str();
}

} // namespace sim
