/* The "Trusteeship" shadow key: registration with the SDK's shadow service, and the two
 * callbacks that hand a deletion command to the application and report its results. */
#ifndef SPECIAL_SHADOW_H
#define SPECIAL_SHADOW_H

#include "noltDevSDK_shadow.h"

/* Registers the key; 0, or the shadow service's code. */
int Special_Shadow_InitService(int resetReportAll);
/* Deregisters the domain; 0, or the shadow service's code. */
int Special_Shadow_FnitService(void);

/* Parses a deletion command (a JSON array) and hands it to recv_msg; recv_msg's answer,
 * or -1. */
int ParseSync_DelTrusteeship(const noltDevSDK_Shadow_value_t *pValue,
                             noltDevSDK_Shadow_ParseSync_Param_S *pstParam);
/* Writes the application's deletion results into pValue's buffer (length: its size);
 * 0, get_runtime_info's failure, or -1. */
int GenJson_Trusteeship_Proc(noltDevSDK_Shadow_value_t *pValue, noltDevSDK_Shadow_GenValue_Param_S *pstParam);

#endif
