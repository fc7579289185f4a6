// A host that does next to nothing, so that what is measured is the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/host.h"
#include "frame/startup.h"
#include "host/director.h"
#include "host/driver_info.h"
#include "host/fax_session.h"
#include "host/features.h"
#include "host/files.h"
#include "host/gtk_object.h"
#include "host/messages.h"
#include "host/record_database.h"
#include "host/texts.h"
#include "host/widgets.h"

#include <cstring>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

char noText[] = "";
ComponentDirector theDirector;
GlobalDriverInfo theDriver;

/// Every name is a widget, made when it is first asked for.
GTKObject& widgetNamed(const char* name)
{
    static std::map<std::string, GTKObject, std::less<>> widgets;
    const auto found = widgets.find(std::string_view(name));
    return found != widgets.end() ? found->second : widgets[name];
}

struct Entry {
    std::string key;
    std::string data;
};

/// A phonebook, in memory and in no file.
struct Book {
    std::deque<Entry> entries;
    std::unordered_map<std::string_view, std::size_t> positions; // keys are those of `entries`
};

std::map<std::string, Book, std::less<>>& books()
{
    static std::map<std::string, Book, std::less<>> all;
    return all;
}

} // namespace

std::shared_ptr<void> bench::startHost()
{
    require(InitializeFaxComponent() != 0, "the component did not start");
    return nullptr;
}

extern "C" {
ComponentDirector* pDriverDirector = &theDirector;
GlobalDriverInfo* pDriverGlobals = &theDriver;
Tarvik40Fax* pFaxSession = nullptr;
char* pEmptyString = noText;
}

// --- Start-up ----------------------------------------------------------------------------------

bool ComponentDirector::parseXMLBuffer(char*) { return true; }
bool ComponentDirector::registerResource(char*, void*) { return true; }

char* GlobalDriverInfo::getExecutableLocation()
{
    static char folder[] = "/opt/quelm";
    return folder;
}

char* GlobalDriverInfo::getCurrentUserName()
{
    static char user[] = "ann";
    return user;
}

bool GlobalDriverInfo::translateMessage(char*, char*) { return false; }

bool FileObject::doesPathExist(char*) { return true; }
bool FileObject::createDirectory(char*, int) { return true; }

// --- Lists: texts one after the other in memory that is reused ---------------------------------

struct GTKObject::Impl {
    std::vector<char> texts;
    std::vector<std::size_t> starts; // where each row's six cells begin
    int selectedRow = -1;

    static Impl& of(GTKObject& object) { return *object.impl; }
};

constexpr std::size_t columnCount = 6;

GTKObject::GTKObject() : impl(new Impl) {}
GTKObject::~GTKObject() { delete impl; }

bool GTKObject::createObject(GTKObject* parent, char*, char** columns)
{
    Impl& list = *parent->impl;
    for (std::size_t column = 0; column < columnCount; ++column) {
        const char* text = columns[column];
        list.starts.push_back(list.texts.size());
        list.texts.insert(list.texts.end(), text, text + std::strlen(text) + 1);
    }
    return true;
}

void GTKObject::clearListItems()
{
    impl->texts.clear();
    impl->starts.clear();
    impl->selectedRow = -1;
}

bool GTKObject::getListItemData(char** text, int column, int row)
{
    const std::size_t cell = static_cast<std::size_t>(row) * columnCount + static_cast<std::size_t>(column);
    if (cell >= impl->starts.size())
        return false;
    const char* stored = impl->texts.data() + impl->starts[cell];
    std::memcpy(*text, stored, std::strlen(stored) + 1); // the benchmarks' cells are short
    return true;
}

GTKObject* GetWidgetByName(char* name) { return &widgetNamed(name); }

bool GetWidgetPropertyByName(char* widget, char*, char*, float*, int* integer, bool*)
{
    if (integer != nullptr)
        *integer = GTKObject::Impl::of(widgetNamed(widget)).selectedRow;
    return integer != nullptr;
}

bool SetWidgetPropertyByName(char* widget, char*, char*, float, int integer, bool)
{
    GTKObject::Impl::of(widgetNamed(widget)).selectedRow = integer;
    return true;
}

// --- Texts, options, questions -----------------------------------------------------------------

int GetTokenNum(char* list, char* token, char delimiter, bool)
{
    const std::string_view wanted = token;
    std::string_view rest = list + 1;
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = rest.find(delimiter);
        if (rest.substr(0, end) == wanted)
            return number;
        rest.remove_prefix(end + 1);
    }
    return 0;
}

float GetFeatureOptValue(char*, int* value)
{
    *value = 0;
    return 0;
}

void GetCurrentTimeWithFormat(char* out, int, char*, int) { *out = '\0'; }
void PopupMessageDialog(int, void (*)(_GtkWidget*, void*), char*) {}
void CloseCurrentPopupDialog() {}
void ParsePangoMarkupString(char* text, int length, std::string& out)
{
    out.assign(text, static_cast<std::size_t>(length));
}

// --- Phonebooks --------------------------------------------------------------------------------

struct QuelmLegacyDatabase::Impl {
    Book* book = nullptr;
};

QuelmLegacyDatabase::QuelmLegacyDatabase() : impl(new Impl) {}
QuelmLegacyDatabase::~QuelmLegacyDatabase() { delete impl; }

bool QuelmLegacyDatabase::openDatabase(char* path, char*)
{
    const auto found = books().find(std::string_view(path));
    impl->book = found == books().end() ? nullptr : &found->second;
    return impl->book != nullptr;
}

bool QuelmLegacyDatabase::createDatabase(char* path, int)
{
    impl->book = &books()[path];
    return true;
}

bool QuelmLegacyDatabase::reopenDatabase() { return true; }

/// The benchmarks save every key once.
bool QuelmLegacyDatabase::saveRecord(LegacyDBRecord* record)
{
    Book& book = *impl->book;
    book.entries.push_back({record->key, record->data});
    return book.positions.emplace(book.entries.back().key, book.entries.size() - 1).second;
}

bool QuelmLegacyDatabase::serializeDatabase() { return true; }

bool QuelmLegacyDatabase::getNumberOfRecords(int& count)
{
    count = static_cast<int>(impl->book->entries.size());
    return true;
}

struct QuelmLegacyDatabaseIterator::Impl {
    Book* book;
    std::size_t next = 0;
    LegacyDBRecord record{};

    LegacyDBRecord* handOut(std::size_t position)
    {
        if (position >= book->entries.size())
            return nullptr;
        next = position + 1;
        record.key = book->entries[position].key.data();
        record.data = book->entries[position].data.data();
        return &record;
    }
};

QuelmLegacyDatabaseIterator::QuelmLegacyDatabaseIterator(QuelmLegacyDatabase* database)
    : impl(new Impl{database->impl->book})
{
}

QuelmLegacyDatabaseIterator::~QuelmLegacyDatabaseIterator() { delete impl; }

LegacyDBRecord* QuelmLegacyDatabaseIterator::getNextRecord(bool first)
{
    return impl->handOut(first ? 0 : impl->next);
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordN(int n)
{
    return n < 1 ? nullptr : impl->handOut(static_cast<std::size_t>(n) - 1);
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordByKey(char* key)
{
    const auto found = impl->book->positions.find(key);
    return found == impl->book->positions.end() ? nullptr : impl->handOut(found->second);
}
