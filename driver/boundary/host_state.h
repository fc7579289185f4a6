// What the boundary's plain functions work on: the one driver's dialogs, features and questions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_BOUNDARY_HOST_STATE_H
#define DRIVER_BOUNDARY_HOST_STATE_H

#include "driver/boundary/failures.h"
#include "driver/device/device_settings.h"
#include "driver/directory/directory_settings.h"
#include "driver/features/features.h"
#include "driver/plugin/call_guard.h"
#include "driver/plugin/questions.h"
#include "driver/widgets/bindings.h"
#include "driver/widgets/widget_tree.h"
#include "host/gtk_object.h"

#include <sys/types.h>

#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace quelm {

class DeviceSession;

/// The host side of the boundary, without a screen. While one exists, the boundary's functions
/// reach it and the globals point at it; without one they answer null or false.
class HostState {
public:
    /// A callback that the component attached to a part or signal of a widget.
    using Handler = void (*)();

    /// Throws quelm::Error when this process has one already.
    HostState(std::string homeFolder, std::string userName);
    ~HostState();
    HostState(const HostState&) = delete;
    HostState& operator=(const HostState&) = delete;

    /// The one that exists, or null.
    static HostState* current();

    WidgetTree tree;
    CallGuard guard;
    Bindings bindings{tree};
    Features features{tree};
    Questions questions{guard};
    std::map<std::string, void*, std::less<>> resources;

    DirectorySettings directory; ///< what sessions with a directory server go by

    /// Makes `folder` the one that the component is told, and brings in the user's phonebook from
    /// `formerPhonebook` unless that is empty. Throws quelm::Error when the user has one there that cannot be
    /// brought in.
    void settleAt(const std::string& folder, const std::string& formerPhonebook);

    /// Lets the component ask a device: `pBiDi` points at a session with it as long as this object
    /// exists. Nothing is sent before the first question. Throws quelm::Error when the settings'
    /// address is none.
    void connectDevice(const DeviceSettings& settings);
    std::unique_ptr<DeviceSession> device; ///< null without one

    std::string home;     ///< of the installation, without a trailing "/"
    std::string location; ///< of db/phonebook, as the component is told it; the home folder unless it is said
    std::string user;

    std::optional<std::tm> lastReading; ///< of the clock, which several formats of one time share

    /// Waits until a program that the component started ends, and answers as waitpid does; -1 when it was not
    /// waited for. Empty: the process waits and does nothing else.
    std::function<int(pid_t program)> waitForProgram;

    bool keepsWindows = false; ///< the component can neither show nor hide a window; see `WindowsKept`

    Failures failures; ///< why the boundary's functions answered false

    std::set<std::string> damagedPhonebooks;  ///< of whose unreadable records the user was told
    std::set<std::string> unopenedPhonebooks; ///< that could not be opened, of which the user was told

    /// The handle on a widget, made on first use; it lives as long as this object.
    GTKObject& handleOf(Widget& widget);
    /// Makes an object of the component's own the handle on a widget.
    void adoptHandle(Widget& widget, GTKObject& handle);
    /// Forgets a widget that leaves the tree.
    void forget(Widget& widget);

    /// Attaches a handler to a widget's part or signal ("ok_button", "delete_event"); null detaches.
    void setHandler(const Widget& widget, const std::string& signal, Handler handler);
    /// The handler attached there, or null.
    Handler handlerFor(const Widget& widget, const std::string& signal) const;

    /// Expires when this object is destroyed; handles that outlive it then stand for no widget.
    std::weak_ptr<const void> lifetime() const { return alive_; }

private:
    std::shared_ptr<const void> alive_ = std::make_shared<int>();
    std::unordered_map<const Widget*, std::map<std::string, Handler>> handlers_;
    std::unordered_map<const Widget*, GTKObject*> handles_;
    std::vector<std::unique_ptr<GTKObject>> ownHandles_;
};

/// While it exists, the windows stay as they are, whatever the component does: what the driver confirms or
/// chooses in the user's place happens unseen.
class WindowsKept {
public:
    explicit WindowsKept(HostState& hostState) : state_(hostState), before_(hostState.keepsWindows)
    {
        state_.keepsWindows = true;
    }
    ~WindowsKept() { state_.keepsWindows = before_; }
    WindowsKept(const WindowsKept&) = delete;
    WindowsKept& operator=(const WindowsKept&) = delete;

private:
    HostState& state_;
    bool before_;
};

/// Runs `body` at the boundary, which nothing may leave by an exception (out of memory): the answer
/// is then `otherwise`.
template <class Result, class Body>
Result atBoundary(Result otherwise, Body body) noexcept
{
    try {
        return body();
    } catch (...) {
        return otherwise;
    }
}

} // namespace quelm

#endif
