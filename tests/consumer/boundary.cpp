// The boundary's variables and plain functions, each with the least that keeps its promise.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"
#include "host/director.h"
#include "host/driver_info.h"
#include "host/fax_session.h"
#include "host/features.h"
#include "host/gtk_object.h"
#include "host/messages.h"
#include "host/texts.h"
#include "host/widgets.h"
#include "little_host.h"

#include <cstring>
#include <ctime>
#include <map>
#include <memory>
#include <string>

std::string installationFolder;
std::string registeredName;
void* registeredObject = nullptr;

namespace {

char emptyText[] = "";
ComponentDirector director;
GlobalDriverInfo driverInfo;

/// The widgets by name. This host shows none: it only knows which ones there are.
std::map<std::string, std::unique_ptr<GTKObject>>& widgets()
{
    static std::map<std::string, std::unique_ptr<GTKObject>> byName;
    return byName;
}

bool known(const char* widget) { return widgets().count(widget) != 0; }

} // namespace

ComponentDirector* pDriverDirector = &director;
GlobalDriverInfo* pDriverGlobals = &driverInfo;
Tarvik40Fax* pFaxSession = nullptr;
BaseBiDiSession* pBiDi = nullptr; // no device is connected
char* pEmptyString = emptyText;

// A real host parses the XML; the names are all that this one needs.
bool ComponentDirector::parseXMLBuffer(char* text)
{
    static const char attribute[] = " Name=\"";
    for (const char* at = std::strstr(text, attribute); at; at = std::strstr(at, attribute)) {
        at += sizeof attribute - 1;
        const char* end = std::strchr(at, '"');
        if (!end)
            return false;
        widgets()[std::string(at, end)] = std::make_unique<GTKObject>();
    }
    return !widgets().empty();
}

bool ComponentDirector::registerResource(char* name, void* object)
{
    registeredName = name;
    registeredObject = object;
    return true;
}

char* GlobalDriverInfo::getExecutableLocation() { return installationFolder.data(); }

char* GlobalDriverInfo::getCurrentUserName()
{
    static char user[] = "ann";
    return user;
}

bool GlobalDriverInfo::translateMessage(char*, char*) { return false; }

bool BaseBiDiSession::getRecipientData(char*, int, char**) { return false; }
bool BaseBiDiSession::fetchSingleOIDResponse(char*, char**, int) { return false; }

GTKObject* GetWidgetByName(char* name) { return known(name) ? widgets()[name].get() : nullptr; }

bool GetWidgetPropertyByName(char*, char*, char*, float*, int*, bool*) { return false; }
bool SetWidgetPropertyByName(char* widget, char*, char*, float, int, bool) { return known(widget); }

void PopupMessageDialog(int, void (*)(_GtkWidget*, void*), char*) {}
void CloseCurrentPopupDialog() {}
void ParsePangoMarkupString(char* text, int length, std::string& out)
{
    out.assign(text, static_cast<std::size_t>(length));
}

float GetFeatureOptValue(char*, int*) { return 0; }
int SetFeaturesWithDefaultValue(char*) { return 1; }
int SaveFeaturesWithCurrentValue(char*) { return 1; }
int RestoreFeaturesWithCurrentValue(char*) { return 1; }

void GetCurrentTimeWithFormat(char* out, int outSize, char* format, int flag)
{
    static std::time_t reading = 0;
    if (flag != 0)
        reading = std::time(nullptr);
    if (std::strftime(out, static_cast<std::size_t>(outSize), format, std::localtime(&reading)) == 0)
        *out = '\0';
}

char* ValidateName(char*, char*) { return nullptr; }
char* ValidatePhoneNumber(char*, char*) { return nullptr; }

char* SaveString(char* format, void* argument)
{
    std::string text = format;
    if (const auto place = text.find("%s"); place != std::string::npos)
        text.replace(place, 2, static_cast<const char*>(argument));
    return std::strcpy(new char[text.size() + 1], text.c_str());
}

int GetTokenNum(char* list, char* token, char delimiter, bool)
{
    int number = 0;
    for (const char* at = std::strchr(list, delimiter); at && at[1]; at = std::strchr(at + 1, delimiter)) {
        ++number;
        const std::size_t length = std::strlen(token);
        if (std::strncmp(at + 1, token, length) == 0 && at[1 + length] == delimiter)
            return number;
    }
    return 0;
}

char* itoa(int number)
{
    static std::string text;
    text = std::to_string(number);
    return text.data();
}
