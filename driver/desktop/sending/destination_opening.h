// Opens the destination that was chosen in the main window.
#ifndef DRIVER_DESKTOP_SENDING_DESTINATION_OPENING_H
#define DRIVER_DESKTOP_SENDING_DESTINATION_OPENING_H

#include "driver/desktop/sending/destination_choice.h"
#include "driver/jobs/output.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quelm {

/// Opens what the choice names, on behalf of `user`. The path of a file is absolute. Throws quelm::Error
/// when that is impossible.
std::unique_ptr<JobDestination> openDestination(const DestinationChoice& choice, const Document& document,
                                                const std::string& user);

/// The names of the print queues, the default one first. Throws quelm::Error when they are not known.
std::vector<std::string> queueNames(const std::function<bool()>& cancelled);

/// What is wrong with a device's address, as one line; empty when nothing is.
std::string troubleWithDevice(const std::string& address);

} // namespace quelm

#endif
