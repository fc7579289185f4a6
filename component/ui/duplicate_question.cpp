// The duplicate question.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/duplicate_question.h"

#include "common/messages.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

bool TestForDuplicateRecipient(void (*response)(_GtkWidget*, void*), char* name, char* faxNumber)
{
    std::string key = std::string(name) + faxNumber;
    if (!pFaxSession->isFaxRecipientAlreadyInList(key))
        return false;
    if (host::featureValue(widget_names::lanFaxPrefDuplicates, 0) != 1)
        return false;
    std::string question = labelledValue(duplicateQuestionText("Name:"), name) + "\r\n";
    question += labelledValue(duplicateQuestionText("Fax Number:"), faxNumber) + "\r\n\n";
    question += duplicateQuestionText("This Recipient already exists in your Recipient List.") + "\r\n";
    question += duplicateQuestionText("Do you want to add a duplicate of this Recipient?");
    host::askQuestion(response, question);
    return true;
}
