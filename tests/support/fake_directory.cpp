// The directory client and the device session of the fake host's boundary.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"
#include "host/directory_client.h"
#include "tests/support/fake_host.h"

#include <algorithm>
#include <cctype>
#include <cstring>

using fake::fakeHost;
using fake::Journal;
using fake::Op;
using fake::quoted;

namespace {

void effect(std::string entry) { fakeHost().journal.add(Journal::Kind::effect, std::move(entry)); }
void read(std::string entry) { fakeHost().journal.add(Journal::Kind::read, std::move(entry)); }

bool sameAttribute(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

} // namespace

struct LDAPSession::Impl {
    std::vector<std::string> attributes;
    std::size_t next = 0;
};

struct LDAPEntry::Impl {
    std::map<std::string, std::string> values;
};

LDAPEntry::LDAPEntry() : impl(new Impl) {}
LDAPEntry::~LDAPEntry() { delete impl; }

bool LDAPEntry::fetchValueByAttribute(char* attribute, std::string& value)
{
    read("attribute " + fake::quoted(attribute));
    for (const auto& [name, text] : impl->values) {
        if (sameAttribute(name, attribute)) {
            value = text;
            return true;
        }
    }
    if (fakeHost().directory.missingAttributeEmptiesText)
        value.clear();
    return false;
}

void LDAPEntry::clearAttributeValue()
{
    read("clearEntry");
    impl->values.clear();
}

LDAPSession::LDAPSession() : impl(new Impl) { effect("new directory session"); }

LDAPSession::~LDAPSession()
{
    effect("delete directory session");
    delete impl;
}

void LDAPSession::setServerIP(char* address) { effect("setServerIP " + fake::quoted(address)); }
void LDAPSession::setBaseServerPath(char* base) { effect("setBaseServerPath " + fake::quoted(base)); }

bool LDAPSession::openSession()
{
    effect("openSession");
    return !fakeHost().faults.hits(Op::openSession, {});
}

bool LDAPSession::bindAnonymousSession()
{
    effect("bindAnonymousSession");
    return !fakeHost().faults.hits(Op::bindSession, {});
}

void LDAPSession::appendAttribute(char* attribute)
{
    effect("appendAttribute " + fake::quoted(attribute));
    if (std::find(impl->attributes.begin(), impl->attributes.end(), attribute) == impl->attributes.end())
        impl->attributes.emplace_back(attribute);
}

bool LDAPSession::requestSearch(std::string& filter, int scope, char** attributes, bool flag)
{
    effect("requestSearch " + fake::quoted(filter) + " scope " + std::to_string(scope) +
           (attributes != nullptr ? " with attributes" : "") + (flag ? " flag" : ""));
    impl->next = 0;
    return !fakeHost().faults.hits(Op::requestSearch, filter);
}

bool LDAPSession::getNextEntry(LDAPEntry& entry)
{
    read("nextEntry");
    const auto& entries = fakeHost().directory.entries;
    entry.impl->values.clear();
    if (impl->next >= entries.size())
        return false;
    entry.impl->values = entries[impl->next++];
    return true;
}

int LDAPSession::getLastResponseItemCount()
{
    read("responseItemCount");
    const fake::Directory& directory = fakeHost().directory;
    return directory.itemCount >= 0 ? directory.itemCount : static_cast<int>(directory.entries.size());
}

int LDAPSession::getLastResponseCode()
{
    read("responseCode");
    return fakeHost().directory.responseCode;
}

extern "C" {
BaseBiDiSession* pBiDi = nullptr;
}

bool BaseBiDiSession::getRecipientData(char* table, int index, char** value)
{
    read("deviceTable " + fake::quoted(table) + " " + std::to_string(index));
    static std::string current; // valid until the next call, and not longer
    current.assign(current.size(), '?');
    const auto found = fakeHost().device.tables.find({table, index});
    if (found == fakeHost().device.tables.end() ||
        fakeHost().faults.hits(Op::readDeviceTable, std::to_string(index)))
        return false;
    current = found->second;
    *value = current.data();
    return true;
}

bool BaseBiDiSession::fetchSingleOIDResponse(char* oid, char** buffer, int size)
{
    read("deviceObject " + fake::quoted(oid) + " size " + std::to_string(size));
    const auto found = fakeHost().device.objects.find(oid);
    if (found == fakeHost().device.objects.end() || fakeHost().faults.hits(Op::readDeviceObject, oid))
        return false;
    const std::size_t length = std::min(found->second.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(*buffer, found->second.data(), length);
    (*buffer)[length] = '\0';
    return true;
}
