// The driver's core as the host, in a temporary installation.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/host.h"
#include "driver/boundary/host_state.h"
#include "driver/config/installation.h"
#include "frame/startup.h"
#include "tests/support/temporary_folder.h"

namespace bench {

namespace {

struct DriverHost {
    TemporaryFolder folder;
    quelm::HostState state{folder.path(), "ann"};

    DriverHost()
    {
        quelm::prepareInstallation(state.home);
        require(InitializeFaxComponent() != 0, "the component did not start");
    }
};

} // namespace

std::shared_ptr<void> startHost() { return std::make_shared<DriverHost>(); }

} // namespace bench
