// The departure of a PC run from a device's log (see log_replay.h).
#include "log_replay.h"

#include <deque>
#include <map>
#include <set>

#include <cjson/cJSON.h>

#include "log_scenario.h"
#include "names.h"

namespace sim {

namespace {

struct PcMessage {
    long long command = 0;
    std::string body, masked;
    int line = 0; // the scenario line that caused it
};

std::vector<PcMessage> PcMessages(const std::vector<std::string> &json_lines) {
    std::vector<PcMessage> out;
    for (const std::string &text : json_lines) {
        cJSON *o = cJSON_Parse(text.c_str());
        const cJSON *kind = cJSON_GetObjectItemCaseSensitive(o, "kind");
        const cJSON *command = cJSON_GetObjectItemCaseSensitive(o, "command");
        const cJSON *body = cJSON_GetObjectItemCaseSensitive(o, "body");
        const cJSON *line = cJSON_GetObjectItemCaseSensitive(o, "line");
        if (cJSON_IsString(kind) && std::string(kind->valuestring) == "to_platform" &&
            cJSON_IsNumber(command)) {
            PcMessage m;
            m.command = static_cast<long long>(command->valuedouble);
            m.body = cJSON_IsString(body) ? body->valuestring : "";
            m.masked = MaskClocks(m.body);
            m.line = cJSON_IsNumber(line) ? line->valueint : 0;
            out.push_back(m);
        }
        cJSON_Delete(o);
    }
    return out;
}

std::string Indented(const std::string &body) {
    std::string out = "    ";
    for (char c : body) {
        out += c;
        if (c == '\n') {
            out += "    ";
        }
    }
    return out + "\n";
}

// The PC run's messages looked up by command: the answers of each command in order (the
// replay answers the same commands in the same order), and the command and body of every
// message (how often an unchanged value is reported again depends on when the service
// polled, so a report is matched by any one alike).
class PcIndex {
  public:
    explicit PcIndex(const std::vector<PcMessage> &pc) {
        for (size_t i = 0; i < pc.size(); i++) {
            answers_[pc[i].command].push_back(i);
            bodies_.insert({pc[i].command, pc[i].masked});
        }
    }
    // The next answer of a command, or -1.
    long NextAnswer(uint32_t command) {
        std::deque<size_t> &queue = answers_[command];
        if (queue.empty()) {
            return -1;
        }
        size_t i = queue.front();
        queue.pop_front();
        return static_cast<long>(i);
    }
    // Whether a message of the command with this body was sent (any body: nullptr).
    bool Sent(uint32_t command, const std::string *masked) const {
        auto it = bodies_.lower_bound({command, masked != nullptr ? *masked : ""});
        return it != bodies_.end() && it->first == command && (masked == nullptr || it->second == *masked);
    }

  private:
    std::map<long long, std::deque<size_t>> answers_;
    std::set<std::pair<long long, std::string>> bodies_;
};

// The PC message of a command closest to a body (the longest common start), for showing
// beside a report that has no counterpart; null when the run sent none of the command.
const PcMessage *Closest(const std::vector<PcMessage> &pc, uint32_t command, const std::string &masked) {
    const PcMessage *best = nullptr;
    size_t best_len = 0;
    for (const PcMessage &m : pc) {
        size_t n = 0;
        while (n < m.masked.size() && n < masked.size() && m.masked[n] == masked[n]) {
            n++;
        }
        if (m.command == command && (best == nullptr || n > best_len)) {
            best = &m;
            best_len = n;
        }
    }
    return best;
}

// Whether the PC run sent a device message alike; if not, *shown is the PC message to show
// beside it (null: none of its command).
bool Alike(const std::vector<PcMessage> &pc, PcIndex &index, const LogEntry &e, const std::string &masked,
           const PcMessage **shown) {
    if (AnswerCommand(e.command)) {
        long i = index.NextAnswer(e.command);
        *shown = i >= 0 ? &pc[static_cast<size_t>(i)] : Closest(pc, e.command, masked);
        return i >= 0 && (!e.has_body || pc[static_cast<size_t>(i)].masked == masked);
    }
    if (index.Sent(e.command, e.has_body ? &masked : nullptr)) {
        return true;
    }
    *shown = Closest(pc, e.command, masked);
    return false;
}

std::string DepartureText(const LogEntry &e, const std::string &log_name, const PcMessage *pc) {
    std::string out = "departure: the PC run departs from the device at " + log_name + ":" +
                      std::to_string(e.line) + "\n  the device sent " + kCommands.Describe(e.command) + " (" +
                      log_name + ":" + std::to_string(e.line) + "):\n" +
                      (e.has_body ? Indented(e.body) : "    (its document is not in the log)\n");
    if (pc == nullptr) {
        return out + "  the PC run sent no such message\n";
    }
    return out + "  the PC run sent (scenario line " + std::to_string(pc->line) + "):\n" + Indented(pc->body);
}

} // namespace

Departure FindDeparture(const DeviceLog &log, const std::string &log_name,
                        const std::vector<std::string> &json_lines) {
    Departure d;
    std::vector<PcMessage> pc = PcMessages(json_lines);
    PcIndex index(pc);
    std::vector<bool> replayed = ReplayedMessages(log);
    for (size_t i = 0; i < log.entries.size(); i++) {
        const LogEntry &e = log.entries[i];
        if (!replayed[i]) {
            continue;
        }
        d.compared++;
        std::string masked = MaskClocks(e.body);
        const PcMessage *shown = nullptr;
        if (!Alike(pc, index, e, masked, &shown)) {
            d.found = true;
            d.text = DepartureText(e, log_name, shown);
            return d;
        }
    }
    d.text = "special-sim: the PC run sent every answer and report of " + log_name + " alike (" +
             std::to_string(d.compared) + " compared)\n";
    return d;
}

} // namespace sim
