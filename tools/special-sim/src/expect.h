// Checks a run's JSON Lines against an expectation file: every line must parse as a
// JSON object with a "kind", and every expectation must match at least one line.
//
// An expectation is a line "KIND COND...", where COND is "path=value" (the member's
// text equals value; numbers compare as written by the transcript, e.g. 18830) or
// "path~text" (the member's text contains text). Paths may reach into records
// ("record.mode=2"). Words with blanks are "double quoted"; "#" starts a comment line.
#pragma once

#include <string>
#include <vector>

namespace sim {

// Returns the problems found, each "where: what" (empty: all is well).
std::vector<std::string> CheckExpectations(const std::vector<std::string> &json_lines,
                                           const std::string &expect_text, const std::string &expect_file);

} // namespace sim
