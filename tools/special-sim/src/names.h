// Names of the numbers a scenario and a transcript talk about: platform commands,
// kernel events, report-status ids, message and runtime-info types, result codes and
// shadow value types. Each table resolves a name, a short name or a number both ways.
#pragma once

#include <string>

namespace sim {

struct NamedValue {
    const char *name;
    long long value;
};

class NameTable {
  public:
    template <size_t N>
    NameTable(const NamedValue (&entries)[N], const char *prefix)
        : entries_(entries), count_(N), prefix_(prefix) {}

    // Accepts the full name, the name without the table's prefix, a tail of the name
    // that starts after an underscore and fits one name only, or a number (decimal or
    // 0x hex, negative allowed). Returns false when nothing matches.
    bool Lookup(const std::string &text, long long *value) const;
    // The full name of a value, or "" when the table has none.
    const char *Name(long long value) const;
    // "name (value)" or just the value when unnamed.
    std::string Describe(long long value) const;
    // Whether the number is one of the table's values.
    bool Has(long long value) const { return Name(value)[0] != '\0'; }
    // Every name, comma separated (for error messages).
    std::string List() const;

  private:
    const NamedValue *entries_;
    size_t count_;
    const char *prefix_;
};

// Parses an integer (decimal, 0x hex, optional sign, values up to 0xFFFFFFFF) that
// fills the whole text.
bool ParseInteger(const std::string &text, long long *value);

extern const NameTable kCommands;     // platform command identifiers
extern const NameTable kEvents;       // kernel event types
extern const NameTable kReportIds;    // report-status identifiers of the status items
extern const NameTable kMsgTypes;     // recv_msg types
extern const NameTable kRuntimeTypes; // get_runtime_info types
extern const NameTable kResultCodes;  // the module's result codes
extern const NameTable kShadowTypes;  // shadow value types

} // namespace sim
