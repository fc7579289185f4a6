// Splits a text at BEGIN:VCARD and END:VCARD; the library reads one card at a time, and says nothing about
// what it cannot read.
#include "driver/phonebook/vcard_cards.h"

#include "driver/core/text_checks.h"

#include <glib.h>

#include <utility>

namespace quelm {
namespace {

class CardFinder {
public:
    explicit CardFinder(std::string_view text) : rest_(text) {}

    std::vector<CardText> findAll()
    {
        while (!rest_.empty()) {
            ++line_;
            take(nextLine());
        }
        if (open_)
            close("has no END:VCARD");
        return std::move(cards_);
    }

private:
    std::string_view nextLine()
    {
        const auto end = rest_.find('\n');
        const auto size = end == std::string_view::npos ? rest_.size() : end + 1;
        const auto line = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return line;
    }

    void take(std::string_view line)
    {
        const auto content = line.substr(0, line.find_last_not_of(" \t\r\n") + 1);
        if (is(content, "BEGIN:VCARD"))
            return begin(line);
        if (!open_) {
            if (!content.empty() && !outside_)
                cards_.push_back({line_, "", "stands outside of any card; a card begins with BEGIN:VCARD"});
            outside_ = outside_ || !content.empty();
            return;
        }
        card_.text += line;
        if (is(content, "END:VCARD"))
            return close("");
        check(line, content);
    }

    void begin(std::string_view line)
    {
        if (open_)
            close("has no END:VCARD");
        open_ = true;
        outside_ = false;
        softBreak_ = false;
        card_ = {line_, std::string(line), ""};
    }

    void close(const char* problem)
    {
        if (card_.problem.empty())
            card_.problem = problem;
        cards_.push_back(std::move(card_));
        open_ = false;
    }

    /// Notes the first thing that is wrong with a line of the open card.
    void check(std::string_view line, std::string_view content)
    {
        const bool continues = softBreak_ || line.front() == ' ' || line.front() == '\t';
        const bool quotedPrintable =
            (continues && softBreak_) || content.find("QUOTED-PRINTABLE") != std::string_view::npos;
        softBreak_ = quotedPrintable && content.ends_with('=');
        if (line.find('\0') != std::string_view::npos)
            note("holds a NUL byte; save the cards as UTF-8 text");
        else if (!isUtf8(line))
            note("is not UTF-8; save the cards as UTF-8 text");
        else if (!content.empty() && !continues && content.find(':') == std::string_view::npos)
            note("has no \":\" behind the property's name");
    }

    void note(const std::string& problem)
    {
        if (card_.problem.empty())
            card_.problem = "its line " + std::to_string(line_) + " " + problem;
    }

    static bool is(std::string_view content, std::string_view word)
    {
        return content.size() == word.size() &&
               g_ascii_strncasecmp(content.data(), word.data(), word.size()) == 0;
    }

    std::string_view rest_;
    std::size_t line_ = 0;
    bool open_ = false;
    bool outside_ = false; ///< text between two cards is noted once
    bool softBreak_ = false;
    CardText card_;
    std::vector<CardText> cards_;
};

} // namespace

std::vector<CardText> findCards(std::string_view text)
{
    if (text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff"))
        return {{1, "", "is UTF-16; save the cards as UTF-8 text"}};
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    return CardFinder(text).findAll();
}

} // namespace quelm
