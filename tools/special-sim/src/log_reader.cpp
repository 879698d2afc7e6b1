// The device log reader (see log_reader.h). One pass over the lines, no regular
// expressions: a megabyte line costs one scan.
#include "log_reader.h"

#include <cctype>
#include <cstdlib>
#include <deque>

#include "consts.h"
#include "log_prefix.h"
#include "scenario.h"

namespace sim {

namespace {

// How the module logs the body of a command it receives: the framed commands print their
// request document after "xml: ", the unbind answer prints its body as it came, the
// verification-code receipt is ignored, and any other command goes to the application
// without its body in the log.
enum class BodyLine { Frame, AsItCame, Ignored, Raw };

struct RoutedCommand {
    uint32_t command;
    BodyLine body;
};

const RoutedCommand kRouted[] = {
    {kCenPlt2PuSetSwitchEnableReq, BodyLine::Frame},
    {kCenPlt2PuSetDevPlanReq, BodyLine::Frame},
    {kCenPlt2PuSetFollowCountInfoReq, BodyLine::Frame},
    {kCenPlt2PuSetKeyValueReq, BodyLine::Frame},
    {kCenPlt2PuSetCustomVoiceReq, BodyLine::Frame},
    {kCenPlt2PuWakeReq, BodyLine::Frame},
    {kCenPlt2PuSetDelaySleepReq, BodyLine::Frame},
    {kCenPlt2PuProwlDriveOutReq, BodyLine::Frame},
    {kCenPlt2PuSetLinkageModeStatusReq, BodyLine::Frame},
    {kPu2CenPltQueryDevInfoByDomainRsp, BodyLine::Frame},
    {kPu2CenPltUnBindUserRsp, BodyLine::AsItCame},
    {kPu2CenPltSendVerificationCodeRsp, BodyLine::Ignored},
};

BodyLine BodyLineOf(uint32_t command) {
    for (const RoutedCommand &r : kRouted) {
        if (r.command == command) {
            return r.body;
        }
    }
    return BodyLine::Raw;
}

// The hexadecimal command of a "R:490b" / "s:490c" line: the marker is the last one on the
// line, stands at its start or after a non-letter, and only hex digits follow it.
bool CommandLine(const std::string &text, const char *marker, uint32_t *command) {
    size_t at = text.rfind(marker);
    if (at == std::string::npos || (at > 0 && std::isalnum(static_cast<unsigned char>(text[at - 1])))) {
        return false;
    }
    size_t begin = at + 2, end = text.size();
    while (end > begin && (text[end - 1] == ' ' || text[end - 1] == '\t')) {
        end--;
    }
    if (end == begin || end - begin > 8) {
        return false;
    }
    for (size_t i = begin; i < end; i++) {
        if (!std::isxdigit(static_cast<unsigned char>(text[i]))) {
            return false;
        }
    }
    *command = static_cast<uint32_t>(std::strtoul(text.substr(begin, end - begin).c_str(), nullptr, 16));
    return true;
}

// Where the request document starts on an "xml: " line, or npos: the marker stands first
// on the line or after a separator, and a document (or nothing) follows it.
size_t RequestAt(const std::string &line) {
    size_t at = line.find("xml: ");
    if (at == std::string::npos) {
        return at;
    }
    bool separated = at == 0 || std::string(" ]|>:").find(line[at - 1]) != std::string::npos;
    size_t doc = at + 5;
    bool document = doc == line.size() || std::string("<{[").find(line[doc]) != std::string::npos;
    return separated && document ? doc : std::string::npos;
}

// Decides when a document that may span lines is whole: an XML root element closed, a
// JSON value's brackets balanced, or any other text at the end of its first line.
class DocScanner {
  public:
    // Feeds one more line of the document; whether it is whole now.
    bool Feed(const std::string &line) {
        if (kind_ == 0) {
            size_t first = line.find_first_not_of(" \t");
            kind_ = first == std::string::npos
                        ? 't'
                        : (line[first] == '<' ? 'x' : (line[first] == '{' || line[first] == '[' ? 'j' : 't'));
        }
        if (kind_ == 't') {
            return true;
        }
        for (char c : line) {
            if (kind_ == 'x' ? Xml(c) : Json(c)) {
                return true;
            }
        }
        return false;
    }

  private:
    bool Json(char c) {
        if (quote_ != 0) {
            bool escaped = escape_;
            escape_ = !escaped && c == '\\';
            quote_ = !escaped && c == '"' ? '\0' : quote_;
            return false;
        }
        quote_ = c == '"' ? '"' : '\0';
        depth_ += (c == '{' || c == '[') ? 1 : ((c == '}' || c == ']') ? -1 : 0);
        return (c == '}' || c == ']') && depth_ <= 0;
    }
    bool Xml(char c) {
        if (quote_ != 0) {
            quote_ = c == quote_ ? '\0' : quote_;
            return false;
        }
        if (!in_tag_) {
            in_tag_ = c == '<';
            tag_start_ = in_tag_;
            return false;
        }
        if (tag_start_) {
            tag_ = c; // '/' closing, '?' or '!' a declaration, else an opening tag
            tag_start_ = false;
        } else if (c == '"' || c == '\'') {
            quote_ = c;
        } else if (c == '>') {
            return TagEnd();
        }
        prev_ = c;
        return false;
    }
    // The end of a tag; whether the root element ended with it.
    bool TagEnd() {
        in_tag_ = false;
        bool element = tag_ != '?' && tag_ != '!'; // not a declaration or a comment
        bool closes = tag_ == '/' || (element && prev_ == '/');
        depth_ += closes ? (tag_ == '/' ? -1 : 0) : (element ? 1 : 0);
        prev_ = '>';
        return closes && depth_ <= 0;
    }

    char kind_ = 0;
    long depth_ = 0;
    char quote_ = 0;
    bool escape_ = false, in_tag_ = false, tag_start_ = false;
    char tag_ = 0, prev_ = 0;
};

// Takes the frame's sequence stamp (<UserDefine MsgSeq="N"/>, the last one) out of a
// logged request document: the replay stamps it again.
void TakeSeqStamp(LogEntry *e) {
    static const char kOpen[] = "<UserDefine MsgSeq=\"";
    size_t at = e->body.rfind(kOpen);
    if (at == std::string::npos) {
        return;
    }
    size_t num = at + sizeof kOpen - 1;
    size_t quote = e->body.find('"', num);
    if (quote == std::string::npos) {
        return;
    }
    const std::string tails[] = {"\"/>", "\"></UserDefine>", "\" />"};
    for (const std::string &tail : tails) {
        if (e->body.compare(quote, tail.size(), tail) == 0) {
            char *end = nullptr;
            std::string digits = e->body.substr(num, quote - num);
            long long v = std::strtoll(digits.c_str(), &end, 10); // "%d": above 0x7FFFFFFF it is negative
            if (digits.empty() || *end != '\0') {
                return;
            }
            e->has_seq = true;
            e->seq = static_cast<uint32_t>(v);
            e->body.erase(at, quote + tail.size() - at);
            return;
        }
    }
}

// The device serial in a sent document, "" when it names none.
std::string SerialOf(const std::string &body) {
    size_t at = body.find("<DevSerial>");
    size_t end = at == std::string::npos ? at : body.find("</DevSerial>", at);
    return end == std::string::npos ? "" : body.substr(at + 11, end - at - 11);
}

class Reader {
  public:
    DeviceLog Read(const std::string &text) {
        size_t start = 0;
        int number = 0;
        while (start < text.size()) {
            size_t nl = text.find('\n', start);
            size_t end = nl == std::string::npos ? text.size() : nl;
            size_t len = end > start && text[end - 1] == '\r' ? end - start - 1 : end - start;
            double time = -1;
            std::string line = StripLogPrefix(text.substr(start, len), &time);
            number++;
            // syslog writes the line ends and tabs inside one message as #012 and #011
            for (const std::string &part : SplitLines(SyslogUnescaped(line))) {
                Line(part, number, time);
            }
            start = end + 1;
        }
        EndCollect(false);
        return log_;
    }

  private:
    enum class Marker { None, Received, Sent, Request, SentJson, Empty, Sleep, Event, ParseFailed };

    Marker Classify(const std::string &line, uint32_t *command, std::string *rest) const {
        if (line.empty()) {
            return Marker::Empty;
        }
        if (CommandLine(line, "R:", command)) {
            return Marker::Received;
        }
        if (CommandLine(line, "s:", command)) {
            return Marker::Sent;
        }
        size_t at = RequestAt(line);
        if (at != std::string::npos) {
            *rest = line.substr(at);
            return Marker::Request;
        }
        if (line.compare(0, 5, "send:") == 0) {
            *rest = line.substr(5);
            return Marker::SentJson;
        }
        if (line.find("preview: device sleep!") != std::string::npos) {
            return Marker::Sleep;
        }
        static const char kEvent[] = "special_extend_data_route_cb ";
        at = line.find(kEvent);
        if (at != std::string::npos) {
            std::string type = line.substr(at + sizeof kEvent - 1);
            if (!type.empty() && type.size() <= 9 &&
                type.find_first_not_of("0123456789") == std::string::npos) {
                *command = static_cast<uint32_t>(std::strtoul(type.c_str(), nullptr, 10));
                return Marker::Event;
            }
        }
        return line.find("XML parse failed") != std::string::npos ? Marker::ParseFailed : Marker::None;
    }

    void Line(const std::string &line, int number, double time) {
        uint32_t command = 0;
        std::string rest;
        Marker m = Classify(line, &command, &rest);
        if (collecting_) {
            if (m == Marker::None || (awaiting_first_ && m == Marker::Empty)) {
                Collect(line);
                return;
            }
            EndCollect(false); // a document cut short: the next log line began
        }
        Dispatch(m, line, rest, command, number, time);
    }

    void Dispatch(Marker m, const std::string &line, const std::string &rest, uint32_t command, int number,
                  double time) {
        switch (m) {
        case Marker::Received:
            Add(LogEntry::Kind::Received, number, command, time);
            OnReceived();
            break;
        case Marker::Sent:
            Add(LogEntry::Kind::Sent, number, command, time);
            unsent_.push_back(log_.entries.size() - 1);
            break;
        case Marker::Event:
            Add(LogEntry::Kind::Event, number, command, time);
            break;
        case Marker::Request:
            CommandBody(BodyLine::Frame, rest);
            break;
        case Marker::SentJson:
        case Marker::Empty:
            SentBody(rest, m == Marker::Empty);
            break;
        case Marker::Sleep:
            SetCurrent(LogBody::Dropped);
            break;
        case Marker::ParseFailed:
            SetCurrent(LogBody::Unparsed);
            break;
        case Marker::None:
            // the unbind answer's body, as it came, is the next document on a line of its own
            if (line[0] == '{' || line[0] == '<') {
                CommandBody(BodyLine::AsItCame, line);
            }
            break;
        }
    }

    // The body of the last received command, when it waits for one logged this way.
    void CommandBody(BodyLine how, const std::string &first) {
        if (Awaiting(how)) {
            StartCollect(current_, first, false);
        }
    }

    // The document of the oldest sent message still without one: on this line after
    // "send:", or from the next line on after an empty one.
    void SentBody(const std::string &rest, bool next_line) {
        if (!unsent_.empty()) {
            size_t index = unsent_.front();
            unsent_.pop_front();
            StartCollect(index, rest, next_line);
        }
    }

    void Add(LogEntry::Kind kind, int number, uint32_t command, double time) {
        LogEntry e;
        e.kind = kind;
        e.line = number;
        e.command = command;
        e.time = time;
        log_.entries.push_back(e);
    }

    void OnReceived() {
        current_ = log_.entries.size() - 1;
        has_current_ = true;
        LogEntry &e = log_.entries[current_];
        BodyLine how = BodyLineOf(e.command);
        e.body_state = how == BodyLine::Raw
                           ? LogBody::ById
                           : (how == BodyLine::Ignored ? LogBody::NotUsed : LogBody::Missing);
    }

    // Whether the last received command waits for a body logged this way.
    bool Awaiting(BodyLine how) const {
        return has_current_ && log_.entries[current_].body_state == LogBody::Missing &&
               BodyLineOf(log_.entries[current_].command) == how;
    }

    // A drop or a parse failure of the last received command, which has no body yet.
    void SetCurrent(LogBody state) {
        if (has_current_ && log_.entries[current_].body_state != LogBody::Logged) {
            log_.entries[current_].body_state = state;
        }
    }

    // A document starts: first its text on the marker's line (a sent document starts on
    // the line after an empty one).
    void StartCollect(size_t index, const std::string &first, bool next_line) {
        collecting_ = true;
        awaiting_first_ = next_line;
        target_ = index;
        scanner_ = DocScanner();
        body_lines_ = 0;
        log_.entries[index].body.clear();
        if (!next_line) {
            Collect(first);
        }
    }

    void Collect(const std::string &line) {
        LogEntry &e = log_.entries[target_];
        // an empty first line is a whole empty document (a sent message without a body)
        bool empty_doc = awaiting_first_ && line.empty();
        awaiting_first_ = false;
        if (body_lines_++ > 0) {
            e.body += "\n";
        }
        e.body += line;
        if (empty_doc || scanner_.Feed(line)) {
            EndCollect(true);
        }
    }

    void EndCollect(bool whole) {
        if (!collecting_) {
            return;
        }
        collecting_ = false;
        LogEntry &e = log_.entries[target_];
        if (e.kind == LogEntry::Kind::Sent) {
            e.has_body = whole;
            if (whole && log_.serial.empty()) {
                log_.serial = SerialOf(e.body);
            }
        } else {
            e.body_state = whole ? LogBody::Logged : LogBody::Cut;
            if (whole && BodyLineOf(e.command) == BodyLine::Frame) {
                TakeSeqStamp(&e);
            }
        }
        if (!whole) {
            e.body.clear();
        }
    }

    DeviceLog log_;
    std::deque<size_t> unsent_; // sent messages whose document has not come yet, oldest first
    size_t current_ = 0;        // the last received command
    bool has_current_ = false;
    bool collecting_ = false, awaiting_first_ = false;
    size_t target_ = 0;     // the entry whose document is being read
    size_t body_lines_ = 0; // its lines so far
    DocScanner scanner_;
};

} // namespace

DeviceLog ReadDeviceLog(const std::string &text) {
    return Reader().Read(text);
}

const char *LogBodyProblem(LogBody state) {
    switch (state) {
    case LogBody::Missing:
        return "its request document is not in the log (a log below level 4, or cut)";
    case LogBody::Cut:
        return "its request document is cut short";
    case LogBody::Unparsed:
        return "the device could not parse its body, which the log does not hold";
    default:
        return "";
    }
}

} // namespace sim
