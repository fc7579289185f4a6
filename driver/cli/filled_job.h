// A driver whose fax job is what the command line asks for, ready to be written.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_FILLED_JOB_H
#define DRIVER_CLI_FILLED_JOB_H

#include "driver/cli/command_line.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/job/recipient_input.h"
#include "driver/core/driver.h"
#include "driver/handover/handover.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// Starts the driver and carries out the job's options. The user's saved choices are the starting
/// point, and stay as they are; they have to be readable, but for those that an option sets. However, a
/// credit card is charged only when an option says so. What the user should know of the job is logged as
/// warnings. Throws Error or UsageError when the job cannot be put together, or what it holds must not go
/// out.
class FilledJob {
public:
    explicit FilledJob(const CommandLine& line) : FilledJob(line, setUpForOneCommand(line)) {}
    /// The same with a configuration that was read by now, as by `setUpForOneCommand`.
    FilledJob(const CommandLine& line, DriverSetup setup);

    FaxSession& session() { return driver_.faxSession(); }
    Driver& driver() { return driver_; }
    Pdl pdl() const { return setup_.pdl; }
    const OutboxSettings& outbox() const { return setup_.outbox; }
    const Handover& handover() const { return handover_; }
    const std::string& user() const { return driver_.user(); }

    /// The fax dialog keeps a credit card, ticked, which this job is not charged to.
    bool leavesKeptCard() const { return leavesKeptCard_; }

    /// How many recipients the job holds.
    std::size_t recipientCount() const { return handover_.recipients.size(); }

    /// What the line about the job says besides.
    const std::vector<std::string>& remarks() const { return handover_.remarks; }

    /// Where there is no line about the job: says on standard error that a card is charged which was not
    /// named on the command line, and of which the user may not think.
    void tellKeptCard() const;

private:
    JobOptions options_;
    std::vector<RecipientInput> recipients_;
    DriverSetup setup_;
    Driver driver_;
    Handover handover_;
    bool leavesKeptCard_ = false;
};

} // namespace quelm

#endif
