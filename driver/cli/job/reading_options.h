// How a file of people is to be read, as options of the commands that read one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_READING_OPTIONS_H
#define DRIVER_CLI_JOB_READING_OPTIONS_H

#include "driver/phonebook/contacts.h"

namespace CLI {
class App;
}

namespace quelm {

/// Adds the options for a file's charset and separator under the names given, which live as long as the
/// command; parsing fills `options`, which must outlive it.
void addReadingOptions(CLI::App& command, ReadingOptions& options, const char* charset,
                       const char* separator);

} // namespace quelm

#endif
