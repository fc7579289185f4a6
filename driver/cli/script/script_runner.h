// Carries out the steps of a script on a driver.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_SCRIPT_SCRIPT_RUNNER_H
#define DRIVER_CLI_SCRIPT_SCRIPT_RUNNER_H

#include "driver/cli/script/script_answers.h"
#include "driver/cli/script/script_parser.h"
#include "driver/handover/handover.h"
#include "driver/handover/recipient_watch.h"
#include "driver/outbox/submission.h"
#include "driver/plugin/fax_session.h"

#include <ctime>
#include <utility>

namespace quelm {

class Driver;

/// Carries out one step after the other. A step that cannot be carried out throws Error and has
/// changed nothing. Recipients that cannot be faxed to are warnings in the log when they come in, so that a
/// script can remove them again; `fax` and `cover` refuse them.
class ScriptRunner {
public:
    /// `driver` outlives the runner; `pdl` is the form of the jobs that `fax` writes, and `outbox` where they
    /// wait for their time.
    ScriptRunner(Driver& driver, Pdl pdl, OutboxSettings outbox)
        : driver_(driver), pdl_(pdl), outbox_(std::move(outbox)), watch_(driver)
    {
    }

    [[nodiscard]] ScriptAnswer run(const ScriptStep& step);

private:
    void act(const ScriptStep& step);
    void cover(const ScriptStep& step);
    void summary(const ScriptStep& step);
    void fax(const ScriptStep& step);
    /// What every step that looks at the job or sends it begins with: the job as it is written, its warnings
    /// logged.
    Handover checkedHandover();

    [[nodiscard]] Submission submissionTo(const JobTarget& target, std::time_t begun);

    Driver& driver_;
    Pdl pdl_;
    OutboxSettings outbox_;
    RecipientWatch watch_;
    ScriptAnswer answer_; ///< of the step that is carried out
};

} // namespace quelm

#endif
