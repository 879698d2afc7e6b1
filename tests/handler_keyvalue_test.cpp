// The key-value settings: which record each name fills and which report it forces.
#include <climits>

#include "command_test.h"

namespace special_test {
namespace {

CommandCase KeyValue(const std::string &name, const std::string &value, int type = -1, Bytes want = {},
                     std::set<int> forced = {}, const char *log = nullptr) {
    std::string children = "<Value>" + value + "</Value><Type>" + name + "</Type>";
    return {kCenPlt2PuSetKeyValueReq, Request(children), type, want, forced, "0", 0, true, log};
}

const char kSpeaker[] = R"({"RingSwitch":1,"RingIndex":2,"IntelligentSwitch":3,"IntelligentIndex":4})";

// Values that are not JSON deliver and force nothing; names are case-sensitive; a missing
// value delivers nothing.
INSTANTIATE_TEST_SUITE_P(
    KeyValue, Command,
    ::testing::Values(
        KeyValue("batteryCameraWorkMode", "3", 16, Rec(noltDevSDK_special_battery_work_mode{3}), {96}),
        KeyValue("networkingMode", "2", 19, Rec(noltDevSDK_special_net_work_mode{2}), {119}),
        KeyValue("OneClickMute", "1", 20, Rec(noltDevSDK_special_one_click_mute{1}), {}),
        KeyValue("OneClickMute", "-3000000000", 20, Rec(noltDevSDK_special_one_click_mute{INT_MIN}), {}),
        KeyValue("device_bell", R"({"Volume":60})", 17, Rec(noltDevSDK_special_ring_type{0, 0, 60}), {103}),
        KeyValue("device_bell", R"({"Type":2,"CustomRingIndex":5,"Volume":"x"})", 17,
                 Rec(noltDevSDK_special_ring_type{2, 5, 0}), {103}),
        KeyValue("SpeakerConfig", kSpeaker, 21, Rec(noltDevSDK_special_speaker_config{1, 2, 3, 4}), {}),
        KeyValue("device_bell", "loud", -1, {}, {}, "[SpecialSetKeyValueReq] parse CustomRing fail\n"),
        KeyValue("SpeakerConfig", "{", -1, {}, {}, "[SpecialSetKeyValueReq] parse SpeakerConfig fail\n"),
        KeyValue("networkingmode", "2"),
        CommandCase{kCenPlt2PuSetKeyValueReq, Request("<Type>OneClickMute</Type>"), -1, {}, {}, "0"}));

} // namespace
} // namespace special_test
