// The fake host's widgets: a tree built from the dialog definition, without a toolkit.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_WIDGET_TREE_H
#define TESTS_SUPPORT_WIDGET_TREE_H

#include "host/gtk_object.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace fake {

/// What a user or a feature can change in a widget.
struct WidgetState {
    std::string text; ///< TextEntry, Label, file chooser
    int number = 0;   ///< index, page or number
    bool ticked = false;
    bool sensitive = true;
};

/// One element of the dialog definition, or a file chooser that the component made.
struct Widget {
    std::string name;
    std::string kind; ///< the element's name, "FileSelection" for a file chooser
    std::string title;
    std::string callback;                          ///< AddCallback
    std::map<std::string, std::string> attributes; ///< all of them, as written
    bool visible = true;
    WidgetState state;
    WidgetState initial; ///< what the feature's default brings back
    Widget* parent = nullptr;
    std::vector<std::unique_ptr<Widget>> children;
    std::unique_ptr<GTKObject> handle; ///< what `GetWidgetByName` yields

    // A list's rows and the selected ones, in the order in which the user selected them.
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
    std::vector<int> selection;
    std::size_t walk = 0; ///< the next selected row that `getWidgetProperty` hands out
    bool frozen = false;

    // A file chooser's callbacks.
    void (*onOk)() = nullptr;
    void (*onCancel)() = nullptr;
    void (*onDelete)() = nullptr;

    bool isList() const { return kind == "ListBox"; }
    bool hasMultipleSelection() const;
    int lowestSelectedRow() const;
    /// For an item: its place in its group.
    int indexInParent() const;
    /// Visible, and so is everything around it.
    bool isShown() const;
    /// Sensitive, and so is everything around it.
    bool isOperable() const;
};

/// Which slot of the boundary carries a property.
enum class Slot { none, text, integer, flag };
Slot slotOf(const Widget& widget, std::string_view property);

/// The widgets of the definition.
class WidgetTree {
public:
    /// Builds the windows from the definition; false, and nothing built, when it is no valid text.
    bool build(const std::string& definition);

    /// The first widget of that name in document order, or null.
    Widget* find(std::string_view name) const;
    /// How many widgets bear the name.
    int countNamed(std::string_view name) const;
    const std::vector<std::unique_ptr<Widget>>& windows() const { return roots_; }

private:
    std::vector<std::unique_ptr<Widget>> roots_;
};

/// The text with the character references of line breaks resolved, as a label shows it.
std::string withLineBreaks(std::string text);

} // namespace fake

/// What the fake host's handles stand for: a widget of the definition, or one of their own.
struct GTKObject::Impl {
    fake::Widget* widget = nullptr;          ///< null for a factory of rows
    std::unique_ptr<fake::Widget> ownWidget; ///< a file chooser's
    std::string objectName;

    static Impl& of(GTKObject& object);
    static std::unique_ptr<GTKObject> handleFor(fake::Widget& widget);
};

#endif
