/* The 22 status items the module hands to the report-status service, each as a trio:
 * change detector (1 changed, 0 not, -1 not supported), report function (sends the
 * cached value; b_force set for a forced report) and reset function (back to the
 * not-seen value). */
#ifndef SPECIAL_STATUS_H
#define SPECIAL_STATUS_H

/* ---- feature switches ------------------------------------------------------------- */
int SpecialSwitchEnableFlowIsChanged(void);
int SpecialReportSwitchEnableFlow(int b_force);
int SpecialSwitchEnableFlowReset(void);
int SpecialSwitchEnableLingerAlarmIsChanged(void);
int SpecialReportSwitchEnableLingerAlarm(int b_force);
int SpecialSwitchEnableLingerAlarmReset(void);
int SpecialSwitchEnableFaceRecgIsChanged(void);
int SpecialReportSwitchEnableFaceRecg(int b_force);
int SpecialSwitchEnableFaceRecgReset(void);
int SpecialSwitchEnableDistortionIsChanged(void);
int SpecialReportSwitchEnableDistortion(int b_force);
int SpecialSwitchEnableDistortionReset(void);
int SpecialSwitchEnableChimeIndicatorIsChanged(void);
int SpecialReportSwitchEnableChimeIndicator(int b_force);
int SpecialSwitchEnableChimeIndicatorReset(void);

/* ---- scalar settings ---------------------------------------------------------------- */
/* Never changed by polling: reported only when forced, reading the application afresh.
 * It has no reset function. */
int SpecialFlowCountConfigIsChanged(void);
int SpecialReportFlowCountConfig(int b_force);
int SpecialICRIsChanged(void);
int SpecialReportKeyValue(int b_force);
int SpecialKeyValueReset(void);
int SpecialBatteryWorkStatusIsChanged(void);
int SpecialReportBateryWorkStatus(int b_force);
int SpecialBateryWorkStatusReset(void);
int SpecialLinkageModeStatusIsChanged(void);
int SpecialReportLinkageModeStatus(int b_force);
int SpecialLinkageModeStatusReset(void);
int SpecialBatteryWorkModeIsChanged(void);
int SpecialReportBatteryWorkMode(int b_force);
int SpecialBatteryWorkModeReset(void);
int SpecialRingTypeIsChanged(void);
int SpecialReportRingType(int b_force);
int SpecialRingTypeReset(void);
int SpecialNetWorkModeIsChanged(void);
int SpecialReportNetWorkMode(int b_force);
int SpecialNetWorkModeReset(void);
int SpecialOneClickMuteIsChanged(void);
int SpecialReportOneClickMute(int b_force);
int SpecialOneClickMuteReset(void);
int SpecialSpeakerConfigIsChanged(void);
int SpecialReportSpeakerConfig(int b_force);
int SpecialSpeakerConfigReset(void);

/* ---- work-mode plan and custom voices -------------------------------------------------- */
int SpecialBatteryWorkModePlanIsChanged(void);
int SpecialReportBatteryWorkModePlan(int b_force);
int SpecialBatteryWorkModePlanReset(void);
int SpecialCustomVoiceIsChanged(void);
int SpecialReportCustomVoice(int b_force);
int SpecialCustomVoiceReset(void);

/* ---- child devices ------------------------------------------------------------------- */
int SpecialTrusteeshipIsChanged(void);
int SpecialReportTrusteeship(int b_force);
int SpecialTrusteeshipReset(void);
int SpecialTrusteeshipConnectIsChanged(void);
int SpecialReportTrusteeshipConnect(int b_force);
int SpecialTrusteeshipConnectReset(void);
int SpecialPowerStatusIsChanged(void);
int SpecialReportPowerStatus(int b_force);
int SpecialPowerStatusReset(void);
int SpecialAssociatedDeviceConnStatusIsChanged(void);
int SpecialReportAssociatedDeviceConnStatus(int b_force);
int SpecialAssociatedDeviceConnStatusReset(void);

/* ---- network -------------------------------------------------------------------------- */
int SpecialVoddnsLocalMappedInfosIsChanged(void);
int SpecialReportVoddnsLocalMappedPort(int b_force);
int SpecialVoddnsLocalMappedInfosReset(void);
int SpecialDev4GInfoIsChanged(void);
int SpecialDev4GInfoReport(int b_force);
int SpecialDev4GInfoReset(void);

#endif
