// The boundary's classes: widgets without a screen, phonebook files without records, no directory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/directory_client.h"
#include "host/files.h"
#include "host/gtk_object.h"
#include "host/record_database.h"

#include <filesystem>
#include <fstream>

struct GTKObject::Impl {};

GTKObject::GTKObject() : impl(nullptr) {}
GTKObject::~GTKObject() { delete impl; }
bool GTKObject::createObject(GTKObject*, char*, char**) { return false; }
bool GTKObject::createObject(GTKObject*, char*, char*, bool) { return false; }
void GTKObject::clearListItems() {}
void GTKObject::setObjectName(char*) {}
char* GTKObject::getObjectName() { return nullptr; }
void GTKObject::addGTKObjectToList(char*) {}
bool GTKObject::setWidgetProperty(char*, char*, void (*)()) { return false; }
bool GTKObject::setWidgetProperty(char*, char*) { return false; }
bool GTKObject::setWidgetProperty(char*, bool) { return false; }
bool GTKObject::getWidgetProperty(char*, bool*) { return false; }
bool GTKObject::getWidgetProperty(char*, char*, float*, int*, bool*) { return false; }
void GTKObject::setSignalHandler(void (*)(), char*) {}
void GTKObject::setListFreezeState(bool) {}
bool GTKObject::getListItemData(char**, int, int) { return false; }
bool GTKObject::getListSelectionCount(int&) { return false; }
void GTKObject::sortIntegerGList(bool) {}

bool FileObject::doesPathExist(char* path) { return std::filesystem::exists(path); }

bool FileObject::createDirectory(char* path, int)
{
    std::error_code ignored;
    return std::filesystem::create_directory(path, ignored);
}

struct QuelmLegacyDatabase::Impl {};

QuelmLegacyDatabase::QuelmLegacyDatabase() : impl(nullptr) {}
QuelmLegacyDatabase::~QuelmLegacyDatabase() { delete impl; }
bool QuelmLegacyDatabase::openDatabase(char* path, char*) { return std::ifstream(path).good(); }
bool QuelmLegacyDatabase::createDatabase(char* path, int) { return std::ofstream(path).good(); }
bool QuelmLegacyDatabase::reopenDatabase() { return true; }
bool QuelmLegacyDatabase::closeDatabase() { return true; }
bool QuelmLegacyDatabase::saveRecord(LegacyDBRecord*) { return false; }
bool QuelmLegacyDatabase::serializeDatabase() { return false; }
bool QuelmLegacyDatabase::getNumberOfRecords(int& count)
{
    count = 0;
    return true;
}

struct QuelmLegacyDatabaseIterator::Impl {};

QuelmLegacyDatabaseIterator::QuelmLegacyDatabaseIterator(QuelmLegacyDatabase*) : impl(nullptr) {}
QuelmLegacyDatabaseIterator::~QuelmLegacyDatabaseIterator() { delete impl; }
LegacyDBRecord* QuelmLegacyDatabaseIterator::getNextRecord(bool) { return nullptr; }
LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordN(int) { return nullptr; }
LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordByKey(char*) { return nullptr; }

struct LDAPEntry::Impl {};

LDAPEntry::LDAPEntry() : impl(nullptr) {}
LDAPEntry::~LDAPEntry() { delete impl; }
bool LDAPEntry::fetchValueByAttribute(char*, std::string& value)
{
    value.clear();
    return false;
}
void LDAPEntry::clearAttributeValue() {}

struct LDAPSession::Impl {};

LDAPSession::LDAPSession() : impl(nullptr) {}
LDAPSession::~LDAPSession() { delete impl; }
void LDAPSession::setServerIP(char*) {}
void LDAPSession::setBaseServerPath(char*) {}
bool LDAPSession::openSession() { return false; }
bool LDAPSession::bindAnonymousSession() { return false; }
void LDAPSession::appendAttribute(char*) {}
bool LDAPSession::requestSearch(std::string&, int, char**, bool) { return false; }
bool LDAPSession::getNextEntry(LDAPEntry&) { return false; }
int LDAPSession::getLastResponseItemCount() { return 0; }
int LDAPSession::getLastResponseCode() { return 0; }
