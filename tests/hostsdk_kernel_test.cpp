// The host SDK's kernel (extensions, delivery, sending, the message thread, device
// state, redirects), its time helpers and the debug log.
#include <gtest/gtest.h>

#include <atomic>
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

// A recording extension: what its callbacks saw, and on which thread.
struct Recorder {
    std::mutex mu;
    int starts = 0;
    std::vector<std::string> bodies;
    std::vector<int> commands;
    std::vector<uint32_t> seqs;
    std::vector<int> events;
    std::vector<std::thread::id> threads;
    bool terminated = true;

    static Recorder *&Current() {
        static Recorder *current = nullptr;
        return current;
    }
    static void Start(NOLTDEV_SDK_PTR user) { ++static_cast<Recorder *>(user)->starts; }
    static void Route(noltdev_sdk_kernel_submsg *msg, NOLTDEV_SDK_PTR user) {
        Recorder *self = static_cast<Recorder *>(user);
        std::lock_guard<std::mutex> lock(self->mu);
        const char *buf = static_cast<const char *>(msg->buf);
        self->bodies.emplace_back(buf, msg->buf_len);
        self->terminated = self->terminated && buf[msg->buf_len] == '\0';
        self->commands.push_back(msg->msg_command_id);
        self->seqs.push_back(msg->msg_seq);
        self->threads.push_back(std::this_thread::get_id());
    }
    static void Event(noltdev_sdk_kernel_event *event, NOLTDEV_SDK_PTR user) {
        Recorder *self = static_cast<Recorder *>(user);
        std::lock_guard<std::mutex> lock(self->mu);
        self->events.push_back(event->event_type);
    }
};

noltdev_sdk_kernel_extend MakeExtension(int domain, Recorder *rec) {
    noltdev_sdk_kernel_extend ext;
    std::memset(&ext, 0, sizeof ext);
    ext.domain_id = static_cast<NOLTDEV_SDK_UINT16>(domain);
    ext.noltdev_sdk_kernel_extend_start = &Recorder::Start;
    ext.noltdev_sdk_kernel_extend_data_route = &Recorder::Route;
    ext.noltdev_sdk_kernel_extend_event = &Recorder::Event;
    ext.pUser = rec;
    return ext;
}

class HostKernel : public ::testing::Test {
  protected:
    void SetUp() override {
        noltdev_host_kernel_reset();
        ext_ = MakeExtension(kDomain, &rec_);
        ASSERT_EQ(0, noltdev_sdk_kernel_extend_load(&ext_));
    }
    void TearDown() override { noltdev_host_kernel_reset(); }

    Recorder rec_;
    noltdev_sdk_kernel_extend ext_;
};

TEST_F(HostKernel, OneExtensionPerDomain) {
    EXPECT_EQ(1, rec_.starts);
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_DOMAIN_EXIST, noltdev_sdk_kernel_extend_load(&ext_));
    EXPECT_EQ(1, rec_.starts);
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_sdk_kernel_extend_load(nullptr));

    Recorder other;
    noltdev_sdk_kernel_extend refused = MakeExtension(7, &other);
    noltdev_host_set_extend_load_result(NOLTDEV_SDK_KERNEL_ERR_REFUSED);
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_REFUSED, noltdev_sdk_kernel_extend_load(&refused));
    EXPECT_EQ(0, other.starts);
    EXPECT_EQ(0, noltdev_host_domain_loaded(7));

    noltdev_host_kernel_reset();
    EXPECT_EQ(0, noltdev_host_domain_loaded(kDomain));
    EXPECT_EQ(0, noltdev_sdk_kernel_extend_load(&refused)); // the load result is back to 0
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_inject(kDomain, 1, 0, "x", 1));
}

TEST_F(HostKernel, InjectDeliversATerminatedCopyAtOnce) {
    const char body[] = "<a/>TAIL";
    EXPECT_EQ(0, noltdev_host_inject(kDomain, 0x490B, 42, body, 4));
    EXPECT_EQ(0, noltdev_host_inject(kDomain, 2, 43, nullptr, 0));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_host_inject(kDomain, 3, 44, nullptr, 5));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_inject(12, 3, 44, "x", 1));
    EXPECT_EQ((std::vector<std::string>{"<a/>", ""}), rec_.bodies);
    EXPECT_EQ((std::vector<int>{0x490B, 2}), rec_.commands);
    EXPECT_EQ((std::vector<uint32_t>{42, 43}), rec_.seqs);
    EXPECT_TRUE(rec_.terminated);
    EXPECT_EQ(std::this_thread::get_id(), rec_.threads.at(0));
}

TEST_F(HostKernel, EventsReachTheEventCallback) {
    for (int type : {sdk_kernel_event_online, sdk_kernel_event_reconnect_success}) {
        EXPECT_EQ(0, noltdev_host_raise_event(kDomain, type));
    }
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_host_raise_event(kDomain, 99));
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_raise_event(5, 0));
    EXPECT_EQ((std::vector<int>{0, 6}), rec_.events);
}

struct Captured {
    std::vector<noltdev_host_message> msgs;
    std::vector<std::string> bodies, versions;
    int result = 0;
    std::atomic<int> inside{0};
    bool overlapped = false;
    static int Sink(const noltdev_host_message *msg, void *user) {
        Captured *self = static_cast<Captured *>(user);
        self->overlapped = self->overlapped || self->inside.fetch_add(1) != 0;
        self->msgs.push_back(*msg);
        self->bodies.emplace_back(msg->body);
        self->versions.emplace_back(msg->command_ver);
        self->inside.fetch_sub(1);
        return self->result;
    }
};

noltdev_sdk_kernel_pubmsg MakeMessage(char *body, uint32_t seq) {
    noltdev_sdk_kernel_pubmsg msg;
    std::memset(&msg, 0, sizeof msg);
    msg.msg_response = 1;
    msg.msg_seq = seq;
    msg.msg_body = reinterpret_cast<unsigned char *>(body);
    msg.msg_body_len = static_cast<uint32_t>(std::strlen(body));
    msg.msg_domain_id = kDomain;
    msg.msg_command_id = 0x490C;
    std::memset(msg.command_ver, 'v', sizeof msg.command_ver); // unterminated: bounded by the field
    return msg;
}

TEST_F(HostKernel, SendCopiesTheMessageAndAnswersTheSinkResult) {
    char body[] = "<Response/>";
    noltdev_sdk_kernel_pubmsg msg = MakeMessage(body, 9);
    EXPECT_EQ(0, noltdev_sdk_kernel_send(&msg)); // no sink: accepted and dropped

    Captured cap;
    noltdev_host_set_sink(&Captured::Sink, &cap);
    for (int result : {0, int(NOLTDEV_SDK_KERNEL_ERR_SEND)}) {
        cap.result = result;
        EXPECT_EQ(result, noltdev_sdk_kernel_send(&msg));
    }
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_sdk_kernel_send(nullptr));
    msg.msg_body = nullptr;
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltdev_sdk_kernel_send(&msg));

    ASSERT_EQ(2u, cap.msgs.size());
    EXPECT_EQ("<Response/>", cap.bodies[0]);
    EXPECT_NE(static_cast<const void *>(body), static_cast<const void *>(cap.msgs[0].body));
    EXPECT_EQ(std::string(32, 'v'), cap.versions[0]);
    EXPECT_EQ(9u, cap.msgs[0].seq);
    EXPECT_EQ(1, cap.msgs[0].response);
    EXPECT_EQ(static_cast<uint32_t>(kDomain), cap.msgs[0].domain_id);
    EXPECT_EQ(0x490Cu, cap.msgs[0].command_id);
}

TEST_F(HostKernel, ConcurrentSendsReachTheSinkOneAtATime) {
    Captured cap;
    noltdev_host_set_sink(&Captured::Sink, &cap);
    std::vector<std::thread> senders;
    for (int t = 0; t < 4; ++t) {
        senders.emplace_back([t] {
            for (int i = 0; i < 200; ++i) {
                std::string text = "body " + std::to_string(t * 1000 + i);
                noltdev_sdk_kernel_pubmsg msg = MakeMessage(&text[0], static_cast<uint32_t>(i));
                noltdev_sdk_kernel_send(&msg);
            }
        });
    }
    for (std::thread &s : senders) {
        s.join();
    }
    EXPECT_EQ(800u, cap.msgs.size());
    EXPECT_FALSE(cap.overlapped);
}

TEST_F(HostKernel, MessageThreadDeliversInOrderOnItsOwnThread) {
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_REFUSED, noltdev_host_post(kDomain, 1, 0, "x", 1)); // not started
    ASSERT_EQ(0, noltdev_host_msg_thread_start());
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN, noltdev_host_post(8, 1, 0, "x", 1));
    for (uint32_t i = 0; i < 100; ++i) {
        std::string body = std::to_string(i);
        ASSERT_EQ(0, noltdev_host_post(kDomain, 1, i, body.data(), static_cast<uint32_t>(body.size())));
    }
    noltdev_host_drain();
    {
        std::lock_guard<std::mutex> lock(rec_.mu);
        ASSERT_EQ(100u, rec_.seqs.size());
        for (uint32_t i = 0; i < 100; ++i) {
            EXPECT_EQ(i, rec_.seqs[i]);
        }
        EXPECT_NE(std::this_thread::get_id(), rec_.threads.front());
    }
    for (uint32_t i = 100; i < 150; ++i) {
        ASSERT_EQ(0, noltdev_host_post(kDomain, 1, i, "x", 1));
    }
    noltdev_host_msg_thread_stop(); // delivers what is queued first
    EXPECT_EQ(150u, rec_.seqs.size());
    EXPECT_TRUE(rec_.terminated);
}

TEST_F(HostKernel, DeviceStateAndResetRestoreDefaults) {
    EXPECT_STREQ("DS0000000000", noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial"));
    const char *before = noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial");
    noltdev_host_set_serial("DS1234");
    EXPECT_STREQ("DS1234", noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial"));
    EXPECT_STREQ("DS0000000000", before); // earlier answers stay valid
    for (const char *key : {"dev_serial", "", (const char *)nullptr}) {
        EXPECT_STREQ("", noltdev_sdk_kernel_getdevinfo_bykey(key));
    }
    EXPECT_EQ(0, noltdev_get_sleep_status());
    EXPECT_NE(0, noltdev_get_register_status());
    noltdev_host_set_sleep(1);
    noltdev_host_set_registered(0);
    EXPECT_NE(0, noltdev_get_sleep_status());
    EXPECT_EQ(0, noltdev_get_register_status());
    EXPECT_EQ(0, noltdev_timer_init());
    EXPECT_EQ(1, noltdev_host_timer_init_count());

    Common_redirect_pair pair;
    std::memset(&pair, 0, sizeof pair);
    pair.command_id = 18829;
    pair.domain_id = kDomain;
    std::strcpy(pair.type, "device_bell");
    EXPECT_EQ(0, noltDevSDK_Common_Module_RedirectReg(&pair));
    noltdev_host_set_redirect_result(-5);
    EXPECT_EQ(-5, noltDevSDK_Common_Module_RedirectReg(&pair)); // recorded all the same
    EXPECT_EQ(NOLTDEV_SDK_KERNEL_ERR_PARAM, noltDevSDK_Common_Module_RedirectReg(nullptr));
    ASSERT_EQ(2, noltdev_host_redirect_count());
    uint32_t command = 0, domain = 0;
    char type[32];
    EXPECT_EQ(0, noltdev_host_redirect_get(1, &command, &domain, type));
    EXPECT_EQ(0, std::memcmp(pair.type, type, sizeof type));
    EXPECT_EQ(18829u, command);
    EXPECT_EQ(static_cast<uint32_t>(kDomain), domain);
    EXPECT_EQ(-1, noltdev_host_redirect_get(2, &command, &domain, type));

    noltdev_host_kernel_reset();
    EXPECT_STREQ("DS0000000000", noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial"));
    EXPECT_EQ(0, noltdev_get_sleep_status());
    EXPECT_NE(0, noltdev_get_register_status());
    EXPECT_EQ(0, noltdev_host_timer_init_count());
    EXPECT_EQ(0, noltdev_host_redirect_count());
    EXPECT_EQ(0, noltDevSDK_Common_Module_RedirectReg(&pair));
}

TEST(HostTime, ParseTimeHHMM) {
    const std::vector<std::pair<const char *, int>> cases = {
        {"07:30", 27000}, {"00:00", 0},  {"23:59", 86340}, {"07:30:15", 27015}, {"24:00", 86400},
        {"24:01", 0},     {"7:30", 0},   {"07:60", 0},     {"07:30:60", 0},     {"07:30:1", 0},
        {"07-30", 0},     {"07:30 ", 0}, {"", 0},          {nullptr, 0},        {"ab:cd", 0},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.second, noltdev_ParseTimeHHMM(c.first)) << (c.first ? c.first : "NULL");
    }
}

TEST(HostTime, MakeTimeStringRoundTrips) {
    const std::vector<std::pair<time_t, const char *>> cases = {
        {0, "00:00"},     {27000, "07:30"}, {27059, "07:30"},
        {86340, "23:59"}, {86400, "24:00"}, {86400 + 60, "00:01"},
    };
    for (const auto &c : cases) {
        char buf[8];
        EXPECT_EQ(5, noltdev_MakeTimeString(c.first, buf, sizeof buf));
        EXPECT_STREQ(c.second, buf);
        if (c.first % 60 == 0 && c.first <= 86400) {
            EXPECT_EQ(c.first, noltdev_ParseTimeHHMM(buf));
        }
    }
    char small[5] = "xxxx";
    EXPECT_EQ(-1, noltdev_MakeTimeString(60, small, sizeof small));
    EXPECT_STREQ("", small);
    EXPECT_EQ(-1, noltdev_MakeTimeString(60, nullptr, 8));
}

TEST(HostTime, TimespecMinusMsSaturates) {
    struct Case {
        timespec later, earlier;
        int ms;
    };
    const time_t big = sizeof(time_t) > 4 ? static_cast<time_t>(INT_MAX) * 1000 : INT_MAX;
    const std::vector<Case> cases = {
        {{5, 500000000}, {3, 0}, 2500},
        {{3, 0}, {5, 500000000}, -2500},
        {{1, 0}, {0, 999999999}, 0},
        {{2, 1000000}, {2, 0}, 1},
        {{big, 0}, {0, 0}, INT_MAX},
        {{0, 0}, {big, 0}, INT_MIN},
        {{2147483, 647000000}, {0, 0}, INT_MAX},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(c.ms, noltdev_timespecMinusMs(&c.later, &c.earlier))
            << c.later.tv_sec << " - " << c.earlier.tv_sec;
    }
    EXPECT_EQ(0, noltdev_timespecMinusMs(nullptr, &cases[0].earlier));
}

struct LogCapture {
    std::vector<std::pair<int, std::string>> lines;
    static void Hook(int level, const char *line, void *user) {
        static_cast<LogCapture *>(user)->lines.emplace_back(level, line);
    }
};

TEST(HostLog, HookSeesEveryLineAsFormatted) {
    LogCapture cap;
    noltdev_host_set_log_level(0);
    noltdev_host_set_log_hook(&LogCapture::Hook, &cap);
    noltdev_debug(LOG_ERROR, "R:%x\n", 0x490b);
    noltdev_debug(LOG_INFO, "\n%s\n", "<a/>");
    std::string long_text(5000, 'x');
    noltdev_debug(LOG_DEBUG, "%s|%d", long_text.c_str(), 7);
    noltdev_host_set_log_hook(nullptr, nullptr);
    noltdev_debug(LOG_ERROR, "after\n");
    noltdev_host_set_log_level(2);

    ASSERT_EQ(3u, cap.lines.size());
    EXPECT_EQ(std::make_pair(LOG_ERROR, std::string("R:490b\n")), cap.lines[0]);
    EXPECT_EQ(std::make_pair(LOG_INFO, std::string("\n<a/>\n")), cap.lines[1]);
    EXPECT_EQ(std::make_pair(LOG_DEBUG, long_text + "|7"), cap.lines[2]);
}

} // namespace
