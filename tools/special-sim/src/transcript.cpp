// Text and JSON Lines rendering of the simulator's events.
#include "transcript.h"

#include <sstream>

#include <pugixml.hpp>

#include "names.h"
#include "records.h"

namespace sim {

namespace {

std::string Indent(const std::string &text, const std::string &prefix) {
    std::string out;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        size_t tabs = 0;
        while (tabs < line.size() && line[tabs] == '\t') {
            tabs++;
        }
        std::string rest = line.substr(tabs);
        for (char &c : rest) {
            c = c == '\t' ? ' ' : c; // cJSON separates a member's name and value by a tab
        }
        out += prefix + std::string(tabs * 2, ' ') + rest + "\n";
    }
    return out;
}

} // namespace

namespace {

// A JSON object or array formatted, or "" when the text is not one.
std::string FormatJson(const std::string &text) {
    size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos || (text[first] != '{' && text[first] != '[')) {
        return "";
    }
    cJSON *json = cJSON_Parse(text.c_str());
    char *printed = json ? cJSON_Print(json) : nullptr;
    std::string out = printed ? printed : "";
    cJSON_free(printed);
    cJSON_Delete(json);
    return out;
}

// Several statuses carry JSON inside an XML attribute or element; the XML printer
// escapes it beyond reading, so it is shown again below the document.
void AppendEmbeddedJson(const pugi::xml_node &node, std::string *out) {
    for (pugi::xml_node child : node.children()) {
        if (child.type() != pugi::node_element) {
            continue;
        }
        for (pugi::xml_attribute attr : child.attributes()) {
            std::string json = FormatJson(attr.value());
            if (!json.empty()) {
                *out += std::string("\n") + child.name() + "@" + attr.name() + " as JSON:\n" + json;
            }
        }
        std::string json = FormatJson(child.text().get());
        if (!json.empty() && child.first_child().type() == pugi::node_pcdata) {
            *out += std::string("\n") + child.name() + " as JSON:\n" + json;
        }
        AppendEmbeddedJson(child, out);
    }
}

} // namespace

std::string PrettyBody(const std::string &body, std::string *format) {
    size_t first = body.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) {
        *format = "empty";
        return "";
    }
    std::string json = FormatJson(body);
    if (!json.empty()) {
        *format = "json";
        return json;
    }
    pugi::xml_document doc;
    if (body[first] == '<' &&
        doc.load_buffer(body.data(), body.size(), pugi::parse_default | pugi::parse_declaration)) {
        std::ostringstream out;
        doc.save(out, "  ", pugi::format_indent | pugi::format_no_declaration);
        std::string text = out.str();
        while (!text.empty() && text.back() == '\n') {
            text.pop_back();
        }
        AppendEmbeddedJson(doc, &text);
        *format = "xml";
        return text;
    }
    *format = "text";
    return body;
}

std::string DescribeCode(int code) {
    if (code == 0) {
        return "0";
    }
    char hex[16];
    std::snprintf(hex, sizeof hex, "%#x", static_cast<unsigned int>(code));
    const char *name = kResultCodes.Name(code);
    if (name[0] != '\0') {
        return std::string(name) + " (" + hex + ")";
    }
    return code < -0xFFFF ? std::string(hex) : std::to_string(code); // codes near -1 read better as numbers
}

Transcript::Transcript(FILE *out, bool json, bool keep_lines) : out_(out), json_(json), keep_(keep_lines) {}

void Transcript::Write(cJSON *object, const std::string &text) {
    std::lock_guard<std::mutex> lock(mu_);
    if (json_ || keep_) {
        cJSON_AddNumberToObject(object, "line", line_);
        char *printed = cJSON_PrintUnformatted(object);
        std::string line = printed ? printed : "{}";
        cJSON_free(printed);
        if (json_) {
            std::fprintf(out_, "%s\n", line.c_str());
        }
        if (keep_) {
            lines_.push_back(line);
        }
    }
    if (!json_) {
        std::fprintf(out_, "%s\n", text.c_str());
    }
    std::fflush(out_);
    cJSON_Delete(object);
}

void Transcript::BeginStep(const std::string &file, int line, const std::string &text, bool echo) {
    {
        std::lock_guard<std::mutex> lock(mu_);
        line_ = line;
    }
    if (!echo) {
        return;
    }
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", "step");
    cJSON_AddStringToObject(o, "file", file.c_str());
    cJSON_AddStringToObject(o, "text", text.c_str());
    Write(o, "# " + file + ":" + std::to_string(line) + "  " + text);
}

void Transcript::Message(bool to_device, uint32_t command, uint32_t seq, int response,
                         const std::string &body) {
    std::string format;
    std::string pretty = PrettyBody(body, &format);
    const char *name = kCommands.Name(command);
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", to_device ? "to_device" : "to_platform");
    cJSON_AddNumberToObject(o, "command", command);
    cJSON_AddStringToObject(o, "name", name);
    cJSON_AddNumberToObject(o, "seq", seq);
    cJSON_AddNumberToObject(o, "response", response);
    cJSON_AddStringToObject(o, "format", format.c_str());
    cJSON_AddStringToObject(o, "body", body.c_str());
    std::string head = std::string(to_device ? "platform -> device  " : "device -> platform  ") +
                       kCommands.Describe(command) + "  seq " + std::to_string(seq) + "  response " +
                       std::to_string(response);
    Write(o, head + "\n" + Indent(pretty, "    "));
}

void Transcript::Callback(const char *kind, int type, const std::string &type_name, int len, int result,
                          cJSON *record) {
    std::string lines = record ? JsonToLines(record, "    ") : "";
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", kind);
    cJSON_AddNumberToObject(o, "type", type);
    cJSON_AddStringToObject(o, "name", type_name.c_str());
    cJSON_AddNumberToObject(o, "len", len);
    cJSON_AddNumberToObject(o, "result", result);
    if (record != nullptr) {
        cJSON_AddItemToObject(o, "record", record);
    }
    std::string head =
        std::string(kind) + "  " +
        (type_name.empty() ? std::to_string(type) : type_name + " (" + std::to_string(type) + ")") +
        "  len " + std::to_string(len) + "  -> " + DescribeCode(result);
    Write(o, head + "\n" + lines);
}

void Transcript::Shadow(bool to_device, const std::string &key, int type, const std::string &value,
                        int result, long long version) {
    std::string format;
    std::string pretty = PrettyBody(value, &format);
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", to_device ? "shadow_to_device" : "shadow_to_platform");
    cJSON_AddStringToObject(o, "key", key.c_str());
    cJSON_AddNumberToObject(o, "type", type);
    cJSON_AddStringToObject(o, "type_name", kShadowTypes.Name(type));
    cJSON_AddStringToObject(o, "body", value.c_str());
    std::string head =
        std::string(to_device ? "platform -> device  shadow \"" : "device -> platform  shadow \"") + key +
        "\"  " + kShadowTypes.Describe(type);
    if (!to_device) {
        cJSON_AddNumberToObject(o, "result", result);
        cJSON_AddNumberToObject(o, "version", static_cast<double>(version));
        head += "  version " + std::to_string(version) + "  -> " + DescribeCode(result);
    }
    Write(o, head + "\n" + Indent(pretty, "    "));
}

void Transcript::Outcome(const char *kind, const std::string &text, cJSON *members) {
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", kind);
    cJSON_AddStringToObject(o, "text", text.c_str());
    while (members != nullptr && members->child != nullptr) {
        cJSON *item = cJSON_DetachItemViaPointer(members, members->child);
        cJSON_AddItemToObject(o, item->string, item);
    }
    cJSON_Delete(members);
    Write(o, std::string(kind) + ": " + text + "\n");
}

void Transcript::State(const std::string &group, cJSON *record) {
    std::string lines = JsonToLines(record, "    " + group + ".");
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", "state");
    cJSON_AddStringToObject(o, "group", group.c_str());
    cJSON_AddItemToObject(o, "record", record);
    Write(o, "state  " + group + "\n" + lines);
}

void Transcript::Log(int level, const std::string &line) {
    std::string text = line;
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.pop_back();
    }
    cJSON *o = cJSON_CreateObject();
    cJSON_AddStringToObject(o, "kind", "log");
    cJSON_AddNumberToObject(o, "level", level);
    cJSON_AddStringToObject(o, "text", text.c_str());
    Write(o, "log[" + std::to_string(level) + "] " + text);
}

std::vector<std::string> Transcript::Lines() {
    std::lock_guard<std::mutex> lock(mu_);
    return lines_;
}

} // namespace sim
