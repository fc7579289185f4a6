// What host/widgets.h declares: widgets by name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/widgets.h"

#include "base/translation.h"
#include "driver/boundary/host_state.h"
#include "driver/boundary/properties.h"

namespace {

quelm::Widget* find(const char* name)
{
    const quelm::HostState* state = quelm::HostState::current();
    return state == nullptr || name == nullptr ? nullptr : state->tree.find(name);
}

} // namespace

GTKObject* GetWidgetByName(char* name)
{
    return quelm::atBoundary<GTKObject*>(nullptr, [name]() -> GTKObject* {
        quelm::HostState* state = quelm::HostState::current();
        quelm::Widget* widget = find(name);
        if (widget != nullptr)
            return &state->handleOf(*widget);
        if (state != nullptr)
            state->failures.widgetMissing(
                quelm::localized("its dialogs lack something that it asks for; install the component again"));
        return nullptr;
    });
}

bool GetWidgetPropertyByName(char* widget, char* property, char* text, float* /*number*/, int* integer,
                             bool* flag)
{
    const quelm::Widget* found = find(widget);
    return found != nullptr && property != nullptr &&
           quelm::readProperty(*found, property, text, integer, flag);
}

bool SetWidgetPropertyByName(char* widget, char* property, char* text, float /*number*/, int integer,
                             bool flag)
{
    quelm::Widget* found = find(widget);
    return found != nullptr && property != nullptr &&
           quelm::writeProperty(*found, property, text, integer, flag);
}
