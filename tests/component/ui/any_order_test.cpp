// Whatever a user, a host and a phonebook do in whatever order, no list is left with a recipient that is
// gone. SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"
#include "tests/support/phonebook_test.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>

namespace {

using Names = std::vector<std::string>;

const Names people = {"Anne",  "Bernard", "Carla", "", "Team", "a,b>c", "\xD7\x9C\xD7\x99",
                      "100%d", "0",       "1",     "2"};
const Names found = {"Smith, Anne", "Jones, "}; // in the directory

/// Records of every kind, decodable or not.
std::vector<fake::Record> someRecords()
{
    return {entry("Anne", "1"),
            group("Team", ",uAnne,uBernard,uNobody,uAnne"),
            brokenEntry("Carla"),
            entry("Bernard", "2", tagged("eml", "b@example")),
            recordOfNeitherKind("Dora"),
            group("Empty", ","),
            group("Mixed", ",>Anne,uBernard,x"),
            fake::record("uBlank", tagged("usg", "0") + tagged("nam", " \t")),
            group("Unclosed", ",uAnne,uBernar")};
}

} // namespace

/// Acts at random, by a fixed seed.
class AnyOrderTest : public PhonebookTest, public testing::WithParamInterface<unsigned> {
protected:
    std::size_t below(std::size_t n) { return random() % n; }

    template <class List>
    const auto& oneOf(const List& list)
    {
        return *std::next(std::begin(list), static_cast<std::ptrdiff_t>(below(std::size(list))));
    }

    /// The rows that the widget says are selected; some of them may not be there.
    void select()
    {
        static constexpr const char* lists[] = {"LanFax Recipient List", "Fax Cur Recipient List",
                                                "Fax PB List"};
        auto& selection = host.widget(oneOf(lists)).selection;
        selection.clear();
        for (std::size_t n = below(4); n > 0; --n)
            selection.push_back(static_cast<int>(below(6)));
    }

    void type()
    {
        static constexpr const char* fields[] = {
            "RecipientName",   "RecipientNumber",           "RcptPropsName",
            "RcptPropsNumber", "LanFaxAddGroup Group Name", "Search String"};
        host.setText(oneOf(fields), oneOf(people));
    }

    void press()
    {
        const std::string& name = oneOf(host.callbacks).first;
        if (name != "OpenPersonalPB" && name != "OpenSharedPB") // these start a program
            host.fire(name);
    }

    void answer()
    {
        if (!host.openQuestions().empty())
            host.answer(below(3) != 0);
    }

    /// What hosts do to the job beside the callbacks.
    void useTheJob()
    {
        switch (below(8)) {
        case 0:
            job().removeFaxRecipientN(static_cast<int>(below(3)), below(2) == 0);
            break;
        case 1:
            job().removeAllFaxRecipients(static_cast<int>(below(6)));
            break;
        case 2:
            if (GetParam() % 2 == 0) // the others keep their lists to themselves
                job().recipientList.getListObject().reverse();
            break;
        case 3:
            addRecipient(oneOf(people), std::to_string(below(3)));
            break;
        case 4:
            job().tmpRecipientList.walkFaxRecipientList(below(2) == 0);
            break;
        case 5:
            job().groupMemberList.walkFaxRecipientList(below(2) == 0);
            break;
        case 6:
            job().appendTmpFaxRecipientList();
            break;
        default:
            job().recipientList.walkFaxRecipientList(below(2) == 0);
        }
    }

    void changeTheWorld()
    {
        static constexpr fake::Op ops[] = {
            fake::Op::readProperty,   fake::Op::createRow,      fake::Op::readCell,
            fake::Op::countSelection, fake::Op::openDatabase,   fake::Op::createDatabase,
            fake::Op::reopenDatabase, fake::Op::countRecords,   fake::Op::openSession,
            fake::Op::requestSearch,  fake::Op::readDeviceTable};
        switch (below(7)) {
        case 0:
            host.faults.fail(oneOf(ops));
            break;
        case 1: {
            std::vector<fake::Record> records = someRecords();
            std::ranges::shuffle(records, random);
            records.resize(below(records.size() + 1));
            host.disk.phonebooks[below(2) == 0 ? personalFile : sharedFile] = std::move(records);
            break;
        }
        case 2:
            host.featureValues["Current PB Type"] = static_cast<int>(below(4));
            break;
        case 3:
            host.featureValues["LanFax Pref Remove One"] = static_cast<int>(below(2));
            host.featureValues["LanFax Pref Duplicates"] = static_cast<int>(below(2));
            break;
        case 4:
            host.missingWidgets = {
                oneOf(Names{"Fax PB List", "LanFax Recipient List", "Lan Fax Window", "-"})};
            break;
        default:
            host.faults.clear();
            host.missingWidgets.clear();
        }
    }

    void act()
    {
        try {
            switch (below(8)) {
            case 0:
                return select();
            case 1:
                return type();
            case 2:
                return answer();
            case 3:
                return useTheJob();
            case 4:
                return changeTheWorld();
            default:
                return press();
            }
        } catch (const std::out_of_range&) {
            // A value of nothing but white space: it leaves the callback, as hosts expect.
        }
    }

    static bool holds(Tarvik40FaxRecipientList& list, const Tarvik40FaxRecipient* recipient)
    {
        for (int n = 0; n < list.recipientListSize(); ++n)
            if (list.getFaxRecipientN(n) == recipient)
                return true;
        return false;
    }

    /// Every member of the group is one of the job's or a pick.
    void expectNoStrayMember()
    {
        for (int n = 0; n < job().groupMemberList.recipientListSize(); ++n) {
            Tarvik40FaxRecipient* member = job().groupMemberList.getFaxRecipientN(n);
            ASSERT_TRUE(member == nullptr || holds(job().recipientList, member) ||
                        holds(job().tmpRecipientList, member));
        }
    }

    std::mt19937 random{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Seeds, AnyOrderTest, testing::Range(0U, 6U));

TEST_P(AnyOrderTest, NoListIsLeftWithARecipientThatIsGone)
{
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    host.connectDevice();
    host.device.tables = {{{"ubqSvcMonServiceDetailTableLDAP", 0}, "localhost"},
                          {{"ubqSvcMonServiceDetailTableLDAP", 1}, "dc=example"}};
    host.directory.entries = {{{"sn", "Smith"}, {"givenName", "Anne"}}, {{"sn", "Jones"}}};
    for (int step = 0; step < 1500; ++step) {
        act();
        expectNoStrayMember();
        host.journal.clear();
    }
    for (std::string name : jobNames()) {
        name = name == "(none)" ? "" : name;
        EXPECT_TRUE(std::ranges::count(people, name) + std::ranges::count(found, name) == 1) << name;
    }
}
