// Lists the queues of a print server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/translation.h"
#include "driver/queue/cups_server.h"
#include "driver/queue/cups_system.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

constexpr std::array wantedAttributes{"printer-name", "printer-info", "printer-state",
                                      "printer-is-accepting-jobs"};

void take(PrintQueue& queue, ipp_attribute_t* attribute)
{
    const std::string_view name = ippGetName(attribute);
    const auto text = [attribute] {
        const char* value = ippGetString(attribute, 0, nullptr);
        return std::string(value != nullptr ? value : "");
    };
    if (name == "printer-name")
        queue.name = text();
    else if (name == "printer-info")
        queue.description = text();
    else if (name == "printer-state")
        queue.isPaused = ippGetInteger(attribute, 0) == IPP_PSTATE_STOPPED;
    else if (name == "printer-is-accepting-jobs")
        queue.isAccepting = ippGetBoolean(attribute, 0) != 0;
}

std::vector<PrintQueue> queuesIn(const IppAnswer& answer)
{
    std::vector<PrintQueue> queues;
    for (const auto& attributes : groupsOf(answer, IPP_TAG_PRINTER))
        for (PrintQueue& queue = queues.emplace_back(); auto* attribute : attributes)
            take(queue, attribute);
    std::erase_if(queues, [](const PrintQueue& queue) { return queue.name.empty(); });
    return queues;
}

/// What the user chose, as print commands look for it, or else the server's default; may be none.
std::string defaultQueue(CupsServer& server)
{
    const char* chosen = std::getenv("LPDEST");
    if (chosen == nullptr || *chosen == '\0')
        chosen = std::getenv("PRINTER");
    // Systems set PRINTER to "lp" without meaning a queue.
    if (chosen != nullptr && *chosen != '\0' && std::string_view(chosen) != "lp")
        return chosen;
    return server.ask(IppMessage(ippNewRequest(IPP_OP_CUPS_GET_DEFAULT)), "/").text("printer-name");
}

} // namespace

std::vector<PrintQueue> queuesOf(CupsServer& server)
{
    IppMessage request(ippNewRequest(IPP_OP_CUPS_GET_PRINTERS));
    ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                  static_cast<int>(wantedAttributes.size()), nullptr, wantedAttributes.data());
    const auto answer = server.ask(std::move(request), "/");
    if (answer.message != nullptr && answer.status == IPP_STATUS_ERROR_NOT_FOUND)
        return {};
    if (!answer.isSuccess())
        throw Error(localized("the queues of the print server cannot be listed: %s", answer.reason));
    auto queues = queuesIn(answer);
    const auto chosen = queues.empty() ? std::string() : defaultQueue(server);
    for (PrintQueue& queue : queues)
        queue.isDefault = queue.name == chosen;
    return queues;
}

std::vector<PrintQueue> CupsSystem::printQueues(const QueueLimits& limits, const Transfer& transfer) const
{
    CupsServer server(localized("print queues"), limits, transfer);
    return queuesOf(server);
}

} // namespace quelm
