// The texts of commands: one place for all, so that they are worded alike.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_help.h"

#include "base/command_line/help_texts.h"
#include "base/translation.h"

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

namespace quelm {
namespace {

/// One command of a program, and what to say of it.
class Command {
public:
    Command(CLI::App& program, const char* path) : texts_(keptHelp(commandAt(program, path))) {}

    Command& says(const std::string& paragraph)
    {
        texts_.details.push_back(paragraph);
        return *this;
    }
    Command& example(const char* line, const std::string& text)
    {
        texts_.examples.push_back({line, text});
        return *this;
    }

private:
    HelpTexts& texts_;
};

std::vector<ExplainedWords> environment()
{
    return {
        {"XDG_CONFIG_HOME, XDG_CONFIG_DIRS",
         localized(
             "Where quelm/quelm.conf, the configuration, and the user's saved choices are looked for; by "
             "default ~/.config, then /etc/xdg.")},
        {"XDG_DATA_HOME", localized("Below it are the user's phonebooks; by default ~/.local/share.")},
        {"XDG_STATE_HOME", localized("Below it is the outbox; by default ~/.local/state.")},
        {"LANGUAGE, LC_ALL, LC_MESSAGES, LANG", localized("The language of messages and help.")},
        {"CUPS_SERVER", localized("The print server of --queue.")},
        {"TMPDIR", localized("The folder for files that are needed for a while; by default /tmp.")},
    };
}

std::vector<ExplainedWords> files()
{
    return {
        {"~/.config/quelm/quelm.conf", localized("The user's configuration.")},
        {"/etc/xdg/quelm/quelm.conf", localized("The configuration for all users.")},
        {"~/.local/share/quelm/db/phonebook/", localized("The user's phonebooks.")},
        {"~/.local/state/quelm/outbox/", localized("Jobs that wait, and those that were handed over.")},
    };
}

void addProgram(CLI::App& program)
{
    HelpTexts texts;
    texts.details = {localized(
        "It loads the component and does to its dialogs what a person would do. Without a command it "
        "opens the desktop.")};
    texts.examples = {{"quelm-driver fax letter.pdf --to \"Ann=555-1234\" --device fax.example",
                       localized("Hands a letter for Ann to a fax device.")},
                      {"quelm-driver letter.pdf", localized("Opens the letter on the desktop.")},
                      {"quelm-driver help fax", localized("Shows all that can be said of a fax.")}};
    texts.environment = environment();
    texts.files = files();
    texts.related = {"quelm-desktop(1)", "fennodial(1)", "quelm-device(1)"};
    addHelp(program, std::move(texts));
    Command(program, "help")
        .example("quelm-driver help fax", localized("Shows the options of the command fax."))
        .example("quelm-driver help phonebook import", localized("Shows those of a command in two words."));
}

void addJobs(CLI::App& program)
{
    Command(program, "fax")
        .says(localized(
            "What is not said here is as the user saved it in the fax dialog; an option holds for this job "
            "alone. A destination is needed, unless one is configured: --output, --device, --queue or "
            "--destination."))
        .example("quelm-driver fax letter.pdf --to \"Ann=555-1234\" --device fax.example",
                 localized("Hands a letter for Ann to a fax device."))
        .example("quelm-driver fax letter.pdf --recipients sales.csv --cover --dry-run",
                 localized("Says what would go out, with a cover sheet, and to whom."))
        .example("quelm-driver fax letter.pdf --group Team --queue fax --send-at 17:30",
                 localized("Sends to a group of the phonebook in the evening."))
        .example("quelm-driver fax letter.pdf --to 555-1234 --device fax.example --json --quiet",
                 localized("Sends to a number, and answers what became of it as data."));
    Command(program, "attributes")
        .says(localized(
            "They come out byte for byte as the component writes them, on standard output unless --output "
            "names a file."))
        .example("quelm-driver attributes --to \"Ann=555-1234\" --resolution fine",
                 localized("Shows the lines of a fax to Ann."))
        .example("quelm-driver attributes --recipients sales.csv --output lines.txt",
                 localized("Writes those of a fax to a list of people into a file."));
    Command(program, "script")
        .says(localized(
            "A script does to the dialogs what a person could do, one action a line, and answers each on "
            "standard output."))
        .example("quelm-driver script steps.txt", localized("Carries out the lines of a file."))
        .example("quelm-driver script --list",
                 localized("Lists the widgets and functions that a script can name."))
        .example("quelm-driver script - < steps.txt", localized("Reads them from standard input."));
}

void addPhonebook(CLI::App& program)
{
    Command(program, "phonebook")
        .says(localized(
            "Without --file or --shared it is the user's own phonebook, which the fax dialog keeps, too."))
        .example("quelm-driver phonebook list", localized("Lists the user's own phonebook."))
        .example("quelm-driver phonebook add \"Ann Lee\" 555-1234", localized("Adds somebody to it."));
    Command(program, "phonebook list")
        .example("quelm-driver phonebook list", localized("Shows names and numbers."))
        .example("quelm-driver phonebook list --shared office.xdb --format csv",
                 localized("Writes all fields of a phonebook of others."));
    Command(program, "phonebook show")
        .example("quelm-driver phonebook show \"Ann Lee\"", localized("Shows an entry."))
        .example("quelm-driver phonebook show \"[Team]\"",
                 localized("Shows a group, whatever entries there are."));
    Command(program, "phonebook add")
        .example("quelm-driver phonebook add \"Ann Lee\" 555-1234 --organization \"Acme, Inc.\"",
                 localized("Adds somebody with the organization."))
        .example("quelm-driver phonebook add \"Ann Lee\" 555-9876 --replace",
                 localized("Puts another entry in the place of hers."));
    Command(program, "phonebook add-group")
        .example("quelm-driver phonebook add-group Team \"Ann Lee\" \"Bob Day\"",
                 localized("Makes a group of two entries."))
        .example("quelm-driver phonebook add-group Team \"Bob Day\" --replace",
                 localized("Leaves one of them in it."));
    Command(program, "phonebook remove")
        .example("quelm-driver phonebook remove \"Ann Lee\"", localized("Removes an entry."))
        .example("quelm-driver phonebook remove \"[Team]\"", localized("Removes a group; its members stay."));
    Command(program, "phonebook import")
        .says(localized("All of the file comes in or, when something of it cannot be used, nothing."))
        .example("quelm-driver phonebook import contacts.vcf", localized("Brings in cards."))
        .example("quelm-driver phonebook import contacts.csv --skip-bad",
                 localized("Brings in the rows that can be used."));
    Command(program, "phonebook export")
        .example("quelm-driver phonebook export contacts.vcf", localized("Writes cards, version 4.0."))
        .example("quelm-driver phonebook export - --format csv", localized("Writes CSV on standard output."));
}

void addNetwork(CLI::App& program)
{
    Command(program, "device")
        .example("quelm-driver device info --device-snmp fax.example",
                 localized("Asks a device for its settings."));
    Command(program, "device info")
        .says(localized("One line for each field, as the dialog \"LDAP Information\" shows them."))
        .example("quelm-driver device info", localized("Asks the device of the configuration."))
        .example("quelm-driver device info --device-snmp fax.example", localized("Asks another one."));
    Command(program, "directory")
        .example("quelm-driver directory search Smi", localized("Lists Smiths and Smithers."));
    Command(program, "directory search")
        .says(localized("Each line has the name, the fax number, the phone number and the e-mail address."))
        .example("quelm-driver directory search Smi", localized("Lists Smiths and Smithers."))
        .example("quelm-driver directory search \"Smith, A\" --device-snmp fax.example",
                 localized("Lists the Smiths whose given name begins with A."));
}

void addConfig(CLI::App& program)
{
    Command(program, "config")
        .says(localized(
            "The user's file goes over those of all users, key by key; what he chose in the fax dialog goes "
            "over both."))
        .example("quelm-driver config show", localized("Shows what holds, and where that stands."))
        .example("quelm-driver config check", localized("Says everything that is wrong."));
    Command(program, "config show")
        .says(localized("Secrets are shown as stars."))
        .example("quelm-driver config show", localized("Shows what holds, and where that stands."))
        .example("quelm-driver config show --json", localized("The same for other programs."));
    Command(program, "config check")
        .example("quelm-driver config check", localized("Looks at the files that are in use."))
        .example("quelm-driver config check new.conf", localized("Looks at a file before it is installed."));
}

void addOutbox(CLI::App& program)
{
    Command(program, "outbox")
        .says(localized(
            "The outbox keeps jobs until their time, and those that were handed over for a while. That a "
            "job was handed over does not mean that the fax was sent."))
        .example("quelm-driver outbox list", localized("Shows what waits and what was handed over."))
        .example("quelm-driver outbox run --wait", localized("Hands jobs over until none waits."));
    Command(program, "outbox list")
        .example("quelm-driver outbox list", localized("Shows a line for each job."))
        .example("quelm-driver outbox list --json", localized("The same for other programs."));
    Command(program, "outbox show")
        .example("quelm-driver outbox show 7", localized("Shows job 7."))
        .example("quelm-driver outbox show 7 --json", localized("The same for other programs."));
    Command(program, "outbox cancel")
        .example("quelm-driver outbox cancel 7", localized("Cancels job 7."))
        .example("quelm-driver outbox cancel 7 8", localized("Cancels two jobs."));
    Command(program, "outbox send")
        .example("quelm-driver outbox send 7", localized("Hands job 7 over at once."))
        .example("quelm-driver outbox send 7 --yes",
                 localized("Also when the device may have it already, without asking."));
    Command(program, "outbox resend")
        .example("quelm-driver outbox resend 7", localized("Sends job 7 to the same people again."))
        .example("quelm-driver outbox resend 7 --to \"Bob=555-9876\"", localized("Sends it to Bob instead."));
    Command(program, "outbox run")
        .example("quelm-driver outbox run", localized("Hands over what is due, and ends."))
        .example("quelm-driver outbox run --wait --quiet",
                 localized("Stays until no job waits, and says only what went out or failed."));
}

} // namespace

void addDriverHelp(CLI::App& program)
{
    addProgram(program);
    addJobs(program);
    addPhonebook(program);
    addNetwork(program);
    addConfig(program);
    addOutbox(program);
}

void addDesktopHelp(CLI::App& program)
{
    HelpTexts texts;
    texts.details = {localized("The desktop shows a document page by page, and the fax dialog for it.")};
    texts.examples = {{"quelm-desktop", localized("Opens an empty window.")},
                      {"quelm-desktop letter.pdf", localized("Opens a letter.")}};
    texts.environment = environment();
    texts.environment.push_back({"DISPLAY, WAYLAND_DISPLAY", localized("The screen.")});
    texts.files = files();
    texts.related = {"quelm-driver(1)", "fennodial(1)"};
    addHelp(program, std::move(texts));
}

} // namespace quelm
