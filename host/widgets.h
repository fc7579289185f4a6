// The host's widgets by name: looking them up, and reading and setting their properties.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_WIDGETS_H
#define HOST_WIDGETS_H

class GTKObject;

#pragma GCC visibility push(default)

// A property has one slot, the parameter that carries its value:
//
//   property                     slot     on
//   "Value"                      text     TextEntry, file chooser
//   "Value"                      flag     CheckBox, RadioButtonItem
//   "Value"                      integer  NotebookSet (page), RadioButton and ComboBoxMain
//                                         (index from 0), SpinBox, ListBox (selected row
//                                         from 0, -1 for none, the lowest of several)
//   "WidgetText", "Title"        text     Label, TextEntry, DialogWindow
//   "Visibility", "Sensitivity"  flag     every widget, items of combo boxes and radio
//                                         groups included
//
// Setting a property never calls a callback of the component.

extern "C" {
/// The widget whose Name is `name`; the first in document order when several bear it, null
/// when none does. The host owns the handle, which stays valid for the life of the process.
GTKObject* GetWidgetByName(char* name);

/// Reads a property into the one slot that suits it (table above). `text` must have room for
/// 4,096 bytes: the host writes at most that many, terminator included, cutting at a character
/// boundary. Returns false, and writes nothing, when the widget or the property is unknown or
/// the pointer that suits is null.
bool GetWidgetPropertyByName(char* widget, char* property, char* text, float* number, int* integer,
                             bool* flag);

/// Sets a property from the one slot that suits it; the other parameters are 0. The text is
/// copied. In a "WidgetText", "&#10;" and "&#13;" stand for a line break. Returns false, and
/// changes nothing, when the widget or the property is unknown.
bool SetWidgetPropertyByName(char* widget, char* property, char* text, float number, int integer, bool flag);
}

#pragma GCC visibility pop

#endif
