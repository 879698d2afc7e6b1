// Linkage mode, delayed sleep, wake and drive-out.
#include "command_test.h"

namespace special_test {
namespace {

const std::string kLinkage = "<Pwd>ABCDEFGHIJKLMNOPQRST</Pwd><DevSerial>SERIAL0123456789XYZ</DevSerial>"
                             "<Time>30</Time><Enable>1</Enable>";

CommandCase Linkage(int recv_rc, std::set<int> forced) {
    noltDevSDK_linkage_mode_status want = {1, 30, "SERIAL012345678", "ABCDEFGHIJKLMNO"};
    return {kCenPlt2PuSetLinkageModeStatusReq, Request(kLinkage), 4, Rec(want), forced, "0", recv_rc};
}

CommandCase DelaySleep(const std::string &children, noltDevSDK_special_delay_sleep_type want) {
    return {kCenPlt2PuSetDelaySleepReq, Request(children), 2, Rec(want), {}, "0", 7};
}

// The answer says success with the delivered channel, whatever the application answered.
CommandCase DriveOut(const char *body, int type, Bytes want, const char *channel) {
    CommandCase c{kCenPlt2PuProwlDriveOutReq, body, type, want, {}, nullptr, -1};
    c.json = std::string(R"({"devSerial":"DS0000000000","channel":)") + channel +
             R"(,"resultCode":1,"resultMsg":"success"})";
    return c;
}

noltDevSDK_special_drive_out_radio_update Radio(int channel, const char *url) {
    noltDevSDK_special_drive_out_radio_update record = {channel, {}};
    std::strcpy(record.url, url);
    return record;
}

const char kTwoUrls[] = R"({"channel":3,"operType":2,"videoUrl":["http://a/1","http://a/2"]})";

// only an accepted linkage mode is reported at once
INSTANTIATE_TEST_SUITE_P(LinkageModeAndDelaySleep, Command,
                         ::testing::Values(Linkage(0, {39}), Linkage(7, {}),
                                           DelaySleep(R"(<X/><Info Type="1" Channel="2"/>)", {2, 1}),
                                           DelaySleep("", {0, 0})));

INSTANTIATE_TEST_SUITE_P(WakeAndDriveOut, Command,
                         ::testing::Values(CommandCase{kCenPlt2PuWakeReq,
                                                       R"({"subserial":"SUB0123456789ABCDEF"})",
                                                       5,
                                                       Rec(noltDevSDK_wake{"SUB0123456789AB"}),
                                                       {},
                                                       ""},
                                           CommandCase{kCenPlt2PuWakeReq, "subserial=SUB1", -1, {}, {}, ""},
                                           DriveOut(R"({"operType":1,"channel":4})", 14,
                                                    Rec(noltDevSDK_special_prowl_drive_out{4}), "4"),
                                           DriveOut(kTwoUrls, 15, Rec(Radio(3, "http://a/1")), "3"),
                                           DriveOut(R"({"operType":7,"channel":3})", -1, {}, "0")));

} // namespace
} // namespace special_test
