// The host's widget object: a handle on a widget, a factory of list rows, a file chooser.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_GTK_OBJECT_H
#define HOST_GTK_OBJECT_H

#pragma GCC visibility push(default)

/// A handle on one of the host's widgets.
///
/// The host hands out handles of the widgets that the dialog definition describes
/// (`GetWidgetByName`); these it owns. The component also creates handles of its own: as a
/// factory of list rows, and for its two file choosers. Those belong to the component, which
/// keeps them until the process ends. What a handle stands for is the host's `Impl`.
///
/// In-texts are UTF-8, NUL-terminated and copied by the host. No operation throws. A handle
/// that stands for no widget answers false and changes nothing.
class __attribute__((visibility("default"))) GTKObject {
public:
    GTKObject();
    ~GTKObject();
    GTKObject(const GTKObject&) = delete;
    GTKObject& operator=(const GTKObject&) = delete;

    /// With type "ListItem": appends a row to the list `parent`. A host reads as many entries
    /// of `columns` as the list has columns, or stops at the first null entry; cells that are
    /// missing are empty, and so are those that are `pEmptyString`. The texts are copied. One object may
    /// create any number of rows. Returns false when no row was added.
    bool createObject(GTKObject* parent, char* type, char** columns);

    /// With type "FileSelection": makes this object a file chooser over the window `parent`,
    /// hidden, with the given title. Returns false when it could not be made.
    bool createObject(GTKObject* parent, char* type, char* title, bool flag);

    /// Removes all rows of a list and its selection. Never calls a callback.
    void clearListItems();

    /// Names the object; `getObjectName` answers with the widget's Name for a widget of the
    /// definition. The returned text belongs to the host and stays valid while the object
    /// lives and is not renamed.
    void setObjectName(char* name);
    char* getObjectName();

    /// Registers the object under `name`, so that the functions that take a widget's name
    /// find it.
    void addGTKObjectToList(char* name);

    /// Property "FileSelButtonCBFunc" of a file chooser: `callback` is called when its part
    /// "ok_button" or "cancel_button" is pressed. Returns false for another property or part.
    bool setWidgetProperty(char* property, char* part, void (*callback)());

    /// "Value" of a file chooser (a path, whose last component may be a pattern such as
    /// "*.xdb"), "WidgetText" of a label.
    bool setWidgetProperty(char* property, char* value);

    /// "Visibility", "Sensitivity", and "Value" of a check box or radio item.
    bool setWidgetProperty(char* property, bool value);

    /// Reads a property that is a flag. On false `value` is untouched.
    bool getWidgetProperty(char* property, bool* value);

    /// Reads a property into the one slot that suits it, as `GetWidgetPropertyByName` does. With
    /// "Value" on a list with multiple selection each call yields one selected row in `*number`:
    /// the first when `*flag` is true on entry, the next one otherwise, and false when there is
    /// none left. The host reads `*flag` there and does not change it.
    bool getWidgetProperty(char* property, char* text, float* real, int* number, bool* flag);

    /// Calls `callback` when the object emits `signal` ("delete_event": its window was closed).
    void setSignalHandler(void (*callback)(), char* signal);

    /// While frozen, changes to a list need not be shown; unfreezing shows them.
    void setListFreezeState(bool frozen);

    /// The text of a cell (row and column from 0). True: either copied into the buffer to which
    /// `*text` points (4,096 bytes at least, cut at a character boundary), or `*text` was pointed
    /// at the row's own text, valid until the list changes. False, and `*text` and the buffer
    /// untouched: there is no such cell.
    bool getListItemData(char** text, int column, int row);

    /// The number of selected rows of a list. On false `count` is untouched.
    bool getListSelectionCount(int& count);

    /// Puts the selected row numbers of a list in order, so that `getWidgetProperty` hands them
    /// out ascending (true) or descending (false).
    void sortIntegerGList(bool ascending);

    struct Impl;

private:
    Impl* impl;
};

#pragma GCC visibility pop

#endif
