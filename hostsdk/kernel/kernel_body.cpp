// Delivered bodies: copied into a block of their own, overwritten once the domain's
// callback has returned, then freed (AddressSanitizer) or kept a while among the last
// spent bodies.
#include <cstring>
#include <mutex>

#include "kernel_internal.h"
#include "noltdev_host.h"

#if defined(__SANITIZE_ADDRESS__)
#define NOLTDEV_KERNEL_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NOLTDEV_KERNEL_ASAN 1
#endif
#endif

namespace {

#ifndef NOLTDEV_KERNEL_ASAN
// The last spent bodies, still allocated: a kept pointer reads the fill for the next
// kKept deliveries instead of memory the allocator has handed out again.
const int kKept = 16;
std::mutex g_spent_mu;
std::unique_ptr<char[]> g_spent[kKept];
int g_next_spent = 0;
#endif

} // namespace

namespace noltdev_kernel {

bool Body::Assign(const char *text, uint32_t len) {
    if (text == nullptr && len != 0) {
        return false;
    }
    block_.reset(new char[static_cast<size_t>(len) + 1]);
    if (len != 0) {
        std::memcpy(block_.get(), text, len);
    }
    block_[len] = '\0';
    size_ = len;
    return true;
}

void Body::Spend() {
    if (!block_) {
        return;
    }
    // volatile: stores into a block about to be freed would otherwise be dropped
    volatile char *bytes = block_.get();
    for (uint32_t i = 0; i <= size_; ++i) {
        bytes[i] = static_cast<char>(NOLTDEV_HOST_SPENT_BODY_BYTE);
    }
#ifdef NOLTDEV_KERNEL_ASAN
    block_.reset();
#else
    std::lock_guard<std::mutex> lock(g_spent_mu);
    g_spent[g_next_spent].swap(block_); // the oldest kept body is freed below
    g_next_spent = (g_next_spent + 1) % kKept;
    block_.reset();
#endif
    size_ = 0;
}

} // namespace noltdev_kernel
