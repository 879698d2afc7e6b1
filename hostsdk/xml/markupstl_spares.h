// Each thread keeps a few cleared cursor states for its next cursors, so that a cursor
// made per message costs no allocation of its state nor of its parse buffer. A template
// so that the cursor can name its private state type as the argument.
#pragma once

#include <string>

namespace noltdev_xml {

template <class State> class Spares {
  public:
    // A cleared state from the calling thread's spares, or a new one.
    static State *Take() {
        (void)&closer_; // constructs the closer on the thread's first cursor
        List &l = list_;
        return l.count > 0 ? l.state[--l.count] : new State;
    }

    // Clears the state and keeps it among the thread's spares, or deletes it.
    static void Give(State *state) {
        List &l = list_;
        if (l.closed || l.count == kMax) {
            delete state;
            return;
        }
        state->Clear();
        if (state->text.capacity() > kKeptText) {
            std::string().swap(state->text); // a large document's buffer is let go
        }
        l.state[l.count++] = state;
    }

  private:
    static const int kMax = 4;
    static const size_t kKeptText = 4096;

    // Plain data, so that it stays usable after the closer has run at thread exit (a
    // cursor destroyed later then deletes its state).
    struct List {
        State *state[kMax];
        int count;
        bool closed;
    };
    // Deletes the thread's spares when the thread ends.
    struct Closer {
        ~Closer() {
            list_.closed = true;
            while (list_.count > 0) {
                delete list_.state[--list_.count];
            }
        }
    };

    static thread_local List list_;
    static thread_local Closer closer_;
};

template <class State> thread_local typename Spares<State>::List Spares<State>::list_;
template <class State> thread_local typename Spares<State>::Closer Spares<State>::closer_;

} // namespace noltdev_xml
