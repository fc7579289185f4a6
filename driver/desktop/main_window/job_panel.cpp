// The way from a fax to a job that is looked at or sent.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/job_panel.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/desktop/dialogs/dialog_windows.h"
#include "driver/desktop/sending/outbox_texts.h"
#include "driver/desktop/toolkit/accessible.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/handover/held_options.h"
#include "driver/handover/send_time.h"
#include "driver/handover/warnings.h"
#include "driver/widgets/widget_names.h"

#include <glibmm/convert.h>
#include <glibmm/main.h>

#include <filesystem>
#include <utility>

namespace quelm {
namespace {

constexpr int space = 8;
constexpr unsigned progressInterval = 100; // milliseconds

bool isOrdinaryFile(const std::string& path)
{
    std::error_code failure;
    return std::filesystem::is_regular_file(path, failure);
}

constexpr std::size_t mostWarnings = 5;

/// The sentences as the details of a question.
std::string inLines(const std::vector<std::string>& sentences)
{
    std::string lines;
    for (const auto& sentence : bounded(sentences, mostWarnings))
        lines += (lines.empty() ? "" : "\n") + shownMessage(sentence);
    return lines;
}

} // namespace

JobPanel::JobPanel(JobSurroundings around)
    : Gtk::Box(Gtk::ORIENTATION_HORIZONTAL, space), around_(std::move(around)),
      cancel_(translated("_Cancel"), true)
{
    progress_.set_show_text();
    progress_.set_valign(Gtk::ALIGN_CENTER);
    pack_start(progress_, Gtk::PACK_EXPAND_WIDGET);
    pack_start(cancel_, Gtk::PACK_SHRINK);
    describe(progress_, "Main Progress", translated("Progress"));
    describe(cancel_, "Main Cancel Button");
    gtk_actionable_set_action_name(GTK_ACTIONABLE(cancel_.gobj()), "win.cancel");
    show_all_children();
    set_no_show_all();
}

JobPanel::~JobPanel() { progressTimer_.disconnect(); }

void JobPanel::noteRecipients(std::size_t count)
{
    if (waitsForRecipient_ && count > 0) {
        waitsForRecipient_ = false;
        around_.messages.clear();
    }
}

/// Whether the fax is there and has a recipient. The component shows its dialog when it has none.
bool JobPanel::isFilled()
{
    around_.messages.clear();
    waitsForRecipient_ = false;
    if (!around_.driver.windows().empty()) {
        around_.messages.tell(Gtk::MESSAGE_INFO, translated("Close the fax dialogs first."));
        return false;
    }
    auto& session = around_.driver.faxSession();
    session.setPdl(around_.destination.pdl());
    if (!session.checkInfo()) {
        around_.messages.tell(Gtk::MESSAGE_INFO, translated("Add a recipient first."));
        waitsForRecipient_ = true;
        return false;
    }
    return true;
}

/// What was found about the job, when the component can write it now and it can go out.
std::optional<Handover> JobPanel::readyToWrite()
{
    if (!isFilled())
        return std::nullopt;
    try {
        return prepareHandover(around_.driver);
    } catch (const Error& error) {
        around_.messages.tell(Gtk::MESSAGE_ERROR, error.what());
        return std::nullopt;
    }
}

JobOrder JobPanel::orderFor(const Sending& sending)
{
    JobOrder order;
    order.document = sending.document;
    auto& submission = order.submission;
    submission.target = targetOf(sending.destination);
    submission.user = around_.driver.user();
    submission.pdl = around_.destination.pdl();
    submission.options = heldOptions(around_.driver);
    auto& session = around_.driver.faxSession();
    session.setPdl(submission.pdl);
    order.job = recordJob(session);
    order.facts.creator = around_.creator;
    order.now = currentTime();
    order.facts.now = localTime();
    if (sending.sendAt && *sending.sendAt > order.now)
        submission.sendAt = sending.sendAt;
    order.outbox = around_.outbox;
    return order;
}

void JobPanel::preview()
{
    dialogs_->act([this] {
        if (!document_ || sending_.running())
            return;
        const auto handover = readyToWrite();
        if (!handover)
            return;
        tellWarnings(handover->cutTexts);
        if (!previewWindow_)
            previewWindow_ = std::make_unique<PagePreview>(around_.window);
        previewWindow_->showJob(orderFor({{}, document_, {}, {}, {}, 0}));
    });
}

void JobPanel::send()
{
    dialogs_->act([this, pressed = currentTime()] {
        if (!document_ || sending_.running() || !isFilled())
            return;
        const Sending sending{{}, document_, chosenMoment(around_.driver, pressed), {}, {}, 0};
        const auto unknown = around_.driver.unknownOptions();
        if (unknown.empty() || around_.driver.choicesConfirmed())
            sendWhenReady(sending);
        else
            askAboutOptions(unknown, sending);
    });
}

void JobPanel::ask(const MainQuestionTexts& texts, std::function<void()> answeredYes)
{
    around_.question.ask(texts, [this, answeredYes = std::move(answeredYes)] { dialogs_->act(answeredYes); });
}

/// Ahead of the taking over: without a yes nothing happens.
void JobPanel::askAboutOptions(const std::vector<std::string>& unknown, const Sending& sending)
{
    ask({"Main Options Question", translated("Send the fax with what the fax dialog shows now?"),
         inLines(unknown), translated("_Cancel"), translated("_Send Anyway")},
        [this, sending] { sendWhenReady(sending); });
}

void JobPanel::sendWhenReady(Sending sending)
{
    const auto handover = readyToWrite();
    if (!handover)
        return;
    sending.destination = around_.destination.absoluteChoice();
    const std::string trouble = troubleWith(sending.destination);
    if (!trouble.empty()) {
        around_.messages.tell(Gtk::MESSAGE_ERROR, trouble);
        around_.destination.focusField();
        return;
    }
    if (handover->cutTexts.empty())
        sendUnlessDuplicates(*handover, sending);
    else
        askAboutCutTexts(*handover, sending);
}

void JobPanel::askAboutCutTexts(const Handover& handover, const Sending& sending)
{
    Handover unasked = handover;
    unasked.cutTexts.clear();
    ask({"Main Cover Sheet Question", translated("Send the fax although its cover sheet is cut off?"),
         inLines(handover.cutTexts), translated("_Cancel"), translated("_Send Anyway")},
        [this, unasked, sending] { sendUnlessDuplicates(unasked, sending); });
}

void JobPanel::sendUnlessDuplicates(const Handover& handover, Sending sending)
{
    const bool asks = around_.driver.show(widget_names::lanFaxPrefDuplicates).ticked.value_or(false);
    if (asks && !handover.shared.empty())
        return askAboutDuplicates(handover, std::move(sending));
    sending.warnings = handover.allWarnings();
    sendTo(sending);
}

void JobPanel::askAboutDuplicates(const Handover& handover, Sending sending)
{
    sending.warnings = handover.warnings;
    ask({"Main Duplicates Question", translated("Send the fax twice to the same number?"),
         inLines(handover.sharedWarnings), translated("_Cancel"), translated("_Send Anyway")},
        [this, sending = std::move(sending)] { sendTo(sending); });
}

void JobPanel::sendTo(const Sending& sending)
{
    const auto& chosen = sending.destination;
    // That the file is the document itself is told when it is opened.
    const bool replaces = chosen.kind == DestinationKind::file && isOrdinaryFile(chosen.file) &&
                          !sending.document->document.isSameFile(chosen.file);
    if (!replaces)
        return startSending(sending);
    const std::string name = Glib::filename_display_basename(chosen.file);
    ask({"Main Replace Question", localized("There is a file %s already.", oneLine(name)),
         translated("Replace it by the fax job? What it holds is lost then."), translated("_Cancel"),
         translated("_Replace")},
        [this, sending] { startSending(sending); });
}

void JobPanel::startSending(Sending sending)
{
    if (!sending.document || sending_.running())
        return;
    around_.prepared();
    // The fax may have changed while a question was open.
    sending.remarks = prepareHandover(around_.driver).remarks;
    auto order = orderFor(sending);
    sending.recipients = order.job.recipients.size();
    around_.messages.clear();
    tellWarnings(sending.warnings);
    sending_.start(std::move(order), [this, sending](const SendingEnd& end) { sendingEnded(sending, end); });
    progress_.set_fraction(0);
    showProgress();
    show();
    progressTimer_ = Glib::signal_timeout().connect([this] { return showProgress(); }, progressInterval);
    around_.changed();
    cancel_.grab_focus();
}

void JobPanel::tellWarnings(const std::vector<std::string>& warnings)
{
    for (const auto& line : bounded(warnings, mostWarnings))
        around_.messages.tellBeside(Gtk::MESSAGE_WARNING, line);
}

bool JobPanel::showProgress()
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

void JobPanel::sendingEnded(const Sending& sending, const SendingEnd& end)
{
    progressTimer_.disconnect();
    hide();
    around_.changed();
    switch (end.kind) {
    case SendingEnd::Kind::submitted:
        return tellSubmitted(sending, end);
    case SendingEnd::Kind::cancelled:
        return around_.messages.tell(Gtk::MESSAGE_WARNING, end.trouble);
    case SendingEnd::Kind::failed:
        return around_.messages.tell(Gtk::MESSAGE_ERROR, end.trouble);
    }
}

void JobPanel::tellSubmitted(const Sending& sending, const SendingEnd& end)
{
    const auto& document = sending.document->document.name();
    const auto& result = end.result;
    const bool goesOutLater = result.kind != SubmissionEnd::Kind::handedOver;
    std::string line =
        goesOutLater
            ? submittedText(result, end.sender, document, sending.recipients, currentTime())
            : handedOverText(sending.destination.kind, result.receipt.place, document, sending.recipients);
    std::vector<std::string> additions = sending.remarks;
    if (!result.receipt.note.empty())
        additions.insert(additions.begin(), result.receipt.note);
    const bool warns = !result.receipt.note.empty() || !result.reason.empty() || end.isUnattended;
    around_.messages.tell(warns ? Gtk::MESSAGE_WARNING : Gtk::MESSAGE_INFO, withAdditions(line, additions));
    tellWarnings(sending.warnings);
}

} // namespace quelm
