// One widget of the driver's dialogs: what it is and what state it is in, on no particular screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_WIDGET_H
#define DRIVER_WIDGETS_WIDGET_H

#include "driver/widgets/rows.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {

/// The elements of the dialog definition, the driver's own main window, and the file choosers
/// that the component makes.
enum class WidgetKind {
    mainWindow,
    dialogWindow,
    fixedContainer,
    tableContainer,
    notebookSet,
    notebookPage,
    toolbarMenu,
    toolbarItem,
    boxContainer,
    frameContainer,
    scrolledWindowContainer,
    label,
    picture,
    button,
    checkBox,
    radioButton,
    radioButtonItem,
    comboBoxMain,
    comboBoxItem,
    textEntry,
    spinBox,
    listBox,
    fileSelection
};

/// The kind that an element of the definition makes; nothing for an unknown element.
std::optional<WidgetKind> kindOfElement(std::string_view element);

/// "Button", "ListBox", ...
const char* kindName(WidgetKind kind);

/// What about a widget has changed.
enum class WidgetChange { text, value, visibility, sensitivity };

class Widget;

/// Hears of every change of the widgets that were made with it.
class WidgetListener {
public:
    virtual ~WidgetListener() = default;
    virtual void widgetChanged(Widget& widget, WidgetChange what) = 0;
    virtual void rowsChanged(Widget& list) = 0;
};

/// One widget. The tree owns it, and it stays where it is until the process's driver ends.
class Widget {
public:
    using Attributes = std::vector<std::pair<std::string, std::string>>;

    /// `changeListener` outlives the widget.
    Widget(WidgetListener& changeListener, WidgetKind widgetKind, std::string widgetName,
           Attributes widgetAttributes, Widget* parentWidget);
    ~Widget();
    Widget(const Widget&) = delete;
    Widget& operator=(const Widget&) = delete;

    WidgetKind kind() const { return ownKind_; }
    const std::string& name() const { return ownName_; }
    void rename(std::string newName) { ownName_ = std::move(newName); }

    /// An attribute as the definition gives it, null when it does not.
    const std::string* attribute(std::string_view key) const;

    Widget* parent() const { return ownParent_; }
    const std::vector<std::unique_ptr<Widget>>& children() const { return ownChildren_; }
    bool isWindow() const
    {
        return ownKind_ == WidgetKind::dialogWindow || ownKind_ == WidgetKind::fileSelection;
    }

    // --- State of every widget -----------------------------------------------------------------

    bool visible() const { return isVisible_; }
    bool sensitive() const { return isSensitive_; }
    void setVisible(bool visible);
    void setSensitive(bool sensitive);

    /// Visible with all that it stands in, the window included.
    bool onScreen() const;
    /// Sensitive with all that it stands in.
    bool active() const;

    // --- Texts ---------------------------------------------------------------------------------

    /// A label's or button's text, a window's title, what a text field or file chooser holds.
    const std::string& text() const { return ownText_; }
    void setText(std::string_view text);
    /// The most characters (not bytes) that a user can type into a text field.
    std::size_t maximumLength() const;

    // --- Numbers -------------------------------------------------------------------------------

    /// True for a check box or radio item.
    bool hasFlag() const;
    /// A check box's state; whether a radio item is the chosen one.
    bool flag() const;
    /// Setting a radio item chooses it; clearing one changes nothing, as only choosing another
    /// can.
    void setFlag(bool on);

    /// True for a tab set, radio group, combo box, spin box or list.
    bool hasNumber() const;
    /// Page, index or number; of a list, its lowest selected row, -1 for none.
    int number() const;
    /// The least and the greatest number, both possible; nothing when there is none (a combo box
    /// without items).
    std::optional<std::pair<int, int>> numberRange() const;
    /// What a spin box starts with; 0 for the others.
    int initialNumber() const;
    /// False, and nothing changed, when the number is out of range.
    bool setNumber(int number);

    /// The items of a radio group or combo box, the pages of a tab set.
    std::vector<Widget*> items() const;

    // --- Lists ---------------------------------------------------------------------------------

    bool isList() const { return ownKind_ == WidgetKind::listBox; }
    bool isMultipleSelection() const { return multiple_; }
    /// The rows of a list; empty and without columns on any other widget.
    const Rows& rows() const { return *listRows_; }
    /// Appends a row, as `Rows::add` does.
    void addRow(const char* const* cells);
    /// Removes all rows and the selection.
    void clearRows();
    /// While frozen, the listener does not hear of changed rows; unfreezing makes up for it.
    void freeze(bool frozen);

    /// The selected rows in the order in which they were selected, or sorted.
    const std::vector<int>& selection() const { return selectedRows_; }
    /// Selects these rows, which exist and are distinct.
    void setSelection(std::vector<int> rows);
    void sortSelection(bool ascending);
    /// Hands out the selected rows one by one: the first one again (true), or the next.
    std::optional<int> nextSelected(bool first);

private:
    friend class DefinitionReader;

    void changed(WidgetChange what);
    void rowsChanged();
    int positionAmongItems() const;
    int integerAttribute(std::string_view key, int fallback) const;

    WidgetListener& listener_;
    WidgetKind ownKind_;
    std::string ownName_;
    Attributes ownAttributes_;
    Widget* ownParent_;
    std::vector<std::unique_ptr<Widget>> ownChildren_;

    bool isVisible_ = true;
    bool isSensitive_ = true;
    std::string ownText_;
    int ownNumber_ = 0; // index, page, number; 0 or 1 of a check box

    std::unique_ptr<Rows> listRows_;
    bool multiple_ = false;
    bool rowsFrozen_ = false;
    bool rowsChangedWhileFrozen_ = false;
    std::vector<int> selectedRows_;
    std::size_t selectionCursor_ = 0;
};

} // namespace quelm

#endif
