// Keeps the fields of the destination in step with its kind.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/destination_panel.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/handover/summary.h"

#include <glibmm/convert.h>
#include <glibmm/miscutils.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <utility>

namespace quelm {
namespace {

constexpr int space = 8;
constexpr int fieldCharacters = 26;

// The rows of the combo boxes.
constexpr int dscRow = 0;
constexpr int pjlRow = 1;

// The pages of the stack of fields.
constexpr const char* filePage = "file";
constexpr const char* devicePage = "device";
constexpr const char* queuePage = "queue";
constexpr const char* namedPage = "named";

/// The row of the first destination of the configuration, behind the other kinds.
constexpr int namedRow = static_cast<int>(DestinationKind::named);

/// Lets a file chooser's completion leave the name that stands in its field now. The toolkit completes that
/// once it has read the folder, so that "fax.job" would be "fax.job.old" where only that is. Other names are
/// completed as ever.
void keepName(Gtk::Widget& widget)
{
    if (auto* field = dynamic_cast<Gtk::Entry*>(&widget); field != nullptr && field->get_completion()) {
        constexpr const char* key = "quelm-name-kept";
        g_object_set_data_full(G_OBJECT(field->gobj()), key, g_strdup(field->get_text().c_str()), g_free);
        const auto leave = [](GtkEntryCompletion* completion, gchar*, gpointer) -> gboolean {
            GtkWidget* entry = gtk_entry_completion_get_entry(completion);
            const auto* kept = static_cast<const gchar*>(g_object_get_data(G_OBJECT(entry), key));
            return g_strcmp0(gtk_entry_get_text(GTK_ENTRY(entry)), kept) == 0 ? TRUE : FALSE;
        };
        g_signal_connect(field->get_completion()->gobj(), "insert-prefix", G_CALLBACK(+leave), nullptr);
    } else if (auto* container = dynamic_cast<Gtk::Container*>(&widget); container != nullptr) {
        container->forall(&keepName);
    }
}

} // namespace

DestinationPanel::DestinationPanel(QueueLister lister)
    : lister_(std::move(lister)), kindLabel_(translated("Send _to:"), true), fieldLabel_("", true),
      chooseFile_(translated("_Choose..."), true), pdlLabel_(translated("Fo_rmat:"), true)
{
    set_column_spacing(space);
    set_row_spacing(space);

    // In the order of DestinationKind.
    kind_.append(translated("File"));
    kind_.append(translated("Network device"));
    kind_.append(translated("Print queue"));
    kindLabel_.set_mnemonic_widget(kind_);

    makeFileField();
    device_.set_placeholder_text(translated("Host name or address"));
    device_.set_tooltip_text(
        translated("Host name or address of the device; a port may follow behind a colon"));
    device_.set_width_chars(fieldCharacters);
    device_.set_activates_default();
    fields_.set_homogeneous();
    fields_.add(fileBox_, filePage);
    fields_.add(device_, devicePage);
    fields_.add(queue_, queuePage);
    place_.set_xalign(0);
    place_.set_ellipsize(Pango::ELLIPSIZE_END);
    fields_.add(place_, namedPage);

    hint_.set_xalign(0);
    hint_.set_line_wrap();
    hint_.set_max_width_chars(fieldCharacters);
    hint_.get_style_context()->add_class("dim-label");

    pdl_.append(translated("PostScript comments (DSC)"));
    pdl_.append(translated("Printer job language (PJL)"));
    pdl_.set_tooltip_text(translated("How the job tells the device that it is a fax, and to whom"));
    pdlLabel_.set_mnemonic_widget(pdl_);
    attachRows();

    describe(kind_, "Main Destination Kind", translated("Send to"));
    describe(file_, "Main Destination File", translated("File"));
    describe(chooseFile_, "Main Choose File Button");
    describe(device_, "Main Destination Device", translated("Network device"));
    describe(queue_, "Main Destination Queue", translated("Print queue"));
    describe(*queue_.get_entry(), "Main Destination Queue Name", translated("Print queue"));
    describe(place_, "Main Destination Place");
    describe(hint_, "Main Destination Hint");
    describe(pdl_, "Main Job Format", translated("Format"));

    show_all_children();
    hint_.hide();
    hint_.set_no_show_all();
    kind_.signal_changed().connect([this] {
        showKind();
        choiceChanged_.emit();
    });
    for (Gtk::Entry* field : {&file_, &device_, queue_.get_entry()})
        field->signal_changed().connect([this] { choiceChanged_.emit(); });
    pdl_.signal_changed().connect([this] {
        if (!settingPdl_)
            pdlChosen_.emit();
    });
    setChoice({});
    setPdl(Pdl::dsc);
}

void DestinationPanel::attachRows()
{
    for (Gtk::Label* label : {&kindLabel_, &fieldLabel_, &pdlLabel_})
        label->set_xalign(0);
    for (Gtk::Widget* field : std::initializer_list<Gtk::Widget*>{&kind_, &fields_, &pdl_})
        field->set_hexpand();
    // A grid tells assistive tools what was attached last first: in reading order they shall have it.
    attach(pdl_, 1, 3);
    attach(pdlLabel_, 0, 3);
    attach(hint_, 1, 2);
    attach(fields_, 1, 1);
    attach(fieldLabel_, 0, 1);
    attach(kind_, 1, 0);
    attach(kindLabel_, 0, 0);
}

void DestinationPanel::makeFileField()
{
    file_.set_placeholder_text(translated("Path of the file"));
    file_.set_width_chars(fieldCharacters);
    file_.set_activates_default();
    fileBox_.set_spacing(space);
    fileBox_.pack_start(file_, Gtk::PACK_EXPAND_WIDGET);
    fileBox_.pack_start(chooseFile_, Gtk::PACK_SHRINK);
    chooseFile_.signal_clicked().connect([this] { chooseFile(); });
}

void DestinationPanel::offer(std::vector<NamedTarget> destinations, const std::string& preset)
{
    destinations_ = std::move(destinations);
    preset_ = preset;
    for (const auto& destination : destinations_)
        kind_.append(drawable(destination.name));
}

/// Nothing, which is less than the first row, for a name that is not offered.
int DestinationPanel::rowOf(const std::string& name) const
{
    const auto found = std::ranges::find(destinations_, name, &NamedTarget::name);
    return found == destinations_.end() ? -1 : namedRow + static_cast<int>(found - destinations_.begin());
}

const NamedTarget* DestinationPanel::named() const
{
    const auto row = kind_.get_active_row_number();
    return row < namedRow ? nullptr : &destinations_.at(static_cast<std::size_t>(row - namedRow));
}

std::optional<Pdl> DestinationPanel::requiredPdl() const
{
    const auto* destination = named();
    return destination == nullptr ? std::nullopt : destination->pdl;
}

void DestinationPanel::setChoice(const DestinationChoice& choice)
{
    setFile(choice.file);
    device_.set_text(choice.device);
    queue_.get_entry()->set_text(choice.queue);
    const bool isNamed = choice.kind == DestinationKind::named;
    const bool isNothing = choice == DestinationChoice{} || (isNamed && rowOf(choice.name) < 0);
    const int preset = rowOf(preset_);
    if (isNothing)
        kind_.set_active(preset < 0 ? 0 : preset);
    else
        kind_.set_active(isNamed ? rowOf(choice.name) : static_cast<int>(choice.kind));
}

DestinationKind DestinationPanel::kind() const
{
    switch (kind_.get_active_row_number()) {
    case static_cast<int>(DestinationKind::device):
        return DestinationKind::device;
    case static_cast<int>(DestinationKind::queue):
        return DestinationKind::queue;
    case -1:
    case static_cast<int>(DestinationKind::file):
        return DestinationKind::file;
    default:
        return DestinationKind::named;
    }
}

DestinationChoice DestinationPanel::choice() const
{
    return {kind(),
            file(),
            std::string(trimmed(device_.get_text().raw())),
            std::string(trimmed(queue_.get_entry_text().raw())),
            {},
            named() == nullptr ? "" : named()->name};
}

DestinationChoice DestinationPanel::absoluteChoice() const
{
    if (const auto* destination = named())
        return choiceOf(destination->target);
    DestinationChoice absolute = choice();
    absolute.file = absolutePath(absolute.file, Glib::get_home_dir(), Glib::get_current_dir());
    return absolute;
}

void DestinationPanel::setPdl(Pdl pdl)
{
    settingPdl_ = true;
    pdl_.set_active(pdl == Pdl::pjl ? pjlRow : dscRow);
    settingPdl_ = false;
}

Pdl DestinationPanel::pdl() const { return pdl_.get_active_row_number() == pjlRow ? Pdl::pjl : Pdl::dsc; }

void DestinationPanel::showKind()
{
    hint_.hide();
    listing_.giveUp();
    switch (kind()) {
    case DestinationKind::file:
        fieldLabel_.set_text_with_mnemonic(translated("Fi_le:"));
        fieldLabel_.set_mnemonic_widget(file_);
        fields_.set_visible_child(filePage);
        break;
    case DestinationKind::device:
        fieldLabel_.set_text_with_mnemonic(translated("_Device:"));
        fieldLabel_.set_mnemonic_widget(device_);
        fields_.set_visible_child(devicePage);
        break;
    case DestinationKind::queue:
        fieldLabel_.set_text_with_mnemonic(translated("_Queue:"));
        fieldLabel_.set_mnemonic_widget(*queue_.get_entry());
        fields_.set_visible_child(queuePage);
        listQueues();
        break;
    case DestinationKind::named:
        fieldLabel_.set_text(translated("Place:"));
        place_.set_text(shownMessage(shownTarget(named()->target)));
        fields_.set_visible_child(namedPage);
        break;
    }
}

void DestinationPanel::focusField()
{
    switch (kind()) {
    case DestinationKind::file:
        return file_.grab_focus();
    case DestinationKind::device:
        return device_.grab_focus();
    case DestinationKind::queue:
        return queue_.get_entry()->grab_focus();
    case DestinationKind::named:
        return kind_.grab_focus();
    }
}

void DestinationPanel::listQueues()
{
    struct Found {
        std::vector<std::string> queues;
        std::string trouble;
    };
    const auto found = std::make_shared<Found>();
    const auto list = [lister = lister_, found](const std::stop_token& stop) {
        try {
            found->queues = lister([&stop] { return stop.stop_requested(); });
        } catch (const std::exception& error) {
            found->trouble = error.what();
        }
    };
    listing_.start(list, [this, found] {
        const auto typed = queue_.get_entry_text();
        queue_.remove_all();
        for (const auto& queue : found->queues)
            queue_.append(drawable(queue));
        queue_.get_entry()->set_text(typed.empty() && !found->queues.empty() ? drawable(found->queues.front())
                                                                             : std::string(typed));
        std::string hint = found->trouble;
        if (hint.empty() && found->queues.empty())
            hint = translated("The print system has no queues.");
        hint_.set_text(oneLine(drawable(hint)));
        hint_.set_visible(!hint.empty());
    });
}

void DestinationPanel::setFile(const std::string& path)
{
    path_ = path;
    file_.set_text(Glib::filename_display_name(path));
}

std::string DestinationPanel::file() const
{
    const std::string text = file_.get_text();
    return text == Glib::filename_display_name(path_).raw() ? path_ : std::string(trimmed(text));
}

void DestinationPanel::chooseFile()
{
    auto* window = dynamic_cast<Gtk::Window*>(get_toplevel());
    if (window == nullptr)
        return;
    chooser_ = std::make_unique<Gtk::FileChooserDialog>(*window, translated("Write the Fax Job to"),
                                                        Gtk::FILE_CHOOSER_ACTION_SAVE);
    chooser_->add_button(translated("_Cancel"), Gtk::RESPONSE_CANCEL);
    chooser_->add_button(translated("_Choose"), Gtk::RESPONSE_ACCEPT);
    chooser_->set_default_response(Gtk::RESPONSE_ACCEPT);
    chooser_->set_modal();
    describe(*chooser_, "Main File Chooser");
    const std::string shown = file();
    const std::filesystem::path present = shown;
    if (present.is_absolute())
        chooser_->set_current_folder(present.parent_path().string());
    chooser_->set_current_name(present.has_filename()
                                   ? Glib::filename_display_name(present.filename().string())
                                   : Glib::ustring(translated("fax.job")));
    keepName(*chooser_);
    chooser_->signal_response().connect([this, shown](int response) {
        const std::string chosen = chooser_->get_filename();
        // What the chooser began with comes back by its name on the screen.
        if (response == Gtk::RESPONSE_ACCEPT)
            setFile(chosen == Glib::filename_display_name(shown).raw() ? shown : chosen);
        chooser_->hide();
    });
    chooser_->present();
}

} // namespace quelm
