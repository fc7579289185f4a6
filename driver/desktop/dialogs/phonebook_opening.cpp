// Looks for what the phonebook program needs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/phonebook_opening.h"

#include "base/error.h"
#include "base/terminal/terminal_emulator.h"
#include "base/translation.h"
#include "driver/store/phonebook_file.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace quelm {

namespace {

/// The field beside a button that shows which phonebook it opens.
struct OpeningButton {
    std::string_view button;
    std::string_view field;
};

constexpr std::array<OpeningButton, 2> openingButtons{{
    {widget_names::openPersonalPbButton, widget_names::lanFaxPersonalPbName},
    {widget_names::openSharedPbButton, widget_names::lanFaxSharedPbName},
}};

/// The field's text; empty when there is no such field.
std::string shownPath(const Widget& button, std::string_view field)
{
    for (const auto& sibling : button.parent()->children())
        if (sibling->name() == field)
            return sibling->text();
    return "";
}

} // namespace

void requireOpenablePhonebook(const Widget& button)
{
    const auto* found =
        std::find_if(openingButtons.begin(), openingButtons.end(),
                     [&button](const OpeningButton& entry) { return entry.button == button.name(); });
    if (found == openingButtons.end())
        return;
    const std::string path = shownPath(button, found->field);
    if (!path.empty()) {
        static_cast<void>(phonebook_file::requirePhonebook(path, phonebook_file::Whose::anybodys));
    } else if (found->button == widget_names::openSharedPbButton) {
        // A personal one there always is, also while "Defaults" has emptied its field.
        throw Error(localized("no shared phonebook is chosen; choose one with \"Select File...\""));
    }
    if (isStartedFromDesktop())
        static_cast<void>(terminalCommand({}));
}

} // namespace quelm
