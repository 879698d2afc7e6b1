// One platform command per row: what to inject, how the application answers, and what
// must come out (the record delivered, the answer paired by sequence number, the reports
// forced, a log line). Each command family instantiates Command with its own table.
#pragma once

#include <set>

#include "noltDevSDK_special_protocol.h"
#include "special_fixture.h"

namespace special_test {

using Bytes = std::vector<unsigned char>;

template <class T> Bytes Rec(const T &record) {
    const unsigned char *p = reinterpret_cast<const unsigned char *>(&record);
    return Bytes(p, p + sizeof record);
}

struct CommandCase {
    int command;
    std::string body;
    int type = -1;          // the record delivered; -1: nothing
    Bytes record{};         // its bytes
    std::set<int> forced{}; // reports forced
    const char *result = 0; // the answer's "Result"; 0: no XML answer expected
    int recv_rc = 0;        // what recv_msg answers
    bool callbacks = true;  // false: the application gave none
    const char *log = 0;    // a line logged at level 1
    std::string json{};     // the answer as JSON, printed unformatted
    std::string info{};     // the answer's "Info" "Index"
    int runtime_rc = 0;     // what get_runtime_info answers for the plan
};

void PrintTo(const CommandCase &c, std::ostream *os);

// The current plan the application reports (channel 9, enable 5, one segment).
noltDevSDK_special_plan CurrentPlan();

class Command : public SpecialFixture, public ::testing::WithParamInterface<CommandCase> {
  protected:
    void SetUp() override;
    // Runs one poll and returns the ids whose report was forced.
    std::set<int> PollForced();
};

} // namespace special_test
