// Looks callbacks up and calls them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/callbacks.h"

#include "host/component.h"

namespace quelm {

namespace {

/// The driver's own callback: every help button names it.
constexpr std::string_view helpCallback = "ProcessPushButtonHelpInvocation";

} // namespace

Callbacks::Callbacks(HostState& hostState, const ComponentLibrary& library)
    : state_(hostState), component_(library)
{
}

bool Callbacks::fire(Widget& widget)
{
    const std::string* name = widget.attribute("AddCallback");
    if (name == nullptr || name->empty())
        return false;
    if (const auto callback = reinterpret_cast<host::WidgetCallback>(component_.exported(*name))) {
        GTKObject& handle = state_.handleOf(widget);
        run(*name, [&] { callback(nullptr, &handle); });
        return true;
    }
    if (*name == helpCallback) {
        const std::string* given = widget.attribute("HelpTopic");
        topic_ = given == nullptr ? std::string() : *given;
        askedAt_ = &widget;
        if (showHelp_)
            showHelp_(topic_);
        return true;
    }
    return false;
}

bool Callbacks::call(const std::string& exportedName)
{
    const auto callback = reinterpret_cast<host::WidgetCallback>(component_.exported(exportedName));
    if (callback != nullptr)
        run(exportedName, [&] { callback(nullptr, nullptr); });
    return callback != nullptr;
}

bool Callbacks::has(const std::string& exportedName) const
{
    return component_.exported(exportedName) != nullptr;
}

void Callbacks::run(std::string_view what, HostState::Handler handler)
{
    runFirst();
    state_.guard.run(what, [handler] { handler(); });
}

void Callbacks::run(const std::string& exportedName, const std::function<void()>& callback)
{
    runFirst();
    const bool returned = state_.guard.run(exportedName, callback);
    if (exportedName == host::entryPointSymbol)
        done_.clear(); // the component has made another job, which holds nothing yet
    if (returned) {
        done_.insert(exportedName);
        unseen_.erase(exportedName);
    }
}

void Callbacks::runFirst()
{
    if (const auto first = std::exchange(beforeFirst_, {}))
        first();
}

} // namespace quelm
