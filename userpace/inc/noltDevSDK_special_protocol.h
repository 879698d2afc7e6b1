/**
 * @file noltDevSDK_special_protocol.h
 * @brief The special domain's identifiers on the platform: the domain id, the command
 *        and answer identifiers (the platform's names), and the report-status ids of the
 *        22 status items. The module is built from these same definitions. Valid C99
 *        and C++.
 */
#ifndef NOLTDEVSDK_SPECIAL_PROTOCOL_H
#define NOLTDEVSDK_SPECIAL_PROTOCOL_H

/** @brief The domain id: the extension, every message sent, the shadow domain. */
#define NOLTDEVSDK_SPECIAL_DOMAIN_ID 3999

/** @brief Platform command identifiers of the domain, by the platform's own names. Each
 *  request has its answer at the next number. */
enum {
    /* device requests and their platform answers */
    kPu2CenPltQueryDevInfoByDomainReq = 10379,
    kPu2CenPltQueryDevInfoByDomainRsp = 10380,
    kPu2CenPltReportDevSwitchEnableReq = 12355,
    kPu2CenPltReportPowerStatusReq = 12358,
    kPu2CenPltReportDevicePlanReq = 12366,
    kPu2CenPltReportFlowCountReq = 12374,
    kPu2CenPltReportFlowCountConfigFReq = 12378,
    kPu2CenPltReportKeyValueReq = 12382,
    kPu2CenPltReportPortInfoReq = 12383,
    kPu2CenPltReportTrusteeshipReq = 12449,
    kPu2CenPltReportConnStatusReq = 12450,
    kPu2CenPltSendVerificationCodeReq = 13450,
    kPu2CenPltSendVerificationCodeRsp = 13451,
    kPu2CenPltAIMemberPicModelDataReportReq = 13584,
    kPu2CenPltAIMemberPicModelDataReportRsp = 13585,
    kPu2CenPltReport4GFlowInfoReq = 13600,
    kPu2CenPltUnBindUserReq = 19590,
    kPu2CenPltUnBindUserRsp = 19591,

    /* platform requests and the device's answers */
    kCenPlt2PuSetSwitchEnableReq = 18699,
    kCenPlt2PuSetSwitchEnableRsp = 18700,
    kCenPlt2PuSetDevPlanReq = 18731,
    kCenPlt2PuSetDevPlanRsp = 18732,
    kCenPlt2PuSetFollowCountInfoReq = 18749,
    kCenPlt2PuSetFollowCountInfoRsp = 18750,
    kCenPlt2PuSetKeyValueReq = 18829,
    kCenPlt2PuSetKeyValueRsp = 18830,
    kCenPlt2PuSetCustomVoiceReq = 18843,
    kCenPlt2PuSetCustomVoiceRsp = 18844,
    kCenPlt2PuWakeReq = 18863,
    kCenPlt2PuWakeRsp = 18864,
    kCenPlt2PuSetDelaySleepReq = 19588,
    kCenPlt2PuSetDelaySleepRsp = 19589,
    kCenPlt2PuDelTrusteeshipReq = 19592,
    kCenPlt2PuDelTrusteeshipRsp = 19593,
    kCenPlt2PuAIMemberPicSynReq = 19596,
    kCenPlt2PuAIMemberPicSynRsp = 19597,
    kCenPlt2PuAIMemberPicEditReq = 19598,
    kCenPlt2PuAIMemberPicEditRsp = 19599,
    kCenPlt2PuAIMemberPicDeleteReq = 19600,
    kCenPlt2PuAIMemberPicDeleteRsp = 19601,
    kCenPlt2PuAIMemberPicQueryReq = 19602,
    kCenPlt2PuAIMemberPicQueryRsp = 19603,
    kCenPlt2PuProwlDriveOutReq = 19606,
    kCenPlt2PuProwlDriveOutRsp = 19607,
    kCenPlt2PuSetLinkageModeStatusReq = 19917,
    kCenPlt2PuSetLinkageModeStatusRsp = 19918
};

/** @brief The report-status ids of the status items (see noltDevSDK_report_status.h of
 *  the SDK); the module registers all 22 at init. */
typedef enum {
    NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FLOW = 31, /**< people-flow switch */
    NOLTDEVSDK_SPECIAL_ITEM_FLOW_COUNT_CONFIG =
        32,                                 /**< people-flow counting configuration (reported when forced) */
    NOLTDEVSDK_SPECIAL_ITEM_KEY_VALUE = 33, /**< work mode of the key-value settings */
    NOLTDEVSDK_SPECIAL_ITEM_POWER_STATUS = 36,        /**< power states of the child devices */
    NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_STATUS = 37, /**< battery work status */
    NOLTDEVSDK_SPECIAL_ITEM_CUSTOM_VOICE = 38,        /**< custom voice list */
    NOLTDEVSDK_SPECIAL_ITEM_LINKAGE_MODE_STATUS = 39, /**< linkage mode */
    NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP = 40,         /**< trusteeship of the base */
    NOLTDEVSDK_SPECIAL_ITEM_TRUSTEESHIP_CONNECT = 42, /**< connection of the child devices */
    NOLTDEVSDK_SPECIAL_ITEM_VODDNS_MAPPED_PORT = 45,  /**< mapped ports of the dynamic-DNS service */
    NOLTDEVSDK_SPECIAL_ITEM_ASSOCIATED_DEVICE_CONN_STATUS = 92,  /**< associated devices */
    NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE = 96,              /**< battery work mode */
    NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_LINGER_ALARM = 101,    /**< lingering-alarm switch */
    NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_FACE_RECG = 102,       /**< face-recognition switch */
    NOLTDEVSDK_SPECIAL_ITEM_RING_TYPE = 103,                     /**< ring type of the bell */
    NOLTDEVSDK_SPECIAL_ITEM_DISTORTION_CORRECTION = 104,         /**< distortion-correction switch */
    NOLTDEVSDK_SPECIAL_ITEM_SWITCH_ENABLE_CHIME_INDICATOR = 105, /**< chime-indicator switch */
    NOLTDEVSDK_SPECIAL_ITEM_BATTERY_WORK_MODE_PLAN = 118,        /**< work-mode plan */
    NOLTDEVSDK_SPECIAL_ITEM_NETWORK_MODE = 119,                  /**< network mode */
    NOLTDEVSDK_SPECIAL_ITEM_4G_INFO = 122,                       /**< 4G modem information */
    NOLTDEVSDK_SPECIAL_ITEM_ONE_CLICK_MUTE = 123,                /**< one-click mute */
    NOLTDEVSDK_SPECIAL_ITEM_SPEAKER_CONFIG = 124,                /**< speaker configuration */
} NOLTDEVSDK_SPECIAL_STATUS_ITEM_E;

/** @brief Number of status items the module registers. */
#define NOLTDEVSDK_SPECIAL_STATUS_ITEM_COUNT 22

#endif
