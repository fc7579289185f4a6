// The component's fax job as the driver's print path uses it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_FAX_SESSION_H
#define DRIVER_PLUGIN_FAX_SESSION_H

#include "host/print_stream.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

/// The page description language that carries a job's attribute lines.
enum class Pdl { dsc, pjl };

/// The component's lists of recipients that a host may look at; the values are the component's.
enum class RecipientList {
    job = 1,   ///< who gets the fax
    picks = 3, ///< who was picked in the phonebook dialog, which was not confirmed yet
};

/// A recipient as the component holds it. The texts are as they were typed or found in a phonebook or
/// directory: any bytes but NUL, an empty text for none.
struct JobRecipient {
    int type = 0; ///< 1: a single recipient; nothing else can be dialled
    std::string name;
    std::string number;
    std::string organization;
    std::string phone;
    std::string email;
    std::string mailbox;

    bool operator==(const JobRecipient&) const = default;
};

/// What else the component writes into a job, as it stands: any bytes.
struct JobTexts {
    std::string dialingPrefix;
    std::string creditCard;
    std::string note; ///< with the parentheses that the component puts around it: " (Call me) "
    std::string customText;
    std::string senderName;
    std::string senderNumber;
    std::string senderOrganization;
    std::string senderPhone;
    std::string senderEmail;
    bool showsRecipients = false; ///< the cover page shows who gets the fax
    bool showsCustomText = false; ///< and `customText` for their names
    bool showsSender = false;     ///< it shows a single recipient who sent the fax

    bool operator==(const JobTexts&) const = default;
};

/// The texts that a component's cover page is made of. Empty for a component that has none.
struct CoverPageTemplate {
    std::string header;  ///< a format of sprintf with sixteen "%s"
    std::string trailer; ///< stands in the page byte for byte

    bool operator==(const CoverPageTemplate&) const = default;
};

/// One fax job, reached through the loaded component. The order at print time: `setPdl`,
/// `checkInfo`, `serializeJob`, and `serializeCoverSheet` when `coverPageChosen`. A job may be written as
/// often as one likes: it says the same each time, and nothing of those written before.
class FaxSession {
public:
    virtual ~FaxSession() = default;

    /// Chooses the form of the attribute lines.
    virtual void setPdl(Pdl pdl) = 0;

    /// True when the user chose a cover page and confirmed the fax dialog.
    [[nodiscard]] virtual bool coverPageChosen() = 0;

    /// False when the job has no recipient; the component then shows its fax dialog again.
    [[nodiscard]] virtual bool checkInfo() = 0;

    /// Writes the attribute lines. False when the component wrote none.
    [[nodiscard]] virtual bool serializeJob(AbstractPDLWriter& writer) = 0;

    /// Writes the cover page. False when it was not written whole.
    [[nodiscard]] virtual bool serializeCoverSheet(AbstractPDLWriter& writer) = 0;

    /// How many recipients a list has.
    [[nodiscard]] virtual std::size_t count(RecipientList list) = 0;

    /// The recipient at `position` from 0, which is less than `count`.
    [[nodiscard]] virtual JobRecipient recipient(RecipientList list, std::size_t position) = 0;

    /// The prefix, the card and what the cover sheet may show.
    [[nodiscard]] virtual JobTexts texts() = 0;

    [[nodiscard]] virtual CoverPageTemplate coverPageTemplate() = 0;

    /// Who gets the fax, in the order in which they are dialled.
    [[nodiscard]] std::vector<JobRecipient> recipients() { return allOf(RecipientList::job); }

    /// Who was picked in the phonebook dialog and waits for its confirmation.
    [[nodiscard]] std::vector<JobRecipient> picks() { return allOf(RecipientList::picks); }

private:
    std::vector<JobRecipient> allOf(RecipientList list)
    {
        std::vector<JobRecipient> all;
        const std::size_t size = count(list);
        for (std::size_t i = 0; i < size; ++i)
            all.push_back(recipient(list, i));
        return all;
    }
};

} // namespace quelm

#endif
