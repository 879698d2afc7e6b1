/* Platform command identifiers used by the special domain (the platform's own names). */
#ifndef SPECIAL_CONSTS_H
#define SPECIAL_CONSTS_H

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

#endif
