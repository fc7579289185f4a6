// What a device remembers of its jobs, their recipients and its calls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_JOB_RECORDS_H
#define DEVICE_JOBS_JOB_RECORDS_H

#include "device/stream/received_job.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace quelm::device {

/// A moment of the device's clock, which line time moves on.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

enum class JobState {
    received, ///< kept, and to be rendered
    calling,  ///< rendered; some recipient is still to be called
    done,     ///< every recipient was called for the last time
    printed,  ///< it was no fax
    refused,  ///< it was malformed or contradictory: nobody was called
    failed    ///< it could not be rendered: nobody was called
};

enum class RecipientState { waiting, calling, sent, failed };

/// A recipient of a job.
struct RecipientRecord {
    int position = 0;   ///< in the job, from 1
    std::string number; ///< as the job says it
    std::string mailbox;
    std::string keys; ///< as it is dialled
    RecipientState state = RecipientState::waiting;
    int attempts = 0;                  ///< calls that were begun and not broken off
    std::optional<Moment> nextAttempt; ///< of one that waits
    std::string result;                ///< how the last call ended; empty before
    int code = 0;
    int pagesSent = 0;
    std::optional<Moment> lastCallAt;
    std::chrono::milliseconds lastDuration{0};
};

/// A job as it is kept.
struct JobRecord {
    int number = 0; ///< from 1, in the order in which jobs were taken
    JobState state = JobState::received;
    Moment receivedAt{};
    std::string from;    ///< the sender's address
    ReceivedJob reading; ///< of a card, as many "*" as it has signs, also when the device has forgotten it
    int pages = 0;       ///< once it was rendered
    std::string problem; ///< why it was refused or failed
    std::vector<RecipientRecord> recipients;
    bool hasReport = false;
};

enum class CallState {
    calling,
    ended,
    brokenOff ///< the device stopped during the call, which does not count: it is made again
};

/// A call as it is kept.
struct CallRecord {
    int number = 0;
    int job = 0;
    int position = 0; ///< of the recipient
    int attempt = 0;  ///< of this recipient, from 1; a call behind one that was broken off has the same
    CallState state = CallState::calling;
    Moment begunAt{};
    std::chrono::milliseconds duration{0};
    std::string dialled;  ///< as the exchange heard it; the keys of a card as "*"
    std::string receiver; ///< the number that received it; empty for none
    std::string result;
    std::string libraryWords;
    int code = 0;
    int pagesSent = 0;
    int pagesKept = 0;
    int bitRate = 0;
    bool errorCorrection = false;
    std::string identity; ///< of the other machine
    /// The job asked for Super G3, which the device's modem has not: the call was made at 14,400 bit/s at
    /// most.
    bool fellBack = false;
    int repeatedFrames = 0; ///< pieces of pages that error correction had sent again
    int damagedRows = 0;    ///< lines of the kept pages that the other machine could not read
    std::string mailbox;    ///< that the other machine was told
};

} // namespace quelm::device

#endif
