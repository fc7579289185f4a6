// Why the host last answered false where the boundary has no room for a reason.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_BOUNDARY_FAILURES_H
#define DRIVER_BOUNDARY_FAILURES_H

#include "driver/directory/directory_report.h"

#include <string>
#include <vector>

namespace quelm {

/// The last reason of each kind, one line for the user: what, where, what to do. Empty when there was none.
struct LastFailure {
    std::string definition; ///< dialogs were refused, or a widget was asked for that they do not have
    std::string database;   ///< an operation of a record database failed
    std::string directory;  ///< the directory was not reached or not searched; empty once it was
    std::string device;     ///< the device gave no answer; empty once it did
    SearchExtent searchExtent = SearchExtent::none; ///< of the search of the directory made last
};

/// Keeps the last failures, and logs those that a user has to hear of: at once, or, while they are held, when
/// they are released. A front end that ends a command with one of them holds them meanwhile, so that it is
/// reported once.
class Failures {
public:
    const LastFailure& last() const { return last_; }

    /// Dialogs were refused; logged as an error.
    void definitionRefused(const std::string& line);
    /// A widget does not exist; not logged, as the component may go on without it.
    void widgetMissing(const std::string& line);
    /// Not logged: the component tries one file after another.
    void databaseFailed(const std::string& line);
    /// A phonebook did not take what the user saved; logged as a warning, as the component says nothing of
    /// it.
    void recordRefused(const std::string& line);
    /// A phonebook cannot show all that it holds; logged as a warning, and no failure: the rest is shown.
    void recordsLeftOut(const std::string& line);
    /// Logged as a warning.
    void directoryFailed(const std::string& line);
    void directoryAnswered() { last_.directory.clear(); }
    void directorySearched(SearchExtent extent) { last_.searchExtent = extent; }
    /// Logs a warning. `failed`: the device as such, and not one object alone.
    void deviceFailed(const std::string& line, bool failed);
    void deviceAnswered() { last_.device.clear(); }

    /// What was kept could not be taken over. `holds`: this line is held in any case.
    void optionsNotKept(bool isError, const std::string& line, bool holds);
    /// A phonebook that others share cannot be opened; logged as a warning.
    void phonebookNotOpened(const std::string& line) { report(false, line); }
    /// Members of a group are sent nothing; logged as a warning.
    void membersMissing(const std::string& line) { report(false, line); }

    /// From now on nothing is logged.
    void hold() { held_ = true; }
    /// Takes a line out of those that are held: it is reported otherwise.
    void leaveOut(const std::string& line);
    /// Logs what was held, in order; what comes later is logged at once.
    void release();

private:
    struct Line {
        bool isError;
        std::string text;
    };

    void report(bool isError, const std::string& line);

    LastFailure last_;
    bool held_ = false;
    std::vector<Line> waiting_;
};

} // namespace quelm

#endif
