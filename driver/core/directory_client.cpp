// The boundary's directory client of a driver that has no directory: no server is ever reached.
#include "host/directory_client.h"

struct LDAPEntry::Impl {};
struct LDAPSession::Impl {};

LDAPEntry::LDAPEntry() : impl(nullptr) {}

LDAPEntry::~LDAPEntry() { delete impl; }

bool LDAPEntry::fetchValueByAttribute(char* /*attribute*/, std::string& value)
{
    value.clear();
    return false;
}

void LDAPEntry::clearAttributeValue() {}

LDAPSession::LDAPSession() : impl(nullptr) {}

LDAPSession::~LDAPSession() { delete impl; }

void LDAPSession::setServerIP(char* /*address*/) {}

void LDAPSession::setBaseServerPath(char* /*base*/) {}

bool LDAPSession::openSession() { return false; }

bool LDAPSession::bindAnonymousSession() { return false; }

void LDAPSession::appendAttribute(char* /*attribute*/) {}

bool LDAPSession::requestSearch(std::string& /*filter*/, int /*scope*/, char** /*attributes*/, bool /*flag*/)
{
    return false;
}

bool LDAPSession::getNextEntry(LDAPEntry& entry)
{
    entry.clearAttributeValue();
    return false;
}

int LDAPSession::getLastResponseItemCount() { return 0; }

int LDAPSession::getLastResponseCode()
{
    constexpr int serverDown = 81;
    return serverDown;
}
