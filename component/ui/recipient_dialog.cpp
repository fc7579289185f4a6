// The recipient dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_dialog.h"

#include "common/messages.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "phonebook/phonebook_state.h"
#include "ui/duplicate_question.h"
#include "ui/question_response.h"
#include "ui/recipient_fields.h"

#include <memory>

int editCurrentRecipient = 0;

namespace {

constexpr const char* window = widget_names::lanFaxAddRecipientWindow;
constexpr const char* phonebookBox = widget_names::addtoPersonalPb;
constexpr RecipientFields fields{.number = widget_names::recipientNumber,
                                 .name = widget_names::recipientName,
                                 .organization = widget_names::recipientOrganization,
                                 .phone = widget_names::recipientTelNumber,
                                 .email = widget_names::recipientEmailAddr,
                                 .mailbox = widget_names::recipientMailbox};

/// Adds a new recipient to the job. The job owns it.
Tarvik40FaxRecipient* addNewRecipient(const char* name, const char* number)
{
    auto recipient = std::make_unique<Tarvik40FaxRecipient>();
    storeRecipient(fields, name, number, *recipient);
    if (!pFaxSession->addFaxRecipient(recipient.get(), false))
        return nullptr;
    recipient->cleanseFaxNumber();
    return recipient.release();
}

/// Changes the selected recipient in place. Null when none is selected.
Tarvik40FaxRecipient* editSelectedRecipient(const char* name, const char* number)
{
    Tarvik40FaxRecipient* recipient = pFaxSession->getCurrentFaxRecipient(RECIPIENT_LIST);
    if (recipient != nullptr)
        storeRecipient(fields, name, number, *recipient);
    return recipient;
}

/// Writes the recipient to the personal phonebook when the box is ticked, and readies the box for
/// its next use. Whether the phonebook took it is not reported.
void saveToPhonebookIfAsked(Tarvik40FaxRecipient& recipient)
{
    bool ticked = false;
    host::readTicked(phonebookBox, ticked);
    if (!ticked)
        return;
    recipient.serializeRecipientToDatabase(personalPBDatabase);
    host::setTicked(phonebookBox, false);
    host::setSensitive(phonebookBox, true);
    host::setVisible(phonebookBox, true);
}

} // namespace

bool Tarvik40Fax::invokeRecipientInfoUI(Tarvik40FaxRecipient* recipient)
{
    showRecipient(fields, recipient);
    host::show(window);
    return true;
}

void T40ShowFaxRecipientDialog()
{
    host::setTitle(window, translated("Add Fax Recipient"));
    pFaxSession->invokeRecipientInfoUI(nullptr);
}

void T40AddFaxRecipientTest()
{
    host::TextBuffer name;
    host::TextBuffer number;
    if (!readRequiredFields(fields, name.text, number.text))
        return;
    if (!editCurrentRecipient &&
        TestForDuplicateRecipient(questionResponse(DupAddRcptResponseCB), name.text, number.text))
        return;
    T40AddFaxRecipient();
    editCurrentRecipient = 0;
}

int T40AddFaxRecipient()
{
    host::TextBuffer name;
    host::TextBuffer number;
    if (!readRequiredFields(fields, name.text, number.text))
        return 0;
    Tarvik40FaxRecipient* recipient = editCurrentRecipient ? editSelectedRecipient(name.text, number.text)
                                                           : addNewRecipient(name.text, number.text);
    if (recipient == nullptr)
        return 0;
    pFaxSession->updatePBEntryList(RECIPIENT_LIST);
    saveToPhonebookIfAsked(*recipient);
    editCurrentRecipient = 0;
    host::hide(window);
    return 1;
}

void DupAddRcptResponseCB(_GtkDialog*, int response) { finishQuestion(response, T40AddFaxRecipient); }

void T40CancelFaxRecipientDialog()
{
    editCurrentRecipient = 0;
    host::hide(window);
}
