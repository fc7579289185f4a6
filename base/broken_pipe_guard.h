// Keeps a peer that went away from ending the process.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_BROKEN_PIPE_GUARD_H
#define BASE_BROKEN_PIPE_GUARD_H

#include <cerrno>
#include <csignal>
#include <ctime>

namespace quelm {

/// While it lives, writing to a connection that the peer closed fails on this thread without the
/// signal SIGPIPE, whose usual effect is the process's end. For libraries that write to sockets
/// themselves. Other threads and the process's way with the signal are left alone.
class BrokenPipeGuard {
public:
    BrokenPipeGuard()
    {
        sigemptyset(&brokenPipe_);
        sigaddset(&brokenPipe_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        // One that waits already is not ours to take away.
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &brokenPipe_, &before_);
    }
    ~BrokenPipeGuard()
    {
        if (!wasPending_) {
            const timespec atOnce{};
            while (sigtimedwait(&brokenPipe_, nullptr, &atOnce) < 0 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

private:
    sigset_t brokenPipe_;
    sigset_t before_;
    bool wasPending_;
};

} // namespace quelm

#endif
