// Where a finished fax job goes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_OUTPUT_H
#define DRIVER_JOBS_OUTPUT_H

#include "base/error.h"
#include "base/file_io.h"
#include "driver/documents/document.h"
#include "driver/documents/sink.h"
#include "driver/jobs/transfer.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace quelm {

/// What a destination says of a job that it was handed.
struct Receipt {
    std::string place; ///< where the job is now, for the user: "letter.job", "queue fax, job 12"
    std::string note;  ///< what the user should know, such as that the queue is paused; mostly empty
    int job = 0;       ///< its number in a queue
};

/// Ends a delivery of which nobody can say whether nothing, a part or all of the job is at its destination.
/// Any other error means that the destination has nothing of it.
class DeliveryInDoubt : public Error {
public:
    using Error::Error;
};

/// Takes one job. Nothing of it is seen before `deliver`: a job that fails half-way, or a program that
/// is ended meanwhile, leaves the destination as it was.
class JobDestination {
public:
    virtual ~JobDestination() = default;

    /// Where to write the job. Lives as long as the destination.
    virtual JobSink& sink() = 0;

    /// Sees to it that nobody but the user can read the job where it will be, whatever would be usual there,
    /// and meanwhile. Called ahead of what nobody else may see. Destinations over a wire, devices and fifos
    /// are as they are.
    virtual void restrictToOwner() {}

    /// Hands over the job, which is complete. Called once, last; may be called on another thread than the
    /// rest. Destinations over a wire, devices and fifos take a while: they report to `transfer`, and heed
    /// its cancellation. Throws quelm::Error, with one line that names the destination, when the job was not
    /// handed over whole: a `DeliveryInDoubt` when the destination may have something of it.
    virtual Receipt deliver(const Transfer& transfer = {}) = 0;
};

/// A destination that cannot take back what it was sent: the whole job is collected in an unnamed file
/// first. Destinations that send over a wire derive from it.
class SpooledDestination : public JobDestination {
public:
    SpooledDestination();

    JobSink& sink() final { return spool_; }
    Receipt deliver(const Transfer& transfer) final;

protected:
    /// Sends the job, `size` bytes in the file `spool` from its start on.
    virtual Receipt send(int spool, std::uint64_t size, const Transfer& transfer) = 0;

private:
    class Spool final : public JobSink {
    public:
        Spool();
        void write(std::string_view bytes) override;

        FileHandle file;
        std::uint64_t size = 0;
    };

    Spool spool_;
};

/// Runs what sends a job and counts in `sent` the bytes that left this program. What ends it by an exception
/// behind the first byte ends as a `DeliveryInDoubt` of the same line: a byte that the system has taken may
/// reach the destination, whatever happens then.
template <class Send>
void sendCounting(const std::uint64_t& sent, Send send)
{
    try {
        send();
    } catch (const std::exception& failure) {
        if (sent == 0)
            throw;
        throw DeliveryInDoubt(failure.what());
    }
}

/// Reads the job's bytes from `offset` on into `block`, as many as it has room for, and returns how many they
/// are: at least one. Throws quelm::Error when they cannot be read. For senders of a spooled job.
[[nodiscard]] std::size_t readSpool(int spool, std::string& block, std::uint64_t offset);

/// How long a fifo may be without a program that reads it.
inline constexpr std::chrono::seconds fifoReaderLimit{5};

/// The destination that the user named: "-" is standard output; a device or fifo is written to when the
/// job is complete, and the delivery fails when no program reads the fifo within `readerLimit`; any other
/// path is a file that appears whole, and replaces one that exists, on delivery. Throws quelm::Error when
/// `output` is `document` itself, a folder, or in a folder that does not exist or cannot be written to.
[[nodiscard]] std::unique_ptr<JobDestination>
openOutput(const std::string& output, const Document& document,
           std::chrono::milliseconds readerLimit = fifoReaderLimit);

/// The same for what is made of no document.
[[nodiscard]] std::unique_ptr<JobDestination>
openOutput(const std::string& output, std::chrono::milliseconds readerLimit = fifoReaderLimit);

} // namespace quelm

#endif
