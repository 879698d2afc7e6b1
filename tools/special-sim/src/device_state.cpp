// The demo device's state, its defaults and the two application callbacks.
#include "device_state.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace sim {

namespace {

using State = DemoDevice::State;
using Switch = noltDevSDK_special_switch_enable;

constexpr int kNone = -1;

// The base station as it comes out of the box; every line is an ordinary "set".
const char *const kDefaults[] = {
    "switch.flow.type 0",
    "switch.flow.enable 1",
    "switch.linger.type 1",
    "switch.face.type 2",
    "switch.face.enable 1",
    "switch.distortion.type 3",
    "switch.chime.type 4",
    "switch.chime.enable 1",
    "flow.interval 300",
    "flow.angle_vectical 90",
    "flow.cross_line_x1 0.1",
    "flow.cross_line_y1 0.5",
    "flow.cross_line_x2 0.9",
    "flow.cross_line_y2 0.5",
    "flow.vector_line_x1 0.5",
    "flow.vector_line_y1 0.4",
    "flow.vector_line_x2 0.5",
    "flow.vector_line_y2 0.6",
    "icr.value 1",
    "voices.voice_info.0.index 1",
    "voices.voice_info.0.status 1",
    "voices.voice_info.0.name welcome",
    "voices.voice_info.0.url http://voices.example/welcome.mp3",
    "voices.voice_info.0.create_time 1700000000",
    "voices.voice_info.0.customVoice 1",
    "linkage.time 30",
    "battery_status.keep_alive 1",
    "battery_status.work_time 30",
    "children.subserial.0.subserial CH0000000001",
    "children.subserial.0.connect_status 1",
    "children.subserial.0.iChannel 1",
    "children.subserial.1.subserial CH0000000002",
    "children.subserial.1.connect_status 1",
    "children.subserial.1.iChannel 2",
    "power.subserial.0.subserial CH0000000001",
    "power.subserial.0.type 1",
    "power.subserial.0.value 80",
    "power.subserial.0.des battery",
    "power.subserial.0.remaining 80",
    "power.subserial.0.status 1",
    "power.subserial.1.subserial CH0000000002",
    "power.subserial.1.type 1",
    "power.subserial.1.value 35",
    "power.subserial.1.des battery",
    "power.subserial.1.remaining 35",
    "power.subserial.1.baseserial DS0000000000",
    "power.subserial.1.status 1",
    "ports.external_ip 203.0.113.10",
    "ports.local_ip 192.168.1.20",
    "ports.mapped_port_infos.0.type http",
    "ports.mapped_port_infos.0.local_port 80",
    "ports.mapped_port_infos.0.nat_port 8080",
    "ports.mapped_port_infos.1.type rtsp",
    "ports.mapped_port_infos.1.local_port 554",
    "ports.mapped_port_infos.1.nat_port 10554",
    "chime.conn_status 1",
    "chime.signal -45",
    "chime.ssid HomeWifi",
    "chime.interface_name wlan0",
    "chime.local_ip 192.168.1.30",
    "chime.mask 255.255.255.0",
    "chime.gateway 192.168.1.1",
    "chime.db_serial DB0000000001",
    "battery_mode.mode 1",
    "ring.type 1",
    "ring.index 2",
    "ring.vol 60",
    "plan.enable_plan 1",
    "plan.time.1.0.mode 1",
    "plan.time.1.0.begin 08:00",
    "plan.time.1.0.end 18:00",
    "net_mode.mode 1",
    "modem.status 1",
    "modem.sigal -70",
    "modem.type 4",
    "modem.network LTE",
    "modem.ICCID 89860000000000000001",
    "modem.IMEI 861234567890123",
    "speaker.ring_enable 1",
    "speaker.ring_index 1",
    "flow4g.flow_info.0.incr 12.5",
    "flow4g.flow_info.0.type 1",
    "flow4g.flow_info.0.ICCID 89860000000000000001",
    "flow4g.flow_info.0.IMEI 861234567890123",
    "counting.seg.0.enter_num 3",
    "counting.seg.0.leave_num 2",
    "counting.seg.0.start_time 1700000000",
    "counting.seg.0.stop_time 1700000300",
    "device.now 1700000000",
};

// A group stored in a member of the state.
#define AT(member) offsetof(State, member), sizeof(State::member)
// One of the five switches.
#define SWITCH(n) offsetof(State, switches) + (n) * sizeof(Switch), sizeof(Switch)

// Copies a record, never more than the receiver's len or the stored record's size.
void CopyRecord(void *dst, const void *src, int len, size_t size) {
    std::memcpy(dst, src, len < 0 ? 0 : std::min(static_cast<size_t>(len), size));
}

// Drops the entry of a child list (children, power) whose serial matches.
template <class List> bool RemoveBySerial(List &list, const char *serial) {
    const int capacity = static_cast<int>(std::size(list.subserial));
    int num = list.num < capacity ? list.num : capacity;
    for (int i = 0; i < num; i++) {
        if (std::strncmp(list.subserial[i].subserial, serial, sizeof list.subserial[i].subserial) == 0) {
            std::memmove(&list.subserial[i], &list.subserial[i + 1],
                         (num - i - 1) * sizeof list.subserial[0]);
            std::memset(&list.subserial[num - 1], 0, sizeof list.subserial[0]);
            list.num = num - 1;
            return true;
        }
    }
    return false;
}

} // namespace

const std::vector<Group> &DemoDevice::Groups() {
    static const std::vector<Group> groups = {
        {"switch.flow", &kSwitchEnableDesc, SWITCH(0), 1, 1, 0},
        {"switch.linger", &kSwitchEnableDesc, SWITCH(1), 1, 1, 1},
        {"switch.face", &kSwitchEnableDesc, SWITCH(2), 1, 1, 2},
        {"switch.distortion", &kSwitchEnableDesc, SWITCH(3), 1, 1, 3},
        {"switch.chime", &kSwitchEnableDesc, SWITCH(4), 1, 1, 4},
        {"flow", &kFlowCountingCfgDesc, AT(flow), 0, 0, kNone},
        {"icr", &kKeyValueDesc, AT(icr), 2, kNone, 0},
        {"voices", &kCustomVoiceInfosDesc, AT(voices), 3, kNone, kNone},
        {"linkage", &kLinkageModeDesc, AT(linkage), 4, 4, kNone},
        {"battery_status", &kBatteryWorkStatusDesc, AT(battery_status), 5, kNone, kNone},
        {"trusteeship", &kTrusteeshipDesc, AT(trusteeship), 6, kNone, kNone},
        {"children", &kTrusteeshipConnectDesc, AT(children), 7, kNone, kNone},
        {"power", &kPowerStatusDesc, AT(power), 8, kNone, kNone},
        {"deletion", &kDelTrusteeshipDesc, AT(deletion), kNone, kNone, kNone},
        {"ports", &kLocalMappedInfosDesc, AT(ports), 10, kNone, kNone},
        {"chime", &kAssociatedConnDesc, AT(chime), 11, kNone, kNone},
        {"battery_mode", &kBatteryWorkModeDesc, AT(battery_mode), 12, 16, kNone},
        {"ring", &kRingTypeDesc, AT(ring), 13, 17, kNone},
        {"plan", &kPlanDesc, AT(plan), 14, 18, kNone},
        {"net_mode", &kNetWorkModeDesc, AT(net_mode), 15, 19, kNone},
        {"modem", &k4GInfoDesc, AT(modem), 16, kNone, kNone},
        {"mute", &kOneClickMuteDesc, AT(mute), 17, 20, kNone},
        {"speaker", &kSpeakerConfigDesc, AT(speaker), 18, 21, kNone},
        {"flow4g", &kFlowRowsDesc, AT(flow4g), kNone, kNone, kNone},
        {"counting", &kFlowSegCountDesc, AT(counting), kNone, kNone, kNone},
        {"delay_sleep", &kDelaySleepDesc, AT(delay_sleep), kNone, 2, kNone},
        {"wake", &kWakeDesc, AT(wake), kNone, 5, kNone},
        {"drive_out", &kProwlDriveOutDesc, AT(drive_out), kNone, 14, kNone},
        {"radio_update", &kRadioUpdateDesc, AT(radio_update), kNone, 15, kNone},
        {"unbind", &kUnbindUserDesc, AT(unbind), kNone, 8, kNone},
        {"mapped_answer", &kVoddnsDevInfoDesc, AT(mapped_answer), kNone, 9, kNone},
        {"raw", &kLastRawDesc, AT(raw), kNone, kNone, kNone},
        {"device", &kDeviceClockDesc, AT(device), kNone, kNone, kNone},
    };
    return groups;
}

const Group *DemoDevice::FindGroup(const std::string &name) {
    for (const Group &g : Groups()) {
        if (name == g.name) {
            return &g;
        }
    }
    return nullptr;
}

DemoDevice::DemoDevice() {
    std::memset(&state_, 0, sizeof state_);
    for (const char *line : kDefaults) {
        std::string text(line);
        size_t space = text.find(' ');
        SetOp op;
        std::string error;
        if (!PrepareSet(text.substr(0, space), text.substr(space + 1), &op, &error)) {
            std::abort(); // the defaults are part of this program: a bad one is a bug
        }
        Set(op);
    }
}

bool DemoDevice::PrepareSet(const std::string &path, const std::string &value, SetOp *op,
                            std::string *error) {
    // The longest group name that prefixes the path ("switch.face" before "switch").
    const Group *best = nullptr;
    for (const Group &g : Groups()) {
        size_t n = std::strlen(g.name);
        if (path.compare(0, n, g.name) == 0 && path.size() > n && path[n] == '.' &&
            (best == nullptr || n > std::strlen(best->name))) {
            best = &g;
        }
    }
    if (best == nullptr) {
        std::string names;
        for (const Group &g : Groups()) {
            names += (names.empty() ? "" : ", ") + std::string(g.name);
        }
        *error = "unknown state path '" + path + "' (it starts with one of: " + names + ")";
        return false;
    }
    op->group = best;
    op->value = value;
    return ResolvePath(*best->desc, path.substr(std::strlen(best->name) + 1), &op->ref, error) &&
           CheckValue(*op->ref.field, value, error);
}

void DemoDevice::Set(const SetOp &op) {
    std::lock_guard<std::mutex> lock(mu_);
    WriteValue(op.ref, Storage(*op.group), op.value);
}

cJSON *DemoDevice::GroupJson(const Group &group) {
    std::lock_guard<std::mutex> lock(mu_);
    return RecordToJson(*group.desc, Storage(group), group.size);
}

void DemoDevice::SetRecvResult(int type, int code) {
    std::lock_guard<std::mutex> lock(mu_);
    recv_result_[type] = code;
}

void DemoDevice::SetRuntimeResult(int type, int code) {
    std::lock_guard<std::mutex> lock(mu_);
    runtime_result_[type] = code;
}

noltDevSDK_special_flow_counting_seg_count DemoDevice::Counting() {
    std::lock_guard<std::mutex> lock(mu_);
    return state_.counting;
}

FlowRows DemoDevice::FlowInfo() {
    std::lock_guard<std::mutex> lock(mu_);
    return state_.flow4g;
}

const Group *DemoDevice::Match(int type, bool runtime, const void *data) {
    for (const Group &g : Groups()) {
        if ((runtime ? g.runtime_type : g.msg_type) != type) {
            continue;
        }
        int first = 0;
        if (g.selector >= 0 && data != nullptr) {
            std::memcpy(&first, data, sizeof first);
        }
        if (g.selector < 0 || g.selector == first) {
            return &g;
        }
    }
    return nullptr;
}

int DemoDevice::Answer(noltDevSDK_special_runtime_info *info) {
    std::lock_guard<std::mutex> lock(mu_);
    auto forced = runtime_result_.find(info->type);
    if (forced != runtime_result_.end() && forced->second != 0) {
        return forced->second;
    }
    if (info->type == NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP) {
        return AnswerDeletion(info);
    }
    const Group *g = Match(info->type, true, info->data);
    if (g == nullptr || info->data == nullptr || info->len <= 0) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    }
    CopyRecord(info->data, Storage(*g), info->len, g->size);
    return 0;
}

// The deletion results travel in a block the application allocates and the module frees.
int DemoDevice::AnswerDeletion(noltDevSDK_special_runtime_info *info) {
    size_t units = state_.deletion.usNum < 16 ? state_.deletion.usNum : 16;
    size_t size =
        offsetof(DeletionBlock, astUnit) + units * sizeof(noltDevSDK_Special_DelTrusteeship_Param_S);
    void *block = std::malloc(size);
    if (block == nullptr) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_ENOUGH_MEMERY;
    }
    std::memcpy(block, &state_.deletion, size);
    static_cast<noltDevSDK_Special_DelTrusteeship_S *>(block)->usNum = static_cast<unsigned short>(units);
    info->data = block;
    info->len = static_cast<int>(size);
    return 0;
}

int DemoDevice::Apply(const noltDevSDK_special_msg_to_dev *msg) {
    std::lock_guard<std::mutex> lock(mu_);
    auto forced = recv_result_.find(msg->type);
    if (forced != recv_result_.end() && forced->second != 0) {
        return forced->second;
    }
    if (msg->data == nullptr) {
        return NOLTDEVSDK_SPECIAL_CODE_INVALID_PARAM;
    }
    switch (msg->type) {
    case NOLTDEVSDK_SPECIAL_ON_OPERATE_CUSTOM_VOICE:
        ApplyCustomVoice(*static_cast<const noltDevSDK_special_operate_custom_voice *>(msg->data));
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP:
        ApplyDeletion(*static_cast<const noltDevSDK_Special_DelTrusteeship_S *>(msg->data));
        return 0;
    case NOLTDEVSDK_SPECIAL_ON_TRANS_CMD_MSG:
        ApplyRaw(*static_cast<const noltDevSDK_special_trans_cmd_msg *>(msg->data));
        return 0;
    default:
        break;
    }
    const Group *g = Match(msg->type, false, msg->data);
    if (g == nullptr) {
        return NOLTDEVSDK_SPECIAL_CODE_NOT_SUPPORT;
    }
    CopyRecord(Storage(*g), msg->data, msg->len, g->size);
    return 0;
}

// Operation 2 deletes the voice in that slot; any other operation downloads (stores) it.
void DemoDevice::ApplyCustomVoice(const noltDevSDK_special_operate_custom_voice &op) {
    noltDevSDK_special_custom_voice_infos &v = state_.voices;
    int num = v.num < 0 ? 0 : (v.num > 16 ? 16 : v.num);
    int slot = 0;
    while (slot < num && v.voice_info[slot].index != op.index) {
        slot++;
    }
    if (op.type == 2) {
        if (slot < num) {
            std::memmove(&v.voice_info[slot], &v.voice_info[slot + 1],
                         (num - slot - 1) * sizeof v.voice_info[0]);
            std::memset(&v.voice_info[num - 1], 0, sizeof v.voice_info[0]);
            v.num = num - 1;
        }
        return;
    }
    if (slot == 16) {
        slot = 15; // full: the last slot gives way
    }
    noltDevSDK_special_custom_voice_info &e = v.voice_info[slot];
    std::memset(&e, 0, sizeof e);
    e.index = op.index;
    e.status = 1;
    std::memcpy(e.name, op.name, sizeof e.name - 1);
    std::memcpy(e.url, op.url, sizeof e.url - 1);
    e.create_time = state_.device.now;
    e.customVoice = op.customVoice;
    v.num = slot < num ? num : slot + 1;
}

// Each unit names a child to release: it leaves the child and power lists, and the
// result ("cResult" 0 done, 1 unknown child) waits to be read through the shadow key.
void DemoDevice::ApplyDeletion(const noltDevSDK_Special_DelTrusteeship_S &block) {
    DeletionBlock &out = state_.deletion;
    size_t units = block.usNum < 16 ? block.usNum : 16;
    out.uiVersion++;
    out.usNum = static_cast<unsigned short>(units);
    for (size_t i = 0; i < units; i++) {
        out.astUnit[i] = block.astUnit[i];
        bool found = RemoveBySerial(state_.children, block.astUnit[i].acSubserial);
        RemoveBySerial(state_.power, block.astUnit[i].acSubserial);
        out.astUnit[i].cResult = found ? 0 : 1;
    }
}

void DemoDevice::ApplyRaw(const noltDevSDK_special_trans_cmd_msg &raw) {
    LastRaw &out = state_.raw;
    std::memset(&out, 0, sizeof out);
    out.cmd_id = raw.cmd_id;
    out.msg_seq = raw.msg_seq;
    out.content_len = raw.content_len;
    size_t n = raw.content_len > 0 ? static_cast<size_t>(raw.content_len) : 0;
    if (raw.content != nullptr) {
        std::memcpy(out.content, raw.content, n < sizeof out.content ? n : sizeof out.content - 1);
    }
}

} // namespace sim
