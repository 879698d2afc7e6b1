/* The SDK's JSON calls, mapped onto cJSON. */
#ifndef BSCJSON_H
#define BSCJSON_H

#include <cjson/cJSON.h>

typedef cJSON bscJSON;

#define bscJSON_Parse cJSON_Parse
#define bscJSON_Print cJSON_Print
#define bscJSON_PrintUnformatted cJSON_PrintUnformatted
#define bscJSON_PrintPreallocated cJSON_PrintPreallocated
#define bscJSON_Delete cJSON_Delete
#define bscJSON_free cJSON_free
#define bscJSON_malloc cJSON_malloc
#define bscJSON_GetArraySize cJSON_GetArraySize
#define bscJSON_GetArrayItem cJSON_GetArrayItem
#define bscJSON_GetObjectItem cJSON_GetObjectItem
#define bscJSON_GetObjectItemCaseSensitive cJSON_GetObjectItemCaseSensitive
#define bscJSON_GetStringValue cJSON_GetStringValue
#define bscJSON_IsArray cJSON_IsArray
#define bscJSON_IsObject cJSON_IsObject
#define bscJSON_IsNumber cJSON_IsNumber
#define bscJSON_IsString cJSON_IsString
#define bscJSON_CreateObject cJSON_CreateObject
#define bscJSON_CreateArray cJSON_CreateArray
#define bscJSON_CreateNumber cJSON_CreateNumber
#define bscJSON_CreateString cJSON_CreateString
#define bscJSON_AddItemToArray cJSON_AddItemToArray
#define bscJSON_AddItemToObject cJSON_AddItemToObject
#define bscJSON_AddStringToObject cJSON_AddStringToObject
#define bscJSON_AddNumberToObject cJSON_AddNumberToObject
#define bscJSON_AddRawToObject cJSON_AddRawToObject

#endif
