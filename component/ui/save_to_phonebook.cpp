// "Save _Group..." and "Save _Entry...".
#include "ui/save_to_phonebook.h"

#include "common/messages.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "phonebook/phonebook_state.h"
#include "ui/entry_check.h"
#include "ui/recipient_dialog.h"

namespace {

constexpr const char* groupWindow = "LanFax Add Group Window";
constexpr const char* groupNameField = "LanFaxAddGroup Group Name";

void closeGroupWindow()
{
    pFaxSession->setGroupRecipientList(true);
    host::hide(groupWindow);
}

} // namespace

void T40SaveGroup()
{
    host::setTextValue(groupNameField, "");
    pFaxSession->setGroupRecipientList(false);
    host::show(groupWindow);
}

void T40SaveGroupOk()
{
    host::TextBuffer name;
    if (!ValidateFaxEntry(host::in(groupNameField), nullptr, name.text, nullptr, true))
        return;
    std::string members;
    if (name.empty() || pFaxSession->getRecipientListCount(GROUP_MEMBER_LIST) == 0 ||
        !pFaxSession->assembleGroupMemberListData(members))
        return;
    Tarvik40FaxRecipient group;
    group.setRecipientType(GROUP_RECIPIENT);
    group.setRecipientData("RecipientName", name.c_str());
    group.setRecipientData("GroupMemberList", members);
    group.serializeRecipientToDatabase(personalPBDatabase);
    closeGroupWindow();
}

void T40SaveGroupCancel() { closeGroupWindow(); }

void T40SaveEntry()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(RECIPIENT_LIST);
    if (!recipient || recipient->getRecipientType() != SINGLE_RECIPIENT)
        return;
    // The box is ticked out of the user's sight. Only a confirmed recipient restores it, so after a
    // cancelled save the next recipient confirmed in the dialog is written too.
    host::setTicked("AddtoPersonalPB", true);
    host::setVisible("AddtoPersonalPB", false);
    host::setSensitive("AddtoPersonalPB", false);
    host::setTitle("LanFax Add Recipient Window", translated("Save to Personal Phonebook"));
    editCurrentRecipient = 1;
    pFaxSession->invokeRecipientInfoUI(recipient);
}
