// What tests around phonebooks begin with: phonebooks on the fake host's disk, and ways to write them down.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_PHONEBOOK_TEST_H
#define TESTS_SUPPORT_PHONEBOOK_TEST_H

#include "host/record_database.h"
#include "phonebook/phonebook_state.h"
#include "tests/support/component_test.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

inline const std::string personalFile = "/opt/quelm/db/phonebook/user/ann.xdb";
inline const std::string otherPersonalFile = "/opt/quelm/db/phonebook/user/other.xdb";
inline const std::string sharedFile = "/opt/quelm/db/phonebook/office.xdb";
inline const std::string otherSharedFile = "/opt/quelm/db/phonebook/branch.xdb";

/// A tagged field of a record.
inline std::string tagged(const std::string& tag, const std::string& value)
{
    return ".s" + tag + "\r\n" + value + "\r\n.e" + tag + "\r\n";
}

/// The data of a single entry; `more` holds further fields.
inline std::string entryData(const std::string& name, const std::string& faxNumber,
                             const std::string& more = {})
{
    return tagged("usg", "0") + tagged("nam", name) + tagged("fxn", faxNumber) + more;
}

inline fake::Record entry(const std::string& name, const std::string& faxNumber, const std::string& more = {})
{
    return fake::record("u" + name, entryData(name, faxNumber, more));
}

/// A group; `members` as the record holds them: ",uAnn,uBob".
inline fake::Record group(const std::string& name, const std::string& members)
{
    return fake::record("g" + name, tagged("gen", members));
}

/// A record that does not decode, although its name does.
inline fake::Record brokenEntry(const std::string& name)
{
    return fake::record("u" + name, tagged("usg", "0") + tagged("nam", name) + ".sfxn\r\n1\r\n");
}

/// A record that decodes, and is neither an entry nor a group.
inline fake::Record recordOfNeitherKind(const std::string& name)
{
    return fake::record("x" + name, tagged("nam", name));
}

/// The component is started with an empty personal phonebook, and no shared one is chosen.
class PhonebookTest : public StartedComponentTest {
protected:
    void keepPersonal(std::vector<fake::Record> records)
    {
        host.disk.phonebooks[personalFile] = std::move(records);
    }

    /// Puts a shared phonebook on the disk and chooses it.
    void keepShared(std::vector<fake::Record> records)
    {
        host.disk.phonebooks[sharedFile] = std::move(records);
        chooseShared(sharedFile);
    }

    void choosePersonal(const std::string& path)
    {
        choose("Select Personal PB Button", "PersonalPBSelectFileDialog", path, personalPBDatabase);
    }

    void chooseShared(const std::string& path)
    {
        choose("Select Shared PB Button", "SharedPBSelectFileDialog", path, sharedPBDatabase);
    }

    void openDialog() { host.press("AddPBFaxRcpt"); }

    std::vector<std::string> rowNames() { return host.names("Fax PB List"); }

    /// The names of the picks, in order.
    std::vector<std::string> pickNames()
    {
        std::vector<std::string> names;
        for (int i = 0; i < job().getRecipientListCount(CUR_RECIPIENT_LIST); ++i)
            names.push_back(field(pick(i), "RecipientName"));
        return names;
    }

    Tarvik40FaxRecipient* pick(int n) { return job().getFaxRecipientN(n, CUR_RECIPIENT_LIST); }

private:
    /// The component closes a database that another file replaces, and keeps the object.
    void choose(const char* button, const char* chooser, const std::string& path,
                QuelmLegacyDatabase*& database)
    {
        QuelmLegacyDatabase* before = database;
        host.press(button);
        host.chooseFile(chooser, path);
        if (before != nullptr && database != before)
            closedDatabases_.emplace_back(before);
        host.journal.clear();
    }

    std::vector<std::unique_ptr<QuelmLegacyDatabase>> closedDatabases_;
};

#endif
