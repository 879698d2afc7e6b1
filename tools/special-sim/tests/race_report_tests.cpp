// The ThreadSanitizer report reader: real reports of both runtimes (gcc 12's libtsan,
// clang 14's), trimmed to the frames that matter and the paths shortened.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "race_report.h"

namespace {

const char kApp[] = "/build/tools/special-sim/libsim_racy_app.so";

// clang: the simulator's own stacks; a poll step on the main thread reads what recv_msg
// wrote on the (then unnamed) kernel thread. Inlined frames carry no BuildId.
const char kClangSim[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=22052)
  Read of size 4 at 0x7fcec2c6d098 by main thread:
    #0 get_sound /src/examples/racy_app/racy_app.c:114:35 (libsim_racy_app.so+0x1694) (BuildId: 37c348f57e89)
    #1 on_get_runtime_info /src/examples/racy_app/racy_app.c:144:14 (libsim_racy_app.so+0x1694)
    #2 sim::AppChecker::CallRuntime(noltDevSDK_special_runtime_info*, std::vector<sim::Issue, std::allocator<sim::Issue> >*) /src/tools/special-sim/src/app_check.cpp:170:53 (special-sim+0xf15d1) (BuildId: 33f8d06effc2)
    #3 sim::AppChecker::Runtime(noltDevSDK_special_runtime_info*) /src/tools/special-sim/src/app_check.cpp:153:18 (special-sim+0xee4c1) (BuildId: 33f8d06effc2)
    #4 sim::AppChecker::RuntimeShim(noltDevSDK_special_runtime_info*) /src/tools/special-sim/src/app_check.cpp:117:23 (special-sim+0xedfbc) (BuildId: 33f8d06effc2)
    #5 SpecialAppRuntimeInfo(int, void**, unsigned long, char const*) /src/userpace/src/domain/special/app/special_app.cpp:69:20 (libnoltDevSDK_special.so.2+0x494b) (BuildId: 11cc4035065d)
    #10 noltdev_host::ReportPoller::RunPoll() /src/hostsdk/report_status/report_poller.cpp:59:50 (libnoltdev_report_status.so.2+0x4a8a) (BuildId: 39c1026e3ffe)
    #17 main /src/tools/special-sim/src/main.cpp:277:70 (special-sim+0xe84e7) (BuildId: 33f8d06effc2)

  Previous write of size 4 at 0x7fcec2c6d098 by thread T1 (mutexes: write M0):
    #0 set_sound /src/examples/racy_app/racy_app.c:55:27 (libsim_racy_app.so+0x1498) (BuildId: 37c348f57e89)
    #1 on_recv_msg /src/examples/racy_app/racy_app.c:84:9 (libsim_racy_app.so+0x1498)
    #2 sim::AppChecker::Recv(noltDevSDK_special_msg_to_dev*) /src/tools/special-sim/src/app_check.cpp:131:45 (special-sim+0xee0f7) (BuildId: 33f8d06effc2)
    #3 sim::AppChecker::RecvShim(noltDevSDK_special_msg_to_dev*) /src/tools/special-sim/src/app_check.cpp:113:23 (special-sim+0xedf6c) (BuildId: 33f8d06effc2)
    #11 (anonymous namespace)::Run() /src/hostsdk/kernel/kernel_msg_thread.cpp:44:9 (libnoltdev_kernel.so.2+0x8dd0) (BuildId: 008961cc8bdc)
    #17 <null> <null> (libstdc++.so.6+0xd44a2) (BuildId: 289ee39f8c07)

  Location is global 'g_sound' of size 28 at 0x7fcec2c6d098 (libsim_racy_app.so+0x4098)

  Mutex M0 (0x7fcec2de3348) created at:
    #0 pthread_mutex_lock <null> (special-sim+0x84b7a) (BuildId: 33f8d06effc2)
    #6 noltdev_host_raise_event /src/hostsdk/kernel/kernel_extend.cpp:136:12 (libnoltdev_kernel.so.2+0x7113)

  Thread T1 (tid=22054, running) created by main thread at:
    #0 pthread_create <null> (special-sim+0x66fed) (BuildId: 33f8d06effc2)
    #1 std::thread::_M_start_thread(std::unique_ptr<std::thread::_State, std::default_delete<std::thread::_State> >, void (*)()) <null> (libstdc++.so.6+0xd4578) (BuildId: 289ee39f8c07)
    #2 sim::Runner::Start() /src/tools/special-sim/src/runner.cpp:151:10 (special-sim+0x1473cd) (BuildId: 33f8d06effc2)

SUMMARY: ThreadSanitizer: data race /src/examples/racy_app/racy_app.c:114:35 in get_sound
==================
)";

// gcc: named threads, a field in the middle of a global struct.
const char kGccNamed[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=14557)
  Read of size 4 at 0x7f2eb7e8609c by thread T3:
    #0 on_get_runtime_info /src/racy_app.c:52 (libsim_racy_app.so+0x126a)
    #1 sim::AppChecker::RuntimeShim(noltDevSDK_special_runtime_info*) /src/app_check.cpp:117 (special-sim+0x137a)
    #2 poller /src/host.cpp:28 (special-sim+0x13c6)

  Previous write of size 4 at 0x7f2eb7e8609c by thread T2:
    #0 on_recv_msg /src/racy_app.c:31 (libsim_racy_app.so+0x1218)
    #1 sim::AppChecker::RecvShim(noltDevSDK_special_msg_to_dev*) /src/app_check.cpp:113 (special-sim+0x127a)
    #2 kernel /src/host.cpp:22 (special-sim+0x12c6)

  Location is global 'g_state' of size 24 at 0x7f2eb7e86090 (libsim_racy_app.so+0x409c)

  Thread T3 'report-status' (tid=14561, running) created by main thread at:
    #0 pthread_create ../../../../src/libsanitizer/tsan/tsan_interceptors_posix.cpp:1001 (libtsan.so.2+0x5e686)
    #1 main /src/host.cpp:41 (special-sim+0x156b)

  Thread T2 'kernel-msg' (tid=14560, running) created by main thread at:
    #0 pthread_create ../../../../src/libsanitizer/tsan/tsan_interceptors_posix.cpp:1001 (libtsan.so.2+0x5e686)
    #1 main /src/host.cpp:40 (special-sim+0x1552)

SUMMARY: ThreadSanitizer: data race /src/racy_app.c:52 in on_get_runtime_info
==================
)";

// gcc: a heap block the application allocated, written by a thread it started itself
// (unnamed, created from its start function).
const char kGccHeap[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=14557)
  Write of size 4 at 0x7b0c00000008 by thread T2:
    #0 on_recv_msg /src/racy_app.c:15 (libsim_racy_app.so+0x123a)
    #1 sim::AppChecker::RecvShim(noltDevSDK_special_msg_to_dev*) /src/app_check.cpp:113 (special-sim+0x127a)

  Previous write of size 4 at 0x7b0c00000008 by thread T1:
    #0 worker /src/racy_app.c:10 (libsim_racy_app.so+0x11d5)

  Location is heap block of size 40 at 0x7b0c00000000 allocated by main thread:
    #0 calloc ../../../../src/libsanitizer/tsan/tsan_interceptors_posix.cpp:667 (libtsan.so.2+0x3ee50)
    #1 app_start /src/racy_app.c:23 (libsim_racy_app.so+0x12db)

  Thread T2 'kernel-msg' (tid=14560, running) created by main thread at:
    #0 pthread_create ../../../../src/libsanitizer/tsan/tsan_interceptors_posix.cpp:1001 (libtsan.so.2+0x5e686)
    #1 main /src/host.cpp:40 (special-sim+0x1552)

  Thread T1 (tid=14559, finished) created by main thread at:
    #0 pthread_create ../../../../src/libsanitizer/tsan/tsan_interceptors_posix.cpp:1001 (libtsan.so.2+0x5e686)
    #1 app_start /src/racy_app.c:24 (libsim_racy_app.so+0x130e)
    #2 main /src/host.cpp:38 (special-sim+0x14fe)

SUMMARY: ThreadSanitizer: data race /src/racy_app.c:15 in on_recv_msg
==================
)";

// clang: two custom-voice workers the module started, both in recv_msg.
const char kClangVoice[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=22258)
  Write of size 4 at 0x7f29150541ec by thread T3:
    #0 on_recv_msg /src/voice_app.c:70:79 (libsim_racy_app.so+0x12ee) (BuildId: cb76c077ecb9)
    #1 sim::AppChecker::Recv(noltDevSDK_special_msg_to_dev*) /src/app_check.cpp:131:45 (special-sim+0xee0f7) (BuildId: 33f8d06effc2)
    #4 SpecialSetCustomVoiceRsp(void*) /src/special_handler_voice.cpp:95:18 (libnoltDevSDK_special.so.2+0x6dae) (BuildId: 11cc4035065d)

  Previous write of size 4 at 0x7f29150541ec by thread T2:
    #0 on_recv_msg /src/voice_app.c:70:79 (libsim_racy_app.so+0x12ee) (BuildId: cb76c077ecb9)
    #1 sim::AppChecker::Recv(noltDevSDK_special_msg_to_dev*) /src/app_check.cpp:131:45 (special-sim+0xee0f7) (BuildId: 33f8d06effc2)

  Location is global 'g_voice_count' of size 4 at 0x7f29150541ec (libsim_racy_app.so+0x41ec)

  Thread T2 (tid=22261, finished) created by thread T1 at:
    #0 pthread_create <null> (special-sim+0x66fed) (BuildId: 33f8d06effc2)
    #1 SpecialSetCustomVoiceReq(CMarkupSTL*, CMarkupSTL*) /src/special_handler_voice.cpp:50:9 (libnoltDevSDK_special.so.2+0x6c63) (BuildId: 11cc4035065d)

SUMMARY: ThreadSanitizer: data race /src/voice_app.c:70:79 in on_recv_msg
==================
)";

// gcc: the simulator racing with itself; the application is not involved.
const char kGccHostOnly[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=14557)
  Read of size 4 at 0x5580a4f8a0e0 by thread T3:
    #0 poller /src/host.cpp:29 (special-sim+0x1431)

  Previous write of size 4 at 0x5580a4f8a0e0 by thread T2:
    #0 kernel /src/host.cpp:23 (special-sim+0x1342)

  As if synchronized via sleep:
    #0 usleep ../../../../src/libsanitizer/tsan/tsan_interceptors_posix.cpp:351 (libtsan.so.2+0x61e11)
    #1 poller /src/host.cpp:28 (special-sim+0x1410)

  Location is global 'g_host_counter' of size 4 at 0x5580a4f8a0e0 (special-sim+0x40e0)

SUMMARY: ThreadSanitizer: data race /src/host.cpp:29 in poller
==================
)";

// gcc: a stripped library: no lines, an unnamed static, a frame with no symbol at all.
const char kGccStripped[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=14679)
  Read of size 4 at 0x7f8b20ca109c by main thread:
    #0 on_get_runtime_info <null> (libsim_racy_app.so+0x1269)
    #1 sim::AppChecker::RuntimeShim(noltDevSDK_special_runtime_info*) /src/app_check.cpp:117 (special-sim+0x137a)

  Previous atomic write of size 8 at 0x7f8b20ca1098 by thread T1:
    #0 <null> <null> (libsim_racy_app.so+0x11d4)

  Location is global '<null>' at 0x000000000000 (libsim_racy_app.so+0x409c)

SUMMARY: ThreadSanitizer: data race (libsim_racy_app.so+0x1269) in on_get_runtime_info
==================
)";

// gcc: the stack of the main thread (it prints a second, empty, global location).
const char kGccStack[] = R"(==================
WARNING: ThreadSanitizer: data race (pid=14729)
  Write of size 4 at 0x7ffd5a5e243c by thread T1:
    #0 t1 /src/misc.c:18 (special-sim+0x126b)

  Previous write of size 4 at 0x7ffd5a5e243c by main thread:
    #0 main /src/misc.c:31 (special-sim+0x1355)

  Location is stack of main thread.

  Location is global '<null>' at 0x000000000000 ([stack]+0x1f43c)

SUMMARY: ThreadSanitizer: data race /src/misc.c:18 in t1
==================
)";

// "write 4 T2 kernel message thread | recv_msg | on_recv_msg racy_app.c:31 | app"
std::string Summary(const sim::RaceAccess &a) {
    return std::string(a.atomic ? "atomic " : "") + (a.write ? "write " : "read ") + std::to_string(a.size) +
           " " + a.thread + " " + a.role + " | " + a.callback + " | " + a.frame.function + " " +
           sim::FramePlace(a.frame) + (a.in_app ? " | app" : "");
}

TEST(RaceReport, EachAccessIsToldByThreadCallbackAndPlace) {
    struct Case {
        const char *name;
        const char *log;
        const char *current, *previous, *location;
        bool involves_app;
    } cases[] = {
        {"clang, the simulator's stacks", kClangSim,
         "read 4 T0 report-status poller | get_runtime_info | get_sound racy_app.c:114 | app",
         "write 4 T1 module thread | recv_msg | set_sound racy_app.c:55 | app",
         "g_sound+0 (a global of 28 bytes)", true},
        {"gcc, named threads", kGccNamed,
         "read 4 T3 report-status poller | get_runtime_info | on_get_runtime_info racy_app.c:52 | app",
         "write 4 T2 kernel message thread | recv_msg | on_recv_msg racy_app.c:31 | app",
         "g_state+12 (a global of 24 bytes)", true},
        {"gcc, heap block, the application's thread", kGccHeap,
         "write 4 T2 kernel message thread | recv_msg | on_recv_msg racy_app.c:15 | app",
         "write 4 T1 application's own thread |  | worker racy_app.c:10 | app",
         "a heap block of 40 bytes, offset 8", true},
        {"clang, custom-voice workers", kClangVoice,
         "write 4 T3 custom-voice worker | recv_msg | on_recv_msg voice_app.c:70 | app",
         "write 4 T2 custom-voice worker | recv_msg | on_recv_msg voice_app.c:70 | app",
         "g_voice_count+0 (a global of 4 bytes)", true},
        {"no application frame", kGccHostOnly, "read 4 T3  |  | poller host.cpp:29",
         "write 4 T2  |  | kernel host.cpp:23", "g_host_counter+0 (a global of 4 bytes)", false},
        {"stripped library", kGccStripped,
         "read 4 T0 application thread | get_runtime_info | on_get_runtime_info libsim_racy_app.so+0x1269 | "
         "app",
         "atomic write 8 T1  |  |  libsim_racy_app.so+0x11d4 | app",
         "an unnamed global (libsim_racy_app.so+0x409c)", true},
        {"stack of the main thread", kGccStack, "write 4 T1  |  | t1 misc.c:18",
         "write 4 T0 application thread |  | main misc.c:31", "the stack of the main thread", false},
    };
    for (const Case &c : cases) {
        std::vector<sim::Race> races = sim::ParseRaces(c.log, kApp);
        ASSERT_EQ(races.size(), 1u) << c.name;
        const sim::Race &r = races[0];
        EXPECT_EQ(Summary(r.current), c.current) << c.name;
        EXPECT_EQ(Summary(r.previous), c.previous) << c.name;
        EXPECT_EQ(sim::DescribeLocation(r.location, r.current.address), c.location) << c.name;
        EXPECT_EQ(r.involves_app, c.involves_app) << c.name;
        EXPECT_TRUE(r.complete) << c.name;
        EXPECT_EQ(r.count, 1) << c.name;
    }
}

TEST(RaceReport, OneLineNamesBothCallbacksThreadsAndTheField) {
    std::vector<sim::Race> races = sim::ParseRaces(kGccNamed, kApp);
    ASSERT_EQ(races.size(), 1u);
    EXPECT_EQ(
        sim::DescribeRace(races[0]),
        "get_runtime_info (report-status poller T3) reads 4 bytes of g_state+12 (a global of 24 bytes) at "
        "racy_app.c:52 in on_get_runtime_info while recv_msg (kernel message thread T2) writes them at "
        "racy_app.c:31 in on_recv_msg");
}

// The same race again at another heap address is counted; a report of another kind
// between is skipped; a report cut short is kept for what it says.
TEST(RaceReport, LogsOfSeveralReportsAreCountedAndCutOnesKept) {
    std::string heap = kGccHeap;
    std::string other_block = heap;
    for (size_t at; (at = other_block.find("0x7b0c0000")) != std::string::npos;) {
        other_block.replace(at, 10, "0x7b1400ff");
    }
    const std::string leak = "==================\nWARNING: ThreadSanitizer: thread leak (pid=1)\n"
                             "  Thread T9 (tid=5, finished) created by main thread at:\n"
                             "    #0 pthread_create <null> (special-sim+0x66fed)\n\n"
                             "SUMMARY: ThreadSanitizer: thread leak\n==================\n";
    std::string named = kGccNamed;
    std::string cut = named.substr(0, named.find("    #1 sim::AppChecker::RecvShim"));
    struct Case {
        const char *name;
        std::string log;
        std::vector<int> counts;
        std::vector<bool> complete;
    } cases[] = {
        {"the same race twice", heap + other_block, {2}, {true}},
        {"another kind of report between", heap + leak + kGccNamed, {1, 1}, {true, true}},
        {"cut in the earlier access", heap + cut, {1, 1}, {true, false}},
        {"cut after the warning",
         "==================\nWARNING: ThreadSanitizer: data race (pid=1)\n",
         {},
         {}},
        {"CRLF line ends",
         std::string("WARNING: ThreadSanitizer: data race\r\n  Read of size 4 at 0x10 by "
                     "thread T1:\r\n    #0 f /a.c:3 (libsim_racy_app.so+0x1)\r\n"),
         {1},
         {false}},
        {"nothing", "", {}, {}},
    };
    for (const Case &c : cases) {
        std::vector<sim::Race> races = sim::ParseRaces(c.log, kApp);
        ASSERT_EQ(races.size(), c.counts.size()) << c.name;
        for (size_t i = 0; i < races.size(); i++) {
            EXPECT_EQ(races[i].count, c.counts[i]) << c.name << " " << i;
            EXPECT_EQ(races[i].complete, c.complete[i]) << c.name << " " << i;
        }
    }
    std::vector<sim::Race> races = sim::ParseRaces(heap + cut, kApp);
    ASSERT_EQ(races.size(), 2u);
    EXPECT_EQ(Summary(races[1].previous), "write 4 T2  |  | on_recv_msg racy_app.c:31 | app");
    EXPECT_NE(sim::DescribeRace(races[1]).find("cut short"), std::string::npos);
}

// Whatever a cut leaves, and any byte in any place, gives races and descriptions.
TEST(RaceReport, EveryPrefixAndDamagedCopyOfALogParses) {
    const std::string log = std::string(kClangSim) + kGccHeap + kGccStripped + kClangVoice;
    for (size_t n = 0; n <= log.size(); n += 7) {
        for (const sim::Race &r : sim::ParseRaces(log.substr(0, n), kApp)) {
            EXPECT_FALSE(sim::DescribeRace(r).empty()) << n;
        }
    }
    for (char junk : {'\0', '\'', '(', ')', ':', '#', '+', ' ', '\n'}) {
        for (size_t at = 0; at < log.size(); at += 13) {
            std::string damaged = log;
            damaged[at] = junk;
            for (const sim::Race &r : sim::ParseRaces(damaged, kApp)) {
                EXPECT_FALSE(sim::DescribeRace(r).empty()) << at;
            }
        }
    }
}

} // namespace
