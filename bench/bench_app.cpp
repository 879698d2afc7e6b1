// The benchmarks' steady device: every record filled once with plausible values.
#include "bench_app.h"

#include <condition_variable>
#include <cstring>
#include <mutex>

#include "harness_start.h"
#include "noltdev_host.h"

namespace special_bench {

namespace {
// The sink runs on the sender's thread (the custom-voice worker among them).
std::mutex g_sent_mu;
std::condition_variable g_sent_cv;
std::string g_last;
size_t g_bytes = 0;
uint64_t g_messages = 0;

int Sink(const noltdev_host_message *msg, void *) {
    std::lock_guard<std::mutex> lock(g_sent_mu);
    g_last.assign(msg->body, msg->body_len);
    g_bytes += msg->body_len;
    ++g_messages;
    g_sent_cv.notify_all();
    return 0;
}

int RecvMsg(noltDevSDK_special_msg_to_dev *) {
    return 0;
}

void FillVoices(noltDevSDK_special_custom_voice_infos *v) {
    v->num = 3;
    for (int i = 0; i < v->num; ++i) {
        v->voice_info[i].index = i;
        v->voice_info[i].status = 1;
        std::strcpy(v->voice_info[i].name, "welcome");
        std::strcpy(v->voice_info[i].url, "http://voices.invalid/welcome.mp3");
        v->voice_info[i].create_time = 1700000000;
    }
}

void FillPlan(noltDevSDK_special_plan *p) {
    p->enable_plan = 1;
    for (int d = 0; d < 7; ++d) {
        p->special_work_mode_plan.time[d][0].mode = 1;
        p->special_work_mode_plan.time[d][0].begin = 7 * 3600;
        p->special_work_mode_plan.time[d][0].end = 19 * 3600;
    }
}
} // namespace

const std::vector<Query> &PollQueries() {
    static const std::vector<Query> queries = {
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, sizeof(noltDevSDK_special_switch_enable), 0},
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, sizeof(noltDevSDK_special_switch_enable), 1},
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, sizeof(noltDevSDK_special_switch_enable), 2},
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, sizeof(noltDevSDK_special_switch_enable), 4},
        {NOLTDEVSDK_SPECIAL_ON_GET_KEY_VALUE, sizeof(noltDevSDK_special_key_value), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_STATUS, sizeof(noltDevSDK_special_battery_workstatus), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS, sizeof(noltDevSDK_special_custom_voice_infos), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_LINKAGE_MODE_STATUS, sizeof(noltDevSDK_linkage_mode_status), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP, sizeof(noltDevSDK_Trusteeship), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS,
         sizeof(noltDevSDK_PowerStatus) + 8 * sizeof(noltDevSDK_PowerStatus_subserial), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT,
         sizeof(noltDevSDK_Trusteeship_connect) + 8 * sizeof(noltDevSDK_trusteeship_subserial), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT, sizeof(noltDevSDK_special_voddns_local_mapped_infos),
         -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_ASSOCIATED_DEVICE_CONN_STATUS,
         sizeof(noltDevSDK_special_associated_device_conn_status), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_BATTERY_WORK_MODE, sizeof(noltDevSDK_special_battery_work_mode), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN, sizeof(noltDevSDK_special_plan), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_RING_SOUND, sizeof(noltDevSDK_special_ring_type), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE, sizeof(noltDevSDK_special_switch_enable), 3},
        {NOLTDEVSDK_SPECIAL_ON_GET_NET_WORK_MODE, sizeof(noltDevSDK_special_net_work_mode), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_ONE_CLICK_MUTE, sizeof(noltDevSDK_special_one_click_mute), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_SPEAKER_CONFIG, sizeof(noltDevSDK_special_speaker_config), -1},
        {NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO, sizeof(noltDevSDK_special_4G_Info_S), -1},
    };
    return queries;
}

int GetRuntimeInfo(noltDevSDK_special_runtime_info *info) {
    void *d = info->data;
    switch (info->type) {
    case NOLTDEVSDK_SPECIAL_ON_GET_SWITCH_ENABLE:
        static_cast<noltDevSDK_special_switch_enable *>(d)->enable = 1;
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_CUSTOM_VOICE_INFOS:
        FillVoices(static_cast<noltDevSDK_special_custom_voice_infos *>(d));
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_SPECIAL_PLAN:
        FillPlan(static_cast<noltDevSDK_special_plan *>(d));
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP:
        std::strcpy(static_cast<noltDevSDK_Trusteeship *>(d)->subserial, "DS0000000001");
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_GET_TRUSTEESHIP_CONNECT: {
        auto *c = static_cast<noltDevSDK_Trusteeship_connect *>(d);
        c->num = 2;
        std::strcpy(c->subserial[0].subserial, "CH0000000001");
        c->subserial[0].connect_status = 1;
        std::strcpy(c->subserial[1].subserial, "CH0000000002");
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_POWERSTATUS: {
        auto *p = static_cast<noltDevSDK_PowerStatus *>(d);
        p->num = 2;
        std::strcpy(p->subserial[0].subserial, "CH0000000001");
        std::strcpy(p->subserial[0].baseserial, "DS0000000000");
        p->subserial[0].value = 80;
        std::strcpy(p->subserial[1].subserial, "CH0000000002");
        p->subserial[1].value = 55;
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_VODDNS_MAPPED_PORT: {
        auto *m = static_cast<noltDevSDK_special_voddns_local_mapped_infos *>(d);
        std::strcpy(m->external_ip, "203.0.113.7");
        std::strcpy(m->local_ip, "192.168.1.20");
        std::strcpy(m->mapped_port_infos[0].type, "http");
        m->mapped_port_infos[0].local_port = 80;
        m->mapped_port_infos[0].nat_port = 8080;
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_4G_INFO: {
        auto *g = static_cast<noltDevSDK_special_4G_Info_S *>(d);
        g->status = 1;
        g->sigal = -70;
        std::strcpy(g->network, "LTE");
        return 0;
    }
    case NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP:
        return NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    default:
        if (d != nullptr && info->len >= 4) {
            *static_cast<int *>(d) = 1; // first field of every small record
        }
        return 0;
    }
}

void Start() {
    static const bool started = [] {
        special_harness::StartModule(&Sink, &RecvMsg, &GetRuntimeInfo);
        noltdev_host_report_poll(); // the caches take the steady values once
        return true;
    }();
    (void)started;
}

std::string LastSent() {
    std::lock_guard<std::mutex> lock(g_sent_mu);
    return g_last;
}

size_t SentBytes() {
    std::lock_guard<std::mutex> lock(g_sent_mu);
    return g_bytes;
}

uint64_t SentMessages() {
    std::lock_guard<std::mutex> lock(g_sent_mu);
    return g_messages;
}

void WaitSentMoreThan(uint64_t count) {
    std::unique_lock<std::mutex> lock(g_sent_mu);
    g_sent_cv.wait(lock, [count] { return g_messages > count; });
}

} // namespace special_bench
