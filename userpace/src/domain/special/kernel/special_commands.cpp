/* The command table of the domain's platform commands, its lookups and the registration
 * of its redirect keys. */
#include "special_commands.h"

#include <stddef.h>
#include <string.h>

#include "app/special_capacity.h"
#include "bus/special_bus.h"
#include "bus/special_platform_keys.h"
#include "consts.h"
#include "handlers/special_handlers.h"
#include "log_ctrl.h"
#include "noltDevSDK_Common_Module_Def.h"

/* Generic commands whose body carries one of these type keys come to this domain. */
static const SpecialRedirect kSwitchKeys[] = {
    {SPECIAL_TEXT_OF(SPECIAL_SWITCH_FLOW), "special register switch type error\n"},
    {SPECIAL_TEXT_OF(SPECIAL_SWITCH_CHIME_INDICATOR), "special register 611 switch type error\n"},
    {SPECIAL_TEXT_OF(SPECIAL_SWITCH_LINGER_ALARM), "special register 613 switch type error\n"},
    {SPECIAL_TEXT_OF(SPECIAL_SWITCH_FACE_RECG), "special register 614 switch type error\n"},
    {SPECIAL_TEXT_OF(SPECIAL_SWITCH_DISTORTION), "special register 617 switch type error\n"},
    {NULL, NULL},
};
static const SpecialRedirect kKeyValueKeys[] = {
    {SPECIAL_KEY_BATTERY_WORK_MODE, "special register key value " SPECIAL_KEY_BATTERY_WORK_MODE " error\n"},
    {SPECIAL_KEY_RING_TYPE, "special register key value CustomRing error\n"},
    {SPECIAL_KEY_NETWORK_MODE, "special register key value " SPECIAL_KEY_NETWORK_MODE " error\n"},
    {SPECIAL_KEY_ONE_CLICK_MUTE, "special register key value error\n"},
    {SPECIAL_KEY_SPEAKER_CONFIG, "special register key value error\n"},
    {NULL, NULL},
};
static const SpecialRedirect kPlanKeys[] = {
    {SPECIAL_TEXT_OF(SPECIAL_PLAN_TYPE_WORK_MODE), "special register dev plan error\n"},
    {NULL, NULL},
};

/* In redirect order: the switch keys, then the key-value keys, then the plan type. The
 * rows with an incoming command come first. */
static constexpr special_command kSpecialCommands[] = {
    /* incoming command, framed handler, raw handler, answer command, answer form, redirect keys */
    {kCenPlt2PuSetSwitchEnableReq, SpecialSetSwitchEnableReq, NULL, kCenPlt2PuSetSwitchEnableRsp,
     kSpecialAnswerSkeleton, kSwitchKeys},
    {kCenPlt2PuSetKeyValueReq, SpecialSetKeyValueReq, NULL, kCenPlt2PuSetKeyValueRsp, kSpecialAnswerSkeleton,
     kKeyValueKeys},
    {kCenPlt2PuSetDevPlanReq, SpecialSetDevPlanReq, NULL, kCenPlt2PuSetDevPlanRsp, kSpecialAnswerSkeleton,
     kPlanKeys},
    {kCenPlt2PuSetFollowCountInfoReq, SetFlowCountInfoReq, NULL, kCenPlt2PuSetFollowCountInfoRsp,
     kSpecialAnswerSkeleton, NULL},
    /* its worker answers */
    {kCenPlt2PuSetCustomVoiceReq, SpecialSetCustomVoiceReq, NULL, 0, kSpecialAnswerSkeleton, NULL},
    {kCenPlt2PuWakeReq, SpecialWakeReq, NULL, kCenPlt2PuWakeRsp, kSpecialAnswerHandlerXml, NULL},
    {kCenPlt2PuSetDelaySleepReq, SetDelaySleepReq, NULL, kCenPlt2PuSetDelaySleepRsp, kSpecialAnswerSkeleton,
     NULL},
    {kCenPlt2PuProwlDriveOutReq, SpecialProwlDriveOutReq, NULL, kCenPlt2PuProwlDriveOutRsp,
     kSpecialAnswerHandlerXml, NULL},
    {kCenPlt2PuSetLinkageModeStatusReq, SpecialSetLinkageModeStatusReq, NULL,
     kCenPlt2PuSetLinkageModeStatusRsp, kSpecialAnswerSkeleton, NULL},
    /* the platform's answers to the device's own requests: none goes back */
    {kPu2CenPltQueryDevInfoByDomainRsp, SpecialQueryVoddnsMappedPortRsp, NULL, 0, kSpecialAnswerSkeleton,
     NULL},
    {kPu2CenPltUnBindUserRsp, NULL, UnbindUserReq_Bushandle, 0, kSpecialAnswerSkeleton, NULL},
    /* the platform's receipt; nothing to do */
    {kPu2CenPltSendVerificationCodeRsp, NULL, NULL, 0, kSpecialAnswerSkeleton, NULL},
    /* answers kept without a route: the face-information group and its neighbours */
    {kSpecialUnrouted, NULL, NULL, kPu2CenPltAIMemberPicModelDataReportRsp, kSpecialAnswerHandlerXml, NULL},
    {kSpecialUnrouted, NULL, NULL, kCenPlt2PuDelTrusteeshipRsp, kSpecialAnswerHandlerXml, NULL},
    {kSpecialUnrouted, NULL, NULL, kCenPlt2PuAIMemberPicSynRsp, kSpecialAnswerHandlerJson, NULL},
    {kSpecialUnrouted, NULL, NULL, kCenPlt2PuAIMemberPicEditRsp, kSpecialAnswerHandlerJson, NULL},
    {kSpecialUnrouted, NULL, NULL, kCenPlt2PuAIMemberPicDeleteRsp, kSpecialAnswerHandlerJson, NULL},
    {kSpecialUnrouted, NULL, NULL, kCenPlt2PuAIMemberPicQueryRsp, kSpecialAnswerHandlerJson, NULL},
};

/* The number of leading rows with an incoming command, counted from row i. */
static constexpr size_t SpecialRoutedRows(size_t i) {
    return i < SPECIAL_COUNT_OF(kSpecialCommands) && kSpecialCommands[i].cmd != kSpecialUnrouted
               ? SpecialRoutedRows(i + 1)
               : i;
}
static constexpr size_t kSpecialRouted = SpecialRoutedRows(0);

const special_command *SpecialCommandFind(int cmd) {
    /* only the routed rows: an incoming command equal to kSpecialUnrouted goes raw */
    for (size_t i = 0; i < kSpecialRouted; ++i) {
        if (kSpecialCommands[i].cmd == cmd) {
            return &kSpecialCommands[i];
        }
    }
    return NULL;
}

void SpecialCommandRegisterRedirects(void) {
    Common_redirect_pair pair;
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kSpecialCommands); ++i) {
        for (const SpecialRedirect *r = kSpecialCommands[i].redirects; r != NULL && r->key != NULL; ++r) {
            /* cleared for each key: no tail of a longer key survives into a shorter one */
            memset(&pair, 0, sizeof(pair));
            pair.domain_id = SPECIAL_DOMAIN_ID;
            pair.command_id = static_cast<NOLTDEV_SDK_UINT32>(kSpecialCommands[i].cmd);
            strncpy(pair.type, r->key, sizeof(pair.type) - 1);
            if (noltDevSDK_Common_Module_RedirectReg(&pair) != 0) {
                noltdev_debug(LOG_ERROR, "%s", r->fail_log);
            }
        }
    }
}

/* The form of the answer sent under rsp_cmd: its row's, else the frame makes it. */
static SpecialAnswerForm SpecialAnswerFormOf(int rsp_cmd) {
    for (size_t i = 0; rsp_cmd != 0 && i < SPECIAL_COUNT_OF(kSpecialCommands); ++i) {
        if (kSpecialCommands[i].rsp_cmd == rsp_cmd) {
            return kSpecialCommands[i].form;
        }
    }
    return kSpecialAnswerSkeleton;
}

int SpecialPlatformReqAndRspXmlBushandle(void *buf, int buf_len, int rsp_cmd, const char *cmd_version,
                                         unsigned int msg_seq,
                                         special_handle_platform_req_and_rsp handle_req_rsp,
                                         char *child_dev_id) {
    (void)buf_len; /* the kernel terminates the body; it is read as text */
    return SpecialFrameRun(buf, rsp_cmd, SpecialAnswerFormOf(rsp_cmd), cmd_version, msg_seq, handle_req_rsp,
                           child_dev_id);
}
