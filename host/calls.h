// Const-correct, typed calls over the host boundary.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_CALLS_H
#define HOST_CALLS_H

// The boundary takes `char*` and one slot per property. These calls are the one place where const
// is cast away (the host never writes through an in-parameter) and where a slot is chosen.

#include "device_session.h"
#include "director.h"
#include "driver_info.h"
#include "features.h"
#include "files.h"
#include "gtk_object.h"
#include "messages.h"
#include "record_database.h"
#include "texts.h"
#include "widgets.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace host {

/// A constant text as the boundary takes it. The host only reads it.
inline char* in(const char* text) { return const_cast<char*>(text); }
inline char* in(const std::string& text) { return in(text.c_str()); }

/// The most bytes, terminator included, that a host writes into a text buffer without a size.
inline constexpr std::size_t textBufferSize = 4096;

/// A buffer that a host may write a text into; starts out empty, and a failed read leaves it as
/// it was.
struct TextBuffer {
    char text[textBufferSize] = {};

    [[nodiscard]] bool empty() const { return text[0] == '\0'; }
    const char* c_str() const { return text; }
    void clear() { text[0] = '\0'; }
};

// --- Widgets -------------------------------------------------------------------------------

/// The handle of a widget, or null.
[[nodiscard]] inline GTKObject* widget(const char* name) { return GetWidgetByName(in(name)); }

/// Shows or hides a window or widget.
inline void setVisible(const char* name, bool visible)
{
    SetWidgetPropertyByName(in(name), in("Visibility"), nullptr, 0, 0, visible);
}
inline void show(const char* name) { setVisible(name, true); }
inline void hide(const char* name) { setVisible(name, false); }

/// Lets the user operate a widget, or not.
inline void setSensitive(const char* name, bool sensitive)
{
    SetWidgetPropertyByName(in(name), in("Sensitivity"), nullptr, 0, 0, sensitive);
}

/// The text that a label or text field shows ("WidgetText"), a window's title, a text field's
/// value, a check box's state, and the index of a tab set, combo box or radio group.
inline void setWidgetText(const char* name, const char* text)
{
    SetWidgetPropertyByName(in(name), in("WidgetText"), in(text), 0, 0, false);
}
inline void setTitle(const char* name, const char* title)
{
    SetWidgetPropertyByName(in(name), in("Title"), in(title), 0, 0, false);
}
inline void setTextValue(const char* name, const char* text)
{
    SetWidgetPropertyByName(in(name), in("Value"), in(text), 0, 0, false);
}
inline void setTicked(const char* name, bool ticked)
{
    SetWidgetPropertyByName(in(name), in("Value"), nullptr, 0, 0, ticked);
}
inline void setIndex(const char* name, int index)
{
    SetWidgetPropertyByName(in(name), in("Value"), nullptr, 0, index, false);
}

/// Reads a text field's value. On false the buffer is untouched.
inline bool readText(const char* name, TextBuffer& buffer)
{
    return GetWidgetPropertyByName(in(name), in("Value"), buffer.text, nullptr, nullptr, nullptr);
}

/// Reads a check box or radio item. On false `ticked` is untouched.
inline bool readTicked(const char* name, bool& ticked)
{
    return GetWidgetPropertyByName(in(name), in("Value"), nullptr, nullptr, nullptr, &ticked);
}

/// Reads the index of a tab set, combo box or radio group, a spin box's number or a list's
/// selected row. On false `value` is untouched.
inline bool readInteger(const char* name, int& value)
{
    return GetWidgetPropertyByName(in(name), in("Value"), nullptr, nullptr, &value, nullptr);
}

// --- Features ------------------------------------------------------------------------------

/// The feature's current value, or `unknown` when the host does not know the feature.
[[nodiscard]] inline int featureValue(const char* feature, int unknown)
{
    int value = unknown;
    GetFeatureOptValue(in(feature), &value);
    return value;
}

inline int setFeaturesToDefaults(const char* tokenList) { return SetFeaturesWithDefaultValue(in(tokenList)); }
inline int saveFeatures(const char* tokenList) { return SaveFeaturesWithCurrentValue(in(tokenList)); }
inline int restoreFeatures(const char* tokenList) { return RestoreFeaturesWithCurrentValue(in(tokenList)); }

// --- Texts ---------------------------------------------------------------------------------

/// The 1-based position of `token` in the comma-delimited `list`, 0 when it is absent.
[[nodiscard]] inline int tokenNumber(const char* list, const char* token, bool flag)
{
    return GetTokenNum(in(list), in(token), ',', flag);
}

/// A message for the user, allocated by the host with `new[]`; null when there is none.
using Message = std::unique_ptr<char[]>;

[[nodiscard]] inline Message validateName(const char* text, const char* allowed)
{
    return Message(ValidateName(in(text), in(allowed)));
}
[[nodiscard]] inline Message validatePhoneNumber(const char* text, const char* allowed)
{
    return Message(ValidatePhoneNumber(in(text), in(allowed)));
}
[[nodiscard]] inline Message saveString(const char* format, const char* argument)
{
    return Message(SaveString(in(format), in(argument)));
}

/// The plain text of a marked-up text.
[[nodiscard]] inline std::string plainText(std::string_view markup)
{
    std::string copy(markup);
    std::string plain;
    ParsePangoMarkupString(copy.data(), static_cast<int>(copy.size()), plain);
    return plain;
}

// --- Questions -----------------------------------------------------------------------------

/// Asks a question with the answers yes and no; `response` is called later with the answer.
inline void askQuestion(void (*response)(_GtkWidget*, void*), const std::string& text)
{
    constexpr int yesNoQuestion = 3;
    PopupMessageDialog(yesNoQuestion, response, in(text));
}

// --- Driver facts --------------------------------------------------------------------------

[[nodiscard]] inline bool translate(const char* text, char* out)
{
    return pDriverGlobals->translateMessage(in(text), out);
}

/// The current local time by a strftime-style format. `readClock` false formats the time that
/// was read last.
inline void formatTime(char* out, std::size_t size, const char* format, bool readClock)
{
    GetCurrentTimeWithFormat(out, static_cast<int>(size), in(format), readClock ? 1 : 0);
}

// --- Files and records ---------------------------------------------------------------------

[[nodiscard]] inline bool pathExists(const std::string& path) { return FileObject::doesPathExist(in(path)); }
[[nodiscard]] inline bool createDirectory(const std::string& path, int mode)
{
    return FileObject::createDirectory(in(path), mode);
}

[[nodiscard]] inline bool openDatabase(QuelmLegacyDatabase& database, const std::string& path,
                                       const char* mode)
{
    return database.openDatabase(in(path), in(mode));
}
[[nodiscard]] inline bool createDatabase(QuelmLegacyDatabase& database, const std::string& path, int flags)
{
    return database.createDatabase(in(path), flags);
}

// --- Lists ---------------------------------------------------------------------------------

/// Appends a row to `list` through `factory`. `columns` holds six texts and a closing null.
inline bool addListRow(GTKObject& factory, GTKObject* list, const char* const* columns)
{
    return factory.createObject(list, in("ListItem"), const_cast<char**>(columns));
}

} // namespace host

#endif
