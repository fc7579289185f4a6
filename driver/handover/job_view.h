// What the dialogs hold, as far as it decides what reaches the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_JOB_VIEW_H
#define DRIVER_HANDOVER_JOB_VIEW_H

#include "base/translation.h"
#include "driver/plugin/fax_session.h"
#include "driver/widgets/widget_names.h"

#include <array>
#include <string>

namespace quelm {

class Driver;

/// The choices that a job would be written with: those of the job where the component has taken them over,
/// and what the dialogs show otherwise. An open window is not confirmed yet: what it concerns is taken from
/// the job then.
struct JobView {
    bool coverGoes = false;
    bool showsRecipients = false;
    bool showsCustomText = false;
    bool showsSender = false;
    bool isA4 = false;      ///< the paper size that was chosen for the cover sheet
    std::string note;       ///< as it was typed
    std::string customText; ///< the user's own text for the recipients
    std::string senderName;
    std::string senderNumber;
    std::string senderOrganization;
    std::string senderPhone;
    std::string senderEmail;
    std::string prefix;      ///< that is dialled; empty for none
    std::string typedPrefix; ///< what its field holds
    bool prefixTicked = false;
    std::string card; ///< that is charged; empty for none
    std::string typedCard;
    bool cardTicked = false;
    bool leavesKeptCard = false; ///< the box was ticked for the user, and unticked for this command
};

/// Where a text about the sender stands, and what people call it.
struct SenderText {
    const char* widget;
    std::string JobTexts::*inJob;
    std::string JobView::*inView;
    const char* words; ///< to be translated
};

inline constexpr std::array<SenderText, 5> senderTexts{{
    {widget_names::senderFaxName, &JobTexts::senderName, &JobView::senderName,
     forTranslation("the sender's name")},
    {widget_names::senderFaxNumber, &JobTexts::senderNumber, &JobView::senderNumber,
     forTranslation("the sender's fax number")},
    {widget_names::senderFaxOrganization, &JobTexts::senderOrganization, &JobView::senderOrganization,
     forTranslation("the sender's organization")},
    {widget_names::senderFaxTelNumber, &JobTexts::senderPhone, &JobView::senderPhone,
     forTranslation("the sender's phone number")},
    {widget_names::senderFaxEmailAddr, &JobTexts::senderEmail, &JobView::senderEmail,
     forTranslation("the sender's e-mail address")},
}};

/// Looks at the driver's dialogs and job. A widget that the component does not have counts as empty.
[[nodiscard]] JobView viewOfJob(Driver& driver);

/// What a combo box or radio group stands at; -1 when there is no such widget.
[[nodiscard]] int choiceOf(Driver& driver, const char* widget);

} // namespace quelm

#endif
