/* Platform command identifiers used by the special domain: the installed protocol header
 * holds them, for the application and the module alike. */
#ifndef SPECIAL_CONSTS_H
#define SPECIAL_CONSTS_H

#include "noltDevSDK_special_protocol.h"

#endif
