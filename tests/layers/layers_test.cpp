// The project keeps its layers, and the checker sees it when it does not.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "layers.h"

#include "tests/layers/source_tree.h"
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

class LayersTest : public SourceTree {
protected:
    void writeInclude(const std::string& file, const std::string& included)
    {
        write(file, "// A file.\n#include \"" + included + "\"\n");
    }

    /// The violations' lines as far as the colon that the rule follows, joined by line feeds.
    std::string violations() const
    {
        std::string lines;
        for (const auto& violation : layers::check(root()).violations)
            lines += violation.substr(0, violation.rfind(": ")) + "\n";
        return lines;
    }

    std::string violationOf(const std::string& file, const std::string& included)
    {
        writeInclude(file, included);
        const std::string lines = violations();
        std::filesystem::remove(root() / file);
        return lines;
    }
};

struct Inclusion {
    const char* file;
    const char* included;
};

std::ostream& operator<<(std::ostream& out, const Inclusion& inclusion)
{
    return out << inclusion.file << " -> " << inclusion.included;
}

class ForbiddenInclusion : public LayersTest, public testing::WithParamInterface<Inclusion> {};
class AllowedInclusion : public LayersTest, public testing::WithParamInterface<Inclusion> {};

TEST(Project, KeepsItsLayers)
{
    const auto findings = layers::check(build_paths::projectFolder);
    EXPECT_GT(findings.files, 50);
    EXPECT_GT(findings.includes, 100);
    for (const auto& violation : findings.violations)
        ADD_FAILURE() << violation;
}

TEST_P(ForbiddenInclusion, IsReportedWithItsPlace)
{
    const auto [file, included] = GetParam();
    EXPECT_EQ(violationOf(file, included), std::string(file) + ":2 includes " + included + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Layers, ForbiddenInclusion,
    testing::Values(Inclusion{"host/calls.h", "component/model/recipient.h"},
                    Inclusion{"host/calls.h", "component/common/messages.h"},
                    Inclusion{"component/common/messages.cpp", "component/model/fax_job.h"},
                    Inclusion{"component/common/messages.cpp", "base/error.h"},
                    Inclusion{"component/model/recipient.cpp", "component/ui/fax_dialog.h"},
                    Inclusion{"component/output/cover_sheet.cpp", "component/directory/search.h"},
                    Inclusion{"component/output/cover_sheet.cpp", "component/phonebook/phonebook_state.h"},
                    Inclusion{"component/phonebook/record_format.cpp", "component/directory/search.h"},
                    Inclusion{"component/directory/search.cpp", "component/phonebook/phonebook_state.h"},
                    Inclusion{"component/ui/fax_dialog.cpp", "component/frame/startup.h"},
                    Inclusion{"component/ui/fax_dialog.cpp", "base/error.h"},
                    Inclusion{"component/frame/startup.cpp", "driver/core/driver.h"},
                    Inclusion{"component/frame/startup.cpp", "tests/support/journal.h"},
                    Inclusion{"base/log.cpp", "base/net/network_address.h"},
                    Inclusion{"base/log.cpp", "host/texts.h"},
                    Inclusion{"base/net/connector.cpp", "driver/jobs/transfer.h"},
                    Inclusion{"driver/store/record_store.cpp", "host/record_database.h"},
                    Inclusion{"driver/widgets/widget.cpp", "host/widgets.h"},
                    Inclusion{"driver/plugin/questions.cpp", "component/model/list_refresh.h"},
                    Inclusion{"driver/directory/ldap_handle.cpp", "driver/device/snmp_value.h"},
                    Inclusion{"driver/boundary/host_state.cpp", "driver/core/driver.h"},
                    Inclusion{"driver/core/driver.cpp", "component/model/fax_job.h"},
                    Inclusion{"driver/documents/sink.h", "driver/jobs/output.h"},
                    Inclusion{"driver/jobs/output.h", "driver/core/driver.h"},
                    Inclusion{"driver/phonebook/phonebook.h", "driver/boundary/texts.h"},
                    Inclusion{"driver/phonebook/phonebook.h", "component/phonebook/record_format.h"},
                    Inclusion{"driver/cli/main.cpp", "driver/desktop/dialogs/control.h"},
                    Inclusion{"driver/cli/job/fill_job.h", "driver/cli/commands.h"},
                    Inclusion{"driver/desktop/dialogs/control.h", "driver/desktop/pages/page_view.h"},
                    Inclusion{"driver/desktop/dialogs/control.h", "driver/cli/commands.h"}));

TEST_P(AllowedInclusion, IsNotReported)
{
    const auto [file, included] = GetParam();
    EXPECT_EQ(violationOf(file, included), "");
}

INSTANTIATE_TEST_SUITE_P(
    Layers, AllowedInclusion,
    testing::Values(Inclusion{"host/calls.h", "host/widgets.h"},
                    Inclusion{"component/model/recipient.cpp", "component/common/module_state.h"},
                    Inclusion{"component/output/cover_sheet.cpp", "component/model/fax_job.h"},
                    Inclusion{"component/ui/fax_dialog.cpp", "component/directory/device_directory.h"},
                    Inclusion{"component/frame/startup.cpp", "component/phonebook/phonebook_state.h"},
                    Inclusion{"component/frame/descriptor.cpp", "component/output/cover_page.h"},
                    Inclusion{"base/net/connector.cpp", "base/error.h"},
                    Inclusion{"driver/plugin/questions.cpp", "component/model/fax_job.h"},
                    Inclusion{"driver/boundary/widgets.cpp", "host/widgets.h"},
                    Inclusion{"driver/documents/sink.h", "base/error.h"},
                    Inclusion{"driver/cli/commands.h", "driver/cli/job/fill_job.h"},
                    Inclusion{"driver/cli/main.cpp", "driver/jobs/output.h"},
                    Inclusion{"driver/desktop/dialogs/control.h", "driver/widgets/widget.h"},
                    Inclusion{"driver/desktop/application.h", "driver/cli/commands.h"}));

TEST_F(LayersTest, AnIncludeIsSeenHoweverItIsSpaced)
{
    write("host/calls.h", " #\tinclude\"base/error.h\" // why\n");
    EXPECT_EQ(violations(), "host/calls.h:1 includes base/error.h\n");
}

TEST_F(LayersTest, AWayRoundThroughAnotherFolderIsSeen)
{
    EXPECT_EQ(violationOf("component/model/recipient.cpp", "host/../base/error.h"),
              "component/model/recipient.cpp:2 includes base/error.h\n");
    write("component/ui/fax_dialog.h", "");
    EXPECT_EQ(violationOf("component/model/recipient.cpp", "../ui/fax_dialog.h"),
              "component/model/recipient.cpp:2 includes component/ui/fax_dialog.h\n");
}

TEST_F(LayersTest, AFileBesideTheIncludingOneMayBeNamedAlone)
{
    write("host/widgets.h", "");
    writeInclude("host/calls.h", "widgets.h");
    EXPECT_EQ(violations(), "");
}

TEST_F(LayersTest, TheRoomsOfTheComponentAreNamedWithoutTheirCommonFolder)
{
    EXPECT_EQ(violationOf("component/model/recipient.cpp", "ui/fax_dialog.h"),
              "component/model/recipient.cpp:2 includes component/ui/fax_dialog.h\n");
    EXPECT_EQ(violationOf("component/ui/fax_dialog.cpp", "model/recipient.h"), "");
}

TEST_F(LayersTest, FilesThatIncludeEachOtherAreReported)
{
    writeInclude("base/log.h", "base/error.h");
    EXPECT_EQ(violations(), "");
    writeInclude("base/error.h", "base/log.h");
    EXPECT_EQ(violations(), "a circle of includes\n");
    EXPECT_EQ(layers::check(root()).violations.front(),
              "a circle of includes: base/error -> base/log -> base/error");
}

TEST_F(LayersTest, ACircleThroughSourcesIsSeenHoweverLongItIs)
{
    writeInclude("base/log.cpp", "base/error.h");
    writeInclude("base/error.cpp", "base/clock.h");
    writeInclude("base/clock.h", "base/log.h");
    EXPECT_EQ(
        layers::check(root()).violations,
        std::vector<std::string>{"a circle of includes: base/clock -> base/log -> base/error -> base/clock"});
    write("base/error.cpp", "#include \"base/error.h\"\n");
    EXPECT_EQ(violations(), "");
}

TEST_F(LayersTest, AFileThatIsIncludedOnTwoWaysIsNoCircle)
{
    writeInclude("base/log.cpp", "base/error.h");
    writeInclude("base/clock.cpp", "base/error.h");
    write("base/process.cpp", "#include \"base/log.h\"\n#include \"base/clock.h\"\n");
    EXPECT_EQ(violations(), "");
}

TEST_F(LayersTest, SystemIncludesAndCommentsAreNotLookedAt)
{
    write("host/calls.h", "#include <base/error.h>\n// #include \"base/error.h\"\n");
    const auto text = violations();
    EXPECT_EQ(text, "");
}

TEST_F(LayersTest, ADriverFolderWithoutARowIsReported)
{
    writeInclude("driver/surprise/main.cpp", "base/error.h");
    EXPECT_EQ(violations(), "driver/surprise/main.cpp lies in a folder without a row\n");
}

/// The rooms as the build writes them, with one change.
class TargetsTest : public LayersTest {
protected:
    std::string differences(const std::string& original, const std::string& changed)
    {
        std::ifstream stream(build_paths::inBuild("rooms.txt"));
        std::string text{std::istreambuf_iterator<char>(stream), {}};
        const auto at = text.find(original);
        if (at == std::string::npos)
            return "no \"" + original + "\" in the rooms";
        text.replace(at, original.size(), changed);
        write("rooms.txt", text);
        std::string lines;
        for (const auto& violation : layers::checkTargets(root() / "rooms.txt").violations)
            lines += violation + "\n";
        return lines;
    }
};

TEST(Project, LinksWhatItMayInclude)
{
    const auto findings = layers::checkTargets(build_paths::inBuild("rooms.txt"));
    EXPECT_GT(findings.files, 5);
    for (const auto& violation : findings.violations)
        ADD_FAILURE() << violation;
}

TEST_F(TargetsTest, ATargetThatLinksMoreOrLessIsReported)
{
    EXPECT_EQ(
        differences("component/output: host component/common component/model", "component/output: host"),
        "component/output links host; it should link host component/common component/model\n");
    EXPECT_EQ(differences("component/common: host", "component/common: host component/model"),
              "component/common links host component/model; it should link host\n");
}

TEST_F(TargetsTest, ARoomWithoutARowAndARowWithoutATargetAreReported)
{
    EXPECT_EQ(differences("component/common: host\n", "component/common: host\nsurprise: host\n"),
              "surprise is a target, but has no row\n");
    EXPECT_EQ(differences("component/common: host\n", ""), "component/common has a row, but no target\n");
}

} // namespace
