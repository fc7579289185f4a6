// From a choice to a file, a device or a print queue.
#include "driver/desktop/sending/destination_opening.h"

#include "base/error.h"
#include "base/net/network_address.h"
#include "driver/jobs/cups_destination.h"
#include "driver/jobs/print_queues.h"
#include "driver/jobs/tcp_destination.h"

#include <algorithm>

namespace quelm {

std::unique_ptr<JobDestination> openDestination(const DestinationChoice& choice, const Document& document,
                                                const std::string& user)
{
    switch (choice.kind) {
    case DestinationKind::device:
        return openDevice(parseNetworkAddress(choice.device));
    case DestinationKind::queue:
        return openQueue({choice.queue, document.name(), user});
    case DestinationKind::file:
        break;
    }
    return openOutput(choice.file, document);
}

std::vector<std::string> queueNames(const std::function<bool()>& cancelled)
{
    Transfer transfer;
    transfer.cancelled = cancelled;
    auto queues = printQueues({}, transfer);
    std::stable_partition(queues.begin(), queues.end(),
                          [](const PrintQueue& queue) { return queue.isDefault; });
    std::vector<std::string> names;
    names.reserve(queues.size());
    for (const auto& queue : queues)
        names.push_back(queue.name);
    return names;
}

std::string troubleWithDevice(const std::string& address)
{
    try {
        parseNetworkAddress(address);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

} // namespace quelm
