// The main window's layout and actions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/main_window.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/core/callbacks.h"
#include "driver/core/user_actions.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/desktop/main_window/file_uri.h"
#include "driver/desktop/sending/queue_names.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/style.h"
#include "driver/handover/card_remark.h"
#include "driver/handover/handover.h"
#include "driver/handover/recipient_check.h"
#include "driver/handover/warnings.h"
#include "driver/widgets/widget_names.h"

#include <glibmm/convert.h>
#include <glibmm/main.h>
#include <gtkmm/selectiondata.h>
#include <gtkmm/sizegroup.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

namespace quelm {
namespace {

constexpr int space = 8;
constexpr int wideSpace = 16;
constexpr int formWidth = 380;
constexpr const char* dialogOpener = "T40InvokeFaxDialog";
constexpr const char* recipientList = widget_names::lanFaxRecipientList;
constexpr const char* driverTopic = "driver";

/// A bold line above its fields.
Gtk::Label* sectionTitle(const std::string& text)
{
    auto* label = Gtk::make_managed<Gtk::Label>(text);
    label->set_xalign(0);
    Pango::AttrList attributes;
    auto bold = Pango::Attribute::create_attr_weight(Pango::WEIGHT_BOLD);
    attributes.insert(bold);
    label->set_attributes(attributes);
    return label;
}

/// A section of the form: its title, and its fields behind a margin.
void addSection(Gtk::Box& form, const std::string& title, Gtk::Widget& fields,
                Gtk::PackOptions options = Gtk::PACK_SHRINK)
{
    auto* section = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL, space);
    section->pack_start(*sectionTitle(title), Gtk::PACK_SHRINK);
    fields.set_margin_start(wideSpace);
    section->pack_start(fields, options);
    form.pack_start(*section, options);
}

Glib::RefPtr<Gio::Menu> submenu(const std::vector<std::pair<std::string, const char*>>& items)
{
    auto menu = Gio::Menu::create();
    for (const auto& [text, action] : items)
        menu->append(text, action);
    return menu;
}

} // namespace

std::string faxSummary(std::size_t recipients, bool coverPage, const std::vector<std::string>& remarks)
{
    if (recipients == 0)
        return translated("No recipients yet");
    const auto text = coverPage
                          ? localizedCount("%d recipient, with a cover page",
                                           "%d recipients, with a cover page", recipients, recipients)
                          : localizedCount("%d recipient, without a cover page",
                                           "%d recipients, without a cover page", recipients, recipients);
    return text + behindSummary(remarks);
}

MainWindow::MainWindow(Driver& driver, const MainWindowOptions& options)
    : driver_(driver), options_(options), choicesFile_(options.choicesFile), kept_(choicesFile_.load()),
      open_(translated("_Open..."), true), faxSetup_(translated("Fax Set_up..."), true),
      destinationPanel_(&queueNames), summary_(driver, destinationPanel_),
      job_({*this, driver, destinationPanel_, messages_, question_, options.creator, options.outbox,
            [this] { choicesFile_.keep(choices()); }, [this] { sendingChanged(); }}),
      watch_(driver), help_(translated("H_elp"), true), preview_(translated("Pre_view Job"), true),
      send_(translated("_Send"), true),
      loading_([this](const LoadingResult& result) { documentLoaded(result); })
{
    useDriverStyle();
    set_title(translated("Quelm Driver"));
    layOut();
    describeControls();
    addActions();
    destinationPanel_.offer(options_.destinations, options_.destination);
    destinationPanel_.signalChoiceChanged().connect([this] { showPdl(); });
    destinationPanel_.setChoice(kept_.destination);
    showPdl();
    destinationPanel_.signalPdlChosen().connect([this] { kept_.pdl = destinationPanel_.pdl(); });
    if (kept_.width > 0 && kept_.height > 0)
        set_default_size(kept_.width, kept_.height);
    drag_dest_set({Gtk::TargetEntry("text/uri-list")}, Gtk::DEST_DEFAULT_ALL, Gdk::ACTION_COPY);
    height_.addPassing(messages_);
    height_.addPassing(job_);
    showFax();
    updateActions();
    if (!options.outbox.folder.empty())
        outbox_ = std::make_unique<OutboxWatch>(options.outbox, *this, messages_, question_);
    if (outbox_)
        outbox_->setLooked([this] { withdrawStopQuestion(); });
}

/// The form of jobs follows the destination, when that takes but one.
void MainWindow::showPdl()
{
    const auto name = destinationPanel_.choice().name;
    if (shownFor_ == name)
        return;
    shownFor_ = name;
    destinationPanel_.setPdl(destinationPanel_.requiredPdl().value_or(kept_.pdl.value_or(options_.pdl)));
}

void MainWindow::layOut()
{
    documentPanel_.set_hexpand();
    auto* columns = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, wideSpace);
    columns->set_border_width(wideSpace);
    columns->pack_start(documentPanel_, Gtk::PACK_EXPAND_WIDGET);
    columns->pack_start(form(), Gtk::PACK_EXPAND_WIDGET);

    job_.set_margin_start(wideSpace);
    job_.set_margin_end(wideSpace);

    const auto sameWidth = Gtk::SizeGroup::create(Gtk::SIZE_GROUP_HORIZONTAL);
    for (auto* button : {&open_, &faxSetup_, &destinationPanel_.chooseButton(), &help_, &preview_, &send_})
        sameWidth->add_widget(*button);

    auto* box = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL);
    box->pack_start(messages_, Gtk::PACK_SHRINK);
    box->pack_start(*columns, Gtk::PACK_EXPAND_WIDGET);
    box->pack_start(job_, Gtk::PACK_SHRINK);
    box->pack_start(buttonBar(), Gtk::PACK_SHRINK);
    add(*box);
    box->show_all();
    send_.set_can_default();
    set_default(send_);
    send_.get_style_context()->add_class("suggested-action");
}

/// What the job is made of, beside the document's first page.
Gtk::Box& MainWindow::form()
{
    auto* documentFields = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, space);
    documentFields->pack_start(documentPanel_.facts(), Gtk::PACK_EXPAND_WIDGET);
    documentFields->pack_end(open_, Gtk::PACK_SHRINK);
    open_.set_valign(Gtk::ALIGN_START);
    auto* faxFields = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, space);
    faxSummary_.set_xalign(0);
    faxSummary_.set_line_wrap();
    faxFields->pack_start(faxSummary_, Gtk::PACK_EXPAND_WIDGET);
    faxFields->pack_end(faxSetup_, Gtk::PACK_SHRINK);

    auto* form = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL, wideSpace);
    form->set_size_request(formWidth, -1);
    addSection(*form, translated("Document"), *documentFields);
    addSection(*form, translated("Fax"), *faxFields);
    addSection(*form, translated("Destination"), destinationPanel_);
    addSection(*form, translated("Summary"), summary_, Gtk::PACK_EXPAND_WIDGET);
    return *form;
}

Gtk::Box& MainWindow::buttonBar()
{
    auto* bar = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, space);
    bar->set_border_width(wideSpace);
    bar->set_margin_top(0);
    bar->pack_start(help_, Gtk::PACK_SHRINK);
    bar->pack_end(send_, Gtk::PACK_SHRINK);
    bar->pack_end(preview_, Gtk::PACK_SHRINK);
    return *bar;
}

void MainWindow::describeControls()
{
    describe(*this, "Main Driver Window");
    describe(open_, "Main Open Button");
    describe(faxSummary_, "Main Fax Summary");
    describe(faxSetup_, "Main Fax Setup Button");
    describe(help_, "Main Help Button");
    describe(preview_, "Main Preview Button");
    describe(send_, "Main Send Button");
}

void MainWindow::addActions()
{
    add_action("open", [this] { chooseDocument(); });
    add_action("fax-setup", [this] { faxSetup(); });
    add_action("preview", [this] { job_.preview(); });
    add_action("send", [this] { job_.send(); });
    add_action("cancel", [this] { job_.cancel(); });
    add_action("help", [this] { showHelp(driverTopic, {}); });
    add_action("about", [this] { about(); });
    add_action("quit", [this] { close(); });
    const std::vector<std::pair<Gtk::Button*, const char*>> buttons = {
        {&open_, "win.open"}, {&faxSetup_, "win.fax-setup"}, {&preview_, "win.preview"},
        {&send_, "win.send"}, {&help_, "win.help"},
    };
    for (const auto& [button, action] : buttons)
        gtk_actionable_set_action_name(GTK_ACTIONABLE(button->gobj()), action);
}

Glib::RefPtr<Gio::Menu> MainWindow::menu()
{
    const auto file = submenu({{translated("_Open..."), "win.open"},
                               {translated("Pre_view Job"), "win.preview"},
                               {translated("_Send"), "win.send"}});
    const auto end = submenu({{translated("_Quit"), "win.quit"}});
    file->append_section(end);
    const auto fax = submenu({{translated("Fax Set_up..."), "win.fax-setup"}});
    const auto help = submenu({{translated("_Contents"), "win.help"}, {translated("_About"), "win.about"}});
    auto menu = Gio::Menu::create();
    menu->append_submenu(translated("_File"), file);
    menu->append_submenu(translated("F_ax"), fax);
    menu->append_submenu(translated("_Help"), help);
    return menu;
}

void MainWindow::connectDialogs(DialogWindows& dialogs)
{
    dialogs_ = &dialogs;
    job_.connectDialogs(dialogs);
    dialogs.setSettled([this] {
        showFax();
        summary_.lookAtFax();
        if (outbox_)
            outbox_->askNext();
    });
    dialogs.setTrouble([this](const std::string& message) { tell(Gtk::MESSAGE_ERROR, message); });
}

void MainWindow::showFax()
{
    const auto recipients = driver_.show(recipientList).rowCount.value_or(0);
    job_.noteRecipients(recipients);
    std::vector<std::string> remarks;
    if (const auto card = cardRemark(driver_.creditCardToCharge()); !card.empty())
        remarks.push_back(card);
    faxSummary_.set_text(quelm::faxSummary(recipients, driver_.coverPageWillGo(), remarks));
    tellBadRecipients();
}

/// Names those who came in and cannot be faxed to. The message goes when the last of them is mended or
/// removed.
void MainWindow::tellBadRecipients()
{
    constexpr std::size_t most = 5;
    const auto problems = watch_.newProblems();
    for (const auto& line : bounded(problems, most))
        tellBeside(Gtk::MESSAGE_WARNING, line);
    if (!problems.empty()) {
        toldBadRecipients_ = true;
    } else if (toldBadRecipients_) {
        auto everybody = driver_.faxSession().recipients();
        std::ranges::move(driver_.faxSession().picks(), std::back_inserter(everybody));
        toldBadRecipients_ = std::ranges::any_of(
            everybody, [](const auto& recipient) { return problemWithRecipient(recipient).has_value(); });
        if (!toldBadRecipients_)
            messages_.clear();
    }
}

void MainWindow::updateActions()
{
    const bool free = !job_.isSending();
    const auto enable = [this](const char* action, bool enabled) {
        Glib::RefPtr<Gio::SimpleAction>::cast_dynamic(lookup_action(action))->set_enabled(enabled);
    };
    enable("open", free);
    enable("fax-setup", free);
    enable("preview", free && job_.hasDocument());
    enable("send", free && job_.hasDocument());
    enable("cancel", !free);
    destinationPanel_.set_sensitive(free);
}

void MainWindow::sendingChanged()
{
    updateActions();
    if (job_.isSending())
        return;
    send_.grab_focus();
    // The job may be one that waits now.
    if (outbox_)
        outbox_->wake();
    withdrawStopQuestion();
    // The panel first tells how the job ended.
    if (std::exchange(leaves_, false))
        Glib::signal_idle().connect_once(sigc::mem_fun(*this, &MainWindow::leave));
}

// --- The document ------------------------------------------------------------------------------------

void MainWindow::chooseDocument()
{
    chooser_ = std::make_unique<DocumentChooser>(*this, kept_.documentFolder);
    chooser_->signal_response().connect([this](int response) {
        if (response == Gtk::RESPONSE_ACCEPT)
            openDocument(chooser_->get_filename());
        chooser_->hide();
    });
    chooser_->present();
}

void MainWindow::openDocument(const std::string& path)
{
    std::error_code failure;
    const auto absolute = std::filesystem::absolute(path, failure);
    kept_.documentFolder = absolute.parent_path().string();
    job_.setDocument(nullptr);
    summary_.setDocument(nullptr);
    messages_.clear();
    const std::string name = oneLine(Glib::filename_display_basename(path));
    documentPanel_.showLoading(name);
    set_title(name + " \u2013 " + translated("Quelm Driver"));
    updateActions();
    loading_.start(absolute.string());
}

void MainWindow::documentLoaded(const LoadingResult& result)
{
    // What was told meanwhile, such as at the start of the program, nobody may have read yet.
    job_.setDocument(result.document);
    summary_.setDocument(result.document);
    if (result.document) {
        documentPanel_.showDocument(result.document);
        std::string warnings;
        for (const auto& warning : result.document->document.warnings())
            warnings += (warnings.empty() ? "" : " ") + warning;
        if (!warnings.empty())
            tellBeside(Gtk::MESSAGE_WARNING, warnings);
    } else {
        documentPanel_.showNothing();
        set_title(translated("Quelm Driver"));
        tellBeside(Gtk::MESSAGE_ERROR, result.trouble);
    }
    updateActions();
}

void MainWindow::on_drag_data_received(const Glib::RefPtr<Gdk::DragContext>&, int, int,
                                       const Gtk::SelectionData& data, guint, guint)
{
    // The toolkit ends the drag by itself.
    const auto uris = data.get_uris();
    const std::string path = uris.empty() ? std::string() : fileOfThisComputer(uris.front().raw());
    if (path.empty())
        return tell(Gtk::MESSAGE_ERROR, translated("What was dropped here is no file of this computer."));
    if (job_.isSending())
        return tell(Gtk::MESSAGE_INFO, translated("A fax job is being sent."));
    if (question_.comesFirst())
        return;
    openDocument(path);
    if (uris.size() > 1)
        tell(Gtk::MESSAGE_INFO, translated("Only the first of the documents was opened."));
}

void MainWindow::tellAside(Gtk::MessageType type, const std::string& line)
{
    if (!messages_.get_visible())
        tell(type, line);
}

// --- The fax -----------------------------------------------------------------------------------------

void MainWindow::faxSetup()
{
    dialogs_->act([this] { driver_.actions().call(dialogOpener); });
}

// --- Help and end ------------------------------------------------------------------------------------

void MainWindow::showHelp(const std::string& topic, const std::vector<std::string>& places)
{
    if (!helpWindow_)
        helpWindow_ = std::make_unique<HelpWindow>(*this, driver_.home() + "/help");
    helpWindow_->showTopic(topic, places);
}

void MainWindow::about()
{
    tell(Gtk::MESSAGE_INFO, localized("%s, with the component %s %s", options_.creator,
                                      driver_.component().displayName(), driver_.component().version()));
}

bool MainWindow::isHalfOut() const { return job_.isSending() || (outbox_ && outbox_->isHalfOut()); }

bool MainWindow::on_delete_event(GdkEventAny*)
{
    mayStop_ = false;
    if (isHalfOut())
        askToStop();
    else
        leave();
    return true;
}

void MainWindow::askToStop()
{
    asksToStop_ = true;
    question_.ask({"Main Quit Question", translated("A fax job is being sent."),
                   translated("Stop sending it, and quit?"), translated("_Keep Sending"),
                   translated("_Stop and Quit")},
                  {[this] { stopAndLeave(); }, {}, [this] { asksToStop_ = false; }});
}

/// There is nothing to stop any more.
void MainWindow::withdrawStopQuestion()
{
    if (asksToStop_ && !isHalfOut()) {
        asksToStop_ = false;
        question_.withdraw();
    }
}

/// A job of the outbox goes on until the window closes: the user may stay because of those that wait.
void MainWindow::stopAndLeave()
{
    asksToStop_ = false;
    mayStop_ = true;
    job_.cancel();
    if (job_.isSending())
        leaves_ = true; // it may be put into the outbox at the last moment
    else
        leave();
}

void MainWindow::leave()
{
    asksToStop_ = false;
    if (!outbox_)
        return closeAtOnce();
    outbox_->beforeLeaving([this] {
        // The outbox may have begun to send a job meanwhile, also while the user was asked about it.
        if (isHalfOut() && !mayStop_)
            askToStop();
        else
            closeAtOnce();
    });
}

void MainWindow::closeAtOnce()
{
    job_.cancel();
    choicesFile_.keep(choices());
    if (closed_)
        closed_();
}

DesktopChoices MainWindow::choices() const
{
    DesktopChoices choices = kept_;
    choices.destination = destinationPanel_.choice();
    // Who has the default destination follows when another becomes that.
    if (choices.destination.name == options_.destination)
        choices.destination.name.clear();
    if (!is_maximized()) {
        get_size(choices.width, choices.height);
        choices.height = height_.atRest();
    }
    return choices;
}

} // namespace quelm
