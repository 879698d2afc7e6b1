// The expectation checker behind --expect.
#include "expect.h"

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

} // namespace

std::vector<std::string> CheckExpectations(const std::vector<std::string> &json_lines,
                                           const std::string &expect_text, const std::string &expect_file) {
    std::vector<std::string> problems;
    std::vector<cJSON *> parsed;
    for (size_t i = 0; i < json_lines.size(); i++) {
        cJSON *o = cJSON_Parse(json_lines[i].c_str());
        if (!cJSON_IsObject(o) || !cJSON_IsString(cJSON_GetObjectItemCaseSensitive(o, "kind"))) {
            problems.push_back("output line " + std::to_string(i + 1) + ": not a JSON object with a kind");
            cJSON_Delete(o);
            continue;
        }
        parsed.push_back(o);
    }
    std::vector<std::string> lines = SplitLines(expect_text);
    for (size_t number = 1; number <= lines.size(); number++) {
        const std::string &line = lines[number - 1];
        std::vector<std::string> words;
        std::string where = expect_file + ":" + std::to_string(number);
        if (!SplitWords(line, &words)) {
            problems.push_back(where + ": unterminated quote");
            continue;
        }
        if (words.empty() || words[0][0] == '#') {
            continue;
        }
        std::vector<std::string> conds(words.begin() + 1, words.end());
        bool well_formed = true;
        for (const std::string &cond : conds) {
            size_t op = cond.find_first_of("=~");
            well_formed = well_formed && op != std::string::npos && op > 0;
        }
        if (!well_formed) {
            problems.push_back(where + ": conditions are path=value or path~text");
            continue;
        }
        bool found = false;
        for (const cJSON *o : parsed) {
            found = found || Matches(o, words[0], conds);
        }
        if (!found) {
            problems.push_back(where + ": nothing matches: " + line);
        }
    }
    for (cJSON *o : parsed) {
        cJSON_Delete(o);
    }
    return problems;
}

} // namespace sim
