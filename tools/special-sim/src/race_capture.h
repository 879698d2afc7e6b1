// Where a row's ThreadSanitizer reports go: in a simulator built with ThreadSanitizer
// (the "sim-tsan" preset), each row's process writes its reports to a file of its own,
// which the qualification reads when the row has ended. Elsewhere nothing is captured.
#pragma once

#include <string>

#include <sys/types.h>

namespace sim {

// Whether this simulator was built with ThreadSanitizer.
bool RaceCheckBuilt();

// A directory for the rows' report files (made on the first call; "" when none could be
// made or races are not checked), removed by RemoveRaceDir.
const std::string &RaceDir();
void RemoveRaceDir();

// In a row's process: its reports go to RaceDir()/row.PID from here on.
void CaptureRaces();

// In the parent: what the row's process pid reported (its file removed), or "".
std::string TakeRaces(pid_t pid);

} // namespace sim
