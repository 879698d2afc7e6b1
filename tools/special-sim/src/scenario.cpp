// Parser of the scenario language (see README.md for the commands).
#include "scenario.h"

#include "scenario_words.h"
#include "step_table.h"

namespace sim {

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

namespace {

// One command line into `step`; "" or the reason it is wrong.
std::string ParseStep(const std::string &line, ParseContext &ctx, Step &step) {
    Cursor cursor(line);
    std::string name;
    cursor.Word(&name);
    step.row = FindStep(name);
    if (step.row == nullptr) {
        return "unknown command '" + name + "'";
    }
    std::string err = step.row->parse(cursor, step, ctx);
    if (cursor.BadQuote()) {
        return "unterminated quote"; // the real cause of whatever the command missed
    }
    if (err.empty() && !cursor.AtEnd()) {
        return "unexpected '" + cursor.Rest() + "' at the end of the line";
    }
    return err;
}

} // namespace

Scenario ParseScenario(const std::string &text, const std::string &file) {
    std::vector<std::string> lines = SplitLines(text);
    Scenario out;
    ParseContext ctx{lines, 0, 1};
    for (ctx.index = 0; ctx.index < lines.size(); ctx.index++) {
        std::string line = Trim(lines[ctx.index]);
        if (line.empty() || line[0] == '#') {
            continue;
        }
        Step step;
        step.line = static_cast<int>(ctx.index + 1);
        step.text = line;
        std::string err = ParseStep(line, ctx, step);
        if (!err.empty()) {
            out.errors.push_back(file + ":" + std::to_string(step.line) + ": " + err);
            continue;
        }
        out.steps.push_back(step);
    }
    return out;
}

} // namespace sim
