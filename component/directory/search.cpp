// The directory search and its results.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "directory/search.h"

#include "common/list_cells.h"
#include "common/module_state.h"
#include "common/widget_names.h"
#include "directory/device_directory.h"
#include "host/calls.h"
#include "host/directory_client.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "model/recipient.h"

#include <memory>

GTKObject* ldapRowFactory = nullptr;

namespace {

void setStatus(const char* text) // shown untranslated
{
    searchStatusWidget->setWidgetProperty(host::in("WidgetText"), host::in(text));
}

/// The values of one result. They live across a whole search: what a result lacks is up to the host.
struct ResultValues {
    std::string givenName;
    std::string surname;
    std::string faxNumber;
    std::string phone;
    std::string email;

    void fetch(LDAPEntry& entry)
    {
        entry.fetchValueByAttribute(host::in("givenName"), givenName);
        entry.fetchValueByAttribute(host::in("sn"), surname);
        entry.fetchValueByAttribute(host::in("facsimileTelephoneNumber"), faxNumber);
        // A capital N here and none in the request: hosts match the names without regard to case.
        entry.fetchValueByAttribute(host::in("telephoneNumber"), phone);
        entry.fetchValueByAttribute(host::in("mail"), email);
    }
};

void addResultRow(const ResultValues& values)
{
    const std::string name = values.surname + ", " + values.givenName;
    const char* columns[] = {name.c_str(),
                             listCell(values.faxNumber),
                             pEmptyString,
                             listCell(values.phone),
                             listCell(values.email),
                             pEmptyString,
                             nullptr};
    if (ldapRowFactory == nullptr)
        ldapRowFactory = new GTKObject;
    host::addListRow(*ldapRowFactory, pbListWidget, columns);
}

void reportCount(LDAPSession& session)
{
    const int count = session.getLastResponseItemCount();
    constexpr int sizeLimitExceeded = 4;
    if (count == 0)
        setStatus("No Records Found");
    else if (count == 1)
        setStatus("1 Record Found");
    else if (count < 1000)
        setStatus((std::string(itoa(count)) + " Records Found").c_str());
    else if (session.getLastResponseCode() == sizeLimitExceeded)
        setStatus("1000+ Records Found");
    // With any other code the status stays at "Searching...".
}

} // namespace

int PerformLDAPSearch(char* text)
{
    if (ldapSession == nullptr || pbListWidget == nullptr)
        return 0;
    for (const char* attribute : {"sn", "givenName", "facsimileTelephoneNumber", "telephonenumber", "mail"})
        ldapSession->appendAttribute(host::in(attribute));
    std::string filter = std::string("(sn=") + text + "*)";
    setStatus("Searching...");
    constexpr int wholeSubtree = 2;
    if (!ldapSession->requestSearch(filter, wholeSubtree, nullptr, false)) {
        setStatus("Timeout Exceeded!");
        return 0;
    }
    pbListWidget->setListFreezeState(true);
    pbListWidget->clearListItems();
    ResultValues values;
    LDAPEntry entry;
    while (ldapSession->getNextEntry(entry)) {
        values.fetch(entry);
        entry.clearAttributeValue();
        addResultRow(values);
    }
    reportCount(*ldapSession);
    pbListWidget->setListFreezeState(false);
    return 1;
}

void PBSearch()
{
    if (currentPBType != directoryPhonebook)
        return;
    host::TextBuffer text;
    host::readText(widget_names::searchString, text);
    PerformLDAPSearch(text.text);
}

void T40AddFaxRecLDAP()
{
    int row = -1;
    host::readInteger(widget_names::faxPbList, row);
    GTKObject* list = host::widget(widget_names::faxPbList);
    if (row < 0 || list == nullptr)
        return;
    host::TextBuffer buffer;
    const auto readCell = [&](int column, std::string& out) {
        buffer.clear();
        char* text = buffer.text; // a host copies into it, or points it at the row's own text
        if (!list->getListItemData(&text, column, row))
            return false;
        out = text;
        return true;
    };
    std::string name;
    std::string faxNumber;
    std::string phone;
    std::string email;
    if (!readCell(0, name))
        return; // a row that is no longer there is nobody
    readCell(1, faxNumber);
    readCell(3, phone);
    readCell(4, email);
    auto recipient = std::make_unique<Tarvik40FaxRecipient>();
    recipient->setRecipientType(SINGLE_RECIPIENT);
    recipient->setRecipientData("RecipientName", name);
    recipient->setRecipientData("RecipientFaxNumber", faxNumber);
    recipient->cleanseFaxNumber();
    recipient->setRecipientData("RecipientPhone", phone);
    recipient->setRecipientData("RecipientEmail", email);
    if (pFaxSession->addFaxRecipient(recipient.get(), true))
        recipient.release();
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
}
