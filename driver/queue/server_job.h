// One job of a print server, as the server tells it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_QUEUE_SERVER_JOB_H
#define DRIVER_QUEUE_SERVER_JOB_H

#include "driver/queue/cups_server.h"

#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// The name of a job in its queue: its title, and behind it the token by which it is found again, such as
/// "letter.ps [quelm 5f3a9c2e]". A long title is cut, the token never; an empty one is "Fax".
[[nodiscard]] std::string serverJobName(const std::string& title, const std::string& token);

/// True when `name` is that of a job with this token. An empty token stands in no name.
[[nodiscard]] bool bearsToken(const std::string& name, const std::string& token);

/// What a print server says of a job.
struct ServerJob {
    int number = 0;
    std::string name; ///< empty when the server does not tell it
    int state = 0;    ///< an `ipp_jstate_t`; 0 when it does not tell
    int documents = 0;
    bool isIncoming = false; ///< the server expects its document
    /// Its printing was begun; nothing when the server does not tell.
    std::optional<bool> wasProcessed = {};
    std::string holdUntil; ///< a time of day in UTC, "22:05:00", or a keyword

    /// It was cancelled, or the server gave up printing it.
    bool isEndedEarly() const { return state == IPP_JSTATE_CANCELED || state == IPP_JSTATE_ABORTED; }
};

/// Asks an operation for what a `ServerJob` holds.
void askForServerJobs(const IppMessage& request);

/// The jobs of an answer, in its order.
[[nodiscard]] std::vector<ServerJob> serverJobsIn(const IppAnswer& answer);

/// A request about a job of a queue, on behalf of a user.
[[nodiscard]] IppMessage newJobRequest(ipp_op_t operation, const std::string& queue, const std::string& user,
                                       int number);

/// The answer to a question about one job.
struct ServerJobAnswer {
    std::optional<ServerJob> job; ///< nothing when there is none, or the server does not answer
    std::string trouble;          ///< why the server did not answer; empty when it did
};

[[nodiscard]] ServerJobAnswer askForServerJob(CupsServer& server, const std::string& queue,
                                              const std::string& user, int number);

/// What came of cancelling a job.
enum class CancelEnd {
    cancelled, ///< by this, or before; it may have begun to print
    gone,      ///< the server knows no such job any more
    refused,   ///< it was printed, the server does not permit it, or does not answer
};

[[nodiscard]] CancelEnd cancelServerJob(CupsServer& server, const std::string& queue, const std::string& user,
                                        int number);

} // namespace quelm

#endif
