// The host SDK's kernel: extensions, delivery, sending, the message thread, device
// state and its reset, the time helpers and the log hook.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "log_ctrl.h"
#include "noltDevSDK_Common_Module_Def.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_struct.h"

namespace {

constexpr int kDomain = 3999;

// What the loaded extension's callbacks saw.
struct Seen {
    std::mutex mu;
    int starts = 0;
    std::vector<std::string> bodies;
    std::vector<uint32_t> seqs;
    std::vector<int> events;
    std::thread::id thread; // of the last delivery
    bool terminated = true;
    const char *kept = nullptr; // the last body's pointer, kept beyond its call
};

class HostKernel : public ::testing::Test {
  protected:
    void SetUp() override {
        noltdev_host_kernel_reset();
        std::memset(&ext_, 0, sizeof ext_);
        ext_.domain_id = kDomain;
        ext_.pUser = &seen_;
        ext_.noltdev_sdk_kernel_extend_start = [](void *user) { ++static_cast<Seen *>(user)->starts; };
        ext_.noltdev_sdk_kernel_extend_data_route = [](noltdev_sdk_kernel_submsg *msg, void *user) {
            Seen *seen = static_cast<Seen *>(user);
            std::lock_guard<std::mutex> lock(seen->mu);
            const char *buf = static_cast<const char *>(msg->buf);
            seen->bodies.emplace_back(buf, msg->buf_len);
            seen->terminated = seen->terminated && buf[msg->buf_len] == '\0';
            seen->seqs.push_back(msg->msg_seq);
            seen->thread = std::this_thread::get_id();
            seen->kept = buf;
        };
        ext_.noltdev_sdk_kernel_extend_event = [](noltdev_sdk_kernel_event *event, void *user) {
            static_cast<Seen *>(user)->events.push_back(event->event_type);
        };
        ASSERT_EQ(0, noltdev_sdk_kernel_extend_load(&ext_));
    }
    void TearDown() override { noltdev_host_kernel_reset(); }

    Seen seen_;
    noltdev_sdk_kernel_extend ext_;
};

TEST_F(HostKernel, LoadsOncePerDomainAndResetRestoresDefaults) {
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_DOMAIN_EXIST, noltdev_sdk_kernel_extend_load(&ext_));
    EXPECT_EQ(1, seen_.starts);
    noltdev_host_set_extend_load_result(NOLTDEV_SDK_KERNEL_ERR_REFUSED);
    noltdev_sdk_kernel_extend other = ext_;
    other.domain_id = 7;
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_REFUSED, noltdev_sdk_kernel_extend_load(&other));
    EXPECT_EQ(1, seen_.starts);
    EXPECT_EQ(0, noltdev_host_domain_loaded(7));

    noltdev_host_set_serial("DS1234");
    noltdev_host_set_sleep(1);
    noltdev_host_set_registered(0);
    noltdev_timer_init();
    noltdev_host_set_redirect_result(-5);
    Common_redirect_pair pair = {18829, kDomain, "device_bell"};
    EXPECT_EQ(-5, noltDevSDK_Common_Module_RedirectReg(&pair)); // recorded all the same
    EXPECT_EQ(1, noltdev_host_redirect_count());
    EXPECT_STREQ("DS1234", noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial"));

    noltdev_host_kernel_reset();
    EXPECT_EQ(0, noltdev_host_domain_loaded(kDomain));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_inject(kDomain, 1, 0, "x", 1));
    EXPECT_STREQ("DS0000000000", noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial"));
    EXPECT_STREQ("", noltdev_sdk_kernel_getdevinfo_bykey("dev_serial"));
    EXPECT_EQ(0, noltdev_get_sleep_status());
    EXPECT_NE(0, noltdev_get_register_status());
    EXPECT_EQ(0, noltdev_host_timer_init_count());
    EXPECT_EQ(0, noltdev_host_redirect_count());
    EXPECT_EQ(0, noltDevSDK_Common_Module_RedirectReg(&pair));
    EXPECT_EQ(0, noltdev_sdk_kernel_extend_load(&other));
}

TEST_F(HostKernel, InjectAndEventsArriveAtOnceOnTheCallersThread) {
    EXPECT_EQ(0, noltdev_host_inject(kDomain, 0x490B, 42, "<a/>TAIL", 4));
    EXPECT_EQ(0, noltdev_host_inject(kDomain, 2, 43, nullptr, 0));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_host_inject(kDomain, 3, 44, nullptr, 5));
    EXPECT_EQ((std::vector<std::string>{"<a/>", ""}), seen_.bodies);
    EXPECT_EQ((std::vector<uint32_t>{42, 43}), seen_.seqs);
    EXPECT_TRUE(seen_.terminated);
    EXPECT_EQ(std::this_thread::get_id(), seen_.thread);

    EXPECT_EQ(0, noltdev_host_raise_event(kDomain, sdk_kernel_event_online));
    EXPECT_EQ(0, noltdev_host_raise_event(kDomain, sdk_kernel_event_reconnect_success));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_host_raise_event(kDomain, 99));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_raise_event(5, 0));
    EXPECT_EQ((std::vector<int>{0, 6}), seen_.events);
}

#if defined(__SANITIZE_ADDRESS__)
#define KEPT_BODY_IS_FREED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KEPT_BODY_IS_FREED 1
#endif
#endif

// A body is valid only during its call, whichever way it came: a kept pointer finds the
// fill afterwards or, under AddressSanitizer, a freed block.
TEST_F(HostKernel, ABodyKeptBeyondItsCallIsSpent) {
    const std::string body = "<Request><Value>1</Value></Request>";
    for (bool posted : {false, true}) {
        SCOPED_TRACE(posted ? "posted" : "injected");
        if (posted) {
            ASSERT_EQ(0, noltdev_host_msg_thread_start());
            ASSERT_EQ(0, noltdev_host_post(kDomain, 1, 0, body.data(), body.size()));
            noltdev_host_msg_thread_stop();
        } else {
            ASSERT_EQ(0, noltdev_host_inject(kDomain, 1, 0, body.data(), body.size()));
        }
        ASSERT_EQ(body, seen_.bodies.back());
        const char *kept = seen_.kept;
#ifdef KEPT_BODY_IS_FREED
        EXPECT_DEATH((void)*static_cast<const volatile char *>(kept), "heap-use-after-free");
#else
        EXPECT_EQ(std::string(body.size() + 1, static_cast<char>(NOLTDEV_HOST_SPENT_BODY_BYTE)),
                  std::string(kept, body.size() + 1));
#endif
    }
}

// A sink that records copies of what it is given and notices overlapping calls.
struct Captured {
    std::vector<std::string> bodies, versions;
    std::vector<uint32_t> seqs;
    int result = 0, inside = 0;
    bool overlapped = false;
    static int Sink(const noltdev_host_message *msg, void *user) {
        Captured *self = static_cast<Captured *>(user);
        self->overlapped = self->overlapped || ++self->inside != 1;
        self->bodies.emplace_back(msg->body);
        self->versions.emplace_back(msg->command_ver);
        self->seqs.push_back(msg->seq);
        --self->inside;
        return self->result;
    }
};

int Send(std::string body, uint32_t seq) {
    noltdev_sdk_kernel_pubmsg msg;
    std::memset(&msg, 0, sizeof msg);
    msg.msg_seq = seq;
    msg.msg_body = reinterpret_cast<unsigned char *>(&body[0]);
    msg.msg_body_len = static_cast<uint32_t>(body.size());
    std::memset(msg.command_ver, 'v', sizeof msg.command_ver); // unterminated: bounded by the field
    int rc = noltdev_sdk_kernel_send(&msg);
    body.assign(body.size(), '#'); // the sender reuses its buffer at once
    return rc;
}

// The link: down and up raise break and online and carry the registration status; while
// it is down sends fail and reach no sink; asking for the state it has changes nothing.
TEST_F(HostKernel, LinkDownFailsSendsAndItsChangesRaiseEvents) {
    Captured cap;
    noltdev_host_set_sink(Captured::Sink, &cap);
    const struct {
        int up, reached;
        std::vector<int> events;
        int registered, send;
    } steps[] = {
        {1, 0, {}, 1, 0},
        {0, 1, {sdk_kernel_event_break}, 0, NOLTDEV_SDK_KERNEL_ERR_SEND},
        {0, 0, {}, 0, NOLTDEV_SDK_KERNEL_ERR_SEND},
        {1, 1, {sdk_kernel_event_online}, 1, 0},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.up);
        seen_.events.clear();
        cap.bodies.clear();
        EXPECT_EQ(step.reached, noltdev_host_set_link(step.up));
        EXPECT_EQ(step.up, noltdev_host_link_up());
        EXPECT_EQ(step.events, seen_.events);
        EXPECT_EQ(step.registered, noltdev_get_register_status());
        EXPECT_EQ(step.send, Send("x", 1));
        EXPECT_EQ(step.send == 0 ? 1u : 0u, cap.bodies.size());
    }
    noltdev_host_set_link(0);
    noltdev_host_kernel_reset();
    EXPECT_EQ(1, noltdev_host_link_up());
}

// Answers sent later from other threads (the module's custom-voice workers) are waited
// for by count, per command, without sleeping; a reset starts the count again.
TEST_F(HostKernel, WaitSentCountsWhatOtherThreadsSend) {
    std::thread worker([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        Send("a", 1);
        Send("b", 2);
    });
    EXPECT_EQ(2, noltdev_host_wait_sent(0, 2, 10000));
    worker.join();
    EXPECT_EQ(2, noltdev_host_wait_sent(0, 3, 1)); // the time ran out: what was sent
    EXPECT_EQ(0, noltdev_host_wait_sent(7, 1, 0)); // another command
    noltdev_host_kernel_reset();
    EXPECT_EQ(0, noltdev_host_wait_sent(0, 1, 0));
}

TEST_F(HostKernel, SendHandsACopyToTheSinkAndAnswersItsResult) {
    EXPECT_EQ(0, Send("dropped", 1)); // no sink: accepted and dropped
    Captured cap;
    noltdev_host_set_sink(&Captured::Sink, &cap);
    for (int result : {0, int(NOLTDEV_SDK_KERNEL_ERR_SEND)}) {
        cap.result = result;
        EXPECT_EQ(result, Send("<Response/>", 9));
    }
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_sdk_kernel_send(nullptr));
    EXPECT_EQ((std::vector<std::string>{"<Response/>", "<Response/>"}), cap.bodies);
    EXPECT_EQ(std::string(32, 'v'), cap.versions[0]);
    EXPECT_EQ(9u, cap.seqs[0]);
}

TEST_F(HostKernel, ConcurrentSendsReachTheSinkOneAtATime) {
    Captured cap;
    noltdev_host_set_sink(&Captured::Sink, &cap);
    std::vector<std::thread> senders(4);
    for (std::thread &s : senders) {
        s = std::thread([] {
            for (uint32_t i = 0; i < 200; ++i) {
                Send(std::to_string(i), i);
            }
        });
    }
    for (std::thread &s : senders) {
        s.join();
    }
    EXPECT_EQ(800u, cap.bodies.size());
    EXPECT_FALSE(cap.overlapped);
}

TEST_F(HostKernel, MessageThreadDeliversInOrderOnItsOwnThread) {
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_REFUSED, noltdev_host_post(kDomain, 1, 0, "x", 1)); // not started
    ASSERT_EQ(0, noltdev_host_msg_thread_start());
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_post(8, 1, 0, "x", 1));
    std::vector<uint32_t> expected;
    for (uint32_t i = 0; i < 150; ++i) {
        ASSERT_EQ(0, noltdev_host_post(kDomain, 1, i, "x", 1));
        expected.push_back(i);
        if (i == 99) {
            noltdev_host_drain();
            std::lock_guard<std::mutex> lock(seen_.mu);
            EXPECT_EQ(expected, seen_.seqs);
        }
    }
    noltdev_host_msg_thread_stop(); // delivers what is queued first
    EXPECT_EQ(expected, seen_.seqs);
    EXPECT_NE(std::this_thread::get_id(), seen_.thread);
}

TEST(HostTime, TimeOfDayTextRoundTrips) {
    const std::vector<std::pair<const char *, int>> parsed = {
        {"07:30", 27000}, {"23:59", 86340}, {"07:30:15", 27015}, {"24:00", 86400}, {"24:01", 0}, {"7:30", 0},
        {"07:60", 0},     {"07:30:1", 0},   {"07-30", 0},        {"07:30 ", 0},    {"", 0},      {nullptr, 0},
    };
    for (const auto &c : parsed) {
        EXPECT_EQ(c.second, noltdev_ParseTimeHHMM(c.first)) << (c.first ? c.first : "NULL");
    }
    const std::vector<std::pair<time_t, const char *>> made = {
        {0, "00:00"},     {27000, "07:30"}, {27059, "07:30"},
        {86340, "23:59"}, {86400, "24:00"}, {86460, "00:01"},
    };
    for (const auto &c : made) {
        char buf[8];
        EXPECT_EQ(5, noltdev_MakeTimeString(c.first, buf, sizeof buf));
        EXPECT_EQ(5, noltdev_MakeTimeString(noltdev_ParseTimeHHMM(buf), buf, sizeof buf));
        EXPECT_STREQ(c.second, buf);
    }
    char small[5] = "xxxx";
    EXPECT_EQ(-1, noltdev_MakeTimeString(60, small, sizeof small));
    EXPECT_STREQ("", small);
}

TEST(HostTime, TimespecMinusMsSaturates) {
    const time_t big = sizeof(time_t) > 4 ? static_cast<time_t>(INT_MAX) * 1000 : INT_MAX;
    const std::vector<std::pair<std::pair<timespec, timespec>, int>> cases = {
        {{{5, 500000000}, {3, 0}}, 2500}, {{{3, 0}, {5, 500000000}}, -2500},
        {{{1, 0}, {0, 999999999}}, 0},    {{{big, 0}, {0, 0}}, INT_MAX},
        {{{0, 0}, {big, 0}}, INT_MIN},    {{{2147483, 648000000}, {0, 0}}, INT_MAX},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.second, noltdev_timespecMinusMs(&c.first.first, &c.first.second)) << c.first.first.tv_sec;
    }
}

TEST(HostLog, HookSeesEveryLineAsFormatted) {
    std::vector<std::pair<int, std::string>> lines;
    noltdev_host_set_log_level(0);
    noltdev_host_set_log_hook(
        [](int level, const char *line, void *user) {
            static_cast<std::vector<std::pair<int, std::string>> *>(user)->emplace_back(level, line);
        },
        &lines);
    const std::string long_text(5000, 'x'); // beyond the formatter's stack buffer
    noltdev_debug(LOG_ERROR, "R:%x\n", 0x490b);
    noltdev_debug(LOG_INFO, "%s|%d", long_text.c_str(), 7);
    noltdev_host_set_log_hook(nullptr, nullptr);
    noltdev_debug(LOG_ERROR, "after\n");
    noltdev_host_set_log_level(LOG_WARNING);
    const std::vector<std::pair<int, std::string>> expected = {{LOG_ERROR, "R:490b\n"},
                                                               {LOG_INFO, long_text + "|7"}};
    EXPECT_EQ(expected, lines);
}

TEST(HostLog, WantedWhenPrintedOrHooked) {
    struct Case {
        bool hook;
        int threshold, level, wanted;
    } cases[] = {
        {false, LOG_WARNING, LOG_ERROR, 1},
        {false, LOG_WARNING, LOG_WARNING, 1},
        {false, LOG_WARNING, LOG_INFO, 0},
        {false, 0, LOG_ERROR, 0},
        {true, 0, LOG_INFO, 1},
        {true, LOG_WARNING, LOG_INFO, 1},
    };
    const noltdev_host_log_hook_fn ignore = [](int, const char *, void *) {};
    for (const Case &c : cases) {
        noltdev_host_set_log_level(c.threshold);
        noltdev_host_set_log_hook(c.hook ? ignore : nullptr, nullptr);
        EXPECT_EQ(c.wanted, noltdev_debug_wanted(c.level)) << c.hook << " " << c.threshold << " " << c.level;
    }
    noltdev_host_set_log_hook(nullptr, nullptr);
    noltdev_host_set_log_level(LOG_WARNING);
}

} // namespace

// Process figures come from whole field names only: a prefix of a name is no field.
TEST(HostProcess, StatusFieldsByWholeName) {
    struct Row {
        const char *key;
        bool present;
    } rows[] = {{"Threads", true}, {"VmRSS", true},        {"VmHWM", true}, {"Vm", false},
                {"Thread", false}, {"NoSuchField", false}, {"", false}};
    for (const Row &row : rows) {
        EXPECT_EQ(row.present, noltdev_host_process_status(row.key) > 0) << row.key;
    }
    EXPECT_EQ(0, noltdev_host_process_status(nullptr));
    const long before = noltdev_host_process_status("Threads");
    std::thread worker([&] { EXPECT_GT(noltdev_host_process_status("Threads"), before); });
    worker.join();
}
