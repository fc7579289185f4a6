// Sends a job over a TCP connection, and watches how the device takes it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/tcp_destination.h"

#include "base/duration_text.h"
#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/jobs/device_connection.h"

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <utility>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// What is waited between looks at how much the device has acknowledged, which no event tells.
constexpr milliseconds acknowledgementInterval{10};

/// Makes a close of the connection a reset, or an ordinary close again.
void resetOnClose(int connection, bool on)
{
    const linger setting{on ? 1 : 0, 0};
    ::setsockopt(connection, SOL_SOCKET, SO_LINGER, &setting, sizeof setting);
}

/// One job on its way.
class Sending {
public:
    Sending(FileHandle connection, std::string who, const DeviceLimits& limits, const Transfer& transfer,
            int spool, std::uint64_t size)
        : connection_(std::move(connection)), who_(std::move(who)), limits_(limits), transfer_(transfer),
          spool_(spool), size_(size)
    {
        resetOnClose(connection_.get(), true);
    }

    void run()
    {
        patience_ = Clock::now() + limits_.stall;
        transfer_.report(0, size_);
        // Not by what the device has acknowledged: it may have more by the time that anybody asks.
        sendCounting(sent_, [this] {
            while (!isDone()) {
                if (transfer_.isCancelled())
                    failCancelled();
                waitForDevice();
                dropAnswers();
                sendMore();
                endWhenAllIsSent();
                failOnError(pendingError());
                countTaken();
            }
        });
        resetOnClose(connection_.get(), false);
    }

private:
    bool isDone()
    {
        const auto now = Clock::now();
        if (ended_ && taken_ == size_) {
            if (!closeBy_)
                closeBy_ = now + limits_.close;
            return closed_ || now >= *closeBy_;
        }
        if (now >= patience_)
            throw Error(localized("%s: took nothing for %s, after %d of %d bytes of the job; look at the "
                                  "device (paper, memory, messages) before sending the job again",
                                  who_, durationText(limits_.stall), taken_, size_));
        return false;
    }

    void waitForDevice() const
    {
        const bool unsent = sent_ < size_;
        // A connection that both sides have ended always counts as ready: only time is waited then.
        const int watched = closed_ && !unsent ? -1 : connection_.get();
        const auto events = static_cast<short>((closed_ ? 0 : POLLIN) | (unsent ? POLLOUT : 0));
        pollfd wait{watched, events, 0};
        const bool unacknowledged = !unsent && taken_ < size_;
        const auto pause = unacknowledged ? acknowledgementInterval : cancellationInterval;
        // A signal ends the wait, too: it may be a cancellation.
        ::poll(&wait, 1, static_cast<int>(pause.count()));
    }

    /// Devices report on their jobs, and some stop when nobody reads the reports.
    void dropAnswers()
    {
        std::array<char, 16384> answers;
        // Bounded, because a device may chatter faster than we read.
        for (int blocks = 0; !closed_ && blocks < 64; ++blocks) {
            const auto count = ::recv(connection_.get(), answers.data(), answers.size(), MSG_DONTWAIT);
            if (count < 0 && errno != EINTR && errno != EAGAIN)
                failOnError(errno);
            if (count < 0)
                return;
            closed_ = count == 0;
        }
    }

    void sendMore()
    {
        // Bounded, so that cancellations and answers are seen while a fast device takes a long job.
        for (int blocks = 0; sent_ < size_ && blocks < 16; ++blocks) {
            if (block_.empty())
                fillBlock();
            const auto count =
                ::send(connection_.get(), block_.data(), block_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
            if (count < 0 && errno != EINTR && errno != EAGAIN)
                failOnError(errno);
            if (count < 0)
                return;
            sent_ += static_cast<std::uint64_t>(count);
            block_.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    void fillBlock()
    {
        const auto count = readSpool(spool_, buffer_, sent_);
        block_ = std::string_view(buffer_).substr(0, count);
    }

    void endWhenAllIsSent()
    {
        if (ended_ || sent_ < size_)
            return;
        ::shutdown(connection_.get(), SHUT_WR);
        ended_ = true;
    }

    int pendingError() const
    {
        int error = 0;
        socklen_t length = sizeof error;
        ::getsockopt(connection_.get(), SOL_SOCKET, SO_ERROR, &error, &length);
        return error;
    }

    void countTaken()
    {
        int unacknowledged = 0;
        if (::ioctl(connection_.get(), SIOCOUTQ, &unacknowledged) != 0)
            return;
        // The end of the stream is acknowledged as one byte more.
        const std::uint64_t all = sent_ + (ended_ ? 1U : 0U);
        const auto waiting = static_cast<std::uint64_t>(std::max(unacknowledged, 0));
        const std::uint64_t taken = std::min(sent_, all - std::min(all, waiting));
        if (taken <= taken_)
            return;
        taken_ = taken;
        patience_ = Clock::now() + limits_.stall;
        transfer_.report(taken_, size_);
    }

    void failOnError(int error)
    {
        if (error == 0)
            return;
        countTaken();
        if (taken_ == size_)
            throw Error(localized("%s: broke off the connection after all %d bytes of the job, and may have "
                                  "dropped it; look at the device before sending it again",
                                  who_, size_));
        if (error == ECONNRESET || error == EPIPE)
            throw Error(localized("%s: broke off the connection after %d of %d bytes of the job; look at the "
                                  "device, then send the job again",
                                  who_, taken_, size_));
        throw Error(localized("%s: the connection broke (%s) after %d of %d bytes of the job; look at the "
                              "device, then send the job again",
                              who_, systemReason(error), taken_, size_));
    }

    [[noreturn]] void failCancelled() const
    {
        if (sent_ == 0)
            throw Error(localized("%s: the job was cancelled before anything of it went out", who_));
        throw Error(localized("%s: the job was cancelled after %d of %d bytes; look at the device "
                              "whether it does something with them",
                              who_, taken_, size_));
    }

    FileHandle connection_;
    std::string who_;
    DeviceLimits limits_;
    const Transfer& transfer_;
    int spool_;
    std::uint64_t size_;

    std::string buffer_ = std::string(std::size_t{64} * 1024, '\0');
    std::string_view block_;                   ///< what is left to send of `buffer_`
    std::uint64_t sent_ = 0;                   ///< bytes that the system has taken
    std::uint64_t taken_ = 0;                  ///< bytes that the device has acknowledged
    bool ended_ = false;                       ///< the device was told that the job ends
    bool closed_ = false;                      ///< the device has closed its side
    Clock::time_point patience_;               ///< when a device that takes nothing counts as stalled
    std::optional<Clock::time_point> closeBy_; ///< when a device that took all is not waited for any more
};

class DeviceDestination final : public SpooledDestination {
public:
    DeviceDestination(NetworkAddress address, const DeviceLimits& limits)
        : address_(std::move(address)), limits_(limits)
    {
    }

private:
    Receipt send(int spool, std::uint64_t size, const Transfer& transfer) override
    {
        const std::string who = localized("device %s", toText(address_));
        const auto addresses = lookUpDevice(address_, who, limits_.lookUp, transfer.cancelled);
        Sending(connectToDevice(addresses, who, limits_.connect, transfer.cancelled), who, limits_, transfer,
                spool, size)
            .run();
        return {who, {}, 0};
    }

    NetworkAddress address_;
    DeviceLimits limits_;
};

} // namespace

std::unique_ptr<JobDestination> openDevice(const NetworkAddress& address, const DeviceLimits& limits)
{
    return std::make_unique<DeviceDestination>(address, limits);
}

} // namespace quelm
