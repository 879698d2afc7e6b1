// The shared body of every command table: inject through the kernel, then check the
// delivery, the answer, the forced reports and the log. Forced reports are seen through
// recording items that stand in for the module's status items.
#include <mutex>

#include "command_test.h"
#include "noltDevSDK_report_status.h"

namespace special_test {

namespace {

// Above INT_MAX, so that it must survive every trip through the request.
constexpr uint32_t kSeq = 4000000000u;

std::mutex g_mu;
std::set<int> g_forced;

template <int Id> int RecordReport(int b_force) {
    std::lock_guard<std::mutex> lock(g_mu);
    if (b_force) {
        g_forced.insert(Id);
    }
    return 0;
}

template <int... Ids> void RegisterProbes() {
    noltDevSDK_report_status_info info = {};
    info.status_is_changed = [] { return 0; }; // only forced reports reach the probes
    for (auto probe : {std::make_pair(Ids, &RecordReport<Ids>)...}) {
        info.status_value = probe.first;
        info.report_status = probe.second;
        noltDevSDK_report_status_register(&info);
    }
}

} // namespace

// Names a row in test names: command, what the application answers, body size.
void PrintTo(const CommandCase &c, std::ostream *os) {
    *os << c.command << "_rc" << c.recv_rc << (c.callbacks ? "" : "_nocb") << "_rt" << c.runtime_rc << "_"
        << c.body.size();
}

noltDevSDK_special_plan CurrentPlan() {
    noltDevSDK_special_plan plan;
    std::memset(&plan, 0, sizeof plan);
    plan.channel = 9;
    plan.enable_plan = 5;
    plan.special_work_mode_plan.time[0][0].mode = 1;
    plan.special_work_mode_plan.time[0][0].end = 60;
    return plan;
}

void Command::SetUp() {
    SpecialFixture::SetUp();
    ASSERT_EQ(0, Init(GetParam().callbacks));
    RegisterProbes<31, 32, 33, 36, 37, 38, 39, 40, 42, 45, 92, 96, 101, 102, 103, 104, 105, 118, 119, 122,
                   123, 124>();
    SetRecvResult(GetParam().recv_rc);
    SetRuntime(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN, CurrentPlan());
    if (GetParam().runtime_rc != 0) {
        SetRuntimeError(NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN, GetParam().runtime_rc);
    }
}

std::set<int> Command::PollForced() {
    std::unique_lock<std::mutex> lock(g_mu);
    g_forced.clear();
    lock.unlock(); // the poll calls the probes, which take the lock
    Poll();
    lock.lock();
    return g_forced;
}

TEST_P(Command, DeliversAnswersAndForcesAsTheCommandDoes) {
    const CommandCase &c = GetParam();
    ASSERT_EQ(0, Inject(c.command, kSeq, c.body));
    if (c.result != nullptr || !c.json.empty()) {
        ASSERT_TRUE(WaitForSent(1)); // the custom-voice worker answers on its own thread
        Sent answer = SentMessages().at(0);
        EXPECT_EQ(
            std::make_tuple(uint32_t(c.command + 1), kSeq, uint8_t(1), std::string(c.result ? c.result : "")),
            std::make_tuple(answer.command, answer.seq, answer.response, answer.Text("Response/Result")));
        EXPECT_EQ(c.info, answer.Attr("Response/Info", "Index"));
        if (!c.json.empty()) {
            ASSERT_TRUE(answer.json) << answer.body;
            char *printed = cJSON_PrintUnformatted(answer.json.get());
            EXPECT_EQ(c.json, std::string(printed));
            cJSON_free(printed);
        }
    } else {
        EXPECT_EQ(0u, SentCount());
    }
    std::vector<Delivery> d = Deliveries();
    ASSERT_EQ(c.type < 0 ? 0u : 1u, d.size());
    if (c.type >= 0) {
        EXPECT_EQ(std::make_pair(c.type, c.record), std::make_pair(d[0].type, d[0].bytes));
    }
    EXPECT_EQ(c.forced, PollForced());
    if (c.log != nullptr) {
        EXPECT_TRUE(HasLog(1, c.log)) << c.log;
    }
}

} // namespace special_test
