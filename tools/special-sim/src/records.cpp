// Decoding and path-setting of records, driven by their field descriptors.
#include "records.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "names.h"

namespace sim {

namespace {

const unsigned char *At(const void *base, size_t offset) {
    return static_cast<const unsigned char *>(base) + offset;
}

std::string FieldNames(const RecordDesc &desc) {
    std::string out;
    for (const FieldDesc &f : desc.fields) {
        out += (out.empty() ? "" : ", ") + std::string(f.name);
    }
    return out;
}

bool AllZero(const unsigned char *p, size_t n) {
    for (size_t i = 0; i < n; i++) {
        if (p[i] != 0) {
            return false;
        }
    }
    return true;
}

// Floats are shown with the seven significant digits a single holds.
double FloatValue(const unsigned char *p) {
    float f;
    std::memcpy(&f, p, sizeof f);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7g", static_cast<double>(f));
    return std::strtod(buf, nullptr);
}

// An array with a count field: the entries it counts, bounded by `avail`.
cJSON *CountedToJson(const RecordDesc &desc, const FieldDesc &f, const void *data, size_t avail) {
    const FieldDesc *counter = FindField(desc, f.count);
    long long n = counter ? ReadInteger(counter->kind, At(data, counter->offset)) : 0;
    n = n < 0 ? 0 : (static_cast<size_t>(n) > avail ? static_cast<long long>(avail) : n);
    cJSON *array = cJSON_CreateArray();
    for (long long i = 0; i < n; i++) {
        cJSON_AddItemToArray(array, RecordToJson(*f.element, At(data, f.offset + i * f.size), f.size));
    }
    return array;
}

// Sparse arrays keep their indexes as keys; a grid nests rows ("time": {"1": {"0": ...}}).
cJSON *SparseToJson(const FieldDesc &f, const void *data, size_t avail) {
    cJSON *object = cJSON_CreateObject();
    for (size_t i = 0; i < avail; i++) {
        const unsigned char *p = At(data, f.offset + i * f.size);
        if (AllZero(p, f.size)) {
            continue;
        }
        cJSON *parent = object;
        size_t column = i;
        if (f.dim1 > 0) {
            std::string row = std::to_string(i / f.dim1);
            parent = cJSON_GetObjectItemCaseSensitive(object, row.c_str());
            if (parent == nullptr) {
                parent = cJSON_AddObjectToObject(object, row.c_str());
            }
            column = i % f.dim1;
        }
        cJSON_AddItemToObject(parent, std::to_string(column).c_str(), RecordToJson(*f.element, p, f.size));
    }
    return object;
}

cJSON *ArrayToJson(const RecordDesc &desc, const FieldDesc &f, const void *data, size_t len) {
    size_t total = static_cast<size_t>(f.dim0) * static_cast<size_t>(f.dim1 > 0 ? f.dim1 : 1);
    size_t avail = len > f.offset ? (len - f.offset) / f.size : 0;
    if (avail > total) {
        avail = total;
    }
    return f.count != nullptr ? CountedToJson(desc, f, data, avail) : SparseToJson(f, data, avail);
}

} // namespace

// Reads an integer field of any width.
long long ReadInteger(Kind kind, const unsigned char *p) {
    switch (kind) {
    case Kind::UInt: {
        uint32_t v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    case Kind::UShort: {
        uint16_t v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    case Kind::Byte:
        return static_cast<signed char>(*p);
    case Kind::Time: {
        time_t v;
        std::memcpy(&v, p, sizeof v);
        return static_cast<long long>(v);
    }
    default: {
        int32_t v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }
    }
}

const FieldDesc *FindField(const RecordDesc &desc, const std::string &name) {
    for (const FieldDesc &f : desc.fields) {
        if (name == f.name) {
            return &f;
        }
    }
    return nullptr;
}

cJSON *RecordToJson(const RecordDesc &desc, const void *data, size_t len) {
    cJSON *out = cJSON_CreateObject();
    for (const FieldDesc &f : desc.fields) {
        const unsigned char *p = At(data, f.offset);
        if (f.kind == Kind::Array) {
            cJSON_AddItemToObject(out, f.name, ArrayToJson(desc, f, data, len));
            continue;
        }
        if (f.offset + f.size > len) {
            continue;
        }
        switch (f.kind) {
        case Kind::Text:
            cJSON_AddStringToObject(out, f.name,
                                    std::string(reinterpret_cast<const char *>(p),
                                                strnlen(reinterpret_cast<const char *>(p), f.size))
                                        .c_str());
            break;
        case Kind::PtrText: {
            const char *text;
            std::memcpy(&text, p, sizeof text);
            const FieldDesc *counter = FindField(desc, f.count);
            long long n = counter ? ReadInteger(counter->kind, At(data, counter->offset)) : 0;
            cJSON_AddStringToObject(out, f.name,
                                    text && n > 0 ? std::string(text, static_cast<size_t>(n)).c_str() : "");
            break;
        }
        case Kind::Float:
            cJSON_AddNumberToObject(out, f.name, FloatValue(p));
            break;
        default:
            cJSON_AddNumberToObject(out, f.name, static_cast<double>(ReadInteger(f.kind, p)));
            break;
        }
    }
    return out;
}

namespace {

void AppendLines(const cJSON *node, const std::string &path, const std::string &indent, std::string *out) {
    if (cJSON_IsObject(node) || cJSON_IsArray(node)) {
        if (node->child == nullptr) {
            if (cJSON_IsArray(node)) {
                *out += indent + path + " = []\n";
            }
            return;
        }
        int i = 0;
        for (const cJSON *c = node->child; c != nullptr; c = c->next, i++) {
            std::string key = cJSON_IsArray(node) ? std::to_string(i) : std::string(c->string);
            AppendLines(c, path.empty() ? key : path + "." + key, indent, out);
        }
        return;
    }
    char *text = cJSON_PrintUnformatted(node);
    *out += indent + path + " = " + (text ? text : "?") + "\n";
    cJSON_free(text);
}

} // namespace

std::string JsonToLines(const cJSON *json, const std::string &indent) {
    std::string out;
    AppendLines(json, "", indent, &out);
    return out;
}

namespace {

// "a.b[1].c" and "a.b.1.c" alike: {"a", "b", "1", "c"}.
std::vector<std::string> PathParts(const std::string &path) {
    std::string norm;
    for (char c : path) {
        norm += (c == '[') ? '.' : c;
    }
    std::vector<std::string> parts;
    size_t start = 0;
    for (size_t i = 0; i <= norm.size(); i++) {
        if (i == norm.size() || norm[i] == '.') {
            std::string part = norm.substr(start, i - start);
            if (!part.empty() && part.back() == ']') {
                part.pop_back();
            }
            if (!part.empty()) {
                parts.push_back(part);
            }
            start = i + 1;
        }
    }
    return parts;
}

// A single value, which must end the path.
bool ResolveValue(const FieldDesc &f, bool last, const std::string &part, size_t base, FieldRef *out,
                  std::string *error) {
    if (!last) {
        *error = "'" + part + "' is a single value, not a record";
        return false;
    }
    if (f.kind == Kind::PtrText) {
        *error = "'" + part + "' cannot be set";
        return false;
    }
    out->field = &f;
    out->offset = base + f.offset;
    return true;
}

// The entry that the parts after the array's name (*i) index; *i moves past them.
bool ArrayEntry(const FieldDesc &f, const std::vector<std::string> &parts, size_t *i, size_t *entry,
                std::string *error) {
    int dims = f.dim1 > 0 ? 2 : 1;
    long long idx[2] = {0, 0};
    const std::string name = parts[*i];
    for (int d = 0; d < dims; d++) {
        int limit = d == 0 ? f.dim0 : f.dim1;
        if (*i + 1 >= parts.size() || !ParseInteger(parts[*i + 1], &idx[d]) || idx[d] < 0 ||
            idx[d] >= limit) {
            *error = "'" + name + "' needs " + (dims == 2 ? "two indexes" : "an index") + " (0 to " +
                     std::to_string(limit - 1) + ")";
            return false;
        }
        (*i)++;
    }
    *entry = static_cast<size_t>(idx[0] * (f.dim1 > 0 ? f.dim1 : 1) + idx[1]);
    return true;
}

} // namespace

bool ResolvePath(const RecordDesc &desc, const std::string &path, FieldRef *ref, std::string *error) {
    std::vector<std::string> parts = PathParts(path);
    const RecordDesc *current = &desc;
    size_t base = 0;
    FieldRef out;
    for (size_t i = 0; i < parts.size(); i++) {
        const FieldDesc *f = FindField(*current, parts[i]);
        if (f == nullptr) {
            *error =
                "no field '" + parts[i] + "' in " + current->name + " (fields: " + FieldNames(*current) + ")";
            return false;
        }
        if (f->kind != Kind::Array) {
            if (!ResolveValue(*f, i + 1 == parts.size(), parts[i], base, &out, error)) {
                return false;
            }
            *ref = out;
            return true;
        }
        const std::string name = parts[i];
        size_t entry = 0;
        if (!ArrayEntry(*f, parts, &i, &entry, error)) {
            return false;
        }
        if (f->count != nullptr) { // setting an entry past the count raises it
            out.counter = FindField(*current, f->count);
            out.counter_offset = base + (out.counter ? out.counter->offset : 0);
            out.index = static_cast<int>(entry);
        }
        base += f->offset + entry * f->size;
        current = f->element;
        if (i + 1 == parts.size()) {
            *error = "'" + name + "' entries are records; name a field (" + FieldNames(*current) + ")";
            return false;
        }
    }
    *error = "empty field path";
    return false;
}

namespace {

// Accepts "HH:MM" as seconds of the day for time fields (the plan's segment times).
bool ParseTimeValue(const std::string &text, long long *value) {
    int h, m;
    char tail;
    if (std::sscanf(text.c_str(), "%d:%d%c", &h, &m, &tail) == 2 && h >= 0 && h < 24 && m >= 0 && m < 60) {
        *value = h * 3600 + m * 60;
        return true;
    }
    errno = 0;
    char *end = nullptr;
    *value = std::strtoll(text.c_str(), &end, 0);
    return !text.empty() && *end == '\0' && errno == 0;
}

bool CheckText(const FieldDesc &field, const std::string &text, std::string *error) {
    if (text.size() >= field.size) {
        *error = "text too long for " + std::string(field.name) + " (at most " +
                 std::to_string(field.size - 1) + " characters)";
        return false;
    }
    return true;
}

bool CheckFloat(const std::string &text, std::string *error) {
    char *end = nullptr;
    std::strtof(text.c_str(), &end);
    if (text.empty() || *end != '\0') {
        *error = "'" + text + "' is not a number";
        return false;
    }
    return true;
}

bool CheckTime(const std::string &text, std::string *error) {
    long long v = 0;
    if (!ParseTimeValue(text, &v)) {
        *error = "'" + text + "' is not a time (seconds, or HH:MM)";
        return false;
    }
    return true;
}

// An integer within its field's width (an unsigned one not negative).
bool CheckInteger(const FieldDesc &field, const std::string &text, std::string *error) {
    long long v = 0;
    long long lo = field.kind == Kind::UShort ? 0 : (field.kind == Kind::Byte ? -128 : -2147483648LL);
    long long hi = field.kind == Kind::UShort ? 0xFFFF : (field.kind == Kind::Byte ? 255 : 0xFFFFFFFFLL);
    if (!ParseInteger(text, &v) || v < lo || v > hi || (field.kind == Kind::UInt && v < 0)) {
        *error = "'" + text + "' is not a valid value for " + field.name + " (" + std::to_string(lo) +
                 " to " + std::to_string(hi) + ")";
        return false;
    }
    return true;
}

} // namespace

bool CheckValue(const FieldDesc &field, const std::string &text, std::string *error) {
    switch (field.kind) {
    case Kind::Text:
        return CheckText(field, text, error);
    case Kind::Float:
        return CheckFloat(text, error);
    case Kind::Time:
        return CheckTime(text, error);
    default:
        return CheckInteger(field, text, error);
    }
}

void WriteValue(const FieldRef &ref, void *record, const std::string &text) {
    unsigned char *p = static_cast<unsigned char *>(record) + ref.offset;
    const FieldDesc &f = *ref.field;
    long long v = 0;
    switch (f.kind) {
    case Kind::Text:
        std::memset(p, 0, f.size);
        text.copy(reinterpret_cast<char *>(p), std::min(text.size(), f.size - 1));
        break;
    case Kind::Float: {
        float fv = std::strtof(text.c_str(), nullptr);
        std::memcpy(p, &fv, sizeof fv);
        break;
    }
    case Kind::Time: {
        ParseTimeValue(text, &v);
        time_t t = static_cast<time_t>(v);
        std::memcpy(p, &t, sizeof t);
        break;
    }
    case Kind::UShort: {
        ParseInteger(text, &v);
        uint16_t u = static_cast<uint16_t>(v);
        std::memcpy(p, &u, sizeof u);
        break;
    }
    case Kind::Byte:
        ParseInteger(text, &v);
        *p = static_cast<unsigned char>(v);
        break;
    default: {
        ParseInteger(text, &v);
        uint32_t u = static_cast<uint32_t>(v);
        std::memcpy(p, &u, sizeof u);
        break;
    }
    }
    if (ref.counter != nullptr) {
        unsigned char *c = static_cast<unsigned char *>(record) + ref.counter_offset;
        if (ReadInteger(ref.counter->kind, c) <= ref.index) {
            std::string count = std::to_string(ref.index + 1);
            FieldRef counter_ref;
            counter_ref.field = ref.counter;
            counter_ref.offset = ref.counter_offset;
            WriteValue(counter_ref, record, count);
        }
    }
}

} // namespace sim
