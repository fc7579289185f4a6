// Reads what a sender sends, and ends its connection in one of two ways.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/sender_connection.h"

#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <exception>
#include <string_view>
#include <utility>

namespace quelm::device {
namespace {

/// What is read at a time: a fast sender does not keep the others waiting.
constexpr std::size_t bytesAtOnce = std::size_t{64} << 10U;

void setReset(int socket, bool isReset)
{
    linger how{};
    how.l_onoff = isReset ? 1 : 0;
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &how, sizeof how);
}

} // namespace

SenderConnection::SenderConnection(FileHandle socket, std::string from, std::filesystem::path incoming,
                                   std::uint64_t largestJob)
    : socket_(std::move(socket)), from_(std::move(from)),
      job_(std::make_unique<IncomingJob>(std::move(incoming), largestJob))
{
    setReset(socket_.get(), true);
}

SenderConnection::Event SenderConnection::read()
{
    static thread_local std::array<char, bytesAtOnce> block;
    const auto size = ::recv(socket_.get(), block.data(), block.size(), 0);
    if (size < 0) {
        if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)
            return Event::none;
        if (!isWithinJob())
            return Event::broken;
        problem_ = errno == ECONNRESET ? localized("the sender broke off after %d bytes of it", job_->size())
                                       : localized("the connection failed after %d bytes of it: %s",
                                                   job_->size(), systemReason(errno));
        return Event::broken;
    }
    if (size > 0)
        return feed({block.data(), static_cast<std::size_t>(size)});
    if (behind_ && !behind_->isEmpty()) // a UEL that did not come whole
        return refuseBehind();
    return isWithinJob() ? Event::job : Event::end;
}

SenderConnection::Event SenderConnection::feed(std::string_view bytes)
{
    if (!job_->isComplete())
        lastHeard_ = Clock::now();
    try {
        bytes.remove_prefix(job_->take(bytes));
    } catch (const std::exception& error) {
        problem_ = oneLine(error.what());
        return Event::broken;
    }
    if (bytes.empty())
        return Event::none;
    if (!behind_)
        behind_ = std::make_unique<JobReader>();
    // A UEL may be complete, and the next job begin behind it.
    behind_->take(bytes);
    return behind_->hasContent() ? refuseBehind() : Event::none;
}

SenderConnection::Event SenderConnection::refuseBehind()
{
    problem_ = localized("something follows it on its connection, which brings one job; send the next over "
                         "another connection");
    return Event::broken;
}

double SenderConnection::rate() const
{
    const std::chrono::duration<double> since = Clock::now() - begun_;
    return static_cast<double>(job_->size()) / std::max(since.count(), 0.001);
}

void SenderConnection::closeInOrder()
{
    setReset(socket_.get(), false);
    socket_.close();
}

} // namespace quelm::device
