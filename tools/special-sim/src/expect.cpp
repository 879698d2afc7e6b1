// The expectation checker behind --expect.
#include "expect.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <cjson/cJSON.h>

#include "scenario.h"
#include "transcript.h"

namespace sim {

namespace {

// The text form of a member reached by a dotted path, or false when it is absent.
bool MemberText(const cJSON *object, const std::string &path, std::string *text) {
    const cJSON *node = object;
    size_t start = 0;
    while (node != nullptr && start <= path.size()) {
        size_t dot = path.find('.', start);
        std::string key = path.substr(start, dot == std::string::npos ? std::string::npos : dot - start);
        node = cJSON_IsArray(node) ? cJSON_GetArrayItem(node, std::atoi(key.c_str()))
                                   : cJSON_GetObjectItemCaseSensitive(node, key.c_str());
        if (dot == std::string::npos) {
            break;
        }
        start = dot + 1;
    }
    if (node == nullptr) {
        return false;
    }
    if (cJSON_IsString(node)) {
        *text = node->valuestring;
        return true;
    }
    char *printed = cJSON_PrintUnformatted(node);
    *text = printed ? printed : "";
    cJSON_free(printed);
    return true;
}

bool Matches(const cJSON *object, const std::string &kind, const std::vector<std::string> &conds) {
    std::string text;
    if (!kind.empty() && (!MemberText(object, "kind", &text) || text != kind)) {
        return false;
    }
    for (const std::string &cond : conds) {
        size_t op = cond.find_first_of("=~");
        if (!MemberText(object, cond.substr(0, op), &text)) {
            return false;
        }
        std::string want = cond.substr(op + 1);
        if (cond[op] == '=' ? text != want : text.find(want) == std::string::npos) {
            return false;
        }
    }
    return true;
}

// The output's lines as JSON objects; a line that is not an object with a kind is a problem.
std::vector<cJSON *> ParseOutput(const std::vector<std::string> &json_lines,
                                 std::vector<std::string> *problems) {
    std::vector<cJSON *> parsed;
    for (size_t i = 0; i < json_lines.size(); i++) {
        cJSON *o = cJSON_Parse(json_lines[i].c_str());
        if (!cJSON_IsObject(o) || !cJSON_IsString(cJSON_GetObjectItemCaseSensitive(o, "kind"))) {
            problems->push_back("output line " + std::to_string(i + 1) + ": not a JSON object with a kind");
            cJSON_Delete(o);
            continue;
        }
        parsed.push_back(o);
    }
    return parsed;
}

// What a body says about the outcome: its Result element or member, else the body cut short.
std::string BodyGist(const std::string &body) {
    for (const char *open : {"<Result>", "\"Result\":", "\"result\":", "\"resultCode\":"}) {
        size_t at = body.find(open);
        if (at != std::string::npos) {
            size_t end = body.find_first_of("<,}", at + std::strlen(open));
            return std::string(open) + body.substr(at + std::strlen(open), end - at - std::strlen(open)) +
                   (open[0] == '<' ? "</Result>" : "");
        }
    }
    std::string flat = body.size() > 120 ? body.substr(0, 120) + "..." : body;
    std::replace(flat.begin(), flat.end(), '\n', ' ');
    return flat.empty() ? "an empty body" : flat;
}

// How many of the conditions an object meets.
int Met(const cJSON *object, const std::vector<std::string> &conds) {
    int met = 0;
    for (const std::string &cond : conds) {
        met += Matches(object, "", {cond}) ? 1 : 0;
    }
    return met;
}

// The condition that says which message or callback a line is about (name, command,
// type or key), or false when it has none.
bool KeyCondition(const std::vector<std::string> &conds, std::string *key, std::string *want) {
    for (const std::string &cond : conds) {
        size_t op = cond.find('=');
        std::string path = cond.substr(0, op);
        if (op != std::string::npos &&
            (path == "name" || path == "command" || path == "type" || path == "key")) {
            *key = path;
            *want = cond.substr(op + 1);
            return true;
        }
    }
    return false;
}

// Of the same kind (and key), the object meeting most conditions, or null.
const cJSON *Nearest(const std::string &kind, const std::string &key, const std::string &want,
                     const std::vector<std::string> &conds, const std::vector<cJSON *> &parsed) {
    const cJSON *best = nullptr;
    std::string text;
    for (const cJSON *o : parsed) {
        bool same = Matches(o, kind, {}) && (key.empty() || (MemberText(o, key, &text) && text == want));
        if (same && (best == nullptr || Met(o, conds) > Met(best, conds))) {
            best = o;
        }
    }
    return best;
}

// The nearest event the device did send for an unmet expectation, shown with the values
// it had where the line asked for others, or that there was none.
std::string Instead(const std::string &kind, const std::vector<std::string> &conds,
                    const std::vector<cJSON *> &parsed) {
    std::string key, want, text;
    KeyCondition(conds, &key, &want);
    const cJSON *best = Nearest(kind, key, want, conds, parsed);
    if (best == nullptr) {
        bool message = kind == "to_platform" || kind == "shadow_to_platform";
        return "instead: no " + (message ? std::string("message") : kind) +
               (key.empty() ? "" : " with this " + key) + (message ? " was sent" : " happened");
    }
    std::string out = "instead: " + kind;
    for (const std::string &cond : conds) {
        std::string path = cond.substr(0, cond.find_first_of("=~"));
        std::string value = MemberText(best, path, &text) ? text : "(absent)";
        out += " " + path + "=" + (path == "body" ? BodyGist(value) : value);
    }
    if (kind != "to_platform" && MemberText(best, "result", &text) && text != "0") {
        out += " (answered " + DescribeCode(std::atoi(text.c_str())) + ")";
    }
    return out;
}

bool WellFormed(const std::vector<std::string> &conds) {
    for (const std::string &cond : conds) {
        size_t op = cond.find_first_of("=~");
        if (op == std::string::npos || op == 0) {
            return false;
        }
    }
    return true;
}

// One line of the expectation file against the output; "" or the problem (without where).
std::string CheckLine(const std::string &line, const std::vector<cJSON *> &parsed) {
    std::vector<std::string> words;
    if (!SplitWords(line, &words)) {
        return "unterminated quote";
    }
    if (words.empty() || words[0][0] == '#') {
        return "";
    }
    std::vector<std::string> conds(words.begin() + 1, words.end());
    if (!WellFormed(conds)) {
        return "conditions are path=value or path~text";
    }
    bool found = std::any_of(parsed.begin(), parsed.end(),
                             [&](const cJSON *o) { return Matches(o, words[0], conds); });
    return found ? "" : "nothing matches: " + line + "\n        " + Instead(words[0], conds, parsed);
}

} // namespace

std::vector<std::string> CheckExpectations(const std::vector<std::string> &json_lines,
                                           const std::string &expect_text, const std::string &expect_file) {
    std::vector<std::string> problems;
    std::vector<cJSON *> parsed = ParseOutput(json_lines, &problems);
    std::vector<std::string> lines = SplitLines(expect_text);
    for (size_t number = 1; number <= lines.size(); number++) {
        std::string problem = CheckLine(lines[number - 1], parsed);
        if (!problem.empty()) {
            problems.push_back(expect_file + ":" + std::to_string(number) + ": " + problem);
        }
    }
    for (cJSON *o : parsed) {
        cJSON_Delete(o);
    }
    return problems;
}

} // namespace sim
