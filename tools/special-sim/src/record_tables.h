// The field tables of every record the module exchanges with the application, and of
// the few records the demo device keeps for itself.
#pragma once

#include "noltDevSDK_special_def.h"
#include "records.h"

namespace sim {

// 4G traffic rows the demo sends with the 4G flow request (the page points at them).
struct FlowRows {
    int max_count;
    noltDevSDK_special_4G_flow_info flow_info[8];
};

// The last unrouted platform command the application received.
struct LastRaw {
    unsigned int cmd_id;
    unsigned int msg_seq;
    int content_len;
    char content[512];
};

// The demo device's clock, used to stamp stored custom voices.
struct DeviceClock {
    time_t now;
};

extern const RecordDesc kFlowCountingCfgDesc, kSwitchEnableDesc, kDelaySleepDesc, kOperateCustomVoiceDesc,
    kLinkageModeDesc, kWakeDesc, kDelTrusteeshipDesc, kTransCmdDesc, kUnbindUserDesc, kVoddnsDevInfoDesc,
    kProwlDriveOutDesc, kRadioUpdateDesc, kBatteryWorkModeDesc, kRingTypeDesc, kPlanDesc, kNetWorkModeDesc,
    kOneClickMuteDesc, kSpeakerConfigDesc, kKeyValueDesc, kCustomVoiceInfosDesc, kBatteryWorkStatusDesc,
    kTrusteeshipDesc, kTrusteeshipConnectDesc, kPowerStatusDesc, kLocalMappedInfosDesc, kAssociatedConnDesc,
    k4GInfoDesc, kFlowRowsDesc, kFlowSegCountDesc, kLastRawDesc, kDeviceClockDesc;

// The payload record of a recv_msg type / a get_runtime_info type (null: none).
const RecordDesc *MsgRecord(int type);
const RecordDesc *RuntimeRecord(int type);

} // namespace sim
