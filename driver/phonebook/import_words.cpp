// Takes a line of the menu apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/import_words.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/csv_rows.h"
#include "driver/phonebook/text_charset.h"

#include <algorithm>

namespace quelm {
namespace {

/// Takes the first word off a line.
std::string takeWord(std::string& line)
{
    const auto end = std::min(line.find(' '), line.size());
    auto word = line.substr(0, end);
    line = trimmed(std::string_view(line).substr(end));
    return word;
}

} // namespace

ImportOptions takeImportOptions(std::string& line)
{
    ImportOptions options;
    while (line.starts_with("--")) {
        const auto word = takeWord(line);
        if (word == "--rename") {
            options.settling.rename = true;
        } else if (word == "--no-groups") {
            options.settling.categoryGroups = false;
        } else if (word == "--skip-bad") {
            options.skipBad = true;
        } else if (word == "--dry-run") {
            options.dryRun = true;
        } else if (word == "--charset") {
            options.reading.charset = takeWord(line);
            if (!isKnownCharset(options.reading.charset))
                throw Error(localized("\"%s\" is no charset; say one such as UTF-8 or windows-1252",
                                      options.reading.charset));
        } else if (word == "--separator") {
            const auto mark = takeWord(line);
            options.reading.separator = separatorNamed(mark);
            if (!options.reading.separator)
                throw Error(
                    localized("\"%s\" parts no fields; say comma, semicolon, tab or one other mark", mark));
        } else {
            throw Error(localized("\"%s\" is none of %s", word,
                                  "--rename|--skip-bad|--no-groups|--dry-run|--charset|--separator"));
        }
    }
    return options;
}

} // namespace quelm
