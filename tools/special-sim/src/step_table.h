// The scenario's steps, one row each: the command word, how its line is parsed, how it
// runs, the role the scenario's thread plays while it runs and whether it needs the
// demo device. A new step is one more row in steps.cpp.
#pragma once

#include <string>

namespace sim {

class Cursor;
class Runner;
struct ParseContext;
struct Step;

// Reads the words after the command word into the step; "" or the reason it is wrong.
using StepParser = std::string (*)(Cursor &c, Step &s, ParseContext &ctx);
// Runs a checked step against the running simulation.
using StepExecutor = void (*)(Runner &run, const Step &s);

struct StepRow {
    const char *name; // the command word
    StepParser parse;
    StepExecutor run;
    const char *thread_role; // the scenario thread's role for the contract checker
    bool needs_demo;         // changes or shows the demo device: not run with an application
    bool echo;               // echoed into the transcript before what it causes
};

// The word of the step that repeats the steps after it for a while ("repeat MS").
extern const char kRepeatStep[];

// The row of a command word, or null.
const StepRow *FindStep(const std::string &name);

// An application operation of the "call" step: its word, its parser (after the word)
// and the call, which names what it called in `what` and returns its result.
struct CallRow {
    const char *name;
    StepParser parse;
    int (*run)(Runner &run, const Step &s, std::string *what);
};

// "call OPERATION ...": finds the operation's row (into s.call) and parses its words.
std::string ParseCall(Cursor &c, Step &s, ParseContext &ctx);

} // namespace sim
