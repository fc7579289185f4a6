// The main window's layout, its document, its fax and its help.
#include "driver/desktop/main_window/main_window.h"

#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "driver/core/callbacks.h"
#include "driver/core/user_actions.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/desktop/sending/queue_names.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/style.h"
#include "driver/widgets/widget_names.h"

#include <glibmm/convert.h>
#include <gtkmm/filefilter.h>
#include <gtkmm/selectiondata.h>
#include <gtkmm/sizegroup.h>

#include <filesystem>
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
void addSection(Gtk::Box& form, const std::string& title, Gtk::Widget& fields)
{
    auto* section = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_VERTICAL, space);
    section->pack_start(*sectionTitle(title), Gtk::PACK_SHRINK);
    fields.set_margin_start(wideSpace);
    section->pack_start(fields, Gtk::PACK_SHRINK);
    form.pack_start(*section, Gtk::PACK_SHRINK);
}

/// The path that a URI names; empty when it names no file, or one of another computer.
std::string fileOfThisComputer(const Glib::ustring& uri)
{
    gchar* host = nullptr;
    gchar* path = g_filename_from_uri(uri.c_str(), &host, nullptr);
    const std::unique_ptr<gchar, void (*)(gpointer)> ownedHost(host, g_free);
    const std::unique_ptr<gchar, void (*)(gpointer)> ownedPath(path, g_free);
    const bool here = host == nullptr || g_ascii_strcasecmp(host, "localhost") == 0 ||
                      g_ascii_strcasecmp(host, g_get_host_name()) == 0;
    return path != nullptr && here ? path : std::string();
}

Glib::RefPtr<Gio::Menu> submenu(const std::vector<std::pair<std::string, const char*>>& items)
{
    auto menu = Gio::Menu::create();
    for (const auto& [text, action] : items)
        menu->append(text, action);
    return menu;
}

} // namespace

std::string faxSummary(std::size_t recipients, bool coverPage)
{
    if (recipients == 0)
        return translated("No recipients yet");
    return coverPage ? localizedCount("%d recipient, with a cover page", "%d recipients, with a cover page",
                                      recipients, recipients)
                     : localizedCount("%d recipient, without a cover page",
                                      "%d recipients, without a cover page", recipients, recipients);
}

MainWindow::MainWindow(Driver& driver, const MainWindowOptions& options)
    : driver_(driver), options_(options), choicesFile_(options.choicesFile), kept_(choicesFile_.load()),
      open_(translated("_Open..."), true), faxSetup_(translated("Fax Set_up..."), true),
      destinationPanel_(&queueNames), cancel_(translated("_Cancel"), true), help_(translated("H_elp"), true),
      preview_(translated("Pre_view Job"), true), send_(translated("_Send"), true),
      loading_([this](const LoadingResult& result) { documentLoaded(result); })
{
    useDriverStyle();
    set_title(translated("Quelm Driver"));
    layOut();
    describeControls();
    addActions();
    destinationPanel_.setChoice(kept_.destination);
    destinationPanel_.setPdl(kept_.pdl.value_or(options_.pdl));
    destinationPanel_.signalPdlChosen().connect([this] { kept_.pdl = destinationPanel_.pdl(); });
    if (kept_.width > 0 && kept_.height > 0)
        set_default_size(kept_.width, kept_.height);
    drag_dest_set({Gtk::TargetEntry("text/uri-list")}, Gtk::DEST_DEFAULT_ALL, Gdk::ACTION_COPY);
    messages_.signal_hide().connect([this] { giveHeightBack(); });
    progressBox_.signal_hide().connect([this] { giveHeightBack(); });
    showFax();
    updateActions();
}

MainWindow::~MainWindow() { progressTimer_.disconnect(); }

void MainWindow::layOut()
{
    documentPanel_.set_hexpand();
    auto* documentFields = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, space);
    documentFields->pack_start(documentPanel_.facts(), Gtk::PACK_EXPAND_WIDGET);
    documentFields->pack_end(open_, Gtk::PACK_SHRINK);
    open_.set_valign(Gtk::ALIGN_START);
    auto* faxFields = Gtk::make_managed<Gtk::Box>(Gtk::ORIENTATION_HORIZONTAL, space);
    faxSummary_.set_xalign(0);
    faxSummary_.set_line_wrap();
    faxFields->pack_start(faxSummary_, Gtk::PACK_EXPAND_WIDGET);
    faxFields->pack_end(faxSetup_, Gtk::PACK_SHRINK);

    form_.set_spacing(wideSpace);
    form_.set_size_request(formWidth, -1);
    addSection(form_, translated("Document"), *documentFields);
    addSection(form_, translated("Fax"), *faxFields);
    addSection(form_, translated("Destination"), destinationPanel_);

    columns_.set_spacing(wideSpace);
    columns_.set_border_width(wideSpace);
    columns_.pack_start(documentPanel_, Gtk::PACK_EXPAND_WIDGET);
    columns_.pack_start(form_, Gtk::PACK_EXPAND_WIDGET);

    progress_.set_show_text();
    progress_.set_valign(Gtk::ALIGN_CENTER);
    progressBox_.set_spacing(space);
    progressBox_.pack_start(progress_, Gtk::PACK_EXPAND_WIDGET);
    progressBox_.pack_start(cancel_, Gtk::PACK_SHRINK);
    progressBox_.set_margin_start(wideSpace);
    progressBox_.set_margin_end(wideSpace);

    bar_.set_spacing(space);
    bar_.set_border_width(wideSpace);
    bar_.set_margin_top(0);
    bar_.pack_start(help_, Gtk::PACK_SHRINK);
    bar_.pack_end(send_, Gtk::PACK_SHRINK);
    bar_.pack_end(preview_, Gtk::PACK_SHRINK);
    const auto sameWidth = Gtk::SizeGroup::create(Gtk::SIZE_GROUP_HORIZONTAL);
    for (auto* button : {&open_, &faxSetup_, &destinationPanel_.chooseButton(), &help_, &preview_, &send_})
        sameWidth->add_widget(*button);

    box_.pack_start(messages_, Gtk::PACK_SHRINK);
    box_.pack_start(columns_, Gtk::PACK_EXPAND_WIDGET);
    box_.pack_start(progressBox_, Gtk::PACK_SHRINK);
    box_.pack_start(bar_, Gtk::PACK_SHRINK);
    add(box_);
    box_.show_all();
    progressBox_.hide();
    send_.set_can_default();
    set_default(send_);
    send_.get_style_context()->add_class("suggested-action");
}

void MainWindow::describeControls()
{
    describe(*this, "Main Driver Window");
    describe(open_, "Main Open Button");
    describe(faxSummary_, "Main Fax Summary");
    describe(faxSetup_, "Main Fax Setup Button");
    describe(progress_, "Main Progress", translated("Progress"));
    describe(cancel_, "Main Cancel Button");
    describe(help_, "Main Help Button");
    describe(preview_, "Main Preview Button");
    describe(send_, "Main Send Button");
}

void MainWindow::addActions()
{
    add_action("open", [this] { chooseDocument(); });
    add_action("fax-setup", [this] { faxSetup(); });
    add_action("preview", [this] { preview(); });
    add_action("send", [this] { send(); });
    add_action("cancel", [this] { sending_.cancel(); });
    add_action("help", [this] { showHelp(driverTopic, {}); });
    add_action("about", [this] { about(); });
    add_action("quit", [this] { close(); });
    const std::vector<std::pair<Gtk::Button*, const char*>> buttons = {
        {&open_, "win.open"}, {&faxSetup_, "win.fax-setup"}, {&preview_, "win.preview"},
        {&send_, "win.send"}, {&cancel_, "win.cancel"},      {&help_, "win.help"},
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
    dialogs.setSettled([this] { showFax(); });
    dialogs.setTrouble([this](const std::string& message) { tell(Gtk::MESSAGE_ERROR, message); });
}

void MainWindow::showFax()
{
    const auto recipients = driver_.show(recipientList).rowCount.value_or(0);
    if (waitsForRecipient_ && recipients > 0) {
        waitsForRecipient_ = false;
        messages_.clear();
    }
    faxSummary_.set_text(quelm::faxSummary(recipients, driver_.faxSession().coverPageChosen()));
}

void MainWindow::updateActions()
{
    const bool free = !sending_.running();
    const auto enable = [this](const char* action, bool enabled) {
        Glib::RefPtr<Gio::SimpleAction>::cast_dynamic(lookup_action(action))->set_enabled(enabled);
    };
    enable("open", free);
    enable("fax-setup", free);
    enable("preview", free && document_);
    enable("send", free && document_);
    enable("cancel", !free);
    destinationPanel_.set_sensitive(free);
}

// --- The document ------------------------------------------------------------------------------------

void MainWindow::chooseDocument()
{
    chooser_ = std::make_unique<Gtk::FileChooserDialog>(*this, translated("Open a Document"));
    chooser_->add_button(translated("_Cancel"), Gtk::RESPONSE_CANCEL);
    chooser_->add_button(translated("_Open"), Gtk::RESPONSE_ACCEPT);
    chooser_->set_default_response(Gtk::RESPONSE_ACCEPT);
    chooser_->set_modal();
    describe(*chooser_, "Main Document Chooser");
    const auto documents = Gtk::FileFilter::create();
    documents->set_name(translated("Documents (PostScript, PDF)"));
    for (const auto* pattern : {"*.ps", "*.eps", "*.pdf", "*.prn", "*.PS", "*.EPS", "*.PDF", "*.PRN"})
        documents->add_pattern(pattern);
    chooser_->add_filter(documents);
    const auto everything = Gtk::FileFilter::create();
    everything->set_name(translated("All files"));
    everything->add_pattern("*");
    chooser_->add_filter(everything);
    std::error_code failure;
    if (std::filesystem::is_directory(kept_.documentFolder, failure))
        chooser_->set_current_folder(kept_.documentFolder);
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
    document_.reset();
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
    document_ = result.document;
    if (document_) {
        documentPanel_.showDocument(document_);
        std::string warnings;
        for (const auto& warning : document_->document.warnings())
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
    const std::string path = uris.empty() ? std::string() : fileOfThisComputer(uris.front());
    if (path.empty())
        return tell(Gtk::MESSAGE_ERROR, translated("What was dropped here is no file of this computer."));
    if (sending_.running())
        return tell(Gtk::MESSAGE_INFO, translated("A fax job is being sent."));
    if (isAsking()) {
        waitsForAnswer_ = true;
        return tell(Gtk::MESSAGE_INFO, translated("Answer the question first."));
    }
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

void MainWindow::ask(const Question& question, std::function<void()> answeredYes)
{
    question_ = std::make_unique<Gtk::MessageDialog>(*this, question.text, false, Gtk::MESSAGE_QUESTION,
                                                     Gtk::BUTTONS_NONE, true);
    question_->set_title(get_title());
    question_->set_secondary_text(question.details);
    describe(*question_, question.fixedName);
    describe(*question_->add_button(question.no, Gtk::RESPONSE_CANCEL), question.fixedName + " No");
    describe(*question_->add_button(question.yes, Gtk::RESPONSE_YES), question.fixedName + " Yes");
    question_->set_default_response(Gtk::RESPONSE_CANCEL);
    question_->signal_response().connect([this, answeredYes = std::move(answeredYes)](int response) {
        question_->hide();
        if (std::exchange(waitsForAnswer_, false))
            messages_.clear();
        if (response == Gtk::RESPONSE_YES)
            answeredYes();
    });
    question_->present();
}

bool MainWindow::on_delete_event(GdkEventAny*)
{
    if (sending_.running())
        ask({"Main Quit Question", translated("A fax job is being sent."),
             translated("Stop sending it, and quit?"), translated("_Keep Sending"),
             translated("_Stop and Quit")},
            [this] { closeAtOnce(); });
    else
        closeAtOnce();
    return true;
}

void MainWindow::closeAtOnce()
{
    sending_.cancel();
    choicesFile_.keep(choices());
    if (closed_)
        closed_();
}

} // namespace quelm
