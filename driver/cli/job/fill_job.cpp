// The user actions behind the options of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/fill_job.h"

#include "base/error.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/job/directory_recipients.h"
#include "driver/cli/job/pick_recipients.h"
#include "driver/cli/job/recipients_csv.h"
#include "driver/core/driver.h"
#include "driver/core/user_actions.h"
#include "driver/handover/duplicates.h"
#include "driver/handover/recipient_check.h"
#include "driver/handover/recipient_watch.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

namespace quelm {
namespace {

constexpr const char* coverWindow = widget_names::coverSheetSetupWindow;
constexpr const char* senderWindow = widget_names::senderInformationWindow;
constexpr const char* recipientWindow = widget_names::lanFaxAddRecipientWindow;
constexpr const char* recipientErrorWindow = widget_names::lanFaxAddRecipientErrorWindow;

/// The line that a label shows: its line breaks are blanks here.
std::string labelText(const Driver& driver, const char* label)
{
    std::string text = driver.show(label).text.value_or("");
    const std::string_view lineBreak = "&#10;";
    for (auto at = text.find(lineBreak); at != std::string::npos; at = text.find(lineBreak, at))
        text.replace(at, lineBreak.size(), " ");
    std::ranges::replace(text, '\n', ' ');
    return oneLine(text);
}

/// One job being filled.
class JobFiller {
public:
    JobFiller(Driver& driver, const JobOptions& options, const QuestionPolicy& policy)
        : driver_(driver), options_(options), policy_(policy), watch_(driver)
    {
    }

    void fill(const std::vector<RecipientInput>& recipients)
    {
        driver_.call("T40InvokeFaxDialog");
        setPreferences();
        setSending();
        setDialing();
        setCover();
        addRecipients(recipients);
        pickRecipients(driver_, options_, policy_, watch_);
        addDirectoryRecipients(driver_, options_, watch_);
        settleSharedNumbers();
        driver_.press(widget_names::lanFaxOkButton);
        if (driver_.failedCallbacks() != 0)
            throw Error(localized("the component failed while the job was put together; nothing is written"));
    }

private:
    void setPreferences()
    {
        // A user who chose not to be asked gets duplicates without a question: to ask, or to skip,
        // the question must come.
        if (options_.duplicates && *options_.duplicates != Duplicates::add)
            tick("--duplicates", widget_names::lanFaxPrefDuplicates, true);
    }

    void setSending()
    {
        if (options_.confirmation)
            choose("--no-confirmation", widget_names::lanFaxConfSheet, *options_.confirmation ? 0 : 1);
        if (options_.resolution)
            choose("--resolution", widget_names::lanFaxResolution, *options_.resolution);
        if (options_.speed)
            choose("--speed", widget_names::lanFaxSendSpeed, *options_.speed);
        if (options_.sendNow)
            choose("--send-now", widget_names::lanFaxSendTime, 0);
        if (!options_.sendAt)
            return;
        const auto [hour, minute] = *options_.sendAt;
        choose("--send-at", widget_names::lanFaxSendTime, 1);
        choose("--send-at", widget_names::sendAtHr, hour % 12 == 0 ? 12 : hour % 12);
        choose("--send-at", widget_names::sendAtMin, minute);
        choose("--send-at", widget_names::sendAtAmPm, hour < 12 ? 0 : 1);
    }

    void setDialing()
    {
        if (options_.prefix) {
            tick("--prefix", widget_names::lanFaxDialingPrefix, true);
            type("--prefix", widget_names::lanFaxDialingPrefixInfo, *options_.prefix);
        }
        setCreditCard();
    }

    void setCreditCard()
    {
        if (options_.creditCard) {
            const std::string origin = options_.creditCardFile ? "--credit-card-file" : "--credit-card";
            tick(origin, widget_names::lanFaxCreditCard, true);
            type(origin, widget_names::lanFaxCreditCardInfo, *options_.creditCard);
        } else if (!options_.keptCreditCard) {
            // A card that the dialog keeps from an earlier job is charged for this one only when it asks for
            // that.
            tick("--credit-card", widget_names::lanFaxCreditCard, false);
            driver_.settleOption(widget_names::lanFaxCreditCardInfo);
        } else if (!driver_.show(widget_names::lanFaxCreditCard).ticked.value_or(false) ||
                   driver_.show(widget_names::lanFaxCreditCardInfo).text.value_or("").empty()) {
            throw Error(
                localized("--kept-credit-card: the fax dialog keeps no credit card; give the number with "
                          "--credit-card-file"));
        }
    }

    void setCover()
    {
        if (options_.cover)
            choose("--cover", widget_names::lanFaxCoverSheetOption, *options_.cover ? 1 : 0);
        const bool chosen = driver_.show(widget_names::lanFaxCoverSheetOption).value == 1;
        if (options_.coverPreview)
            require(chosen, "--cover-preview", "--cover");
        if (options_.note) {
            require(chosen, "--note", "--cover");
            type("--note", widget_names::lanFaxCoverSheetNotes, *options_.note);
        }
        if (const auto option = coverSetupOption(); option && !chosen)
            throw UsageError(localized("%s needs a cover sheet; add --cover", *option));
        // Also without such an option: only the set-up's OK takes the user's saved choices over.
        if (chosen)
            setUpCover();
    }

    /// The first given option that the cover sheet's set-up window carries out.
    std::optional<std::string> coverSetupOption() const
    {
        if (options_.showRecipients)
            return *options_.showRecipients ? "--show-recipients" : "--hide-recipients";
        if (options_.customText)
            return "--custom-text";
        if (options_.showSender)
            return *options_.showSender ? "--show-sender" : "--hide-sender";
        return senderOption();
    }

    std::optional<std::string> senderOption() const
    {
        for (const auto& field : senderFields)
            if (options_.*field.text)
                return field.option;
        return std::nullopt;
    }

    void setUpCover()
    {
        driver_.press(widget_names::lanFaxSetupCoverSheetButton);
        if (!driver_.show(coverWindow).visible) {
            if (const auto option = coverSetupOption())
                throw Error(
                    localized("%s: the component does not open its cover sheet set-up; leave the option away",
                              *option));
            return;
        }
        // The component shows several recipients a text of the user's own also where none are to be shown.
        if (options_.showRecipients == false && driver_.show(widget_names::showRcptInfo).value == 1) {
            tick("--hide-recipients", widget_names::showRcptInfoCheckbox, true);
            choose("--hide-recipients", widget_names::showRcptInfo, 0);
        }
        if (options_.showRecipients)
            tick("--show-recipients", widget_names::showRcptInfoCheckbox, *options_.showRecipients);
        const bool recipientsShown = driver_.show(widget_names::showRcptInfoCheckbox).ticked.value_or(false);
        if (options_.customText) {
            require(recipientsShown, "--custom-text", "--show-recipients");
            choose("--custom-text", widget_names::showRcptInfo, 1);
            type("--custom-text", widget_names::coverSheetCustomText, *options_.customText);
        } else if (options_.showRecipients == true) {
            choose("--show-recipients", widget_names::showRcptInfo, 0);
        }
        if (options_.showSender)
            tick("--show-sender", widget_names::showSenderInfoCheckbox, *options_.showSender);
        if (const auto option = senderOption())
            setUpSender(*option);
        driver_.press(widget_names::lanFaxCoverOkButton);
    }

    void setUpSender(const std::string& option)
    {
        require(driver_.show(widget_names::showSenderInfoCheckbox).ticked.value_or(false), option,
                "--show-sender");
        driver_.press(widget_names::senderPropertiesButton);
        if (!driver_.show(senderWindow).visible)
            throw Error(localized("%s: the component does not open its sender dialog; leave the option away",
                                  option));
        for (const auto& field : senderFields)
            if (const auto& text = options_.*field.text)
                type(field.option, field.widget, *text);
        driver_.press(widget_names::lanFaxSenderOkButton);
    }

    void addRecipients(const std::vector<RecipientInput>& recipients)
    {
        ProgressLine progress(localized("Adding recipients"));
        for (std::size_t i = 0; i < recipients.size(); ++i) {
            progress.show(i, recipients.size());
            addRecipient(recipients[i], progress);
        }
    }

    void addRecipient(const RecipientInput& recipient, ProgressLine& progress)
    {
        driver_.press(widget_names::addFaxRcpt);
        if (driver_.show(widget_names::addtoPersonalPb).ticked.value_or(false))
            driver_.tick(widget_names::addtoPersonalPb, false);
        for (const auto& field : recipientFields)
            if (const auto& text = recipient.*field.text; !text.empty())
                act(recipient.origin, recipient.isTyped, [&] { driver_.type(field.widget, text); });
        driver_.press(widget_names::lanFaxAddRcptOkButton);
        answerDuplicateQuestion(recipient, progress);
        if (driver_.show(recipientErrorWindow).visible)
            refuse(recipient,
                   recipient.origin + ": " + labelText(driver_, widget_names::lanFaxAddFaxRcptErrorLabel));
        if (driver_.show(recipientWindow).visible)
            throw Error(localized("%s: the component does not take this recipient", recipient.origin));
        // The component drops a phone number that it does not accept without a word, and empties
        // its field.
        if (!recipient.phone.empty() &&
            driver_.show(widget_names::recipientTelNumber).text.value_or("").empty())
            throw Error(
                // Translators: the recipient and its phone number.
                localized("%s: the phone number \"%s\" is not accepted; write digits, such as +1 (555) "
                          "123-4567",
                          recipient.origin, oneLine(recipient.phone)));
        try {
            watch_.require(recipient.origin);
        } catch (const Error& error) {
            refuse(recipient, error.what());
        }
    }

    /// What was typed on the command line is used wrongly; what a file holds fails the job.
    [[noreturn]] static void refuse(const RecipientInput& recipient, const std::string& line)
    {
        if (recipient.isTyped)
            throw UsageError(line);
        throw Error(line);
    }

    /// Asks about recipients of one number, or leaves the later one out, as --duplicates says. Without it the
    /// job has both, and a warning says so.
    void settleSharedNumbers()
    {
        if (!options_.duplicates || *options_.duplicates == Duplicates::add)
            return;
        const auto recipients = driver_.faxSession().recipients();
        std::vector<std::size_t> leftOut;
        for (const auto& [first, later] : sharedNumbers(recipients)) {
            // Translators: %s is a sentence about two recipients of one number.
            const auto question = localized("%s.\nSend the fax to both?",
                                            sharedNumberWarning(recipients[first], recipients[later]));
            if (!policy_.addDuplicate(question, shownRecipient(recipients[later])))
                leftOut.push_back(later);
        }
        removeRecipients(driver_, leftOut);
    }

    void answerDuplicateQuestion(const RecipientInput& recipient, ProgressLine& progress)
    {
        const auto question = driver_.pendingQuestion();
        if (!question)
            return;
        progress.wipe();
        const bool add = !holdsRecipient(driver_.faxSession(), recipient.name, recipient.number) ||
                         policy_.addDuplicate(question->text, recipient.origin);
        driver_.answer(add);
        if (!add)
            driver_.press(widget_names::lanFaxAddRcptCancelButton);
    }

    static void require(bool given, const std::string& option, const std::string& needed)
    {
        if (!given)
            // Translators: two options, such as --note and --cover.
            throw UsageError(localized("%s needs %s", option, needed));
    }

    /// Runs a user action; `origin` says in the error line whose text or choice was refused. A value of the
    /// command line that does not fit is wrong usage.
    template <typename Action>
    static void act(const std::string& origin, bool isTyped, const Action& action)
    {
        try {
            action();
        } catch (const UnsuitableValue& error) {
            if (isTyped)
                throw UsageError(origin + ": " + error.what());
            throw Error(origin + ": " + error.what());
        } catch (const Error& error) {
            throw Error(origin + ": " + error.what());
        }
    }

    /// The same for an option.
    template <typename Action>
    void act(const std::string& option, const Action& action)
    {
        // A card's number stands in a file.
        act(option, option != "--credit-card-file", action);
    }

    void choose(const std::string& origin, const char* widget, int value)
    {
        act(origin, [&] { driver_.choose(widget, value); });
    }

    /// Ticks a box that does not stand so already: a click on it would turn it over.
    void tick(const std::string& origin, const char* box, bool on)
    {
        act(origin, [&] {
            if (driver_.show(box).ticked != on)
                driver_.tick(box, on);
            driver_.settleOption(box);
        });
    }

    void type(const std::string& origin, const char* field, const std::string& text)
    {
        act(origin, [&] { driver_.type(field, text); });
    }

    Driver& driver_;
    const JobOptions& options_;
    const QuestionPolicy& policy_;
    RecipientWatch watch_;
};

} // namespace

std::vector<RecipientInput> recipientsOf(const JobOptions& options)
{
    std::vector<RecipientInput> recipients;
    std::ranges::transform(options.to, std::back_inserter(recipients), recipientFromOption);
    if (options.recipients) {
        auto rows = readRecipientsCsv(*options.recipients, options.recipientsReading);
        std::ranges::move(rows, std::back_inserter(recipients));
    }
    return recipients;
}

void fillJob(Driver& driver, const JobOptions& options, const std::vector<RecipientInput>& recipients,
             const QuestionPolicy& policy)
{
    JobFiller(driver, options, policy).fill(recipients);
}

} // namespace quelm
