// The fake host's stage and its user.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/fake_host.h"

#include "host/component.h"
#include "host/device_session.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace fake {

namespace {

std::logic_error cannot(const char* what, std::string_view name)
{
    return std::logic_error(std::string("a user cannot ") + what + " \"" + std::string(name) + "\" now");
}

bool isAllowed(char c, const std::string& allowed) { return allowed.find(c) != std::string::npos; }

std::string checkName(const std::string& text, const std::string& allowed)
{
    for (char c : text) {
        auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && !std::isalnum(byte) && c != '\'' && !isAllowed(c, allowed))
            return std::string("A Name must not contain the character ") + c;
    }
    return {};
}

std::string checkPhoneNumber(const std::string& text, const std::string& allowed)
{
    bool digits = false;
    for (char c : text) {
        bool digit = c >= '0' && c <= '9';
        digits = digits || digit;
        if (!digit && !isAllowed(c, allowed) && !isAllowed(c, "+.*#,"))
            return std::string("A Number must not contain the character ") + c;
    }
    return digits ? "" : "A Number must have at least one digit";
}

int maximumLength(const Widget& widget)
{
    auto maximum = widget.attributes.find("SetMaximum");
    return maximum == widget.attributes.end() ? 1 << 20 : std::stoi(maximum->second);
}

} // namespace

Host& fakeHost()
{
    static Host theHost;
    return theHost;
}

void writeBounded(char* out, std::string_view text)
{
    constexpr std::size_t most = 4096 - 1;
    std::size_t length = std::min(text.size(), most);
    if (length < text.size())
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
    std::memcpy(out, text.data(), length);
    out[length] = '\0';
}

Record record(std::string key, std::string data)
{
    auto keyLength = static_cast<std::uint16_t>(key.size());
    auto dataLength = static_cast<std::uint16_t>(data.size());
    auto recordLength = static_cast<std::uint16_t>(keyLength + dataLength);
    return {std::move(key), std::move(data), recordLength, keyLength, dataLength};
}

std::tm localTime(int year, int month, int day, int hour, int minute)
{
    std::tm time{};
    time.tm_year = year - 1900;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_hour = hour;
    time.tm_min = minute;
    return time;
}

Host::Host() { reset(); }

void Host::reset()
{
    journal.clear();
    faults.clear();
    resources.clear();
    parsedText = nullptr;
    missingWidgets.clear();
    rowFactories.clear();
    featureValues.clear();
    unknownFeatures.clear();
    featureResult = 1;
    translations.clear();
    copiesUntranslated = false;
    readsRowsByColumnCount = true;
    pointsAtCells = false;
    installation = "/opt/quelm";
    user = "ann";
    clock = {localTime(2024, 3, 5, 14, 7)};
    clockReadings = 0;
    nameCheck = checkName;
    phoneCheck = checkPhoneNumber;
    disk.directories = {"/opt/quelm", "/opt/quelm/db", "/opt/quelm/db/phonebook",
                        "/opt/quelm/db/phonebook/user"};
    disk.phonebooks = {{"/opt/quelm/db/phonebook/user/ann.xdb", {}}};
    directory = {};
    device = {};
    savedRecords.clear();
    tree = {};
    registeredObjects.clear();
    questions.clear();
    runningQuestion = nullptr;
    savedFeatures.clear();
    pBiDi = nullptr;
}

void Host::connectDevice()
{
    static BaseBiDiSession session;
    pBiDi = &session;
}

GTKObject* Host::handleOf(std::string_view name)
{
    if (missingWidgets.contains(std::string(name)))
        return nullptr;
    auto registered = registeredObjects.find(std::string(name));
    if (registered != registeredObjects.end())
        return registered->second;
    Widget* found = tree.find(name);
    return found != nullptr ? found->handle.get() : nullptr;
}

Widget* Host::lookUp(std::string_view name)
{
    GTKObject* handle = handleOf(name);
    return handle != nullptr ? GTKObject::Impl::of(*handle).widget : nullptr;
}

bool Host::translate(const std::string& text, char* out) const
{
    auto found = translations.find(text);
    if (found != translations.end())
        writeBounded(out, found->second);
    else if (copiesUntranslated)
        writeBounded(out, text);
    return found != translations.end();
}

const std::tm& Host::time(bool readClock)
{
    if (readClock)
        ++clockReadings;
    const std::size_t reading = clockReadings == 0 ? 0 : clockReadings - 1;
    return clock[std::min(reading, clock.size() - 1)];
}

Widget& Host::widget(std::string_view name)
{
    auto registered = registeredObjects.find(std::string(name));
    Widget* found = registered != registeredObjects.end() ? GTKObject::Impl::of(*registered->second).widget
                                                          : tree.find(name);
    if (found == nullptr)
        throw std::out_of_range("there is no widget \"" + std::string(name) + "\"");
    return *found;
}

int Host::number(std::string_view name)
{
    Widget& found = widget(name);
    return found.isList() ? found.lowestSelectedRow() : found.state.number;
}

bool Host::ticked(std::string_view name)
{
    Widget& found = widget(name);
    if (found.kind == "RadioButtonItem")
        return found.parent->state.number == found.indexInParent();
    return found.state.ticked;
}

std::vector<std::string> Host::names(std::string_view name)
{
    std::vector<std::string> result;
    for (const auto& row : widget(name).rows)
        result.push_back(row.empty() ? std::string() : row.front());
    return result;
}

std::vector<std::string> Host::openQuestions() const
{
    std::vector<std::string> result;
    for (const Question& question : questions)
        if (question.open)
            result.push_back(question.text);
    return result;
}

Widget& Host::operable(std::string_view name)
{
    Widget& found = widget(name);
    if (!found.isShown() || !found.isOperable())
        throw cannot("reach", name);
    return found;
}

void Host::type(std::string_view name, const std::string& text)
{
    Widget& entry = operable(name);
    auto editable = entry.attributes.find("Editable");
    if (entry.kind != "TextEntry" || (editable != entry.attributes.end() && editable->second == "false"))
        throw cannot("type into", name);
    if (static_cast<int>(text.size()) > maximumLength(entry))
        throw cannot("type that much into", name);
    entry.state.text = text;
}

void Host::tick(std::string_view name, bool on)
{
    Widget& box = operable(name);
    if (box.kind != "CheckBox")
        throw cannot("tick", name);
    box.state.ticked = on;
    applyBindings(box);
    fireCallbackOf(box);
}

void Host::choose(std::string_view name, int index)
{
    Widget& group = operable(name);
    if (group.kind == "NotebookSet" || index < 0 || index >= static_cast<int>(group.children.size()))
        throw cannot("choose that in", name);
    const Widget& item = *group.children[static_cast<std::size_t>(index)];
    if (!item.visible || !item.state.sensitive)
        throw cannot("choose that item of", name);
    group.state.number = index;
    applyBindings(group);
    fireCallbackOf(group);
}

void Host::spin(std::string_view name, int number)
{
    Widget& box = operable(name);
    if (box.kind != "SpinBox" || number < std::stoi(box.attributes.at("AdjLowerLimit")) ||
        number > std::stoi(box.attributes.at("AdjUpperLimit")))
        throw cannot("set that number in", name);
    box.state.number = number;
}

void Host::setSelection(std::string_view name, std::vector<int> rows)
{
    Widget& list = widget(name);
    for (int row : rows)
        if (row < 0 || row >= static_cast<int>(list.rows.size()))
            throw cannot("select that row of", name);
    if (!list.isList() || (rows.size() > 1 && !list.hasMultipleSelection()))
        throw cannot("select several rows of", name);
    list.selection = std::move(rows);
    list.walk = 0;
}

void Host::selectRows(std::string_view name, std::vector<int> rows)
{
    Widget& list = operable(name);
    setSelection(name, std::move(rows));
    fireCallbackOf(list);
}

void Host::press(std::string_view name)
{
    Widget& button = operable(name);
    if (button.kind != "Button" && button.kind != "ToolbarItem")
        throw cannot("press", name);
    fireCallbackOf(button);
}

void Host::close(std::string_view name)
{
    Widget& window = widget(name);
    if (window.kind != "DialogWindow" || !window.visible)
        throw cannot("close", name);
    if (!callbacks.contains(window.callback))
        window.visible = false;
    else
        fireCallbackOf(window);
}

void Host::answer(bool yes)
{
    auto top = std::find_if(questions.rbegin(), questions.rend(), [](const Question& q) { return q.open; });
    if (top == questions.rend())
        throw std::logic_error("there is no question to answer");
    Question* outer = std::exchange(runningQuestion, &*top);
    auto dialog = reinterpret_cast<_GtkDialog*>(&*top);
    auto response = reinterpret_cast<::host::ResponseCallback>(reinterpret_cast<void (*)()>(top->response));
    response(dialog, yes ? ::host::responseYes : ::host::responseNo);
    runningQuestion = outer;
}

Widget& Host::chooser(std::string_view name)
{
    Widget& found = widget(name);
    if (found.kind != "FileSelection" || !found.visible)
        throw cannot("use the file chooser", name);
    return found;
}

void Host::chooseFile(std::string_view name, const std::string& path)
{
    Widget& found = chooser(name);
    found.state.text = path;
    found.onOk();
}

void Host::cancelFileChooser(std::string_view name) { chooser(name).onCancel(); }
void Host::closeFileChooser(std::string_view name) { chooser(name).onDelete(); }

void Host::fire(const std::string& callback, Widget* widget)
{
    auto found = callbacks.find(callback);
    if (found != callbacks.end())
        found->second(nullptr, widget != nullptr ? widget->handle.get() : nullptr);
    else if (callback == "ProcessPushButtonHelpInvocation")
        journal.add(Journal::Kind::effect, "help");
    else
        throw std::logic_error("no function \"" + callback + "\"");
}

void Host::fireCallbackOf(Widget& widget)
{
    if (!widget.callback.empty())
        fire(widget.callback, &widget);
}

void Host::applyBindings(const Widget& source)
{
    auto enable = [this](std::initializer_list<const char*> names, bool on) {
        for (const char* name : names)
            widget(name).state.sensitive = on;
    };
    const bool on = source.kind == "CheckBox" ? source.state.ticked : source.state.number == 1;
    if (source.name == "LanFax Cover Sheet Option")
        enable({"LanFax Setup Cover Sheet Button", "LanFax Cover Sheet Notes"}, on);
    else if (source.name == "Show Rcpt Info Checkbox")
        enable({"Show All Rcpt Info", "Show Custom Text"}, on);
    else if (source.name == "Show Sender Info Checkbox")
        enable({"Sender Properties Button", "Sender Info"}, on);
    else if (source.name == "LanFax Send Time")
        enable({"SendAtHr", "SendAtMin", "SendAtAmPm"}, on);
    else if (source.name == "LanFax Dialing Prefix")
        enable({"LanFax Dialing Prefix Info"}, on);
    else if (source.name == "LanFax Credit Card")
        enable({"LanFax Credit Card Info"}, on);
    if (source.name == "Show Rcpt Info Checkbox" || source.name == "Show Rcpt Info")
        enable({"Cover Sheet Custom Text"}, ticked("Show Rcpt Info Checkbox") && ticked("Show Custom Text"));
}

} // namespace fake
