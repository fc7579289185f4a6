// The fax job through the linker names of its member functions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/component_fax_session.h"

#include "base/error.h"
#include "driver/boundary/host_state.h"
#include "driver/plugin/component_library.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_paths.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

class Writer : public AbstractPDLWriter {
public:
    bool writeText(const char* part) override
    {
        text += part;
        return succeeds;
    }
    void writeString(const std::string& part) override { text += part; }

    std::string text;
    bool succeeds = true;
};

/// A started test component; a copy of its own, so that its job is new in every test.
class ComponentFaxSessionTest : public testing::Test {
protected:
    ComponentFaxSessionTest() { EXPECT_TRUE(library.start(state.guard)); }

    std::string copyOf(const char* plugin)
    {
        std::filesystem::copy_file(pluginPath(plugin), folder / "component.so");
        return folder / "component.so";
    }

    TemporaryFolder folder;
    quelm::HostState state{"/opt/quelm", "ann"};
    quelm::ComponentLibrary library{copyOf("good")};
};

TEST_F(ComponentFaxSessionTest, SetsTheModeAndWritesTheJob)
{
    quelm::ComponentFaxSession session(library, state.guard);
    session.setPdl(quelm::Pdl::pjl);
    session.setPdl(quelm::Pdl::dsc);
    Writer writer;
    EXPECT_TRUE(session.serializeJob(writer));
    EXPECT_EQ(writer.text, "job PDLMode=PJL;PDLMode=DSC;");
}

TEST_F(ComponentFaxSessionTest, AnswersAsTheComponentDoes)
{
    quelm::ComponentFaxSession session(library, state.guard);
    EXPECT_TRUE(session.coverPageChosen());
    EXPECT_TRUE(session.checkInfo());
    Writer writer;
    writer.succeeds = false;
    EXPECT_FALSE(session.serializeJob(writer));
}

TEST_F(ComponentFaxSessionTest, AnExceptionInTheComponentIsAFailedWrite)
{
    const LogCapture log;
    quelm::ComponentFaxSession session(library, state.guard);
    Writer writer;
    EXPECT_FALSE(session.serializeCoverSheet(writer));
    EXPECT_EQ(writer.text, "cover of []");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "the component failed in serializeFaxCoverSheet: no paper");
}

TEST_F(ComponentFaxSessionTest, EmptiesTheNamesOfEarlierPagesAheadOfEachPage)
{
    const LogCapture log;
    quelm::ComponentFaxSession session(library, state.guard);
    for (int times = 0; times < 3; ++times) {
        Writer writer;
        EXPECT_FALSE(session.serializeCoverSheet(writer));
        EXPECT_EQ(writer.text, "cover of []");
    }
}

TEST_F(ComponentFaxSessionTest, ReadsTheRecipientsAndLeavesMissingTextsEmpty)
{
    quelm::ComponentFaxSession session(library, state.guard);
    const auto recipients = session.recipients();
    ASSERT_EQ(recipients.size(), 2U);
    EXPECT_EQ(recipients[0],
              (quelm::JobRecipient{1, "RecipientName", "RecipientFaxNumber", "RecipientOrganization", "",
                                   "RecipientEmail", "RecipientMailbox"}));
    EXPECT_EQ(recipients[1], quelm::JobRecipient()); // the component has nobody there
}

TEST_F(ComponentFaxSessionTest, ARecipientWhomTheComponentFailsOnIsEmpty)
{
    const LogCapture log;
    quelm::ComponentFaxSession session(library, state.guard);
    EXPECT_EQ(session.picks(), std::vector<quelm::JobRecipient>(1));
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "the component failed in getFaxRecipientN: nobody there");
}

TEST_F(ComponentFaxSessionTest, ReadsTheJobsOtherTextsAndItsPage)
{
    quelm::ComponentFaxSession session(library, state.guard);
    quelm::JobTexts expected;
    expected.dialingPrefix = "9";
    expected.senderEmail = "ann@example.org";
    EXPECT_EQ(session.texts(), expected);
    EXPECT_EQ(session.coverPageTemplate(), (quelm::CoverPageTemplate{"header", "trailer"}));
}

TEST(FaxSessionOfABrokenComponent, NamesTheFunctionThatIsMissing)
{
    quelm::HostState state("/opt/quelm", "ann");
    const quelm::ComponentLibrary library(pluginPath("without_job_function"));
    try {
        const quelm::ComponentFaxSession session(library, state.guard);
        FAIL() << "made a session";
    } catch (const quelm::Error& error) {
        EXPECT_NE(std::string(error.what()).find("_ZN11Tarvik40Fax12CheckFaxInfoEv"), std::string::npos);
    }
}

TEST(FaxSessionOfABrokenComponent, NeedsAComponentThatWasStarted)
{
    quelm::HostState state("/opt/quelm", "ann");
    const quelm::ComponentLibrary library(pluginPath("good"));
    EXPECT_THROW(quelm::ComponentFaxSession(library, state.guard), quelm::Error);
}

} // namespace
