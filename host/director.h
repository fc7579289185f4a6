// The host's component director: builds the dialogs and publishes the component's objects.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_DIRECTOR_H
#define HOST_DIRECTOR_H

#pragma GCC visibility push(default)

/// The host's registry of what a component brings along. The component reaches the one
/// instance through `pDriverDirector` and never creates or destroys it.
class __attribute__((visibility("default"))) ComponentDirector {
public:
    /// Builds the windows and widgets that `text` describes (an XML document with the root
    /// element `XmlGuiDefinition`, UTF-8, NUL-terminated, valid during the call; attribute
    /// values may hold an unescaped ">"). Windows with Visibility "false" are built hidden.
    /// Returns true when all of them were built; on false no widget of the text exists.
    bool parseXMLBuffer(char* text);

    /// Publishes `object` under `name` ("FaxSession") to the host and to other components.
    /// The name is copied. The object stays the component's and lives until the process
    /// ends; registering a name again replaces the object. Returns false when it could not
    /// be registered.
    bool registerResource(char* name, void* object);
};

extern "C" {
/// The host's director. Set before `InitializeFaxComponent` is called, never null from then on.
extern ComponentDirector* pDriverDirector;
}

#pragma GCC visibility pop

#endif
