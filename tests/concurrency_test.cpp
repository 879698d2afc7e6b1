// The module's threads at once: the kernel message thread delivering platform commands
// (each custom-voice command answered from a worker of its own), the report-status thread
// polling while another thread forces, polls and resets, and the application sending
// device requests. Under ThreadSanitizer this is the race check; in every build it checks
// that answers pair with their requests and that no device sequence number is handed out
// twice.
#include <atomic>
#include <map>
#include <set>
#include <thread>

#include "noltDevSDK_report_status.h"
#include "noltDevSDK_special_protocol.h"
#include "special_fixture.h"

namespace special_test {
namespace {

using ConcurrencyTest = SpecialFixture;

constexpr int kRounds = 40;
constexpr uint32_t kVoiceSeq = 1000, kSwitchSeq = 2000, kBellSeq = 3000;

void Post(int command, uint32_t seq, const std::string &body) {
    ASSERT_EQ(noltdev_host_post(kDomain, command, seq, body.data(), static_cast<uint32_t>(body.size())), 0);
}

// The platform: commands through the kernel's message thread, and connection events.
void PlayPlatform() {
    for (int i = 0; i < kRounds; ++i) {
        std::string n = std::to_string(i);
        Post(kCenPlt2PuSetCustomVoiceReq, kVoiceSeq + i,
             Request("<Info Index=\"" + n + "\" Type=\"1\" Name=\"v" + n + "\" Url=\"http://v.invalid/" + n +
                     "\"/>"));
        Post(kCenPlt2PuSetSwitchEnableReq, kSwitchSeq + i,
             Request("<Switch Type=\"614\" Enable=\"" + std::to_string(i % 2) + "\" Channel=\"0\"/>"));
        Post(kCenPlt2PuSetKeyValueReq, kBellSeq + i,
             Request("<Type>device_bell</Type><Value>{\"Volume\":" + n + "}</Value>"));
        Post(20000, 4000 + i, "raw " + n);
        if (i % 10 == 0) {
            noltdev_host_raise_event(kDomain, 0);
        }
    }
}

// Another service thread of the application: forces items and polls and resets on top
// of the polling thread.
void ForceAndReset() {
    const int ids[] = {31, 32, 33, 38, 40, 42, 45, 103, 118, 122};
    for (int i = 0; i < kRounds; ++i) {
        for (int id : ids) {
            noltDevSDK_report_set_force_report(id);
        }
        noltdev_host_report_poll();
        if (i % 8 == 0) {
            noltdev_host_report_reset_all();
        }
    }
}

// The application's own requests.
void SendRequests() {
    noltDevSDK_special_send_verification_code code;
    std::memset(&code, 0, sizeof code);
    std::strcpy(code.code, "123456");
    noltDevSDK_special_query_voddns_mapped_port domain;
    std::memset(&domain, 0, sizeof domain);
    std::strcpy(domain.domain, "d.example");
    noltDevSDK_special_4G_flow_info flow[2];
    std::memset(flow, 0, sizeof flow);
    noltDevSDK_special_4G_flow_info_page page = {2, flow};
    noltDevSDK_special_flow_counting_seg_count segs;
    std::memset(&segs, 0, sizeof segs);
    segs.seg_count = 2;
    for (int i = 0; i < kRounds; ++i) {
        noltDevSDK_special_msg msgs[] = {{NOLTDEVSDK_SPECIAL_UNBIND_USER, nullptr},
                                         {NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE, &code},
                                         {NOLTDEVSDK_SPECIAL_QUERY_VODDNS_MAPPED_PORT, &domain},
                                         {NOLTDEVSDK_SPECIAL_TRANS_4G_FLOW_INFO, &page}};
        for (noltDevSDK_special_msg &m : msgs) {
            EXPECT_EQ(noltDevSDK_special_send_msg(&m), 0);
        }
        EXPECT_EQ(noltDevSDK_special_report_flow_counting(&segs), 0);
        EXPECT_EQ(noltDevSDK_special_report_trusteeship(), 0);
    }
}

std::set<uint32_t> Range(uint32_t first) {
    std::set<uint32_t> out;
    for (int i = 0; i < kRounds; ++i) {
        out.insert(first + i);
    }
    return out;
}

TEST_F(ConcurrencyTest, KernelReportAndApplicationThreadsAtOnce) {
    std::atomic<int> flips{0};
    SetRuntimeHook(NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, [&](noltDevSDK_special_runtime_info *info) {
        static_cast<noltDevSDK_special_switch_enable *>(info->data)->enable = flips++ % 2;
        return 0;
    });
    noltDevSDK_special_custom_voice_infos voices;
    std::memset(&voices, 0, sizeof voices);
    voices.num = 1;
    SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS, voices);
    noltDevSDK_special_ring_type ring = {1, 2, 3};
    SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, ring);
    noltDevSDK_Trusteeship owner;
    std::memset(&owner, 0, sizeof owner);
    std::strcpy(owner.subserial, "DB0000000001");
    SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, owner);
    ASSERT_EQ(Init(), 0);
    ASSERT_EQ(noltdev_host_msg_thread_start(), 0);
    ASSERT_EQ(noltdev_host_report_start(1), 0);

    std::thread platform(PlayPlatform), service(ForceAndReset), application(SendRequests);
    platform.join();
    service.join();
    application.join();
    noltdev_host_drain();
    // every worker has answered before anything is torn down
    ASSERT_TRUE(WaitForCommand(kCenPlt2PuSetCustomVoiceRsp, kRounds, 30000)); // generous under valgrind
    noltdev_host_report_stop();
    noltdev_host_msg_thread_stop();

    std::map<uint32_t, std::set<uint32_t>> answers; // answer command -> sequence numbers
    std::multiset<uint32_t> numbered;               // device-numbered messages
    for (const Sent &s : SentMessages()) {
        if (s.response == 1) {
            EXPECT_TRUE(answers[s.command].insert(s.seq).second) << s.command << " answered twice: " << s.seq;
        } else if (s.seq != 0) {
            numbered.insert(s.seq);
        }
    }
    EXPECT_EQ(answers[kCenPlt2PuSetCustomVoiceRsp], Range(kVoiceSeq));
    EXPECT_EQ(answers[kCenPlt2PuSetSwitchEnableRsp], Range(kSwitchSeq));
    EXPECT_EQ(answers[kCenPlt2PuSetKeyValueRsp], Range(kBellSeq));
    EXPECT_EQ(std::set<uint32_t>(numbered.begin(), numbered.end()).size(), numbered.size())
        << "a device sequence number was handed out twice";

    size_t voices_delivered = 0, raw = 0;
    for (const Delivery &d : Deliveries()) {
        voices_delivered += d.type == NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE ? 1 : 0;
        raw += d.type == NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG ? 1 : 0;
    }
    EXPECT_EQ(voices_delivered, static_cast<size_t>(kRounds));
    EXPECT_EQ(raw, static_cast<size_t>(kRounds));
}

} // namespace
} // namespace special_test
