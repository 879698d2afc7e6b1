// The expectation checker behind --expect.
#include "expect.h"

#include <algorithm>
#include <cstdlib>

#include <cjson/cJSON.h>

#include "scenario.h"

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
    if (!MemberText(object, "kind", &text) || text != kind) {
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
    return found ? "" : "nothing matches: " + line;
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
