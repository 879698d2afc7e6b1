// The qualification's rows from the suite's files and the status item table (see
// qualify_rows.h).
#include "qualify_rows.h"

#include <dirent.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "names.h"
#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_def.h"
#include "noltDevSDK_special_protocol.h"
#include "scenario.h"

namespace sim {

namespace {

// The 22 status items: the report the module forces, the get_runtime_info type it
// reads the value from, and how its report shows on the wire.
struct StatusItem {
    int report;        // the report-status id
    int runtime_type;  // what the application is asked to change
    int command;       // the report's platform command
    const char *label; // the row's name after the command
    const char *body;  // what the report's body holds
};

const StatusItem kStatusItems[] = {
    {NOLTDEVSDK_ReportSpecialSwitchEnableFlow, NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE,
     kPu2CenPltReportDevSwitchEnableReq, "switch 15", "Type=\"15\""},
    {NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm, NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE,
     kPu2CenPltReportDevSwitchEnableReq, "switch 613", "Type=\"613\""},
    {NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg, NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE,
     kPu2CenPltReportDevSwitchEnableReq, "switch 614", "Type=\"614\""},
    {NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator, NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE,
     kPu2CenPltReportDevSwitchEnableReq, "switch 611", "Type=\"611\""},
    {NOLTDEVSDK_ReportSpecialDistortionCorrection, NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE,
     kPu2CenPltReportDevSwitchEnableReq, "switch 617", "Type=\"617\""},
    {NOLTDEVSDK_ReportFlowCountConfig, NOLTDEVSDK_SPECIAL_ON_GET_FLOW_COUNTING_CFG,
     kPu2CenPltReportFlowCountConfigFReq, "FlowCountConfig", "FlowCountConfig"},
    {NOLTDEVSDK_ReportSpecialKeyValue, NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE, kPu2CenPltReportKeyValueReq,
     "ICR", "Type=\"ICR\""},
    {NOLTDEVSDK_ReportBatteryWorkStatus, NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS,
     kPu2CenPltReportKeyValueReq, "Battery_WorkStatus", "Type=\"Battery_WorkStatus\""},
    {NOLTDEVSDK_ReportCustomVoice, NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS, kPu2CenPltReportKeyValueReq,
     "CustomVoice", "Type=\"CustomVoice\""},
    {NOLTDEVSDK_ReportLinkageModeStatus, NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS,
     kPu2CenPltReportKeyValueReq, "Route_LinkageStatus", "Type=\"Route_LinkageStatus\""},
    {NOLTDEVSDK_ReportAssociatedDeviceConnStatus, NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS,
     kPu2CenPltReportKeyValueReq, "DB_Chime_ConnInfo", "Type=\"DB_Chime_ConnInfo\""},
    {NOLTDEVSDK_ReportBatteryWorkMode, NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE,
     kPu2CenPltReportKeyValueReq, "batteryCameraWorkMode", "Type=\"batteryCameraWorkMode\""},
    {NOLTDEVSDK_ReportSpecialRingType, NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, kPu2CenPltReportKeyValueReq,
     "device_bell", "Type=\"device_bell\""},
    {NOLTDEVSDK_ReportBatteryNetWorkMode, NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE,
     kPu2CenPltReportKeyValueReq, "networkingMode", "Type=\"networkingMode\""},
    {NOLTDEVSDK_ReportOneClickMute, NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE,
     kPu2CenPltReportKeyValueReq, "OneClickMute", "Type=\"OneClickMute\""},
    {NOLTDEVSDK_ReportSpeakerConfig, NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG,
     kPu2CenPltReportKeyValueReq, "SpeakerConfig", "Type=\"SpeakerConfig\""},
    {NOLTDEVSDK_Report4GInfo, NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO, kPu2CenPltReportKeyValueReq, "4G_Info",
     "Type=\"4G_Info\""},
    {NOLTDEVSDK_ReportBatteryWorkModePlan, NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN,
     kPu2CenPltReportDevicePlanReq, "DevicePlan", "DevicePlan"},
    {NOLTDEVSDK_ReportPowerStatus, NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS, kPu2CenPltReportPowerStatusReq,
     "PowerStatus", "PowerStatus"},
    {NOLTDEVSDK_ReportTrusteeship, NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, kPu2CenPltReportTrusteeshipReq,
     "Trusteeship", "operateType"},
    {NOLTDEVSDK_ReportTrusteeshipConnect, NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT,
     kPu2CenPltReportConnStatusReq, "TrusteeshipConnect", "devseral"},
    {NOLTDEVSDK_ReportVoddnsMappedPort, NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT,
     kPu2CenPltReportPortInfoReq, "PortMap", "PortMap"},
};

const char kRowTag[] = "# row: ";
const char kTemplateTag[] = "# row template: status";
const char kNeedsTag[] = "# needs: ";

bool Slurp(const std::string &path, std::string *text) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream buf;
    buf << in.rdbuf();
    *text = buf.str();
    return static_cast<bool>(in);
}

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

bool StartsWith(const std::string &text, const std::string &prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::string Join(const std::vector<std::string> &lines) {
    std::string out;
    for (const std::string &l : lines) {
        out += l + "\n";
    }
    return out;
}

// A file cut into sections: the prologue (before the first marker) and each row's lines.
struct Sections {
    std::vector<std::string> lines;
    std::vector<std::pair<std::string, size_t>> starts; // row name, its marker's index
    // The file's text keeping the prologue and section i only (others blanked, so that
    // line numbers stay the file's).
    std::string Keep(size_t i) const {
        std::vector<std::string> out = lines;
        size_t first = starts.empty() ? lines.size() : starts[0].second;
        for (size_t n = first; n < lines.size(); n++) {
            size_t begin = starts[i].second;
            size_t end = i + 1 < starts.size() ? starts[i + 1].second : lines.size();
            if (n < begin || n >= end) {
                out[n].clear();
            }
        }
        return Join(out);
    }
    // A section's own lines (prologue included), or every line when there are no markers.
    std::string Named(const std::string &name) const {
        for (size_t i = 0; i < starts.size(); i++) {
            if (starts[i].first == name) {
                return Keep(i);
            }
        }
        return starts.empty() ? Join(lines) : "";
    }
};

Sections Cut(const std::string &text, const std::string &tag) {
    Sections s;
    s.lines = SplitLines(text);
    for (size_t i = 0; i < s.lines.size(); i++) {
        if (StartsWith(s.lines[i], tag)) {
            s.starts.push_back({s.lines[i].substr(tag.size()), i});
        }
    }
    return s;
}

std::string KindOf(const std::string &name) {
    return name.substr(0, name.find(' '));
}

std::string Capability(const std::string &text, const std::string &fallback) {
    const std::string tag = "# capability:";
    if (!StartsWith(text, tag)) {
        return fallback;
    }
    size_t end = text.find('\n');
    size_t start = text.find_first_not_of(' ', tag.size());
    return text.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

RowPlan MakeRow(const std::string &name, const std::string &file, const std::string &scenario,
                const std::string &expect_file, const std::string &expect) {
    RowPlan row{name, KindOf(name), file, scenario, expect_file, expect, {}, {}};
    row.needs = RowNeeds(scenario, expect);
    return row;
}

// The value of a "key=value" word among an expectation line's words, or "".
std::string Condition(const std::vector<std::string> &words, const std::string &key) {
    for (const std::string &w : words) {
        if (StartsWith(w, key + "=")) {
            return w.substr(key.size() + 1);
        }
    }
    return "";
}

// A callback and its type (by name, or by number) as something a row needs, once.
void AddNeed(const std::string &callback, const std::string &name, const std::string &number,
             std::vector<std::pair<std::string, int>> *needs) {
    if (callback != "recv_msg" && callback != "get_runtime_info") {
        return;
    }
    const NameTable &names = callback == "recv_msg" ? kMsgTypes : kRuntimeTypes;
    long long type = 0;
    if (!names.Lookup(name, &type) && !ParseInteger(number, &type)) {
        return;
    }
    std::pair<std::string, int> need(callback, static_cast<int>(type));
    if (std::find(needs->begin(), needs->end(), need) == needs->end()) {
        needs->push_back(need);
    }
}

// A command's failure path: the same steps with the application asked first to answer
// its message -1; the module still answers the platform with the same sequence number.
bool FailureRow(const RowPlan &command, RowPlan *out) {
    std::string type, answer;
    for (const std::string &line : SplitLines(command.expect)) {
        std::vector<std::string> words;
        if (!SplitWords(line, &words) || words.empty()) {
            continue;
        }
        long long value = 0;
        std::string name = Condition(words, "name");
        if (words[0] == "recv_msg" && type.empty() && kMsgTypes.Lookup(name, &value)) {
            type = std::to_string(value);
        } else if (words[0] == "to_platform" && answer.empty() && !Condition(words, "seq").empty()) {
            answer = "to_platform name=" + name + " seq=" + Condition(words, "seq");
        }
    }
    if (type.empty() || answer.empty()) {
        return false;
    }
    std::string scenario = command.scenario;
    size_t marker = scenario.find(kRowTag);
    size_t eol = scenario.find('\n', marker);
    scenario.replace(marker, eol - marker, "app answer recv_msg " + type + " -1");
    *out = MakeRow("failure " + command.name.substr(command.name.find(' ') + 1), command.file, scenario,
                   command.expect_file + " (its failure path)",
                   "recv_msg type=" + type + " result=-1\n" + answer + "\n");
    return true;
}

// The status items over the template section: its {report} and {type} filled in.
void StatusRows(const std::string &file, const std::string &text, std::vector<RowPlan> *rows) {
    for (const StatusItem &item : kStatusItems) {
        std::string scenario = text;
        for (const auto &fill : {std::make_pair(std::string("{report}"), std::to_string(item.report)),
                                 std::make_pair(std::string("{type}"), std::to_string(item.runtime_type))}) {
            for (size_t at = scenario.find(fill.first); at != std::string::npos;
                 at = scenario.find(fill.first)) {
                scenario.replace(at, fill.first.size(), fill.second);
            }
        }
        std::string command = std::to_string(item.command);
        std::string expect = "to_platform command=" + command + " body~" + item.body + "\n";
        rows->push_back(
            MakeRow("status " + command + " " + item.label, file, scenario, "the status item table", expect));
        rows->back().needs.push_back({"get_runtime_info", item.runtime_type});
    }
}

void FileRows(const std::string &dir, const std::string &file, std::vector<RowPlan> *rows,
              std::vector<std::string> *problems) {
    std::string text, expect_text;
    Slurp(dir + "/" + file, &text);
    std::string base = file.substr(0, file.size() - 4);
    Slurp(dir + "/" + base + ".expect", &expect_text);
    if (text.find(kTemplateTag) != std::string::npos) {
        StatusRows(file, text, rows);
        return;
    }
    Sections scn = Cut(text, kRowTag);
    Sections expect = Cut(expect_text, kRowTag);
    if (scn.starts.empty()) {
        rows->push_back(MakeRow(Capability(text, file), file, text, base + ".expect", expect_text));
        return;
    }
    for (size_t i = 0; i < scn.starts.size(); i++) {
        const std::string &name = scn.starts[i].first;
        std::string mine = expect.Named(name);
        if (mine.empty()) {
            problems->push_back(base + ".expect: no section '# row: " + name + "'");
        }
        rows->push_back(MakeRow(name, file, scn.Keep(i), base + ".expect", mine));
        RowPlan failure;
        if (rows->back().kind == "command" && FailureRow(rows->back(), &failure)) {
            rows->push_back(failure);
        }
    }
}

} // namespace

std::vector<std::pair<std::string, int>> RowNeeds(const std::string &scenario, const std::string &expect) {
    std::vector<std::pair<std::string, int>> needs;
    for (const std::string &line : SplitLines(expect)) {
        std::vector<std::string> words;
        if (SplitWords(line, &words) && !words.empty()) {
            AddNeed(words[0], Condition(words, "name"), Condition(words, "type"), &needs);
        }
    }
    for (const std::string &line : SplitLines(scenario)) {
        std::vector<std::string> words;
        if (StartsWith(line, kNeedsTag) && SplitWords(line.substr(sizeof kNeedsTag - 1), &words) &&
            words.size() == 2) {
            AddNeed(words[0], words[1], "", &needs);
        }
    }
    return needs;
}

std::vector<RowPlan> SuiteRows(const std::string &dir, std::vector<std::string> *problems) {
    std::vector<RowPlan> rows;
    for (const std::string &file : SuiteFiles(dir)) {
        FileRows(dir, file, &rows, problems);
    }
    return rows;
}

const char kConcurrencyKind[] = "concurrency";

std::vector<std::string> ConcurrencyKinds(const std::vector<RowPlan> &rows) {
    std::vector<std::string> kinds;
    for (const RowPlan &row : rows) {
        if (row.kind != "failure" && std::find(kinds.begin(), kinds.end(), row.kind) == kinds.end()) {
            kinds.push_back(row.kind);
        }
    }
    return kinds;
}

RowPlan ConcurrencyRow(const std::string &kind) {
    return RowPlan{std::string(kConcurrencyKind) + " " + kind, kConcurrencyKind, "", "", "", "", {}, {}};
}

void SetMembers(RowPlan *row, const std::vector<RowPlan> &members, int ms) {
    row->members = members;
    row->file = members.empty() ? "" : members[0].file;
    row->scenario = "repeat " + std::to_string(ms) + "\n";
    row->needs.clear();
    for (const RowPlan &m : members) {
        for (const auto &need : m.needs) {
            if (std::find(row->needs.begin(), row->needs.end(), need) == row->needs.end()) {
                row->needs.push_back(need);
            }
        }
    }
}

bool RowSelected(const RowPlan &row, const std::string &list) {
    std::stringstream in(list);
    std::string item;
    while (std::getline(in, item, ',')) {
        if (item == row.name || item == row.kind) {
            return true;
        }
    }
    return false;
}

} // namespace sim
