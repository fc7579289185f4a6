// What the main window keeps between runs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_SENDING_DESKTOP_CHOICES_H
#define DRIVER_DESKTOP_SENDING_DESKTOP_CHOICES_H

#include "driver/desktop/sending/destination_choice.h"
#include "driver/plugin/fax_session.h"

#include <optional>
#include <string>

namespace quelm {

/// The user's choices in the main window.
struct DesktopChoices {
    DestinationChoice destination;
    std::optional<Pdl> pdl;     ///< only when the user chose one here; otherwise the configuration decides
    std::string documentFolder; ///< where a document was last opened from
    int width = 0;              ///< of the window, in pixels; 0 for its own
    int height = 0;

    bool operator==(const DesktopChoices&) const = default;
};

/// The file in which they are kept (INI, UTF-8):
///
///     [destination]
///     kind=device
///     file=/home/anne/fax.job
///     device=10.0.0.7:9100
///     queue=office
///     name=Head Office
///
///     [job]
///     pdl=pjl
///
///     [window]
///     document-folder=/home/anne
///     width=760
///     height=520
class DesktopChoicesFile {
public:
    /// Reads nothing yet.
    explicit DesktopChoicesFile(std::string path) : path_(std::move(path)) {}

    /// What the file says; the defaults for what it leaves out or says wrongly, and when there is no file.
    /// A file that cannot be read, or is no INI file, is a warning in the log and never written over.
    DesktopChoices load();

    /// Keeps the choices when they differ from what was loaded or kept last, in one step; keys of others
    /// stay. A failure is a warning in the log.
    void keep(const DesktopChoices& choices);

    const std::string& path() const { return path_; }

private:
    std::string path_;
    bool usable_ = true;
    std::optional<DesktopChoices> written_;
};

} // namespace quelm

#endif
