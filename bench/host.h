// The host that a benchmark program brings along for the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_HOST_H
#define BENCH_HOST_H

#include <memory>

namespace bench {

/// Makes the host ready and starts the component in it (a host with a screen does so for each benchmark);
/// it ends when the result is destroyed. Every program links one definition: the light host, the driver's
/// core or the desktop. Throws std::runtime_error when that fails.
std::shared_ptr<void> startHost();

} // namespace bench

#endif
