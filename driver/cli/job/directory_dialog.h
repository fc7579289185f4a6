// The device's directory, searched through the component's phonebook dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_DIRECTORY_DIALOG_H
#define DRIVER_CLI_JOB_DIRECTORY_DIALOG_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

class Driver;

/// One person of the directory, as the dialog lists it. Texts are UTF-8.
struct DirectoryPerson {
    int row = -1;     ///< in the dialog's list
    std::string name; ///< "SURNAME, GIVEN NAME"
    std::string number;
    std::string phone;
    std::string email;
};

/// The most bytes that the beginning of a name may have: escaped it still fits where the component reads it.
inline constexpr std::size_t longestPrefix = 256;

/// A text as a value in a search filter, where it stands for itself alone: "*" is a star.
std::string escapedForFilter(std::string_view text);

/// The open phonebook dialog with the device's directory.
class DirectoryDialog {
public:
    /// With the fax dialog open: opens the phonebook dialog on the directory. Throws Error that says why
    /// when the driver has no device, or the device no directory that answers.
    explicit DirectoryDialog(Driver& driver);

    /// Those, in the directory's order, whose surname begins with `prefix` (everybody for an empty one);
    /// "SURNAME, GIVEN" means those whose whole name begins like that. Letters match in either case. Throws
    /// UsageError for one that is too long, and Error when the search fails; when it ended early, those that
    /// came, and the log has a warning.
    std::vector<DirectoryPerson> search(const std::string& prefix);

    /// Adds a person of the last search to the dialog's picks.
    void add(const DirectoryPerson& person);

    /// Takes the picks over into the job, and closes the dialog.
    void confirm();

private:
    Driver& driver_;
};

} // namespace quelm

#endif
