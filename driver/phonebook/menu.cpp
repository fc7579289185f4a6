// Reads the user's commands and carries them out.
#include "driver/phonebook/menu.h"

#include "driver/core/error.h"
#include "driver/core/log.h"
#include "driver/core/progress_line.h"
#include "driver/phonebook/actions.h"
#include "driver/phonebook/import.h"
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
        output << "warning: " << oneLine(warning) << "\n";
}

std::string counted(std::ptrdiff_t count, const char* one, const char* many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
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
    const auto groups = std::ranges::count_if(items, [](const Phonebook::Item& item) {
        return std::holds_alternative<PhonebookGroup>(item.content);
    });
    const auto readable = static_cast<std::ptrdiff_t>(readableItems(items).size());
    output_ << "Phonebook " << oneLine(place_.path) << ": " << counted(readable - groups, "entry", "entries")
            << ", " << counted(groups, "group", "groups") << "\n";
}

void Menu::help()
{
    output_ << "list, show NAME, add, add group, remove NAME, import FILE, export FILE, help, quit\n";
}

bool Menu::ask(const char* question, std::string& answer)
{
    output_ << question << std::flush;
    if (!std::getline(input_, answer))
        return false;
    answer = tidied(std::string_view(answer));
    return true;
}

bool Menu::carryOut(const std::string& line)
{
    const auto needed = [](const std::string& argument, const char* what) {
        if (argument.empty())
            throw Error(std::string("say ") + what);
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
        print(output_, showItem(place_, needed(*shown, "show NAME, or show [NAME] for a group")));
    else if (const auto removed = after(line, "remove"))
        removeAfterAsking(needed(*removed, "remove NAME, or remove [NAME] for a group"));
    else if (const auto imported = after(line, "import"))
        importFrom(needed(*imported, "import FILE, a vCard or CSV file"));
    else if (const auto exported = after(line, "export"))
        exportTo(needed(*exported, "export FILE, whose name ends in .vcf or .csv"));
    else
        throw Error("there is no command \"" + line + "\"; help lists what there is");
    return true;
}

void Menu::add()
{
    PhonebookEntry entry;
    const bool complete = ask("Name: ", entry.name) && ask("Fax number: ", entry.number) &&
                          ask("Organization: ", entry.organization) && ask("Phone number: ", entry.phone) &&
                          ask("E-mail address: ", entry.email);
    if (!complete)
        return;
    bool replace = false;
    if (Phonebook(place_, Phonebook::Access::read).hasEntry(tidied(std::string_view(entry.name)))) {
        std::string answer;
        if (!ask("There is an entry of that name. Replace it? [y/n] ", answer))
            return;
        replace = answer == "y" || answer == "yes";
        if (!replace) {
            output_ << "nothing was changed\n";
            return;
        }
    }
    print(output_, addEntry(place_, entry, replace));
}

void Menu::addGroupOfEntries()
{
    PhonebookGroup group;
    if (!ask("Name of the group: ", group.name))
        return;
    std::string member;
    do {
        if (!ask("Member (empty when done): ", member))
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
    if (item != nullptr) {
        std::string answer;
        if (!ask(("Remove " + described(*item) + "? [y/n] ").c_str(), answer))
            return;
        if (answer != "y" && answer != "yes") {
            output_ << "nothing was changed\n";
            return;
        }
    }
    print(output_, removeItem(place_, name));
}

void Menu::importFrom(const std::string& file)
{
    // Commands are read from standard input.
    if (file == "-")
        throw Error("name a file to import");
    ImportReport report;
    const auto import = [&](bool skipBad) {
        ProgressLine progress("Importing");
        ImportOptions options;
        options.skipBad = skipBad;
        options.progress = [&progress](std::size_t done, std::size_t total) { progress.show(done, total); };
        report = importFile(place_, file, options);
    };
    import(false);
    if (!report.written) {
        for (const auto& refusal : refusalLines(report))
            output_ << refusal << "\n";
        std::string answer;
        if (!ask("Import the rest without them? [y/n] ", answer))
            return;
        if (answer != "y" && answer != "yes") {
            output_ << "nothing was changed\n";
            return;
        }
        import(true);
    }
    print(output_, {importSummary(report), report.strayMembers});
}

void Menu::exportTo(const std::string& file)
{
    const auto format = formatByName(file);
    if (!format)
        throw Error(oneLine(file) + ": ends in neither .vcf nor .csv; name the file so");
    print(output_, exportFile(place_, file, *format));
}

} // namespace quelm
