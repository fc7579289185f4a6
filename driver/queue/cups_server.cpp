// Asks a CUPS print server, within bounds of time and without a prompt.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/cups_server.h"

#include "base/cancellable_call.h"
#include "base/duration_text.h"
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/queue/server_address.h"

#include <sys/socket.h>

#include <array>
#include <future>
#include <optional>
#include <utility>

namespace quelm {
namespace {

using Clock = std::chrono::steady_clock;

/// IPP counts successes below this.
constexpr int firstFailure = 0x100;

/// Stands in for libcups's own question at the terminal, which a program without one would wait at for ever.
const char* noPassword(const char*, http_t*, const char*, const char*, void*) { return nullptr; }

} // namespace

bool IppAnswer::isSuccess() const { return message != nullptr && status < firstFailure; }

bool IppAnswer::wantsPassword() const
{
    return status == IPP_STATUS_ERROR_NOT_AUTHENTICATED ||
           status == IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED;
}

bool IppAnswer::isForbidden() const
{
    return wantsPassword() || status == IPP_STATUS_ERROR_NOT_AUTHORIZED ||
           status == IPP_STATUS_ERROR_FORBIDDEN;
}

int IppAnswer::integer(const char* attribute) const
{
    auto* found = ippFindAttribute(message.get(), attribute, IPP_TAG_ZERO);
    const auto kind = found != nullptr ? ippGetValueTag(found) : IPP_TAG_ZERO;
    return kind == IPP_TAG_INTEGER || kind == IPP_TAG_ENUM ? ippGetInteger(found, 0) : 0;
}

std::string IppAnswer::text(const char* attribute) const
{
    auto* found = ippFindAttribute(message.get(), attribute, IPP_TAG_ZERO);
    const char* value = found != nullptr ? ippGetString(found, 0, nullptr) : nullptr;
    return value != nullptr ? value : "";
}

CupsServer::Connection CupsServer::connect(const std::string& host, int port, http_encryption_t encryption,
                                           std::chrono::milliseconds limit)
{
    return Connection(httpConnect2(host.c_str(), port, nullptr, AF_UNSPEC, encryption, 1,
                                   static_cast<int>(limit.count()), nullptr));
}

CupsServer::CupsServer(const std::string& who, const QueueLimits& limits, const Transfer& transfer,
                       const std::string& server)
    : name_(server.empty() ? serverOfNow() : server), limits_(limits), transfer_(transfer)
{
    cupsSetPasswordCB2(noPassword, nullptr);
    const auto connecting = [place = printServerIn(name_), encryption = cupsEncryption(),
                             limit = limits.connect] {
        return connect(place.host, place.port, encryption, limit);
    };
    auto connection = callBefore(Clock::now() + limits.connect, transfer.cancelled, connecting);
    if (!connection && transfer.isCancelled())
        throw Error(localized("%s: the job was cancelled before anything of it went out", who));
    if (!connection)
        throw Error(
            localized("%s: the print server %s does not answer within %s; check that it runs, and what "
                      "CUPS_SERVER names",
                      who, name_, durationText(limits.connect)));
    // libcups does not tell why: it says that the host is down, whatever the reason.
    if (*connection == nullptr)
        throw Error(
            localized("%s: the print server %s cannot be reached; start CUPS, or set CUPS_SERVER to the "
                      "server that has the queue",
                      who, name_));
    connection_ = *std::move(connection);
    constexpr double seconds = std::chrono::duration<double>(cancellationInterval).count();
    httpSetTimeout(connection_.get(), seconds, goOnWaiting, this);
}

/// Bounds one call of libcups, which itself looks at the time only while nothing at all arrives: a server
/// that trickles would keep it for ever. The connection is cut when it is time.
class CupsServer::Watch {
public:
    explicit Watch(CupsServer& server)
    {
        server.patience_ = Clock::now() + server.limits_.answer;
        watching_.emplace(startCall([&server, over = over_.get_future()] {
            while (over.wait_for(cancellationInterval) != std::future_status::ready) {
                // Again and again, because libcups may connect anew.
                if (server.mustStopWaiting())
                    ::shutdown(httpGetFd(server.connection_.get()), SHUT_RDWR);
            }
        }));
    }
    ~Watch()
    {
        over_.set_value();
        watching_->get();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    std::promise<void> over_;
    std::optional<StartedCall<void>> watching_;
};

bool CupsServer::mustStopWaiting()
{
    if (transfer_.isCancelled())
        cancelled_ = true;
    if (Clock::now() >= patience_)
        silent_ = true;
    return cancelled_ || silent_;
}

/// Called by libcups when the server did nothing for a while; 0 makes it give up.
int CupsServer::goOnWaiting(http_t*, void* server)
{
    return static_cast<CupsServer*>(server)->mustStopWaiting() ? 0 : 1;
}

IppAnswer CupsServer::answerOf(ipp_t* message) const
{
    IppAnswer answer;
    answer.message.reset(message);
    answer.status = cupsLastError();
    if (answer.isSuccess())
        return answer;
    const char* words = cupsLastErrorString();
    if (cancelled_)
        answer.reason = localized("the job was cancelled");
    else if (silent_)
        answer.reason = localized("the print server %s does not answer", name_);
    else if (answer.wantsPassword())
        answer.reason = localized("the print server %s wants a password", name_);
    else if (answer.isForbidden())
        answer.reason = localized("the print server %s does not permit it", name_);
    else if (message != nullptr && words != nullptr)
        answer.reason = words;
    else
        answer.reason = localized("the print server %s broke off the connection", name_);
    return answer;
}

IppAnswer CupsServer::ask(IppMessage request, const std::string& resource)
{
    const Watch watch(*this);
    return answerOf(cupsDoRequest(connection_.get(), request.release(), resource.c_str()));
}

bool CupsServer::beginSending(const IppMessage& request, const std::string& resource, std::uint64_t size)
{
    const Watch watch(*this);
    const auto length = ippLength(request.get()) + size;
    return cupsSendRequest(connection_.get(), request.get(), resource.c_str(), length) ==
           HTTP_STATUS_CONTINUE;
}

bool CupsServer::sendBlock(std::string_view block)
{
    const Watch watch(*this);
    return !mustStopWaiting() &&
           cupsWriteRequestData(connection_.get(), block.data(), block.size()) == HTTP_STATUS_CONTINUE;
}

IppAnswer CupsServer::endSending(const std::string& resource)
{
    if (cancelled_ || silent_)
        return answerOf(nullptr);
    const Watch watch(*this);
    return answerOf(cupsGetResponse(connection_.get(), resource.c_str()));
}

std::vector<std::vector<ipp_attribute_t*>> groupsOf(const IppAnswer& answer, ipp_tag_t kind)
{
    std::vector<std::vector<ipp_attribute_t*>> groups;
    bool inGroup = false;
    for (auto* attribute = ippFirstAttribute(answer.message.get()); attribute != nullptr;
         attribute = ippNextAttribute(answer.message.get())) {
        // A separator without a name stands between two groups.
        const bool belongs = ippGetGroupTag(attribute) == kind && ippGetName(attribute) != nullptr;
        if (belongs && !inGroup)
            groups.emplace_back();
        inGroup = belongs;
        if (belongs)
            groups.back().push_back(attribute);
    }
    return groups;
}

IppMessage newQueueRequest(ipp_op_t operation, const std::string& queue, const std::string& user)
{
    constexpr std::size_t longestUri = 1024;
    std::array<char, longestUri> uri{};
    httpAssembleURIf(HTTP_URI_CODING_ALL, uri.data(), static_cast<int>(uri.size()), "ipp", nullptr,
                     "localhost", 0, "/printers/%s", queue.c_str());
    IppMessage request(ippNewRequest(operation));
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.data());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr,
                 ippName(user).c_str());
    return request;
}

std::string queueResource(const std::string& queue)
{
    // No queue has a name with "/" in it, but other pages of the server do.
    return queue.find('/') == std::string::npos ? "/printers/" + queue : "/";
}

std::string ippName(const std::string& text, std::size_t most)
{
    std::string name = fieldText(text);
    if (!isUtf8(name))
        for (char& byte : name)
            byte = static_cast<unsigned char>(byte) < 0x80 ? byte : '?';
    if (name.size() > most) {
        std::size_t end = most;
        while ((static_cast<unsigned char>(name[end]) & 0xc0U) == 0x80U)
            --end;
        name.resize(end);
    }
    return name;
}

} // namespace quelm
