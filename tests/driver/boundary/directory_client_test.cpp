// What the component gets from a real directory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/directory/directory_fixture.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <future>
#include <utility>

namespace {

using servers::DirectoryRecord;
using servers::person;
using servers::SlapdServer;

class DirectoryClientTest : public DirectoryTest {
protected:
    void serve(std::vector<DirectoryRecord> records, int sizeLimit = 0)
    {
        servers::SlapdSettings slapd;
        slapd.records = std::move(records);
        slapd.sizeLimit = sizeLimit;
        server = std::make_unique<SlapdServer>(slapd);
        ASSERT_TRUE(connect(server->address())) << trouble();
    }

    /// The first result of a search.
    void fetchFirst(LDAPEntry& entry, const std::string& filter = "(sn=*)")
    {
        ASSERT_TRUE(search(filter)) << trouble();
        ASSERT_TRUE(session.getNextEntry(entry));
    }

    std::unique_ptr<SlapdServer> server;
};

TEST_F(DirectoryClientTest, GivesAPersonsFiveAttributes)
{
    serve({person("Smith", "Anne", "+49 30 1", "+49 30 2", "anne@example.com")});
    LDAPEntry entry;
    fetchFirst(entry, "(sn=Smi*)");
    EXPECT_EQ(valueOf(entry, "sn"), "Smith");
    EXPECT_EQ(valueOf(entry, "givenName"), "Anne");
    EXPECT_EQ(valueOf(entry, "facsimileTelephoneNumber"), "+49 30 1");
    EXPECT_EQ(valueOf(entry, "telephoneNumber"), "+49 30 2"); // asked for as "telephonenumber"
    EXPECT_EQ(valueOf(entry, "mail"), "anne@example.com");
    EXPECT_EQ(valueOf(entry, "cn"), "(none)"); // not asked for
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(code(), 0);
    EXPECT_EQ(trouble(), "");
    EXPECT_EQ(log.messages.size(), 0U);
}

TEST_F(DirectoryClientTest, AMissingAttributeEmptiesTheText)
{
    serve({person("Smith")});
    LDAPEntry entry;
    fetchFirst(entry);
    EXPECT_EQ(valueOf(entry, "givenName"), "(none)");
    EXPECT_EQ(valueOf(entry, "facsimileTelephoneNumber"), "(none)");
    EXPECT_EQ(valueOf(entry, "sn"), "Smith");
}

TEST_F(DirectoryClientTest, AClearedEntryHasNothing)
{
    serve({person("Smith")});
    LDAPEntry entry;
    fetchFirst(entry);
    entry.clearAttributeValue();
    EXPECT_EQ(valueOf(entry, "sn"), "(none)");
    std::string value = "left over";
    EXPECT_FALSE(entry.fetchValueByAttribute(nullptr, value));
    EXPECT_EQ(value, "");
}

TEST_F(DirectoryClientTest, AfterTheLastResultTheEntryIsEmpty)
{
    serve({person("Smith")});
    LDAPEntry entry;
    fetchFirst(entry);
    EXPECT_FALSE(session.getNextEntry(entry));
    EXPECT_EQ(valueOf(entry, "sn"), "(none)");
    EXPECT_FALSE(session.getNextEntry(entry));
    EXPECT_EQ(count(), 1); // reading takes nothing from the count
}

TEST_F(DirectoryClientTest, ResultsComeInTheDirectorysOrder)
{
    serve({person("Zimmer"), person("Anders"), person("Meier")});
    EXPECT_EQ(found(), (Names{"Zimmer", "Anders", "Meier"}));
}

TEST_F(DirectoryClientTest, NamesOfAnyScriptAreFoundAndGiven)
{
    const std::string accented = "M\u00FCller-L\u00FCdenscheidt";
    const std::string hebrew = "\u05DB\u05D4\u05DF";
    const std::string arabic = "\u0627\u0644\u062D\u0633\u0646";
    const std::string awkward = "O'Brien, \"Jr\" <x> +1; #=\\";
    serve({person(accented), person(hebrew), person(arabic), person(awkward)});
    EXPECT_EQ(found(), (Names{accented, hebrew, arabic, awkward}));
    EXPECT_EQ(found("(sn=m\u00FC*)"), (Names{accented}));
    EXPECT_EQ(found("(sn=\u05DB*)"), (Names{hebrew}));
}

TEST_F(DirectoryClientTest, OfSeveralValuesTheFirstIsGiven)
{
    DirectoryRecord record = person("Smith", "Anne");
    record.attributes.emplace_back("facsimileTelephoneNumber", "1");
    record.attributes.emplace_back("facsimileTelephoneNumber", "2");
    serve({record});
    LDAPEntry entry;
    fetchFirst(entry);
    EXPECT_EQ(valueOf(entry, "facsimileTelephoneNumber"), "1");
}

TEST_F(DirectoryClientTest, AValueWithALineEndOrANulIsOneLine)
{
    DirectoryRecord record = person("Smith", "Anne\r\nOID_ATT");
    record.name = "cn=Smith,dc=example";
    record.attributes[1].second = "Smith";
    record.attributes.emplace_back("telephoneNumber", std::string("12\0003", 4));
    serve({record});
    LDAPEntry entry;
    fetchFirst(entry);
    EXPECT_EQ(valueOf(entry, "givenName"), "Anne  OID_ATT");
    EXPECT_EQ(valueOf(entry, "telephoneNumber"), "12 3");
}

TEST_F(DirectoryClientTest, ABinaryValueDoesNotCostItsEntry)
{
    DirectoryRecord record = person("Smith");
    record.attributes.emplace_back("jpegPhoto", std::string("\xFF\xD8\0x", 4));
    serve({record});
    std::string filter = "(sn=*)";
    std::string photo = "jpegPhoto";
    std::string surname = "sn";
    std::array<char*, 3> asked{photo.data(), surname.data(), nullptr};
    ASSERT_TRUE(session.requestSearch(filter, 2, asked.data(), false));
    LDAPEntry entry;
    ASSERT_TRUE(session.getNextEntry(entry));
    EXPECT_EQ(valueOf(entry, "jpegPhoto"), "\uFFFD\uFFFD x");
    EXPECT_EQ(valueOf(entry, "sn"), "Smith");
}

TEST_F(DirectoryClientTest, AnAttributeWithALanguageIsFoundUnderItsBareName)
{
    DirectoryRecord record = person("Smith");
    record.attributes.emplace_back("givenName;lang-de", "Anne");
    serve({record});
    LDAPEntry entry;
    fetchFirst(entry);
    EXPECT_EQ(valueOf(entry, "givenName"), "Anne");
}

TEST_F(DirectoryClientTest, AnArrayOfAttributesIsAskedForInsteadOfTheAppendedOnes)
{
    serve({person("Smith", "Anne")});
    ASSERT_TRUE(search());
    std::string filter = "(sn=*)";
    std::string attribute = "cn";
    std::array<char*, 2> asked{attribute.data(), nullptr};
    ASSERT_TRUE(session.requestSearch(filter, 2, asked.data(), false));
    LDAPEntry entry;
    ASSERT_TRUE(session.getNextEntry(entry));
    EXPECT_EQ(valueOf(entry, "cn"), "Smith Anne");
    EXPECT_EQ(valueOf(entry, "sn"), "(none)");
}

TEST_F(DirectoryClientTest, WithoutAnyAttributeAllAreGiven)
{
    serve({person("Smith", "Anne")});
    std::string filter = "(sn=*)";
    ASSERT_TRUE(session.requestSearch(filter, 2, nullptr, false));
    LDAPEntry entry;
    ASSERT_TRUE(session.getNextEntry(entry));
    EXPECT_EQ(valueOf(entry, "cn"), "Smith Anne");
    EXPECT_EQ(valueOf(entry, "sn"), "Smith");
}

TEST_F(DirectoryClientTest, AnAttributeIsAskedForOnceHoweverOftenItIsAppended)
{
    std::promise<std::string> received;
    {
        const servers::ServingListener listener([&received, first = true](int connection, int) mutable {
            std::string request(4096, '\0');
            const ssize_t size = recv(connection, request.data(), request.size(), 0);
            request.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
            if (std::exchange(first, false))
                received.set_value(request);
        });
        ASSERT_TRUE(open(listener.address()));
        for (std::string name : {"mail", "MAIL", "sn", "", "mail"})
            session.appendAttribute(name.data());
        EXPECT_FALSE(search());
    }
    const std::string request = received.get_future().get();
    // Attributes are asked for as octet strings: a 4, the length, the name.
    EXPECT_NE(request.find("\x04\x04mail\x04\x02sn\x04\x09givenName"), std::string::npos);
    EXPECT_EQ(request.find("\x04\x04MAIL"), std::string::npos);
    EXPECT_EQ(request.find("\x04\x04mail"), request.rfind("\x04\x04mail"));
}

TEST_F(DirectoryClientTest, TheFlagAsksForNamesWithoutValues)
{
    serve({person("Smith", "Anne")});
    std::string filter = "(sn=*)";
    ASSERT_TRUE(session.requestSearch(filter, 2, nullptr, true));
    LDAPEntry entry;
    ASSERT_TRUE(session.getNextEntry(entry));
    EXPECT_EQ(valueOf(entry, "sn"), "");
    EXPECT_EQ(valueOf(entry, "mail"), "(none)");
}

TEST_F(DirectoryClientTest, TheScopeSaysHowDeepToLook)
{
    const auto unit = [](const std::string& name, const std::string& above) {
        return DirectoryRecord{"ou=" + name + "," + above,
                               {{"objectClass", "organizationalUnit"}, {"ou", name}}};
    };
    serve({unit("sales", "dc=example"), unit("export", "ou=sales,dc=example")});
    const auto foundWithin = [&](int scope) {
        std::string filter = "(objectClass=*)";
        return session.requestSearch(filter, scope, nullptr, false) ? read("ou") : Names{"(false)"};
    };
    setBase("ou=sales,dc=example");
    EXPECT_EQ(foundWithin(0), (Names{"sales"}));
    EXPECT_EQ(foundWithin(1), (Names{"export"}));
    EXPECT_EQ(foundWithin(2), (Names{"sales", "export"}));
    EXPECT_EQ(foundWithin(3), (Names{"(false)"}));
    EXPECT_EQ(foundWithin(-1), (Names{"(false)"}));
    EXPECT_EQ(code(), 89);
}

TEST_F(DirectoryClientTest, BlanksAroundTheSearchRootSayNothing)
{
    serve({person("Smith")});
    setBase(" dc=example\r\n");
    EXPECT_EQ(found(), (Names{"Smith"}));
}

TEST_F(DirectoryClientTest, AReferenceToAnotherServerIsPassedOver)
{
    const servers::ServingListener elsewhere(servers::hangingUp());
    serve({person("Anders"),
           {"ou=elsewhere,dc=example",
            {{"objectClass", "referral"},
             {"objectClass", "extensibleObject"},
             {"ou", "elsewhere"},
             {"ref", "ldap://" + elsewhere.address() + "/dc=elsewhere"}}},
           person("Zimmer")});
    EXPECT_EQ(found(), (Names{"Anders", "Zimmer"}));
    EXPECT_EQ(code(), 0);
    setBase("ou=elsewhere,dc=example");
    EXPECT_EQ(found(), (Names{"(false) 10"}));
    EXPECT_EQ(elsewhere.connections(), 0);
}

struct Amount {
    const char* prefix;
    int persons;
    int given;
    int code;
};

TEST_F(DirectoryClientTest, EveryNumberOfResultsIsGivenUpToTheLimit)
{
    const Amount amounts[] = {{"None", 0, 0, 0},      {"One", 1, 1, 0},         {"Two", 2, 2, 0},
                              {"Below", 999, 999, 0}, {"Exact", 1000, 1000, 0}, {"Above", 1001, 1000, 4},
                              {"Many", 5000, 1000, 4}};
    std::vector<DirectoryRecord> records;
    for (const Amount& amount : amounts)
        for (int number = 1; number <= amount.persons; ++number)
            records.push_back(person(amount.prefix, std::to_string(number)));
    serve(std::move(records));
    for (const Amount& amount : amounts) {
        SCOPED_TRACE(amount.prefix);
        ASSERT_TRUE(search("(sn=" + std::string(amount.prefix) + "*)")) << trouble();
        EXPECT_EQ(count(), amount.given);
        EXPECT_EQ(code(), amount.code);
        const Names numbers = read("givenName");
        ASSERT_EQ(numbers.size(), static_cast<std::size_t>(amount.given));
        for (int number = 1; number <= amount.given; ++number)
            ASSERT_EQ(numbers[static_cast<std::size_t>(number) - 1], std::to_string(number));
    }
    EXPECT_EQ(trouble(), "");
    EXPECT_EQ(log.messages.size(), 0U);
    settings.sizeLimit = 10000;
    EXPECT_EQ(found("(sn=Many*)").size(), 5000U);
    EXPECT_EQ(code(), 0);
}

TEST_F(DirectoryClientTest, AServersLowerLimitIsNoFailureButSaidInTheLog)
{
    serve(servers::persons(20), 7);
    ASSERT_TRUE(search());
    EXPECT_EQ(code(), 4);
    EXPECT_EQ(count(), 7);
    EXPECT_EQ(read().size(), 7U);
    EXPECT_EQ(trouble(), "");
    EXPECT_EQ(log.messages,
              (Names{"the directory server " + server->address() +
                     " gives no more than 7 results; search for a longer name to see the others"}));
}

TEST_F(DirectoryClientTest, ALimitBelowOneStandsForOne)
{
    serve(servers::persons(3));
    settings.sizeLimit = 0;
    EXPECT_EQ(found(), (Names{"Surname0001"}));
    EXPECT_EQ(code(), 4);
}

TEST_F(DirectoryClientTest, ASearchDropsWhatTheOneBeforeLeft)
{
    serve({person("Anders"), person("Zimmer")});
    ASSERT_TRUE(search());
    EXPECT_EQ(found("(sn=Z*)"), (Names{"Zimmer"}));
    ASSERT_TRUE(search());
    EXPECT_FALSE(search("(sn="));
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(read(), Names{});
}

TEST_F(DirectoryClientTest, AFilterThatIsNoneIsRefused)
{
    serve({person("Smith")});
    for (const std::string filter : {"(", ")", "(sn=a)*)", "(sn=a", "((sn=a)", "sn", "(sn=\\zz*)", "(=a)"}) {
        SCOPED_TRACE(filter);
        EXPECT_FALSE(search(filter));
        EXPECT_NE(code(), 0);
        EXPECT_NE(trouble().find("is no search filter"), std::string::npos) << trouble();
        EXPECT_EQ(found("(sn=S*)"), (Names{"Smith"})); // the session goes on
    }
    for (const std::string& filter : {std::string(), std::string("(sn=S*)\0", 8)}) {
        EXPECT_FALSE(search(filter));
        EXPECT_EQ(code(), 87);
        EXPECT_NE(trouble().find("is no search;"), std::string::npos) << trouble();
    }
}

TEST_F(DirectoryClientTest, StarsThatAUserTypesStandForAnything)
{
    serve({person("Smith"), person("Meier")});
    EXPECT_EQ(found("(sn=**)"), (Names{"Smith", "Meier"}));
    EXPECT_EQ(found("(sn=Sm***th**)"), (Names{"Smith"}));
    EXPECT_EQ(found("(sn=\\2a*)"), Names{}); // a star of the name's own
}

TEST_F(DirectoryClientTest, ASearchRootThatDoesNotExistIsAFailureAndNoEmptyResult)
{
    serve({person("Smith")});
    setBase("dc=elsewhere");
    EXPECT_FALSE(search());
    EXPECT_EQ(code(), 32);
    EXPECT_EQ(trouble(), "the directory server " + server->address() +
                             " has no entry \"dc=elsewhere\" to search below; check the search root that the "
                             "device gives");
    setBase("this is no name");
    EXPECT_FALSE(search());
    EXPECT_EQ(code(), 34);
    setBase(SlapdServer::base());
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(trouble(), "");
}

TEST_F(DirectoryClientTest, NullTextsAreEmptyTexts)
{
    session.setServerIP(nullptr);
    session.setBaseServerPath(nullptr);
    session.appendAttribute(nullptr);
    EXPECT_FALSE(session.openSession());
    EXPECT_EQ(trouble(), "\"\" is no address of a directory server; check the address that the device gives");
}

TEST(DirectoryClientWithoutADriverTest, TheBuiltInLimitsHold)
{
    ASSERT_EQ(quelm::HostState::current(), nullptr);
    const LogCapture log;
    servers::SlapdSettings slapd;
    slapd.records = servers::persons(1001);
    const SlapdServer server(slapd);
    LDAPSession session;
    std::string address = server.address();
    std::string base = SlapdServer::base();
    std::string filter = "(sn=*)";
    session.setServerIP(address.data());
    session.setBaseServerPath(base.data());
    EXPECT_EQ(session.getLastResponseCode(), 0);
    EXPECT_EQ(session.getLastResponseItemCount(), 0);
    ASSERT_TRUE(session.requestSearch(filter, 2, nullptr, false));
    EXPECT_EQ(session.getLastResponseItemCount(), 1000);
    EXPECT_EQ(session.getLastResponseCode(), 4);
}

} // namespace
