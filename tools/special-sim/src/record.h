// --record: a run written down as a scenario and an expectation file, so that playing
// the scenario again with --expect checks the same answers and reports.
#pragma once

#include <string>
#include <vector>

namespace sim {

// Expectations pinning every callback's result and record and every message the
// device sent, from a run's JSON Lines.
std::string RecordExpectations(const std::vector<std::string> &json_lines);

// A word of an expectation or scenario line in "double quotes" (\" and \\ escaped).
std::string QuoteWord(const std::string &text);

// The expectation file written beside a recorded scenario ("a.scn" -> "a.expect").
std::string ExpectPathFor(const std::string &scenario_path);

} // namespace sim
