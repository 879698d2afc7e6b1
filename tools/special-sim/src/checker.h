// The contract checker's rules: what an application hands back through its callbacks,
// measured against the public header's contract. Pure functions over a record and its
// field table, so that each rule can be tested without a module or an application.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "records.h"

namespace sim {

enum class Severity { Info, Warning, Error };

// "info", "warning", "error".
const char *SeverityName(Severity severity);

// The kinds of fault the checker finds, each with its own tag in the findings.
enum class FaultClass {
    Len,        // `len` handed back differs from the header's size
    Text,       // a text field without its terminator within its width
    Count,      // a count beyond the capacity of the array it describes
    Enum,       // a value outside its enumeration
    Calendar,   // a time that gmtime_r refuses
    Overrun,    // bytes written outside the record handed over
    Block,      // the type-9 block missing or smaller than its usNum says
    Slow,       // a callback that held its thread longer than the threshold
    Concurrent, // a callback entered while another one was running
    Race,       // two threads touched the same memory without order (ThreadSanitizer)
};

// "len", "text", "count", ... as findings and the CI script name them.
const char *FaultClassName(FaultClass fault);

// One rule broken in one field.
struct Issue {
    FaultClass fault;
    std::string path; // "plan.time[3][0].begin"
    std::string what;
    Severity severity;
};

// Checks every field of a record of len bytes that the application filled: texts
// terminated, counts within their arrays (open-ended arrays: within len), enumeration
// members, calendar values. Fields beyond len are not looked at.
void CheckFields(const RecordDesc &desc, const void *data, size_t len, std::vector<Issue> *issues);

// A copy of a record between two guard zones, for the application to write in.
class GuardedCopy {
  public:
    static constexpr size_t kGuard = 64;
    static constexpr unsigned char kCanary = 0xA5;

    GuardedCopy(const void *record, size_t len);
    void *Data() { return &buf_[kGuard]; }
    // Bytes changed in front of and behind the record (0, 0: none).
    void Damage(size_t *before, size_t *after) const;

  private:
    std::vector<unsigned char> buf_;
    size_t len_;
};

// The overrun issues of a guarded copy after the callback (record names the path).
// With the record's layout, the message names the field the first foreign byte lands in,
// or how far past the end of the record, after which field.
void CheckGuards(const GuardedCopy &copy, const std::string &record, size_t len, std::vector<Issue> *issues,
                 const RecordDesc *desc = nullptr);

// The field at a byte offset of a record ("voice_info[2].name"), or "" past its fields.
std::string FieldAt(const RecordDesc &desc, size_t offset);

// The type-9 block: present when the answer is 0, its allocation (usable size as the
// allocator reports it) large enough for its usNum; its len is not read.
void CheckDeletionBlock(const void *block, int len, size_t usable, std::vector<Issue> *issues);

} // namespace sim
