/* The "Trusteeship" shadow key. The platform writes a JSON array of child devices whose
 * trusteeship the base must delete; the module hands it to the application as a block
 * of deletion units and reports the application's results back as a JSON array. */
#include "special_shadow.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "app/special_app.h"
#include "app/special_enum.h"
#include "bscJSON.h"
#include "bus/special_bus.h"
#include "bus/special_json.h"
#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"

typedef noltDevSDK_Special_DelTrusteeship_S SpecialDelBlock;
typedef noltDevSDK_Special_DelTrusteeship_Param_S SpecialDelUnit;

/* The domain's one shadow service; registration sets usResetReportAll. */
static noltDevSDK_Shadow_Service_S g_astShadowService[] = {
    {"Trusteeship", noltDevSDK_Shadow_Service_Type_Offline_Cmd, 0, 0, 0, 0, ParseSync_DelTrusteeship,
     GenJson_Trusteeship_Proc},
};

int Special_Shadow_InitService(int resetReportAll) {
    g_astShadowService[0].usResetReportAll = (NOLTDEV_SDK_UINT16)resetReportAll;
    noltDevSDK_Shadow_DomainReg_S reg;
    memset(&reg, 0, sizeof reg);
    reg.usNum = sizeof g_astShadowService / sizeof g_astShadowService[0];
    reg.pstSrvList = g_astShadowService;
    int ret = noltDevSDK_Shadow_DomainReg(SPECIAL_DOMAIN_ID, &reg);
    if (ret != 0) {
        noltdev_debug(LOG_ERROR, "Failed to register special shadow service.\n");
    }
    return ret;
}

int Special_Shadow_FnitService(void) {
    int ret = noltDevSDK_Shadow_DomainDereg(SPECIAL_DOMAIN_ID);
    if (ret != 0) {
        noltdev_debug(LOG_ERROR, "Failed to deregister special shadow service.\n");
    }
    return ret;
}

/* Copies member key of obj into a record field, truncated and terminated; false when
 * the member is absent. A member that is not a string leaves the field empty. */
static bool SpecialCopyMember(const bscJSON *obj, const char *key, char *dst, size_t size) {
    const bscJSON *item = bscJSON_GetObjectItem(obj, key);
    if (item == NULL) {
        return false;
    }
    const char *text = bscJSON_GetStringValue(item);
    if (text == NULL) {
        noltdev_debug(LOG_ERROR, "item:%s is not a string\n", key);
        text = "";
    }
    snprintf(dst, size, "%s", text);
    return true;
}

/* Fills one unit from one command object; -1 when a required serial is missing. */
static int SpecialParseDelUnit(const bscJSON *obj, SpecialDelUnit *unit) {
    const bscJSON *channel = bscJSON_GetObjectItem(obj, "channel");
    if (channel != NULL) {
        unit->iChannel = channel->valueint;
    } else {
        noltdev_debug(LOG_ERROR, "Failed to find item:channel\n");
    }
    if (!SpecialCopyMember(obj, "subserial", unit->acSubserial, sizeof unit->acSubserial)) {
        noltdev_debug(LOG_ERROR, "Failed to find item:subserial\n");
        return -1;
    }
    if (!SpecialCopyMember(obj, "baseserial", unit->acBaseserial, sizeof unit->acBaseserial)) {
        noltdev_debug(LOG_ERROR, "Failed to find item:baseserial\n");
        return -1;
    }
    SpecialCopyMember(obj, "newbase", unit->acNewShipSerial, sizeof unit->acNewShipSerial);
    SpecialCopyMember(obj, "pwd", unit->acNewShipKey, sizeof unit->acNewShipKey);
    return 0;
}

/* Turns the parsed command into a block and hands it to recv_msg; the caller frees root. */
static int SpecialDeliverDeletion(const bscJSON *root) {
    if (!bscJSON_IsArray(root)) {
        noltdev_debug(LOG_ERROR, "Value String is not json array\n");
        return -1;
    }
    int num = bscJSON_GetArraySize(root);
    if (num == 0) {
        noltdev_debug(LOG_ERROR, "Array value, item num is empty\n");
        return -1;
    }
    size_t size = sizeof(SpecialDelBlock) + (size_t)num * sizeof(SpecialDelUnit);
    SpecialDelBlock *block = static_cast<SpecialDelBlock *>(calloc(1, size));
    if (block == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to calloc memory.\n");
        return -1;
    }
    block->usNum = (unsigned short)num;
    int ret = 0;
    int i = 0;
    for (const bscJSON *obj = root->child; obj != NULL && i < num && ret == 0; obj = obj->next, ++i) {
        ret = SpecialParseDelUnit(obj, &block->astUnit[i]);
    }
    if (ret == 0) {
        ret = SpecialAppRecvMsg(NOLTDEVSDK_SPECIAL_ON_DEL_TRUSTEESHIP, block, size, NULL);
        if (ret != 0) {
            noltdev_debug(LOG_ERROR, "Failed to ParseSync_DelTrusteeship while in recv_msg.\n");
        }
    }
    free(block);
    return ret;
}

int ParseSync_DelTrusteeship(const noltDevSDK_Shadow_value_t *pValue,
                             // cppcheck-suppress constParameter ; the shadow service's callback type fixes it
                             noltDevSDK_Shadow_ParseSync_Param_S *pstParam) {
    if (pValue == NULL || pValue->value == NULL || pstParam == NULL) {
        noltdev_debug(LOG_ERROR, "NULL input param.\n");
        return -1;
    }
    /* the shadow service is C: the value's type is compared as the int it holds */
    if (SpecialEnumValue(pValue->type) != shd_data_type_array) {
        noltdev_debug(LOG_ERROR, " pValue type err.\n");
        return -1;
    }
    const char *text = static_cast<const char *>(pValue->value);
    noltdev_debug(LOG_ERROR, "pcValueStr = %s\n", text);
    if (!SpecialAppHasRecvMsg("Error, Special domain:recv_msg is NULL.\n")) {
        return -1;
    }
    bscJSON *root = bscJSON_Parse(text);
    if (root == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to bscJSON_Parse:%s\n", text);
        return -1;
    }
    int ret = SpecialDeliverDeletion(root);
    bscJSON_Delete(root);
    return ret;
}

/* Appends {"channel": channel} to the array; NULL when the object cannot be made. */
static bscJSON *SpecialAppendChannel(bscJSON *array, int channel) {
    bscJSON *obj = bscJSON_CreateObject();
    if (obj == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to bscJSON_CreateObject\n");
        return NULL;
    }
    bscJSON_AddItemToArray(array, obj);
    SpecialJsonAddInt(obj, "channel", channel);
    return obj;
}

/* The results of count units as a formatted JSON array (never an empty one); NULL on
 * failure. The caller frees the text. */
static char *SpecialPrintDelResults(const SpecialDelBlock *block, unsigned int count) {
    bscJSON *array = bscJSON_CreateArray();
    if (array == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to bscJSON_CreateArray\n");
        return NULL;
    }
    for (unsigned int i = 0; i < count; ++i) {
        bscJSON *obj = SpecialAppendChannel(array, block->astUnit[i].iChannel);
        if (obj == NULL) {
            bscJSON_Delete(array);
            return NULL;
        }
        SpecialJsonAddInt(obj, "result", block->astUnit[i].cResult != 0 ? -1 : 0);
    }
    if (count == 0 && SpecialAppendChannel(array, 0) == NULL) {
        bscJSON_Delete(array);
        return NULL;
    }
    char *text = bscJSON_Print(array);
    if (text == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to bscJSON_Print.\n");
    }
    bscJSON_Delete(array);
    return text;
}

int GenJson_Trusteeship_Proc(noltDevSDK_Shadow_value_t *pValue,
                             noltDevSDK_Shadow_GenValue_Param_S *pstParam) {
    void *data = NULL;
    if (!SpecialAppHasRuntimeInfo("Error, Special domain:get_runtime_info is NULL.\n")) {
        return -1;
    }
    const int ret = SpecialAppRuntimeInfo(NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP, &data, 0, NULL);
    /* the application allocated the block; from here every path frees it */
    SpecialDelBlock *block = static_cast<SpecialDelBlock *>(data);
    if (ret != 0) {
        noltdev_debug(LOG_ERROR, "Failed to GenJson_Trusteeship_Proc, get_runtime_info type:%d\n",
                      NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP);
        free(block);
        return ret;
    }
    if (pValue == NULL || pstParam == NULL || pValue->value == NULL) {
        free(block);
        return 0;
    }
    if (block == NULL) {
        noltdev_debug(LOG_ERROR, "get_runtime_info type:%d gave no deletion block\n",
                      NOLTDEVSDK_SPECIAL_ON_GET_DELETE_TRUSTEESHIP);
        return -1;
    }
    pstParam->ucRstType = noltDevSDK_Shadow_GenValue_Type_Total;
    pstParam->uiVersion = block->uiVersion;
    /* one item per unit the block counts; the len the application wrote back is not
     * consulted */
    char *text = SpecialPrintDelResults(block, block->usNum);
    free(block);
    if (text == NULL) {
        noltdev_debug(LOG_ERROR, "Failed to GenJson_SmartControl_Rules.\n");
        return -1;
    }
    size_t len = strlen(text);
    if (pValue->length >= 0 && len <= (size_t)pValue->length) {
        pValue->type = shd_data_type_array;
        pValue->length = (NOLTDEV_SDK_INT32)len;
        memcpy(pValue->value, text, len);
        noltdev_debug(LOG_INFO, "GenJson_Trusteeship_Proc:%s\n", text);
    }
    bscJSON_free(text);
    return 0;
}
