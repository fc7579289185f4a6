// Lays out what the help says as a manual page.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/man_page.h"

#include "base/manual/roff.h"
#include "base/translation.h"
#include "base/version.h"

#include <algorithm>

namespace quelm {
namespace {

using roff::bold;
using roff::escaped;
using roff::filled;
using roff::italic;
using roff::request;

std::string pageName(const CommandView& command)
{
    std::string name = command.path;
    std::ranges::replace(name, ' ', '-');
    return name;
}

std::string upperCase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return text;
}

/// As a page's name takes it: without the full stop of a sentence.
std::string summaryOf(std::string description)
{
    if (description.ends_with('.'))
        description.pop_back();
    return description;
}

std::string heading(const std::string& text) { return request("SH", {text}); }

std::string paragraphs(const std::vector<std::string>& texts)
{
    std::string out;
    for (const auto& text : texts)
        out += (out.empty() ? "" : ".PP\n") + filled(escaped(text));
    return out;
}

/// A label with its text indented below it.
std::string item(const std::string& markedLabel, const std::string& text)
{
    return ".TP\n" + markedLabel + "\n" + filled(escaped(text));
}

std::string markedLabel(const OptionView& option)
{
    std::string label;
    for (const auto& name : option.names)
        label += (label.empty() ? "" : ", ") + (option.isPlace ? italic(name) : bold(name));
    return label + (option.value.empty() ? "" : " " + italic(option.value));
}

std::string optionItems(const std::vector<OptionView>& options, const std::string& section)
{
    std::string out;
    for (const auto& option : options)
        if (section.empty() || option.section == section)
            out += item(markedLabel(option), fullDescriptionOf(option));
    return out;
}

std::string synopsis(const CommandView& command)
{
    std::string out;
    for (const auto& usage : usagesOf(command))
        out += (out.empty() ? "" : ".br\n") + filled(bold(command.path) + " " + escaped(usage));
    return out;
}

std::string commandItems(const CommandView& command)
{
    std::string out;
    for (const auto& below : command.commands)
        out += item(bold(below.name), below.description);
    return out;
}

std::string options(const CommandView& command, const CommandView& program)
{
    std::string out;
    const auto sections = sectionsOf(command);
    for (const auto& section : sections)
        out += (sections.size() > 1 ? request("SS", {section}) : "") + optionItems(command.options, section);
    if (!command.inherited.empty())
        // Translators: a program.
        out += request("SS", {localized("Options of %s", program.path)}) + optionItems(command.inherited, "");
    return out;
}

std::string exitStatus()
{
    return item(bold("0"), localized("Done.")) +
           item(bold("1"),
                localized("The job or action failed; a line on standard error says what, where and what "
                          "to do.")) +
           item(bold("2"), localized("Wrong usage, also said in one line."));
}

std::string explained(const std::vector<ExplainedWords>& words)
{
    std::string out;
    for (const auto& one : words)
        out += item(bold(one.words), one.text);
    return out;
}

std::string examples(const std::vector<ExplainedWords>& examples)
{
    std::string out;
    for (const auto& example : examples)
        out += (out.empty() ? "" : ".PP\n") + filled(escaped(example.text)) + ".PP\n.RS 4\n.nf\n" +
               roff::literal(example.words) + ".fi\n.RE\n";
    return out;
}

std::string reference(const std::string& name) { return bold(name) + "(1)"; }

/// The page above, those beside and those below a command.
std::string related(const CommandView& command, const CommandView* above, const CommandView& program)
{
    std::vector<std::string> names;
    if (above != nullptr) {
        names.push_back(reference(pageName(*above)));
        for (const auto& beside : above->commands)
            if (beside.path != command.path)
                names.push_back(reference(pageName(beside)));
    }
    for (const auto& below : command.commands)
        names.push_back(reference(pageName(below)));
    for (const auto& other : program.texts.related)
        names.push_back(reference(other.substr(0, other.find('('))));
    std::string out;
    for (const auto& name : names)
        out += (out.empty() ? "" : ", ") + name;
    return filled(out);
}

/// A part of a page, unless it is empty.
std::string part(const std::string& title, const std::string& content)
{
    return content.empty() ? "" : heading(title) + content;
}

/// The date stands as it is: formatters read it. Names are not parted at the ends of lines.
std::string titleLines(const std::string& name, const CommandView& program, const std::string& date)
{
    return ".\\\" Written by the build from what the program's help says.\n.TH " + escaped(upperCase(name)) +
           " 1 " + date + " \"" + escaped(programAndVersion(program.name)) + "\" \"" +
           escaped(localized("User commands")) + "\"\n.nh\n.ad l\n";
}

std::string pageText(const CommandView& command, const CommandView* above, const CommandView& program,
                     const std::string& date)
{
    const auto name = pageName(command);
    std::vector<std::string> description{command.description};
    description.insert(description.end(), command.texts.details.begin(), command.texts.details.end());
    return titleLines(name, program, date) +
           part(localized("NAME"), filled(escaped(name + " - " + summaryOf(command.description)))) +
           part(localized("SYNOPSIS"), synopsis(command)) +
           part(localized("DESCRIPTION"), paragraphs(description)) +
           part(localized("COMMANDS"), commandItems(command)) +
           part(localized("ARGUMENTS"), optionItems(command.places, "")) +
           part(localized("OPTIONS"), options(command, program)) +
           part(localized("EXIT STATUS"), exitStatus()) +
           part(localized("ENVIRONMENT"), explained(program.texts.environment)) +
           part(localized("FILES"), explained(program.texts.files)) +
           part(localized("EXAMPLES"), examples(command.texts.examples)) +
           part(localized("SEE ALSO"), related(command, above, program));
}

void addPages(std::vector<ManPage>& pages, const CommandView& command, const CommandView* above,
              const CommandView& program, const std::string& date)
{
    pages.push_back({pageName(command), pageText(command, above, program, date)});
    for (const auto& below : command.commands)
        addPages(pages, below, &command, program, date);
}

} // namespace

std::vector<ManPage> manPages(const CommandView& program, const std::string& date)
{
    std::vector<ManPage> pages;
    addPages(pages, program, nullptr, program, date);
    return pages;
}

} // namespace quelm
