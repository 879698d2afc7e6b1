// Field descriptors of the module's records. One table per record drives everything
// the simulator does with a record: decoding it to JSON (which the transcript prints
// as "path = value" lines or as a JSON Lines member) and setting one field by a dotted
// path ("plan.special_work_mode_plan.time.2.0.begin") from a scenario's text.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <cjson/cJSON.h>

namespace sim {

enum class Kind {
    Int,     // signed 32-bit
    UInt,    // unsigned 32-bit
    UShort,  // unsigned 16-bit
    Byte,    // one char, shown as a number
    Float,   // IEEE single
    Time,    // time_t
    Text,    // char[size], NUL-terminated
    PtrText, // char* whose length is the sibling field `count`
    Array,   // dim0 (x dim1) elements of `element`, each `size` bytes
};

struct RecordDesc;

struct FieldDesc {
    const char *name;
    Kind kind;
    size_t offset;
    size_t size; // scalars: sizeof; Text: capacity; Array: element size
    const RecordDesc *element = nullptr;
    int dim0 = 0, dim1 = 0;
    // Array: sibling int field that counts the used entries (none: every element that
    // is not all zero is shown). PtrText: sibling field holding the length.
    const char *count = nullptr;
    // Int: the number of members of the enumeration it holds (0: any value).
    int members = 0;
};

struct RecordDesc {
    const char *name;
    size_t size;
    std::vector<FieldDesc> fields;
};

// Reads an integer field of any width (Int, UInt, UShort, Byte, Time).
long long ReadInteger(Kind kind, const unsigned char *p);

// The field of that name, or null.
const FieldDesc *FindField(const RecordDesc &desc, const std::string &name);

// Decodes a record of at most len bytes (fields beyond len are left out; counted arrays
// are bounded by their count and by len).
cJSON *RecordToJson(const RecordDesc &desc, const void *data, size_t len);

// Prints a decoded record as one "path = value" line per leaf, each prefixed by indent.
std::string JsonToLines(const cJSON *json, const std::string &indent);

// Where a dotted path lands in a record.
struct FieldRef {
    const FieldDesc *field = nullptr;
    size_t offset = 0;                  // of the leaf, from the record's start
    const FieldDesc *counter = nullptr; // the count field to raise, if any
    size_t counter_offset = 0;
    int index = 0; // the leaf's array entry (for raising the count)
};

// Resolves a path such as "subserial.2.connect_status" (also "subserial[2]"); on
// failure returns false with a reason.
bool ResolvePath(const RecordDesc &desc, const std::string &path, FieldRef *ref, std::string *error);

// Checks that text is a valid value for the field; false with a reason otherwise.
bool CheckValue(const FieldDesc &field, const std::string &text, std::string *error);

// Writes a checked value; setting an entry past an array's count raises the count.
void WriteValue(const FieldRef &ref, void *record, const std::string &text);

} // namespace sim
