// What the tests of the device's port share: a port with a folder and a log of its own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_PORT_JOB_PORT_FIXTURE_H
#define TESTS_DEVICE_PORT_JOB_PORT_FIXTURE_H

#include "device/port/job_port.h"
#include "tests/servers/job_sender.h"
#include "tests/support/processes.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <optional>

namespace quelm::device {

namespace fs = std::filesystem;

inline const Moment noon{std::chrono::milliseconds{1'700'000'000'000}};

class JobPortFixture : public testing::Test {
protected:
    JobPortFixture() : folder(files / "state"), log(folder)
    {
        settings.port = 0;
        settings.now = [] { return noon; };
        settings.taken = [this](int job) {
            const std::lock_guard lock(mutex);
            taken.push_back(job);
        };
        settings.tell = [this](const std::string& line) {
            const std::lock_guard lock(mutex);
            lines.push_back(line);
        };
    }

    void open() { port.emplace(folder, log, settings); }
    std::string address() const { return port->addresses().front(); }
    servers::DeviceEnding send(std::string_view job) const { return servers::sendJob(address(), job); }

    std::vector<std::string> told()
    {
        const std::lock_guard lock(mutex);
        return lines;
    }
    std::vector<int> takenJobs()
    {
        const std::lock_guard lock(mutex);
        return taken;
    }
    std::string kept(int job) const { return contentOf(folder.jobFile(job)); }
    /// The sizes of the files of jobs that are coming, the smallest first.
    std::vector<std::uintmax_t> incoming() const
    {
        std::vector<std::uintmax_t> sizes;
        for (const auto& entry : fs::directory_iterator(folder.incoming())) {
            std::error_code gone;
            if (const auto size = entry.file_size(gone); !gone)
                sizes.push_back(size);
        }
        std::ranges::sort(sizes);
        return sizes;
    }
    void waitUntilIncoming(const std::vector<std::uintmax_t>& sizes) const
    {
        EXPECT_TRUE(soon([&] { return incoming() == sizes; }));
    }

    TemporaryFolder files;
    StateFolder folder;
    DeviceLog log;
    JobPortSettings settings;
    std::mutex mutex;
    std::vector<std::string> lines;
    std::vector<int> taken;
    std::optional<JobPort> port; // last: its thread uses what stands above
};

} // namespace quelm::device

#endif
