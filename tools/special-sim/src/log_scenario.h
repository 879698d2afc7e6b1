// A device log, read, written as a scenario and an expectation file: the commands the
// device received become the steps that send them again, the answers and reports it
// sent become the expectations of the replay.
#pragma once

#include <string>
#include <vector>

#include "log_reader.h"

namespace sim {

struct LogConversion {
    std::string scenario;
    std::string expectations;
    // the commands that cannot be replayed, each "LINE: NAME (N): why"
    std::vector<std::string> left_out;
    // the commands the scenario sends with the body the device got (or drops again)
    int replayable = 0;
};

// log_name names the log in the files' comments; keep_timing adds a "wait" for the gap
// between two commands whose lines carry timestamps.
LogConversion ConvertLog(const DeviceLog &log, const std::string &log_name, bool keep_timing);

// Whether a sent message is one a replay must send again: an answer to a command the
// scenario replays, or a status report (not a request the application made on its own,
// nor the answer to a command left out). One flag per entry of log.entries.
std::vector<bool> ReplayedMessages(const DeviceLog &log);

// Whether the device sends this command as an answer to one of the platform's.
bool AnswerCommand(uint32_t command);

// A body with its clock texts (the module's "YYYYMMDDhhmm") masked, so that two runs at
// different times compare equal.
std::string MaskClocks(const std::string &body);

} // namespace sim
