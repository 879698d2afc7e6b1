// The process keeps a few cleared cursor states for its next cursors, so that a cursor
// made per message costs no allocation of its state nor of its parse buffer. One pool for
// every thread: a short-lived thread (a custom-voice worker) leaves nothing behind when it
// ends. A template so that the cursor can name its private state type as the argument.
#pragma once

#include <pthread.h>

#include <string>

namespace noltdev_xml {

template <class State> class Spares {
  public:
    // A cleared state from the pool, or a new one.
    static State *Take() {
        (void)&closer_; // constructs the closer with the first cursor's library
        State *state = nullptr;
        pthread_mutex_lock(&mu_);
        if (count_ > 0) {
            state = states_[--count_];
        }
        pthread_mutex_unlock(&mu_);
        return state != nullptr ? state : new State;
    }

    // Clears the state and keeps it in the pool, or deletes it when the pool is full or
    // the process is ending.
    static void Give(State *state) {
        state->Clear();
        if (state->text.capacity() > kKeptText) {
            std::string().swap(state->text); // a large document's buffer is let go
        }
        pthread_mutex_lock(&mu_);
        bool kept = !closed_ && count_ < kMax;
        if (kept) {
            states_[count_++] = state;
        }
        pthread_mutex_unlock(&mu_);
        if (!kept) {
            delete state;
        }
    }

  private:
    static const int kMax = 8;
    static const size_t kKeptText = 4096;

    // Deletes the pool's states at exit. The pool itself is plain data with a statically
    // initialised mutex, so it stays usable after this has run (a cursor destroyed later
    // then deletes its state).
    struct Closer {
        ~Closer() {
            pthread_mutex_lock(&mu_);
            closed_ = true;
            while (count_ > 0) {
                delete states_[--count_];
            }
            pthread_mutex_unlock(&mu_);
        }
    };

    static pthread_mutex_t mu_;
    static State *states_[kMax];
    static int count_;
    static bool closed_;
    static Closer closer_;
};

template <class State> pthread_mutex_t Spares<State>::mu_ = PTHREAD_MUTEX_INITIALIZER;
template <class State> State *Spares<State>::states_[Spares<State>::kMax];
template <class State> int Spares<State>::count_;
template <class State> bool Spares<State>::closed_;
template <class State> typename Spares<State>::Closer Spares<State>::closer_;

} // namespace noltdev_xml
