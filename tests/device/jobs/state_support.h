// What the tests of a device's memory share: a state of their own, and jobs to put into it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_JOBS_STATE_SUPPORT_H
#define TESTS_DEVICE_JOBS_STATE_SUPPORT_H

#include "device/jobs/device_log.h"
#include "device/jobs/state_folder.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm::device::tests {

/// A moment on the device's clock.
inline constexpr Moment noon{std::chrono::milliseconds(1'700'000'000'000)};

/// A fax for these numbers.
ReceivedJob faxFor(const std::vector<std::string>& numbers);

/// A device's state in a folder of its own, which is in memory where that can be: it is made durable many
/// times, and a disk would be waited for each time. Temporary files go there, too.
class StateTest : public testing::Test {
protected:
    StateTest();
    ~StateTest() override;

    /// Opens the state, or opens it again as the next device does.
    void open();
    /// As a device that ends.
    void close();

    /// Takes a job with these bytes.
    int add(const ReceivedJob& reading, std::string_view bytes = "%!PS\nshowpage\n");
    /// The same, and its pages.
    int addRendered(const ReceivedJob& reading, int pages = 1, std::string_view bytes = "%!PS\nshowpage\n");
    /// Enters the next call, which must be due.
    DueCall begin(Moment now = noon);
    /// Ends a call as one that was sent; its receiver, unless empty, kept `pages`.
    bool endSent(const DueCall& due, const std::string& receiver = {}, std::string_view pages = "pages");

    /// The recipients of a job as "STATE attempts", one behind the other.
    std::string recipientsOf(int job);
    /// True when any file of the state holds this text.
    bool keeps(std::string_view text) const;
    /// The paths of all files below the state's folder, but the database's and the lock's, sorted.
    std::vector<std::string> files() const;

private:
    KeptVariable temporaryFolder_{"TMPDIR"};
    struct InMemory {
        InMemory();
    } inMemory_;

protected:
    TemporaryFolder outer;
    std::filesystem::path path = outer.path() / "state";
    std::unique_ptr<StateFolder> folder;
    std::unique_ptr<DeviceLog> log;
};

/// Runs `action` in a process that is killed ahead of its step number `count` (from 0); false when it came to
/// its end before.
bool isKilledAt(int count, const std::function<void()>& action);

/// Lets the step number `count` (from 0) of `action` fail as on a full disk; false when it came to its end
/// before. `line` is the line of the error that it threw, or empty.
bool failsAt(int count, const std::function<void()>& action, std::string& line);

} // namespace quelm::device::tests

#endif
