// The print-stream writers that the component writes a fax job through.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_PDL_WRITERS_H
#define DRIVER_JOBS_PDL_WRITERS_H

#include "driver/documents/sink.h"
#include "host/print_stream.h"

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace quelm {

/// Hands what the component writes to a function that may throw, and lets no exception pass
/// through the component. The first failure is kept and ends the writing: what comes after it is
/// dropped, and `writeText` answers false.
class GuardedPdlWriter : public AbstractPDLWriter {
public:
    bool writeText(const char* text) final;
    void writeString(const std::string& text) final;

    /// How many bytes were taken before the first failure.
    std::uint64_t size() const { return size_; }

    /// True when something was taken and it did not end in a line end.
    bool endsInsideLine() const { return endsInsideLine_; }

    /// Throws the first failure again, when there was one.
    void rethrowFailure() const;

private:
    /// Takes one text of the component.
    virtual void take(std::string_view text) = 0;

    void guard(std::string_view text) noexcept;

    std::uint64_t size_ = 0;
    bool endsInsideLine_ = false;
    std::exception_ptr failure_;
};

/// Writes into a print job.
class SinkPdlWriter final : public GuardedPdlWriter {
public:
    /// `sink` outlives the writer.
    explicit SinkPdlWriter(JobSink& sink) : sink_(sink) {}

private:
    void take(std::string_view text) override { sink_.write(text); }

    JobSink& sink_;
};

/// Writes each text of the component with one write(2), so that whoever reads the other end sees
/// the texts one by one. The whole text arrives even when the system takes less at a time.
class DescriptorPdlWriter final : public GuardedPdlWriter {
public:
    /// `descriptor` stays the caller's; `target` names it in error lines ("standard output").
    DescriptorPdlWriter(int descriptor, std::string target);

private:
    void take(std::string_view text) override;

    int descriptor_;
    std::string target_;
};

} // namespace quelm

#endif
