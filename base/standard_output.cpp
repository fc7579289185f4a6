// Writes to standard output as its reader wants it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/standard_output.h"

#include "base/error.h"
#include "base/file_io.h"
#include "base/log.h"
#include "base/texts.h"
#include "base/translation.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>

namespace quelm {

void writeAnswer(std::string_view text)
{
    const WriteSignalsIgnored failuresOnly;
    const std::string name = localized("standard output");
    if (::isatty(STDOUT_FILENO) == 1)
        writeAll(STDOUT_FILENO, terminalText(text), name);
    else
        writeAll(STDOUT_FILENO, text, name);
}

void writeConfirmation(std::string_view text)
{
    if (isQuiet())
        return;
    try {
        writeAnswer(text);
    } catch (const Error&) {
        return; // the exit status says that it is done
    }
}

void writeResult(std::string_view text)
{
    try {
        writeAnswer(text);
    } catch (const Error& error) {
        // Translators: why standard output cannot be written to.
        throw Error(localized("%s; what the command was to do is done all the same", error.what()));
    }
}

void occupyStandardDescriptors() noexcept
{
    // Each is open the wrong way round, so that using it fails. The lowest that is free is what `open` gives.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(descriptor, F_GETFD) < 0)
            static_cast<void>(::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

} // namespace quelm
