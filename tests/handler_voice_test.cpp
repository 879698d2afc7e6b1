// The custom-voice command, answered from its worker thread with the request's sequence.
#include "command_test.h"

namespace special_test {
namespace {

const std::string kName(100, 'n');
const std::string kInfo =
    R"(<Info Index="7" Type="2" CustomVoice="1" Url="http://v/1.mp3" Name=")" + kName + "\"/>";

CommandCase Voice(int recv_rc, const char *result) {
    noltDevSDK_special_operate_custom_voice want = {7, 2, {}, "http://v/1.mp3", 1};
    kName.copy(want.name, 63);
    CommandCase c{kCenPlt2PuSetCustomVoiceReq, Request(kInfo), 3, Rec(want), {38}, result, recv_rc};
    c.info = recv_rc == 0 ? "7" : ""; // "Info" only on success
    return c;
}

// "Info" only on success; an application code maps to the platform's, any other to 4.
INSTANTIATE_TEST_SUITE_P(
    CustomVoice, Command,
    ::testing::Values(Voice(0, "0"), Voice(NOLTDEVSDK_SPECIAL_CODE_VOICE_IS_BUSY, "1507330"), Voice(-1, "4"),
                      CommandCase{
                          kCenPlt2PuSetCustomVoiceReq, Request(kInfo), -1, {}, {}, "1052679", 0, false}));

} // namespace
} // namespace special_test
