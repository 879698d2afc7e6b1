// The status item table.
#include "status_items.h"

#include "status/special_status.h"

namespace special_bench {

const StatusItem kStatusItems[] = {
    {"SwitchEnableFlow", SpecialSwitchEnableFlowIsChanged, SpecialReportSwitchEnableFlow},
    {"SwitchEnableLingerAlarm", SpecialSwitchEnableLingerAlarmIsChanged,
     SpecialReportSwitchEnableLingerAlarm},
    {"SwitchEnableFaceRecg", SpecialSwitchEnableFaceRecgIsChanged, SpecialReportSwitchEnableFaceRecg},
    {"SwitchEnableChimeIndicator", SpecialSwitchEnableChimeIndicatorIsChanged,
     SpecialReportSwitchEnableChimeIndicator},
    {"FlowCountConfig", SpecialFlowCountConfigIsChanged, SpecialReportFlowCountConfig},
    {"KeyValue", SpecialICRIsChanged, SpecialReportKeyValue},
    {"BatteryWorkStatus", SpecialBatteryWorkStatusIsChanged, SpecialReportBateryWorkStatus},
    {"CustomVoice", SpecialCustomVoiceIsChanged, SpecialReportCustomVoice},
    {"LinkageModeStatus", SpecialLinkageModeStatusIsChanged, SpecialReportLinkageModeStatus},
    {"Trusteeship", SpecialTrusteeshipIsChanged, SpecialReportTrusteeship},
    {"PowerStatus", SpecialPowerStatusIsChanged, SpecialReportPowerStatus},
    {"TrusteeshipConnect", SpecialTrusteeshipConnectIsChanged, SpecialReportTrusteeshipConnect},
    {"VoddnsMappedPort", SpecialVoddnsLocalMappedInfosIsChanged, SpecialReportVoddnsLocalMappedPort},
    {"AssociatedDeviceConnStatus", SpecialAssociatedDeviceConnStatusIsChanged,
     SpecialReportAssociatedDeviceConnStatus},
    {"BatteryWorkMode", SpecialBatteryWorkModeIsChanged, SpecialReportBatteryWorkMode},
    {"BatteryWorkModePlan", SpecialBatteryWorkModePlanIsChanged, SpecialReportBatteryWorkModePlan},
    {"RingType", SpecialRingTypeIsChanged, SpecialReportRingType},
    {"SwitchEnableDistortion", SpecialSwitchEnableDistortionIsChanged, SpecialReportSwitchEnableDistortion},
    {"NetWorkMode", SpecialNetWorkModeIsChanged, SpecialReportNetWorkMode},
    {"OneClickMute", SpecialOneClickMuteIsChanged, SpecialReportOneClickMute},
    {"SpeakerConfig", SpecialSpeakerConfigIsChanged, SpecialReportSpeakerConfig},
    {"Dev4GInfo", SpecialDev4GInfoIsChanged, SpecialDev4GInfoReport},
};
const size_t kStatusItemCount = sizeof kStatusItems / sizeof kStatusItems[0];

} // namespace special_bench
