// Does work in a copy of the process, so that the process itself stays as it is.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_PROCESS_COPY_H
#define DRIVER_DESKTOP_SENDING_PROCESS_COPY_H

#include <chrono>
#include <functional>
#include <string>

namespace quelm {

/// Runs `work` in a forked copy of the process and returns what it returned there. Nothing that it
/// changes in memory is changed here. In the copy there is only the calling thread, and `work` uses
/// neither the screen nor what other threads may have locked. Throws quelm::Error with the line of an
/// Error that `work` threw, and when the copy could not be made, died, or ran longer than `timeLimit`;
/// it does not run any more then.
std::string inProcessCopy(const std::function<std::string()>& work,
                          std::chrono::milliseconds timeLimit = std::chrono::seconds(10));

} // namespace quelm

#endif
