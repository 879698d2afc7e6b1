// The simulator's command line: what each option sets, and the problem with a bad one.
#pragma once

#include <string>

#include "qualify.h"
#include "runner.h"

namespace sim {

struct Options {
    RunOptions run;
    bool json = false;
    bool qualify = false;
    bool help = false;    // -h or --help: print the usage, run nothing
    bool version = false; // --version: print the simulator's and the module's versions
    QualifyOptions qualify_options;
    std::string expect_file, scenario_file, record_file, junit_file;
    std::string from_log, out_name; // --from-log LOG: convert (and with --app replay) a device log
    bool keep_timing = false;       // --keep-timing: the gaps between the log's commands as waits
};

// Parses argv[1..argc-1] into *out, stopping at -h/--help; "" or the problem (bad usage).
std::string ParseOptions(int argc, char **argv, Options *out);

} // namespace sim
