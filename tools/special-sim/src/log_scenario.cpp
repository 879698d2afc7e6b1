// Writing a device log as a scenario and its expectations (see log_scenario.h).
#include "log_scenario.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <map>

#include "consts.h"
#include "names.h"
#include "record.h"
#include "scenario.h"
#include "scenario_words.h"

namespace sim {

namespace {

// The status reports the report-status service sends; any other message the module
// sends that is not an answer is a request the application made.
const uint32_t kStatusReports[] = {
    kPu2CenPltReportDevSwitchEnableReq,  kPu2CenPltReportPowerStatusReq, kPu2CenPltReportDevicePlanReq,
    kPu2CenPltReportFlowCountConfigFReq, kPu2CenPltReportKeyValueReq,    kPu2CenPltReportPortInfoReq,
    kPu2CenPltReportTrusteeshipReq,      kPu2CenPltReportConnStatusReq,
};

enum class Role { Answer, Report, OwnRequest };

Role RoleOf(uint32_t command) {
    if (AnswerCommand(command)) {
        return Role::Answer;
    }
    bool report =
        std::find(std::begin(kStatusReports), std::end(kStatusReports), command) != std::end(kStatusReports);
    return report ? Role::Report : Role::OwnRequest;
}

bool Replayable(LogBody state) {
    return state == LogBody::Logged || state == LogBody::Dropped;
}

bool LeftOut(LogBody state) {
    return state == LogBody::Missing || state == LogBody::Cut || state == LogBody::Unparsed;
}

// The ranges of the clock texts in a body: runs of exactly twelve digits.
std::vector<std::pair<size_t, size_t>> ClockRuns(const std::string &body) {
    std::vector<std::pair<size_t, size_t>> runs;
    size_t i = 0;
    while (i < body.size()) {
        size_t j = i;
        while (j < body.size() && body[j] >= '0' && body[j] <= '9') {
            j++;
        }
        if (j - i == 12) {
            runs.push_back({i, j});
        }
        i = j > i ? j : i + 1;
    }
    return runs;
}

// A command as the scenario names it.
std::string CommandWord(uint32_t command) {
    const char *name = kCommands.Name(command);
    return name[0] != '\0' ? name : std::to_string(command);
}

// Whether a line of a <<TERM body would end it (the parser compares trimmed lines).
bool EndsBody(const std::string &body, const std::string &term) {
    std::vector<std::string> lines = SplitLines(body);
    return std::any_of(lines.begin(), lines.end(), [&](const std::string &l) { return Trim(l) == term; });
}

// The rest of a send line: the body inline when it reads back as it is (one line, no
// blanks around it, not taken for "seq" or "<<"), else as <<END.
std::string BodyText(const std::string &body) {
    bool inline_ok = body.find_first_of("\n\r") == std::string::npos && Trim(body) == body &&
                     body.compare(0, 2, "<<") != 0 && body.compare(0, 3, "seq") != 0;
    if (inline_ok) {
        return body.empty() ? "" : " " + body;
    }
    std::string term = "END";
    for (int n = 1; EndsBody(body, term); n++) {
        term = "END" + std::to_string(n);
    }
    return " <<" + term + "\n" + body + "\n" + term;
}

// A serial the scenario can carry as one word.
bool PlainSerial(const std::string &serial) {
    return !serial.empty() && serial.size() <= 64 && std::all_of(serial.begin(), serial.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_' || c == '.';
    });
}

// The expectation of one message: command, response flag and its body in pieces cut at
// line ends and clock texts.
std::string Expectation(const LogEntry &e) {
    std::string out = "to_platform command=" + std::to_string(e.command);
    out += RoleOf(e.command) == Role::Answer ? " response=1" : " response=0";
    if (!e.has_body) {
        return out;
    }
    if (e.body.empty()) {
        return out + " format=empty";
    }
    std::string masked = MaskClocks(e.body);
    size_t start = 0;
    while (start <= masked.size()) {
        size_t end = std::min(masked.find('\n', start), masked.find("<clock>", start));
        end = end == std::string::npos ? masked.size() : end;
        if (end > start) {
            out += " " + QuoteWord("body~" + masked.substr(start, end - start));
        }
        start = end + (masked.compare(end, 7, "<clock>") == 0 ? 7 : 1);
    }
    return out;
}

class Writer {
  public:
    Writer(const std::string &log_name, bool keep_timing) : log_name_(log_name), keep_timing_(keep_timing) {}

    void Entry(const LogEntry &e) {
        if (e.kind == LogEntry::Kind::Sent) {
            reports_pending_ = reports_pending_ || RoleOf(e.command) == Role::Report;
        } else if (e.kind == LogEntry::Kind::Event) {
            std::string name = kEvents.Name(e.command);
            Step(e, "event " + (name.empty() ? std::to_string(e.command) : name));
        } else if (LeftOut(e.body_state)) {
            conv_.left_out.push_back(std::to_string(e.line) + ": " + kCommands.Describe(e.command) + ": " +
                                     LogBodyProblem(e.body_state));
        } else {
            Received(e);
        }
    }

    LogConversion Finish(const DeviceLog &log) {
        FlushReports();
        std::string head = "# Converted by special-sim --from-log from " + log_name_ + ": " +
                           std::to_string(conv_.replayable) + " command(s) to replay, " +
                           std::to_string(conv_.left_out.size()) + " left out.\n";
        if (by_id_) {
            head += "# The module does not log the body of a command it passes to the application raw:\n"
                    "# such commands are sent by identifier, with an empty body.\n";
        }
        for (const std::string &why : conv_.left_out) {
            head += "# " + log_name_ + ":" + why + "\n";
        }
        if (PlainSerial(log.serial)) {
            head += "serial " + log.serial + "\n";
        }
        conv_.scenario = head + steps_;
        return conv_;
    }

  private:
    void Received(const LogEntry &e) {
        bool dropped = e.body_state == LogBody::Dropped;
        if (dropped != asleep_) {
            FlushReports();
            steps_ += dropped ? "sleep on\n" : "sleep off\n";
            asleep_ = dropped;
        }
        by_id_ = by_id_ || e.body_state == LogBody::ById;
        conv_.replayable += Replayable(e.body_state) ? 1 : 0;
        std::string seq = e.has_seq ? " seq " + std::to_string(e.seq) : "";
        Step(e, "send " + CommandWord(e.command) + seq + BodyText(e.body));
    }

    // A step, after the polls that sent the reports the log shows before it and the
    // wait for the gap since the last step.
    void Step(const LogEntry &e, const std::string &text) {
        FlushReports();
        if (keep_timing_ && e.time >= 0 && last_time_ >= 0 && e.time > last_time_) {
            long ms = std::lround((e.time - last_time_) * 1000);
            if (ms > 60000) {
                steps_ += "# a gap of " + std::to_string(ms / 1000) + " s, shortened\n";
                ms = 60000;
            }
            steps_ += ms > 0 ? "wait " + std::to_string(ms) + "\n" : "";
        }
        last_time_ = e.time >= 0 ? e.time : last_time_;
        steps_ += text + "\n";
    }

    // The device's report-status service ran here: two polls, one for the forced
    // reports and one for the values found changed.
    void FlushReports() {
        if (reports_pending_) {
            steps_ += "poll 2\n";
            reports_pending_ = false;
        }
    }

    std::string log_name_;
    bool keep_timing_;
    LogConversion conv_;
    std::string steps_;
    bool reports_pending_ = false, asleep_ = false, by_id_ = false;
    double last_time_ = -1;
};

} // namespace

// Answers to platform commands are the platform-to-device commands' "Rsp" halves.
bool AnswerCommand(uint32_t command) {
    std::string name = kCommands.Name(command);
    return name.compare(0, 10, "kCenPlt2Pu") == 0 && name.size() > 3 &&
           name.compare(name.size() - 3, 3, "Rsp") == 0;
}

std::string MaskClocks(const std::string &body) {
    std::string out = body;
    std::vector<std::pair<size_t, size_t>> runs = ClockRuns(body);
    for (auto it = runs.rbegin(); it != runs.rend(); ++it) {
        out.replace(it->first, it->second - it->first, "<clock>");
    }
    return out;
}

std::vector<bool> ReplayedMessages(const DeviceLog &log) {
    std::vector<bool> replayed(log.entries.size(), false);
    std::map<uint32_t, int> unanswered; // answer command -> commands left out that wait for it
    for (size_t i = 0; i < log.entries.size(); i++) {
        const LogEntry &e = log.entries[i];
        if (e.kind == LogEntry::Kind::Received && LeftOut(e.body_state)) {
            unanswered[e.command + 1]++; // the platform numbers an answer after its request
        }
        if (e.kind != LogEntry::Kind::Sent) {
            continue;
        }
        Role role = RoleOf(e.command);
        auto it = unanswered.find(e.command);
        if (role == Role::Answer && it != unanswered.end() && it->second > 0) {
            it->second--;
            continue;
        }
        replayed[i] = role != Role::OwnRequest;
    }
    return replayed;
}

LogConversion ConvertLog(const DeviceLog &log, const std::string &log_name, bool keep_timing) {
    Writer w(log_name, keep_timing);
    for (const LogEntry &e : log.entries) {
        w.Entry(e);
    }
    LogConversion conv = w.Finish(log);
    std::vector<bool> replayed = ReplayedMessages(log);
    conv.expectations = "# Converted by special-sim --from-log from " + log_name +
                        ": every answer and report the device sent,\n"
                        "# matched without sequence numbers and clock texts.\n";
    for (size_t i = 0; i < log.entries.size(); i++) {
        const LogEntry &e = log.entries[i];
        if (e.kind != LogEntry::Kind::Sent) {
            continue;
        }
        std::string where = "# " + log_name + ":" + std::to_string(e.line);
        if (replayed[i]) {
            conv.expectations += where + "\n" + Expectation(e) + "\n";
        } else {
            conv.expectations += where + ": not replayed (" +
                                 (RoleOf(e.command) == Role::Answer ? "the answer to a command left out"
                                                                    : "the application's own request") +
                                 "): " + Expectation(e) + "\n";
        }
    }
    return conv;
}

} // namespace sim
