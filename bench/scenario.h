// The measured operations, shared by the Google Benchmark program and the callgrind
// driver so that both time exactly the same code.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace special_bench {

struct Scenario {
    std::string name;            // "group/item", e.g. "command/KeyValue"
    std::string floor;           // the scenario it is compared with; "" when none
    double goal;                 // largest accepted ratio to the floor; 0 when none
    std::function<void()> setup; // once, before the first operation
    std::function<void()> op;    // one operation
};

// Every scenario, in registration order (each *_scenarios.cpp adds its own at load).
std::vector<Scenario> &Scenarios();
int AddScenario(Scenario s);
const Scenario *FindScenario(const std::string &name);

} // namespace special_bench
