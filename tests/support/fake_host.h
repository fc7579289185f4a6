// A whole host in memory, for tests: it builds the dialogs, keeps features, records, a directory and a
// device, writes down every call in order, fails when told to, and acts as the user.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_FAKE_HOST_H
#define TESTS_SUPPORT_FAKE_HOST_H

// A test begins with `fakeHost().reset()`, starts the component, acts, and looks at what reached the host:
//
//     fakeHost().type("RecipientName", "Anne");
//     fakeHost().press("LanFaxAddRcpt OK Button");
//     EXPECT_EQ(fakeHost().journal.effects(), lines({R"(set "LanFax Add Recipient Window" Visibility
//     off)"}));
//
// Out of the box it is the pleasant host: the installation "/opt/quelm" with its folders, the user "ann" with
// an empty phonebook, no device, no translations, the clock at 2024-03-05 14:07:00.

#include "tests/support/faults.h"
#include "tests/support/journal.h"
#include "tests/support/widget_tree.h"

#include <cstdint>
#include <ctime>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

struct _GtkWidget;
struct _GtkDialog;

namespace fake {

using WidgetCallback = std::function<void(_GtkWidget*, GTKObject*)>;

/// A question that the component put on the screen.
struct Question {
    int kind;
    void (*response)(_GtkWidget*, void*);
    std::string text;
    bool open = true;
};

/// One record of a phonebook, as the component saved it.
struct Record {
    std::string key;
    std::string data;
    std::uint16_t recordLength = 0;
    std::uint16_t keyLength = 0;
    std::uint16_t dataLength = 0;
};

/// A record as a test writes one down.
Record record(std::string key, std::string data);

/// What stands on the fake host's disk.
struct Disk {
    std::set<std::string> directories;
    std::map<std::string, std::vector<Record>> phonebooks; ///< by path, in order of insertion
};

/// The fake directory server: answers every search with the same entries.
struct Directory {
    std::vector<std::map<std::string, std::string>> entries; ///< attribute name to value
    int responseCode = 0;
    int itemCount = -1; ///< what the session reports; -1: the number of entries
    bool missingAttributeEmptiesText = true;
};

/// The fake device's answers.
struct Device {
    std::map<std::pair<std::string, int>, std::string> tables;
    std::map<std::string, std::string> objects;
};

/// A local time, fields as people write them.
std::tm localTime(int year, int month, int day, int hour, int minute);

class Host {
public:
    Host();

    /// Everything back to the pleasant host. Handles of widgets that were handed out die; objects that
    /// the component created stay the component's.
    void reset();

    // --- What the component did ---------------------------------------------------------------

    Journal journal;
    std::map<std::string, void*> resources;
    const char* parsedText = nullptr; ///< what the director was last handed

    /// The widget; throws when there is none.
    Widget& widget(std::string_view name);
    std::string text(std::string_view name) { return widget(name).state.text; }
    std::string title(std::string_view name) { return widget(name).title; }
    int number(std::string_view name);
    bool ticked(std::string_view name);
    bool visible(std::string_view name) { return widget(name).visible; }
    bool sensitive(std::string_view name) { return widget(name).state.sensitive; }
    /// A list's rows, each with as many cells as the list has columns.
    std::vector<std::vector<std::string>> rows(std::string_view name) { return widget(name).rows; }
    /// The first cells of a list's rows.
    std::vector<std::string> names(std::string_view name);

    /// The questions that are still on the screen, oldest first.
    std::vector<std::string> openQuestions() const;

    // --- The user's actions -------------------------------------------------------------------
    // They throw std::logic_error when a user could not do that: the widget is hidden or insensitive,
    // the text too long, the row absent.

    void type(std::string_view name, const std::string& text);
    void tick(std::string_view name, bool on = true);
    void choose(std::string_view name, int index);
    void spin(std::string_view name, int number);
    void selectRows(std::string_view name, std::vector<int> rows);
    void press(std::string_view name);
    /// Closes a window from its frame.
    void close(std::string_view name);
    /// Answers the question on top.
    void answer(bool yes);
    /// In a file chooser that is on the screen: picks a file, or presses Cancel, or closes it.
    void chooseFile(std::string_view name, const std::string& path);
    void cancelFileChooser(std::string_view name);
    void closeFileChooser(std::string_view name);

    /// Calls one of the component's functions by name, as a widget would.
    void fire(const std::string& callback, Widget* widget = nullptr);

    // --- Setting the stage: none of these calls back or is in the journal ----------------------

    Faults faults;
    std::map<std::string, WidgetCallback> callbacks; ///< the component's functions; survives `reset`
    std::set<std::string> missingWidgets;            ///< names that lookups do not find
    std::map<std::string, int> featureValues;        ///< overrides what the widget holds
    std::set<std::string> unknownFeatures;
    int featureResult = 1; ///< what setting, saving and restoring features answers
    std::map<std::string, std::string> translations;
    bool copiesUntranslated = false;    ///< a text without translation: copied into the buffer, or left alone
    bool readsRowsByColumnCount = true; ///< otherwise up to the first null
    bool pointsAtCells = false;         ///< `getListItemData` points at the row's text, or copies it
    std::string installation;
    std::string user;
    std::vector<std::tm> clock; ///< each new reading takes the next one, the last stands still
    std::function<std::string(const std::string& text, const std::string& allowed)> nameCheck; ///< "" accepts
    std::function<std::string(const std::string& text, const std::string& allowed)>
        phoneCheck; ///< "" accepts
    Disk disk;
    Directory directory;
    Device device;
    std::vector<Record> savedRecords; ///< every record handed to `saveRecord`

    /// Gives the host a session with the device.
    void connectDevice();
    /// Puts any text, however long, into a text field.
    void setText(std::string_view name, const std::string& text) { widget(name).state.text = text; }
    void setSensitive(std::string_view name, bool on) { widget(name).state.sensitive = on; }
    void setNumber(std::string_view name, int number) { widget(name).state.number = number; }
    /// Selects rows without telling the component.
    void setSelection(std::string_view name, std::vector<int> rows);

    // --- For the boundary's functions ---------------------------------------------------------

    WidgetTree tree;
    std::map<std::string, GTKObject*> registeredObjects; ///< the component's, by `addGTKObjectToList`
    std::set<const GTKObject*> rowFactories;             ///< the component's objects that created rows
    std::deque<Question> questions;
    Question* runningQuestion = nullptr;
    std::size_t clockReadings = 0;
    std::map<std::string, WidgetState> savedFeatures;

    /// The widget, or its handle, that the boundary's lookups find, or null.
    Widget* lookUp(std::string_view name);
    GTKObject* handleOf(std::string_view name);
    /// For a text: the translation, or what stands in for it. True when there is a translation.
    bool translate(const std::string& text, char* out) const;
    /// The next reading of the clock, or the last one again.
    const std::tm& time(bool readClock);
    void applyBindings(const Widget& source);

private:
    Widget& operable(std::string_view name);
    Widget& chooser(std::string_view name);
    void fireCallbackOf(Widget& widget);
};

/// The one host of the test program.
Host& fakeHost();

/// Writes at most 4,096 bytes, terminator included, cutting at a character boundary.
void writeBounded(char* out, std::string_view text);

} // namespace fake

#endif
