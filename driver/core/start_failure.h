// Why a component could not start.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_START_FAILURE_H
#define DRIVER_CORE_START_FAILURE_H

#include <string>

namespace quelm {

class HostState;

/// Why the component that started last under `state` is not ready, as far as the host can tell: one line.
[[nodiscard]] std::string startFailure(const HostState& state);

} // namespace quelm

#endif
