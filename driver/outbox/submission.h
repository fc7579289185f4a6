// The way of a fax from the component to its destination, now or later.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_SUBMISSION_H
#define DRIVER_OUTBOX_SUBMISSION_H

#include "driver/documents/document.h"
#include "driver/jobs/job_writer.h"
#include "driver/outbox/outbox.h"

#include <ctime>
#include <functional>
#include <optional>
#include <string>

namespace quelm {

/// What is to become of a job.
struct Submission {
    JobTarget target; ///< standard output only for a job that goes out at once
    std::string user;
    Pdl pdl = Pdl::dsc;
    std::optional<std::time_t> sendAt; ///< nothing: at once
    bool toOutbox = false;             ///< put it into the outbox, and let a worker send it, also at once
    OptionValues options;
    int sentBefore = 0; ///< as of OutboxDraft
};

/// What became of it.
struct SubmissionEnd {
    enum class Kind {
        handedOver, ///< the destination has it
        held,       ///< the queue has it, and holds it until its time
        waiting,    ///< it waits in the outbox
    };
    Kind kind = Kind::handedOver;
    Receipt receipt;     ///< of one that the destination has
    int number = 0;      ///< in the outbox; 0 when it is not kept there
    std::time_t due = 0; ///< of one that is held or waits
    std::string reason;  ///< why it waits here although a queue was to hold it; mostly empty
};

/// Writes the job and hands it over, holds it or puts it into the outbox. A job that goes to a device or
/// queue is kept in the outbox, unless nothing is kept there (`OutboxSettings::keepDays`) or `outbox` is
/// null; one that cannot be kept goes out all the same, with a warning in the log. A job that has to wait
/// needs the outbox. `now` is the time of `facts`.
///
/// `written` is called behind the job's last byte, before it is handed over; may be empty.
///
/// Throws quelm::Error when the job cannot be written, put in or handed over; then nothing of it went out, or
/// the line says how much.
SubmissionEnd submit(Outbox* outbox, FaxSession& session, const Document& document,
                     const Submission& submission, const JobFacts& facts, std::time_t now,
                     const Transfer& transfer, const std::function<void()>& written = {});

} // namespace quelm

#endif
