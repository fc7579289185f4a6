// Checks and words for the chosen destination.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/destination_choice.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/handover/handover.h"

#include <filesystem>

namespace quelm {
namespace {

std::string missingIn(const DestinationChoice& choice)
{
    switch (choice.kind) {
    case DestinationKind::file:
        if (choice.file.empty())
            return translated("Name the file that the fax job is to be written to.");
        if (choice.file.back() == '/')
            return translated("The file that the fax job is to be written to has no name yet.");
        break;
    case DestinationKind::device:
        if (choice.device.empty())
            return translated("Name the device that the fax job is to be sent to.");
        break;
    case DestinationKind::queue:
        if (choice.queue.empty())
            return translated("Choose the print queue that the fax job is to be sent to.");
        break;
    case DestinationKind::named: // the configuration was looked at when it was read
        break;
    }
    return {};
}

} // namespace

std::string troubleWith(const DestinationChoice& choice)
{
    if (auto missing = missingIn(choice); !missing.empty() || choice.kind == DestinationKind::named)
        return missing;
    try {
        targetOf(choice);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

DestinationChoice choiceOf(const JobTarget& target)
{
    DestinationChoice choice;
    if (const auto* device = std::get_if<NetworkAddress>(&target)) {
        choice.kind = DestinationKind::device;
        choice.device = toText(*device);
    } else if (const auto* queue = std::get_if<QueueTarget>(&target)) {
        choice.kind = DestinationKind::queue;
        choice.queue = queue->name;
        choice.server = queue->server;
    } else {
        choice.file = std::get<FileTarget>(target).path;
    }
    return choice;
}

JobTarget targetOf(const DestinationChoice& choice)
{
    switch (choice.kind) {
    case DestinationKind::device:
        return parseNetworkAddress(choice.device);
    case DestinationKind::queue:
        return QueueTarget{choice.queue, choice.server};
    case DestinationKind::file:
    case DestinationKind::named:
        break;
    }
    return FileTarget{choice.file};
}

std::string absolutePath(const std::string& typed, const std::string& home, const std::string& folder)
{
    if (typed.empty() || typed.front() == '/')
        return typed;
    if (typed.starts_with("~/") && !home.empty())
        return home + typed.substr(1);
    return (std::filesystem::path(folder) / typed).string();
}

std::string handedOverText(DestinationKind kind, const std::string& place, const std::string& document,
                           unsigned long recipients)
{
    if (kind == DestinationKind::file)
        return localizedCount("The fax job of %s for %d recipient was written to %s.",
                              "The fax job of %s for %d recipients was written to %s.", recipients, document,
                              recipients, place);
    return localizedCount("The fax job of %s for %d recipient was handed over to %s.",
                          "The fax job of %s for %d recipients was handed over to %s.", recipients, document,
                          recipients, place);
}

std::string withAdditions(std::string sentence, const std::vector<std::string>& additions)
{
    if (additions.empty())
        return sentence;
    if (sentence.ends_with('.'))
        sentence.pop_back();
    return sentence + behindSummary(additions) + ".";
}

} // namespace quelm
