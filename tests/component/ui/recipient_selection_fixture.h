// Recipients in the job's list and among the picks, and a user who selects them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_COMPONENT_UI_RECIPIENT_SELECTION_FIXTURE_H
#define TESTS_COMPONENT_UI_RECIPIENT_SELECTION_FIXTURE_H

#include "tests/support/component_test.h"

#include <string>
#include <utility>
#include <vector>

class RecipientSelectionTest : public StartedComponentTest {
protected:
    static constexpr const char* jobList = "LanFax Recipient List";
    static constexpr const char* picksList = "Fax Cur Recipient List";

    using Names = std::vector<std::string>;

    static std::string row(const char* list, const std::string& name, const std::string& faxNumber)
    {
        return "addRow " + fake::quoted(list) + " " + fake::quoted(name) + " " + fake::quoted(faxNumber) +
               " empty empty empty empty\n";
    }

    /// A redrawn job list, without its rows; two buttons follow them after a removal.
    static inline const std::string redrawnJob = lines({
        R"(get "LanFax Recipient List" Value -> -1)",
        R"(set "LanFax Details Button" Sensitivity off)",
        R"(set "LanFax Save Entry Button" Sensitivity off)",
        R"(set "LanFax Remove Button" Sensitivity off)",
        R"(set "LanFax Save Group Button" Sensitivity on)",
        R"(clearRows "LanFax Recipient List")",
    });
    static inline const std::string buttonsOff = lines({
        R"(set "LanFax Details Button" Sensitivity off)",
        R"(set "LanFax Remove Button" Sensitivity off)",
    });

    static std::string removalQuestion(const std::string& name, const std::string& faxNumber)
    {
        return "Name:   " + name + "\r\nFax Number:   " + faxNumber +
               "\r\n\nAre you sure you want to remove this Recipient?";
    }

    /// The journal of a question about one recipient whose texts have no translation.
    static std::string asked(const std::string& name, const std::string& faxNumber)
    {
        return lines({R"(translate "Name:" -> none)", R"(translate "Fax Number:" -> none)",
                      R"(translate "Are you sure you want to remove this Recipient?" -> none)",
                      "ask 3 " + fake::quoted(removalQuestion(name, faxNumber))});
    }

    static std::string withoutFirstLine(const std::string& text) { return text.substr(text.find('\n') + 1); }

    void fillJob(const Names& names)
    {
        for (const std::string& name : names)
            addRecipient(name, std::to_string(++lastNumber));
        job().updatePBEntryList(RECIPIENT_LIST);
        host.journal.clear();
    }

    void fillPicks(const Names& names)
    {
        host.press("AddPBFaxRcpt");
        for (const std::string& name : names)
            addPick(name, std::to_string(++lastNumber));
        job().updatePBEntryList(CUR_RECIPIENT_LIST);
        host.journal.clear();
    }

    /// The user selects rows; what the callback did is in the journal.
    void select(const char* list, std::vector<int> rows)
    {
        host.journal.clear();
        host.selectRows(list, std::move(rows));
    }

    void askBeforeRemoving(bool ask) { host.tick("LanFax Pref Remove One", ask); }

    /// Presses a button; the journal of that.
    std::string press(const char* button)
    {
        host.journal.clear();
        host.press(button);
        return host.journal.calls();
    }

    std::string call(void (*callback)())
    {
        host.journal.clear();
        callback();
        return host.journal.calls();
    }

    std::string answer(bool yes)
    {
        host.journal.clear();
        host.answer(yes);
        return host.journal.calls();
    }

    Names pickNames() { return host.names(picksList); }
    int picks() { return job().getRecipientListCount(CUR_RECIPIENT_LIST); }

    int lastNumber = 0;
};

#endif
