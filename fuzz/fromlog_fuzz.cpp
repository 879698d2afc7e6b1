// Fuzzes special-sim's device log reader: any bytes as a log, read, written as a scenario
// and expectations, and compared with an empty PC run. The scenario it writes must be one
// the simulator reads without a mistake, and its expectations well-formed. The first byte
// may ask for the input blown up: into one line of a megabyte, or repeated behind
// thousands of commands and messages whose lines interleave.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "expect.h"
#include "log_reader.h"
#include "log_replay.h"
#include "log_scenario.h"
#include "scenario.h"

namespace {

void Check(const std::string &text) {
    sim::DeviceLog log = sim::ReadDeviceLog(text);
    sim::LogConversion conv = sim::ConvertLog(log, "fuzz.log", true);
    sim::Scenario scenario = sim::ParseScenario(conv.scenario, "fuzz.scn");
    if (!scenario.errors.empty()) {
        std::abort(); // the converter wrote a scenario the simulator refuses
    }
    for (const std::string &problem : sim::CheckExpectations({}, conv.expectations, "fuzz.expect")) {
        if (problem.find("nothing matches") == std::string::npos) {
            std::abort(); // an expectation line the checker cannot read
        }
    }
    sim::FindDeparture(log, "fuzz.log", {});
}

// The input without its line ends, repeated to a megabyte.
std::string MegabyteLine(const std::string &text) {
    std::string line;
    for (char c : text) {
        line += c == '\n' ? ' ' : c;
    }
    std::string out = "R:498d\nxml: ";
    while (!line.empty() && out.size() < (1u << 20)) {
        out += line;
    }
    return out + "\n";
}

// 4000 commands and messages from as many threads, their lines interleaved, the input
// among them.
std::string Interleaved(const std::string &text) {
    std::string heads, bodies;
    for (int i = 0; i < 4000; i++) {
        heads +=
            i % 2 ? "[tid " + std::to_string(i) + "] s:498e\n" : "[tid " + std::to_string(i) + "] R:498d\n";
        bodies += i % 2 ? "\n<Response><Result>" + std::to_string(i) + "</Result></Response>\n"
                        : "xml: <Request><Type>x</Type><UserDefine MsgSeq=\"" + std::to_string(i) +
                              "\"/></Request>\n";
    }
    return heads + text + bodies;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string text(reinterpret_cast<const char *>(data), size);
    Check(text);
    if (size > 0 && data[0] == 'M') {
        Check(MegabyteLine(text));
    } else if (size > 0 && data[0] == 'T') {
        Check(Interleaved(text));
    }
    return 0;
}
