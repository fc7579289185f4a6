// Texts, questions, features, facts and the clock of the fake host's boundary.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/driver_info.h"
#include "host/features.h"
#include "host/messages.h"
#include "host/texts.h"
#include "tests/support/fake_host.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using fake::fakeHost;
using fake::Journal;
using fake::quoted;
using fake::Widget;

namespace {

GlobalDriverInfo theGlobals;
char emptyText[1] = "";

void effect(std::string entry) { fakeHost().journal.add(Journal::Kind::effect, std::move(entry)); }
void read(std::string entry) { fakeHost().journal.add(Journal::Kind::read, std::move(entry)); }
void lookup(std::string entry) { fakeHost().journal.add(Journal::Kind::lookup, std::move(entry)); }

std::vector<std::string> tokensOf(const std::string& list, char delimiter)
{
    std::vector<std::string> tokens;
    std::size_t begin = !list.empty() && list.front() == delimiter ? 1 : 0;
    for (auto end = list.find(delimiter, begin); end != std::string::npos;
         end = list.find(delimiter, begin)) {
        tokens.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    if (begin < list.size())
        tokens.push_back(list.substr(begin));
    return tokens;
}

char* allocated(const std::string& text)
{
    char* copy = new char[text.size() + 1];
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

/// Plain text of valid markup: tags dropped, entities resolved. False when it is no valid markup.
bool parseMarkup(const std::string& markup, std::string& plain)
{
    static const std::pair<const char*, const char*> entities[] = {
        {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}};
    for (std::size_t i = 0; i < markup.size(); ++i) {
        if (markup[i] != '<' && markup[i] != '&') {
            plain += markup[i];
            continue;
        }
        const std::size_t end = markup.find(markup[i] == '<' ? '>' : ';', i);
        if (end == std::string::npos)
            return false;
        if (markup[i] == '&') {
            const std::string name = markup.substr(i + 1, end - i - 1);
            auto entity = std::find_if(std::begin(entities), std::end(entities),
                                       [&name](const auto& e) { return name == e.first; });
            if (entity == std::end(entities))
                return false;
            plain += entity->second;
        }
        i = end;
    }
    return true;
}

char* validated(const char* what, const char* text, const char* allowed, const std::string& message)
{
    read(std::string(what) + " " + quoted(text) + " " + quoted(allowed) + " -> " +
         (message.empty() ? "accepted" : quoted(message)));
    return message.empty() ? nullptr : allocated(message);
}

/// Does something with every known feature that a token list names.
template <typename Use>
int forEachFeature(const char* what, const char* tokenList, Use use)
{
    effect(std::string(what) + " " + quoted(tokenList));
    for (const std::string& name : tokensOf(tokenList, ','))
        if (Widget* widget = fakeHost().tree.find(name))
            use(*widget);
    return fakeHost().featureResult;
}

} // namespace

extern "C" {
GlobalDriverInfo* pDriverGlobals = &theGlobals;
char* pEmptyString = emptyText;

void PopupMessageDialog(int kind, void (*response)(_GtkWidget*, void*), char* text)
{
    effect("ask " + std::to_string(kind) + " " + quoted(text));
    fakeHost().questions.push_back({kind, response, text});
}

void CloseCurrentPopupDialog()
{
    effect("closeQuestion");
    auto& questions = fakeHost().questions;
    if (fakeHost().runningQuestion != nullptr) {
        fakeHost().runningQuestion->open = false;
        return;
    }
    auto last = std::find_if(questions.rbegin(), questions.rend(), [](const auto& q) { return q.open; });
    if (last != questions.rend())
        last->open = false;
}

void ParsePangoMarkupString(char* text, int length, std::string& out)
{
    const std::string markup(text, static_cast<std::size_t>(length));
    lookup("plainText " + quoted(markup));
    std::string plain;
    out = parseMarkup(markup, plain) ? plain : markup;
}

char* ValidateName(char* text, char* allowed)
{
    return validated("validateName", text, allowed, fakeHost().nameCheck(text, allowed));
}

char* ValidatePhoneNumber(char* text, char* allowed)
{
    return validated("validatePhoneNumber", text, allowed, fakeHost().phoneCheck(text, allowed));
}

char* SaveString(char* format, void* argument)
{
    const char* text = static_cast<const char*>(argument);
    lookup("saveString " + quoted(format) + " " + quoted(text));
    std::string result = format;
    if (auto slot = result.find("%s"); slot != std::string::npos)
        result.replace(slot, 2, text);
    return allocated(result);
}

int GetTokenNum(char* list, char* token, char delimiter, bool flag)
{
    const auto tokens = tokensOf(list, delimiter);
    const auto found = std::find(tokens.begin(), tokens.end(), token);
    const int number = found == tokens.end() ? 0 : static_cast<int>(found - tokens.begin()) + 1;
    lookup("token " + quoted(token) + " in " + quoted(list) + (flag ? " flag true" : " flag false") + " -> " +
           std::to_string(number));
    return number;
}

char* itoa(int number)
{
    static char text[16];
    std::snprintf(text, sizeof text, "%d", number);
    return text;
}

float GetFeatureOptValue(char* feature, int* value)
{
    fake::Host& host = fakeHost();
    const Widget* widget = host.tree.find(feature);
    const auto fixed = host.featureValues.find(feature);
    if (host.unknownFeatures.contains(feature) || (widget == nullptr && fixed == host.featureValues.end())) {
        read("feature " + quoted(feature) + " -> unknown");
        return 0.0F;
    }
    if (fixed != host.featureValues.end())
        *value = fixed->second;
    else if (widget->kind == "CheckBox" || widget->kind == "RadioButtonItem")
        *value = host.ticked(feature) ? 1 : 0;
    else
        *value = host.number(feature);
    read("feature " + quoted(feature) + " -> " + std::to_string(*value));
    return -1.0F; // nobody is to go by this result
}

int SetFeaturesWithDefaultValue(char* tokenList)
{
    return forEachFeature("setDefaults", tokenList, [](Widget& widget) { widget.state = widget.initial; });
}

int SaveFeaturesWithCurrentValue(char* tokenList)
{
    return forEachFeature("saveFeatures", tokenList,
                          [](Widget& widget) { fakeHost().savedFeatures[widget.name] = widget.state; });
}

int RestoreFeaturesWithCurrentValue(char* tokenList)
{
    return forEachFeature("restoreFeatures", tokenList, [](Widget& widget) {
        auto saved = fakeHost().savedFeatures.find(widget.name);
        if (saved != fakeHost().savedFeatures.end())
            widget.state = saved->second;
    });
}

void GetCurrentTimeWithFormat(char* out, int outSize, char* format, int flag)
{
    const std::tm& time = fakeHost().time(flag == 1);
    char text[4096];
    const std::size_t length = std::strftime(text, sizeof text, format, &time);
    const bool fits = length < static_cast<std::size_t>(outSize);
    std::memcpy(out, fits ? text : "", fits ? length + 1 : 1);
    read("time " + quoted(format) + " size " + std::to_string(outSize) + " flag " + std::to_string(flag));
}
}

char* GlobalDriverInfo::getExecutableLocation() { return fakeHost().installation.data(); }
char* GlobalDriverInfo::getCurrentUserName() { return fakeHost().user.data(); }

bool GlobalDriverInfo::translateMessage(char* text, char* out)
{
    const bool translated = fakeHost().translate(text, out);
    read("translate " + quoted(text) + (translated ? " -> " + quoted(out) : " -> none"));
    return translated;
}
