// Load storms: custom-voice commands as fast as the kernel takes them while the
// report-status service polls, and mixed commands from two injecting threads. Every
// request is answered exactly once with its own sequence number, or refused with its
// log line. Counts scale by NOLTDEV_STORM_PERCENT (default 100) for slow runners
// (qemu-arm, ThreadSanitizer); nothing here is timed.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <map>
#include <thread>

#include "noltDevSDK_special_protocol.h"
#include "special_fixture.h"

namespace special_test {
namespace {

int Scaled(int count) {
    const char *percent = std::getenv("NOLTDEV_STORM_PERCENT");
    int p = percent != nullptr ? std::atoi(percent) : 100;
    return p > 0 && p < 100 ? std::max(10, count * p / 100) : count;
}

// Samples the thread count until stopped, keeping the peak.
class ThreadPeak {
  public:
    ThreadPeak()
        : sampler_([this] {
              while (!stop_) {
                  long n = noltdev_host_process_status("Threads");
                  if (n > peak_) {
                      peak_ = n;
                  }
                  std::this_thread::sleep_for(std::chrono::milliseconds(1));
              }
          }) {}
    long Stop() {
        stop_ = true;
        sampler_.join();
        return peak_;
    }

  private:
    std::atomic<bool> stop_{false};
    std::atomic<long> peak_{0};
    std::thread sampler_;
};

const std::string kVoice = R"(<Info Index="3" Type="1" CustomVoice="1" Url="http://v/s.mp3" Name="s"/>)";

class Storm : public SpecialFixture {
  protected:
    void SetUp() override {
        SpecialFixture::SetUp();
        ASSERT_EQ(0, Init());
        // a first thread brings up whatever the runtime starts with it (a sanitizer's
        // background thread), so that the count can come back to this base
        std::thread([] {}).join();
        base_threads_ = noltdev_host_process_status("Threads");
    }
    // A generous bound against a hang, not a timing check.
    static bool WaitUntil(const std::function<bool()> &pred) {
        return SpecialFixture::WaitUntil(pred, 240000);
    }
    // Answers (response messages) by sequence number: how many, and of which command.
    std::map<uint32_t, std::vector<uint32_t>> AnswersBySeq() {
        std::map<uint32_t, std::vector<uint32_t>> out;
        for (const Sent &s : SentMessages()) {
            if (s.response == 1) {
                out[s.seq].push_back(s.command);
            }
        }
        return out;
    }
    size_t Responses() {
        size_t n = 0;
        for (const Sent &s : SentMessages()) {
            n += s.response;
        }
        return n;
    }
    long base_threads_ = 0;
};

TEST_F(Storm, CustomVoiceWhileTheServicePolls) {
    const int n = Scaled(1000);
    const int every = 50; // thread creation fails for one command in fifty
    noltdev_host_fault_set(NOLTDEV_HOST_FAULT_THREAD_CREATE, 0, -1, every, 0);
    ASSERT_EQ(0, noltdev_host_report_start(10));
    ASSERT_EQ(0, noltdev_host_msg_thread_start());
    ThreadPeak peak;
    for (int i = 0; i < n; ++i) {
        std::string body = Request(kVoice);
        ASSERT_EQ(0, noltdev_host_post(kDomain, kCenPlt2PuSetCustomVoiceReq, 1000 + i, body.data(),
                                       static_cast<uint32_t>(body.size())));
    }
    noltdev_host_drain();
    const size_t refused = static_cast<size_t>(n / every);
    ASSERT_TRUE(WaitUntil([&] { return Responses() + CountLog("pthread creaete error\n") >= size_t(n); }));
    // every worker has ended once the count is back to the kernel's and service's threads
    ASSERT_TRUE(WaitUntil([&] { return noltdev_host_process_status("Threads") <= base_threads_ + 3; }));
    long peak_threads = peak.Stop();
    noltdev_host_report_stop();
    noltdev_host_msg_thread_stop();

    EXPECT_EQ(refused, CountLog("pthread creaete error\n"));
    EXPECT_EQ(static_cast<int>(refused), noltdev_host_fault_injected(NOLTDEV_HOST_FAULT_THREAD_CREATE));
    auto answers = AnswersBySeq();
    EXPECT_EQ(size_t(n) - refused, answers.size());
    for (const auto &a : answers) {
        EXPECT_GE(a.first, 1000u);
        EXPECT_LT(a.first, 1000u + n);
        ASSERT_EQ(1u, a.second.size()) << "seq " << a.first << " answered " << a.second.size() << " times";
        EXPECT_EQ(uint32_t(kCenPlt2PuSetCustomVoiceRsp), a.second[0]);
    }
    for (int i = every - 1; i < n; i += every) {
        EXPECT_EQ(0u, answers.count(1000 + i)) << "refused seq " << 1000 + i << " was answered";
    }
    std::printf("voice storm: %d commands, %zu answered, %zu refused, threads base %ld peak %ld final %ld, "
                "peak RSS %ld KiB\n",
                n, answers.size(), refused, base_threads_, peak_threads,
                noltdev_host_process_status("Threads"), noltdev_host_process_status("VmHWM"));
}

// One of the mixed commands: what to inject and the answer it must bring.
struct Mixed {
    int command;
    std::string body;
    uint32_t answer;
};

TEST_F(Storm, MixedCommandsFromTwoThreadsPairedBySequence) {
    const int n = Scaled(10000);
    const Mixed kinds[] = {
        {kCenPlt2PuWakeReq, R"({"subserial":"SUB1"})", kCenPlt2PuWakeRsp},
        {kCenPlt2PuSetKeyValueReq, Request("<Value>1</Value><Type>OneClickMute</Type>"),
         kCenPlt2PuSetKeyValueRsp},
        {kCenPlt2PuSetKeyValueReq, Request(R"(<Value>{"Volume":60}</Value><Type>device_bell</Type>)"),
         kCenPlt2PuSetKeyValueRsp},
        {kCenPlt2PuSetDelaySleepReq, Request(R"(<Info Type="1" Channel="2"/>)"), kCenPlt2PuSetDelaySleepRsp},
        {kCenPlt2PuSetCustomVoiceReq, Request(kVoice), kCenPlt2PuSetCustomVoiceRsp},
    };
    const int nkinds = sizeof kinds / sizeof kinds[0];
    ASSERT_EQ(0, noltdev_host_report_start(10));
    ThreadPeak peak;
    auto inject = [&](int first) {
        for (int i = first; i < n; i += 2) {
            const Mixed &m = kinds[i % nkinds];
            noltdev_host_inject(kDomain, m.command, 1 + i, m.body.data(),
                                static_cast<uint32_t>(m.body.size()));
        }
    };
    std::thread a(inject, 0), b(inject, 1);
    a.join();
    b.join();
    ASSERT_TRUE(WaitUntil([&] { return Responses() >= size_t(n); }));
    ASSERT_TRUE(WaitUntil([&] { return noltdev_host_process_status("Threads") <= base_threads_ + 2; }));
    long peak_threads = peak.Stop();
    noltdev_host_report_stop();

    auto answers = AnswersBySeq();
    EXPECT_EQ(size_t(n), answers.size());
    for (const auto &a : answers) {
        ASSERT_GE(a.first, 1u);
        ASSERT_LE(a.first, uint32_t(n));
        ASSERT_EQ(1u, a.second.size()) << "seq " << a.first << " answered " << a.second.size() << " times";
        EXPECT_EQ(kinds[(a.first - 1) % nkinds].answer, a.second[0]) << "seq " << a.first;
    }
    std::printf(
        "mixed storm: %d commands from 2 threads, %zu paired, threads peak %ld final %ld, peak RSS %ld KiB\n",
        n, answers.size(), peak_threads, noltdev_host_process_status("Threads"),
        noltdev_host_process_status("VmHWM"));
}

} // namespace
} // namespace special_test
