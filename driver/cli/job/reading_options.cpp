// Options that say how a file of people is to be read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/reading_options.h"

#include "base/translation.h"
#include "driver/phonebook/csv_rows.h"
#include "driver/phonebook/text_charset.h"

#include <CLI/CLI.hpp>

#include <string>

namespace quelm {

void addReadingOptions(CLI::App& command, ReadingOptions& options, const char* charset, const char* separator)
{
    command
        .add_option_function<std::string>(
            charset,
            [&options, charset](const std::string& name) {
                if (!isKnownCharset(name))
                    throw CLI::ValidationError(
                        charset,
                        localized("\"%s\" is no charset; say one such as UTF-8 or windows-1252", name));
                options.charset = name;
            },
            localized("How the file's text is written, where it does not say so"))
        ->type_name("NAME");
    command
        .add_option_function<std::string>(
            separator,
            [&options, separator](const std::string& name) {
                options.separator = separatorNamed(name);
                if (!options.separator)
                    throw CLI::ValidationError(
                        separator,
                        localized("\"%s\" parts no fields; say comma, semicolon, tab or one other mark",
                                  name));
            },
            localized("What parts the fields of a CSV file, where it does not say so"))
        ->type_name("MARK");
}

} // namespace quelm
