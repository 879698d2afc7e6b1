/* Sending to the platform (the publish record, the XML and JSON paths), the "Result"
 * element of an exchange, the device sequence counter and the value formatters. */
#include <atomic>
#include <climits>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <string>

#include "log_ctrl.h"
#include "noltDevSDK_special_def.h"
#include "noltdev_sdk_kernel_struct.h"
#include "special_bus.h"

/* Device sequence numbers; 0 at load, wraps by unsigned overflow. */
static std::atomic<unsigned int> g_sequence(0);
/* taken from the kernel, report-status, custom-voice and application threads at once:
 * it must never fall back to a lock. ARM Linux before ARMv6 has no atomic instruction: the
 * compiler calls libgcc's __sync helpers, built on the kernel's compare-and-swap entry,
 * which never lock either, but the compiler counts them as "sometimes lock-free" (1). */
#if defined(__arm__) && defined(__linux__) && __ARM_ARCH < 6
#define SPECIAL_SEQUENCE_LOCK_FREE (ATOMIC_INT_LOCK_FREE >= 1)
#else
#define SPECIAL_SEQUENCE_LOCK_FREE (ATOMIC_INT_LOCK_FREE == 2)
#endif
static_assert(SPECIAL_SEQUENCE_LOCK_FREE, "the device sequence counter must be lock-free");

int SpecialPublish(const char *body, size_t body_len, int cmd_id, const char *cmd_version,
                   unsigned char msg_response, unsigned int msg_seq) {
    noltdev_sdk_kernel_pubmsg pub;
    memset(&pub, 0, sizeof(pub));
    pub.msg_response = msg_response;
    pub.msg_qos = QOS_T0;
    pub.msg_seq = msg_seq;
    /* the kernel only reads the body; its field is not const */
    pub.msg_body = reinterpret_cast<unsigned char *>(const_cast<char *>(body));
    pub.msg_body_len = static_cast<NOLTDEV_SDK_UINT32>(body_len);
    pub.msg_domain_id = SPECIAL_DOMAIN_ID;
    pub.msg_command_id = static_cast<NOLTDEV_SDK_UINT32>(cmd_id);
    if (cmd_version != NULL) {
        strncpy(pub.command_ver, cmd_version, sizeof(pub.command_ver) - 1);
    }
    return noltdev_sdk_kernel_send(&pub) != 0 ? NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR : 0;
}

const char *SpecialDevSerial(void) {
    return noltdev_sdk_kernel_getdevinfo_bykey("dev_subserial");
}

int special_send_msg_to_platform(const CMarkupSTL &msg, int cmd_id, const char *cmd_version,
                                 unsigned char msg_response, unsigned int msg_seq, char *child_dev_id) {
    (void)child_dev_id;
    std::string body = msg.GetDoc();
    noltdev_debug(LOG_ERROR, "s:%x\n", static_cast<unsigned int>(cmd_id));
    noltdev_debug(LOG_INFO, "\n%s\n", body.c_str());
    return SpecialPublish(body.c_str(), body.size(), cmd_id, cmd_version, msg_response, msg_seq);
}

int special_send_json_to_platform(const char *msg, int cmd_id, const char *cmd_version,
                                  unsigned char msg_response, unsigned int msg_seq) {
    noltdev_debug(LOG_ERROR, "s:%x\n", static_cast<unsigned int>(cmd_id));
    if (msg == NULL) {
        noltdev_debug(LOG_ERROR, "special_send_json_to_platform no body\n");
        return NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR;
    }
    noltdev_debug(LOG_INFO, "\nsend:%s\n", msg);
    return SpecialPublish(msg, strlen(msg), cmd_id, cmd_version, msg_response, msg_seq);
}

int special_xml_check_result(const CMarkupSTL &msg) {
    /* The search moves the document's cursor, which lives behind the class's private
     * pointer: the object itself is not modified, so casting const away is sound. */
    CMarkupSTL &doc = const_cast<CMarkupSTL &>(msg);
    if (!doc.FindElem("Result", true)) {
        return -1;
    }
    int code = SpecialAtoi(doc.GetData().c_str());
    if (code != 0) {
        noltdev_debug(LOG_ERROR, "response result error, code %#x\n", static_cast<unsigned int>(code));
    }
    return code;
}

int SpecialAtoi(const char *text) {
    if (text == NULL) {
        return 0;
    }
    long value = strtol(text, NULL, 10);
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}

void special_set_result(CMarkupSTL *rsp, int code) {
    if (rsp == NULL || !rsp->FindElem("Result", true)) {
        return;
    }
    rsp->SetData(code);
    noltdev_debug(LOG_ERROR, "SetResult %#x\n", static_cast<unsigned int>(code));
}

/* A weak reference: a kernel without the query leaves it unresolved (null) and every
 * line is built as before. */
#if defined(__GNUC__)
#pragma weak noltdev_debug_wanted
#endif

bool SpecialLogWanted(int level) {
#if defined(__GNUC__)
    return noltdev_debug_wanted == NULL || noltdev_debug_wanted(level) != 0;
#else
    (void)level;
    return true;
#endif
}

unsigned int GetNextSeqNum(void) {
    return g_sequence.fetch_add(1, std::memory_order_relaxed);
}

char *FloatToChar(float value, char *buf) {
    memset(buf, 0, 64);
    snprintf(buf, 64, "%.7f", static_cast<double>(value));
    return buf;
}

char *ConvertCalendarEx(time_t t, char *dst) {
    if (dst == NULL) {
        return NULL;
    }
    struct tm parts;
    memset(&parts, 0, sizeof(parts));
    if (gmtime_r(&t, &parts) == NULL) {
        noltdev_debug(LOG_ERROR, "ConvertCalendarEx time out of range\n");
        dst[0] = '\0';
        return dst;
    }
    /* a year beyond 9999 (64-bit time_t) would run past the 13 bytes dst holds: cut */
    int len = snprintf(dst, 13, "%4lld%02d%02d%02d%02d", static_cast<long long>(parts.tm_year) + 1900,
                       parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min);
    if (len > 12) {
        noltdev_debug(LOG_ERROR, "ConvertCalendarEx time out of range\n");
    }
    return dst;
}
