// Commands that reach an application without callbacks: nothing is delivered, the
// missing callbacks are logged, and the answer keeps what the frame prepared.
#include "command_test.h"

namespace special_test {
namespace {

CommandCase Without(int command, const std::string &body, const char *result) {
    return {command, body, -1, {}, {}, result, 0, false, "special domain cb is not init\n"};
}

INSTANTIATE_TEST_SUITE_P(
    WithoutCallbacks, Command,
    ::testing::Values(Without(kCenPlt2PuSetKeyValueReq,
                              Request("<Type>networkingMode</Type><Value>2</Value>"), "0"),
                      Without(kCenPlt2PuSetLinkageModeStatusReq, Request("<Enable>1</Enable>"), "0"),
                      Without(kCenPlt2PuSetDelaySleepReq, Request(R"(<Info Type="1" Channel="2"/>)"), "0"),
                      Without(kCenPlt2PuWakeReq, R"({"subserial":"S1"})", ""),
                      Without(kPu2CenPltQueryDevInfoByDomainRsp, Request("<Result>0</Result>"), nullptr),
                      Without(kPu2CenPltUnBindUserRsp, R"({"Result":0})", nullptr)));

} // namespace
} // namespace special_test
