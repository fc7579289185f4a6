// Every recorded journey is gone again, and the screen must show what its record says.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/journeys/recorded_journey.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace journeys {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const std::filesystem::path recordings = build_paths::inProject("tests/journeys/recorded");

std::string recording(const std::string& name)
{
    std::ifstream stream(recordings / (name + ".journey"), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void replaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

class RecordedJourney : public Journey, public testing::WithParamInterface<std::string> {
protected:
    RecordedJourney() { document("letter.ps", "Hello"); }

    /// The steps of a scene as they go now.
    std::vector<RecordedStep> play(const RecordedScene& scene)
    {
        if (!scene.file.empty())
            return look(scene);
        std::string script;
        for (const auto& step : scene.steps)
            script += withFolders(step.action) + "\n";
        user = scene.user;
        const auto result = driver({"script", file("steps", script), "--now", "2026-03-04T05:06"});
        EXPECT_EQ(result.status, 0);
        // Of its job a script is told what the dialog does not show any more, of what the component passes
        // over what these two are about, and of nothing else.
        const std::string told =
            "quelm-driver: the dialing prefix 9 is dialled, though its box is not ticked any more\n";
        if (GetParam() == "add_group" || GetParam() == "file_choosers")
            EXPECT_THAT(linesOf(result.errors),
                        Each(AnyOf(HasSubstr(": warning: the group \"Team\" sends nothing to its member"),
                                   HasSubstr(": warning: the shared phonebook is not listed: "))));
        else
            EXPECT_EQ(result.errors,
                      script.find("\ntick \"LanFax Dialing Prefix\" off\n") != std::string::npos ? told : "");
        return answeredSteps(scene.steps, withPlaceholders(result.output));
    }

private:
    std::vector<RecordedStep> look(const RecordedScene& scene) const
    {
        std::ifstream stream(withFolders(scene.file), std::ios::binary);
        EXPECT_TRUE(stream) << scene.file;
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        std::vector<RecordedStep> steps;
        for (const auto& [wanted, ignored] : scene.steps) {
            RecordedStep step{wanted, {}};
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);)
                if (line.find(wanted) != std::string::npos)
                    step.answer.push_back(line);
            steps.push_back(step);
        }
        return steps;
    }

    std::string withFolders(std::string text) const
    {
        replaceAll(text, "{home}", home.string());
        replaceAll(text, "{work}", folder.string());
        return text;
    }

    std::string withPlaceholders(std::string text) const
    {
        replaceAll(text, home.string(), "{home}");
        replaceAll(text, folder.string(), "{work}");
        return text;
    }
};

TEST_P(RecordedJourney, GoesAsItIsRecorded)
{
    for (const auto& scene : readJourney(recording(GetParam()))) {
        const auto otherwise = differences(scene.steps, play(scene));
        if (!otherwise.empty())
            ADD_FAILURE() << GetParam() << ".journey, in the scene of \"" << scene.user << scene.file
                          << "\", went otherwise (- is recorded, + is how it went):\n"
                          << otherwise;
    }
}

INSTANTIATE_TEST_SUITE_P(Recorded, RecordedJourney, testing::ValuesIn(journeyNames(recordings)),
                         [](const auto& journey) { return journey.param; });

TEST(RecordedJourneyFiles, TellOfEveryWindowAndBothFileChoosers)
{
    std::vector<std::string> all;
    for (const auto& name : journeyNames(recordings))
        for (const auto& scene : readJourney(recording(name)))
            for (const auto& step : scene.steps)
                all.insert(all.end(), step.answer.begin(), step.answer.end());
    for (const auto* window :
         {"Lan Fax Window", "LanFax Add Recipient Window", "LanFax Recipient Properties Window",
          "LanFax Add Recipient Error Window", "Cover Sheet Setup Window", "Sender Information Window",
          "Add Rcpt From PB Window", "LanFax Add Group Window"})
        EXPECT_THAT(all, Contains(StartsWith("window \"" + std::string(window) + "\" title ")));
    for (const auto* shown : {"LDAP Info Dialog", "PersonalPBSelectFileDialog", "SharedPBSelectFileDialog"})
        EXPECT_THAT(all, Contains(StartsWith("widget \"" + std::string(shown) + "\" kind ")));
    EXPECT_THAT(all, Contains(StartsWith("question \"")));
}

/// A line of a journey.
std::string line(std::string action, const std::string& answer)
{
    action.resize(72, ' ');
    return action + " | " + answer + "\n";
}

TEST(RecordedJourneyReader, ReadsScenesStepsAndTheirAnswers)
{
    const auto scenes = readJourney("# A remark.\n== ann\n\n" + line("windows", "windows 1") +
                                    line("", "window \"W\" title \"a | b\"") + line("answer no", "ok") +
                                    "== job {work}/job\n" + line("PHONE", "PHONE 1"));
    ASSERT_EQ(scenes.size(), 2U);
    EXPECT_EQ(scenes[0].user, "ann");
    EXPECT_THAT(scenes[0].steps,
                ElementsAre(RecordedStep{"windows", {"windows 1", "window \"W\" title \"a | b\""}},
                            RecordedStep{"answer no", {"ok"}}));
    EXPECT_EQ(scenes[1].user, "");
    EXPECT_EQ(scenes[1].file, "{work}/job");
    EXPECT_THAT(scenes[1].steps, ElementsAre(RecordedStep{"PHONE", {"PHONE 1"}}));
}

TEST(RecordedJourneyReader, RefusesAJourneyInWhichNothingHappens)
{
    for (const auto* text : {"", "\n\n", "# Only a story.\n", "== ann\n", "== ann\n# Nothing.\n"})
        EXPECT_THROW(readJourney(text), std::runtime_error) << text;
    EXPECT_THROW(readJourney("== ann\n== ben\n" + line("windows", "windows 0")), std::runtime_error);
}

TEST(RecordedJourneyReader, RefusesWhatIsNotInItsForm)
{
    for (const auto& text : {line("windows", "windows 0"), std::string("== \n"), "== ann\n" + line("", "ok"),
                             std::string("== ann\nwindows | windows 0\n"), std::string("== ann\nwindows\n"),
                             std::string("==ann\n") + line("windows", "windows 0")})
        EXPECT_THROW(readJourney(text), std::runtime_error) << text;
}

TEST(RecordedJourneyReader, CountsCharactersAndNotBytesUpToTheBar)
{
    const auto scenes = readJourney("== ann\nZo\xC3\xAB" + std::string(69, ' ') + " | ok\n");
    EXPECT_THAT(scenes.front().steps, ElementsAre(RecordedStep{"Zo\xC3\xAB", {"ok"}}));
}

TEST(RecordedJourneyReader, GivesEachStepItsOwnLinesOfTheAnswer)
{
    const std::vector<RecordedStep> steps{
        {"press \"A\"", {}}, {"rows \"L\"", {}}, {"windows", {}}, {"answer no", {}}, {"show \"A\"", {}}};
    EXPECT_THAT(answeredSteps(steps, "ok\nquestion \"?\"\nrows \"L\" 1\nrow 0\nwindows 0\nok\n"),
                ElementsAre(RecordedStep{"press \"A\"", {"ok", "question \"?\""}},
                            RecordedStep{"rows \"L\"", {"rows \"L\" 1", "row 0"}},
                            RecordedStep{"windows", {"windows 0"}}, RecordedStep{"answer no", {"ok"}},
                            RecordedStep{"show \"A\"", {}}));
}

TEST(RecordedJourneyReader, NamesEveryDifferenceWithItsAction)
{
    const std::vector<RecordedStep> recorded{{"windows", {"windows 0"}}, {"answer no", {"ok"}}};
    const auto gone = [&](const std::string& output) { return answeredSteps(recorded, output); };
    EXPECT_EQ(differences(recorded, gone("windows 0\nok\n")), "");
    EXPECT_EQ(differences(recorded, gone("windows 1\nwindow \"W\"\nok\n")),
              "windows\n  - windows 0\n  + windows 1\n  + window \"W\"\n");
    EXPECT_EQ(differences(recorded, gone("windows 0\n")), "answer no\n  - ok\n  + (no answer)\n");
    EXPECT_EQ(differences(recorded, gone("windows 0\nok\nok\n")), "answer no\n  - ok\n  + ok\n  + ok\n");
    EXPECT_EQ(differences(recorded, gone("windows 0\n ok\n")), "answer no\n  - ok\n  +  ok\n");
    EXPECT_EQ(differences(recorded, {recorded.front()}), "answer no\n  - ok\n  + (no answer)\n");
    EXPECT_NE(differences({}, recorded), "");
}

class EmptyFolder : public Journey {};

TEST_F(EmptyFolder, AFolderWithoutJourneysIsNoSuccess)
{
    file("remarks.txt", "windows");
    EXPECT_THROW(journeyNames(folder), std::runtime_error);
    file("b.journey", "");
    file("a.journey", "");
    EXPECT_THAT(journeyNames(folder), ElementsAre("a", "b"));
}

} // namespace
} // namespace journeys
