// The scenario language: one command a line, "#" comment lines, and multi-line bodies
// written as "<<WORD" ... "WORD". A whole file is checked before anything runs; every
// bad line is reported as "file:line: reason".
#pragma once

#include <string>
#include <vector>

#include "device_state.h"

namespace sim {

enum class Op {
    Send,          // inject a platform command and wait until the device has handled it
    Post,          // inject a platform command and go on at once
    Event,         // raise a kernel event
    Sleep,         // sleep status on/off
    Registered,    // registration status on/off
    Serial,        // device serial
    ShadowDeliver, // deliver a shadow value from the platform
    ShadowRead,    // read a shadow key's current value
    Set,           // change the demo device's state
    Show,          // print the demo device's state
    Answer,        // make a callback answer a code for a type
    Call,          // an application operation
    Poll,          // run status polls
    Force,         // force a status report
    Reset,         // reset every status item
    Wait,          // wait for posted messages and answers, or a number of ms
    Note,          // a line of text for the reader of the transcript
    App,           // a request to the application's control hook (noltdev_app_control)
};

enum class CallKind { Unbind, VerificationCode, MappedPortQuery, Flow4G, FlowCount, Raw, TrusteeshipReport };

struct Step {
    int line = 0;
    std::string text; // the command line as written
    Op op = Op::Note;
    CallKind call = CallKind::Unbind;
    long long number = 0; // command, event, report id, type, shadow type, ms, count, buffer size
    unsigned int seq = 0;
    int response = 0;
    int code = 0;      // Answer
    bool flag = false; // Sleep/Registered: on; Answer: recv_msg (else get_runtime_info)
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
