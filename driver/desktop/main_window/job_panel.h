// The fax job of the main window: how it is made, looked at and sent.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_JOB_PANEL_H
#define DRIVER_DESKTOP_MAIN_WINDOW_JOB_PANEL_H

#include "driver/core/driver.h"
#include "driver/desktop/main_window/main_question.h"
#include "driver/desktop/pages/page_preview.h"
#include "driver/desktop/sending/destination_panel.h"
#include "driver/desktop/sending/document_loading.h"
#include "driver/desktop/sending/job_sending.h"
#include "driver/desktop/toolkit/message_bar.h"
#include "driver/handover/handover.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/progressbar.h>
#include <gtkmm/window.h>

#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

class DialogWindows;

/// What jobs are made of, and what hears of them. All of it outlives the panel.
struct JobSurroundings {
    Gtk::Window& window; ///< previews stand above it
    Driver& driver;
    DestinationPanel& destination;
    MessageBar& messages;
    MainQuestion& question;
    std::string creator;            ///< the program, as jobs name it
    OutboxSettings outbox = {};     ///< the user's; without a folder there is none
    std::function<void()> prepared; ///< called when everything is there to send a job, before it is made
    std::function<void()> changed;  ///< called when sending has begun or ended
};

/// Makes fax jobs of the document and the driver's fax, shows what they look like, and sends them. What comes
/// of it stands in the messages. The panel itself is the progress of a job that is being sent and a button
/// that cancels it; it is hidden at other times.
///
/// A job that must not go out is neither shown nor sent, and the message says why. What the user should know
/// of a job that is sent stands in the message beside how that ends; about texts that the cover sheet has no
/// room for there is a question first, and one about numbers that stand twice, unless the preference about
/// duplicates is off. While kept options could not be taken over and nobody confirmed the fax dialog, that is
/// asked about, too.
///
/// The fixed names of its controls are "Main Progress" and "Main Cancel Button", those of its questions "Main
/// Options Question", "Main Cover Sheet Question", "Main Duplicates Question" and "Main Replace Question";
/// its button is the action "win.cancel".
class JobPanel : public Gtk::Box {
public:
    explicit JobPanel(JobSurroundings around);
    /// Cancels a job that is being sent, and waits for that.
    ~JobPanel() override;

    /// Brings in the component's dialogs, whose turns jobs are made in. Called before `preview` and `send`.
    void connectDialogs(DialogWindows& dialogs) { dialogs_ = &dialogs; }

    /// Jobs are of this document from now on, but for one that is being sent; null: there is none.
    void setDocument(std::shared_ptr<const LoadedDocument> document) { document_ = std::move(document); }
    bool hasDocument() const { return document_ != nullptr; }

    /// Takes note of how many recipients the fax has: a message that asks for one goes with the first.
    void noteRecipients(std::size_t count);

    /// Shows the pages of the job.
    void preview();

    /// Sends the job to the chosen destination, behind a question when numbers stand twice, and when that
    /// replaces a file. A chosen time is the one that it is now; one that passes meanwhile means at once.
    void send();

    /// Asks for the end of a sending, whose end is told as usual.
    void cancel() { sending_.cancel(); }

    bool isSending() const { return sending_.running(); }

private:
    /// What is to be sent, and where; the warnings are those that the user was not asked about.
    struct Sending {
        DestinationChoice destination;
        std::shared_ptr<const LoadedDocument> document;
        std::optional<std::time_t> sendAt; ///< as it was when the user pressed the button; nothing: at once
        std::vector<std::string> warnings;
        std::vector<std::string> remarks;
        unsigned long recipients = 0;
    };

    [[nodiscard]] bool isFilled();
    [[nodiscard]] std::optional<Handover> readyToWrite();
    [[nodiscard]] JobOrder orderFor(const Sending& sending);
    void ask(const MainQuestionTexts& texts, std::function<void()> answeredYes);
    void askAboutOptions(const std::vector<std::string>& unknown, const Sending& sending);
    void sendWhenReady(Sending sending);
    void askAboutCutTexts(const Handover& handover, const Sending& sending);
    void sendUnlessDuplicates(const Handover& handover, Sending sending);
    void askAboutDuplicates(const Handover& handover, Sending sending);
    void sendTo(const Sending& sending);
    void startSending(Sending sending);
    void sendingEnded(const Sending& sending, const SendingEnd& end);
    void tellSubmitted(const Sending& sending, const SendingEnd& end);
    void tellWarnings(const std::vector<std::string>& warnings);
    bool showProgress();

    const JobSurroundings around_;
    DialogWindows* dialogs_ = nullptr;
    std::shared_ptr<const LoadedDocument> document_;
    bool waitsForRecipient_ = false; ///< the message asks for one
    Gtk::ProgressBar progress_;
    Gtk::Button cancel_;
    JobSending sending_;
    sigc::connection progressTimer_;
    std::unique_ptr<PagePreview> previewWindow_;
};

} // namespace quelm

#endif
