// The emulated device needs no host.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/host.h"

std::shared_ptr<void> bench::startHost() { return nullptr; }
