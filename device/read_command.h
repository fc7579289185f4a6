// The command `read`: what a device would do with a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_READ_COMMAND_H
#define DEVICE_READ_COMMAND_H

#include <string>

namespace quelm::device {

struct ReadOptions {
    std::string job; ///< a file, or "-" for standard input
    bool asJson = false;
    bool render = true; ///< false to leave the pages uncounted
};

/// Says on standard output what a device would do with the job. Throws quelm::Error when it cannot be read,
/// and, behind the answer, when a device refuses it.
void runReadCommand(const ReadOptions& options);

} // namespace quelm::device

#endif
