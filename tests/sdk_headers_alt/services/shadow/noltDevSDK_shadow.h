/* The SDK's shadow service: keeps the device shadow's keys per domain and calls the
 * owning domain to apply a platform value or to generate the key's current value. */
#ifndef NOLTDEVSDK_SHADOW_H
#define NOLTDEVSDK_SHADOW_H

#include "base_typedef.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef enum noltDevSDK_Shadow_Service_Type_E {
    noltDevSDK_Shadow_Service_Type_Status = 0,
    noltDevSDK_Shadow_Service_Type_Offline_Cmd = 1,
    noltDevSDK_Shadow_Service_Type_Max = 2
} noltDevSDK_Shadow_Service_Type_E;

typedef enum noltDevSDK_Shadow_GenValue_Type_E {
    noltDevSDK_Shadow_GenValue_Type_Total = 0,
    noltDevSDK_Shadow_GenValue_Type_Add = 1,
    noltDevSDK_Shadow_GenValue_Type_Max = 2
} noltDevSDK_Shadow_GenValue_Type_E;

typedef enum shd_data_type_e {
    shd_data_type_bool = 0,
    shd_data_type_int = 1,
    shd_data_type_double = 2,
    shd_data_type_string = 3,
    shd_data_type_array = 4,
    shd_data_type_object = 5,
    shd_data_type_null = 6
} shd_data_type_e;

/* A shadow value. For string, array and object values `value` points to the text and
 * `length` is its size in bytes (for generation: the buffer's capacity on entry). */
typedef struct noltDevSDK_Shadow_value_t {
    shd_data_type_e type;
    NOLTDEV_SDK_INT32 length;
    union {
        int value_bool;
        int value_int;
        double value_double;
        void *value;
    };
} noltDevSDK_Shadow_value_t;

typedef struct noltDevSDK_Shadow_ParseSync_Param_S {
    NOLTDEV_SDK_UINT32 uiSeq; /* another SDK's field: the module passes the record through */
    char acReserved[12];
    void *pres;
    void *pdomain;
    void *pkey;
} noltDevSDK_Shadow_ParseSync_Param_S;

typedef struct noltDevSDK_Shadow_GenValue_Param_S {
    NOLTDEV_SDK_UINT32 uiVersion;
    NOLTDEV_SDK_UINT8 ucRstType; /* noltDevSDK_Shadow_GenValue_Type_E */
    NOLTDEV_SDK_UINT8 aucPad[7];
    void *pres;
    void *pdomain;
    void *pkey;
} noltDevSDK_Shadow_GenValue_Param_S;

typedef struct noltDevSDK_Shadow_Service_S {
    char acKey[64];
    NOLTDEV_SDK_UINT16 usSrvType; /* noltDevSDK_Shadow_Service_Type_E */
    NOLTDEV_SDK_UINT16 usResetReportAll;
    NOLTDEV_SDK_UINT32 usVersion;
    NOLTDEV_SDK_UINT32 usMsg_seq;
    NOLTDEV_SDK_UINT8 usNeedReport;
    int (*parse_sync)(const noltDevSDK_Shadow_value_t *pValue, noltDevSDK_Shadow_ParseSync_Param_S *pstParam);
    int (*gen_value_JsStr)(noltDevSDK_Shadow_value_t *pValue, noltDevSDK_Shadow_GenValue_Param_S *pstParam);
} noltDevSDK_Shadow_Service_S;

typedef struct noltDevSDK_Shadow_DomainReg_S {
    char pCachePath[260];
    NOLTDEV_SDK_UINT8 bAutoDetect;
    NOLTDEV_SDK_UINT8 bDevReset;
    NOLTDEV_SDK_UINT16 usNum;
    noltDevSDK_Shadow_Service_S *pstSrvList;
} noltDevSDK_Shadow_DomainReg_S;

int noltDevSDK_Shadow_DomainReg(int domain_id, const noltDevSDK_Shadow_DomainReg_S *reg);
int noltDevSDK_Shadow_DomainDereg(int domain_id);

#ifdef __cplusplus
}
#endif

#endif
