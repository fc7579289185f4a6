// Reads LDIF line by line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/ldif_records.h"

#include "base/texts.h"
#include "base/translation.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace quelm {
namespace {

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), g_ascii_tolower);
    return result;
}

/// Attributes that a phonebook has a use for, in small letters; those of others are as long as they like.
constexpr std::array<std::string_view, 27> usedAttributes{
    "dn",
    "objectclass",
    "changetype",
    "cn",
    "commonname",
    "displayname",
    "sn",
    "surname",
    "givenname",
    "o",
    "organizationname",
    "company",
    "facsimiletelephonenumber",
    "fax",
    "otherfacsimiletelephonenumber",
    "homefacsimiletelephonenumber",
    "homefax",
    "telephonenumber",
    "homephone",
    "mobile",
    "mobiletelephonenumber",
    "mail",
    "rfc822mailbox",
    "member",
    "uniquemember",
    "category",
    "categories",
};

/// A line such as "cn:: Wm/Dqw==".
struct Line {
    std::string name;
    std::string value;
    const char* problem = nullptr; ///< marked for translation, takes the line's number
};

std::string decodedBase64(std::string_view text, const char*& problem)
{
    const auto plain = trimmed(text);
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto end = plain.find_first_not_of(letters);
    const auto rest = end == std::string_view::npos ? std::string_view() : plain.substr(end);
    if (plain.size() % 4 != 0 || rest.size() > 2 || rest.find_first_not_of('=') != std::string_view::npos) {
        problem = forTranslation("its line %d is not base64, which two colons announce");
        return "";
    }
    std::string value(plain);
    gsize size = 0;
    if (!value.empty())
        g_base64_decode_inplace(value.data(), &size);
    value.resize(size);
    return value;
}

Line readLine(std::string_view text)
{
    constexpr std::size_t longestValue = 4096;
    Line line;
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0) {
        line.problem = forTranslation("its line %d has no \":\" behind an attribute's name");
        return line;
    }
    const auto described = text.substr(0, colon);
    line.name = lowered(trimmed(described.substr(0, described.find(';'))));
    if (std::ranges::find(usedAttributes, line.name) == usedAttributes.end()) {
        line.name.clear();
        return line;
    }
    auto value = text.substr(colon + 1);
    if (value.size() > 2 * longestValue) {
        line.problem =
            forTranslation("its line %d is longer than a name, number or address; mend the record");
        return line;
    }
    if (value.starts_with('<'))
        line.problem = forTranslation("its line %d has its value in another file; write it there itself");
    else if (value.starts_with(':'))
        line.value = decodedBase64(value.substr(1), line.problem);
    else
        line.value = trimmed(value);
    if (line.problem == nullptr && line.value.size() > longestValue)
        line.problem =
            forTranslation("its line %d is longer than a name, number or address; mend the record");
    if (line.problem == nullptr && !isUtf8(line.value))
        line.problem = forTranslation("its line %d is not UTF-8; save the records as UTF-8 text");
    return line;
}

class RecordFinder {
public:
    explicit RecordFinder(std::string_view text) : rest_(text)
    {
        lineEnd_ = text.find('\n') == std::string_view::npos ? '\r' : '\n';
    }

    std::vector<LdifRecord> findAll()
    {
        while (!rest_.empty()) {
            ++line_;
            take(nextLine());
        }
        endLogicalLine();
        endRecord();
        return std::move(records_);
    }

private:
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
        if (line.starts_with(' ') && !logical_.empty()) {
            logical_ += line.substr(1);
            return;
        }
        endLogicalLine();
        if (trimmed(line).empty())
            return endRecord();
        logical_ = line;
        logicalLine_ = line_;
    }

    void endLogicalLine()
    {
        const auto text = std::exchange(logical_, "");
        if (text.empty() || text.starts_with('#'))
            return;
        if (!isOpen_ && lowered(text).starts_with("version:"))
            return;
        if (!isOpen_) {
            isOpen_ = true;
            record_ = {};
            record_.line = logicalLine_;
        }
        if (!record_.problem.empty() || trimmed(text) == "-")
            return;
        auto line = readLine(text);
        if (line.problem != nullptr)
            record_.problem = localized(line.problem, logicalLine_);
        else if (line.name == "dn")
            record_.dn = std::move(line.value);
        else if (line.name == "changetype" && lowered(line.value) != "add")
            record_.problem = localized("changes what is there (%s), which no phonebook takes; export the "
                                        "records themselves",
                                        shownText(line.value));
        else if (!line.name.empty())
            record_.attributes.push_back({std::move(line.name), std::move(line.value)});
        if (record_.attributes.size() > mostAttributes)
            record_.problem = localized("has more than %d attributes; mend the record", mostAttributes);
    }

    void endRecord()
    {
        if (!std::exchange(isOpen_, false))
            return;
        if (record_.problem.empty() && record_.dn.empty())
            record_.problem = localized("has no distinguished name; a record begins with dn:");
        if (!record_.problem.empty())
            record_.attributes.clear();
        records_.push_back(std::move(record_));
    }

    static constexpr std::size_t mostAttributes = 20000; // a group has a thousand members and more

    std::string_view rest_;
    char lineEnd_ = '\n';
    std::size_t line_ = 0;
    std::string logical_; ///< unfolded so far
    std::size_t logicalLine_ = 0;
    bool isOpen_ = false;
    LdifRecord record_;
    std::vector<LdifRecord> records_;
};

/// Walks over a distinguished name, unescaped: `take` gets each character and whether it is a mark of the
/// name's own.
template <typename Take>
void walkDn(std::string_view dn, const Take& take)
{
    const auto digit = [&](std::size_t at) { return at < dn.size() ? g_ascii_xdigit_value(dn[at]) : -1; };
    for (std::size_t at = 0; at < dn.size(); ++at) {
        if (dn[at] != '\\' || at + 1 == dn.size()) {
            take(dn[at], std::string_view(",=+").find(dn[at]) != std::string_view::npos);
        } else if (digit(at + 1) >= 0 && digit(at + 2) >= 0) {
            take(static_cast<char>(16 * digit(at + 1) + digit(at + 2)), false);
            at += 2;
        } else {
            take(dn[++at], false);
        }
    }
}

} // namespace

std::string LdifRecord::text(std::string_view name) const
{
    for (const auto& attribute : attributes)
        if (attribute.name == name && !trimmed(attribute.value).empty())
            return attribute.value;
    return "";
}

std::vector<std::string> LdifRecord::texts(std::string_view name) const
{
    std::vector<std::string> all;
    for (const auto& attribute : attributes)
        if (attribute.name == name)
            all.push_back(attribute.value);
    return all;
}

std::vector<LdifRecord> readLdifRecords(std::string_view text) { return RecordFinder(text).findAll(); }

std::string plainDn(std::string_view dn)
{
    std::string plain;
    std::string word;
    const auto endWord = [&] {
        plain += trimmed(word);
        word.clear();
    };
    walkDn(dn, [&](char character, bool isMark) {
        if (!isMark) {
            word += character;
            return;
        }
        endWord();
        plain += '\n'; // stands in no word
        plain += character;
    });
    endWord();
    if (!isUtf8(plain))
        return plain;
    char* const folded = g_utf8_casefold(plain.data(), static_cast<gssize>(plain.size()));
    std::string result(folded);
    g_free(folded);
    return result;
}

std::string firstValueOfDn(std::string_view dn)
{
    std::string value;
    int part = 0; // behind the first "=", ahead of the next mark
    walkDn(dn, [&](char character, bool isMark) {
        if (isMark && part < 2 && !(part == 1 && character == '='))
            ++part;
        else if (part == 1)
            value += character;
    });
    return std::string(trimmed(value));
}

} // namespace quelm
