// The fixture of the journeys from the driver through the device to those who receive a fax.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_DEVICE_JOURNEY_H
#define TESTS_JOURNEYS_DEVICE_JOURNEY_H

#include "tests/journeys/fax_pages.h"
#include "tests/journeys/journey.h"
#include "tests/servers/server_process.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace journeys {

class DeviceJourney : public Journey {
protected:
    /// What a device is started with: its state is in `path("state")`; it has no status pages, and no agent
    /// unless the options say where.
    servers::ServerCommand deviceCommand(const Arguments& options = {}) const;
    /// Starts the device and waits until it is ready. It is stopped when the test ends.
    void serve(const Arguments& options = {});
    /// The same by another command line, which ends in that of the device.
    void serveBy(const Arguments& arguments);
    /// Forgets everything: the next device is the first one.
    void forgetDevice();
    /// Runs a device to its own end; `meanwhile` is called with its process id once it is ready. What it says
    /// is among what was said, too.
    /// `starter` is a program that becomes the one that its arguments name.
    Result runDevice(const Arguments& options, const std::function<void(int)>& meanwhile = {},
                     const std::string& starter = {});
    void killDevice();
    /// Waits until it has ended by itself.
    bool deviceEnds() const;

    /// Where it takes jobs; the second is of IPv6.
    std::string address(std::size_t index = 0) const;
    /// The options of a fax of this document to the device.
    Arguments fax(const std::string& document, const Arguments& options) const;
    /// Sends it, which must succeed.
    void send(const std::string& document, const Arguments& options) const;

    /// What the device has said up to now, line by line.
    std::vector<std::string> said() const;
    /// The lines that hold these words.
    std::vector<std::string> said(const std::string& words) const;
    /// Waits until so many lines hold these words.
    bool hasSaid(const std::string& words, std::size_t times = 1) const;

    /// The files that a number has received, in the order of its calls.
    std::vector<std::string> received(const std::string& number) const;
    /// The pages of the one fax that a number has received.
    std::vector<FaxPage> receivedPages(const std::string& number) const;
    /// All numbers that have received something.
    std::vector<std::string> receivers() const;

    std::unique_ptr<servers::ServerProcess> device;

private:
    std::ptrdiff_t timesReady() const;
    std::string outputFile() const { return path("device.log"); }
    std::ptrdiff_t readyBefore_ = 0;
};

} // namespace journeys

#endif
