// "Save _Group..." and "Save _Entry...".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/save_to_phonebook.h"

#include "common/messages.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "phonebook/phonebook_state.h"
#include "ui/entry_check.h"
#include "ui/recipient_dialog.h"

namespace {

constexpr const char* groupWindow = widget_names::lanFaxAddGroupWindow;
constexpr const char* groupNameField = widget_names::lanFaxAddGroupGroupName;

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
    if (recipient == nullptr || recipient->getRecipientType() != SINGLE_RECIPIENT)
        return;
    // The box is ticked out of the user's sight. Only a confirmed recipient restores it, so after a
    // cancelled save the next recipient confirmed in the dialog is written too.
    host::setTicked(widget_names::addtoPersonalPb, true);
    host::setVisible(widget_names::addtoPersonalPb, false);
    host::setSensitive(widget_names::addtoPersonalPb, false);
    host::setTitle(widget_names::lanFaxAddRecipientWindow, translated("Save to Personal Phonebook"));
    editCurrentRecipient = 1;
    pFaxSession->invokeRecipientInfoUI(recipient);
}
