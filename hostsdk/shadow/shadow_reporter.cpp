// The start-up reports' queue and the thread that runs them. The thread is started when
// a report is queued and none is running, and ends when the queue is empty, so an idle
// service holds no thread. The state lives on the heap and is never freed: a thread that
// is still finishing at process exit finds it intact.
#include "shadow_reporter.h"

#include <pthread.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "noltdev_host.h"

namespace {

struct Reporter {
    std::mutex mu;
    std::condition_variable idle;
    std::deque<std::pair<int, std::string>> queue;
    bool running = false;
    int done = 0;
};

Reporter &State() {
    static Reporter *state = new Reporter; // never freed, see above
    return *state;
}

void Run() {
    pthread_setname_np(pthread_self(), NOLTDEV_HOST_THREAD_SHADOW);
    Reporter &r = State();
    std::unique_lock<std::mutex> lock(r.mu);
    while (!r.queue.empty()) {
        std::pair<int, std::string> next = std::move(r.queue.front());
        r.queue.pop_front();
        lock.unlock();
        // generated as a read by the platform, which keeps it as the key's reported value
        noltdev_host_shadow_read(next.first, next.second.c_str(), 0, nullptr, 0, nullptr, nullptr);
        lock.lock();
        ++r.done;
    }
    r.running = false;
    r.idle.notify_all();
}

} // namespace

namespace noltdev_host {

void ShadowQueueReport(int domain_id, const std::string &key) {
    Reporter &r = State();
    std::lock_guard<std::mutex> lock(r.mu);
    std::pair<int, std::string> job(domain_id, key);
    if (std::find(r.queue.begin(), r.queue.end(), job) == r.queue.end()) {
        r.queue.push_back(std::move(job));
    }
    if (!r.running) {
        try {
            std::thread(Run).detach();
            r.running = true;
        } catch (...) {
            r.queue.clear(); // no thread to be had: the reports are dropped, as a busy device would
        }
    }
}

void ShadowDrainReports() {
    Reporter &r = State();
    std::unique_lock<std::mutex> lock(r.mu);
    r.idle.wait(lock, [&r] { return !r.running; });
}

int ShadowReportsRun() {
    Reporter &r = State();
    std::lock_guard<std::mutex> lock(r.mu);
    return r.done;
}

} // namespace noltdev_host
