// What will happen when the job is sent, in the main window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_SUMMARY_PANEL_H
#define DRIVER_DESKTOP_MAIN_WINDOW_SUMMARY_PANEL_H

#include "driver/core/driver.h"
#include "driver/desktop/sending/destination_panel.h"
#include "driver/desktop/sending/document_loading.h"
#include "driver/handover/handover.h"

#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>
#include <string>
#include <vector>

namespace quelm {

/// A label of several lines, which scrolls when it has no room. It follows the fields of the destination and
/// the clock by itself. Its fixed name is "Main Job Summary".
class SummaryPanel : public Gtk::ScrolledWindow {
public:
    /// Both outlive the panel.
    SummaryPanel(Driver& driver, DestinationPanel& destination);
    ~SummaryPanel() override;

    /// Jobs are of this document from now on; null: there is none.
    void setDocument(std::shared_ptr<const LoadedDocument> document);

    /// The fax may have changed. While dialogs are open nothing is decided, and what is shown stays.
    void lookAtFax();

private:
    void update();
    [[nodiscard]] std::vector<std::string> lines() const;

    Driver& driver_;
    const DestinationPanel& destination_;
    std::shared_ptr<const LoadedDocument> document_;
    Handover handover_;   ///< of the fax, when it was looked at last
    std::string refusal_; ///< why it must not go out; empty when it may
    Gtk::Label text_;
    sigc::connection clock_;
    sigc::connection update_;
};

} // namespace quelm

#endif
