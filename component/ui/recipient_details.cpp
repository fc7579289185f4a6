// Editing a recipient of the job, and a pick's properties.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_details.h"

#include "common/messages.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "ui/recipient_dialog.h"
#include "ui/recipient_fields.h"

namespace {

constexpr const char* propertiesWindow = widget_names::lanFaxRecipientPropertiesWindow;
constexpr RecipientFields propertiesFields{.number = widget_names::rcptPropsNumber,
                                           .name = widget_names::rcptPropsName,
                                           .organization = widget_names::rcptPropsOrganization,
                                           .phone = widget_names::rcptPropsTelNumber,
                                           .email = widget_names::rcptPropsEmailAddr,
                                           .mailbox = widget_names::rcptPropsMailbox};

} // namespace

void T40EditFaxRecipient()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(RECIPIENT_LIST);
    if (recipient == nullptr)
        return;
    editCurrentRecipient = 1;
    if (recipient->getRecipientType() == SINGLE_RECIPIENT) {
        host::setTitle(widget_names::lanFaxAddRecipientWindow, translated("Fax Recipient"));
        pFaxSession->invokeRecipientInfoUI(recipient);
    } else if (recipient->getRecipientType() == GROUP_RECIPIENT) {
        host::setTitle(widget_names::lanFaxAddGroupWindow, translated("Fax Group"));
        pFaxSession->invokeGroupInfoUI(recipient);
    }
}

bool Tarvik40Fax::invokeGroupInfoUI(Tarvik40FaxRecipient* group)
{
    if (group == nullptr)
        return false;
    // The members are not shown: their list keeps what it held.
    const char* name = group->getRecipientData("RecipientName");
    host::setWidgetText(widget_names::lanFaxAddGroupGroupName, name != nullptr ? name : "");
    host::show(widget_names::lanFaxAddGroupWindow);
    return true;
}

void T40ViewPBRcptProperties()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(CUR_RECIPIENT_LIST);
    if (recipient == nullptr)
        return;
    showRecipient(propertiesFields, recipient);
    host::show(propertiesWindow);
}

void T40FaxRcptPropsOk()
{
    host::TextBuffer name;
    host::TextBuffer number;
    if (!readRequiredFields(propertiesFields, name.text, number.text))
        return;
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(CUR_RECIPIENT_LIST);
    if (recipient == nullptr)
        return;
    storeRecipient(propertiesFields, name.text, number.text, *recipient);
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
    host::hide(propertiesWindow);
}

void T40FaxRcptPropsCancel() { host::hide(propertiesWindow); }
