// Goes through a job's parts: PJL ahead of the document, the document, PJL behind it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/job_reader.h"

#include "base/translation.h"
#include "device/stream/attribute_section.h"
#include "device/stream/card_digits.h"
#include "device/stream/document_comments.h"
#include "device/stream/line_splitter.h"
#include "device/stream/remarks.h"
#include "device/stream/titles.h"
#include "device/stream/words.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace quelm::device {
namespace {

/// Universal exit language: ends whatever the device was doing.
constexpr std::string_view uel = "\x1B%-12345X";

/// What systems put around a job that is no part of it.
constexpr std::string_view aroundJobs = " \t\r\n\f\x04";

/// A command of PJL taken apart.
struct Command {
    std::string_view name;
    std::string_view rest;
};

/// Nothing for a line that is none.
std::optional<Command> commandOf(std::string_view line)
{
    constexpr std::string_view prefix = "@PJL";
    if (!beginsWithWord(line, prefix))
        return std::nullopt;
    line.remove_prefix(prefix.size());
    if (!line.empty() && !isBlank(line.front()))
        return std::nullopt;
    skipBlanks(line);
    const auto name = takeWord(line);
    return Command{name, line};
}

/// The language in `@PJL ENTER LANGUAGE=POSTSCRIPT`.
std::string_view languageOf(std::string_view rest)
{
    skipBlanks(rest);
    if (!equalWords(takeWord(rest), "LANGUAGE"))
        return {};
    skipBlanks(rest);
    if (!rest.starts_with('='))
        return {};
    rest.remove_prefix(1);
    skipBlanks(rest);
    return takeWord(rest);
}

} // namespace

struct JobReader::State {
    enum class Place {
        ahead,    ///< nothing has come yet
        commands, ///< PJL, up to the document
        document,
        behind,  ///< PJL behind the document
        complete ///< what comes is another job's
    };

    explicit State(std::uint64_t firstLine) : lines(firstLine) {}

    void takeText(std::string_view bytes);
    void takeUel();
    void takeLine();
    void takeAhead(const Line& line);
    void takeCommand(const Line& line);
    void takeBehind(const Line& line);
    void beginDocument(std::uint64_t offset);
    void finishPjl();
    void finishDsc();
    /// True when a line that was not read as an attribute makes the job a fax that is malformed.
    bool finishMisspelt();

    LineSplitter lines;
    std::size_t uelMatched = 0; ///< bytes of a UEL that have come
    bool hasContent = false;
    bool beganWithUel = false;
    Place place = Place::ahead;

    Remarks refusals;
    Remarks objections;
    AttributeSection pjl{JobForm::pjl, refusals, objections};
    AttributeSection dsc{JobForm::dsc, refusals, objections};
    DocumentComments document{dsc};

    bool isPjl = false;            ///< the job begins with PJL
    bool hasJobCommand = false;    ///< it has said JOB
    bool hasEntered = false;       ///< it has said ENTER LANGUAGE
    bool hasEndCommand = false;    ///< it has said EOJ
    bool hasUelBehind = false;     ///< UEL came behind its document
    bool isWhole = false;          ///< and again behind EOJ
    std::string name;              ///< in JOB
    std::uint64_t brokenName = 0;  ///< the line of a name that holds a quotation mark; 0 for none
    std::uint64_t commandsEnd = 0; ///< the line behind which the document stands
    std::optional<std::uint64_t> documentBegin;
    std::uint64_t documentEnd = 0;
};

void JobReader::State::takeText(std::string_view bytes)
{
    hasContent = hasContent || bytes.find_first_not_of(aroundJobs) != std::string_view::npos;
    while (!bytes.empty()) {
        bytes.remove_prefix(lines.take(bytes));
        if (lines.isReady())
            takeLine();
    }
}

void JobReader::State::takeLine()
{
    const auto& line = lines.line();
    switch (place) {
    case Place::ahead:
        takeAhead(line);
        break;
    case Place::commands:
        takeCommand(line);
        break;
    case Place::document:
        document.take(line);
        break;
    case Place::behind:
        takeBehind(line);
        break;
    case Place::complete:
        break;
    }
    lines.next();
}

void JobReader::State::takeAhead(const Line& line)
{
    const auto begin = line.text.find_first_not_of(aroundJobs);
    if (begin == std::string::npos)
        return;
    isPjl = commandOf(line.text).has_value();
    if (isPjl) {
        place = Place::commands;
        return takeCommand(line);
    }
    // Some systems begin with the sign that ended the job before.
    Line first = line;
    first.text.erase(0, std::min(first.text.find_first_not_of('\x04'), first.text.size()));
    beginDocument(line.begin + line.text.size() - first.text.size());
    document.take(first);
}

void JobReader::State::beginDocument(std::uint64_t offset)
{
    place = Place::document;
    documentBegin = offset;
}

void JobReader::State::takeCommand(const Line& line)
{
    const auto command = commandOf(line.text);
    if (!command) {
        if (line.text.find_first_not_of(aroundJobs) == std::string::npos)
            return;
        beginDocument(line.begin);
        return document.take(line);
    }
    if (equalWords(command->name, "ENTER")) {
        const auto language = languageOf(command->rest);
        hasEntered = true;
        commandsEnd = line.number;
        if (!equalWords(language, "POSTSCRIPT"))
            refusals.add(line.number,
                         localized("the document's language is \"%s\"; the device has POSTSCRIPT alone",
                                   shownPart(language)));
        beginDocument(lines.offset());
    } else if (equalWords(command->name, "JOB")) {
        if (hasJobCommand)
            refusals.add(line.number, localized("a job begins within the job"));
        else if (pjl.hasLines())
            refusals.add(line.number, localized("the attribute lines stand ahead of \"@PJL JOB\""));
        hasJobCommand = true;
        name = nameAmongOptions(command->rest);
        if (!areQuotedWhole(command->rest))
            brokenName = line.number;
    } else if (equalWords(command->name, "EOJ")) {
        refusals.add(line.number, localized("\"@PJL EOJ\" stands ahead of the document"));
    } else {
        pjl.take(line);
    }
}

void JobReader::State::takeBehind(const Line& line)
{
    if (line.text.find_first_not_of(aroundJobs) == std::string::npos)
        return;
    const auto command = commandOf(line.text);
    if (command && equalWords(command->name, "EOJ")) {
        hasEndCommand = true;
        return;
    }
    const auto parts = attributeLine(JobForm::pjl, line.text);
    const bool isAnotherJob = !command || equalWords(command->name, "JOB") ||
                              equalWords(command->name, "ENTER") || (parts && parts->known != nullptr);
    if (isAnotherJob && !hasEndCommand)
        refusals.add(line.number, localized("the job goes on behind its document, without \"@PJL EOJ\""));
    else if (isAnotherJob)
        refusals.add(line.number, localized("the job goes on behind \"@PJL EOJ\", without UEL"));
}

void JobReader::State::takeUel()
{
    lines.endLine();
    if (lines.isReady())
        takeLine();
    const auto begin = lines.offset();
    lines.skip(uel.size());
    switch (place) {
    case Place::ahead:
        beganWithUel = true;
        return;
    case Place::document:
        documentEnd = begin;
        hasUelBehind = true;
        place = hasJobCommand ? Place::behind : Place::complete;
        return;
    case Place::behind:
        isWhole = hasEndCommand;
        place = Place::complete;
        return;
    case Place::commands:
    case Place::complete:
        place = Place::complete;
        return;
    }
}

JobReader::JobReader(std::uint64_t firstLine) : state_(std::make_unique<State>(firstLine)) {}

JobReader::~JobReader() = default;

std::size_t JobReader::take(std::string_view bytes)
{
    auto& state = *state_;
    std::size_t taken = 0;
    while (taken < bytes.size() && state.place != State::Place::complete) {
        if (state.uelMatched == 0) {
            const auto rest = bytes.substr(taken);
            const auto text = rest.substr(0, rest.find(uel.front()));
            state.takeText(text);
            taken += text.size();
            if (text.size() == rest.size())
                break;
        }
        if (bytes[taken] == uel[state.uelMatched]) {
            ++state.uelMatched;
            ++taken;
            if (state.uelMatched == uel.size()) {
                state.uelMatched = 0;
                state.takeUel();
            }
        } else {
            state.takeText(uel.substr(0, std::exchange(state.uelMatched, 0)));
        }
    }
    return taken;
}

bool JobReader::isComplete() const { return state_->place == State::Place::complete; }

bool JobReader::hasContent() const { return state_->hasContent; }

bool JobReader::isEmpty() const { return !state_->hasContent && state_->uelMatched == 0; }

std::uint64_t JobReader::nextLine() const { return state_->lines.line().number; }

void JobReader::State::finishPjl()
{
    if (!beganWithUel)
        refusals.add(pjl.firstLine(), localized("the job does not begin with UEL"));
    if (!hasJobCommand)
        refusals.add(pjl.firstLine(), localized("\"@PJL JOB\" is missing ahead of the attribute lines"));
    if (!hasEntered)
        refusals.add(0,
                     localized("\"@PJL ENTER LANGUAGE=POSTSCRIPT\" is missing behind the attribute lines"));
    if (brokenName != 0)
        refusals.add(brokenName, localized("the job's name holds a quotation mark"));
    pjl.finish(commandsEnd);
    if (!document.endsInForm())
        objections.add(0, localized("the document does not end in \"%s\"", lastDocumentLine));
}

void JobReader::State::finishDsc()
{
    if (!document.beginsInForm())
        refusals.add(dsc.firstLine(),
                     localized("the document does not begin with \"%s\"", firstDocumentLine));
    const auto end = document.headerEndLine();
    if (end == 0)
        refusals.add(0, localized("the attribute lines do not end with \"%s\"", headerEnd));
    else if (!document.hasWholeHeader() && document.nearAttribute() != end)
        refusals.add(end, localized("the header comments end here, and not with \"%s\"", headerEnd));
    if (document.hasWholeHeader() && document.anotherJob() != 0)
        refusals.add(document.anotherJob(),
                     localized("another job's attribute lines stand in the document; end each job with UEL, "
                               "or its connection"));
    // What is missing may stand below the place where the header was cut in two.
    if (document.hasWholeHeader() || document.nearAttribute() == 0)
        dsc.finish(end);
    if (!document.endsInForm())
        refusals.add(0, localized("the job is not whole: it does not end in \"%s\"", lastDocumentLine));
}

bool JobReader::State::finishMisspelt()
{
    const auto near = document.nearAttribute();
    const bool isDscFax = dsc.hasLines() && document.hasWholeHeader();
    if (near == 0 || pjl.hasLines() || isDscFax)
        return pjl.isMisspelt() || dsc.isMisspelt();
    if (near == document.headerEndLine())
        dsc.refuseMisspelt(near);
    else
        refusals.add(near, localized("the line looks like an attribute, but stands behind the header "
                                     "comments, which end in line %d",
                                     document.headerEndLine()));
    return true;
}

ReceivedJob JobReader::finish()
{
    auto& state = *state_;
    if (state.uelMatched > 0)
        state.takeText(uel.substr(0, std::exchange(state.uelMatched, 0)));
    state.lines.endLine();
    if (state.lines.isReady())
        state.takeLine();

    ReceivedJob job;
    job.size = state.lines.offset();
    const bool hasPjl = state.pjl.hasLines();
    const bool hasDsc = state.dsc.hasLines();
    job.isFax = state.finishMisspelt() || hasPjl || hasDsc;
    if (job.isFax)
        job.form = hasPjl || state.pjl.isMisspelt() ? JobForm::pjl : JobForm::dsc;
    job.title = state.name.empty() ? state.document.title() : state.name;
    job.postScriptBegin = state.documentBegin.value_or(job.size);
    job.postScriptEnd = state.hasUelBehind ? state.documentEnd : job.size;

    if (hasPjl && hasDsc)
        state.refusals.add(state.dsc.firstLine(),
                           localized("attribute lines stand in the document, too, where PJL has some"));
    if (!state.document.hasContent())
        state.refusals.add(0, localized("the job has no document"));
    if (hasDsc) {
        state.finishDsc();
        state.dsc.store(job);
    }
    if (hasPjl) {
        state.finishPjl();
        state.pjl.store(job);
    }
    if (job.isFax && state.hasJobCommand && !state.isWhole)
        state.refusals.add(0, localized("the job is not whole: it does not end with \"@PJL EOJ\" and UEL"));
    if (!job.isFax && state.document.strayAttribute() != 0)
        state.objections.add(
            state.document.strayAttribute(),
            localized("the line looks like an attribute, but stands behind the header comments: "
                      "it is the document's own"));
    job.refusalsLeftOut = state.refusals.leftOut();
    job.refusals = state.refusals.take();
    job.objections = state.objections.take();
    return job;
}

} // namespace quelm::device
