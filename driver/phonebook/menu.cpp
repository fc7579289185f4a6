// Reads the user's commands and carries them out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/menu.h"

#include "base/error.h"
#include "base/terminal/progress_line.h"
#include "base/terminal/yes_no.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/actions.h"
#include "driver/phonebook/import.h"
#include "driver/phonebook/import_words.h"
#include "driver/phonebook/listing.h"

#include <algorithm>
#include <istream>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

/// The rest of a line behind a command's words; nothing when it begins with something else.
std::optional<std::string> after(const std::string& line, std::string_view command)
{
    if (!line.starts_with(command))
        return std::nullopt;
    if (line.size() > command.size() && line[command.size()] != ' ')
        return std::nullopt;
    return tidied(std::string_view(line).substr(command.size()));
}

void print(std::ostream& output, const Outcome& outcome)
{
    output << outcome.done;
    for (const auto& warning : outcome.warnings)
        output << localized("warning: %s", oneLine(warning)) << "\n";
}

} // namespace

Menu::Menu(PhonebookPlace place, std::istream& input, std::ostream& output)
    : place_(std::move(place)), input_(input), output_(output)
{
}

void Menu::run()
{
    greet();
    help();
    std::string line;
    while (ask("> ", line)) {
        try {
            if (!carryOut(line))
                return;
        } catch (const Error& error) {
            output_ << oneLine(error.what()) << "\n";
        }
    }
    output_ << "\n";
}

void Menu::greet()
{
    const auto items = Phonebook(place_, Phonebook::Access::read).items();
    // Translators: the file, and what is in it: 12 entries, 1 group.
    output_ << localized("Phonebook %s: %s", oneLine(place_.path), countText(items)) << "\n";
}

void Menu::help()
{
    // Translators: the commands, which are not translated; only NAME and FILE may be.
    output_ << localized("list, show NAME, add, add group, remove NAME, import FILE, export FILE, help, quit")
            << "\n";
}

bool Menu::ask(const std::string& question, std::string& answer)
{
    output_ << question << std::flush;
    if (!std::getline(input_, answer))
        return false;
    answer = tidied(std::string_view(answer));
    return true;
}

bool Menu::agreesTo(const std::string& question)
{
    std::string answer;
    if (!ask(question, answer))
        return false;
    if (isYes(answer))
        return true;
    output_ << localized("nothing was changed") << "\n";
    return false;
}

bool Menu::carryOut(const std::string& line)
{
    const auto needed = [](const std::string& argument, const char* usage) {
        if (argument.empty())
            throw Error(translated(usage));
        return argument;
    };
    if (line.empty())
        return true;
    if (line == "quit" || line == "q" || line == "exit")
        return false;
    if (line == "help" || line == "?")
        help();
    else if (line == "list")
        print(output_, listPhonebook(place_, false));
    else if (line == "add")
        add();
    else if (line == "add group" || line == "add-group")
        addGroupOfEntries();
    else if (const auto shown = after(line, "show"))
        print(output_,
              showItem(place_, needed(*shown, forTranslation("say show NAME, or show [NAME] for a group"))));
    else if (const auto removed = after(line, "remove"))
        removeAfterAsking(needed(*removed, forTranslation("say remove NAME, or remove [NAME] for a group")));
    else if (const auto imported = after(line, "import"))
        importFrom(needed(*imported, forTranslation("say import FILE, a vCard, CSV or LDIF file")));
    else if (const auto exported = after(line, "export"))
        exportTo(
            needed(*exported, forTranslation("say export FILE, whose name ends in .vcf, .csv or .ldif")));
    else
        throw Error(localized("there is no command \"%s\"; help lists what there is", line));
    return true;
}

void Menu::add()
{
    PhonebookEntry entry;
    const bool complete =
        ask(localized("Name: "), entry.name) && ask(localized("Fax number: "), entry.number) &&
        ask(localized("Organization: "), entry.organization) &&
        ask(localized("Phone number: "), entry.phone) && ask(localized("E-mail address: "), entry.email);
    if (!complete)
        return;
    bool replace = false;
    if (Phonebook(place_, Phonebook::Access::read).hasEntry(tidied(std::string_view(entry.name)))) {
        replace = agreesTo(localized("There is an entry of that name. Replace it? [y/n] "));
        if (!replace)
            return;
    }
    print(output_, addEntry(place_, entry, replace));
}

void Menu::addGroupOfEntries()
{
    PhonebookGroup group;
    if (!ask(localized("Name of the group: "), group.name))
        return;
    std::string member;
    do {
        if (!ask(localized("Member (empty when done): "), member))
            return;
        if (!member.empty())
            group.members.push_back(member);
    } while (!member.empty());
    print(output_, addGroup(place_, group, false));
}

void Menu::removeAfterAsking(const std::string& name)
{
    const auto items = Phonebook(place_, Phonebook::Access::read).items();
    const auto* item = findItem(items, name);
    // Translators: %s is: the entry "Ann".
    if (item != nullptr && !agreesTo(localized("Remove %s? [y/n] ", described(*item))))
        return;
    print(output_, removeItem(place_, name));
}

void Menu::importFrom(const std::string& words)
{
    auto file = words;
    auto options = takeImportOptions(file);
    // Commands are read from standard input.
    if (file == "-" || file.empty())
        throw Error(localized("name a file to import"));
    ImportReport report;
    const auto import = [&] {
        ProgressLine progress(localized("Importing"));
        options.progress = [&progress](std::size_t done, std::size_t total) { progress.show(done, total); };
        report = importFile(place_, file, options);
        if (!report.accepted)
            for (const auto& refusal : refusalLines(report))
                output_ << refusal << "\n";
    };
    import();
    if (!report.accepted && std::ranges::any_of(report.refused, &Refusal::mendable)) {
        std::string answer;
        if (!ask(localized("Import those that other names help under such names? [y/n] "), answer))
            return;
        options.settling.rename = isYes(answer);
        if (options.settling.rename)
            import();
    }
    if (!report.accepted) {
        if (!agreesTo(localized("Import the rest without them? [y/n] ")))
            return;
        options.skipBad = true;
        import();
    }
    print(output_, {importSummary(report), report.strayMembers});
}

void Menu::exportTo(const std::string& file)
{
    const auto format = formatByName(file);
    if (!format)
        throw Error(localized("%s: ends in none of .vcf, .csv and .ldif; name the file so", oneLine(file)));
    print(output_, exportFile(place_, file, *format));
}

} // namespace quelm
