// One field table per record, in the public header's field order and with its names,
// so that a transcript line "plan.time.2.0.begin = 27000" names a real field.
#include "record_tables.h"

#include <cstddef>

namespace sim {

#define MEMBER_SIZE(S, m) sizeof(S::m)
#define SCALAR(S, m, kind)                                                                                   \
    FieldDesc {                                                                                              \
#m, Kind::kind, offsetof(S, m), MEMBER_SIZE(S, m)                                                    \
    }
#define INT(S, m) SCALAR(S, m, Int)
#define TEXT(S, m) SCALAR(S, m, Text)
// An int holding a member of an enumeration of `members` members (0 .. members - 1).
#define ENUM(S, m, members)                                                                                  \
    FieldDesc {                                                                                              \
#m, Kind::Int, offsetof(S, m), MEMBER_SIZE(S, m), nullptr, 0, 0, nullptr, members                    \
    }
// An array of records: its element table, its capacity and the field counting it.
#define ARRAY(S, m, elem, d0, d1, count)                                                                     \
    FieldDesc {                                                                                              \
#m, Kind::Array, offsetof(S, m), (elem).size, &(elem), d0, d1, count                                 \
    }

using Cfg = noltDevSDK_special_flow_counting_cfg;
const RecordDesc kFlowCountingCfgDesc{
    "flow_counting_cfg",
    sizeof(Cfg),
    {INT(Cfg, interval), INT(Cfg, angle_vectical), SCALAR(Cfg, cross_line_x1, Float),
     SCALAR(Cfg, cross_line_y1, Float), SCALAR(Cfg, cross_line_x2, Float), SCALAR(Cfg, cross_line_y2, Float),
     SCALAR(Cfg, vector_line_x1, Float), SCALAR(Cfg, vector_line_y1, Float),
     SCALAR(Cfg, vector_line_x2, Float), SCALAR(Cfg, vector_line_y2, Float)}};

using Sw = noltDevSDK_special_switch_enable;
const RecordDesc kSwitchEnableDesc{
    "switch_enable",
    sizeof(Sw),
    {ENUM(Sw, type, NOLTDEVSDK_SPECIAL_SWITCH_TYPE_MAX), INT(Sw, channel), INT(Sw, enable)}};

using Ds = noltDevSDK_special_delay_sleep_type;
const RecordDesc kDelaySleepDesc{"delay_sleep_type", sizeof(Ds), {INT(Ds, channel), INT(Ds, type)}};

using Cv = noltDevSDK_special_operate_custom_voice;
const RecordDesc kOperateCustomVoiceDesc{
    "operate_custom_voice",
    sizeof(Cv),
    {INT(Cv, index), INT(Cv, type), TEXT(Cv, name), TEXT(Cv, url), INT(Cv, customVoice)}};

using Lm = noltDevSDK_linkage_mode_status;
const RecordDesc kLinkageModeDesc{
    "linkage_mode_status",
    sizeof(Lm),
    {INT(Lm, enable), INT(Lm, time), TEXT(Lm, acConnSerial), TEXT(Lm, acVerifyCode)}};

using Wk = noltDevSDK_wake;
const RecordDesc kWakeDesc{"wake", sizeof(Wk), {TEXT(Wk, subserial)}};

using Dp = noltDevSDK_Special_DelTrusteeship_Param_S;
const RecordDesc kDelTrusteeshipParamDesc{"DelTrusteeship_Param_S",
                                          sizeof(Dp),
                                          {INT(Dp, iChannel), TEXT(Dp, acSubserial), TEXT(Dp, acBaseserial),
                                           SCALAR(Dp, cResult, Byte), TEXT(Dp, acNewShipSerial),
                                           TEXT(Dp, acNewShipKey)}};
using Dt = noltDevSDK_Special_DelTrusteeship_S;
const RecordDesc kDelTrusteeshipDesc{"DelTrusteeship_S",
                                     sizeof(Dt),
                                     {SCALAR(Dt, uiVersion, UInt), SCALAR(Dt, usNum, UShort),
                                      ARRAY(Dt, astUnit, kDelTrusteeshipParamDesc, 16, 0, "usNum")}};

using Tc = noltDevSDK_special_trans_cmd_msg;
const RecordDesc kTransCmdDesc{
    "trans_cmd_msg",
    sizeof(Tc),
    {FieldDesc{"content", Kind::PtrText, offsetof(Tc, content), sizeof(char *), nullptr, 0, 0, "content_len"},
     INT(Tc, content_len), SCALAR(Tc, cmd_id, UInt), SCALAR(Tc, msg_type, Byte), SCALAR(Tc, msg_seq, UInt)}};

using Ub = noltDevSDK_special_unbind_user;
const RecordDesc kUnbindUserDesc{"unbind_user", sizeof(Ub), {INT(Ub, result)}};

using Mi = noltDevSDK_special_voddns_mapped_info;
const RecordDesc kMappedInfoDesc{
    "voddns_mapped_info", sizeof(Mi), {TEXT(Mi, type), INT(Mi, local_port), INT(Mi, nat_port)}};
using Di = noltDevSDK_special_voddns_dev_info;
const RecordDesc kVoddnsDevInfoDesc{"voddns_dev_info",
                                    sizeof(Di),
                                    {INT(Di, dev_status), TEXT(Di, dev_serial), TEXT(Di, domain),
                                     TEXT(Di, nat_ip), TEXT(Di, local_ip),
                                     ARRAY(Di, mapped_port_infos, kMappedInfoDesc, 16, 0, nullptr)}};

using Po = noltDevSDK_special_prowl_drive_out;
const RecordDesc kProwlDriveOutDesc{"prowl_drive_out", sizeof(Po), {INT(Po, channel)}};

using Ru = noltDevSDK_special_drive_out_radio_update;
const RecordDesc kRadioUpdateDesc{"drive_out_radio_update", sizeof(Ru), {INT(Ru, channel), TEXT(Ru, url)}};

using Bm = noltDevSDK_special_battery_work_mode;
const RecordDesc kBatteryWorkModeDesc{"battery_work_mode", sizeof(Bm), {INT(Bm, mode)}};

using Rt = noltDevSDK_special_ring_type;
const RecordDesc kRingTypeDesc{"ring_type", sizeof(Rt), {INT(Rt, type), INT(Rt, index), INT(Rt, vol)}};

using Sg = noltDevSDK_special_work_mode_time_segment;
const RecordDesc kSegmentDesc{
    "work_mode_time_segment", sizeof(Sg), {INT(Sg, mode), SCALAR(Sg, begin, Time), SCALAR(Sg, end, Time)}};
// The week grid is shown as "time" directly under the plan (its one-member wrapper
// record adds nothing to read).
using Pl = noltDevSDK_special_plan;
const RecordDesc kPlanDesc{
    "plan",
    sizeof(Pl),
    {ENUM(Pl, type, NOLTDEVSDK_SPECIAL_PLAN_MAX), INT(Pl, channel), INT(Pl, enable_plan),
     FieldDesc{"time", Kind::Array,
               offsetof(Pl, special_work_mode_plan) + offsetof(noltDevSDK_special_work_mode_plan, time),
               sizeof(Sg), &kSegmentDesc, 7, 5, nullptr}}};

using Nm = noltDevSDK_special_net_work_mode;
const RecordDesc kNetWorkModeDesc{"net_work_mode", sizeof(Nm), {INT(Nm, mode)}};

using Ocm = noltDevSDK_special_one_click_mute;
const RecordDesc kOneClickMuteDesc{"one_click_mute", sizeof(Ocm), {INT(Ocm, enable)}};

using Spk = noltDevSDK_special_speaker_config;
const RecordDesc kSpeakerConfigDesc{
    "speaker_config",
    sizeof(Spk),
    {INT(Spk, ring_enable), INT(Spk, ring_index), INT(Spk, intel_enable), INT(Spk, intel_index)}};

using Kv = noltDevSDK_special_key_value;
const RecordDesc kKeyValueDesc{
    "key_value",
    sizeof(Kv),
    {ENUM(Kv, key, NOLTDEVSDK_SPECIAL_KEY_TYPE_MAX), INT(Kv, channel), INT(Kv, value)}};

using Vi = noltDevSDK_special_custom_voice_info;
const RecordDesc kCustomVoiceInfoDesc{"custom_voice_info",
                                      sizeof(Vi),
                                      {INT(Vi, index), INT(Vi, status), TEXT(Vi, name), TEXT(Vi, url),
                                       SCALAR(Vi, create_time, Time), INT(Vi, customVoice)}};
using Vs = noltDevSDK_special_custom_voice_infos;
const RecordDesc kCustomVoiceInfosDesc{
    "custom_voice_infos",
    sizeof(Vs),
    {INT(Vs, num), ARRAY(Vs, voice_info, kCustomVoiceInfoDesc, 16, 0, "num")}};

using Bs = noltDevSDK_special_battery_workstatus;
const RecordDesc kBatteryWorkStatusDesc{
    "battery_workstatus", sizeof(Bs), {INT(Bs, keep_alive), INT(Bs, work_time), INT(Bs, special_business)}};

using Ts = noltDevSDK_Trusteeship;
const RecordDesc kTrusteeshipDesc{"Trusteeship", sizeof(Ts), {TEXT(Ts, subserial)}};

using Tsub = noltDevSDK_trusteeship_subserial;
const RecordDesc kTrusteeshipSubDesc{"trusteeship_subserial",
                                     sizeof(Tsub),
                                     {TEXT(Tsub, subserial), INT(Tsub, connect_status), INT(Tsub, iChannel)}};
using Tcn = noltDevSDK_Trusteeship_connect;
const RecordDesc kTrusteeshipConnectDesc{
    "Trusteeship_connect",
    sizeof(Tcn),
    {INT(Tcn, num), ARRAY(Tcn, subserial, kTrusteeshipSubDesc, 8, 0, "num")}};

using Ps = noltDevSDK_PowerStatus_subserial;
const RecordDesc kPowerSubDesc{"PowerStatus_subserial",
                               sizeof(Ps),
                               {TEXT(Ps, subserial), INT(Ps, type), INT(Ps, value), TEXT(Ps, des),
                                INT(Ps, remaining), TEXT(Ps, baseserial), INT(Ps, status)}};
using Pw = noltDevSDK_PowerStatus;
const RecordDesc kPowerStatusDesc{
    "PowerStatus", sizeof(Pw), {INT(Pw, num), ARRAY(Pw, subserial, kPowerSubDesc, 8, 0, "num")}};

using Lmi = noltDevSDK_special_voddns_local_mapped_infos;
const RecordDesc kLocalMappedInfosDesc{"voddns_local_mapped_infos",
                                       sizeof(Lmi),
                                       {TEXT(Lmi, external_ip), TEXT(Lmi, local_ip),
                                        ARRAY(Lmi, mapped_port_infos, kMappedInfoDesc, 16, 0, nullptr)}};

using Ac = noltDevSDK_special_associated_device_conn_status;
const RecordDesc kAssociatedConnDesc{"associated_device_conn_status",
                                     sizeof(Ac),
                                     {INT(Ac, conn_status), INT(Ac, signal), TEXT(Ac, ssid),
                                      TEXT(Ac, interface_name), TEXT(Ac, local_ip), TEXT(Ac, mask),
                                      TEXT(Ac, gateway), TEXT(Ac, db_serial)}};

using G4 = noltDevSDK_special_4G_Info_S;
const RecordDesc k4GInfoDesc{
    "4G_Info_S",
    sizeof(G4),
    {INT(G4, status), INT(G4, sigal), INT(G4, type), TEXT(G4, network), TEXT(G4, ICCID), TEXT(G4, IMEI)}};

using Fi = noltDevSDK_special_4G_flow_info;
const RecordDesc kFlowInfoDesc{
    "4G_flow_info", sizeof(Fi), {SCALAR(Fi, incr, Float), INT(Fi, type), TEXT(Fi, ICCID), TEXT(Fi, IMEI)}};
const RecordDesc kFlowRowsDesc{
    "4G_flow_info_page",
    sizeof(FlowRows),
    {INT(FlowRows, max_count), ARRAY(FlowRows, flow_info, kFlowInfoDesc, 8, 0, "max_count")}};

using Fs = noltDevSDK_special_flow_counting_seg;
const RecordDesc kFlowSegDesc{
    "flow_counting_seg",
    sizeof(Fs),
    {INT(Fs, enter_num), INT(Fs, leave_num), SCALAR(Fs, start_time, Time), SCALAR(Fs, stop_time, Time)}};
using Fc = noltDevSDK_special_flow_counting_seg_count;
const RecordDesc kFlowSegCountDesc{"flow_counting_seg_count",
                                   sizeof(Fc),
                                   {INT(Fc, seg_count), ARRAY(Fc, seg, kFlowSegDesc, 10, 0, "seg_count")}};

const RecordDesc kLastRawDesc{"trans_cmd_msg",
                              sizeof(LastRaw),
                              {SCALAR(LastRaw, cmd_id, UInt), SCALAR(LastRaw, msg_seq, UInt),
                               INT(LastRaw, content_len), TEXT(LastRaw, content)}};

const RecordDesc kDeviceClockDesc{"device", sizeof(DeviceClock), {SCALAR(DeviceClock, now, Time)}};

const RecordDesc *MsgRecord(int type) {
    static const RecordDesc *const kByType[] = {
        &kFlowCountingCfgDesc,
        &kSwitchEnableDesc,
        &kDelaySleepDesc,
        &kOperateCustomVoiceDesc,
        &kLinkageModeDesc,
        &kWakeDesc,
        &kDelTrusteeshipDesc,
        &kTransCmdDesc,
        &kUnbindUserDesc,
        &kVoddnsDevInfoDesc,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        &kProwlDriveOutDesc,
        &kRadioUpdateDesc,
        &kBatteryWorkModeDesc,
        &kRingTypeDesc,
        &kPlanDesc,
        &kNetWorkModeDesc,
        &kOneClickMuteDesc,
        &kSpeakerConfigDesc,
    };
    return type >= 0 && type < static_cast<int>(sizeof kByType / sizeof kByType[0]) ? kByType[type] : nullptr;
}

const RecordDesc *RuntimeRecord(int type) {
    static const RecordDesc *const kByType[] = {
        &kFlowCountingCfgDesc,
        &kSwitchEnableDesc,
        &kKeyValueDesc,
        &kCustomVoiceInfosDesc,
        &kLinkageModeDesc,
        &kBatteryWorkStatusDesc,
        &kTrusteeshipDesc,
        &kTrusteeshipConnectDesc,
        &kPowerStatusDesc,
        &kDelTrusteeshipDesc,
        &kLocalMappedInfosDesc,
        &kAssociatedConnDesc,
        &kBatteryWorkModeDesc,
        &kRingTypeDesc,
        &kPlanDesc,
        &kNetWorkModeDesc,
        &k4GInfoDesc,
        &kOneClickMuteDesc,
        &kSpeakerConfigDesc,
    };
    return type >= 0 && type < static_cast<int>(sizeof kByType / sizeof kByType[0]) ? kByType[type] : nullptr;
}

} // namespace sim
