// Reads a card's number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/credit_card_file.h"

#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/jobs/attribute_lines.h"

#include <sys/stat.h>

#include <cstddef>

namespace quelm {
namespace {

constexpr std::size_t largest = std::size_t{64} * 1024;

void warnOfReaders(const std::string& file)
{
    constexpr mode_t othersRead = S_IRGRP | S_IROTH;
    struct stat status {};
    if (file != "-" && ::stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
        (status.st_mode & othersRead) != 0)
        log(Severity::warning,
            localized("%s: others can read the number of your credit card there; chmod 600 the file",
                      displayName(file)));
}

} // namespace

std::string readCreditCard(const std::string& file)
{
    const std::string text = readTextFile(file, largest);
    std::string number = text.substr(0, text.find('\n'));
    number.erase(number.find_last_not_of(" \t\r") + 1);
    if (!isDialText(number))
        throw Error(
            localized("%s: the first line is no credit card number: it may hold digits, blanks, \"-\", "
                      "\"*\", \"#\" and \",\"",
                      displayName(file)));
    warnOfReaders(file);
    return number;
}

} // namespace quelm
