// All windows and widgets of the driver, built from dialog definitions; front ends observe it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_WIDGET_TREE_H
#define DRIVER_WIDGETS_WIDGET_TREE_H

#include "driver/widgets/widget.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quelm {

/// Told about everything that happens to the tree. A front end derives its own and puts it on a
/// screen. Called on the driver's thread after the change; must not change the tree from within
/// (the driver's own bindings, which settle after one step, are the exception) and must not throw.
class WidgetObserver {
public:
    virtual ~WidgetObserver() = default;

    /// A window or file chooser, with all that stands in it, is new in the tree.
    virtual void windowAdded(Widget& /*window*/) {}
    /// A file chooser is about to leave the tree.
    virtual void windowRemoved(Widget& /*window*/) {}
    /// For a list, `value` means its selection; for a radio item, look at its group.
    virtual void changed(Widget& /*widget*/, WidgetChange /*what*/) {}
    /// Rows were added or removed. Comes once for each row: mark the list, and draw it later.
    virtual void rowsChanged(Widget& /*list*/) {}
};

/// The widget tree. The component addresses its widgets by name; names need not be unique, and the
/// first one in document order counts.
class WidgetTree : private WidgetListener {
public:
    /// The name of the driver's own main window, which the tree starts with and which is visible.
    static constexpr const char* mainWindowName = "Main Driver Window";

    WidgetTree();
    ~WidgetTree() override;
    WidgetTree(const WidgetTree&) = delete;
    WidgetTree& operator=(const WidgetTree&) = delete;

    /// Builds the windows that an XML document with the root element `XmlGuiDefinition` describes,
    /// all of them hidden. A window that the tree already has (the component was started again)
    /// stays as it is. Returns whether a window was added. Throws quelm::Error that says what is wrong
    /// with the document, and where; the tree is then as before.
    bool build(std::string_view definition);

    /// Adds a hidden file chooser over `owner`.
    Widget& addFileChooser(const Widget& owner, const std::string& title);
    /// Removes a file chooser and its names.
    void removeFileChooser(Widget& chooser);

    /// Makes `widget` known under `name` as well, unless another one bears that name.
    void registerName(const std::string& name, Widget& widget);

    /// The widget that bears `name`, null when none does.
    Widget* find(std::string_view name) const;

    /// The main window, then dialogs and file choosers in the order in which they came.
    const std::vector<std::unique_ptr<Widget>>& windows() const { return topLevel_; }

    /// The observers stay the caller's and outlive the tree or are removed.
    void addObserver(WidgetObserver& observer);
    void removeObserver(WidgetObserver& observer);

private:
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    using Names = std::unordered_map<std::string, Widget*, NameHash, std::equal_to<>>;

    WidgetListener& listener() { return *this; }
    void widgetChanged(Widget& widget, WidgetChange what) override;
    void rowsChanged(Widget& list) override;
    void registerNames(Widget& widget);
    void addWindow(std::unique_ptr<Widget> window);

    std::vector<std::unique_ptr<Widget>> topLevel_;
    Names names_;
    std::vector<WidgetObserver*> observers_;
};

} // namespace quelm

#endif
