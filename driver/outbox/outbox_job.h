// One job of the outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_JOB_H
#define DRIVER_OUTBOX_OUTBOX_JOB_H

#include "driver/jobs/job_target.h"
#include "driver/plugin/fax_session.h"

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace quelm {

/// Where a job stands. None of them says that a fax was delivered: that only the device knows.
enum class OutboxState {
    waiting,     ///< for its time, or for a program that sends it
    handingOver, ///< a program hands it over, or did when it was ended
    handedOver,  ///< the destination has it, whole
    uncertain,   ///< the destination may have it, or a part; never sent again unless the user says so
    failed,      ///< the destination has nothing of it
    cancelled,   ///< by the user
};

/// The state as documents and answers name it: "waiting", "handing over", ...; not translated.
[[nodiscard]] const char* wordOf(OutboxState state);

/// The option values of the fax dialogs that a job was made with, by the names of their widgets. A credit
/// card's number is never among them.
using OptionValues = std::map<std::string, std::string>;

/// What a job is, apart from its bytes. Texts are UTF-8.
struct OutboxDraft {
    JobTarget target;  ///< the path of a file is absolute; a queue's server is said
    std::string title; ///< the document's name
    std::string user;  ///< whose job it is, as print queues are told
    Pdl pdl = Pdl::dsc;
    std::vector<JobRecipient> recipients;
    OptionValues options;
    std::time_t due = 0; ///< not before then
    /// True for a job that waits for a worker; false for one that its own program hands over at once.
    bool isUnattended = true;
    /// Of one that is unattended: this process tries to hand it over before any other does, and it waits when
    /// that does not come to an end.
    bool isTriedFirst = false;
    int sentBefore = 0; ///< the number of the job that this one is sent again from; 0 for none
};

/// A job as the outbox has it.
struct OutboxJob : OutboxDraft {
    int number = 0; ///< from 1; never used again
    OutboxState state = OutboxState::waiting;
    std::time_t queued = 0;   ///< when it came in
    std::time_t ended = 0;    ///< when it was handed over, failed, ...; 0 while it waits
    std::uint64_t size = 0;   ///< bytes of the print stream
    bool chargesCard = false; ///< the job holds, or held, the number of a credit card
    int queueJob = 0;         ///< its number in a print queue; 0 for none
    std::string place;        ///< as its receipt says: "queue fax, job 12"; empty before
    std::string note;         ///< what the user should know: why it failed, that the queue is paused
    bool isHeld = false;      ///< it was handed over, and its queue keeps it until it is due
    bool hasStream = false;   ///< the print stream is still there
    std::string documentPath; ///< the kept document, PostScript; empty when it is not kept

    /// True when a waiting job was due more than an hour ago: it asks, and is not sent by itself.
    [[nodiscard]] bool isOverdue(std::time_t now) const;

    /// True while its queue has it and keeps it: what is known of it here, without asking the queue.
    [[nodiscard]] bool waitsInQueue(std::time_t now) const;
};

} // namespace quelm

#endif
