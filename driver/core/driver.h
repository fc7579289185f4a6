// The reference driver: loads the component, and does to its dialogs what a user does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CORE_DRIVER_H
#define DRIVER_CORE_DRIVER_H

#include "driver/boundary/failures.h"
#include "driver/device/device_settings.h"
#include "driver/directory/directory_settings.h"
#include "driver/plugin/fax_session.h"
#include "driver/widgets/widget_view.h"

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

class Callbacks;
class ComponentLibrary;
class Features;
class HostState;
class Questions;
class UserActions;
class WidgetTree;

/// How a driver is started. Texts are UTF-8; an empty text stands for the default.
struct DriverOptions {
    std::string home;            ///< installation folder; default: the folder of the running program
    std::string user;            ///< login name of the user; default: that of the process
    std::string component;       ///< the component's file; default: libBramblecorLanFax.so in `home`
    std::string now;             ///< "YYYY-MM-DDTHH:MM", a clock that stands still; default: the system's
    std::string configDirectory; ///< the driver's folder of settings; default: quelm in the XDG config folder
    std::string localeFolder;    ///< holds LANGUAGE/LC_MESSAGES/*.mo; default: those of `home`
    DeviceSettings device;       ///< without an address the driver is connected to no device
    DirectorySettings directory; ///< for the device's directory
    /// What options without a kept value hold, by the names of their widgets, in place of the usual defaults.
    std::map<std::string, std::string> defaults;
    /// The option values to start with, by the names of their widgets, in place of those that were kept; none
    /// are kept then.
    std::optional<std::map<std::string, std::string>> optionValues;
    bool loadFeatures = true; ///< start with the option values that were kept; false: with the defaults
    bool saveFeatures = true; ///< keep the option values between runs; false: they end with this driver
    /// What cannot be taken over of the kept option values is logged at the end, not at once, unless
    /// `requireKnownOptions` throws it before.
    bool holdOptionTroubles = false;
    bool holdFailures = false; ///< what fails at the boundary is logged when it is released, not at once
};

/// A question that waits for an answer.
struct QuestionView {
    int kind = 0; ///< 3: to be answered with yes or no
    std::string text;
};

/// One driver with its component; at most one lives in a process at a time. Everything happens on
/// the thread that constructed it.
///
/// User actions do what a person at a desktop could do, and fire the component's callbacks as a
/// desktop would. An action that is impossible throws quelm::Error with one line and changes
/// nothing: no such widget, a widget (or what it stands in) that is hidden or insensitive, a value
/// out of range, a question that must be answered first. Pages of a tab set need not be turned to
/// first. A name that occurs more than once means the first widget in document order.
///
/// An exception that leaves the component is logged with the callback's name and counted in
/// `failedCallbacks`; the action then returns as usual.
class Driver {
public:
    /// Loads and starts the component, and puts the kept option values into its widgets. Throws
    /// quelm::Error when that fails; another driver can be started then. A device is not asked yet.
    explicit Driver(const DriverOptions& options = {});

    /// Keeps the option values. The component stays loaded until the process ends.
    ~Driver();

    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

    // --- User actions ------------------------------------------------------------------------

    /// Presses a button or toolbar item; in a file chooser, its OK button.
    void press(std::string_view widget);

    /// Replaces what a text field holds (a file chooser: the path). At most "SetMaximum"
    /// characters, one line.
    void type(std::string_view field, std::string_view text);

    /// Ticks or unticks a check box; ticking a radio item chooses it.
    void tick(std::string_view box, bool on);

    /// Chooses the item (from 0) of a combo box or radio group, the number of a spin box, or
    /// turns to the page (from 0) of a tab set.
    void choose(std::string_view widget, int value);

    /// Selects exactly these rows (from 0) of a list, in this order; none to select nothing.
    void select(std::string_view list, const std::vector<int>& rows);

    /// Closes a window (or file chooser) from its frame.
    void closeWindow(std::string_view window);

    /// Answers the question that was asked last. Throws when none is open.
    void answer(bool yes);

    /// Calls a function of the component's export list, as the driver's main window does with
    /// "T40InvokeFaxDialog".
    void call(std::string_view exportedName);

    // --- What a user sees --------------------------------------------------------------------

    /// Throws quelm::Error when there is no such widget.
    WidgetView show(std::string_view widget) const;

    /// The cells of a list, row by row, each with as many cells as the list has columns. Throws
    /// quelm::Error when there is no such list.
    std::vector<std::vector<std::string>> rows(std::string_view list) const;

    /// The names of the visible windows and file choosers, in document order; the driver's own
    /// main window is not among them.
    std::vector<std::string> windows() const;

    /// The question that `answer` would answer.
    std::optional<QuestionView> pendingQuestion() const;

    /// The topic that the user last asked help on; empty before that.
    const std::string& helpTopic() const;

    /// How many calls into the component ended in an exception.
    int failedCallbacks() const;

    /// The values of the options now, by the names of their widgets, as `DriverOptions::optionValues` takes
    /// them; the credit card's number is not among them.
    std::map<std::string, std::string> optionValues() const;

    // --- What goes out ------------------------------------------------------------------------

    /// Makes the component take over what the fax dialog, the cover sheet's set-up and the sender dialog
    /// show, as far as nobody has confirmed them since the start: after a start they show what was kept, and
    /// the job holds none of it. Called just before a job is looked at to be written; nothing is seen of it.
    /// Throws quelm::Error when the component fails; the job must not be written then.
    void takeOverShownChoices();

    /// Whether the job holds what the fax dialog showed when it was last confirmed, by the user or by
    /// `takeOverShownChoices`; before that it holds none of the kept choices.
    [[nodiscard]] bool choicesTakenOver() const;
    /// The same for the cover sheet's set-up, and for the sender dialog.
    [[nodiscard]] bool coverSetUpTakenOver() const;
    [[nodiscard]] bool senderTakenOver() const;

    /// Whether the user confirmed the fax dialog since the start.
    [[nodiscard]] bool choicesConfirmed() const;

    /// What a job that is written now holds: it may not have been taken over yet. An empty text is none.
    /// @{
    [[nodiscard]] bool coverPageWillGo();
    [[nodiscard]] std::string dialingPrefixToUse();
    [[nodiscard]] std::string creditCardToCharge();
    /// @}

    /// Throws quelm::Error when the kept option values could not be read at all.
    void requireReadableOptions();
    /// The same, and when one of those that decide what goes out did not suit and was not set since: the job
    /// would go out otherwise than the user believes.
    void requireKnownOptions();
    /// A line for each of them, and for a file that could not be read; empty when there are none.
    [[nodiscard]] std::vector<std::string> unknownOptions() const;
    /// What was kept of this option does not matter: something else decides, as setting it would.
    void settleOption(std::string_view name);

    // --- What the component asked for in vain ------------------------------------------------

    /// Why a database, the directory, the device or a definition failed last, which the component itself is
    /// not told.
    const LastFailure& lastFailure() const;

    /// Ends a user's command with a line of `lastFailure`: throws it as a quelm::Error. When failures are
    /// held, it is not logged besides.
    [[noreturn]] void failWith(const std::string& line);

    /// Logs the failures that were held; later ones are logged at once. The destructor does the same.
    void releaseFailures();

    /// True when this driver is connected to a device.
    bool asksDevice() const;

    /// What sessions with the device's directory go by.
    const DirectorySettings& directorySettings() const;

    // --- Parts of the driver -----------------------------------------------------------------

    /// The fax job, for the print path. Lives as long as the driver. Throws quelm::Error when the
    /// component lacks a member function of it.
    FaxSession& faxSession();

    /// What the component registered under `name`, null when nothing.
    void* resource(std::string_view name) const;

    /// Lets a front end wait for the phonebook program, which the component opens phonebooks in: `wait`
    /// returns what waitpid says of the process, or -1 when it gave up waiting. Without one the process waits
    /// and does nothing else.
    void setProgramWaiting(std::function<int(pid_t program)> wait);

    const std::string& home() const;     ///< of the installation; absolute, without a trailing "/"
    const std::string& location() const; ///< the folder that holds db/phonebook, in the same form
    const std::string& user() const;

    /// The user actions for front ends, which know the very widget that was pressed.
    UserActions& actions();
    Callbacks& callbacks();
    WidgetTree& widgets();
    Features& features();
    Questions& questions();
    ComponentLibrary& component();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace quelm

#endif
