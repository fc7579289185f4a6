// Loads, starts and unloads the component for a test.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/component_test.h"

#include "common/module_state.h"
#include "directory/device_directory.h"
#include "directory/search.h"
#include "frame/startup.h"
#include "host/directory_client.h"
#include "host/record_database.h"
#include "model/list_refresh.h"
#include "phonebook/phonebook_files.h"
#include "phonebook/phonebook_state.h"
#include "tests/support/component_callbacks.h"
#include "ui/phonebook_dialog.h"
#include "ui/phonebook_picks.h"
#include "ui/recipient_dialog.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace {

template <typename T>
void destroy(T*& object)
{
    delete object;
    object = nullptr;
}

} // namespace

void unloadComponent()
{
    if (pFaxSession != nullptr) {
        pFaxSession->clearAllFaxRecipients(GROUP_MEMBER_LIST);
        pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
        pFaxSession->removeAllFaxRecipients(CUR_RECIPIENT_LIST);
    }
    destroy(pFaxSession);
    destroy(personalPBPath);
    destroy(sharedPBPath);
    destroy(personalPBIterator);
    destroy(sharedPBIterator);
    destroy(personalPBDatabase);
    destroy(sharedPBDatabase);
    destroy(personalPBFileDialog);
    destroy(sharedPBFileDialog);
    destroy(ldapSession);
    destroy(listItemFactory);
    destroy(ldapRowFactory);
    currentPBDatabase = nullptr;
    currentPBIterator = nullptr;
    shownPBType = -1;
    ClearLegacyDBRecipientInfo(pendingGroupRecord);
    pendingGroupText.clear();
    pendingGroupCursor = 0;
    groupExpansionStart = true;
    recipientListWidget = nullptr;
    pbListWidget = nullptr;
    curRecipientListWidget = nullptr;
    groupListWidget = nullptr;
    searchStatusWidget = nullptr;
    std::fill(std::begin(messageBuffer), std::end(messageBuffer), '\0');
    deviceInfoReady = 0;
    currentPBType = 0;
    editCurrentRecipient = 0;
}

std::unique_ptr<Tarvik40FaxRecipient> makeRecipient(const std::string& name, const std::string& faxNumber)
{
    auto recipient = std::make_unique<Tarvik40FaxRecipient>();
    recipient->setRecipientType(SINGLE_RECIPIENT);
    recipient->setRecipientData("RecipientName", name.c_str());
    recipient->setRecipientData("RecipientFaxNumber", faxNumber.c_str());
    return recipient;
}

ComponentTest::ComponentTest()
{
    host.reset();
    host.callbacks = componentCallbacks();
}

ComponentTest::~ComponentTest() { unloadComponent(); }

Tarvik40FaxRecipient* ComponentTest::addRecipient(const std::string& name, const std::string& faxNumber)
{
    Tarvik40FaxRecipient* recipient = makeRecipient(name, faxNumber).release();
    job().addFaxRecipient(recipient, false);
    return recipient;
}

Tarvik40FaxRecipient* ComponentTest::addPick(const std::string& name, const std::string& faxNumber)
{
    Tarvik40FaxRecipient* recipient = makeRecipient(name, faxNumber).release();
    job().addFaxRecipient(recipient, true);
    return recipient;
}

std::vector<std::string> ComponentTest::jobNames()
{
    std::vector<std::string> names;
    for (int i = 0; i < job().getRecipientListCount(RECIPIENT_LIST); ++i)
        names.push_back(field(job().getFaxRecipientN(i, RECIPIENT_LIST), "RecipientName"));
    return names;
}

StartedComponentTest::StartedComponentTest()
{
    if (!InitializeFaxComponent())
        throw std::runtime_error("the component did not start");
    host.journal.clear();
}

std::string field(Tarvik40FaxRecipient* recipient, const char* key)
{
    const char* text = recipient->getRecipientData(key);
    return text != nullptr ? text : "(none)";
}

std::string dialledNumber(Tarvik40FaxRecipient* recipient)
{
    char noPrefix[] = "";
    const std::string written = recipient->assembleFaxRcptPDLString(nullptr, noPrefix);
    const auto begin = written.find('"') + 1;
    return written.substr(begin, written.find('"', begin) - begin);
}

std::string longText(std::size_t size)
{
    std::string text;
    text.reserve(size);
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}
