// Parser of the scenario language (see README.md for the commands).
#include "scenario.h"

#include <functional>
#include <map>

#include "names.h"

namespace sim {

namespace {

std::string Trim(const std::string &s) {
    size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) {
        return "";
    }
    size_t e = s.find_last_not_of(" \t\r");
    return s.substr(b, e - b + 1);
}

// Reads words one by one, or the raw rest of the line (a body or a free text).
class Cursor {
  public:
    explicit Cursor(const std::string &line) : line_(line) {}

    bool Word(std::string *word) {
        size_t save = pos_;
        Skip();
        if (pos_ >= line_.size()) {
            return false;
        }
        word->clear();
        if (line_[pos_] != '"') {
            while (pos_ < line_.size() && line_[pos_] != ' ' && line_[pos_] != '\t') {
                *word += line_[pos_++];
            }
            return true;
        }
        for (pos_++; pos_ < line_.size(); pos_++) {
            char c = line_[pos_];
            if (c == '\\' && pos_ + 1 < line_.size()) {
                *word += line_[++pos_];
            } else if (c == '"') {
                pos_++;
                return true;
            } else {
                *word += c;
            }
        }
        pos_ = save;
        bad_quote_ = true;
        return false;
    }
    // Consumes the next word only when it equals `keyword`.
    bool Keyword(const char *keyword) {
        size_t save = pos_;
        std::string w;
        if (Word(&w) && w == keyword) {
            return true;
        }
        pos_ = save;
        return false;
    }
    // The rest of the line, consumed.
    std::string Rest() {
        std::string rest = Peek();
        pos_ = line_.size();
        return rest;
    }
    bool AtEnd() const { return Peek().empty(); }
    bool BadQuote() const { return bad_quote_; }

  private:
    std::string Peek() const { return Trim(line_.substr(pos_ < line_.size() ? pos_ : line_.size())); }
    void Skip() {
        while (pos_ < line_.size() && (line_[pos_] == ' ' || line_[pos_] == '\t')) {
            pos_++;
        }
    }
    std::string line_;
    size_t pos_ = 0;
    bool bad_quote_ = false;
};

struct Context {
    const std::vector<std::string> &lines;
    size_t index; // of the current line
    unsigned int next_seq;
};

using Handler = std::function<std::string(Cursor &, Step &, Context &)>;

// A value from a name table or a number; "" or the reason it is not one.
std::string NeedName(Cursor &c, const NameTable &table, const char *what, long long *value) {
    std::string w;
    if (!c.Word(&w)) {
        return std::string("missing ") + what;
    }
    if (!table.Lookup(w, value)) {
        return "unknown " + std::string(what) + " '" + w + "'";
    }
    return "";
}

std::string NeedNumber(Cursor &c, const char *what, long long lo, long long hi, long long *value) {
    std::string w;
    if (!c.Word(&w)) {
        return std::string("missing ") + what;
    }
    if (!ParseInteger(w, value) || *value < lo || *value > hi) {
        return std::string(what) + " '" + w + "' is not a number from " + std::to_string(lo) + " to " +
               std::to_string(hi);
    }
    return "";
}

std::string NeedOnOff(Cursor &c, bool *on) {
    std::string w;
    c.Word(&w);
    if (w == "on" || w == "yes" || w == "1") {
        *on = true;
    } else if (w == "off" || w == "no" || w == "0") {
        *on = false;
    } else {
        return "expected on or off, got '" + w + "'";
    }
    return "";
}

// The rest of the line as a body: inline text, or "<<WORD" and the lines up to WORD.
std::string ReadBody(Cursor &c, Context &ctx, std::string *body) {
    std::string rest = c.Rest();
    if (rest.compare(0, 2, "<<") != 0) {
        *body = rest;
        return "";
    }
    std::string term = Trim(rest.substr(2));
    if (term.empty() || term.find(' ') != std::string::npos) {
        return "'<<' needs one terminator word, e.g. <<END";
    }
    body->clear();
    for (size_t i = ctx.index + 1; i < ctx.lines.size(); i++) {
        if (Trim(ctx.lines[i]) == term) {
            ctx.index = i;
            return "";
        }
        std::string line = ctx.lines[i];
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        *body += (i == ctx.index + 1 ? "" : "\n") + line;
    }
    ctx.index = ctx.lines.size(); // nothing after an open body can be read as commands
    return "body is not closed by a line '" + term + "'";
}

// "<command> [seq N]" as used by send, post and call raw.
std::string CommandAndSeq(Cursor &c, Step &s, Context &ctx) {
    std::string err = NeedName(c, kCommands, "command", &s.number);
    if (!err.empty()) {
        return err;
    }
    long long seq = 0;
    if (c.Keyword("seq")) {
        err = NeedNumber(c, "sequence number", 0, 0xFFFFFFFFLL, &seq);
        s.seq = static_cast<unsigned int>(seq);
        return err;
    }
    s.seq = ctx.next_seq++;
    return "";
}

std::string ParseSend(Cursor &c, Step &s, Context &ctx) {
    std::string err = CommandAndSeq(c, s, ctx);
    return err.empty() ? ReadBody(c, ctx, &s.body) : err;
}

std::string ParseCall(Cursor &c, Step &s, Context &ctx) {
    static const std::map<std::string, CallKind> kCalls = {
        {"unbind", CallKind::Unbind},
        {"verification-code", CallKind::VerificationCode},
        {"mapped-port-query", CallKind::MappedPortQuery},
        {"4g-flow", CallKind::Flow4G},
        {"flow-count", CallKind::FlowCount},
        {"raw", CallKind::Raw},
        {"trusteeship-report", CallKind::TrusteeshipReport},
    };
    std::string name;
    c.Word(&name);
    auto it = kCalls.find(name);
    if (it == kCalls.end()) {
        return "unknown operation '" + name +
               "' (unbind, verification-code, mapped-port-query, 4g-flow, flow-count, raw, "
               "trusteeship-report)";
    }
    s.call = it->second;
    switch (s.call) {
    case CallKind::VerificationCode:
    case CallKind::MappedPortQuery:
        if (!c.Word(&s.arg)) {
            return name + " needs its text";
        }
        return s.arg.size() < 128 ? "" : name + " text is longer than 127 characters";
    case CallKind::Raw: {
        std::string err = CommandAndSeq(c, s, ctx);
        long long response = 0;
        if (err.empty() && c.Keyword("response")) {
            err = NeedNumber(c, "response flag", 0, 255, &response);
        }
        s.response = static_cast<int>(response);
        return err.empty() ? ReadBody(c, ctx, &s.body) : err;
    }
    default:
        return "";
    }
}

std::string ParseShadow(Cursor &c, Step &s, Context &ctx) {
    std::string what;
    c.Word(&what);
    if (!c.Word(&s.arg)) {
        return "shadow " + what + " needs a key";
    }
    if (what == "deliver") {
        s.op = Op::ShadowDeliver;
        std::string err = NeedName(c, kShadowTypes, "shadow value type", &s.number);
        return err.empty() ? ReadBody(c, ctx, &s.body) : err;
    }
    if (what == "read") {
        s.op = Op::ShadowRead;
        s.number = 0;
        return c.AtEnd() ? "" : NeedNumber(c, "buffer size", 1, 1 << 20, &s.number);
    }
    return "expected 'shadow deliver KEY TYPE BODY' or 'shadow read KEY [SIZE]'";
}

std::string ParseSet(Cursor &c, Step &s, Context &) {
    std::string path;
    if (!c.Word(&path)) {
        return "set needs a field path and a value";
    }
    std::string value = c.Rest();
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
        std::vector<std::string> words;
        if (SplitWords(value, &words) && words.size() == 1) {
            value = words[0];
        }
    }
    std::string err;
    return DemoDevice::PrepareSet(path, value, &s.set, &err) ? "" : err;
}

std::string ParseAnswer(Cursor &c, Step &s, Context &) {
    std::string target;
    c.Word(&target);
    if (target != "recv_msg" && target != "get_runtime_info") {
        return "expected 'answer recv_msg|get_runtime_info TYPE CODE'";
    }
    s.flag = target == "recv_msg";
    std::string err = NeedName(c, s.flag ? kMsgTypes : kRuntimeTypes, "type", &s.number);
    if (!err.empty()) {
        return err;
    }
    long long code = 0;
    std::string w;
    if (!c.Word(&w) || !(w == "ok" || kResultCodes.Lookup(w, &code))) {
        return "expected a result code (ok, a NOLTDEVSDK_SPECIAL_CODE_ name or a number), got '" + w + "'";
    }
    s.code = static_cast<int>(static_cast<unsigned int>(code));
    s.arg = w;
    return "";
}

const std::map<std::string, std::pair<Op, Handler>> &Commands() {
    static const std::map<std::string, std::pair<Op, Handler>> kTable = {
        {"send", {Op::Send, ParseSend}},
        {"post", {Op::Post, ParseSend}},
        {"event",
         {Op::Event, [](Cursor &c, Step &s, Context &) { return NeedName(c, kEvents, "event", &s.number); }}},
        {"sleep", {Op::Sleep, [](Cursor &c, Step &s, Context &) { return NeedOnOff(c, &s.flag); }}},
        {"registered", {Op::Registered, [](Cursor &c, Step &s, Context &) { return NeedOnOff(c, &s.flag); }}},
        {"serial",
         {Op::Serial,
          [](Cursor &c, Step &s, Context &) { return c.Word(&s.arg) ? "" : "serial needs a text"; }}},
        {"shadow", {Op::ShadowDeliver, ParseShadow}},
        {"set", {Op::Set, ParseSet}},
        {"show",
         {Op::Show,
          [](Cursor &c, Step &s, Context &) {
              s.arg = c.AtEnd() ? "all" : c.Rest();
              return s.arg == "all" || DemoDevice::FindGroup(s.arg) ? ""
                                                                    : "unknown state group '" + s.arg + "'";
          }}},
        {"answer", {Op::Answer, ParseAnswer}},
        {"call", {Op::Call, ParseCall}},
        {"poll",
         {Op::Poll,
          [](Cursor &c, Step &s, Context &) {
              s.number = 1;
              return c.AtEnd() ? "" : NeedNumber(c, "poll count", 1, 1000, &s.number);
          }}},
        {"force",
         {Op::Force,
          [](Cursor &c, Step &s, Context &) { return NeedName(c, kReportIds, "report id", &s.number); }}},
        {"reset", {Op::Reset, [](Cursor &, Step &, Context &) { return std::string(); }}},
        {"wait",
         {Op::Wait,
          [](Cursor &c, Step &s, Context &) {
              s.number = 0;
              return c.AtEnd() ? "" : NeedNumber(c, "milliseconds", 0, 600000, &s.number);
          }}},
        // A request to the application's own control hook (the qualification suite's way
        // to ask for a state change on the application's side).
        {"app",
         {Op::App,
          [](Cursor &c, Step &s, Context &) {
              s.arg = c.Rest();
              return s.arg.empty() ? std::string("app needs a request") : std::string();
          }}},
        {"note",
         {Op::Note,
          [](Cursor &c, Step &s, Context &) {
              s.arg = c.Rest();
              return std::string();
          }}},
    };
    return kTable;
}

} // namespace

bool SplitWords(const std::string &line, std::vector<std::string> *words) {
    Cursor c(line);
    std::string w;
    words->clear();
    while (c.Word(&w)) {
        words->push_back(w);
    }
    return !c.BadQuote();
}

std::vector<std::string> SplitLines(const std::string &text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t i = 0; i <= text.size(); i++) {
        if (i == text.size() || text[i] == '\n') {
            lines.push_back(text.substr(start, i - start));
            start = i + 1;
        }
    }
    return lines;
}

Scenario ParseScenario(const std::string &text, const std::string &file) {
    std::vector<std::string> lines = SplitLines(text);
    Scenario out;
    Context ctx{lines, 0, 1};
    for (ctx.index = 0; ctx.index < lines.size(); ctx.index++) {
        std::string line = Trim(lines[ctx.index]);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        Step step;
        step.line = static_cast<int>(ctx.index + 1);
        step.text = line;
        Cursor cursor(line);
        std::string name, err;
        cursor.Word(&name);
        auto it = Commands().find(name);
        if (it == Commands().end()) {
            err = "unknown command '" + name + "'";
        } else {
            step.op = it->second.first;
            err = it->second.second(cursor, step, ctx);
            if (cursor.BadQuote()) {
                err = "unterminated quote"; // the real cause of whatever the command missed
            }
            if (err.empty() && !cursor.AtEnd()) {
                err = "unexpected '" + cursor.Rest() + "' at the end of the line";
            }
        }
        if (!err.empty()) {
            out.errors.push_back(file + ":" + std::to_string(step.line) + ": " + err);
            continue;
        }
        out.steps.push_back(step);
    }
    return out;
}

} // namespace sim
