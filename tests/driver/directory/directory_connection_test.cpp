// Reaching a server by its name, and TLS: who is trusted, and that nothing goes out in plain instead.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_connection.h"

#include "base/module.h"
#include "tests/driver/directory/directory_fixture.h"
#include "tests/servers/name_service.h"

#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>

namespace {

using servers::Certificate;
using servers::CertificateAuthority;
using servers::person;
using servers::ServingListener;
using servers::SlapdServer;
using std::chrono::milliseconds;

/// The result code of connecting to a host, and what the user reads.
std::pair<int, std::string> refusalOf(const std::string& host, milliseconds limit = std::chrono::seconds(5))
{
    const quelm::DirectoryAddress address{host, 389, false};
    try {
        const auto connection = quelm::part<quelm::DirectoryLibrary>().connect(
            address, {}, std::chrono::steady_clock::now() + limit);
    } catch (const quelm::DirectoryError& error) {
        return {error.code, error.what()};
    }
    return {quelm::ldap_code::success, ""};
}

TEST(DirectoryNameTest, AnUnknownNameIsNoServer)
{
    const auto [code, line] = refusalOf("unknown.test");
    EXPECT_EQ(code, quelm::ldap_code::serverDown);
    EXPECT_EQ(line.find("the directory server unknown.test:389 cannot be found ("), 0U) << line;
}

TEST(DirectoryNameTest, ANameServiceThatDoesNotAnswerIsALackOfTime)
{
    const servers::SilentNameService silence;
    for (const std::string host : {"later.test", "silent.test"}) {
        const auto [code, line] = refusalOf(host, milliseconds(200));
        EXPECT_EQ(code, quelm::ldap_code::timeout);
        EXPECT_EQ(line, "the directory server " + host +
                            ":389 cannot be found, because the name service does not answer; check the "
                            "network");
    }
}

/// A session that trusts one authority, and that authority.
class DirectoryTlsTest : public DirectoryTest {
protected:
    DirectoryTlsTest() : authority(folder.path(), "authority")
    {
        settings.certificateAuthorities = authority.certificate();
    }

    void serve(const std::optional<Certificate>& certificate,
               std::vector<servers::DirectoryRecord> records = {person("Smith")})
    {
        servers::SlapdSettings slapd;
        slapd.records = std::move(records);
        slapd.certificate = certificate;
        server = std::make_unique<SlapdServer>(slapd);
    }
    void serveWell(std::vector<servers::DirectoryRecord> records = {person("Smith")})
    {
        serve(authority.issue("good", "IP:127.0.0.1"), std::move(records));
    }

    /// The result of connecting under TLS from the first byte, and of StartTLS.
    void expectRefusal(const std::string& where, const std::string& reason)
    {
        const std::string address = where + ":" + std::to_string(server->tlsPort());
        settings.startTls = false;
        EXPECT_FALSE(open("ldaps://" + address));
        EXPECT_EQ(trouble().find("the directory server " + address + " is not trusted"), 0U) << trouble();
        EXPECT_NE(trouble().find(reason), std::string::npos) << trouble();
        EXPECT_FALSE(search());
        EXPECT_EQ(code(), 91);

        settings.startTls = true;
        EXPECT_FALSE(open(where + ":" + std::to_string(server->port())));
        EXPECT_NE(trouble().find("is not trusted"), std::string::npos) << trouble();
        EXPECT_FALSE(search());
        EXPECT_EQ(code(), 91);
    }

    std::string secureAddress() const { return "ldaps://127.0.0.1:" + std::to_string(server->tlsPort()); }

    CertificateAuthority authority;
    std::unique_ptr<SlapdServer> server;
};

TEST_F(DirectoryTlsTest, ATrustedServerIsSearchedUnderTls)
{
    serveWell();
    ASSERT_TRUE(connect(secureAddress())) << trouble();
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(log.messages, Names{});
}

TEST_F(DirectoryTlsTest, StartTlsIsUsedWhenTheSettingsSaySo)
{
    serveWell();
    settings.startTls = true;
    const ServingListener proxy(servers::cuttingProxy(server->port(), 1U << 30U, servers::Cut::close));
    ASSERT_TRUE(connect(proxy.address())) << trouble();
    EXPECT_EQ(found(), (Names{"Smith"}));
    EXPECT_EQ(proxy.connections(), 1);
}

TEST_F(DirectoryTlsTest, AServerThatComesBackIsFoundUnderTlsToo)
{
    serveWell();
    for (const bool startTls : {false, true}) {
        settings.startTls = startTls;
        ASSERT_TRUE(connect(startTls ? server->address() : secureAddress())) << trouble();
        ASSERT_EQ(found(), (Names{"Smith"}));
        server->process().kill();
        EXPECT_FALSE(search());
        server->start();
        EXPECT_EQ(found(), (Names{"Smith"}));
    }
}

TEST_F(DirectoryTlsTest, ManyResultsComeWholeUnderTls)
{
    serveWell(servers::persons(1000));
    ASSERT_TRUE(connect(secureAddress())) << trouble();
    EXPECT_EQ(found().size(), 1000U);
}

TEST_F(DirectoryTlsTest, AnUnknownAuthorityIsNotTrusted)
{
    serveWell();
    const CertificateAuthority other(folder.path(), "other");
    settings.certificateAuthorities = other.certificate();
    expectRefusal("127.0.0.1", "an authority in \"" + other.certificate() + "\"");
}

TEST_F(DirectoryTlsTest, TheSystemsAuthoritiesDoNotTrustOurs)
{
    serveWell();
    settings.certificateAuthorities.clear();
    expectRefusal("127.0.0.1", "an authority that this system trusts");
}

TEST_F(DirectoryTlsTest, ACertificateForAnotherNameIsNotTrusted)
{
    serve(authority.issue("stranger", "DNS:ldap.example,IP:127.0.0.2"));
    expectRefusal("127.0.0.1", "is for this name");
    expectRefusal("localhost", "is for this name");
}

TEST_F(DirectoryTlsTest, AnExpiredCertificateIsNotTrusted)
{
    serve(authority.issue("expired", "IP:127.0.0.1", true));
    expectRefusal("127.0.0.1", "certificate is valid");
}

TEST_F(DirectoryTlsTest, AServerWithoutStartTlsIsGivenUp)
{
    serve(std::nullopt);
    settings.startTls = true;
    EXPECT_FALSE(open(server->address()));
    EXPECT_EQ(trouble(),
              "the directory server " + server->address() +
                  " does not start TLS (unsupported extended operation); give it a certificate, or do "
                  "without StartTLS");
    EXPECT_FALSE(session.bindAnonymousSession());
    EXPECT_FALSE(search());
    settings.startTls = false;
    EXPECT_EQ(found(), (Names{"Smith"}));
}

TEST_F(DirectoryTlsTest, AFileThatHoldsNoAuthoritiesIsSaidToBeUseless)
{
    serveWell();
    settings.certificateAuthorities = folder / "missing.pem";
    EXPECT_FALSE(open(secureAddress()));
    EXPECT_EQ(trouble(), "the file of certificate authorities \"" + (folder / "missing.pem") +
                             "\" cannot be read; check its name and rights");
    settings.certificateAuthorities = writeFile(folder / "rubbish.pem", "rubbish\n");
    EXPECT_FALSE(open(secureAddress()));
    EXPECT_NE(trouble(), "");
}

TEST_F(DirectoryTlsTest, AServerThatSpeaksNoTlsIsGivenUpInTime)
{
    const servers::SilentListener silent;
    const ServingListener talkative(servers::answering("220 ready\r\n"));
    settings.connectTimeout = milliseconds(300);
    for (const std::string& address : {silent.address(), talkative.address()}) {
        EXPECT_LT(timeOf([&] { EXPECT_FALSE(open("ldaps://" + address)); }), milliseconds(2300));
        EXPECT_NE(trouble(), "");
    }
    settings.startTls = true;
    EXPECT_LT(timeOf([&] { EXPECT_FALSE(open(silent.address())); }), milliseconds(2300));
    EXPECT_NE(trouble(), "");
}

TEST_F(DirectoryTlsTest, AServerThatStopsInTheMiddleOfTlsIsGivenUpInTime)
{
    serveWell(servers::persons(100));
    settings.connectTimeout = milliseconds(500);
    settings.searchTimeout = milliseconds(500);
    for (const std::size_t bytes : {1U, 100U, 600U, 1200U, 4000U}) {
        SCOPED_TRACE(bytes);
        const ServingListener proxy(servers::cuttingProxy(server->tlsPort(), bytes, servers::Cut::silence));
        EXPECT_LT(timeOf([&] {
                      const bool connected = connect("ldaps://" + proxy.address());
                      const bool whole = connected && search() && code() == 0;
                      EXPECT_FALSE(whole);
                  }),
                  milliseconds(3500));
        EXPECT_NE(trouble(), "");
    }
}

TEST_F(DirectoryTlsTest, TheEnvironmentDoesNotLowerTheGuard)
{
    serveWell();
    const CertificateAuthority other(folder.path(), "other");
    EXPECT_EQ(inProcess([&] {
                  setenv("LDAPTLS_REQCERT", "never", 1);
                  setenv("LDAPTLS_CACERT", authority.certificate().c_str(), 1);
                  setenv("LDAPTLS_CACERTDIR", folder.path().c_str(), 1);
                  setenv("LDAPSIZELIMIT", "1", 1);
                  setenv("LDAPURI", "ldap://127.0.0.1:1", 1);
                  settings.certificateAuthorities = other.certificate();
                  if (open(secureAddress()))
                      return 1;
                  settings.certificateAuthorities.clear();
                  if (open(secureAddress()))
                      return 2;
                  return 0;
              }),
              0);
}

} // namespace
