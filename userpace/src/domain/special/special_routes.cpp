/* The routing table of the domain's platform commands and its lookup. */
#include <stddef.h>

#include "consts.h"
#include "special.h"
#include "special_routes.h"

static const special_route kSpecialRoutes[] = {
    /* command, framed handler, answer command, raw handler */
    {kPu2CenPltSendVerificationCodeRsp, NULL, 0, NULL}, /* the platform's receipt; nothing to do */
};

const special_route *SpecialRouteFind(int cmd) {
    for (size_t i = 0; i < sizeof(kSpecialRoutes) / sizeof(kSpecialRoutes[0]); ++i) {
        if (kSpecialRoutes[i].cmd == cmd) {
            return &kSpecialRoutes[i];
        }
    }
    return NULL;
}
