// Where the user wants the fax job to go, as chosen in the main window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_DESTINATION_CHOICE_H
#define DRIVER_DESKTOP_SENDING_DESTINATION_CHOICE_H

#include "driver/jobs/job_target.h"

#include <string>
#include <vector>

namespace quelm {

/// The last is a destination of the configuration, which has a name.
enum class DestinationKind { file, device, queue, named };

/// The chosen kind, and what was last entered for each of them: UTF-8 as typed, but for a chosen file, whose
/// path has its own bytes.
struct DestinationChoice {
    DestinationKind kind = DestinationKind::file;
    std::string file;        ///< a path; "~/" at its start stands for the user's home folder
    std::string device;      ///< HOST or HOST:PORT
    std::string queue;       ///< the name of a print queue
    std::string server = {}; ///< of that queue: HOST or HOST:PORT; empty: the user's own
    std::string name = {};   ///< of a named destination; kept empty for the default one

    bool operator==(const DestinationChoice&) const = default;
};

/// What is missing or wrong before a job can go there, as one line for the user; empty when nothing is.
[[nodiscard]] std::string troubleWith(const DestinationChoice& choice);

/// What was chosen by a name as it would be typed: the same place, of another kind.
[[nodiscard]] DestinationChoice choiceOf(const JobTarget& target);

/// The place that the choice names, which is not of the kind `named`. The path of a file is absolute. Throws
/// quelm::Error when what stands for the device is no address.
JobTarget targetOf(const DestinationChoice& choice);

/// A path that the user typed as an absolute one: "~/" is the folder `home`, anything else that does
/// not start with "/" counts from `folder`. The empty path stays empty.
std::string absolutePath(const std::string& typed, const std::string& home, const std::string& folder);

/// What the user is told when the job is at `place`, which a destination's receipt names: of which
/// document, for how many. Never that the fax was delivered, which only the device can tell.
std::string handedOverText(DestinationKind kind, const std::string& place, const std::string& document,
                           unsigned long recipients);

/// A sentence with remarks behind it, ahead of its full stop.
std::string withAdditions(std::string sentence, const std::vector<std::string>& additions);

} // namespace quelm

#endif
