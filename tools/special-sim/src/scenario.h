// The scenario language: one command a line, "#" comment lines, and multi-line bodies
// written as "<<WORD" ... "WORD". A whole file is checked before anything runs; every
// bad line is reported as "file:line: reason".
#pragma once

#include <string>
#include <vector>

#include "device_state.h"

namespace sim {

struct StepRow;
struct CallRow;

struct Step {
    int line = 0;
    std::string text;              // the command line as written
    const StepRow *row = nullptr;  // what the step is (step_table.h)
    const CallRow *call = nullptr; // call: the application operation
    long long number = 0;          // command, event, report id, type, shadow type, ms, count, buffer size
    unsigned int seq = 0;
    int response = 0;
    int code = 0;      // Answer, fail
    int count = 0;     // fail: how many calls fail
    bool flag = false; // sleep/registered: on; answer: recv_msg (else get_runtime_info); shadow: deliver
    std::string arg;   // key, serial, group, code text, note
    std::string body;
    SetOp set;
};

struct Scenario {
    std::vector<Step> steps;
    std::vector<std::string> errors; // "file:line: reason"
};

Scenario ParseScenario(const std::string &text, const std::string &file);

// Splits a text into its lines (without the newlines).
std::vector<std::string> SplitLines(const std::string &text);

// Splits a line into words; "double quoted" words may hold blanks (\" and \\ escape).
// Returns false on an unterminated quote.
bool SplitWords(const std::string &line, std::vector<std::string> *words);

} // namespace sim
