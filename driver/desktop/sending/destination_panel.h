// The fields of the main window that say where the fax job goes, and in which form.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_DESTINATION_PANEL_H
#define DRIVER_DESKTOP_SENDING_DESTINATION_PANEL_H

#include "driver/desktop/sending/destination_choice.h"
#include "driver/desktop/toolkit/background_task.h"
#include "driver/plugin/fax_session.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/comboboxtext.h>
#include <gtkmm/entry.h>
#include <gtkmm/filechooserdialog.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/stack.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// The names of the print queues that a user may choose from, the default first. Called on a thread of its
/// own; asks `cancelled` now and then. Throws quelm::Error when they are not known.
using QueueLister = std::function<std::vector<std::string>(const std::function<bool()>& cancelled)>;

/// Labels and fields in two columns.
class DestinationPanel : public Gtk::Grid {
public:
    explicit DestinationPanel(QueueLister lister);

    /// Offers the destinations of the configuration by their names, behind the others. Called once, ahead of
    /// `setChoice`. `preset` is the name of the one that is chosen as long as the user chose nothing; may be
    /// empty.
    void offer(std::vector<NamedTarget> destinations, const std::string& preset);

    /// A named destination without a name is the default one. One that is not offered any more counts as
    /// nothing chosen, which is the default one, too, or else a file.
    void setChoice(const DestinationChoice& choice);
    /// What the fields say, without blanks around it. A file whose name is not UTF-8 has its own bytes as
    /// long as the field shows it.
    DestinationChoice choice() const;

    /// The same with the file's absolute path, and the place that a named destination stands for in place of
    /// its name.
    DestinationChoice absoluteChoice() const;

    void setPdl(Pdl pdl);
    Pdl pdl() const;

    /// Called when the user chose another form of the job.
    sigc::signal<void>& signalPdlChosen() { return pdlChosen_; }

    /// Called when a field says something else.
    sigc::signal<void>& signalChoiceChanged() { return choiceChanged_; }

    /// The button beside the file's field, so that it can be made as wide as others.
    Gtk::Button& chooseButton() { return chooseFile_; }

    /// The form of jobs that the chosen destination takes; nothing when it takes any.
    std::optional<Pdl> requiredPdl() const;

    /// Puts the keyboard into the field that is to be filled.
    void focusField();

private:
    void attachRows();
    void makeFileField();
    void showKind();
    void listQueues();
    void chooseFile();
    void setFile(const std::string& path);
    std::string file() const;
    DestinationKind kind() const;
    const NamedTarget* named() const;
    int rowOf(const std::string& name) const;

    QueueLister lister_;
    Gtk::Label kindLabel_;
    Gtk::ComboBoxText kind_;
    Gtk::Label fieldLabel_;
    Gtk::Stack fields_;
    Gtk::Box fileBox_{Gtk::ORIENTATION_HORIZONTAL};
    Gtk::Entry file_;
    std::string path_; ///< what was put into the field by its name on the screen
    Gtk::Button chooseFile_;
    Gtk::Entry device_;
    Gtk::ComboBoxText queue_{true};
    Gtk::Label place_;
    std::vector<NamedTarget> destinations_;
    std::string preset_;
    Gtk::Label hint_;
    Gtk::Label pdlLabel_;
    Gtk::ComboBoxText pdl_;
    sigc::signal<void> pdlChosen_;
    sigc::signal<void> choiceChanged_;
    bool settingPdl_ = false;
    BackgroundTask listing_;
    std::unique_ptr<Gtk::FileChooserDialog> chooser_;
};

} // namespace quelm

#endif
