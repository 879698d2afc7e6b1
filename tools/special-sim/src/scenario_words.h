// Reading the words of a scenario line: a cursor over the line, and the checks every
// step's parser shares (a name or a number, on/off, a body, a command and its seq).
// Each returns "" or the reason the line is wrong, as reported after "file:line: ".
#pragma once

#include <string>
#include <vector>

#include "names.h"

namespace sim {

struct Step;

// The line without leading and trailing blanks (spaces, tabs, carriage returns).
std::string Trim(const std::string &s);

// Reads words one by one, or the raw rest of the line (a body or a free text).
class Cursor {
  public:
    explicit Cursor(const std::string &line) : line_(line) {}

    // The next word, a "double quoted" one may hold blanks (\" and \\ escape); false at
    // the end of the line or on an unterminated quote (then BadQuote()).
    bool Word(std::string *word);
    // Consumes the next word only when it equals `keyword`.
    bool Keyword(const char *keyword);
    // The rest of the line, trimmed and consumed.
    std::string Rest();
    bool AtEnd() const { return Peek().empty(); }
    bool BadQuote() const { return bad_quote_; }

  private:
    std::string Peek() const;
    void Skip();
    bool Quoted(std::string *word);

    std::string line_;
    size_t pos_ = 0;
    bool bad_quote_ = false;
};

// Where the parser is in the file: a body may consume the lines after its command.
struct ParseContext {
    const std::vector<std::string> &lines;
    size_t index;          // of the current line
    unsigned int next_seq; // of the next command sent without "seq"
};

// A value from a name table or a number.
std::string NeedName(Cursor &c, const NameTable &table, const char *what, long long *value);
// A number from lo to hi.
std::string NeedNumber(Cursor &c, const char *what, long long lo, long long hi, long long *value);
// on/yes/1 or off/no/0.
std::string NeedOnOff(Cursor &c, bool *on);
// The rest of the line as a body: inline text, or "<<WORD" and the lines up to WORD.
std::string ReadBody(Cursor &c, ParseContext &ctx, std::string *body);
// "<command> [seq N]" as used by send, post and call raw (into step.number, step.seq).
std::string CommandAndSeq(Cursor &c, Step &s, ParseContext &ctx);

} // namespace sim
