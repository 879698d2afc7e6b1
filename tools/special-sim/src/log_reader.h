// Reads a log the module wrote on a device: the platform commands it received ("R:%x"
// and the request document "xml: %s"), the messages it sent ("s:%x" and the document),
// the sleep drops, the kernel events and the lines that tell why a command's body is
// not there. Whatever stands before the module's text on a line (a kernel or syslog
// timestamp, a level tag, a thread id) is taken off first; lines that are not the
// module's are skipped.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sim {

// What the log holds of a received command's body.
enum class LogBody {
    Logged,   // the request document, as the module logged it
    ById,     // a command passed to the application raw: the module never logs its body
    NotUsed,  // a receipt the module ignores: no body needed
    Dropped,  // dropped while the device slept
    Missing,  // a framed command whose document line is absent (a log below level 4, or cut)
    Cut,      // the document line is cut short
    Unparsed, // the device could not parse it (the log holds no body)
};

// One thing the module did, in log order.
struct LogEntry {
    enum class Kind { Received, Sent, Event } kind = Kind::Received;
    int line = 0;         // 1-based line number in the log of the "R:", "s:" or event line
    uint32_t command = 0; // command identifier, or the event type
    LogBody body_state = LogBody::Missing;
    bool has_seq = false; // a received command: the sequence number was stamped in its document
    uint32_t seq = 0;
    bool has_body = false; // a sent message: its document was logged in full
    std::string body;
    double time = -1; // seconds from the line's timestamp, -1 without one
};

// A device log, read.
struct DeviceLog {
    std::vector<LogEntry> entries;
    std::string serial; // the device serial of the messages it sent, "" when none says
};

// Reads a whole log. Never fails: what is not understood is skipped. Memory is bounded
// by the size of the text (bodies are pieces of it).
DeviceLog ReadDeviceLog(const std::string &text);

// Why a received command cannot be replayed ("" when it can).
const char *LogBodyProblem(LogBody state);

} // namespace sim
