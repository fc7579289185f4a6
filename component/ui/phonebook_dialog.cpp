// The phonebook dialog.
#include "ui/phonebook_dialog.h"

#include "common/module_state.h"
#include "directory/device_directory.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "phonebook/phonebook_listing.h"
#include "phonebook/phonebook_state.h"

int shownPBType = -1;

namespace {

constexpr const char* window = "Add Rcpt From PB Window";

void listCurrentPhonebook()
{
    if (currentPBType == personalPhonebook)
        PopulatePersonalPBEntries();
    else if (currentPBType == sharedPhonebook)
        PopulateSharedPBEntries();
}

void showListButtons()
{
    for (const char* name :
         {"Search String", "Search Button", "Search Label", "Search Status", "Add Button2"})
        host::hide(name);
    host::show("Add Button");
}

void showSearchWidgets()
{
    for (const char* name : {"Search String", "Search Button", "Search Label"})
        host::show(name);
    host::setWidgetText("Search Status", "");
    host::show("Search Status");
    host::show("Add Button2");
    host::hide("Add Button");
}

void emptyAndHide()
{
    host::setWidgetText("Search String", pEmptyString);
    host::setWidgetText("Search Status", pEmptyString);
    if (pbListWidget)
        pbListWidget->clearListItems();
    host::hide(window);
}

} // namespace

void SetCurrentPBType()
{
    GetFeatureOptValue(host::in("Current PB Type"), &currentPBType);
    if (currentPBType == shownPBType || !pbListWidget)
        return;
    pbListWidget->clearListItems();
    shownPBType = currentPBType;
    host::setWidgetText("Search String", "");
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
    host::setSensitive("Cur Rcpt Remove Button", false);
    host::setSensitive("Cur Rcpt Prop Button", false);
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
