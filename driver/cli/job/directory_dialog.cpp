// The user actions on the phonebook dialog's directory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/directory_dialog.h"

#include "base/error.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/widgets/widget_names.h"

#include <glib.h>

#include <array>
#include <cstdio>
#include <memory>

namespace quelm {
namespace {

constexpr const char* resultList = widget_names::faxPbList;
constexpr const char* pickList = widget_names::faxCurRecipientList;
constexpr int directoryType = 2;

/// Throws why there is no directory, as far as the host was told.
[[noreturn]] void failWithoutDirectory(Driver& driver)
{
    const auto& failure = driver.lastFailure();
    for (const auto& reason : {failure.device, failure.directory})
        if (!reason.empty())
            driver.failWith(reason);
    throw Error(localized("the device tells of no directory server; set one up on the device"));
}

/// The same text for letters in either case, however they are composed.
std::string folded(const std::string& text)
{
    const std::unique_ptr<char, decltype(&g_free)> composed(
        g_utf8_normalize(text.c_str(), -1, G_NORMALIZE_ALL), g_free);
    if (composed == nullptr)
        return text;
    const std::unique_ptr<char, decltype(&g_free)> result(g_utf8_casefold(composed.get(), -1), g_free);
    return result.get();
}

} // namespace

std::string escapedForFilter(std::string_view text)
{
    std::string escaped;
    for (const char character : text) {
        if (std::string_view("*()\\").find(character) == std::string_view::npos) {
            escaped += character;
            continue;
        }
        std::array<char, 4> code{};
        std::snprintf(code.data(), code.size(), "\\%02x", static_cast<unsigned>(character));
        escaped += code.data();
    }
    return escaped;
}

DirectoryDialog::DirectoryDialog(Driver& driver) : driver_(driver)
{
    if (!driver.asksDevice())
        throw Error(localized("the directory is the device's: say with --device-snmp HOST which device that "
                              "is, or with snmp in the group [device] of the configuration file"));
    driver.press(widget_names::addPbFaxRcpt);
    if (!driver.show(widget_names::ldapPbType).sensitive)
        failWithoutDirectory(driver);
    driver.choose(widget_names::currentPbType, directoryType);
    // The component falls back to the user's own phonebook when the server is gone meanwhile.
    if (driver.show(widget_names::currentPbType).value != directoryType)
        failWithoutDirectory(driver);
}

std::vector<DirectoryPerson> DirectoryDialog::search(const std::string& prefix)
{
    if (prefix.size() > longestPrefix)
        throw UsageError(localized("the beginning of a name is longer than %d bytes", longestPrefix));
    const auto surname = prefix.substr(0, prefix.find(','));
    driver_.type(widget_names::searchString, escapedForFilter(surname));
    driver_.press(widget_names::searchButton);
    const auto& failure = driver_.lastFailure();
    if (failure.searchExtent == SearchExtent::none)
        driver_.failWith(failure.directory.empty()
                             ? localized("the directory did not answer; try again later")
                             : failure.directory);
    std::vector<DirectoryPerson> found;
    const auto beginning = folded(prefix);
    const auto rows = driver_.rows(resultList);
    // A limit of the server's own was told by the session.
    if (failure.searchExtent == SearchExtent::upToLimit &&
        rows.size() == static_cast<std::size_t>(driver_.directorySettings().sizeLimit))
        log(Severity::warning,
            localizedCount("the list ends at %d person, which is the limit; write more of the name",
                           "the list ends at %d people, which is the limit; write more of the name",
                           rows.size(), rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& row = rows[i];
        if (surname.size() == prefix.size() || folded(row.at(0)).starts_with(beginning))
            found.push_back({static_cast<int>(i), row.at(0), row.at(1), row.at(3), row.at(4)});
    }
    return found;
}

void DirectoryDialog::add(const DirectoryPerson& person)
{
    const auto before = driver_.rows(pickList).size();
    driver_.select(resultList, {person.row});
    driver_.press(widget_names::addButton2);
    const auto rows = driver_.rows(pickList);
    if (rows.size() != before + 1 || rows.back().at(0) != person.name)
        throw Error(
            localized("the phonebook dialog did not pick %s; nothing is written", oneLine(person.name)));
}

void DirectoryDialog::confirm() { driver_.press(widget_names::lanFaxRcptPbOkButton); }

} // namespace quelm
