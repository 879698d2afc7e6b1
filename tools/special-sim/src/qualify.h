// --qualify: the suite of scenarios shipped with the simulator, run one by one against
// a user's application; one row per capability.
#pragma once

#include <string>
#include <vector>

#include "report.h"
#include "runner.h"

namespace sim {

// Runs every NN-name.scn of suite_dir in name order (its first line "# capability:
// TEXT" names the row; NN-name.expect beside it, when present, must hold). A row
// passes with no error or warning finding, every expectation met and every step
// exercised.
std::vector<QualifyRow> RunQualify(const std::string &suite_dir, const RunOptions &options,
                                   std::vector<Finding> *findings);

} // namespace sim
