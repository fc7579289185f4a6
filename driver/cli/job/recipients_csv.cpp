// From the people of a CSV file to recipients.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipients_csv.h"

#include "base/error.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/phonebook/csv_people.h"
#include "driver/phonebook/dialled_number.h"
#include "driver/phonebook/entry_check.h"
#include "driver/phonebook/text_charset.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace quelm {
namespace {

constexpr std::size_t largestFile = std::size_t{64} * 1024 * 1024;
constexpr std::size_t mostLines = 100;

/// Turns the people of one file into recipients.
class ListReader {
public:
    ListReader(const std::string& name, const RecipientsReading& reading) : name_(name), reading_(reading) {}

    std::vector<RecipientInput> read(const std::string& text)
    {
        auto people = readCsvPeople(text, name_, reading_.text.separator);
        isOurs_ = people.header.isOurs;
        refused_ = std::move(people.refused);
        for (const auto& note : people.notes)
            tell(note);
        if (people.rows.empty() && refused_.empty())
            throw Error(originOf(1) + ": " + localized("no recipient follows the first line"));
        for (const auto& row : people.rows)
            if (const auto* person = std::get_if<CsvPerson>(&row))
                take(*person);
            else
                ++groups_;
        refuseTogether();
        tellWhatIsLeftOut();
        if (recipients_.empty())
            throw Error(localized("%s: holds nobody with a fax number", name_));
        return std::move(recipients_);
    }

private:
    std::string originOf(std::size_t line) const { return name_ + ":" + std::to_string(line); }

    void tell(const std::string& note) const { log(Severity::warning, name_ + ": " + note); }

    void take(const CsvPerson& row)
    {
        const auto& person = row.person;
        RecipientInput recipient;
        recipient.origin = originOf(person.line);
        recipient.number = faxOf(person);
        if (recipient.number.empty() && !isOurs_) {
            ++withoutNumber_;
            return;
        }
        recipient.name = person.name.empty() ? nameOfNumber(recipient.number) : person.name;
        recipient.organization = person.organization;
        recipient.phone = dialledNumber(firstOf(person.phones, Use::work)).number;
        recipient.email = firstOf(person.emails, Use::work);
        recipient.mailbox = row.mailbox;
        if (const auto problem = problemOf(recipient)) {
            refused_.push_back({person.line, *problem});
        } else if (const auto bad = problemWithEntryName(recipient.name); bad && !reading_.rename) {
            refused_.push_back({person.line, "\"" + shownText(recipient.name) + "\": " + *bad,
                                !acceptableName(recipient.name).empty()});
        } else {
            if (bad)
                rename(recipient, person.line);
            recipients_.push_back(std::move(recipient));
        }
    }

    void rename(RecipientInput& recipient, std::size_t line)
    {
        const auto name = acceptableName(recipient.name);
        if (name.empty())
            return; // the component says what is wrong with it
        if (++renamed_ <= mostLines)
            log(Severity::warning,
                originOf(line) + ": " + localized("\"%s\" becomes \"%s\"", shownText(recipient.name), name));
        recipient.name = name;
    }

    static std::string firstOf(const std::vector<PersonNumber>& numbers, Use use)
    {
        const auto found = std::ranges::find(numbers, use, &PersonNumber::use);
        return found != numbers.end() ? found->value : numbers.empty() ? "" : numbers.front().value;
    }

    /// The number for work, or for no particular use, or at home.
    std::string faxOf(const Person& person)
    {
        std::vector<PersonNumber> numbers = person.faxes;
        std::ranges::stable_sort(numbers, {}, [](const auto& one) { return one.use == Use::home ? 1 : 0; });
        if (numbers.empty())
            return "";
        furtherNumbers_ += numbers.size() - 1;
        return dialledNumber(numbers.front().value).number;
    }

    /// What the dialog's fields cannot hold.
    static std::optional<std::string> problemOf(const RecipientInput& recipient)
    {
        for (const auto& field : recipientFields) {
            const auto& text = recipient.*field.text;
            if (text.empty() && field.required)
                return localized("%s is missing", translated(field.label));
            if (hasControlCharacter(text))
                return localized("%s holds a line break or control character", translated(field.label));
        }
        return std::nullopt;
    }

    /// Throws when something was refused.
    void refuseTogether()
    {
        if (refused_.empty())
            return;
        std::ranges::stable_sort(refused_, {}, &Refusal::line);
        const auto mendable =
            static_cast<std::size_t>(std::ranges::count(refused_, true, &Refusal::mendable));
        const auto lineOf = [this](const Refusal& one) { return originOf(one.line) + ": " + one.reason; };
        if (refused_.size() == 1) {
            const auto line = lineOf(refused_.front());
            // Translators: what is wrong with a name.
            throw Error(mendable == 0 ? line : localized("%s; --rename changes the name", line));
        }
        for (std::size_t i = 0; i < std::min(refused_.size(), mostLines); ++i)
            writeUnderProgramName(oneLine(lineOf(refused_[i])));
        if (mendable > 0)
            // Translators: a file, how many are refused, how many of them --rename takes.
            throw Error(localized("%s: no recipient is taken, with %d refused; --rename takes %d of them "
                                  "under other names",
                                  name_, refused_.size(), mendable));
        throw Error(localized("%s: no recipient is taken, for %d rows are refused; mend the file", name_,
                              refused_.size()));
    }

    void tellWhatIsLeftOut() const
    {
        if (renamed_ > mostLines) {
            const auto more = renamed_ - mostLines;
            tell(localizedCount("%d more name was changed", "%d more names were changed", more, more));
        }
        if (withoutNumber_ > 0)
            tell(localizedCount("%d person without a fax number was passed over",
                                "%d people without a fax number were passed over", withoutNumber_,
                                withoutNumber_));
        if (furtherNumbers_ > 0)
            tell(localizedCount("%d further fax number is not used, for everybody gets one fax",
                                "%d further fax numbers are not used, for everybody gets one fax",
                                furtherNumbers_, furtherNumbers_));
        if (groups_ > 0)
            tell(localizedCount("%d group was passed over, for its members stand in the list themselves",
                                "%d groups were passed over, for their members stand in the list themselves",
                                groups_, groups_));
    }

    const std::string& name_;
    const RecipientsReading& reading_;
    bool isOurs_ = false;
    std::vector<RecipientInput> recipients_;
    std::vector<Refusal> refused_;
    std::size_t withoutNumber_ = 0;
    std::size_t furtherNumbers_ = 0;
    std::size_t groups_ = 0;
    std::size_t renamed_ = 0;
};

} // namespace

std::vector<RecipientInput> parseRecipientsCsv(std::string text, const std::string& name,
                                               const RecipientsReading& reading)
{
    const auto decoded = decodeText(std::move(text), reading.text.charset, name);
    if (decoded.guessed)
        log(Severity::warning, name + ": " + guessedCharsetNote(decoded.charset, "--recipients-charset"));
    return ListReader(name, reading).read(decoded.text);
}

std::vector<RecipientInput> readRecipientsCsv(const std::filesystem::path& file,
                                              const RecipientsReading& reading)
{
    return parseRecipientsCsv(readTextFile(file, largestFile), displayName(file), reading);
}

} // namespace quelm
