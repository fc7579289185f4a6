// The lines that a script's commands answer with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_SCRIPT_SCRIPT_ANSWERS_H
#define DRIVER_CLI_SCRIPT_SCRIPT_ANSWERS_H

#include "driver/core/driver.h"
#include "driver/handover/summary.h"
#include "driver/jobs/job_target.h"
#include "driver/widgets/widget_view.h"

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// What became of a job that a step handed over.
struct ScriptReceipt {
    enum class Kind { handed, held, waits };
    Kind kind = Kind::handed;
    JobTarget target;      ///< a device or queue; of one that waits, the place that it waits for
    int job = 0;           ///< its number in a queue, or of one that waits in the outbox; 0 for none
    std::time_t until = 0; ///< of one that is held or waits
};

/// What a step answers: what it asked for, or that it was carried out and what came of that.
struct ScriptAnswer {
    std::size_t line = 0; ///< of the script, from 1
    std::optional<WidgetView> widget;
    std::optional<std::string> list; ///< the name of the list whose rows these are
    std::vector<std::vector<std::string>> rows;
    std::optional<std::vector<WidgetView>> windows;
    std::optional<ScriptReceipt> receipt;
    std::optional<JobSummary> summary;
    std::optional<QuestionView> question; ///< that waits for its answer

    /// False for one that only looked.
    [[nodiscard]] bool isAction() const { return !widget && !list && !windows; }
};

/// The answer as docs/script.md says, each line ended by LF: "ok" for an action, what was asked for
/// otherwise. What became of a job stands behind "ok", the question that waits last.
[[nodiscard]] std::string answerText(const ScriptAnswer& answer);

/// The same as a JSON object in one line.
[[nodiscard]] std::string answerJson(const ScriptAnswer& answer);

} // namespace quelm

#endif
