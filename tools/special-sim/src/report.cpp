// Summary tables and JUnit XML (see report.h); the XML is written by pugixml.
#include "report.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

#include <pugixml.hpp>

#include "noltDevSDK_special_build.h"

namespace sim {

const char *const kOutcomes[4] = {"passed", "FAILED", "not applicable", "not exercised"};

namespace {

const char kSimVersion[] = SIM_VERSION; // the project version the simulator was built as

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

void PrintQualifySummary(FILE *out, const std::vector<QualifyRow> &rows) {
    std::fprintf(out, "%d passed, %d failed, %d not applicable, %d not exercised\n",
                 CountStatus(rows, kOutcomes[0]), CountStatus(rows, kOutcomes[1]),
                 CountStatus(rows, kOutcomes[2]), CountStatus(rows, kOutcomes[3]));
}

std::string VersionText() {
    return std::string("special-sim ") + kSimVersion + ", module libnoltDevSDK_special " +
           NOLTDEVSDK_SPECIAL_VERSION_STRING;
}

std::string JUnitXml(const std::vector<QualifyRow> &rows, const std::string &app) {
    pugi::xml_document doc;
    pugi::xml_node decl = doc.append_child(pugi::node_declaration);
    decl.append_attribute("version") = "1.0";
    decl.append_attribute("encoding") = "UTF-8";
    pugi::xml_node suites = doc.append_child("testsuites");
    std::vector<std::string> kinds;
    for (const QualifyRow &r : rows) {
        if (std::find(kinds.begin(), kinds.end(), r.kind) == kinds.end()) {
            kinds.push_back(r.kind);
        }
    }
    for (const std::string &kind : kinds) {
        std::vector<QualifyRow> mine;
        std::copy_if(rows.begin(), rows.end(), std::back_inserter(mine),
                     [&kind](const QualifyRow &r) { return r.kind == kind; });
        pugi::xml_node suite = suites.append_child("testsuite");
        suite.append_attribute("name") = ("special-sim qualify " + app + " " + kind).c_str();
        suite.append_attribute("tests") = static_cast<unsigned>(mine.size());
        suite.append_attribute("failures") = CountStatus(mine, kOutcomes[1]);
        suite.append_attribute("skipped") = CountStatus(mine, kOutcomes[2]) + CountStatus(mine, kOutcomes[3]);
        pugi::xml_node props = suite.append_child("properties");
        for (const auto &p : {std::make_pair("special-sim.version", kSimVersion),
                              std::make_pair("module.version", NOLTDEVSDK_SPECIAL_VERSION_STRING)}) {
            pugi::xml_node prop = props.append_child("property");
            prop.append_attribute("name") = p.first;
            prop.append_attribute("value") = p.second;
        }
        for (const QualifyRow &r : mine) {
            pugi::xml_node test = suite.append_child("testcase");
            test.append_attribute("classname") = ("qualify." + kind).c_str();
            test.append_attribute("name") = r.capability.c_str();
            if (r.status == kOutcomes[1]) {
                pugi::xml_node failure = test.append_child("failure");
                failure.append_attribute("message") =
                    (std::to_string(r.problems.size()) + " problem(s)").c_str();
                failure.text() = JoinLines(r.problems).c_str();
            } else if (r.status != kOutcomes[0]) {
                pugi::xml_node skipped = test.append_child("skipped");
                skipped.append_attribute("message") = (r.status + ": " + r.reason).c_str();
                skipped.text() = JoinLines({r.reason}).c_str();
            }
            if (!r.notes.empty()) {
                test.append_child("system-out").text() = JoinLines(r.notes).c_str();
            }
        }
    }
    std::ostringstream out;
    doc.save(out, "  ");
    return out.str();
}

} // namespace sim
