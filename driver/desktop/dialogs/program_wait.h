// Waiting for the program that a phonebook is open in.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_PROGRAM_WAIT_H
#define DRIVER_DESKTOP_DIALOGS_PROGRAM_WAIT_H

#include <glib.h>
#include <sys/types.h>

namespace quelm {

/// The component starts the phonebook program and waits for its end. Meanwhile the windows are drawn, moved
/// and read out as ever, and take nothing: what is done to a phonebook in one place is not overtaken in
/// another.
class ProgramWait {
public:
    ProgramWait() = default;
    ProgramWait(const ProgramWait&) = delete;
    ProgramWait& operator=(const ProgramWait&) = delete;

    /// Runs the main loop until the process ends, and returns its status as of waitpid; -1 when waiting was
    /// given up. All windows that are on the screen are insensitive until then.
    int forProgram(pid_t program);

    /// Ends the waiting at once, as the desktop itself ends; the program goes on.
    void giveUp();

private:
    static void ended(GPid program, gint status, gpointer self);

    GMainLoop* loop_ = nullptr; ///< null while nothing is waited for
    int status_ = -1;
};

} // namespace quelm

#endif
