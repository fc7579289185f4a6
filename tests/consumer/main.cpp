// Loads the component, starts it, and tells what became of it: consumer INSTALLATION_FOLDER.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/component.h"
#include "host/fax_session.h"
#include "little_host.h"
#include "model/fax_job.h"

#include <dlfcn.h>

#include <cstdio>

namespace {

const char* describe(void* component, const char* name)
{
    const auto* text = static_cast<const char* const*>(dlsym(component, name));
    return text ? *text : "(missing)";
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: consumer INSTALLATION_FOLDER\n");
        return 2;
    }
    installationFolder = argv[1];

    // Binding now tells at once whether the boundary is complete.
    void* component = dlopen(COMPONENT_PATH, RTLD_NOW | RTLD_LOCAL);
    if (!component) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    std::printf("%s %s\n", describe(component, host::displayNameSymbol),
                describe(component, host::versionSymbol));

    const auto start = reinterpret_cast<host::EntryPoint>(dlsym(component, host::entryPointSymbol));
    const bool started = start && start() != 0;
    std::printf("started: %s\n", started ? "yes" : "no");

    const bool published =
        pFaxSession && registeredObject == pFaxSession && registeredName == host::faxSessionResource;
    std::printf("fax job: %s\n", !published                             ? "none"
                                 : pFaxSession->pdlMode == PDL_MODE_DSC ? "published, in DSC mode"
                                                                        : "published, in another mode");
    return started && published ? 0 : 1;
}
