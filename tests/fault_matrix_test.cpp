// Every platform operation the host SDK can make fail, at every place the module calls
// it: the module gives its defined result and log line, does not crash or leak (the
// sanitizer and valgrind stages run this test too), and works again once the fault is
// lifted. The matrix of operation x site -> result is printed at the end.
#include <cstdio>
#include <functional>

#include "noltDevSDK_special_protocol.h"
#include "special_fixture.h"

namespace special_test {
namespace {

const std::string kVoice = R"(<Info Index="7" Type="2" CustomVoice="1" Url="http://v/1.mp3" Name="bell"/>)";
const std::string kWake = R"({"subserial":"SUB1"})";
const std::string kBell = R"(<Value>{"Type":1,"Volume":60}</Value><Type>device_bell</Type>)";
const std::string kDelete = R"([{"channel":1,"subserial":"S1","baseserial":"B1"}])";

class FaultMatrix;

// One cell: the operation, where the module reaches it, how the fault is armed, the flow
// that meets it (checking the defined result) and the flow that must work afterwards.
struct Cell {
    int op;
    const char *site;
    int skip;  // calls that succeed first
    int count; // failures in a row (-1: every call)
    const char *result;
    std::function<void(FaultMatrix &)> faulty;
    std::function<void(FaultMatrix &)> healthy;
};

class FaultMatrix : public SpecialFixture {
  public:
    using SpecialFixture::ClearSent;
    using SpecialFixture::Force;
    using SpecialFixture::HasLog;
    using SpecialFixture::Init;
    using SpecialFixture::Inject;
    using SpecialFixture::Poll;
    using SpecialFixture::RaiseEvent;
    using SpecialFixture::SentCount;
    using SpecialFixture::SentMessages;
    // Restarts the platform and the module for the next cell.
    void Fresh(bool init = true) {
        TearDown();
        SetUp();
        SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, noltDevSDK_Trusteeship{"BASE01"});
        if (init) {
            ASSERT_EQ(0, Init());
        }
        ClearLogs();
        ClearSent();
        Lifted();
    }
    // Forgets what the faulty flow delivered and sent.
    void Lifted() {
        ClearLogs();
        ClearSent();
        delivered_ = SpecialFixture::Deliveries().size();
    }
    // What recv_msg received since the cell began or its fault was lifted.
    size_t Delivered() { return SpecialFixture::Deliveries().size() - delivered_; }
    // Waits until op was asked at least n times (a worker thread reached it).
    bool WaitCalls(int op, int n) {
        return WaitUntil([&] { return noltdev_host_fault_calls(op) >= n; });
    }
    size_t Answers(uint32_t command) { return SentCount(command); }
    // Forces the trusteeship report and polls once, so that it goes out now.
    void ForceTrusteeship() {
        Force(NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP);
        Poll();
    }
    std::string AnswerResult(uint32_t command) {
        for (const Sent &s : SentMessages()) {
            if (s.command == command) {
                return s.Text("Response/Result");
            }
        }
        return "";
    }
    void Voice(uint32_t seq) { Inject(kCenPlt2PuSetCustomVoiceReq, seq, Request(kVoice)); }
    // A custom-voice request answered with result 0 and the request's sequence.
    void VoiceAnswered() {
        ClearSent();
        Voice(77);
        ASSERT_TRUE(WaitForCommand(kCenPlt2PuSetCustomVoiceRsp, 1));
        EXPECT_EQ(77u, SentMessages().back().seq);
        EXPECT_EQ("0", AnswerResult(kCenPlt2PuSetCustomVoiceRsp));
    }
    // A custom-voice request whose worker met the fault at its send: nothing answered.
    void VoiceSendDropped() {
        Voice(76);
        ASSERT_TRUE(WaitCalls(NOLTDEV_HOST_FAULT_KERNEL_SEND, 1));
        EXPECT_EQ(1u, Delivered());
        EXPECT_EQ(0u, Answers(kCenPlt2PuSetCustomVoiceRsp));
    }
    void WakeAnswered() {
        ClearSent();
        Inject(kCenPlt2PuWakeReq, 5, kWake);
        EXPECT_EQ(1u, Answers(kCenPlt2PuWakeRsp));
    }
    int VerificationCode() {
        noltDevSDK_special_send_verification_code code = {"123456"};
        noltDevSDK_special_msg msg = {NOLTDEVSDK_SPECIAL_SEND_VERIFICATION_CODE, &code};
        return noltDevSDK_special_send_msg(&msg);
    }
    int Deliver(const std::string &text) {
        return noltdev_host_shadow_deliver(kDomain, "Trusteeship", 4, text.c_str(),
                                           static_cast<int>(text.size()));
    }
    bool ShadowRegistered() {
        char out[64];
        return noltdev_host_shadow_read(kDomain, "Trusteeship", 0, out, sizeof out, nullptr, nullptr) != -1;
    }
    int Registered() { return noltdev_host_report_registered(nullptr, 0); }
    // Fini, then init on a restarted kernel (the module never unloads its domain, and
    // the kernel refuses a second load of it).
    void Restart() {
        EXPECT_EQ(0, noltDevSDK_special_fini());
        Fresh();
    }

  private:
    size_t delivered_ = 0;
};

const Cell kCells[] = {
    {NOLTDEV_HOST_FAULT_KERNEL_SEND, "platform request answer", 0, 1, "answer dropped, delivered",
     [](FaultMatrix &t) {
         t.Inject(kCenPlt2PuWakeReq, 5, kWake);
         EXPECT_EQ(1u, t.Delivered());
         EXPECT_EQ(0u, t.SentCount());
     },
     [](FaultMatrix &t) { t.WakeAnswered(); }},
    {NOLTDEV_HOST_FAULT_KERNEL_SEND, "custom-voice worker answer", 0, 1, "answer dropped, delivered",
     [](FaultMatrix &t) { t.VoiceSendDropped(); }, [](FaultMatrix &t) { t.VoiceAnswered(); }},
    {NOLTDEV_HOST_FAULT_KERNEL_SEND, "status report", 0, 1, "report lost, next force sends",
     [](FaultMatrix &t) {
         t.ForceTrusteeship();
         EXPECT_EQ(0u, t.SentCount());
     },
     [](FaultMatrix &t) {
         t.ForceTrusteeship();
         EXPECT_EQ(1u, t.Answers(kPu2CenPltReportTrusteeshipReq));
     }},
    {NOLTDEV_HOST_FAULT_KERNEL_SEND, "device request", 0, 1, "SEND_MSG_ERROR",
     [](FaultMatrix &t) { EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_SEND_MSG_ERROR, t.VerificationCode()); },
     [](FaultMatrix &t) { EXPECT_EQ(0, t.VerificationCode()); }},
    {NOLTDEV_HOST_FAULT_REDIRECT_REG, "init, every redirect", 0, -1, "init 0, 11 level-1 lines",
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Init());
         EXPECT_EQ(11, noltdev_host_fault_injected(NOLTDEV_HOST_FAULT_REDIRECT_REG));
         EXPECT_TRUE(t.HasLog(1, "special register 611 switch type error\n"));
         EXPECT_TRUE(t.HasLog(1, "special register key value error\n"));
     },
     [](FaultMatrix &t) {
         t.Restart();
         t.WakeAnswered();
     }},
    {NOLTDEV_HOST_FAULT_REDIRECT_REG, "init, third redirect", 2, 1, "init 0, one level-1 line",
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Init());
         EXPECT_TRUE(t.HasLog(1, "special register 613 switch type error\n"));
         EXPECT_FALSE(t.HasLog(1, "special register 611 switch type error\n"));
     },
     [](FaultMatrix &t) { t.Restart(); }},
    {NOLTDEV_HOST_FAULT_EXTEND_LOAD, "init", 0, 1, "INIT_FAIL, flag back to 0",
     [](FaultMatrix &t) {
         EXPECT_EQ(NOLTDEVSDK_SPECIAL_CODE_INIT_FAIL, t.Init());
         EXPECT_TRUE(t.HasLog(1, "microkernel load special doamin error\n"));
         EXPECT_EQ(0, noltdev_host_redirect_count());
     },
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Init());
         t.WakeAnswered();
     }},
    {NOLTDEV_HOST_FAULT_REPORT_REGISTER, "init, every item", 0, -1, "init 0, nothing registered",
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Init());
         EXPECT_EQ(0, t.Registered());
     },
     [](FaultMatrix &t) {
         t.Restart();
         EXPECT_EQ(22, t.Registered());
     }},
    {NOLTDEV_HOST_FAULT_REPORT_UNREGISTER, "fini, every item", 0, -1, "fini 0",
     [](FaultMatrix &) { EXPECT_EQ(0, noltDevSDK_special_fini()); },
     [](FaultMatrix &t) {
         t.Fresh();
         t.ForceTrusteeship();
         EXPECT_EQ(1u, t.Answers(kPu2CenPltReportTrusteeshipReq));
     }},
    {NOLTDEV_HOST_FAULT_REPORT_FORCE, "custom-voice worker", 0, 1, "answered 0, report not forced",
     [](FaultMatrix &t) { t.VoiceAnswered(); }, [](FaultMatrix &t) { t.VoiceAnswered(); }},
    {NOLTDEV_HOST_FAULT_REPORT_FORCE, "key-value bell", 0, 1, "answered 0",
     [](FaultMatrix &t) {
         t.Inject(kCenPlt2PuSetKeyValueReq, 3, Request(kBell));
         EXPECT_EQ("0", t.AnswerResult(kCenPlt2PuSetKeyValueRsp));
     },
     [](FaultMatrix &t) {
         t.Inject(kCenPlt2PuSetKeyValueReq, 4, Request(kBell));
         EXPECT_EQ(1, noltdev_host_fault_calls(NOLTDEV_HOST_FAULT_REPORT_FORCE));
     }},
    {NOLTDEV_HOST_FAULT_REPORT_FORCE, "online event", 0, -1, "event logged, nothing forced",
     [](FaultMatrix &t) {
         t.RaiseEvent(0);
         EXPECT_TRUE(t.HasLog(3, "special_extend_data_route_cb 0\n"));
         EXPECT_EQ(3, noltdev_host_fault_injected(NOLTDEV_HOST_FAULT_REPORT_FORCE));
     },
     [](FaultMatrix &t) {
         t.RaiseEvent(6);
         EXPECT_EQ(1, noltdev_host_fault_calls(NOLTDEV_HOST_FAULT_REPORT_FORCE));
     }},
    {NOLTDEV_HOST_FAULT_SHADOW_REGISTER, "init, second start", 1, 1, "init 0, level-3 line, registered",
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Init());
         EXPECT_TRUE(t.HasLog(1, "Failed to register special shadow service.\n"));
         EXPECT_TRUE(t.HasLog(3, "Special_Shadow_InitService  err\n"));
         EXPECT_TRUE(t.ShadowRegistered());
     },
     [](FaultMatrix &t) { t.Restart(); }},
    {NOLTDEV_HOST_FAULT_SHADOW_REGISTER, "init, both starts", 0, -1, "init 0, shadow unregistered",
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Init());
         EXPECT_FALSE(t.ShadowRegistered());
     },
     [](FaultMatrix &t) {
         t.Restart();
         EXPECT_TRUE(t.ShadowRegistered());
     }},
    {NOLTDEV_HOST_FAULT_SHADOW_DEREGISTER, "fini", 0, 1, "fini 0, level-1 line",
     [](FaultMatrix &t) {
         EXPECT_EQ(0, noltDevSDK_special_fini());
         EXPECT_TRUE(t.HasLog(1, "Failed to deregister special shadow service.\n"));
     },
     [](FaultMatrix &t) {
         t.Fresh();
         EXPECT_TRUE(t.ShadowRegistered());
     }},
    {NOLTDEV_HOST_FAULT_SHADOW_DELIVER, "trusteeship deletion", 0, 1, "value lost, not delivered",
     [](FaultMatrix &t) {
         EXPECT_EQ(-1, t.Deliver(kDelete));
         EXPECT_EQ(0u, t.Delivered());
     },
     [](FaultMatrix &t) {
         EXPECT_EQ(0, t.Deliver(kDelete));
         EXPECT_EQ(1u, t.Delivered());
     }},
    {NOLTDEV_HOST_FAULT_THREAD_CREATE, "custom-voice request", 0, 1, "level-1 line, no answer",
     [](FaultMatrix &t) {
         t.Voice(75);
         EXPECT_TRUE(t.HasLog(1, "pthread creaete error\n"));
         EXPECT_EQ(0u, t.Delivered());
         EXPECT_EQ(0u, t.SentCount());
     },
     [](FaultMatrix &t) { t.VoiceAnswered(); }},
    {NOLTDEV_HOST_FAULT_MALLOC, "custom-voice request", 0, 1, "no thread, no answer",
     [](FaultMatrix &t) {
         t.Voice(74);
         EXPECT_EQ(0, noltdev_host_fault_calls(NOLTDEV_HOST_FAULT_THREAD_CREATE));
         EXPECT_EQ(0u, t.SentCount());
     },
     [](FaultMatrix &t) { t.VoiceAnswered(); }},
    {NOLTDEV_HOST_FAULT_MALLOC, "trusteeship deletion", 0, 1, "-1, level-1 line",
     [](FaultMatrix &t) {
         EXPECT_EQ(-1, t.Deliver(kDelete));
         EXPECT_TRUE(t.HasLog(1, "Failed to calloc memory.\n"));
         EXPECT_EQ(0u, t.Delivered());
     },
     [](FaultMatrix &t) { EXPECT_EQ(0, t.Deliver(kDelete)); }},
    {NOLTDEV_HOST_FAULT_JSON_ALLOC, "key-value bell", 0, 1, "parse fail line, not delivered",
     [](FaultMatrix &t) {
         t.Inject(kCenPlt2PuSetKeyValueReq, 3, Request(kBell));
         EXPECT_TRUE(t.HasLog(1, "[SpecialSetKeyValueReq] parse CustomRing fail\n"));
         EXPECT_EQ(0u, t.Delivered());
     },
     [](FaultMatrix &t) {
         t.Inject(kCenPlt2PuSetKeyValueReq, 4, Request(kBell));
         EXPECT_EQ(1u, t.Delivered());
     }},
    {NOLTDEV_HOST_FAULT_JSON_ALLOC, "trusteeship report", 0, 1, "report lost, next force sends",
     [](FaultMatrix &t) {
         t.ForceTrusteeship();
         EXPECT_EQ(0u, t.SentCount());
     },
     [](FaultMatrix &t) {
         t.ForceTrusteeship();
         EXPECT_EQ(1u, t.SentCount());
     }},
};

// The sites where the fault meets an init or a fini run them themselves.
bool SiteIsLifecycle(const Cell &c) {
    return std::string(c.site).rfind("init", 0) == 0;
}

TEST_F(FaultMatrix, EveryOperationAtEverySite) {
    const ::testing::TestResult *results = ::testing::UnitTest::GetInstance()->current_test_info()->result();
    std::string matrix;
    bool covered[NOLTDEV_HOST_FAULT_COUNT] = {};
    for (const Cell &c : kCells) {
        const char *name = noltdev_host_fault_name(c.op);
        SCOPED_TRACE(std::string(name) + " x " + c.site);
        int before = results->total_part_count();
        Fresh(!SiteIsLifecycle(c));
        noltdev_host_fault_json_hooks(1);
        noltdev_host_fault_set(c.op, c.skip, c.count, 0, -1);
        c.faulty(*this);
        int injected = noltdev_host_fault_injected(c.op);
        EXPECT_GT(injected, 0) << "the flow never reached the operation";
        noltdev_host_fault_clear();
        Lifted();
        c.healthy(*this);
        ClearSent(); // the recorded answers hold their parsed JSON
        EXPECT_EQ(0, noltdev_host_fault_json_live()) << "JSON memory left behind";
        noltdev_host_fault_json_hooks(0);
        covered[c.op] = true;
        char line[200];
        std::snprintf(line, sizeof line, "%-18s x %-28s -> %-34s %s\n", name, c.site, c.result,
                      results->total_part_count() == before ? "ok" : "FAILED");
        matrix += line;
    }
    for (int op = 0; op < NOLTDEV_HOST_FAULT_COUNT; ++op) {
        EXPECT_TRUE(covered[op]) << noltdev_host_fault_name(op) << " has no cell";
    }
    std::printf("fault matrix: %zu cells, %d operations\n%s", sizeof kCells / sizeof kCells[0],
                static_cast<int>(NOLTDEV_HOST_FAULT_COUNT), matrix.c_str());
}

} // namespace
} // namespace special_test
