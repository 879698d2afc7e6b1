// The word reader and the shared checks of the scenario parser.
#include "scenario_words.h"

#include "scenario.h"

namespace sim {

std::string Trim(const std::string &s) {
    size_t b = s.find_first_not_of(" \t\r");
    if (b == std::string::npos) {
        return "";
    }
    size_t e = s.find_last_not_of(" \t\r");
    return s.substr(b, e - b + 1);
}

bool Cursor::Word(std::string *word) {
    Skip();
    if (pos_ >= line_.size()) {
        return false;
    }
    word->clear();
    if (line_[pos_] == '"') {
        return Quoted(word);
    }
    while (pos_ < line_.size() && line_[pos_] != ' ' && line_[pos_] != '\t') {
        *word += line_[pos_++];
    }
    return true;
}

// A "double quoted" word; on an unterminated quote the cursor stays before it.
bool Cursor::Quoted(std::string *word) {
    size_t save = pos_;
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

bool Cursor::Keyword(const char *keyword) {
    size_t save = pos_;
    std::string w;
    if (Word(&w) && w == keyword) {
        return true;
    }
    pos_ = save;
    return false;
}

std::string Cursor::Rest() {
    std::string rest = Peek();
    pos_ = line_.size();
    return rest;
}

std::string Cursor::Peek() const {
    return Trim(line_.substr(pos_ < line_.size() ? pos_ : line_.size()));
}

void Cursor::Skip() {
    while (pos_ < line_.size() && (line_[pos_] == ' ' || line_[pos_] == '\t')) {
        pos_++;
    }
}

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

namespace {

// The lines after the current one up to the terminator, joined; false when none closes.
bool BodyLines(ParseContext &ctx, const std::string &term, std::string *body) {
    body->clear();
    for (size_t i = ctx.index + 1; i < ctx.lines.size(); i++) {
        if (Trim(ctx.lines[i]) == term) {
            ctx.index = i;
            return true;
        }
        std::string line = ctx.lines[i];
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        *body += (i == ctx.index + 1 ? "" : "\n") + line;
    }
    ctx.index = ctx.lines.size(); // nothing after an open body can be read as commands
    return false;
}

} // namespace

std::string ReadBody(Cursor &c, ParseContext &ctx, std::string *body) {
    std::string rest = c.Rest();
    if (rest.compare(0, 2, "<<") != 0) {
        *body = rest;
        return "";
    }
    std::string term = Trim(rest.substr(2));
    if (term.empty() || term.find(' ') != std::string::npos) {
        return "'<<' needs one terminator word, e.g. <<END";
    }
    return BodyLines(ctx, term, body) ? "" : "body is not closed by a line '" + term + "'";
}

std::string CommandAndSeq(Cursor &c, Step &s, ParseContext &ctx) {
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

} // namespace sim
