// Start-up: dialogs, list widgets, fax job, personal phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "frame/startup.h"

#include "common/module_state.h"
#include "common/widget_names.h"
#include "frame/descriptor.h"
#include "host/calls.h"
#include "host/component.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "phonebook/phonebook_state.h"

#include <algorithm>
#include <memory>

namespace {

struct ListWidget {
    const char* name;
    GTKObject*& handle;
};

const ListWidget listWidgets[] = {
    {widget_names::lanFaxRecipientList, recipientListWidget},
    {widget_names::faxPbList, pbListWidget},
    {widget_names::faxCurRecipientList, curRecipientListWidget},
    {widget_names::lanFaxAddGroupGroupList, groupListWidget},
    {widget_names::searchStatus, searchStatusWidget},
};

/// False at the first widget that is missing; the handles found before stay, and so does the one that an
/// earlier start-up found.
bool findListWidgets()
{
    return std::ranges::all_of(listWidgets, [](const ListWidget& wanted) {
        GTKObject* const found = host::widget(wanted.name);
        if (found != nullptr)
            wanted.handle = found;
        return found != nullptr;
    });
}

/// Works out where the personal phonebook is, and makes its directories. When that fails the path
/// keeps the provisional text, and a later start-up does not try again: hosts rely on it.
bool findPersonalPhonebook()
{
    std::string directory = pDriverGlobals->getExecutableLocation();
    *personalPBPath = directory + "/db/phonebook/user/";
    directory += "/db/phonebook";
    if (!ensurePhonebookDirectory(directory))
        return false;
    directory += "/user";
    if (!ensurePhonebookDirectory(directory))
        return false;
    *personalPBPath = directory + "/" + pDriverGlobals->getCurrentUserName() + ".xdb";
    host::setTextValue(widget_names::lanFaxPersonalPbName, personalPBPath->c_str());
    return true;
}

bool openPersonalPhonebook()
{
    auto database = std::make_unique<QuelmLegacyDatabase>();
    if (!host::openDatabase(*database, *personalPBPath, "r+") &&
        !host::createDatabase(*database, *personalPBPath, newPhonebookFlags))
        return false;
    personalPBDatabase = database.release(); // kept until the process ends
    return true;
}

} // namespace

int InitializeFaxComponent()
{
    if (!pDriverDirector->parseXMLBuffer(host::in(pLanFaxXMLData)))
        return 0;
    host::setSensitive(widget_names::lanFaxDetailsButton, false);
    host::setSensitive(widget_names::lanFaxSaveGroupButton, false);
    host::setSensitive(widget_names::lanFaxSaveEntryButton, false);
    host::setSensitive(widget_names::lanFaxRemoveButton, false);
    if (!findListWidgets())
        return 0;

    pFaxSession = new Tarvik40Fax; // kept until the process ends, an earlier one too
    pDriverDirector->registerResource(host::in(host::faxSessionResource), pFaxSession);

    if (personalPBPath == nullptr) {
        personalPBPath = new std::string;
        sharedPBPath = new std::string;
    }
    if (personalPBPath->empty() && !findPersonalPhonebook())
        return 0;
    return personalPBDatabase != nullptr || openPersonalPhonebook() ? 1 : 0;
}
