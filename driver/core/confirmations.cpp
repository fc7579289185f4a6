// Confirms dialogs in the place of the user, unseen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/confirmations.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/widgets/widget_names.h"

#include <array>
#include <utility>

namespace quelm {

namespace {

/// In the order in which a user confirms them: each dialog is opened from the next.
constexpr std::array<std::string_view, 3> okButtons{
    widget_names::lanFaxSenderOkButton,
    widget_names::lanFaxCoverOkButton,
    widget_names::lanFaxOkButton,
};

/// What a Ok does beside taking values over is undone at the end: snapshots for a later Cancel, and the
/// sensitivity of what the options decide on.
class Unseen {
public:
    explicit Unseen(HostState& hostState)
        : state_(hostState), windows_(hostState), saved_(hostState.features.savedValues())
    {
    }
    ~Unseen()
    {
        state_.features.setSavedValues(std::move(saved_));
        state_.bindings.applyAll();
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;

private:
    HostState& state_;
    WindowsKept windows_;
    Features::SavedValues saved_;
};

} // namespace

Widget* Confirmations::waiting(std::string_view okButton) const
{
    Widget* button = state_.tree.find(okButton);
    const std::string* callback = button == nullptr ? nullptr : button->attribute("AddCallback");
    const bool waits = callback != nullptr && callbacks_.has(*callback) && !callbacks_.hasDone(*callback);
    return waits ? button : nullptr;
}

bool Confirmations::faxDialogWaits() const { return waiting(widget_names::lanFaxOkButton) != nullptr; }

bool Confirmations::userConfirmedFaxDialog() const
{
    const Widget* button = state_.tree.find(widget_names::lanFaxOkButton);
    const std::string* callback = button == nullptr ? nullptr : button->attribute("AddCallback");
    return callback != nullptr && callbacks_.hasUserDone(*callback);
}

void Confirmations::takeOver()
{
    for (const std::string_view name : okButtons) {
        Widget* button = waiting(name);
        if (button == nullptr)
            continue;
        const Unseen unseen(state_);
        const Question* before = state_.questions.top();
        const int asked = before == nullptr ? 0 : before->number;
        callbacks_.fire(*button);
        const std::string& callback = *button->attribute("AddCallback");
        const Question* now = state_.questions.top();
        if (now != nullptr && now->number != asked) {
            callbacks_.forget(callback);
            state_.questions.closeCurrent();
            throw Error(localized("the component asks a question before it takes over what its dialogs show; "
                                  "open the fax dialog and press Ok"));
        }
        if (!callbacks_.hasDone(callback))
            throw Error(localized("the component failed to take over what its dialogs show; nothing is "
                                  "written"));
        callbacks_.noteUnseen(callback);
    }
}

} // namespace quelm
