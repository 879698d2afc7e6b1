// The kernel message thread: platform messages posted through the control API are
// queued and delivered in order, one at a time, on this thread.
#include <pthread.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "kernel_internal.h"
#include "noltdev_host.h"
#include "noltdev_sdk_kernel_error.h"

namespace {

struct Posted {
    int domain_id;
    int command_id;
    uint32_t seq;
    noltdev_kernel::Body body;
};

std::mutex g_control_mu; // serialises start and stop (held while a stop joins)
std::mutex g_mu;
std::condition_variable g_wake;    // the thread: work queued, or stop asked
std::condition_variable g_settled; // drain: the queue is empty and nothing is delivered
std::deque<Posted> g_queue;
bool g_running = false;
bool g_stopping = false;
bool g_delivering = false;
std::thread g_thread;
thread_local bool t_on_message_thread = false;

void Run() {
    t_on_message_thread = true;
    pthread_setname_np(pthread_self(), NOLTDEV_HOST_THREAD_KERNEL);
    std::unique_lock<std::mutex> lock(g_mu);
    for (;;) {
        g_wake.wait(lock, [] { return g_stopping || !g_queue.empty(); });
        if (g_queue.empty()) {
            break; // stopping, and everything was delivered
        }
        Posted next = std::move(g_queue.front());
        g_queue.pop_front();
        g_delivering = true;
        lock.unlock();
        noltdev_kernel::Deliver(next.domain_id, next.command_id, next.seq, next.body);
        lock.lock();
        g_delivering = false;
        g_settled.notify_all();
    }
}

} // namespace

extern "C" {

int noltdev_host_msg_thread_start(void) {
    if (t_on_message_thread) {
        return 0; // running, by definition
    }
    std::lock_guard<std::mutex> control(g_control_mu);
    std::lock_guard<std::mutex> lock(g_mu);
    if (g_running) {
        return 0;
    }
    try {
        g_thread = std::thread(Run);
    } catch (...) {
        return NOLTDEV_SDK_KERNEL_ERR_REFUSED; // no thread to be had
    }
    g_stopping = false;
    g_running = true;
    return 0;
}

void noltdev_host_msg_thread_stop(void) {
    if (t_on_message_thread) {
        return; // the thread cannot wait for itself
    }
    std::lock_guard<std::mutex> control(g_control_mu);
    {
        std::lock_guard<std::mutex> lock(g_mu);
        if (!g_running) {
            return;
        }
        g_stopping = true;
        g_running = false; // posts are refused from here on
    }
    g_wake.notify_all();
    g_thread.join();
}

int noltdev_host_post(int domain_id, int command_id, uint32_t seq, const char *body, uint32_t body_len) {
    Posted msg{domain_id, command_id, seq, noltdev_kernel::Body()};
    if (!msg.body.Assign(body, body_len)) {
        return NOLTDEV_SDK_KERNEL_ERR_PARAM;
    }
    if (noltdev_host_domain_loaded(domain_id) == 0) {
        return NOLTDEV_SDK_KERNEL_ERR_NO_DOMAIN;
    }
    {
        std::lock_guard<std::mutex> lock(g_mu);
        if (!g_running) {
            return NOLTDEV_SDK_KERNEL_ERR_REFUSED;
        }
        g_queue.push_back(std::move(msg));
    }
    g_wake.notify_one();
    return 0;
}

void noltdev_host_drain(void) {
    if (t_on_message_thread) {
        return; // the thread cannot wait for itself
    }
    std::unique_lock<std::mutex> lock(g_mu);
    g_settled.wait(lock, [] { return g_queue.empty() && !g_delivering; });
}

} // extern "C"
