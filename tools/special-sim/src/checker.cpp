// The contract checker's rules over one record (see checker.h).
#include "checker.h"

#include <cstring>
#include <ctime>

#include "noltDevSDK_special_def.h"

namespace sim {

namespace {

const unsigned char *At(const void *base, size_t offset) {
    return static_cast<const unsigned char *>(base) + offset;
}

void Add(std::vector<Issue> *issues, FaultClass fault, const std::string &path, const std::string &what) {
    issues->push_back(Issue{fault, path, what, Severity::Error});
}

void CheckRecordAt(const RecordDesc &desc, const unsigned char *data, size_t len, const std::string &prefix,
                   std::vector<Issue> *issues);

// The entries of an array field that lie within len, bounded by its count if it has one.
void CheckArray(const RecordDesc &desc, const FieldDesc &f, const unsigned char *data, size_t len,
                const std::string &path, std::vector<Issue> *issues) {
    size_t per_row = f.dim1 > 0 ? static_cast<size_t>(f.dim1) : 1;
    size_t declared = static_cast<size_t>(f.dim0) * per_row;
    size_t room = len > f.offset ? (len - f.offset) / f.size : 0;
    size_t capacity = declared < room ? declared : room;
    size_t used = capacity;
    const FieldDesc *counter = f.count ? FindField(desc, f.count) : nullptr;
    if (counter != nullptr && counter->offset + counter->size <= len) {
        long long n = ReadInteger(counter->kind, At(data, counter->offset));
        if (n < 0 || static_cast<size_t>(n) > capacity) {
            Add(issues, FaultClass::Count, path.substr(0, path.rfind('.') + 1) + counter->name,
                std::to_string(n) + " is beyond the " + std::to_string(capacity) + " entries of " + f.name);
            return;
        }
        used = static_cast<size_t>(n);
    }
    for (size_t i = 0; i < used; i++) {
        std::string index = f.dim1 > 0
                                ? "[" + std::to_string(i / per_row) + "][" + std::to_string(i % per_row) + "]"
                                : "[" + std::to_string(i) + "]";
        CheckRecordAt(*f.element, data + f.offset + i * f.size, f.size, path + index, issues);
    }
}

void CheckField(const RecordDesc &desc, const FieldDesc &f, const unsigned char *data, size_t len,
                const std::string &path, std::vector<Issue> *issues) {
    const unsigned char *p = At(data, f.offset);
    if (f.kind == Kind::Text && std::memchr(p, 0, f.size) == nullptr) {
        Add(issues, FaultClass::Text, path, "not terminated within its " + std::to_string(f.size) + " bytes");
    } else if (f.kind == Kind::Time) {
        time_t t;
        struct tm tm;
        std::memcpy(&t, p, sizeof t);
        if (gmtime_r(&t, &tm) == nullptr) {
            Add(issues, FaultClass::Calendar, path,
                std::to_string(static_cast<long long>(t)) + " is no calendar time (gmtime_r refuses it)");
        }
    } else if (f.kind == Kind::Int && f.members > 0) {
        long long v = ReadInteger(f.kind, p);
        if (v < 0 || v >= f.members) {
            Add(issues, FaultClass::Enum, path,
                std::to_string(v) + " is not a member (0 .. " + std::to_string(f.members - 1) + ")");
        }
    } else if (f.kind == Kind::Array && f.element != nullptr) {
        CheckArray(desc, f, data, len, path, issues);
    }
}

void CheckRecordAt(const RecordDesc &desc, const unsigned char *data, size_t len, const std::string &prefix,
                   std::vector<Issue> *issues) {
    for (const FieldDesc &f : desc.fields) {
        bool open_array = f.kind == Kind::Array;
        if (!open_array && f.offset + f.size > len) {
            continue;
        }
        CheckField(desc, f, data, len, prefix + "." + f.name, issues);
    }
}

} // namespace

const char *SeverityName(Severity severity) {
    static const char *const kNames[] = {"info", "warning", "error"};
    return kNames[static_cast<int>(severity)];
}

const char *FaultClassName(FaultClass fault) {
    static const char *const kNames[] = {"len",     "text",  "count", "enum",       "calendar",
                                         "overrun", "block", "slow",  "concurrent", "race"};
    return kNames[static_cast<int>(fault)];
}

void CheckFields(const RecordDesc &desc, const void *data, size_t len, std::vector<Issue> *issues) {
    CheckRecordAt(desc, static_cast<const unsigned char *>(data), len, desc.name, issues);
}

GuardedCopy::GuardedCopy(const void *record, size_t len) : buf_(len + 2 * kGuard, kCanary), len_(len) {
    if (record != nullptr && len > 0) {
        std::memcpy(&buf_[kGuard], record, len);
    }
}

void GuardedCopy::Damage(size_t *before, size_t *after) const {
    *before = 0;
    *after = 0;
    for (size_t i = 0; i < kGuard; i++) {
        if (buf_[i] != kCanary) {
            *before = kGuard - i; // the farthest byte in front that changed
            break;
        }
    }
    for (size_t i = kGuard; i > 0; i--) {
        if (buf_[kGuard + len_ + i - 1] != kCanary) {
            *after = i; // the farthest byte behind that changed
            break;
        }
    }
}

std::string FieldAt(const RecordDesc &desc, size_t offset) {
    for (const FieldDesc &f : desc.fields) {
        size_t count = f.kind == Kind::Array ? static_cast<size_t>(f.dim0) * (f.dim1 > 0 ? f.dim1 : 1) : 1;
        if (offset < f.offset || offset >= f.offset + f.size * count) {
            continue;
        }
        if (f.kind != Kind::Array) {
            return f.name;
        }
        size_t index = (offset - f.offset) / f.size;
        std::string at = std::string(f.name) + "[" +
                         (f.dim1 > 0 ? std::to_string(index / f.dim1) + "][" + std::to_string(index % f.dim1)
                                     : std::to_string(index)) +
                         "]";
        std::string inner = f.element ? FieldAt(*f.element, (offset - f.offset) % f.size) : "";
        return inner.empty() ? at : at + "." + inner;
    }
    return "";
}

// The field that ends last, which an overrun past the record follows.
std::string LastField(const RecordDesc &desc) {
    const FieldDesc *last = nullptr;
    for (const FieldDesc &f : desc.fields) {
        last = last == nullptr || f.offset > last->offset ? &f : last;
    }
    return last ? last->name : "";
}

void CheckGuards(const GuardedCopy &copy, const std::string &record, size_t len, std::vector<Issue> *issues,
                 const RecordDesc *desc) {
    size_t before = 0, after = 0;
    copy.Damage(&before, &after);
    if (after > 0) {
        // The first foreign byte is the one at len: inside the record's layout when the
        // module handed over less than the whole record (an open-ended list), else past it.
        std::string lands = desc == nullptr ? "" : FieldAt(*desc, len);
        std::string where = !lands.empty() ? "; the first foreign byte lands in " + lands
                            : desc != nullptr && len < desc->size
                                ? "; the first foreign byte lands in padding"
                            : desc != nullptr ? ", after " + LastField(*desc)
                                              : "";
        Add(issues, FaultClass::Overrun, record + "[+" + std::to_string(len) + "]",
            "written up to " + std::to_string(after) + " byte(s) past the end of the " + std::to_string(len) +
                "-byte record" + where);
    }
    if (before > 0) {
        Add(issues, FaultClass::Overrun, record + "[-" + std::to_string(before) + "]",
            "written up to " + std::to_string(before) + " byte(s) before the start of the record");
    }
}

// The len handed back with the block is not read by the module, so it is not checked:
// the block's own size is what counts.
void CheckDeletionBlock(const void *block, int /*len*/, size_t usable, std::vector<Issue> *issues) {
    const char *path = "DelTrusteeship_S";
    if (block == nullptr) {
        Add(issues, FaultClass::Block, path, "answer 0 without a block (data is null)");
        return;
    }
    size_t head = offsetof(noltDevSDK_Special_DelTrusteeship_S, astUnit);
    unsigned short units = static_cast<const noltDevSDK_Special_DelTrusteeship_S *>(block)->usNum;
    size_t need = head + units * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    if (usable < need) {
        Add(issues, FaultClass::Block, std::string(path) + ".usNum",
            std::to_string(units) + " units need " + std::to_string(need) + " bytes, the block has " +
                std::to_string(usable));
    }
}

} // namespace sim
