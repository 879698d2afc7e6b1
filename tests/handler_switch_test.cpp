// Switch-enable and flow-counting configuration.
#include <climits>

#include "command_test.h"

namespace special_test {
namespace {

CommandCase Switch(const std::string &children, noltDevSDK_special_switch_enable want, int recv_rc = 0) {
    return {kCenPlt2PuSetSwitchEnableReq, Request(children), 1, Rec(want), {}, "0", recv_rc};
}

CommandCase Flow(const std::string &children, noltDevSDK_special_flow_counting_cfg want,
                 const char *result = "0", int recv_rc = 0) {
    return {kCenPlt2PuSetFollowCountInfoReq, Request(children), 0, Rec(want), {32}, result, recv_rc};
}

CommandCase NoCallbacks(int command, const char *result) {
    return {command, Request(""), -1, {}, {}, result, 0, false, "special domain cb is not init\n"};
}

const std::string kLine = R"(<Line X1="0.1" Y1="0.2" X2="0.3" Y2="0.4"/>)";
const std::string kDirection = R"(<Direction X1="1.5" Y1="-2" X2="3" Y2="4.25"/>)";
const noltDevSDK_special_flow_counting_cfg kFlowAll = {300, 30, 0.1f, 0.2f, 0.3f, 0.4f, 1.5f, -2, 3, 4.25f};

// A refused switch keeps the answer's result; a type outside the five gives an all-zero
// record, still delivered.
INSTANTIATE_TEST_SUITE_P(
    SwitchEnable, Command,
    ::testing::Values(Switch(R"(<Switch Type="15" Enable="1" Channel="2"/>)", {0, 2, 1}),
                      Switch(R"(<Switch Channel="3" Enable="1" Type="611"/>)", {4, 3, 1}, 7),
                      Switch(R"(<Switch Type="612" Enable="1" Channel="3"/>)", {0, 0, 0}),
                      Switch("", {0, 0, 0}),
                      // numbers beyond the int range saturate, as the device's C library reads them
                      Switch(R"(<Switch Type="15" Enable="3000000000" Channel="-99999999999"/>)",
                             {0, INT_MIN, INT_MAX}),
                      NoCallbacks(kCenPlt2PuSetSwitchEnableReq, "0")));

// A body that is not one well-formed document reaches no handler and is answered 3.
CommandCase NotWellFormed(const std::string &body) {
    return {kCenPlt2PuSetSwitchEnableReq, body, -1, {}, {}, "3"};
}

INSTANTIATE_TEST_SUITE_P(
    SwitchNotWellFormed, Command,
    ::testing::Values(NotWellFormed(Request(R"(<Switch Type="15" Enable="1" Channel="2"/>&)")),
                      NotWellFormed(Request(R"(<Switch Type="15" Enable="1" Channel="2">&nbsp;</Switch>)")),
                      NotWellFormed(Request(R"(<Switch Type="15" Type="611" Enable="1"/>)")),
                      NotWellFormed(Request(R"(<Switch Type="15" Enable="<1" Channel="2"/>)")),
                      NotWellFormed(Request(R"(<Switch Type="15"></Swich>)")),
                      NotWellFormed(Request("") + "<Request/>"), NotWellFormed("text" + Request("")),
                      NotWellFormed(Request(R"(<1Switch Type="15"/>)"))));

INSTANTIATE_TEST_SUITE_P(
    FlowCount, Command,
    ::testing::Values(
        Flow("<Position>30</Position>" + kLine + kDirection + "<Interval>5</Interval>", kFlowAll),
        Flow("<Interval>5</Interval>" + kDirection + kLine + "<Position>30</Position>", kFlowAll),
        Flow(kDirection, {0, 0, 0, 0, 0, 0, 1.5f, -2, 3, 4.25f}), Flow("", {}, "1052679", 7),
        Flow("<Position>3000000000</Position>", {0, INT_MAX, 0, 0, 0, 0, 0, 0, 0, 0}),
        NoCallbacks(kCenPlt2PuSetFollowCountInfoReq, "1052679")));

} // namespace
} // namespace special_test
