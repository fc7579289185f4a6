// Buttons beside the recipient lists, and removing recipients.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_selection.h"

#include "common/messages.h"
#include "common/number_format.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "ui/question_response.h"

namespace {

constexpr const char* recipientList = widget_names::lanFaxRecipientList;
constexpr const char* picksList = widget_names::faxCurRecipientList;

bool askBeforeRemoving() { return host::featureValue(widget_names::lanFaxPrefRemoveOne, 0) == 1; }

/// False when the list is missing or cannot count.
bool countSelected(int& count)
{
    GTKObject* list = host::widget(recipientList);
    return list != nullptr && list->getListSelectionCount(count);
}

int selectedPick()
{
    int row = -1;
    return host::readInteger(picksList, row) ? row : -1;
}

std::string removalQuestion(Tarvik40FaxRecipient& recipient)
{
    std::string text =
        labelledValue(questionText("Name:"), recipient.getRecipientData("RecipientName")) + "\r\n";
    text += labelledValue(questionText("Fax Number:"), recipient.getRecipientData("RecipientFaxNumber")) +
            "\r\n\n";
    return text + questionText("Are you sure you want to remove this Recipient?");
}

void redrawAfterRemoval()
{
    pFaxSession->updatePBEntryList(RECIPIENT_LIST);
    host::setSensitive(widget_names::lanFaxDetailsButton, false);
    host::setSensitive(widget_names::lanFaxRemoveButton, false);
}

/// Hands out the selected rows one by one.
class SelectedRows {
public:
    explicit SelectedRows(GTKObject& selectionList) : list_(selectionList) {}

    /// False when there is none left.
    bool next(int& row)
    {
        const bool found = list_.getWidgetProperty(host::in("Value"), nullptr, nullptr, &row, &first_);
        first_ = false;
        return found;
    }

private:
    GTKObject& list_;
    bool first_ = true;
};

} // namespace

void T40SelectFaxRecipient()
{
    int count = 0;
    if (!countSelected(count))
        return;
    host::setSensitive(widget_names::lanFaxDetailsButton, count == 1);
    host::setSensitive(widget_names::lanFaxSaveEntryButton, count == 1);
    host::setSensitive(widget_names::lanFaxRemoveButton, count > 0);
    host::setSensitive(widget_names::lanFaxSaveGroupButton, count != 1);
}

void T40SelectTmpFaxRecipient()
{
    const bool selected = selectedPick() != -1;
    host::setSensitive(widget_names::curRcptPropButton, selected);
    host::setSensitive(widget_names::curRcptRemoveButton, selected);
}

void T40RemoveFaxRecipientTest()
{
    int count = 0;
    if (countSelected(count))
        T40RemoveMultipleFaxRecipientsTest(count);
    else
        T40RemoveSingleFaxRecipientTest();
}

void T40RemoveSingleFaxRecipientTest()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(RECIPIENT_LIST);
    if (recipient == nullptr)
        return;
    if (askBeforeRemoving())
        host::askQuestion(questionResponse(RemoveSingleRcptResponseCB), removalQuestion(*recipient));
    else
        T40RemoveSingleFaxRecipient();
}

void T40RemoveSingleFaxRecipient()
{
    if (Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(RECIPIENT_LIST))
        pFaxSession->removeFaxRecipient(recipient, false);
    redrawAfterRemoval();
}

void T40RemoveMultipleFaxRecipientsTest(int count)
{
    if (askBeforeRemoving())
        host::askQuestion(
            questionResponse(RemoveMultipleRcptsResponseCB),
            withNumber(questionText("Are you sure you want to remove all %d Recipients?"), count));
    else
        T40RemoveMultipleFaxRecipients();
}

void T40RemoveMultipleFaxRecipients()
{
    GTKObject* list = host::widget(recipientList);
    if (list == nullptr)
        return;
    list->sortIntegerGList(true);
    list->setListFreezeState(true);
    SelectedRows rows(*list);
    // Rows come in ascending order, and each removal moves the recipients behind it up by one. A row that is
    // none (-1) ends it: that position would be the first recipient's.
    int removed = 0;
    for (int row = 0; rows.next(row) && row >= 0; ++removed) {
        Tarvik40FaxRecipient* recipient = pFaxSession->getFaxRecipientN(row - removed, RECIPIENT_LIST);
        if (recipient == nullptr)
            break;
        pFaxSession->removeFaxRecipient(recipient, false);
    }
    list->setListFreezeState(false);
    redrawAfterRemoval();
}

void T40RemoveTmpFaxRecipientTest()
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(CUR_RECIPIENT_LIST);
    if (!askBeforeRemoving())
        T40RemoveTmpFaxRecipient();
    else if (recipient != nullptr)
        host::askQuestion(questionResponse(RemoveTmpRcptResponseCB), removalQuestion(*recipient));
}

void T40RemoveTmpFaxRecipient()
{
    const int row = selectedPick();
    if (row >= 0)
        pFaxSession->removeFaxRecipientN(row, true);
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
}

void T40RemoveAllFaxRecipients()
{
    pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
    pFaxSession->updatePBEntryList(RECIPIENT_LIST);
}

void RemoveSingleRcptResponseCB(_GtkDialog*, int response)
{
    finishQuestion(response, T40RemoveSingleFaxRecipient);
}

void RemoveMultipleRcptsResponseCB(_GtkDialog*, int response)
{
    finishQuestion(response, T40RemoveMultipleFaxRecipients);
}

void RemoveTmpRcptResponseCB(_GtkDialog*, int response)
{
    finishQuestion(response, T40RemoveTmpFaxRecipient);
}
