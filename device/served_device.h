// The device as a whole: its port, its lines, its memory, and those who look at it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_SERVED_DEVICE_H
#define DEVICE_SERVED_DEVICE_H

#include "device/serve_options.h"

#include <memory>

namespace quelm::device {

/// Serves from its construction, at the end of which standard output says where, to its destruction.
class ServedDevice {
public:
    /// Throws quelm::Error when some part cannot begin; nobody is called then.
    explicit ServedDevice(const ServeOptions& options);
    /// Stops: first no more jobs are taken, then calls are broken off, which the next device with this folder
    /// makes again.
    ~ServedDevice();
    ServedDevice(const ServedDevice&) = delete;
    ServedDevice& operator=(const ServedDevice&) = delete;

    /// True once a job has come, or there was one that an earlier device had not finished, nobody is
    /// connected, and all that jobs asked for is done.
    [[nodiscard]] bool isDone();
    /// Throws quelm::Error when something that a job asked for was not made.
    void requireAllMade();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace quelm::device

#endif
