// The scenario list.
#include "scenario.h"

namespace special_bench {

std::vector<Scenario> &Scenarios() {
    static std::vector<Scenario> all;
    return all;
}

int AddScenario(Scenario s) {
    Scenarios().push_back(std::move(s));
    return 0;
}

const Scenario *FindScenario(const std::string &name) {
    for (const Scenario &s : Scenarios()) {
        if (s.name == name) {
            return &s;
        }
    }
    return nullptr;
}

} // namespace special_bench
