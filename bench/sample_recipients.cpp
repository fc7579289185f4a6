// Makes recipients of the entries; apart from the other forms, which need nothing of the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/samples.h"

namespace bench {

std::unique_ptr<Tarvik40FaxRecipient> recipientOf(const Entry& entry)
{
    auto recipient = std::make_unique<Tarvik40FaxRecipient>();
    recipient->setRecipientType(SINGLE_RECIPIENT);
    recipient->setRecipientData("RecipientName", entry.name.c_str());
    recipient->setRecipientData("RecipientFaxNumber", entry.faxNumber.c_str());
    recipient->setRecipientData("RecipientOrganization", entry.organization.c_str());
    recipient->setRecipientData("RecipientPhone", entry.phone.c_str());
    recipient->setRecipientData("RecipientEmail", entry.email.c_str());
    return recipient;
}

} // namespace bench
