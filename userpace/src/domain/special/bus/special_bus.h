/* The platform message bus: the publish record and the two send paths, the "Result"
 * element, the device sequence counter and value formatting. */
#ifndef SPECIAL_BUS_H
#define SPECIAL_BUS_H

#include <stddef.h>
#include <time.h>

#include "markupstl.h"
#include "noltDevSDK_special_protocol.h"

/* The domain of the module: extension id, redirect rows, every message sent, shadow. */
#define SPECIAL_DOMAIN_ID NOLTDEVSDK_SPECIAL_DOMAIN_ID
/* Version carried by every answer, request and report. */
#define SPECIAL_CMD_VERSION "v1.0.0"

/* Platform answer codes written by handlers. */
#define SPECIAL_RESULT_OK 0
#define SPECIAL_RESULT_PARSE_FAIL 3
#define SPECIAL_RESULT_REFUSED 4
#define SPECIAL_RESULT_PLAN_FAIL 131
#define SPECIAL_RESULT_APP_FAIL 0x101007

/* Fills the kernel's publish record around body (body_len bytes, the domain, command and
 * version) and hands it over; the kernel copies the body before it returns. 0 or
 * NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR. Every message the module sends goes here. */
int SpecialPublish(const char *body, size_t body_len, int cmd_id, const char *cmd_version,
                   unsigned char msg_response, unsigned int msg_seq);
/* The device serial the kernel holds, read afresh on every call (never cached). */
const char *SpecialDevSerial(void);
/* Sends the document's text; 0 or NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR.
 * child_dev_id is accepted and ignored. */
int special_send_msg_to_platform(const CMarkupSTL &msg, int cmd_id, const char *cmd_version,
                                 unsigned char msg_response, unsigned int msg_seq, char *child_dev_id);
/* Sends a NUL-terminated JSON text; 0 or NOLTDEVSDK_SPECIAL_CODE_SEND_DATA_ERROR. */
int special_send_json_to_platform(const char *msg, int cmd_id, const char *cmd_version,
                                  unsigned char msg_response, unsigned int msg_seq);
/* The "Result" of a received answer (searched from the first element of the current
 * level); -1 when there is none. */
int special_xml_check_result(const CMarkupSTL &msg);
/* atoi as the 32-bit target's C library gives it: strtol in base 10, saturated to the
 * int range, so a number too large for an int reads the same on the host and on the
 * device. NULL reads as 0. */
int SpecialAtoi(const char *text);
/* Writes code (as "%d") into the answer's "Result", when there is one. */
void special_set_result(CMarkupSTL *rsp, int code);
/* Whether the log takes lines of this level; true when the kernel cannot say. */
bool SpecialLogWanted(int level);
/* The next device sequence number (post-increment, lock-free). */
unsigned int GetNextSeqNum(void);
/* "%.7f" of value into buf, which holds 64 bytes; returns buf. */
char *FloatToChar(float value, char *buf);
/* "%4d%02d%02d%02d%02d" of t in UTC into dst (13 bytes); returns dst, NULL for NULL. */
char *ConvertCalendarEx(time_t t, char *dst);

#endif
