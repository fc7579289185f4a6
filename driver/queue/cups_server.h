// Asks a CUPS print server, within bounds of time and without a prompt.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_QUEUE_CUPS_SERVER_H
#define DRIVER_QUEUE_CUPS_SERVER_H

#include "driver/jobs/queue_limits.h"
#include "driver/jobs/transfer.h"

#include <cups/cups.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

struct IppDeleter {
    void operator()(ipp_t* message) const { ippDelete(message); }
};

/// An IPP request or answer.
using IppMessage = std::unique_ptr<ipp_t, IppDeleter>;

/// An IPP answer that came, or the reason why none did.
struct IppAnswer {
    IppMessage message; ///< null when none came
    ipp_status_t status = IPP_STATUS_ERROR_INTERNAL;
    std::string reason; ///< the server's words for `status`, or what became of the server; empty on success

    bool isSuccess() const;
    /// The server wants to know who asks, and nobody is asked for a password here.
    bool wantsPassword() const;
    /// The same, or the server does not permit it to this user.
    bool isForbidden() const;
    /// 0 when there is no such attribute.
    int integer(const char* attribute) const;
    /// Empty when there is no such attribute.
    std::string text(const char* attribute) const;
};

/// A connection to a print server: mostly the user's, which CUPS_SERVER names, or the files of settings of
/// libcups. Belongs to the thread that made it.
///
/// libcups ignores SIGPIPE for the whole process from its first connection on.
class CupsServer {
public:
    /// Connects to `server`, in the form of `QueueTarget::server`; empty is the user's server of now. Throws
    /// quelm::Error with a line that begins with `who` when the server cannot be reached, or `transfer`,
    /// which outlives this object, is cancelled.
    CupsServer(const std::string& who, const QueueLimits& limits, const Transfer& transfer,
               const std::string& server = {});

    /// Sends a request and waits for its answer.
    IppAnswer ask(IppMessage request, const std::string& resource);

    /// Begins a request that `size` bytes of data follow. False when the server wants none; `endSending`
    /// then tells why.
    bool beginSending(const IppMessage& request, const std::string& resource, std::uint64_t size);
    /// Sends some of the data. False when the rest is not worth sending.
    bool sendBlock(std::string_view block);
    /// Waits for the answer.
    IppAnswer endSending(const std::string& resource);

    /// Where the server is, for messages.
    const std::string& name() const { return name_; }

private:
    struct Close {
        void operator()(http_t* connection) const { httpClose(connection); }
    };
    using Connection = std::unique_ptr<http_t, Close>;

    static Connection connect(const std::string& host, int port, http_encryption_t encryption,
                              std::chrono::milliseconds limit);
    class Watch;

    static int goOnWaiting(http_t*, void* server);
    bool mustStopWaiting();

    IppAnswer answerOf(ipp_t* message) const;

    std::string name_;
    QueueLimits limits_;
    const Transfer& transfer_;
    Connection connection_;
    std::chrono::steady_clock::time_point patience_;
    std::atomic<bool> cancelled_ = false; ///< the wait was ended by the user
    std::atomic<bool> silent_ = false;    ///< the wait was ended by the limit
};

/// The attributes of an answer that stand in groups of this kind, group by group: those of each queue or job
/// that a list tells of. They live as long as the answer.
[[nodiscard]] std::vector<std::vector<ipp_attribute_t*>> groupsOf(const IppAnswer& answer, ipp_tag_t kind);

/// A request about a queue, on behalf of a user.
IppMessage newQueueRequest(ipp_op_t operation, const std::string& queue, const std::string& user);

/// The resource that requests about a queue are sent to.
std::string queueResource(const std::string& queue);

/// The most bytes that IPP has room for in a name.
inline constexpr std::size_t longestIppName = 255;

/// A text as IPP has room for it: valid UTF-8, one line, at most `most` bytes.
std::string ippName(const std::string& text, std::size_t most = longestIppName);

} // namespace quelm

#endif
