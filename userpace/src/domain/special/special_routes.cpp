/* The routing table of the domain's platform commands and its lookup. */
#include <stddef.h>

#include "consts.h"
#include "special.h"
#include "special_capacity.h"
#include "special_handlers.h"
#include "special_routes.h"

static const special_route kSpecialRoutes[] = {
    /* command, framed handler, answer command, raw handler */
    {kCenPlt2PuSetSwitchEnableReq, SpecialSetSwitchEnableReq, kCenPlt2PuSetSwitchEnableRsp, NULL},
    {kCenPlt2PuSetDevPlanReq, SpecialSetDevPlanReq, kCenPlt2PuSetDevPlanRsp, NULL},
    {kCenPlt2PuSetFollowCountInfoReq, SetFlowCountInfoReq, kCenPlt2PuSetFollowCountInfoRsp, NULL},
    {kCenPlt2PuSetKeyValueReq, SpecialSetKeyValueReq, kCenPlt2PuSetKeyValueRsp, NULL},
    {kCenPlt2PuSetCustomVoiceReq, SpecialSetCustomVoiceReq, 0, NULL}, /* its worker answers */
    {kCenPlt2PuWakeReq, SpecialWakeReq, kCenPlt2PuWakeRsp, NULL},
    {kCenPlt2PuSetDelaySleepReq, SetDelaySleepReq, kCenPlt2PuSetDelaySleepRsp, NULL},
    {kCenPlt2PuProwlDriveOutReq, SpecialProwlDriveOutReq, kCenPlt2PuProwlDriveOutRsp, NULL},
    {kCenPlt2PuSetLinkageModeStatusReq, SpecialSetLinkageModeStatusReq, kCenPlt2PuSetLinkageModeStatusRsp,
     NULL},
    {kPu2CenPltQueryDevInfoByDomainRsp, SpecialQueryVoddnsMappedPortRsp, 0, NULL}, /* an answer: none back */
    {kPu2CenPltUnBindUserRsp, NULL, 0, UnbindUserReq_Bushandle},
    {kPu2CenPltSendVerificationCodeRsp, NULL, 0, NULL}, /* the platform's receipt; nothing to do */
};

const special_route *SpecialRouteFind(int cmd) {
    for (size_t i = 0; i < SPECIAL_COUNT_OF(kSpecialRoutes); ++i) {
        if (kSpecialRoutes[i].cmd == cmd) {
            return &kSpecialRoutes[i];
        }
    }
    return NULL;
}
