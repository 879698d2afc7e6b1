// Where a PC run departs from the device's log: the first answer or report the device
// sent that the run did not send alike (clock texts aside).
#pragma once

#include <string>
#include <vector>

#include "log_reader.h"

namespace sim {

struct Departure {
    bool found = false;
    int compared = 0; // the device's messages looked at
    std::string text; // the departure with both bodies and the device's log line, or a summary
};

// Compares the messages of the log that a replay sends again (ReplayedMessages) with the
// run's to_platform lines (its JSON Lines), each device message with an unused one of the
// same command and body; stops at the first that has none.
Departure FindDeparture(const DeviceLog &log, const std::string &log_name,
                        const std::vector<std::string> &json_lines);

} // namespace sim
