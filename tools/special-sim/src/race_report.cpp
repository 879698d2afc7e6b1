// The data race report reader (see race_report.h). A report is a list of sections, each
// a two-space indented header line followed by frames ("    #N function file:line
// (module+0xoffset)"); clang adds a column to the line and " (BuildId: ...)" to each
// frame, and a symbol or file the symbolizer lacks is "<null>" (clang: "??" for a
// global's name).
#include "race_report.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <string_view>

#include "app_check.h"
#include "noltdev_host.h"

namespace sim {

namespace {

// The names the host SDK gives its threads, and what findings call them.
struct NamedThread {
    const char *name; // pthread_setname_np
    const char *role;
};
const NamedThread kNamedThreads[] = {
    {NOLTDEV_HOST_THREAD_KERNEL, kRoleKernel},
    {NOLTDEV_HOST_THREAD_REPORT, kRolePoller},
    {NOLTDEV_HOST_THREAD_SHADOW, kRoleShadow},
};
const char kRoleAppThread[] = "application's own thread";
const char kRoleModuleThread[] = "module thread";
// Frames that tell what a thread carries when its name does not: the module starts a
// thread per custom voice from its set-custom-voice handler (the handler shows on the
// "created by" stack, the worker's start function on its accesses), and a poll step runs
// the host SDK's poller on the scenario's own thread.
const char kVoiceHandler[] = "SpecialSetCustomVoice";
const char kPollerCode[] = "noltdev_host::ReportPoller::";

// The checker's functions between the module and the application, and the callback each
// is part of; every step is listed, so that a step the compiler folded into another still
// leaves one on the stack.
struct Shim {
    const char *function; // without the parameter list
    const char *callback;
};
const Shim kShims[] = {
    {"sim::AppChecker::RecvShim", "recv_msg"},
    {"sim::AppChecker::Recv", "recv_msg"},
    {"sim::AppChecker::RuntimeShim", "get_runtime_info"},
    {"sim::AppChecker::Runtime", "get_runtime_info"},
    {"sim::AppChecker::CallRuntime", "get_runtime_info"},
    {"sim::AppChecker::CallDeletion", "get_runtime_info"},
};

// What pthread_create and std::thread put on a "created by" stack above the creator.
const char *const kCreateMachinery[] = {"pthread_create", "__wrap_pthread_create", "__real_pthread_create",
                                        "__interceptor_pthread_create", "std::"};

const char kSeparator[] = "==================";
const char kWarning[] = "WARNING: ThreadSanitizer: ";
const char kDataRace[] = "data race";

bool Consume(std::string_view *text, std::string_view prefix) {
    if (text->substr(0, prefix.size()) != prefix) {
        return false;
    }
    text->remove_prefix(prefix.size());
    return true;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r' || text.back() == '\n')) {
        text.remove_suffix(1);
    }
    return text;
}

// A digit's value in base 16 (16 for any other character).
int DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : 16;
}

// Digits of `base` at the start of text (hexadecimal after "0x"), consumed; false when
// there are none. Overlong numbers wrap.
bool Number(std::string_view *text, int base, uint64_t *value) {
    if (base == 16 && !Consume(text, "0x")) {
        return false;
    }
    size_t n = 0;
    uint64_t v = 0;
    for (; n < text->size() && DigitValue((*text)[n]) < base; n++) {
        v = v * static_cast<uint64_t>(base) + static_cast<uint64_t>(DigitValue((*text)[n]));
    }
    if (n == 0) {
        return false;
    }
    text->remove_prefix(n);
    *value = v;
    return true;
}

std::string BaseName(std::string_view path) {
    size_t slash = path.rfind('/');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

// "main thread" or "thread T3" at the start of text, consumed, as "T0" or "T3".
std::string ThreadId(std::string_view *text) {
    if (Consume(text, "main thread")) {
        return "T0";
    }
    if (!Consume(text, "thread T")) {
        return "";
    }
    uint64_t n = 0;
    return Number(text, 10, &n) ? "T" + std::to_string(n) : "";
}

// Takes "(module+0xoffset)", or "(0xaddress)" outside any module, off the end of a frame.
void TakeModule(std::string_view *line, RaceFrame *frame) {
    size_t open = line->rfind(" (");
    if (line->empty() || line->back() != ')' || open == std::string_view::npos) {
        return;
    }
    std::string_view module = line->substr(open + 2, line->size() - open - 3);
    size_t plus = module.rfind('+');
    std::string_view offset = plus == std::string_view::npos ? module : module.substr(plus + 1);
    uint64_t value = 0;
    if (Number(&offset, 16, &value) && offset.empty()) {
        frame->module = std::string(module.substr(0, plus == std::string_view::npos ? 0 : plus));
        frame->offset = frame->module.empty() ? 0 : value;
        *line = line->substr(0, open);
    }
}

// "file:line" (gcc) or "file:line:column" (clang); "<null>" leaves both unknown.
void TakePlace(std::string_view place, RaceFrame *frame) {
    size_t cut = place.size();
    uint64_t numbers[2] = {0, 0};
    int count = 0;
    while (count < 2 && cut > 0) {
        size_t colon = place.rfind(':', cut - 1);
        std::string_view digits =
            colon == std::string_view::npos ? "" : place.substr(colon + 1, cut - colon - 1);
        if (colon == 0 || !Number(&digits, 10, &numbers[count]) || !digits.empty()) {
            break;
        }
        count++;
        cut = colon;
    }
    if (count > 0) {
        frame->file = std::string(place.substr(0, cut));
        frame->line = static_cast<int>(std::min<uint64_t>(numbers[count - 1], 1u << 30));
    }
}

// "#3 function file:line[:column] (module+0xoffset) (BuildId: ...)"; false when the line
// is not a frame. The function's name may hold spaces, the place never does.
bool ParseFrame(std::string_view line, RaceFrame *frame) {
    uint64_t index = 0;
    if (!Consume(&line, "#") || !Number(&line, 10, &index) || !Consume(&line, " ")) {
        return false;
    }
    *frame = RaceFrame{};
    line = line.substr(0, line.rfind(" (BuildId: "));
    TakeModule(&line, frame);
    size_t space = line.rfind(' ');
    std::string_view function = space == std::string_view::npos ? line : line.substr(0, space);
    if (function != "<null>" && function != "??") {
        frame->function = std::string(function);
    }
    if (space != std::string_view::npos) {
        TakePlace(line.substr(space + 1), frame);
    }
    return true;
}

// "[Previous ][atomic ]read|write of size N at 0xADDR by main thread|thread TN[ (mutexes: ...)]:";
// only the first word is capitalised ("Write", "Atomic read", "Previous atomic write").
bool ParseAccess(std::string_view line, bool *previous, RaceAccess *access) {
    std::string lowered(line);
    if (!lowered.empty() && lowered[0] >= 'A' && lowered[0] <= 'Z') {
        lowered[0] = static_cast<char>(lowered[0] - 'A' + 'a');
    }
    std::string_view text = lowered;
    *previous = Consume(&text, "previous ");
    access->atomic = Consume(&text, "atomic ");
    if (Consume(&text, "write")) {
        access->write = true;
    } else if (!Consume(&text, "read")) {
        return false;
    }
    uint64_t size = 0;
    if (!Consume(&text, " of size ") || !Number(&text, 10, &size) || !Consume(&text, " at ") ||
        !Number(&text, 16, &access->address) || !Consume(&text, " by ")) {
        return false;
    }
    access->size = static_cast<int>(std::min<uint64_t>(size, 1u << 30));
    access->thread = ThreadId(&text);
    return !access->thread.empty();
}

// The text after "Location is global '": "NAME' of size N at 0xSTART (module+0xoffset)";
// gcc names an unknown variable "<null>", clang "??".
void ParseGlobal(std::string_view text, RaceLocation *location, uint64_t *start) {
    size_t end = text.find("' ");
    if (end == std::string_view::npos) {
        return;
    }
    std::string_view name = text.substr(0, end);
    text.remove_prefix(end + 2);
    location->kind = RaceLocation::Kind::Global;
    if (name != "<null>" && name != "??") {
        location->name = std::string(name);
    }
    if (Consume(&text, "of size ")) {
        Number(&text, 10, &location->size);
        Consume(&text, " ");
    }
    if (Consume(&text, "at ")) {
        Number(&text, 16, start);
    }
    size_t open = text.find('('), close = text.rfind(')');
    if (location->name.empty() && open < close && close != std::string_view::npos) {
        location->module = std::string(text.substr(open + 1, close - open - 1));
    }
}

// The text after "Location is "; *start is where a global or heap block begins.
void ParseLocation(std::string_view text, RaceLocation *location, uint64_t *start) {
    if (Consume(&text, "global '")) {
        ParseGlobal(text, location, start);
    } else if (Consume(&text, "heap block of size ")) {
        location->kind = RaceLocation::Kind::Heap;
        Number(&text, 10, &location->size);
        if (Consume(&text, " at ")) {
            Number(&text, 16, start);
        }
    } else {
        bool stack = Consume(&text, "stack of ");
        if (stack || Consume(&text, "TLS of ")) {
            location->name = ThreadId(&text);
            location->kind = stack ? RaceLocation::Kind::Stack : RaceLocation::Kind::Tls;
        }
        location->kind = location->name.empty() ? RaceLocation::Kind::Address : location->kind;
    }
}

struct ThreadSection {
    std::string name;
    std::vector<RaceFrame> created; // where it was created
};

// One report as read, before its accesses are resolved.
struct Report {
    std::array<RaceAccess, 2> access; // the current access, the previous one
    std::array<std::vector<RaceFrame>, 2> stack;
    std::array<bool, 2> have = {false, false};
    RaceLocation location;
    bool located = false;
    uint64_t location_start = 0; // where the global or heap block begins
    std::map<std::string, ThreadSection> threads;
    bool summary = false;
};

// The text after "Thread ": "T3 'name' (tid=..., running) created by main thread at:".
void ParseThread(std::string_view text, Report *report, std::vector<RaceFrame> **frames) {
    uint64_t n = 0;
    if (!Consume(&text, "T") || !Number(&text, 10, &n)) {
        return;
    }
    ThreadSection &section = report->threads["T" + std::to_string(n)];
    if (Consume(&text, " '")) {
        size_t end = text.find("' (tid=");
        end = end == std::string_view::npos ? text.find('\'') : end;
        section.name = std::string(text.substr(0, end));
    }
    *frames = &section.created;
}

bool InRuntime(const RaceFrame &frame) {
    return StartsWith(frame.module, "libtsan") || StartsWith(frame.module, "libclang_rt") ||
           frame.file.find("libsanitizer/") != std::string::npos ||
           frame.file.find("compiler-rt/") != std::string::npos;
}

// The callback a frame of one of the checker's shims calls, "" for any other frame.
const char *CallbackOf(const RaceFrame &frame) {
    std::string_view name = frame.function;
    name = name.substr(0, name.find('('));
    for (const Shim &shim : kShims) {
        if (name == shim.function) {
            return shim.callback;
        }
    }
    return "";
}

// The index of the innermost frame that matches, or stack.size().
template <typename Match> size_t Find(const std::vector<RaceFrame> &stack, Match match) {
    size_t i = 0;
    while (i < stack.size() && !match(stack[i])) {
        i++;
    }
    return i;
}

bool Mentions(const std::vector<RaceFrame> &frames, const char *function) {
    for (const RaceFrame &f : frames) {
        if (f.function.find(function) != std::string::npos) {
            return true;
        }
    }
    return false;
}

class Resolver {
  public:
    explicit Resolver(const std::string &app_path) {
        names_.push_back(BaseName(app_path));
        if (char *real = realpath(app_path.c_str(), nullptr)) {
            names_.push_back(BaseName(real));
            free(real);
        }
    }

    bool InApp(const RaceFrame &frame) const {
        return !frame.module.empty() && std::find(names_.begin(), names_.end(), frame.module) != names_.end();
    }

    void Resolve(const Report &report, int which, RaceAccess *access) const {
        const std::vector<RaceFrame> &stack = report.stack[which];
        size_t chosen = Find(stack, [this](const RaceFrame &f) { return InApp(f); });
        access->in_app = chosen < stack.size();
        if (!access->in_app) {
            chosen = Find(stack, [](const RaceFrame &f) { return !InRuntime(f); });
        }
        access->frame = chosen < stack.size() ? stack[chosen] : RaceFrame{};
        for (size_t i = chosen; i < stack.size() && access->callback.empty(); i++) {
            access->callback = CallbackOf(stack[i]);
        }
        access->role = Role(report, access->thread, stack);
    }

  private:
    std::string Role(const Report &report, const std::string &thread,
                     const std::vector<RaceFrame> &stack) const {
        auto found = report.threads.find(thread);
        const ThreadSection *section = found == report.threads.end() ? nullptr : &found->second;
        std::string name = section ? section->name : "";
        for (const NamedThread &named : kNamedThreads) {
            if (name == named.name) {
                return named.role;
            }
        }
        std::string role = Carried(thread, section, stack);
        return name.empty() || role.empty() ? role : role + " '" + name + "'";
    }

    // What an unnamed thread is, told by the frames it shows; "" when nothing tells.
    std::string Carried(const std::string &thread, const ThreadSection *section,
                        const std::vector<RaceFrame> &stack) const {
        if (Mentions(stack, kVoiceHandler) || (section && Mentions(section->created, kVoiceHandler))) {
            return kRoleVoiceWorker;
        }
        if (Mentions(stack, kPollerCode)) {
            return kRolePoller;
        }
        if (thread == "T0") {
            return kRoleApplication;
        }
        if (section == nullptr) {
            return "";
        }
        return CreatedByApp(section->created) ? kRoleAppThread : kRoleModuleThread;
    }

    // Whether the innermost frame below the thread-creation machinery is the application's.
    bool CreatedByApp(const std::vector<RaceFrame> &created) const {
        for (const RaceFrame &frame : created) {
            bool machinery = InRuntime(frame);
            for (const char *m : kCreateMachinery) {
                machinery = machinery || StartsWith(frame.function, m);
            }
            if (!machinery) {
                return InApp(frame);
            }
        }
        return false;
    }

    std::vector<std::string> names_;
};

Race Finish(const Report &report, const Resolver &resolver) {
    Race race;
    race.current = report.access[0];
    race.previous = report.access[1];
    resolver.Resolve(report, 0, &race.current);
    resolver.Resolve(report, 1, &race.previous);
    race.location = report.location;
    uint64_t address = race.current.address, start = report.location_start;
    if (race.location.kind == RaceLocation::Kind::Global || race.location.kind == RaceLocation::Kind::Heap) {
        race.location.offset = address >= start ? address - start : 0;
    }
    race.involves_app = race.current.in_app || race.previous.in_app;
    race.complete = report.summary && report.have[1];
    return race;
}

std::string Key(const Race &race) {
    std::string a = race.current.frame.function + " " + FramePlace(race.current.frame);
    std::string b = race.previous.frame.function + " " + FramePlace(race.previous.frame);
    if (b < a) {
        std::swap(a, b);
    }
    return a + "\n" + b + "\n" + DescribeLocation(race.location, race.current.address);
}

std::string ThreadText(const std::string &thread) {
    return thread == "T0" ? "the main thread" : "thread " + thread;
}

std::string Hex(uint64_t value) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    do {
        out.insert(out.begin(), digits[value & 15]);
        value >>= 4;
    } while (value != 0);
    return "0x" + out;
}

// "recv_msg (kernel message thread T2)"; the main thread goes without its number.
std::string Who(const RaceAccess &access) {
    std::string thread = access.role.empty() ? "thread " + access.thread : access.role;
    if (!access.role.empty() && access.thread != "T0") {
        thread += " " + access.thread;
    }
    return access.callback.empty() ? thread : access.callback + " (" + thread + ")";
}

std::string Where(const RaceAccess &access) {
    std::string place = FramePlace(access.frame);
    if (place.empty() && access.frame.function.empty()) {
        return " at an unknown place";
    }
    return (place.empty() ? "" : " at " + place) +
           (access.frame.function.empty() ? "" : " in " + access.frame.function);
}

const char *Verb(const RaceAccess &access) {
    static const char *const verbs[2][2] = {{"reads", "writes"}, {"atomically reads", "atomically writes"}};
    return verbs[access.atomic][access.write];
}

// Reads a log line by line: each data race report into a Report, resolved into a Race
// when it ends (its closing line, the next report, or the end of the log).
class Reader {
  public:
    explicit Reader(const std::string &app_path) : resolver_(app_path) {}

    void Line(std::string_view line) {
        size_t warning = line.find(kWarning);
        if (warning != std::string_view::npos) {
            Add();
            in_race_ = StartsWith(line.substr(warning + sizeof kWarning - 1), kDataRace);
            return;
        }
        if (!in_race_) {
            return;
        }
        RaceFrame frame;
        if (ParseFrame(line, &frame)) {
            if (frames_ != nullptr) {
                frames_->push_back(frame);
            }
            return;
        }
        frames_ = nullptr;
        Section(line);
    }

    std::vector<Race> Done() {
        Add();
        return std::move(races_);
    }

  private:
    // A line that is not a frame: a section's header, the summary or the closing line.
    void Section(std::string_view line) {
        RaceAccess access;
        bool previous = false;
        std::string_view rest = line;
        if (ParseAccess(line, &previous, &access)) {
            int which = previous ? 1 : 0;
            if (!report_.have[which]) {
                report_.have[which] = true;
                report_.access[which] = access;
                frames_ = &report_.stack[which];
            }
        } else if (Consume(&rest, "Location is ")) {
            // gcc may add a second, emptier location; the first one holds
            if (!report_.located) {
                report_.located = true;
                ParseLocation(rest, &report_.location, &report_.location_start);
            }
        } else if (Consume(&rest, "Thread ")) {
            ParseThread(rest, &report_, &frames_);
        } else if (StartsWith(line, "SUMMARY: ThreadSanitizer:")) {
            report_.summary = true;
        } else if (line == kSeparator && report_.summary) {
            Add();
        }
    }

    // The report read so far, if it is a race with at least one access, then a fresh one.
    void Add() {
        if (in_race_ && report_.have[0]) {
            Race race = Finish(report_, resolver_);
            auto inserted = seen_.emplace(Key(race), races_.size());
            if (inserted.second) {
                races_.push_back(race);
            } else {
                races_[inserted.first->second].count++;
            }
        }
        report_ = Report{};
        frames_ = nullptr;
        in_race_ = false;
    }

    Resolver resolver_;
    std::vector<Race> races_;
    std::map<std::string, size_t> seen_; // Key() -> index in races_
    Report report_;
    bool in_race_ = false;
    std::vector<RaceFrame> *frames_ = nullptr; // where the frames now read belong
};

} // namespace

std::string FramePlace(const RaceFrame &frame) {
    if (!frame.file.empty() && frame.line > 0) {
        return BaseName(frame.file) + ":" + std::to_string(frame.line);
    }
    if (!frame.module.empty()) {
        return frame.module + "+" + Hex(frame.offset);
    }
    return "";
}

std::string DescribeLocation(const RaceLocation &location, uint64_t address) {
    switch (location.kind) {
    case RaceLocation::Kind::Global:
        if (location.name.empty()) {
            return "an unnamed global (" + (location.module.empty() ? Hex(address) : location.module) + ")";
        }
        return location.name + "+" + std::to_string(location.offset) + " (a global of " +
               std::to_string(location.size) + " bytes)";
    case RaceLocation::Kind::Heap:
        return "a heap block of " + std::to_string(location.size) + " bytes, offset " +
               std::to_string(location.offset);
    case RaceLocation::Kind::Stack:
        return "the stack of " + ThreadText(location.name);
    case RaceLocation::Kind::Tls:
        return "the thread-local storage of " + ThreadText(location.name);
    case RaceLocation::Kind::Address:
        break;
    }
    return "address " + Hex(address);
}

std::vector<Race> ParseRaces(const std::string &log, const std::string &app_path) {
    Reader reader(app_path);
    size_t pos = 0;
    while (pos < log.size()) {
        size_t end = std::min(log.find('\n', pos), log.size());
        reader.Line(Trim(std::string_view(log.data() + pos, end - pos)));
        pos = end + 1;
    }
    return reader.Done();
}

std::string DescribeRace(const Race &race) {
    const RaceAccess &a = race.current, &b = race.previous;
    std::string text = Who(a) + " " + Verb(a) + " " + std::to_string(a.size) + " bytes of " +
                       DescribeLocation(race.location, a.address) + Where(a);
    if (b.thread.empty()) {
        text += " while another access was not reported";
    } else {
        std::string what = b.size == a.size ? " them" : " " + std::to_string(b.size) + " bytes there";
        text += " while " + Who(b) + " " + Verb(b) + what + Where(b);
    }
    if (race.count > 1) {
        text += "; reported " + std::to_string(race.count) + " times";
    }
    if (!race.complete) {
        text += "; the report was cut short";
    }
    return text;
}

} // namespace sim
