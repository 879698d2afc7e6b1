// Test ground shared by every suite: a recording application behind the module's two
// callbacks, the kernel's outbound messages captured and parsed, the log captured, and
// helpers that play the platform through the host SDK's control API.
#pragma once

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <cjson/cJSON.h>
#include <pugixml.hpp>

#include "noltDevSDK_special_def.h"
#include "noltDevSDK_special_protocol.h"
#include "noltdev_host.h"

namespace special_test {

constexpr int kDomain = NOLTDEVSDK_SPECIAL_DOMAIN_ID;

// A platform request document around the given children.
std::string Request(const std::string &children);

// One record the module handed to recv_msg: type, len and a copy of the record.
struct Delivery {
    int type = 0;
    int len = 0;
    std::vector<unsigned char> bytes;
    template <class T> T As() const {
        T value;
        std::memset(&value, 0, sizeof value);
        std::memcpy(&value, bytes.data(), std::min(sizeof value, bytes.size()));
        return value;
    }
};

// One message the module sent, with its body parsed as XML and as JSON where it is.
struct Sent {
    uint32_t domain = 0, command = 0, seq = 0;
    uint8_t response = 0;
    std::string version, body;
    std::shared_ptr<pugi::xml_document> xml; // null when the body is not XML
    std::shared_ptr<cJSON> json;             // null when the body is not JSON
    // The element at a slash path from the document root ("Request/Params/Switch").
    pugi::xml_node Node(const std::string &path) const;
    // An attribute of the element at path ("" when absent).
    std::string Attr(const std::string &path, const char *name) const;
    // The text of the element at path ("" when absent).
    std::string Text(const std::string &path) const;
};

struct LogLine {
    int level;
    std::string text;
};

class SpecialFixture : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // ---- the application ----
    // Calls noltDevSDK_special_init with the recording callbacks (or NULL callbacks).
    int Init(bool with_callbacks = true, int reset_report_all = 0);
    // What recv_msg received, in order.
    std::vector<Delivery> Deliveries();
    // The answer recv_msg gives (for every type, or for one type).
    void SetRecvResult(int rc);
    void SetRecvResult(int type, int rc);
    // get_runtime_info answers this type by copying the bytes (at most len) and
    // returning rc; types without an answer return NOLTDEVSDK_SPECIAL_CODE_FAIL.
    void SetRuntime(int type, const void *data, size_t size, int rc = 0);
    template <class T> void SetRuntime(int type, const T &value) {
        SetRuntime(type, &value, sizeof value, 0);
    }
    void SetRuntimeError(int type, int rc) { SetRuntime(type, nullptr, 0, rc); }
    // Replaces the whole get_runtime_info behaviour for one type.
    void SetRuntimeHook(int type, std::function<int(noltDevSDK_special_runtime_info *)> hook);
    // Types asked through get_runtime_info, in order; the len of each call.
    std::vector<int> RuntimeCalls();
    std::vector<int> RuntimeLens();

    // ---- the platform ----
    std::vector<Sent> SentMessages();
    size_t SentCount();
    // Messages of this command sent so far.
    size_t SentCount(uint32_t command);
    void ClearSent();
    // Result the kernel gives every send (0: accepted).
    void SetSendResult(int rc);
    // Waits (without sleeping blindly) until at least n messages were sent.
    bool WaitForSent(size_t n, int timeout_ms = 5000);
    // Waits likewise until at least n messages of this command were sent.
    bool WaitForCommand(uint32_t command, size_t n, int timeout_ms = 5000);
    // For what no sink signals (a thread count, a counter of the host SDK): checks pred
    // every millisecond until it holds; false when timeout_ms passed first.
    static bool WaitUntil(const std::function<bool()> &pred, int timeout_ms = 5000);
    // Delivers a platform message to the domain at once.
    int Inject(int command, uint32_t seq, const std::string &body);

    // ---- the log ----
    std::vector<LogLine> Logs();
    bool HasLog(const std::string &text);
    bool HasLog(int level, const std::string &text);
    size_t CountLog(const std::string &text);
    void ClearLogs();

    // ---- the report-status service and the kernel ----
    int Poll() { return noltdev_host_report_poll(); }
    void Force(int id);
    void ResetAll() { noltdev_host_report_reset_all(); }
    void RaiseEvent(int type) { noltdev_host_raise_event(kDomain, type); }

  private:
    static int RecvMsg(noltDevSDK_special_msg_to_dev *msg);
    static int GetRuntimeInfo(noltDevSDK_special_runtime_info *info);
    static int Sink(const noltdev_host_message *msg, void *user);
    static void LogHook(int level, const char *line, void *user);

    std::mutex mu_;
    std::condition_variable cv_;
    std::vector<Delivery> deliveries_;
    int recv_result_ = 0;
    std::map<int, int> recv_result_by_type_;
    struct Answer {
        std::vector<unsigned char> bytes;
        int rc = 0;
    };
    std::map<int, Answer> runtime_;
    std::map<int, std::function<int(noltDevSDK_special_runtime_info *)>> hooks_;
    std::vector<int> runtime_calls_, runtime_lens_;
    std::vector<Sent> sent_;
    int send_result_ = 0;
    std::vector<LogLine> logs_;
};

} // namespace special_test
