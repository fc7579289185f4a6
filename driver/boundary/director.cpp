// What host/director.h declares: building dialogs, and objects that are known by name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/director.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"

#include <glib.h>

#include <vector>

namespace {

/// All objects that were ever registered, those that were replaced or whose driver has ended among
/// them: they live until the process ends, and tools that look for lost memory find them here.
std::vector<void*>& registeredObjects()
{
    static auto* objects = new std::vector<void*>; // outlives everything that runs at the end
    return *objects;
}

} // namespace

ComponentDirector* pDriverDirector = nullptr;

bool ComponentDirector::parseXMLBuffer(char* text)
{
    return quelm::atBoundary(false, [text] {
        quelm::HostState* state = quelm::HostState::current();
        if (state == nullptr || text == nullptr)
            return false;
        try {
            if (g_utf8_validate(text, -1, nullptr) == FALSE)
                throw quelm::Error(quelm::localized("the dialog definition cannot be used: it is not UTF-8"));
            if (state->tree.build(text)) {
                state->features.setAllDefaults();
                state->bindings.applyAll();
            }
            return true;
        } catch (const quelm::Error& error) {
            state->failures.definitionRefused(error.what());
            return false;
        }
    });
}

bool ComponentDirector::registerResource(char* name, void* object)
{
    return quelm::atBoundary(false, [&] {
        quelm::HostState* state = quelm::HostState::current();
        if (state == nullptr || name == nullptr)
            return false;
        registeredObjects().push_back(object);
        state->resources[name] = object;
        return true;
    });
}
