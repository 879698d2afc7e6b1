// The demo application: a virtual doorbell/camera base station that keeps every value
// the module can ask for in memory, answers get_runtime_info from it and applies every
// recv_msg to it, so that a platform command shows up as a status report on the next
// poll. Safe to call from the kernel's thread, custom-voice workers and the scenario.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "noltDevSDK_special_def.h"
#include "record_tables.h"
#include "records.h"

namespace sim {

// One named part of the device state ("ring", "switch.face", "children", ...).
struct Group {
    const char *name;
    const RecordDesc *desc;
    size_t offset;    // in the state
    size_t size;      // of the state's record (open-ended records hold a fixed number of entries)
    int runtime_type; // get_runtime_info type answered from it, or -1
    int msg_type;     // recv_msg type applied to it, or -1
    int selector;     // >= 0: only records whose first int equals it (switch type, key)
};

// A checked "set <path> <value>" ready to apply.
struct SetOp {
    const Group *group = nullptr;
    FieldRef ref;
    std::string value;
};

class DemoDevice {
  public:
    DemoDevice();

    // The application's callbacks.
    int Answer(noltDevSDK_special_runtime_info *info);
    int Apply(const noltDevSDK_special_msg_to_dev *msg);

    // Makes the callbacks answer a code for a type instead of working (0: work again).
    void SetRecvResult(int type, int code);
    void SetRuntimeResult(int type, int code);

    // Checks "group.field.path" and a value against the tables (no state needed).
    static bool PrepareSet(const std::string &path, const std::string &value, SetOp *op, std::string *error);
    void Set(const SetOp &op);

    static const std::vector<Group> &Groups();
    static const Group *FindGroup(const std::string &name);
    // The group's current value, decoded.
    cJSON *GroupJson(const Group &group);

    // What the application operations send.
    noltDevSDK_special_flow_counting_seg_count Counting();
    FlowRows FlowInfo();

  private:
    void *Storage(const Group &group) { return reinterpret_cast<unsigned char *>(&state_) + group.offset; }
    const Group *Match(int type, bool runtime, const void *data);
    void ApplyCustomVoice(const noltDevSDK_special_operate_custom_voice &op);
    void ApplyDeletion(const noltDevSDK_Special_DelTrusteeship_S &block);
    void ApplyRaw(const noltDevSDK_special_trans_cmd_msg &raw);
    int AnswerDeletion(noltDevSDK_special_runtime_info *info);

  public:
    // Fixed-capacity forms of the open-ended records (same layout as the public ones).
    struct ChildList {
        int num;
        noltDevSDK_trusteeship_subserial subserial[8];
    };
    struct PowerList {
        int num;
        noltDevSDK_PowerStatus_subserial subserial[8];
    };
    struct DeletionBlock {
        unsigned int uiVersion;
        unsigned short usNum;
        unsigned char reserved0[2];
        noltDevSDK_Special_DelTrusteeship_Param_S astUnit[16];
    };
    struct State {
        noltDevSDK_special_switch_enable switches[5];
        noltDevSDK_special_flow_counting_cfg flow;
        noltDevSDK_special_key_value icr;
        noltDevSDK_special_custom_voice_infos voices;
        noltDevSDK_linkage_mode_status linkage;
        noltDevSDK_special_battery_workstatus battery_status;
        noltDevSDK_Trusteeship trusteeship;
        ChildList children;
        PowerList power;
        DeletionBlock deletion;
        noltDevSDK_special_voddns_local_mapped_infos ports;
        noltDevSDK_special_associated_device_conn_status chime;
        noltDevSDK_special_battery_work_mode battery_mode;
        noltDevSDK_special_ring_type ring;
        noltDevSDK_special_plan plan;
        noltDevSDK_special_net_work_mode net_mode;
        noltDevSDK_special_4G_Info_S modem;
        noltDevSDK_special_one_click_mute mute;
        noltDevSDK_special_speaker_config speaker;
        FlowRows flow4g;
        noltDevSDK_special_flow_counting_seg_count counting;
        // kept as received
        noltDevSDK_special_delay_sleep_type delay_sleep;
        noltDevSDK_wake wake;
        noltDevSDK_special_prowl_drive_out drive_out;
        noltDevSDK_special_drive_out_radio_update radio_update;
        noltDevSDK_special_unbind_user unbind;
        noltDevSDK_special_voddns_dev_info mapped_answer;
        LastRaw raw;
        DeviceClock device;
    };

  private:
    std::mutex mu_;
    State state_;
    std::map<int, int> recv_result_, runtime_result_;
};

} // namespace sim
