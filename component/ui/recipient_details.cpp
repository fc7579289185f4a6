// Editing a recipient of the job, and a pick's properties.
#include "ui/recipient_details.h"

#include "common/messages.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "ui/recipient_dialog.h"
#include "ui/recipient_fields.h"

namespace {

constexpr const char* propertiesWindow = "LanFax Recipient Properties Window";
constexpr RecipientFields propertiesFields{.number = "RcptPropsNumber",
                                           .name = "RcptPropsName",
                                           .organization = "RcptPropsOrganization",
                                           .phone = "RcptPropsTelNumber",
                                           .email = "RcptPropsEmailAddr",
                                           .mailbox = "RcptPropsMailbox"};

} // namespace

void T40EditFaxRecipient()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(RECIPIENT_LIST);
    if (!recipient)
        return;
    editCurrentRecipient = 1;
    if (recipient->getRecipientType() == SINGLE_RECIPIENT) {
        host::setTitle("LanFax Add Recipient Window", translated("Fax Recipient"));
        pFaxSession->invokeRecipientInfoUI(recipient);
    } else if (recipient->getRecipientType() == GROUP_RECIPIENT) {
        host::setTitle("LanFax Add Group Window", translated("Fax Group"));
        pFaxSession->invokeGroupInfoUI(recipient);
    }
}

bool Tarvik40Fax::invokeGroupInfoUI(Tarvik40FaxRecipient* group)
{
    if (!group)
        return false;
    // The members are not shown: their list keeps what it held.
    const char* name = group->getRecipientData("RecipientName");
    host::setWidgetText("LanFaxAddGroup Group Name", name ? name : "");
    host::show("LanFax Add Group Window");
    return true;
}

void T40ViewPBRcptProperties()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(CUR_RECIPIENT_LIST);
    if (!recipient)
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
    if (!recipient)
        return;
    storeRecipient(propertiesFields, name.text, number.text, *recipient);
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
    host::hide(propertiesWindow);
}

void T40FaxRcptPropsCancel() { host::hide(propertiesWindow); }
