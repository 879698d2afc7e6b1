/* The 22 status items the module hands to the report-status service, each as a trio:
 * change detector (1 changed, 0 not, -1 not supported), report function (sends the
 * cached value; b_force set for a forced report) and reset function (back to the
 * not-seen value). The names are the platform's own, odd spellings included. Called
 * from the report-status thread. */
#ifndef SPECIAL_STATUS_H
#define SPECIAL_STATUS_H

int SpecialSwitchEnableFlowIsChanged(void);
int SpecialReportSwitchEnableFlow(int b_force);
int SpecialSwitchEnableFlowReset(void);
int SpecialSwitchEnableLingerAlarmIsChanged(void);
int SpecialReportSwitchEnableLingerAlarm(int b_force);
int SpecialSwitchEnableLingerAlarmReset(void);
int SpecialSwitchEnableFaceRecgIsChanged(void);
int SpecialReportSwitchEnableFaceRecg(int b_force);
int SpecialSwitchEnableFaceRecgReset(void);
int SpecialSwitchEnableChimeIndicatorIsChanged(void);
int SpecialReportSwitchEnableChimeIndicator(int b_force);
int SpecialSwitchEnableChimeIndicatorReset(void);
int SpecialFlowCountConfigIsChanged(void);
int SpecialReportFlowCountConfig(int b_force);
int SpecialICRIsChanged(void);
int SpecialReportKeyValue(int b_force);
int SpecialKeyValueReset(void);
int SpecialBatteryWorkStatusIsChanged(void);
int SpecialReportBateryWorkStatus(int b_force);
int SpecialBateryWorkStatusReset(void);
int SpecialCustomVoiceIsChanged(void);
int SpecialReportCustomVoice(int b_force);
int SpecialCustomVoiceReset(void);
int SpecialLinkageModeStatusIsChanged(void);
int SpecialReportLinkageModeStatus(int b_force);
int SpecialLinkageModeStatusReset(void);
int SpecialTrusteeshipIsChanged(void);
int SpecialReportTrusteeship(int b_force);
int SpecialTrusteeshipReset(void);
int SpecialPowerStatusIsChanged(void);
int SpecialReportPowerStatus(int b_force);
int SpecialPowerStatusReset(void);
int SpecialTrusteeshipConnectIsChanged(void);
int SpecialReportTrusteeshipConnect(int b_force);
int SpecialTrusteeshipConnectReset(void);
int SpecialVoddnsLocalMappedInfosIsChanged(void);
int SpecialReportVoddnsLocalMappedPort(int b_force);
int SpecialVoddnsLocalMappedInfosReset(void);
int SpecialAssociatedDeviceConnStatusIsChanged(void);
int SpecialReportAssociatedDeviceConnStatus(int b_force);
int SpecialAssociatedDeviceConnStatusReset(void);
int SpecialBatteryWorkModeIsChanged(void);
int SpecialReportBatteryWorkMode(int b_force);
int SpecialBatteryWorkModeReset(void);
int SpecialBatteryWorkModePlanIsChanged(void);
int SpecialReportBatteryWorkModePlan(int b_force);
int SpecialBatteryWorkModePlanReset(void);
int SpecialRingTypeIsChanged(void);
int SpecialReportRingType(int b_force);
int SpecialRingTypeReset(void);
int SpecialSwitchEnableDistortionIsChanged(void);
int SpecialReportSwitchEnableDistortion(int b_force);
int SpecialSwitchEnableDistortionReset(void);
int SpecialNetWorkModeIsChanged(void);
int SpecialReportNetWorkMode(int b_force);
int SpecialNetWorkModeReset(void);
int SpecialOneClickMuteIsChanged(void);
int SpecialReportOneClickMute(int b_force);
int SpecialOneClickMuteReset(void);
int SpecialSpeakerConfigIsChanged(void);
int SpecialReportSpeakerConfig(int b_force);
int SpecialSpeakerConfigReset(void);
int SpecialDev4GInfoIsChanged(void);
int SpecialDev4GInfoReport(int b_force);
int SpecialDev4GInfoReset(void);

#endif
