// The user actions behind --directory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/directory_recipients.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/job/directory_dialog.h"
#include "driver/core/driver.h"
#include "driver/handover/recipient_watch.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <string>

namespace quelm {
namespace {

/// "Miller, Anne; Miller, Bob; ...": enough of them to tell what to add to the name.
std::string someNames(const std::vector<DirectoryPerson>& people)
{
    constexpr std::size_t most = 5;
    std::string names;
    for (std::size_t i = 0; i < std::min(most, people.size()); ++i)
        names += (names.empty() ? "" : "; ") + oneLine(people[i].name);
    return people.size() > most ? names + "; ..." : names;
}

const DirectoryPerson& theOne(const std::vector<DirectoryPerson>& people, const std::string& origin)
{
    if (people.empty())
        throw Error(localized("%s: nobody in the directory has a surname that begins like this", origin));
    if (people.size() > 1)
        throw Error(localizedCount("%s: %d person matches (%s); write more of the name, such as \"%s\"",
                                   "%s: %d people match (%s); write more of the name, such as \"%s\"",
                                   people.size(), origin, people.size(), someNames(people),
                                   oneLine(people.front().name)));
    if (people.front().number.empty())
        throw Error(localized("%s: %s has no fax number in the directory; give it with --to", origin,
                              oneLine(people.front().name)));
    return people.front();
}

bool holds(const Driver& driver, const char* list, const DirectoryPerson& person)
{
    return std::ranges::any_of(driver.rows(list), [&](const auto& row) {
        return row.at(0) == person.name && row.at(1) == person.number;
    });
}

bool inJob(const Driver& driver, const DirectoryPerson& person)
{
    return holds(driver, widget_names::lanFaxRecipientList, person) ||
           holds(driver, widget_names::faxCurRecipientList, person);
}

} // namespace

void addDirectoryRecipients(Driver& driver, const JobOptions& options, RecipientWatch& watch)
{
    if (options.directory.empty())
        return;
    DirectoryDialog dialog(driver);
    for (const auto& prefix : options.directory) {
        const auto origin = "--directory " + oneLine(prefix);
        const auto people = dialog.search(prefix);
        // Whoever is the only one of a part need not be the only one.
        if (people.size() < 2 && driver.lastFailure().searchExtent != SearchExtent::whole)
            throw Error(localized("%s: the search ended early, and others may match; write more of the "
                                  "name, or try again later",
                                  origin));
        const auto& person = theOne(people, origin);
        if (options.duplicates != Duplicates::skip || !inJob(driver, person))
            dialog.add(person);
        watch.require(origin);
    }
    dialog.confirm();
}

} // namespace quelm
