// Summary tables and JUnit XML (see report.h).
#include "report.h"

#include <map>

namespace sim {

namespace {

std::string XmlEscape(const std::string &text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

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
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n  <testsuite name=\"special-sim qualify " +
        XmlEscape(app) + "\" tests=\"" + std::to_string(rows.size()) + "\" failures=\"" +
        std::to_string(CountStatus(rows, "FAILED")) + "\" skipped=\"" +
        std::to_string(CountStatus(rows, "not exercised")) + "\">\n";
    for (const QualifyRow &r : rows) {
        xml += "    <testcase classname=\"qualify." + XmlEscape(r.file) + "\" name=\"" +
               XmlEscape(r.capability) + "\"";
        xml += ">\n";
        std::string body = XmlEscape(JoinLines(r.problems));
        if (r.status == "FAILED") {
            xml += "      <failure message=\"" + std::to_string(r.problems.size()) + " problem(s)\">" + body +
                   "</failure>\n";
        } else if (r.status != "passed") {
            xml += "      <skipped message=\"not exercised\">" + body + "</skipped>\n";
        }
        if (!r.notes.empty()) {
            xml += "      <system-out>" + XmlEscape(JoinLines(r.notes)) + "</system-out>\n";
        }
        xml += "    </testcase>\n";
    }
    return xml + "  </testsuite>\n</testsuites>\n";
}

} // namespace sim
