// Where a finished fax job goes.
#ifndef DRIVER_JOBS_OUTPUT_H
#define DRIVER_JOBS_OUTPUT_H

#include "driver/jobs/document.h"
#include "driver/jobs/file_handle.h"
#include "driver/jobs/sink.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quelm {

/// Takes one job. Nothing of it is seen before `deliver`: a job that fails half-way, or a program that
/// is ended meanwhile, leaves the destination as it was.
class JobDestination {
public:
    virtual ~JobDestination() = default;

    /// Where to write the job. Lives as long as the destination.
    virtual JobSink& sink() = 0;

    /// Hands over the job, which is complete. Called once, last. Throws quelm::Error, with one line that
    /// names the destination, when that fails.
    virtual void deliver() = 0;
};

/// A destination that cannot take back what it was sent: the whole job is collected in an unnamed file
/// first. Destinations that send over a wire derive from it.
class SpooledDestination : public JobDestination {
public:
    SpooledDestination();

    JobSink& sink() final { return spool_; }
    void deliver() final;

protected:
    /// Sends the job, `size` bytes in the file `spool` from its start on.
    virtual void send(int spool, std::uint64_t size) = 0;

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

/// The destination that the user named: "-" is standard output; a device or fifo is written to when the
/// job is complete; any other path is a file that appears whole, and replaces one that exists, on
/// delivery. Throws quelm::Error when `output` is `document` itself, a folder, or in a folder that
/// does not exist or cannot be written to.
std::unique_ptr<JobDestination> openOutput(const std::string& output, const Document& document);

} // namespace quelm

#endif
