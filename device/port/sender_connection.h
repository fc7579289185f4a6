// A sender's connection to the device, and the job that comes over it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PORT_SENDER_CONNECTION_H
#define DEVICE_PORT_SENDER_CONNECTION_H

#include "base/file_handle.h"
#include "device/port/incoming_job.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace quelm::device {

/// A non-blocking socket. Whenever it is closed other than by `closeInOrder`, the sender sees a reset, also
/// when the program is killed: nothing but that end says that a job is kept.
///
/// A connection brings one job. If it brought several, and one of them were refused, its end could not say
/// which are kept: the sender would send them all again, and some would be faxed twice. So a job is taken
/// only when its connection has ended behind it, and not at all when another one follows.
class SenderConnection {
public:
    using Clock = std::chrono::steady_clock;

    /// What reading came to.
    enum class Event {
        none,  ///< more is to come
        job,   ///< the sender has ended its connection behind a job, which is to be taken away
        end,   ///< the sender has ended its connection without one
        broken ///< the job cannot be kept: `problem` says why; it is empty when there was none
    };

    /// `incoming` is the folder for the job that comes, of at most `largestJob` bytes.
    SenderConnection(FileHandle socket, std::string from, std::filesystem::path incoming,
                     std::uint64_t largestJob);

    /// Reads once what is there, of a bounded size.
    Event read();

    /// The job that has come. Nothing is read from then on.
    [[nodiscard]] std::unique_ptr<IncomingJob> takeJob() { return std::move(job_); }

    /// The device's word that the job of this connection is kept.
    void closeInOrder();

    [[nodiscard]] int descriptor() const { return socket_.get(); }
    [[nodiscard]] const std::string& from() const { return from_; }
    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// True when the job was taken away, and waits for its verdict.
    [[nodiscard]] bool isWaiting() const { return job_ == nullptr; }
    /// True when the job is complete, though its sender has not ended the connection.
    [[nodiscard]] bool hasWholeJob() const { return job_->isComplete(); }
    [[nodiscard]] bool isWithinJob() const { return !job_->isEmpty(); }
    [[nodiscard]] std::uint64_t jobSize() const { return job_->size(); }

    [[nodiscard]] Clock::time_point begun() const { return begun_; }
    /// When a byte of the job came last.
    [[nodiscard]] Clock::time_point lastHeard() const { return lastHeard_; }
    /// Bytes of the job in a second since it began.
    [[nodiscard]] double rate() const;

private:
    Event feed(std::string_view bytes);
    Event refuseBehind();

    FileHandle socket_;
    std::string from_;
    std::unique_ptr<IncomingJob> job_;
    std::unique_ptr<JobReader> behind_; ///< what follows a complete job: blanks and UEL alone may
    std::string problem_;
    Clock::time_point begun_ = Clock::now();
    Clock::time_point lastHeard_ = begun_;
};

} // namespace quelm::device

#endif
