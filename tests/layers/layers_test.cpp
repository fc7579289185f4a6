// The project keeps its layers, and the checker sees it when it does not.
#include "layers.h"

#include "tests/layers/source_tree.h"
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <filesystem>
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

INSTANTIATE_TEST_SUITE_P(Layers, ForbiddenInclusion,
                         testing::Values(Inclusion{"host/calls.h", "model/recipient.h"},
                                         Inclusion{"host/calls.h", "component/messages.h"},
                                         Inclusion{"model/recipient.cpp", "ui/fax_dialog.h"},
                                         Inclusion{"model/recipient.cpp", "component/startup.h"},
                                         Inclusion{"output/cover_sheet.cpp", "component/messages.h"},
                                         Inclusion{"output/cover_sheet.cpp", "phonebook/phonebook_state.h"},
                                         Inclusion{"phonebook/record_format.cpp", "ui/fax_dialog.h"},
                                         Inclusion{"phonebook/record_format.cpp", "directory/search.h"},
                                         Inclusion{"directory/search.cpp", "phonebook/phonebook_state.h"},
                                         Inclusion{"ui/fax_dialog.cpp", "driver/core/error.h"},
                                         Inclusion{"component/messages.cpp", "model/fax_job.h"},
                                         Inclusion{"component/startup.cpp", "driver/core/driver.h"},
                                         Inclusion{"component/startup.cpp", "tests/support/journal.h"},
                                         Inclusion{"driver/core/widget.cpp", "model/fax_job.h"},
                                         Inclusion{"driver/core/widget.cpp", "component/messages.h"},
                                         Inclusion{"driver/core/widget.cpp", "driver/jobs/sink.h"},
                                         Inclusion{"driver/jobs/sink.h", "driver/cli/commands.h"},
                                         Inclusion{"driver/jobs/sink.h", "component/messages.h"},
                                         Inclusion{"driver/jobs/sink.h", "model/list_refresh.h"},
                                         Inclusion{"driver/phonebook/phonebook.h", "driver/jobs/sink.h"},
                                         Inclusion{"driver/phonebook/phonebook.h",
                                                   "phonebook/record_format.h"},
                                         Inclusion{"driver/core/widget.cpp", "driver/desktop/control.h"},
                                         Inclusion{"driver/jobs/sink.h", "driver/desktop/control.h"},
                                         Inclusion{"driver/cli/main.cpp", "driver/desktop/control.h"},
                                         Inclusion{"driver/desktop/control.h", "component/messages.h"},
                                         Inclusion{"driver/desktop/control.h", "driver/cli/commands.h"},
                                         Inclusion{"driver/cli/main.cpp", "model/fax_job.h"},
                                         Inclusion{"driver/cli/main.cpp", "ui/fax_dialog.h"}));

TEST_P(AllowedInclusion, IsNotReported)
{
    const auto [file, included] = GetParam();
    EXPECT_EQ(violationOf(file, included), "");
}

INSTANTIATE_TEST_SUITE_P(Layers, AllowedInclusion,
                         testing::Values(Inclusion{"host/calls.h", "host/widgets.h"},
                                         Inclusion{"model/recipient.cpp", "component/module_state.h"},
                                         Inclusion{"output/cover_sheet.cpp", "model/fax_job.h"},
                                         Inclusion{"phonebook/record_format.cpp", "component/messages.h"},
                                         Inclusion{"directory/search.cpp", "model/recipient.h"},
                                         Inclusion{"ui/fax_dialog.cpp", "directory/device_directory.h"},
                                         Inclusion{"component/startup.cpp", "phonebook/phonebook_state.h"},
                                         Inclusion{"component/descriptor.cpp", "output/cover_page.h"},
                                         Inclusion{"driver/core/widget.cpp", "host/widgets.h"},
                                         Inclusion{"driver/jobs/sink.h", "model/fax_job.h"},
                                         Inclusion{"driver/jobs/sink.h", "driver/core/error.h"},
                                         Inclusion{"driver/desktop/control.h", "driver/core/widget.h"},
                                         Inclusion{"driver/desktop/job_sending.h", "driver/jobs/output.h"},
                                         Inclusion{"driver/cli/main.cpp", "driver/jobs/output.h"}));

TEST_F(LayersTest, AnIncludeIsSeenHoweverItIsSpaced)
{
    write("host/calls.h", " #\tinclude\"model/recipient.h\" // why\n");
    EXPECT_EQ(violations(), "host/calls.h:1 includes model/recipient.h\n");
}

TEST_F(LayersTest, AWayRoundThroughAnotherFolderIsSeen)
{
    EXPECT_EQ(violationOf("model/recipient.cpp", "host/../ui/fax_dialog.h"),
              "model/recipient.cpp:2 includes ui/fax_dialog.h\n");
    write("ui/fax_dialog.h", "");
    EXPECT_EQ(violationOf("model/recipient.cpp", "../ui/fax_dialog.h"),
              "model/recipient.cpp:2 includes ui/fax_dialog.h\n");
}

TEST_F(LayersTest, AFileBesideTheIncludingOneMayBeNamedAlone)
{
    write("host/widgets.h", "");
    writeInclude("host/calls.h", "widgets.h");
    EXPECT_EQ(violations(), "");
}

TEST_F(LayersTest, SystemIncludesAndCommentsAreNotLookedAt)
{
    write("host/calls.h", "#include <model/recipient.h>\n// #include \"model/recipient.h\"\n");
    const auto text = violations();
    EXPECT_EQ(text, "");
}

TEST_F(LayersTest, ADriverFolderWithoutARuleIsReported)
{
    writeInclude("driver/surprise/main.cpp", "driver/core/error.h");
    EXPECT_EQ(violations(), "driver/surprise/main.cpp lies in a folder without a rule\n");
}

} // namespace
