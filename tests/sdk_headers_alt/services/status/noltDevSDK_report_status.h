/* The SDK's report-status service: polls registered status items and calls their
 * report functions on a change or a forced report. */
#ifndef NOLTDEVSDK_REPORT_STATUS_H
#define NOLTDEVSDK_REPORT_STATUS_H

#include "base_typedef.h"

#ifdef __cplusplus
extern "C" {
#endif

/* SDK-wide report status identifiers; the special module uses the 22 named here. */
typedef enum NOLTDEVSDK_REPORT_STATUS_E {
    NOLTDEVSDK_ReportNone = 0,
    NOLTDEVSDK_ReportSpecialSwitchEnableFlow = 31,
    NOLTDEVSDK_ReportFlowCountConfig = 32,
    NOLTDEVSDK_ReportSpecialKeyValue = 33,
    NOLTDEVSDK_ReportPowerStatus = 36,
    NOLTDEVSDK_ReportBatteryWorkStatus = 37,
    NOLTDEVSDK_ReportCustomVoice = 38,
    NOLTDEVSDK_ReportLinkageModeStatus = 39,
    NOLTDEVSDK_ReportTrusteeship = 40,
    NOLTDEVSDK_ReportTrusteeshipConnect = 42,
    NOLTDEVSDK_ReportVoddnsMappedPort = 45,
    NOLTDEVSDK_ReportAssociatedDeviceConnStatus = 92,
    NOLTDEVSDK_ReportBatteryWorkMode = 96,
    NOLTDEVSDK_ReportSpecialSwitchEnableLingerAlarm = 101,
    NOLTDEVSDK_ReportSpecialSwitchEnableFaceRecg = 102,
    NOLTDEVSDK_ReportSpecialRingType = 103,
    NOLTDEVSDK_ReportSpecialDistortionCorrection = 104,
    NOLTDEVSDK_ReportSpecialSwitchEnableChimeIndicator = 105,
    NOLTDEVSDK_ReportBatteryWorkModePlan = 118,
    NOLTDEVSDK_ReportBatteryNetWorkMode = 119,
    NOLTDEVSDK_Report4GInfo = 122,
    NOLTDEVSDK_ReportOneClickMute = 123,
    NOLTDEVSDK_ReportSpeakerConfig = 124,
    NOLTDEVSDK_ReportMax = 129
} NOLTDEVSDK_REPORT_STATUS_E;

/* One status item. The service copies the record on registration. */
typedef struct noltDevSDK_report_status_info {
    NOLTDEV_SDK_UINT32 is_register;
    NOLTDEV_SDK_UINT32 status_value; /* NOLTDEVSDK_REPORT_STATUS_E; the key on unregistration */
    NOLTDEV_SDK_UINT32 force_flag;
    int (*status_is_changed)(void); /* 1 changed, 0 not, -1 not supported */
    int (*report_status)(int b_force);
    int (*status_reset)(void); /* may be NULL */
} noltDevSDK_report_status_info;

int noltDevSDK_report_status_init(void);
int noltDevSDK_report_status_fini(void);
int noltDevSDK_report_status_register(const noltDevSDK_report_status_info *info);
int noltDevSDK_report_status_unregister(const noltDevSDK_report_status_info *info);
/* Marks an item for a forced report at the next poll; callable from any thread. */
int noltDevSDK_report_set_force_report(int status_value);

#ifdef __cplusplus
}
#endif

#endif
