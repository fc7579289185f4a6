// A widget's state and the rules that keep it sound.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace quelm {

namespace {

struct KindName {
    WidgetKind kind;
    const char* element;
};

constexpr std::array<KindName, 23> kindNames{{
    {WidgetKind::mainWindow, "MainWindow"},
    {WidgetKind::dialogWindow, "DialogWindow"},
    {WidgetKind::fixedContainer, "FixedContainer"},
    {WidgetKind::tableContainer, "TableContainer"},
    {WidgetKind::notebookSet, "NotebookSet"},
    {WidgetKind::notebookPage, "NotebookPage"},
    {WidgetKind::toolbarMenu, "ToolbarMenu"},
    {WidgetKind::toolbarItem, "ToolbarItem"},
    {WidgetKind::boxContainer, "BoxContainer"},
    {WidgetKind::frameContainer, "FrameContainer"},
    {WidgetKind::scrolledWindowContainer, "ScrolledWindowContainer"},
    {WidgetKind::label, "Label"},
    {WidgetKind::picture, "Picture"},
    {WidgetKind::button, "Button"},
    {WidgetKind::checkBox, "CheckBox"},
    {WidgetKind::radioButton, "RadioButton"},
    {WidgetKind::radioButtonItem, "RadioButtonItem"},
    {WidgetKind::comboBoxMain, "ComboBoxMain"},
    {WidgetKind::comboBoxItem, "ComboBoxItem"},
    {WidgetKind::textEntry, "TextEntry"},
    {WidgetKind::spinBox, "SpinBox"},
    {WidgetKind::listBox, "ListBox"},
    {WidgetKind::fileSelection, "FileSelection"},
}};

bool isItem(WidgetKind kind)
{
    return kind == WidgetKind::radioButtonItem || kind == WidgetKind::comboBoxItem ||
           kind == WidgetKind::notebookPage;
}

std::size_t countColumns(const Widget& widget)
{
    std::size_t count = 0;
    while (widget.attribute("AddListColumn" + std::to_string(count + 1)) != nullptr)
        ++count;
    return count;
}

} // namespace

std::optional<WidgetKind> kindOfElement(std::string_view element)
{
    for (const KindName& entry : kindNames) {
        const bool ofTheDefinition =
            entry.kind != WidgetKind::mainWindow && entry.kind != WidgetKind::fileSelection;
        if (ofTheDefinition && element == entry.element)
            return entry.kind;
    }
    return std::nullopt;
}

const char* kindName(WidgetKind kind)
{
    const auto* found = std::find_if(kindNames.begin(), kindNames.end(),
                                     [kind](const KindName& entry) { return entry.kind == kind; });
    return found->element;
}

Widget::Widget(WidgetListener& changeListener, WidgetKind widgetKind, std::string widgetName,
               Attributes widgetAttributes, Widget* parentWidget)
    : listener_(changeListener), ownKind_(widgetKind), ownName_(std::move(widgetName)),
      ownAttributes_(std::move(widgetAttributes)), ownParent_(parentWidget)
{
    const auto is = [this](std::string_view key, std::string_view value) {
        const std::string* given = attribute(key);
        return given != nullptr && *given == value;
    };
    isVisible_ = !is("Visibility", "false");
    isSensitive_ = !is("Sensitivity", "false");
    if (const std::string* given = attribute(ownKind_ == WidgetKind::dialogWindow ? "Title" : "Text"))
        ownText_ = *given;
    if (ownKind_ == WidgetKind::dialogWindow) {
        // A dialog is never built on the screen: the component shows it, also one without the attribute.
        isVisible_ = false;
    }
    ownNumber_ = initialNumber();
    multiple_ = is("SelectionMode", "Multiple");
    listRows_ = std::make_unique<Rows>(isList() ? countColumns(*this) : 0);
}

Widget::~Widget() = default;

const std::string* Widget::attribute(std::string_view key) const
{
    for (const auto& [name, value] : ownAttributes_)
        if (name == key)
            return &value;
    return nullptr;
}

int Widget::integerAttribute(std::string_view key, int fallback) const
{
    const std::string* given = attribute(key);
    int value = fallback;
    if (given != nullptr)
        std::from_chars(given->data(), given->data() + given->size(), value);
    return value;
}

void Widget::changed(WidgetChange what) { listener_.widgetChanged(*this, what); }

void Widget::setVisible(bool visible)
{
    if (isVisible_ != visible) {
        isVisible_ = visible;
        changed(WidgetChange::visibility);
    }
}

void Widget::setSensitive(bool sensitive)
{
    if (isSensitive_ != sensitive) {
        isSensitive_ = sensitive;
        changed(WidgetChange::sensitivity);
    }
}

bool Widget::onScreen() const
{
    for (const Widget* widget = this; widget != nullptr; widget = widget->ownParent_)
        if (!widget->isVisible_)
            return false;
    return true;
}

bool Widget::active() const
{
    for (const Widget* widget = this; widget != nullptr; widget = widget->ownParent_)
        if (!widget->isSensitive_)
            return false;
    return true;
}

void Widget::setText(std::string_view text)
{
    if (ownText_ != text) {
        ownText_ = text;
        changed(WidgetChange::text);
    }
}

std::size_t Widget::maximumLength() const
{
    const int most = integerAttribute("SetMaximum", -1);
    return most < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(most);
}

bool Widget::hasFlag() const
{
    return ownKind_ == WidgetKind::checkBox || ownKind_ == WidgetKind::radioButtonItem;
}

bool Widget::flag() const
{
    if (ownKind_ == WidgetKind::radioButtonItem)
        return ownParent_ != nullptr && ownParent_->ownNumber_ == positionAmongItems();
    return ownNumber_ != 0;
}

void Widget::setFlag(bool on)
{
    if (ownKind_ == WidgetKind::radioButtonItem) {
        if (on && ownParent_ != nullptr)
            ownParent_->setNumber(positionAmongItems());
        return;
    }
    if (ownKind_ == WidgetKind::checkBox && flag() != on) {
        ownNumber_ = on ? 1 : 0;
        changed(WidgetChange::value);
    }
}

bool Widget::hasNumber() const
{
    switch (ownKind_) {
    case WidgetKind::notebookSet:
    case WidgetKind::radioButton:
    case WidgetKind::comboBoxMain:
    case WidgetKind::spinBox:
    case WidgetKind::listBox:
        return true;
    default:
        return false;
    }
}

int Widget::number() const
{
    if (isList()) {
        const auto lowest = std::min_element(selectedRows_.begin(), selectedRows_.end());
        return lowest == selectedRows_.end() ? -1 : *lowest;
    }
    return ownNumber_;
}

std::optional<std::pair<int, int>> Widget::numberRange() const
{
    if (ownKind_ == WidgetKind::spinBox) {
        const int lowest = integerAttribute("AdjLowerLimit", 0);
        return std::pair(
            lowest, std::max(lowest, integerAttribute("AdjUpperLimit", std::numeric_limits<int>::max())));
    }
    if (isList())
        return std::pair(-1, static_cast<int>(listRows_->count()) - 1);
    const std::size_t count = items().size();
    if (!hasNumber() || count == 0)
        return std::nullopt;
    return std::pair(0, static_cast<int>(count) - 1);
}

int Widget::initialNumber() const
{
    if (ownKind_ != WidgetKind::spinBox)
        return 0;
    const auto range = numberRange();
    return std::clamp(integerAttribute("AdjDefaultValue", 0), range->first, range->second);
}

bool Widget::setNumber(int number)
{
    const auto range = numberRange();
    if (!range || number < range->first || number > range->second)
        return false;
    if (isList()) {
        setSelection(number < 0 ? std::vector<int>{} : std::vector<int>{number});
    } else if (ownNumber_ != number) {
        ownNumber_ = number;
        changed(WidgetChange::value);
    }
    return true;
}

std::vector<Widget*> Widget::items() const
{
    std::vector<Widget*> found;
    for (const auto& child : ownChildren_)
        if (isItem(child->ownKind_))
            found.push_back(child.get());
    return found;
}

int Widget::positionAmongItems() const
{
    int position = 0;
    for (const auto& sibling : ownParent_->ownChildren_) {
        if (sibling.get() == this)
            return position;
        position += isItem(sibling->ownKind_) ? 1 : 0;
    }
    return -1;
}

void Widget::rowsChanged()
{
    if (rowsFrozen_)
        rowsChangedWhileFrozen_ = true;
    else
        listener_.rowsChanged(*this);
}

void Widget::addRow(const char* const* cells)
{
    listRows_->add(cells);
    rowsChanged();
}

void Widget::clearRows()
{
    listRows_->clear();
    selectedRows_.clear();
    selectionCursor_ = 0;
    rowsChanged();
}

void Widget::freeze(bool frozen)
{
    rowsFrozen_ = frozen;
    if (!frozen && rowsChangedWhileFrozen_) {
        rowsChangedWhileFrozen_ = false;
        listener_.rowsChanged(*this);
    }
}

void Widget::setSelection(std::vector<int> rows)
{
    selectionCursor_ = 0;
    if (selectedRows_ != rows) {
        selectedRows_ = std::move(rows);
        changed(WidgetChange::value);
    }
}

void Widget::sortSelection(bool ascending)
{
    if (ascending)
        std::sort(selectedRows_.begin(), selectedRows_.end());
    else
        std::sort(selectedRows_.rbegin(), selectedRows_.rend());
}

std::optional<int> Widget::nextSelected(bool first)
{
    if (first)
        selectionCursor_ = 0;
    if (selectionCursor_ >= selectedRows_.size())
        return std::nullopt;
    return selectedRows_[selectionCursor_++];
}

} // namespace quelm
