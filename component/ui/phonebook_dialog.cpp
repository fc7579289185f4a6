// The phonebook dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/phonebook_dialog.h"

#include "common/module_state.h"
#include "common/widget_names.h"
#include "directory/device_directory.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "phonebook/phonebook_listing.h"
#include "phonebook/phonebook_state.h"

int shownPBType = -1;

namespace {

constexpr const char* window = widget_names::addRcptFromPbWindow;

void listCurrentPhonebook()
{
    if (currentPBType == personalPhonebook)
        PopulatePersonalPBEntries();
    else if (currentPBType == sharedPhonebook)
        PopulateSharedPBEntries();
}

void showListButtons()
{
    for (const char* name : {widget_names::searchString, widget_names::searchButton,
                             widget_names::searchLabel, widget_names::searchStatus, widget_names::addButton2})
        host::hide(name);
    host::show(widget_names::addButton);
}

void showSearchWidgets()
{
    for (const char* name :
         {widget_names::searchString, widget_names::searchButton, widget_names::searchLabel})
        host::show(name);
    host::setWidgetText(widget_names::searchStatus, "");
    host::show(widget_names::searchStatus);
    host::show(widget_names::addButton2);
    host::hide(widget_names::addButton);
}

void emptyAndHide()
{
    host::setWidgetText(widget_names::searchString, pEmptyString);
    host::setWidgetText(widget_names::searchStatus, pEmptyString);
    if (pbListWidget != nullptr)
        pbListWidget->clearListItems();
    host::hide(window);
}

} // namespace

void SetCurrentPBType()
{
    GetFeatureOptValue(host::in(widget_names::currentPbType), &currentPBType);
    if (currentPBType == shownPBType || pbListWidget == nullptr)
        return;
    pbListWidget->clearListItems();
    shownPBType = currentPBType;
    host::setWidgetText(widget_names::searchString, "");
    SetCurrentPBInfo(currentPBType);
    switch (currentPBType) {
    case personalPhonebook:
    case sharedPhonebook:
        listCurrentPhonebook();
        showListButtons();
        break;
    case directoryPhonebook:
        showSearchWidgets();
        SynchronizeLDAPConnection();
        break;
    default:
        break;
    }
}

void T40ShowAddRcptFromPBDialog()
{
    host::show(window);
    host::setSensitive(widget_names::curRcptRemoveButton, false);
    host::setSensitive(widget_names::curRcptPropButton, false);
    SetCurrentPBInfo(currentPBType);
    listCurrentPhonebook(); // a directory is listed by its searches
}

void T40AddRcptFromPBDialogOk()
{
    pFaxSession->appendTmpFaxRecipientList();
    emptyAndHide();
}

void T40AddRcptFromPBDialogCancel()
{
    pFaxSession->removeAllFaxRecipients(CUR_RECIPIENT_LIST);
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
    emptyAndHide();
}
