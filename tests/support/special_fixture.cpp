// The shared test ground: recording application, captured sends and log lines.
#include "special_fixture.h"

#include <chrono>
#include <sstream>
#include <thread>

#include "noltDevSDK_report_status.h"

namespace special_test {

namespace {
SpecialFixture *g_current = nullptr;

size_t CountOf(const std::vector<Sent> &sent, uint32_t command) {
    size_t n = 0;
    for (const Sent &s : sent) {
        n += s.command == command ? 1 : 0;
    }
    return n;
}
} // namespace

pugi::xml_node Sent::Node(const std::string &path) const {
    if (!xml) {
        return pugi::xml_node();
    }
    pugi::xml_node node = *xml;
    std::stringstream parts(path);
    std::string part;
    while (std::getline(parts, part, '/')) {
        node = node.child(part.c_str());
    }
    return node;
}

std::string Request(const std::string &children) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Request>" + children + "</Request>";
}

std::string Sent::Attr(const std::string &path, const char *name) const {
    return Node(path).attribute(name).value();
}

std::string Sent::Text(const std::string &path) const {
    return Node(path).text().get();
}

void SpecialFixture::SetUp() {
    g_current = this;
    noltdev_host_kernel_reset();
    noltdev_host_shadow_reset();
    noltdev_host_set_sink(&SpecialFixture::Sink, this);
    noltdev_host_set_log_hook(&SpecialFixture::LogHook, this);
    if (getenv("NOLTDEV_LOG_LEVEL") == nullptr) {
        noltdev_host_set_log_level(0);
    }
}

void SpecialFixture::TearDown() {
    noltDevSDK_special_fini();
    noltdev_host_report_stop();
    noltdev_host_msg_thread_stop();
    noltdev_host_set_sink(nullptr, nullptr);
    noltdev_host_set_log_hook(nullptr, nullptr);
    g_current = nullptr;
}

int SpecialFixture::Init(bool with_callbacks, int reset_report_all) {
    noltDevSDK_special_init_info info;
    std::memset(&info, 0, sizeof info);
    if (with_callbacks) {
        info.cb.recv_msg = &SpecialFixture::RecvMsg;
        info.cb.get_runtime_info = &SpecialFixture::GetRuntimeInfo;
    }
    info.resetReportAll = reset_report_all;
    return noltDevSDK_special_init(&info);
}

int SpecialFixture::RecvMsg(noltDevSDK_special_msg_to_dev *msg) {
    SpecialFixture *self = g_current;
    if (self == nullptr || msg == nullptr) {
        return -1;
    }
    Delivery d;
    d.type = msg->type;
    d.len = msg->len;
    if (msg->data != nullptr && msg->len > 0) {
        const unsigned char *p = static_cast<const unsigned char *>(msg->data);
        d.bytes.assign(p, p + msg->len);
    }
    std::lock_guard<std::mutex> lock(self->mu_);
    self->deliveries_.push_back(std::move(d));
    auto it = self->recv_result_by_type_.find(msg->type);
    return it != self->recv_result_by_type_.end() ? it->second : self->recv_result_;
}

int SpecialFixture::GetRuntimeInfo(noltDevSDK_special_runtime_info *info) {
    SpecialFixture *self = g_current;
    if (self == nullptr || info == nullptr) {
        return -1;
    }
    std::function<int(noltDevSDK_special_runtime_info *)> hook;
    {
        std::lock_guard<std::mutex> lock(self->mu_);
        self->runtime_calls_.push_back(info->type);
        self->runtime_lens_.push_back(info->len);
        auto h = self->hooks_.find(info->type);
        if (h != self->hooks_.end()) {
            hook = h->second;
        } else {
            auto it = self->runtime_.find(info->type);
            if (it == self->runtime_.end()) {
                return NOLTDEVSDK_SPECIAL_CODE_FAIL;
            }
            if (it->second.rc != 0) {
                return it->second.rc;
            }
            if (info->data != nullptr && info->len > 0) {
                size_t n = std::min(static_cast<size_t>(info->len), it->second.bytes.size());
                std::memcpy(info->data, it->second.bytes.data(), n);
            }
            return 0;
        }
    }
    return hook(info);
}

int SpecialFixture::Sink(const noltdev_host_message *msg, void *user) {
    SpecialFixture *self = static_cast<SpecialFixture *>(user);
    Sent s;
    s.domain = msg->domain_id;
    s.command = msg->command_id;
    s.seq = msg->seq;
    s.response = msg->response;
    s.version = msg->command_ver ? msg->command_ver : "";
    s.body.assign(msg->body ? msg->body : "", msg->body_len);
    auto doc = std::make_shared<pugi::xml_document>();
    if (doc->load_buffer(s.body.data(), s.body.size()) && doc->first_child()) {
        s.xml = doc;
    }
    if (cJSON *json = cJSON_ParseWithLength(s.body.data(), s.body.size())) {
        s.json = std::shared_ptr<cJSON>(json, cJSON_Delete);
    }
    std::lock_guard<std::mutex> lock(self->mu_);
    self->sent_.push_back(std::move(s));
    self->cv_.notify_all();
    return self->send_result_;
}

void SpecialFixture::LogHook(int level, const char *line, void *user) {
    SpecialFixture *self = static_cast<SpecialFixture *>(user);
    std::lock_guard<std::mutex> lock(self->mu_);
    self->logs_.push_back({level, line ? line : ""});
}

std::vector<Delivery> SpecialFixture::Deliveries() {
    std::lock_guard<std::mutex> lock(mu_);
    return deliveries_;
}

void SpecialFixture::SetRecvResult(int rc) {
    std::lock_guard<std::mutex> lock(mu_);
    recv_result_ = rc;
}

void SpecialFixture::SetRecvResult(int type, int rc) {
    std::lock_guard<std::mutex> lock(mu_);
    recv_result_by_type_[type] = rc;
}

void SpecialFixture::SetRuntime(int type, const void *data, size_t size, int rc) {
    std::lock_guard<std::mutex> lock(mu_);
    Answer a;
    if (data != nullptr) {
        const unsigned char *p = static_cast<const unsigned char *>(data);
        a.bytes.assign(p, p + size);
    }
    a.rc = rc;
    runtime_[type] = std::move(a);
    hooks_.erase(type);
}

void SpecialFixture::SetRuntimeHook(int type, std::function<int(noltDevSDK_special_runtime_info *)> hook) {
    std::lock_guard<std::mutex> lock(mu_);
    hooks_[type] = std::move(hook);
}

std::vector<int> SpecialFixture::RuntimeCalls() {
    std::lock_guard<std::mutex> lock(mu_);
    return runtime_calls_;
}

std::vector<int> SpecialFixture::RuntimeLens() {
    std::lock_guard<std::mutex> lock(mu_);
    return runtime_lens_;
}

std::vector<Sent> SpecialFixture::SentMessages() {
    std::lock_guard<std::mutex> lock(mu_);
    return sent_;
}

size_t SpecialFixture::SentCount() {
    std::lock_guard<std::mutex> lock(mu_);
    return sent_.size();
}

void SpecialFixture::ClearSent() {
    std::lock_guard<std::mutex> lock(mu_);
    sent_.clear();
}

void SpecialFixture::SetSendResult(int rc) {
    std::lock_guard<std::mutex> lock(mu_);
    send_result_ = rc;
}

bool SpecialFixture::WaitForSent(size_t n, int timeout_ms) {
    std::unique_lock<std::mutex> lock(mu_);
    return cv_.wait_for(lock, std::chrono::milliseconds(timeout_ms), [&] { return sent_.size() >= n; });
}

bool SpecialFixture::WaitForCommand(uint32_t command, size_t n, int timeout_ms) {
    std::unique_lock<std::mutex> lock(mu_);
    return cv_.wait_for(lock, std::chrono::milliseconds(timeout_ms),
                        [&] { return CountOf(sent_, command) >= n; });
}

size_t SpecialFixture::SentCount(uint32_t command) {
    std::lock_guard<std::mutex> lock(mu_);
    return CountOf(sent_, command);
}

bool SpecialFixture::WaitUntil(const std::function<bool()> &pred, int timeout_ms) {
    for (int i = 0; i < timeout_ms && !pred(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return pred();
}

int SpecialFixture::Inject(int command, uint32_t seq, const std::string &body) {
    return noltdev_host_inject(kDomain, command, seq, body.data(), static_cast<uint32_t>(body.size()));
}

std::vector<LogLine> SpecialFixture::Logs() {
    std::lock_guard<std::mutex> lock(mu_);
    return logs_;
}

bool SpecialFixture::HasLog(const std::string &text) {
    return CountLog(text) > 0;
}

bool SpecialFixture::HasLog(int level, const std::string &text) {
    std::lock_guard<std::mutex> lock(mu_);
    for (const LogLine &l : logs_) {
        if (l.level == level && l.text == text) {
            return true;
        }
    }
    return false;
}

size_t SpecialFixture::CountLog(const std::string &text) {
    std::lock_guard<std::mutex> lock(mu_);
    size_t n = 0;
    for (const LogLine &l : logs_) {
        n += l.text == text ? 1 : 0;
    }
    return n;
}

void SpecialFixture::ClearLogs() {
    std::lock_guard<std::mutex> lock(mu_);
    logs_.clear();
}

void SpecialFixture::Force(int id) {
    noltDevSDK_report_set_force_report(id);
}

} // namespace special_test
