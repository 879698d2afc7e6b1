// Calls shared between the host kernel's parts: delivery to a domain (used by the
// direct inject and by the message thread) and the resets the control API combines.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace noltdev_kernel {

// A platform message's body as the kernel hands it to a domain: a heap block of its own
// size, NUL-terminated, valid only for the call. Once delivered it is overwritten with
// NOLTDEV_HOST_SPENT_BODY_BYTE and given up (see Spend in kernel_body.cpp), so that a
// callback keeping the pointer fails on the PC as it would on a device.
class Body {
  public:
    // Copies (text, len); false when text is NULL with a non-zero length.
    bool Assign(const char *text, uint32_t len);
    char *data() const { return block_.get(); }
    uint32_t size() const { return size_; }
    // Overwrites the block and gives it up: freed at once under AddressSanitizer (which
    // reports a later read as a use after free), kept among the last few spent bodies
    // otherwise (a later read finds the fill, not whatever the allocator put there).
    void Spend();

  private:
    std::unique_ptr<char[]> block_;
    uint32_t size_ = 0;
};

// Delivers one platform message to the domain's data-route callback on the caller's
// thread, then spends the body; deliveries and events never overlap.
// 0, or NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN.
int Deliver(int domain_id, int command_id, uint32_t seq, Body &body);

// Copies (body, body_len) into out; false when body is NULL with a non-zero length.
bool CopyBody(const char *body, uint32_t body_len, std::string &out);

// Raises a kernel event on every loaded extension, in domain order, on the caller's
// thread; the number of extensions reached.
int RaiseEventEverywhere(int event_type);

// False while the control API holds the link down: sends fail.
bool LinkUp();

void ResetExtensions();
void ResetLink();
void ResetSend();
void ResetDevice();
void ResetRedirects();
void ResetFaults();

} // namespace noltdev_kernel
