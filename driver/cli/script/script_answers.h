// The lines that a script's commands answer with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_SCRIPT_SCRIPT_ANSWERS_H
#define DRIVER_CLI_SCRIPT_SCRIPT_ANSWERS_H

#include "base/net/network_address.h"
#include "driver/core/driver.h"
#include "driver/handover/summary.h"

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// widget "NAME" kind KIND visible yes|no sensitive yes|no operable yes|no ..., one line.
std::string widgetAnswer(const WidgetView& view);

/// rows "LIST" COUNT, and a line for each row with its cells.
std::string rowsAnswer(std::string_view list, const std::vector<std::vector<std::string>>& rows);

/// windows COUNT, and a line for each window (its view) with its title.
std::string windowsAnswer(const std::vector<WidgetView>& windows);

/// question "TEXT", one line.
std::string questionAnswer(const QuestionView& question);

/// handed device "HOST:PORT", one line.
std::string deviceAnswer(const NetworkAddress& device);

/// handed queue "NAME" job NUMBER, one line.
std::string queueAnswer(std::string_view queue, int job);

/// held queue "NAME" job NUMBER until "MOMENT", one line.
std::string heldAnswer(std::string_view queue, int job, std::time_t until);

/// waits outbox job NUMBER until "MOMENT", one line.
std::string waitingAnswer(int job, std::time_t until);

/// summary COUNT, and a line for each subject: how many recipients, and a line for each of them; pages;
/// cover; resolution; speed; confirmation; prefix; card; time; destination; what does not reach the device.
std::string summaryAnswer(const JobSummary& summary);

} // namespace quelm

#endif
