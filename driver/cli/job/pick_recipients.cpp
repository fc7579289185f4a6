// The user actions behind --entry, --group and --shared.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/pick_recipients.h"

#include "base/error.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/handover/duplicates.h"
#include "driver/handover/recipient_watch.h"
#include "driver/phonebook/listing.h"
#include "driver/phonebook/phonebook.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace quelm {
namespace {

constexpr const char* phonebookWindow = widget_names::addRcptFromPbWindow;
constexpr const char* phonebookList = widget_names::faxPbList;
constexpr const char* pickList = widget_names::faxCurRecipientList;
constexpr int personalType = 0;
constexpr int sharedType = 1;

/// The shared phonebook that the dialog shows.
std::string sharedPhonebook(const Driver& driver)
{
    auto path = driver.show(widget_names::lanFaxSharedPbName).text.value_or("");
    if (path.empty())
        throw Error(localized("--from-shared: no shared phonebook is chosen in the fax dialog or configured; "
                              "name its file with --shared"));
    return path;
}

PhonebookPlace placeOf(const Driver& driver, const JobOptions& options)
{
    if (options.shared)
        return {std::filesystem::absolute(*options.shared).string(), false};
    if (options.fromShared)
        return {sharedPhonebook(driver), false};
    return personalPhonebook(driver.location(), driver.user());
}

/// One thing to pick: its row in the dialog, and the recipients that it stands for.
struct Pick {
    std::string origin; ///< "--entry Ann", for messages
    int row = -1;
    std::vector<PhonebookEntry> recipients;
};

/// Picks from one phonebook. The dialog tells nothing of what it passes over, so this reads the phonebook,
/// too, and compares.
class RecipientPicker {
public:
    RecipientPicker(Driver& driver, const JobOptions& options, const QuestionPolicy& policy,
                    RecipientWatch& watch)
        : driver_(driver), options_(options), policy_(policy), watch_(watch),
          place_(placeOf(driver, options)), items_(Phonebook(place_, Phonebook::Access::read).listedItems())
    {
        for (const auto& item : items_)
            byKey_.emplace(item.key, &item);
    }

    void pickAll()
    {
        const auto wanted = find();
        openDialog();
        const auto rows = driver_.rows(phonebookList);
        ProgressLine progress(localized("Adding recipients"));
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            progress.show(i, wanted.size());
            requireRow(wanted[i], rows);
            add(wanted[i], progress);
        }
        driver_.press(widget_names::lanFaxRcptPbOkButton);
    }

private:
    std::vector<Pick> find() const
    {
        std::vector<Pick> picks;
        for (const auto& name : options_.entries)
            picks.push_back(findEntry(name));
        for (const auto& name : options_.groups)
            picks.push_back(findGroup(name));
        return picks;
    }

    Pick findEntry(const std::string& name) const
    {
        const auto origin = "--entry " + oneLine(name);
        std::optional<Pick> found;
        for (std::size_t i = 0; i < items_.size(); ++i) {
            const auto* entry = std::get_if<PhonebookEntry>(&items_[i].content);
            if (entry == nullptr || entry->name != name)
                continue;
            // Under keys of their own, which another program may have given them.
            if (found)
                // Translators: an option, such as --entry Ann, and a file.
                throw Error(localized("%s: the phonebook %s has two entries of that name; rename one of them",
                                      origin, oneLine(place_.path)));
            found = Pick{origin, static_cast<int>(i), {*entry}};
        }
        if (found)
            return *found;
        throw Error(
            // Translators: an option, such as --entry Ann, and a file.
            localized("%s: is no entry of the phonebook %s; quelm-driver phonebook list shows what there is",
                      origin, oneLine(place_.path)));
    }

    Pick findGroup(const std::string& name) const
    {
        const auto origin = "--group " + oneLine(name);
        for (std::size_t i = 0; i < items_.size(); ++i) {
            const auto* group = std::get_if<PhonebookGroup>(&items_[i].content);
            if (group != nullptr && group->name == name)
                return {origin, static_cast<int>(i), membersOf(*group, origin)};
        }
        throw Error(
            // Translators: an option, such as --group Sales, and a file.
            localized("%s: is no group of the phonebook %s; quelm-driver phonebook list shows what there is",
                      origin, oneLine(place_.path)));
    }

    /// The dialog would pass over a member that is not there, and the fax would miss somebody, or reach
    /// somebody else in the place of one whose name is cut.
    std::vector<PhonebookEntry> membersOf(const PhonebookGroup& group, const std::string& origin) const
    {
        std::vector<PhonebookEntry> members;
        if (!group.cutName.empty())
            // Translators: an option, such as --group Sales, and the beginning of a name.
            throw Error(localized("%s: the name of a member ends at its comma and is cut to \"%s\"; save the "
                                  "member's entry and the group under names without a comma",
                                  origin, shownText(group.cutName, 40)));
        for (const auto& name : group.members) {
            const auto found = byKey_.find(entryKey(name));
            const auto* entry =
                found == byKey_.end() ? nullptr : std::get_if<PhonebookEntry>(&found->second->content);
            if (entry == nullptr)
                throw Error(
                    localized("%s: its member \"%s\" is not in the phonebook; add it, or replace the group",
                              origin, oneLine(name)));
            members.push_back(*entry);
        }
        if (members.empty())
            throw Error(localized("%s: the group has no member; replace it", origin));
        return members;
    }

    void openDialog()
    {
        if (options_.shared)
            choosePhonebook();
        driver_.press(widget_names::addPbFaxRcpt);
        driver_.choose(widget_names::currentPbType,
                       options_.shared || options_.fromShared ? sharedType : personalType);
        if (!driver_.show(phonebookWindow).visible)
            throw Error(localized("the component does not open its phonebook dialog; use --to instead"));
        if (driver_.failedCallbacks() != 0)
            // Translators: %s is what to do about it.
            throw Error(localized("the phonebook dialog cannot list the phonebook; %s", remedy()));
    }

    /// The preferences' file chooser decides which file is the shared phonebook.
    void choosePhonebook()
    {
        constexpr const char* chooser = "SharedPBSelectFileDialog";
        try {
            driver_.press(widget_names::selectSharedPbButton);
            driver_.type(chooser, place_.path);
            driver_.press(chooser);
        } catch (const Error& error) {
            throw Error("--shared " + oneLine(*options_.shared) + ": " + error.what());
        }
    }

    /// The dialog takes the record whose place among those that can be read is that of the row. Another
    /// component, or a phonebook that has just changed, makes the two differ.
    void requireRow(const Pick& pick, const std::vector<std::vector<std::string>>& rows) const
    {
        const auto& content = items_[static_cast<std::size_t>(pick.row)].content;
        const auto* group = std::get_if<PhonebookGroup>(&content);
        const auto expected = group != nullptr
                                  ? std::pair("[" + group->name + "]", std::string())
                                  : std::pair(pick.recipients.front().name, pick.recipients.front().number);
        const auto row = static_cast<std::size_t>(pick.row);
        if (row < rows.size() && rows[row].at(0) == expected.first && rows[row].at(1) == expected.second)
            return;
        // Translators: an option, such as --entry Ann, and what to do about it.
        throw Error(localized("%s: the phonebook dialog lists something else in its place; %s", pick.origin,
                              remedy()));
    }

    std::string remedy() const
    {
        const auto unreadable = unreadableRecords(items_, place_.path);
        return unreadable.empty() ? localized("the phonebook has just changed, try again")
                                  : localized("remove what cannot be read first: %s", unreadable.front());
    }

    void add(const Pick& pick, ProgressLine& progress)
    {
        const auto before = driver_.rows(pickList).size();
        driver_.select(phonebookList, {pick.row});
        driver_.press(widget_names::addButton);
        auto expected = pick.recipients;
        std::size_t next = 0; // the members ahead of it are done with
        while (const auto question = driver_.pendingQuestion()) {
            next = asked(expected, next, question->text, pick.origin);
            progress.wipe();
            const bool yes =
                !holdsRecipient(driver_.faxSession(), expected[next].name, expected[next].number) ||
                policy_.addDuplicate(question->text, pick.origin);
            driver_.answer(yes);
            if (yes)
                ++next;
            else
                expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(next));
        }
        const auto rows = driver_.rows(pickList);
        const auto picked = [&](std::size_t i) {
            return rows[before + i].at(0) == expected[i].name && rows[before + i].at(1) == expected[i].number;
        };
        bool same = rows.size() == before + expected.size();
        for (std::size_t i = 0; same && i < expected.size(); ++i)
            same = picked(i);
        if (!same)
            throw Error(localized(
                "%s: the phonebook dialog did not pick what was asked for; nothing is written", pick.origin));
        watch_.require(pick.origin);
    }

    /// Which of the recipients a question is about.
    static std::size_t asked(const std::vector<PhonebookEntry>& recipients, std::size_t from,
                             const std::string& question, const std::string& origin)
    {
        for (auto i = from; i < recipients.size(); ++i)
            if (question.find("   " + recipients[i].name + "\r\n") != std::string::npos &&
                question.find("   " + recipients[i].number + "\r\n") != std::string::npos)
                return i;
        throw Error(
            localized("%s: the phonebook dialog asks about somebody else; nothing is written", origin));
    }

    Driver& driver_;
    const JobOptions& options_;
    const QuestionPolicy& policy_;
    RecipientWatch& watch_;
    PhonebookPlace place_;
    std::vector<Phonebook::Item> items_;
    std::unordered_map<std::string_view, const Phonebook::Item*> byKey_;
};

} // namespace

void pickRecipients(Driver& driver, const JobOptions& options, const QuestionPolicy& policy,
                    RecipientWatch& watch)
{
    if (!options.entries.empty() || !options.groups.empty())
        RecipientPicker(driver, options, policy, watch).pickAll();
    else if (options.shared)
        throw UsageError(localized("--shared needs --entry or --group"));
    else if (options.fromShared)
        throw UsageError(localized("%s needs %s", "--from-shared", "--entry"));
}

} // namespace quelm
