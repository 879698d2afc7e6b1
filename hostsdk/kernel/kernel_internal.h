// Calls shared between the host kernel's parts: delivery to a domain (used by the
// direct inject and by the message thread) and the resets the control API combines.
#pragma once

#include <cstdint>
#include <string>

namespace noltdev_kernel {

// Delivers one platform message to the domain's data-route callback on the caller's
// thread; deliveries and events never overlap. The body is handed over NUL-terminated.
// 0, or NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN.
int Deliver(int domain_id, int command_id, uint32_t seq, std::string &body);

// Copies (body, body_len) into out; false when body is NULL with a non-zero length.
bool CopyBody(const char *body, uint32_t body_len, std::string &out);

void ResetExtensions();
void ResetSend();
void ResetDevice();
void ResetRedirects();
void ResetFaults();

} // namespace noltdev_kernel
