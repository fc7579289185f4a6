// How the driver binds the boundary's widget objects to its widgets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_BOUNDARY_GTK_HANDLE_H
#define DRIVER_BOUNDARY_GTK_HANDLE_H

class GTKObject;

namespace quelm {

class HostState;
class Widget;

/// Names of a file chooser's parts and of the signal that a window emits when it is closed from
/// its frame.
inline constexpr const char* okPart = "ok_button";
inline constexpr const char* cancelPart = "cancel_button";
inline constexpr const char* closeSignal = "delete_event";

/// Makes `handle` stand for `widget` as long as `state` exists.
void pointHandleAt(GTKObject& handle, HostState& state, Widget& widget);

/// The widget that a handle stands for; null for a handle that is null, a factory, or left over
/// from a driver that has ended.
Widget* widgetOf(GTKObject* handle);

} // namespace quelm

#endif
