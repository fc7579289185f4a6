// Which of the dialogs that decide what goes out the component has taken over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_CONFIRMATIONS_H
#define DRIVER_CORE_CONFIRMATIONS_H

#include "driver/boundary/host_state.h"
#include "driver/core/callbacks.h"

#include <string_view>

namespace quelm {

/// The component puts what its dialogs show into the fax job only when a user confirms them. After a start
/// they show what was kept, and the job holds none of it: before a job is written, the dialogs that nobody
/// has confirmed since are confirmed here.
class Confirmations {
public:
    /// Both outlive this object.
    Confirmations(HostState& hostState, Callbacks& widgetCallbacks)
        : state_(hostState), callbacks_(widgetCallbacks)
    {
    }

    /// Fires the Ok of the sender dialog, the cover sheet's set-up and the fax dialog, each unless it was
    /// fired since the start. No window appears, vanishes or moves, and what a Cancel returns to stays.
    /// A dialog that the component does not have is left out. Throws quelm::Error when the component fails or
    /// asks something; it is tried again then the next time.
    void takeOver();

    /// Whether the component has taken over what the dialog of this Ok showed; true for one that it lacks.
    [[nodiscard]] bool isTakenOver(std::string_view okButton) const { return waiting(okButton) == nullptr; }

    /// Whether the fax dialog would be confirmed by `takeOver`.
    [[nodiscard]] bool faxDialogWaits() const;

    /// Whether a user confirmed the fax dialog since the start.
    [[nodiscard]] bool userConfirmedFaxDialog() const;

private:
    [[nodiscard]] Widget* waiting(std::string_view okButton) const;

    HostState& state_;
    Callbacks& callbacks_;
};

} // namespace quelm

#endif
