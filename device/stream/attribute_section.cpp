// Compares each attribute line with the one shape that it may have.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/attribute_section.h"

#include "base/translation.h"
#include "device/stream/attribute_values.h"
#include "device/stream/card_digits.h"
#include "device/stream/words.h"

#include <algorithm>
#include <utility>

namespace quelm::device {
namespace {

constexpr std::string_view prefixOf(JobForm form) { return form == JobForm::pjl ? "@PJL COMMENT " : "%%"; }

/// Takes off what a line begins with ahead of an attribute's name; the rest is the name for all that is known
/// yet.
std::string_view behindPrefix(JobForm form, std::string_view text)
{
    if (form != JobForm::pjl) {
        text.remove_prefix(std::min(text.find_first_not_of('%'), text.size()));
        skipBlanks(text);
        return text;
    }
    constexpr std::string_view command = "@PJL";
    constexpr std::string_view comment = "COMMENT";
    skipBlanks(text);
    if (beginsWithWord(text, command))
        text.remove_prefix(command.size());
    skipBlanks(text);
    if (beginsWithWord(text, comment))
        text.remove_prefix(comment.size());
    skipBlanks(text);
    return text;
}

const AttributeName* findName(std::string_view name)
{
    const auto* const found = std::ranges::find_if(
        attributeNames, [&](const AttributeName& known) { return equalWords(known.name, name); });
    return found == attributeNames.end() ? nullptr : found;
}

/// How a line ends, in the words of the format.
std::string endName(LineEnd end)
{
    switch (end) {
    case LineEnd::lf:
        return "LF";
    case LineEnd::crLf:
        return "CR LF";
    case LineEnd::cr:
        return "CR";
    case LineEnd::none:
        break;
    }
    return localized("no line end");
}

/// The first word of a line, which is enough to find it. What stands behind may be the number of a card.
std::string keyword(std::string_view text)
{
    const auto masked = withoutCards(text);
    return shownPart(masked.substr(0, masked.find_first_of(" \t:=\"", std::min<std::size_t>(2, text.size()))),
                     30);
}

/// Letters and digits alone, as capitals: what is left of a name however it is written.
std::string bareName(std::string_view text)
{
    constexpr std::size_t most = 64;
    std::string bare;
    for (const char character : text.substr(0, most)) {
        if (isLetter(character) || isDigit(character))
            bare +=
                character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    }
    return bare;
}

bool isOfCard(std::string_view name)
{
    const auto bare = bareName(name);
    return bare.find("CREDIT") != std::string::npos || bare.find("CARD") != std::string::npos;
}

} // namespace

std::optional<AttributeLine> attributeLine(JobForm form, std::string_view text)
{
    auto rest = behindPrefix(form, text);
    const auto prefix = text.substr(0, text.size() - rest.size());
    if (prefix.empty())
        return std::nullopt;
    const auto name = takeWord(rest);
    const auto* known = findName(name);
    if (known == nullptr && !beginsWithWord(name, "OID_ATT_"))
        return std::nullopt;
    return AttributeLine{prefix, name, rest, known};
}

bool looksLikeAttribute(std::string_view text)
{
    const auto bare = bareName(text);
    std::string_view name = bare;
    for (const std::string_view ahead : {"PJL", "COMMENT"})
        if (name.starts_with(ahead))
            name.remove_prefix(ahead.size());
    return name.starts_with("OIDATT") || name.starts_with("QLMBEGIN") || name.starts_with("QLMEND");
}

void AttributeSection::take(const Line& line)
{
    const auto parts = attributeLine(form_, line.text);
    if (parts && parts->known != nullptr)
        return takeKnown(*parts, line);
    const auto name = std::string_view(line.text).substr(0, line.text.find_first_of(":=(\""));
    const bool isMisspelt = looksLikeAttribute(line.text) && (!parts || parts->prefix != prefixOf(form_));
    if (isOfCard(name) && (looksLikeAttribute(line.text) || hasLines()))
        // A card that is passed over would be charged to nobody, and the sender would not know.
        refuseMisspelt(line.number,
                       localized("the line looks like that of a credit card, and is not written \"%s\"",
                                 shapeOf(nameOf(Attribute::creditCard))));
    else if (isMisspelt)
        refuseMisspelt(line.number);
    else if (parts)
        objections_.add(line.number,
                        localized("\"%s\" is no attribute that the device knows", shownPart(parts->name)));
    else if (hasLines())
        objections_.add(line.number,
                        localized("\"%s\" stands among the attribute lines or behind them, where "
                                  "nothing else should",
                                  keyword(line.text)));
}

void AttributeSection::refuseMisspelt(Place line)
{
    // Translators: the beginning of an attribute line as it should be: "%%OID_ATT_".
    refuseMisspelt(line, localized("the line looks like an attribute, and does not begin with \"%s\"",
                                   std::string(prefixOf(form_)) + "OID_ATT_"));
}

void AttributeSection::refuseMisspelt(Place line, const std::string& why)
{
    isMisspelt_ = true;
    refusals_.add(line, why);
}

std::string AttributeSection::shapeOf(const AttributeName& name) const
{
    std::string shape = std::string(prefixOf(form_)) + std::string(name.name);
    return name.value.empty() ? shape : shape + " " + std::string(name.value) + ";";
}

bool AttributeSection::checkShape(const AttributeLine& parts, const Line& line)
{
    const bool isBracket = parts.known->value.empty();
    if (isBracket && form_ == JobForm::pjl) {
        refusals_.add(line.number, localized("\"%s\" stands in DSC form only", parts.known->name));
        return false;
    }
    if (line.isCut) {
        refusals_.add(line.number, localized("the line of \"%s\" is longer than %d bytes", parts.known->name,
                                             Line::longest));
        return false;
    }
    const bool isWhole =
        isBracket ? parts.rest.empty()
                  : parts.rest.size() > 2 && parts.rest.starts_with(' ') && parts.rest.ends_with(';');
    if (!isWhole || parts.prefix != prefixOf(form_) || parts.name != parts.known->name) {
        // Translators: the line as it should be, such as "%%OID_ATT_FAX_RESOLUTION 0|1|2;".
        refusals_.add(line.number, localized("the line is not written \"%s\"", shapeOf(*parts.known)));
        return false;
    }
    const auto expected = parts.known->attribute == Attribute::jobType ? LineEnd::lf : LineEnd::crLf;
    if (line.end != expected)
        // Translators: an attribute, and twice how a line ends: "CR LF", "LF", "no line end".
        refusals_.add(line.number, localized("the line of \"%s\" ends in %s; it should end in %s",
                                             parts.known->name, endName(line.end), endName(expected)));
    return true;
}

void AttributeSection::checkOrder(Attribute attribute, const Line& line)
{
    const auto index = static_cast<std::size_t>(attribute);
    const bool mayRepeat = attribute == Attribute::destination || attribute == Attribute::mailbox;
    if (attribute == Attribute::mailbox && previous_ == Attribute::mailbox) {
        refusals_.add(line.number, localized("the recipient has a second mailbox"));
    } else if (attribute == Attribute::mailbox && previous_ != Attribute::destination) {
        refusals_.add(line.number, localized("the mailbox stands below no recipient"));
    } else if (!mayRepeat && seenAt_.at(index) != 0) {
        refuseSecond(attribute, line.number);
    } else if (last_ && attribute < *last_ && !(mayRepeat && *last_ <= Attribute::mailbox)) {
        refusals_.add(line.number, localized("\"%s\" stands behind \"%s\"; it belongs ahead of it",
                                             nameOf(attribute).name, nameOf(*last_).name));
    } else if (attribute == Attribute::creditCard && form_ != JobForm::pjl &&
               previous_ != Attribute::bracketBegin) {
        refusals_.add(line.number,
                      localized("the credit card does not stand between \"%s\" and \"%s\"",
                                nameOf(Attribute::bracketBegin).name, nameOf(Attribute::bracketEnd).name));
    }
    if (seenAt_.at(index) == 0)
        seenAt_.at(index) = line.number;
    last_ = std::max(last_.value_or(attribute), attribute);
    previous_ = attribute;
}

void AttributeSection::refuseSecond(Attribute attribute, Place line)
{
    refusals_.add(line, localized("\"%s\" stands a second time; the first is in line %d",
                                  nameOf(attribute).name, seenAt_.at(static_cast<std::size_t>(attribute))));
}

void AttributeSection::takeKnown(const AttributeLine& parts, const Line& line)
{
    if (firstLine_ == 0)
        firstLine_ = line.number;
    const bool isWhole = checkShape(parts, line);
    auto attribute = parts.known->attribute;
    // The option of the confirmation sheet has a third state, in which the job type stands in its place.
    const bool standsIn = attribute == Attribute::jobType && previous_ == Attribute::jobType &&
                          seenAt_.at(static_cast<std::size_t>(Attribute::confirmation)) == 0;
    if (standsIn) {
        attribute = Attribute::confirmation;
        standInAt_ = line.number;
    } else if (attribute == Attribute::confirmation && standInAt_ != 0) {
        // The confirmation sheet has its line, so that the job type did not stand in for it.
        refuseSecond(Attribute::jobType, std::exchange(standInAt_, 0));
        seenAt_.at(static_cast<std::size_t>(attribute)) = 0;
    }
    checkOrder(attribute, line);
    if (isWhole && !parts.known->value.empty())
        readValue(parts.known->attribute, parts.rest.substr(1, parts.rest.size() - 2), line);
}

void AttributeSection::readValue(Attribute attribute, std::string_view value, const Line& line)
{
    std::optional<bool> isOn;
    bool isKnown = true;
    switch (attribute) {
    case Attribute::coverSheet:
        isOn = truthOf(value);
        isKnown = isOn.has_value();
        values_.coverSheet = isOn.value_or(false);
        break;
    case Attribute::confirmation:
        isOn = truthOf(value);
        isKnown = isOn.has_value();
        values_.confirmationSheet = isOn.value_or(false);
        break;
    case Attribute::jobType:
        isKnown = value == nameOf(attribute).value;
        break;
    case Attribute::resolution:
        isKnown = readResolution(value, values_.resolution);
        break;
    case Attribute::faxType:
        isKnown = readSpeed(value, values_.speed);
        break;
    default:
        return readQuoted(attribute, value, line);
    }
    if (!isKnown)
        // Translators: an attribute, its value, the values that it may have.
        refusals_.add(line.number,
                      localized("\"%s\" has the value \"%s\", which is none of %s", nameOf(attribute).name,
                                shownPart(value), nameOf(attribute).value));
}

void AttributeSection::readQuoted(Attribute attribute, std::string_view value, const Line& line)
{
    if (value.size() < 2 || !value.starts_with('"') || !value.ends_with('"')) {
        refusals_.add(line.number, localized("the line is not written \"%s\"", shapeOf(nameOf(attribute))));
        return;
    }
    const auto inner = value.substr(1, value.size() - 2);
    if (attribute == Attribute::destination)
        takeDestination(inner, line.number);
    else if (attribute == Attribute::mailbox)
        takeMailbox(inner, line.number);
    else
        takeCard(inner, line.number);
}

void AttributeSection::takeDestination(std::string_view number, Place line)
{
    if (values_.destinations.size() == mostDestinations) {
        if (!hasTooManyDestinations_)
            refusals_.add(line, localized("the job has more than %d recipients", mostDestinations));
        hasTooManyDestinations_ = true;
        return;
    }
    const auto problem = problemOfNumber(number);
    if (!problem.empty())
        refusals_.add(line, problem);
    // A refused job is remembered, and a card in the wrong place must not be remembered with it.
    values_.destinations.push_back({problem.empty() ? std::string(number) : withoutCards(number), "", line});
}

void AttributeSection::takeMailbox(std::string_view mailbox, Place line)
{
    if (!isMailbox(mailbox))
        refusals_.add(line, localized("the mailbox \"%s\" is none: it is one to four letters, digits, \"*\" "
                                      "and \"#\"",
                                      shownPart(mailbox)));
    if (!values_.destinations.empty() && !hasTooManyDestinations_)
        values_.destinations.back().mailbox = withoutCards(mailbox);
}

void AttributeSection::takeCard(std::string_view card, Place line)
{
    // The line is not shown: most of a card's number is a card's number.
    if (!isCard(card))
        refusals_.add(line,
                      localized("the credit card is none: it is digits, blanks, \"-\", \"*\", \"#\" and "
                                "\",\", at least one digit among them"));
    else if (const auto keys = keyCount(card); keys > mostKeys)
        refusals_.add(line,
                      localized("the credit card has %d keys, and may have %d at most", keys, mostKeys));
    values_.creditCard = card;
}

void AttributeSection::finish(Place end)
{
    const auto isThere = [this](Attribute attribute) {
        return seenAt_.at(static_cast<std::size_t>(attribute)) != 0;
    };
    const auto demand = [&](Attribute attribute) {
        if (!isThere(attribute))
            refusals_.add(end, localized("the line \"%s\" is missing", shapeOf(nameOf(attribute))));
    };
    for (const auto attribute :
         {Attribute::coverSheet, Attribute::jobType, Attribute::confirmation, Attribute::destination})
        demand(attribute);
    if (form_ != JobForm::pjl)
        for (const auto attribute : {Attribute::bracketBegin, Attribute::bracketEnd})
            demand(attribute);
}

void AttributeSection::store(ReceivedJob& job) const
{
    job.coverSheet = values_.coverSheet;
    job.confirmationSheet = values_.confirmationSheet;
    job.resolution = values_.resolution;
    job.speed = values_.speed;
    job.destinations = values_.destinations;
    job.creditCard = values_.creditCard;
}

} // namespace quelm::device
