// Splits a text at BEGIN:VCARD and END:VCARD and unfolds its lines; the library reads one card at a time, and
// says nothing about what it cannot read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/vcard_cards.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/vcard_names.h"
#include "driver/phonebook/vcard_property.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <utility>

namespace quelm {
namespace {

bool isWord(std::string_view word)
{
    return !word.empty() && std::ranges::all_of(word, [](char character) {
        return g_ascii_isalnum(character) != 0 || character == '-' || character == '_';
    });
}

/// The properties that a phonebook has a use for. The others, such as pictures, are as long as they like.
constexpr std::array<std::string_view, 14> usedProperties{
    "VERSION", "FN",     "N",          "ORG",       "TEL",           "EMAIL",           "UID",
    "KIND",    "MEMBER", "CATEGORIES", "X-ABLABEL", oldKindProperty, oldMemberProperty, memberProperty};

/// "TEL" of "item1.TEL;TYPE=fax:1".
std::string_view nameOf(std::string_view line)
{
    auto name = line.substr(0, line.find_first_of(";:"));
    if (const auto dot = name.find('.'); dot != std::string_view::npos)
        name.remove_prefix(dot + 1);
    return name;
}

bool isUsed(std::string_view line)
{
    const auto name = nameOf(line);
    return std::ranges::any_of(usedProperties, [name](std::string_view used) {
        return name.size() == used.size() && g_ascii_strncasecmp(name.data(), used.data(), used.size()) == 0;
    });
}

/// No name, number or address is as long as that or has so many parts, for which the library takes its time.
bool isAbsurd(std::string_view line)
{
    constexpr std::size_t mostBytes = 4096;
    constexpr std::ptrdiff_t mostParts = 100;
    const auto parts = [](char character) { return character == ';' || character == ','; };
    return line.size() > mostBytes || std::ranges::count_if(line, parts) > mostParts;
}

/// What is wrong with an unfolded line "GROUP.NAME;PARAMETER=VALUE;...:VALUE" ahead of its value, as a text
/// that takes the line's number; null when nothing is.
const char* problemWithProperty(std::string_view line)
{
    const auto colon = findUnquoted(line, ":");
    if (colon == line.size())
        return forTranslation("its line %d has no \":\" behind the property's name");
    auto head = line.substr(0, colon);
    auto end = findUnquoted(head, ";");
    const auto name = head.substr(0, end);
    const auto dot = name.find('.');
    const bool grouped = dot != std::string_view::npos;
    if (!isWord(name.substr(grouped ? dot + 1 : 0)) || (grouped && !isWord(name.substr(0, dot))))
        return forTranslation("its line %d does not begin with a property's name");
    while (end < head.size()) {
        head.remove_prefix(end + 1);
        end = findUnquoted(head, ";");
        const auto parameter = head.substr(0, end);
        if (!isWord(parameter.substr(0, parameter.find('='))))
            return forTranslation("its line %d has a parameter without a name");
    }
    return nullptr;
}

class CardFinder {
public:
    explicit CardFinder(std::string_view text) : rest_(text)
    {
        // Without an LF each CR ends a line, as on old systems.
        lineEnd_ = text.find('\n') == std::string_view::npos ? '\r' : '\n';
    }

    std::vector<CardText> findAll()
    {
        while (!rest_.empty()) {
            ++line_;
            take(nextLine());
        }
        if (open_)
            close(localized("has no END:VCARD"));
        return std::move(cards_);
    }

private:
    /// The next line without its end.
    std::string_view nextLine()
    {
        const auto end = rest_.find(lineEnd_);
        auto line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }

    void take(std::string_view line)
    {
        const auto content = line.substr(0, line.find_last_not_of(" \t") + 1);
        if (is(content, "BEGIN:VCARD")) {
            if (open_ && (innerCards_ > 0 || is(nameOf(property_), "AGENT"))) {
                ++innerCards_; // the card of somebody who answers for this one
                return;
            }
            return begin();
        }
        if (!open_) {
            if (!content.empty() && !outside_)
                cards_.push_back(
                    {line_, "", localized("stands outside of any card; a card begins with BEGIN:VCARD")});
            outside_ = outside_ || !content.empty();
            return;
        }
        if (is(content, "END:VCARD")) {
            if (innerCards_ > 0) {
                --innerCards_;
                return;
            }
            return close("");
        }
        if (innerCards_ > 0)
            return;
        if (softBreak())
            property_.replace(property_.size() - 1, 1, line);
        else if (line.starts_with(' ') || line.starts_with('\t'))
            property_ += line.substr(1);
        else if (!content.empty() && isUnusedText() && problemWithProperty(line) != nullptr)
            return; // a picture or note whose lines a phone or mailer broke
        else
            startProperty(line);
    }

    void begin()
    {
        if (open_)
            close(localized("has no END:VCARD"));
        open_ = true;
        innerCards_ = 0;
        outside_ = false;
        card_ = {line_, "BEGIN:VCARD\r\n", ""};
    }

    void close(const std::string& problem)
    {
        startProperty("");
        card_.text += "END:VCARD\r\n";
        if (card_.problem.empty())
            card_.problem = problem;
        cards_.push_back(std::move(card_));
        open_ = false;
    }

    /// A quoted-printable value goes on behind "=" at the end of a line.
    bool softBreak() const { return property_.ends_with('=') && isQuotedPrintable(property_); }

    /// Whether the property that is being read is one that a phonebook has no use for.
    bool isUnusedText() const
    {
        return findUnquoted(std::string_view(property_).substr(0, longestHead), ":") < longestHead &&
               problemWithProperty(property_) == nullptr && !isUsed(property_);
    }

    /// Takes the property that ends here into the card, and notes the first that is wrong with one.
    void startProperty(std::string_view line)
    {
        if (!property_.empty()) {
            if (card_.problem.empty())
                card_.problem = problemOfCard();
            if (isUsed(property_) && card_.problem.empty())
                card_.text += plainProperty(property_) + "\r\n";
        }
        property_ = line;
        propertyLine_ = line_;
    }

    std::string problemOfCard() const
    {
        const char* problem = nullptr;
        if (property_.find('\0') != std::string::npos)
            problem = forTranslation("its line %d holds a NUL byte; save the cards as UTF-8 text");
        else if (property_.find('\r') != std::string::npos)
            problem = forTranslation(
                "its line %d holds a carriage return that ends no line; save the cards with plain line ends");
        else if (!isUtf8(property_))
            problem = forTranslation("its line %d is not UTF-8; save the cards as UTF-8 text");
        else if (property_.find_first_not_of(" \t") != std::string::npos)
            problem = problemWithProperty(property_);
        if (problem == nullptr && isUsed(property_) && isAbsurd(property_))
            problem = forTranslation("its line %d is longer than a name, number or address; mend the card");
        return problem == nullptr ? "" : localized(problem, propertyLine_);
    }

    static bool is(std::string_view content, std::string_view word)
    {
        return content.size() == word.size() &&
               g_ascii_strncasecmp(content.data(), word.data(), word.size()) == 0;
    }

    static constexpr std::size_t longestHead = 1000; ///< no property has more ahead of its value

    std::string_view rest_;
    char lineEnd_ = '\n';
    std::size_t line_ = 0;
    std::size_t innerCards_ = 0; ///< begun within the card
    bool open_ = false;
    bool outside_ = false; ///< text between two cards is noted once
    CardText card_;
    std::string property_; ///< unfolded so far
    std::size_t propertyLine_ = 0;
    std::vector<CardText> cards_;
};

} // namespace

std::vector<CardText> findCards(std::string_view text)
{
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    return CardFinder(text).findAll();
}

} // namespace quelm
