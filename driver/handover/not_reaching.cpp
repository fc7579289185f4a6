// Compares what was entered with what the component writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/not_reaching.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/handover/card_remark.h"
#include "driver/handover/job_view.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace quelm {
namespace {

/// More than so many bytes of names, and the component names no further recipient.
constexpr std::size_t roomForNames = 30;

void append(std::string& list, const std::string& item) { list += (list.empty() ? "" : ", ") + item; }

/// What is known of the recipients beside names and numbers: "the organization, the phone number".
std::string recipientData(const std::vector<JobRecipient>& recipients)
{
    static constexpr std::array<std::pair<std::string JobRecipient::*, const char*>, 3> fields{{
        {&JobRecipient::organization, forTranslation("the organization")},
        {&JobRecipient::phone, forTranslation("the phone number")},
        {&JobRecipient::email, forTranslation("the e-mail address")},
    }};
    std::string data;
    for (const auto& [field, words] : fields)
        if (std::ranges::any_of(recipients, [f = field](const auto& one) { return !(one.*f).empty(); }))
            append(data, translated(words));
    return data;
}

/// What was entered about the sender: "the sender's name, the sender's fax number".
std::string senderData(const JobView& view)
{
    std::string data;
    for (const auto& field : senderTexts)
        if (!(view.*field.inView).empty())
            append(data, translated(field.words));
    return data;
}

/// The lines of a cover sheet for several recipients on which the sender's data stand, with the labels that
/// are printed there: the component fills them in the order of its dialog.
std::string shiftedSender(const JobView& view)
{
    std::string lines;
    for (const auto& [label, text] : {std::pair{"Name", &view.senderNumber},
                                      {"Organization", &view.senderName},
                                      {"Voice", &view.senderOrganization},
                                      {"Fax", &view.senderPhone},
                                      {"E-Mail", &view.senderEmail}})
        if (!text->empty())
            append(lines, label + (": " + shownText(*text)));
    return lines;
}

bool standsElsewhere(const JobView& view)
{
    return !view.senderNumber.empty() || !view.senderName.empty() || !view.senderOrganization.empty() ||
           !view.senderPhone.empty();
}

/// How many recipients the component names on a cover sheet for several.
std::size_t namedRecipients(const std::vector<JobRecipient>& recipients)
{
    std::size_t size = 0;
    for (std::size_t i = 0; i < recipients.size(); ++i) {
        size += recipients[i].name.size() + (i + 1 < recipients.size() ? 2 : 0);
        if (size > roomForNames)
            return i + 1;
    }
    return recipients.size();
}

void withoutCover(const JobView& view, const std::vector<JobRecipient>& recipients,
                  std::vector<std::string>& sentences)
{
    if (!view.note.empty())
        sentences.push_back(localized("the note is not sent, as no cover sheet goes out"));
    if (const auto data = recipientData(recipients); !data.empty())
        // Translators: a list such as "the organization, the phone number".
        sentences.push_back(
            localized("the recipients' names and more stay here, as no cover sheet goes out: %s", data));
    if (!view.customText.empty() && view.showsRecipients && view.showsCustomText)
        sentences.push_back(
            localized("your own text for the recipients is not sent, as no cover sheet goes out"));
    if (const auto data = senderData(view); !data.empty() && view.showsSender)
        // Translators: a list such as "the sender's name, the sender's fax number".
        sentences.push_back(localized("no cover sheet goes out that would show these: %s", data));
}

void aboutRecipients(const JobView& view, const std::vector<JobRecipient>& recipients,
                     std::vector<std::string>& sentences)
{
    const auto count = recipients.size();
    const auto data = recipientData(recipients);
    if (!view.showsRecipients) {
        sentences.push_back(data.empty()
                                ? localized("the cover sheet does not name the recipients")
                                // Translators: a list such as "the organization, the phone number".
                                : localized("the cover sheet does not name the recipients, nor show these "
                                            "data of theirs: %s",
                                            data));
    } else if (count > 1) {
        if (!data.empty())
            sentences.push_back(localized(
                "with several recipients the cover sheet does not show these data of theirs: %s", data));
        if (const auto named = namedRecipients(recipients); !view.showsCustomText && named < count)
            sentences.push_back(localizedCount(
                "the cover sheet has room for the name of the first %d recipient only",
                "the cover sheet has room for the names of the first %d recipients only", named, named));
    }
    if (view.customText.empty())
        return;
    const bool shown = view.showsCustomText && (view.showsRecipients || count > 1);
    if (!shown)
        sentences.push_back(localized("the cover sheet does not show your own text for the recipients"));
    else if (!view.showsRecipients)
        sentences.push_back(localized("with several recipients the cover sheet shows your own text for them, "
                                      "although it is not to show recipients"));
}

void aboutSender(const JobView& view, std::size_t recipients, std::vector<std::string>& sentences)
{
    const auto data = senderData(view);
    if (data.empty() || (view.showsSender && recipients < 2))
        return;
    if (recipients < 2)
        sentences.push_back(localized("the cover sheet does not show these: %s", data));
    else if (!view.showsSender)
        // Translators: lines of the page as they are printed: "Name: 555-1234, Organization: Ann".
        sentences.push_back(localized("with several recipients the cover sheet shows the sender although it "
                                      "is not to, and on other lines than meant: %s",
                                      shiftedSender(view)));
    else if (standsElsewhere(view))
        sentences.push_back(localized("with several recipients the cover sheet shows the sender on other "
                                      "lines than meant, the fax number as the name: %s",
                                      shiftedSender(view)));
}

void aboutDialing(const JobView& view, std::vector<std::string>& sentences)
{
    if (!view.typedPrefix.empty() && !view.prefixTicked && view.prefix.empty())
        sentences.push_back(localized("the dialing prefix %s is not dialled, as its box is not ticked",
                                      shownText(view.typedPrefix)));
    if (view.typedCard.empty() || view.cardTicked || !view.card.empty())
        return;
    const auto digits = cardDigits(view.typedCard);
    if (view.leavesKeptCard) {
        sentences.push_back(
            digits.empty()
                ? localized("the credit card is not charged; --kept-credit-card charges it")
                : localized("the credit card ending in %s is not charged; --kept-credit-card charges it",
                            digits));
        return;
    }
    sentences.push_back(
        digits.empty()
            ? localized("the credit card is not charged, as its box is not ticked")
            : localized("the credit card ending in %s is not charged, as its box is not ticked", digits));
}

} // namespace

std::vector<std::string> notReaching(const JobView& view, const std::vector<JobRecipient>& recipients)
{
    std::vector<std::string> sentences;
    if (view.coverGoes) {
        aboutRecipients(view, recipients, sentences);
        aboutSender(view, recipients.size(), sentences);
        if (view.isA4)
            sentences.push_back(
                localized("the cover sheet is 8.5 inches wide and 11 high, although A4 is chosen for it"));
    } else {
        withoutCover(view, recipients, sentences);
    }
    aboutDialing(view, sentences);
    return sentences;
}

} // namespace quelm
