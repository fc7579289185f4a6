// Chooses a file in the component's chooser, unseen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/kept_phonebook.h"

#include "driver/boundary/gtk_handle.h"
#include "driver/widgets/widget_names.h"

#include <string>

namespace quelm {

namespace {

constexpr const char* opener = "InvokeSharedSelectFileDialog";
constexpr const char* chooserName = "SharedPBSelectFileDialog";

} // namespace

void handOverKeptPhonebook(HostState& state, Callbacks& callbacks)
{
    const Widget* shown = state.tree.find(widget_names::lanFaxSharedPbName);
    if (shown == nullptr || shown->text().empty())
        return;
    const std::string path = shown->text();
    const WindowsKept windows(state);
    callbacks.call(opener);
    Widget* chooser = state.tree.find(chooserName);
    if (chooser == nullptr || chooser->kind() != WidgetKind::fileSelection)
        return;
    const std::string start = chooser->text();
    chooser->setText(path);
    if (const HostState::Handler ok = state.handlerFor(*chooser, okPart))
        callbacks.run(okPart, ok);
    chooser->setText(start);
}

} // namespace quelm
