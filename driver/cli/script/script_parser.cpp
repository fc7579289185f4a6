// The script parser: words first, then one table of commands.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_parser.h"

#include "base/error.h"
#include "base/net/network_address.h"
#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace quelm {
namespace {

struct Command {
    std::string_view word;
    ScriptVerb verb;
    std::string_view usage;
    std::size_t least; ///< words after the command
    std::size_t most;
};

constexpr std::size_t anyNumber = static_cast<std::size_t>(-1);

constexpr std::array<Command, 14> commands{{
    {"press", ScriptVerb::press, "press \"WIDGET\"", 1, 1},
    {"type", ScriptVerb::type, "type \"WIDGET\" \"TEXT\"", 2, 2},
    {"tick", ScriptVerb::tick, "tick \"WIDGET\" on|off", 2, 2},
    {"choose", ScriptVerb::choose, "choose \"WIDGET\" NUMBER", 2, 2},
    {"select", ScriptVerb::select, "select \"LIST\" ROW...", 1, anyNumber},
    {"close", ScriptVerb::close, "close \"WINDOW\"", 1, 1},
    {"answer", ScriptVerb::answer, "answer yes|no", 1, 1},
    {"call", ScriptVerb::call, "call FUNCTION", 1, 1},
    {"show", ScriptVerb::show, "show \"WIDGET\"", 1, 1},
    {"rows", ScriptVerb::rows, "rows \"LIST\"", 1, 1},
    {"windows", ScriptVerb::windows, "windows", 0, 0},
    {"cover", ScriptVerb::cover, "cover FILE.png", 1, 1},
    {"summary", ScriptVerb::summary,
     "summary DOCUMENT, summary DOCUMENT OUTPUT, summary DOCUMENT device ADDRESS or summary DOCUMENT queue "
     "NAME",
     1, 3},
    {"fax", ScriptVerb::fax, "fax DOCUMENT OUTPUT, fax DOCUMENT device ADDRESS or fax DOCUMENT queue NAME", 2,
     3},
}};

int hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return -1;
}

bool isBlank(char character) { return character == ' ' || character == '\t'; }

/// Takes the words of one line, from left to right.
class Words {
public:
    explicit Words(std::string_view line) : rest_(line) {}

    /// The next word, or none at the end of the line.
    std::optional<std::string> next()
    {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size()));
        if (rest_.empty() || rest_.front() == '#')
            return std::nullopt;
        return rest_.front() == '"' ? quotedWord() : bareWord();
    }

private:
    std::string bareWord()
    {
        const auto size = std::min(rest_.find_first_of(" \t\""), rest_.size());
        if (size < rest_.size() && rest_[size] == '"')
            throw Error(localized("a quotation mark stands amid a word"));
        std::string word(rest_.substr(0, size));
        rest_.remove_prefix(size);
        return word;
    }

    std::string quotedWord()
    {
        std::string word;
        for (rest_.remove_prefix(1); !rest_.empty() && rest_.front() != '"';)
            word += rest_.front() == '\\' ? escape() : plain();
        if (rest_.empty())
            throw Error(localized("a quotation mark is not closed"));
        rest_.remove_prefix(1);
        if (!rest_.empty() && !isBlank(rest_.front()) && rest_.front() != '#')
            throw Error(localized("a word follows a quotation mark without a blank"));
        if (!isUtf8(word))
            throw Error(localized("the text in quotation marks is not UTF-8"));
        return word;
    }

    char plain()
    {
        const char character = rest_.front();
        rest_.remove_prefix(1);
        return character;
    }

    char escape()
    {
        const char kind = rest_.size() > 1 ? rest_[1] : '\0';
        rest_.remove_prefix(std::min<std::size_t>(2, rest_.size()));
        switch (kind) {
        case '"':
        case '\\':
            return kind;
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case 'x':
            return byte();
        default:
            throw Error(localized("unknown escape; after a backslash stands \", \\, n, r, t or xNN"));
        }
    }

    char byte()
    {
        const int high = rest_.size() > 1 ? hexDigit(rest_[0]) : -1;
        const int low = rest_.size() > 1 ? hexDigit(rest_[1]) : -1;
        if (high < 0 || low < 0)
            throw Error(localized("after \\x stand two hexadecimal digits"));
        if (high == 0 && low == 0)
            throw Error(localized("\\x00 cannot stand in a text"));
        rest_.remove_prefix(2);
        return static_cast<char>(high * 16 + low);
    }

    std::string_view rest_;
};

int number(const std::string& word)
{
    int value = 0;
    const auto* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || value < 0)
        throw Error(localized("\"%s\" is no row or index; they count from 0", oneLine(word)));
    return value;
}

bool either(const std::string& word, std::string_view yes, std::string_view no)
{
    if (word != yes && word != no)
        // Translators: a word, and the two that are possible, such as on and off.
        throw Error(localized("\"%s\" is neither %s nor %s", oneLine(word), yes, no));
    return word == yes;
}

void fillFax(ScriptStep& step, const std::vector<std::string>& words)
{
    step.text = words.back();
    if (words.size() == 3) {
        step.place = either(words[1], "device", "queue") ? ScriptPlace::device : ScriptPlace::queue;
        if (step.place == ScriptPlace::device)
            parseNetworkAddress(step.text); // refused before anything is done
    } else if (step.text == "-") {
        throw Error(localized("a script's answers stand on standard output; name a file for the job"));
    }
}

void fillCover(const ScriptStep& step)
{
    if (step.target.empty())
        throw Error(localized("the file name is empty; name a file"));
    if (step.target == "-")
        throw Error(localized("a script's answers stand on standard output; name a file for the picture"));
}

void fill(ScriptStep& step, const std::vector<std::string>& words)
{
    if (!words.empty() && step.verb != ScriptVerb::answer)
        step.target = words[0];
    switch (step.verb) {
    case ScriptVerb::type:
        step.text = words[1];
        break;
    case ScriptVerb::fax:
        fillFax(step, words);
        break;
    case ScriptVerb::summary:
        step.place = ScriptPlace::none;
        if (words.size() > 1) {
            step.place = ScriptPlace::file;
            fillFax(step, words);
        }
        break;
    case ScriptVerb::cover:
        fillCover(step);
        break;
    case ScriptVerb::tick:
        step.on = either(words[1], "on", "off");
        break;
    case ScriptVerb::answer:
        step.on = either(words[0], "yes", "no");
        break;
    case ScriptVerb::choose:
    case ScriptVerb::select:
        std::transform(words.begin() + 1, words.end(), std::back_inserter(step.numbers), number);
        break;
    default:
        break;
    }
}

std::optional<ScriptStep> parseLine(std::string_view line)
{
    if (line.find('\0') != std::string_view::npos)
        throw Error(localized("holds a NUL byte"));
    if (!isUtf8(line))
        throw Error(localized("is not UTF-8"));
    Words words(line);
    const auto word = words.next();
    if (!word)
        return std::nullopt;
    const auto command = std::ranges::find(commands, std::string_view(*word), &Command::word);
    if (command == commands.end())
        throw Error(localized("unknown command \"%s\"", oneLine(*word)));
    std::vector<std::string> rest;
    while (auto next = words.next())
        rest.push_back(*std::move(next));
    if (rest.size() < command->least || rest.size() > command->most)
        // Translators: %s is how a command is written.
        throw Error(localized("write: %s", command->usage));
    ScriptStep step;
    step.verb = command->verb;
    fill(step, rest);
    return step;
}

} // namespace

std::vector<ScriptStep> parseScript(std::string_view script, const std::string& name)
{
    if (script.starts_with("\xef\xbb\xbf"))
        script.remove_prefix(3);
    std::vector<ScriptStep> steps;
    for (std::size_t line = 1; !script.empty(); ++line) {
        const auto size = std::min(script.find('\n'), script.size());
        auto text = script.substr(0, size);
        script.remove_prefix(std::min(size + 1, script.size()));
        if (text.ends_with('\r'))
            text.remove_suffix(1);
        try {
            if (auto step = parseLine(text)) {
                step->line = line;
                steps.push_back(*std::move(step));
            }
        } catch (const Error& error) {
            throw Error(name + ":" + std::to_string(line) + ": " + error.what());
        }
    }
    return steps;
}

std::string inQuotes(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        switch (character) {
        case '"':
        case '\\':
            result += '\\';
            result += character;
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            if (isControlCharacter(character)) {
                result += "\\x";
                result += digits[code >> 4U];
                result += digits[code & 0xfU];
            } else {
                result += character;
            }
        }
    }
    return result + "\"";
}

} // namespace quelm
