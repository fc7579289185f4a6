// The main window's way from a fax to a job that is looked at or sent.
#include "driver/desktop/main_window/main_window.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/widgets/widget_names.h"

#include <glibmm/convert.h>
#include <glibmm/main.h>
#include <glibmm/miscutils.h>

#include <filesystem>
#include <utility>

namespace quelm {
namespace {

constexpr unsigned progressInterval = 100; // milliseconds

bool isOrdinaryFile(const std::string& path)
{
    std::error_code failure;
    return std::filesystem::is_regular_file(path, failure);
}

} // namespace

DestinationChoice MainWindow::destination() const
{
    DestinationChoice choice = destinationPanel_.choice();
    choice.file = absolutePath(choice.file, Glib::get_home_dir(), Glib::get_current_dir());
    return choice;
}

/// Whether the component can write the job now. It shows its dialog when the job has no recipient.
bool MainWindow::readyToWrite()
{
    messages_.clear();
    waitsForRecipient_ = false;
    if (!driver_.windows().empty()) {
        tell(Gtk::MESSAGE_INFO, translated("Close the fax dialogs first."));
        return false;
    }
    auto& session = driver_.faxSession();
    session.setPdl(destinationPanel_.pdl());
    if (!session.checkInfo()) {
        tell(Gtk::MESSAGE_INFO, translated("Add a recipient first."));
        waitsForRecipient_ = true;
        return false;
    }
    return true;
}

JobOrder MainWindow::orderFor(const DestinationChoice& destination,
                              const std::shared_ptr<const LoadedDocument>& document)
{
    JobOrder order;
    order.document = document;
    order.job = recordJobApart(driver_.faxSession());
    order.job.recipients = driver_.show(widget_names::lanFaxRecipientList).rowCount.value_or(0);
    order.pdl = destinationPanel_.pdl();
    order.facts.creator = options_.creator;
    order.facts.now = localTime();
    order.open = [destination, user = driver_.user()](const Document& opened) {
        return openDestination(targetOf(destination), opened, user);
    };
    return order;
}

void MainWindow::preview()
{
    dialogs_->act([this] {
        if (!document_ || sending_.running() || !readyToWrite())
            return;
        if (!previewWindow_)
            previewWindow_ = std::make_unique<PagePreview>(*this);
        previewWindow_->showJob(orderFor({}, document_));
    });
}

void MainWindow::send()
{
    dialogs_->act([this] {
        if (!document_ || sending_.running() || !readyToWrite())
            return;
        const auto chosen = destination();
        const std::string trouble = troubleWith(chosen);
        if (!trouble.empty()) {
            tell(Gtk::MESSAGE_ERROR, trouble);
            destinationPanel_.focusField();
            return;
        }
        sendTo(chosen);
    });
}

void MainWindow::sendTo(const DestinationChoice& chosen)
{
    // That the file is the document itself is told when it is opened.
    const bool replaces = chosen.kind == DestinationKind::file && isOrdinaryFile(chosen.file) &&
                          !document_->document.isSameFile(chosen.file);
    if (!replaces)
        return startSending(chosen, document_);
    const std::string name = Glib::filename_display_basename(chosen.file);
    ask({"Main Replace Question", localized("There is a file %s already.", oneLine(name)),
         translated("Replace it by the fax job? What it holds is lost then."), translated("_Cancel"),
         translated("_Replace")},
        [this, chosen, document = document_] {
            dialogs_->act([this, chosen, document] { startSending(chosen, document); });
        });
}

void MainWindow::startSending(const DestinationChoice& chosen,
                              const std::shared_ptr<const LoadedDocument>& document)
{
    if (!document || sending_.running())
        return;
    choicesFile_.keep(choices());
    auto order = orderFor(chosen, document);
    const auto recipients = order.job.recipients;
    const auto ended = [this, kind = chosen.kind, name = document->document.name(),
                        recipients](const SendingEnd& end) { sendingEnded(kind, name, recipients, end); };
    sending_.start(std::move(order), ended);
    progress_.set_fraction(0);
    showProgress();
    progressBox_.show();
    progressTimer_ = Glib::signal_timeout().connect([this] { return showProgress(); }, progressInterval);
    updateActions();
    cancel_.grab_focus();
}

bool MainWindow::showProgress()
{
    const auto now = sending_.progress();
    progress_.set_text(now.stage == SendingProgress::Stage::writing ? translated("Writing the job...")
                                                                    : translated("Handing the job over..."));
    if (now.total == 0)
        progress_.pulse();
    else
        progress_.set_fraction(static_cast<double>(now.done) / static_cast<double>(now.total));
    return true;
}

void MainWindow::sendingEnded(DestinationKind kind, const std::string& document, unsigned long recipients,
                              const SendingEnd& end)
{
    progressTimer_.disconnect();
    progressBox_.hide();
    updateActions();
    send_.grab_focus();
    if (question_)
        question_->hide();
    switch (end.kind) {
    case SendingEnd::Kind::handedOver: {
        std::string line = handedOverText(kind, end.receipt.place, document, recipients);
        if (!end.receipt.note.empty()) {
            if (line.ends_with('.'))
                line.pop_back();
            line += "; " + end.receipt.note + ".";
        }
        return tell(end.receipt.note.empty() ? Gtk::MESSAGE_INFO : Gtk::MESSAGE_WARNING, line);
    }
    case SendingEnd::Kind::cancelled:
        return tell(Gtk::MESSAGE_WARNING, end.trouble);
    case SendingEnd::Kind::failed:
        return tell(Gtk::MESSAGE_ERROR, end.trouble);
    }
}

} // namespace quelm
