// Expectations from a recorded run (see record.h).
#include "record.h"

#include <cjson/cJSON.h>

namespace sim {

namespace {

std::string LeafText(const cJSON *node) {
    if (cJSON_IsString(node)) {
        return node->valuestring;
    }
    char *printed = cJSON_PrintUnformatted(node);
    std::string text = printed ? printed : "";
    cJSON_free(printed);
    return text;
}

// Every leaf under node as a "path=value" condition.
void Flatten(const cJSON *node, const std::string &path, std::string *conds) {
    if (!cJSON_IsObject(node) && !cJSON_IsArray(node)) {
        *conds += " " + QuoteWord(path + "=" + LeafText(node));
        return;
    }
    int index = 0;
    for (const cJSON *child = node->child; child != nullptr; child = child->next, index++) {
        std::string key = cJSON_IsArray(node) ? std::to_string(index) : std::string(child->string);
        Flatten(child, path + "." + key, conds);
    }
}

std::string Member(const cJSON *object, const char *name) {
    const cJSON *m = cJSON_GetObjectItemCaseSensitive(object, name);
    return m ? LeafText(m) : "";
}

// The expectation for one output line, or "" for lines that are not pinned.
std::string ExpectationFor(const cJSON *o) {
    std::string kind = Member(o, "kind");
    if (kind == "recv_msg" || kind == "get_runtime_info") {
        std::string conds = " type=" + Member(o, "type") + " result=" + Member(o, "result");
        const cJSON *record = cJSON_GetObjectItemCaseSensitive(o, "record");
        if (record != nullptr && !cJSON_IsNull(record)) {
            Flatten(record, "record", &conds);
        }
        return kind + conds;
    }
    if (kind == "to_platform") {
        // bodies carry the module's own sequence numbers and clock; the values in them
        // come from the callbacks' records, which are pinned above
        return kind + " command=" + Member(o, "command") + " response=" + Member(o, "response");
    }
    return "";
}

} // namespace

std::string QuoteWord(const std::string &text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    return out + "\"";
}

std::string RecordExpectations(const std::vector<std::string> &json_lines) {
    std::string out = "# Recorded by special-sim --record: every answer and message of the run.\n";
    for (const std::string &line : json_lines) {
        cJSON *o = cJSON_Parse(line.c_str());
        std::string expectation = o ? ExpectationFor(o) : "";
        cJSON_Delete(o);
        if (!expectation.empty()) {
            out += expectation + "\n";
        }
    }
    return out;
}

std::string ExpectPathFor(const std::string &scenario_path) {
    size_t dot = scenario_path.rfind('.');
    size_t slash = scenario_path.rfind('/');
    bool has_ext = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    return (has_ext ? scenario_path.substr(0, dot) : scenario_path) + ".expect";
}

} // namespace sim
