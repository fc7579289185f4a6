// Recorded journeys: files that tell, beside each other, what a user does and what the screen shows.
//
// A journey is a UTF-8 text. Its lines are:
//
//     # A remark: tells the story.                                     (so does an empty line)
//     == ann                                                           ann starts the driver
//     == job {work}/job                                                a look into a file
//     press "AddFaxRcpt"                                                       | ok
//     windows                                                                  | windows 1
//                                                                              | window "..." title "..."
//
// - "== NAME" starts quelm-driver's `script` as that user; it ends at the next "==". The steps below it have
//   two columns, parted by a bar: on the left an action in the script's own words, 72 characters wide; on the
//   right, after "| ", the lines that the driver answers. Each further line of an answer stands in a line of
//   its own with an empty left column.
// - "== job FILE" looks into a file that was written: on the left a text, on the right each line that holds
// it.
// - "{home}" stands for the installation folder and "{work}" for the user's documents, where "letter.ps"
// lies.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_RECORDED_JOURNEY_H
#define TESTS_JOURNEYS_RECORDED_JOURNEY_H

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace journeys {

/// What is done, and the lines that it brings to the screen.
struct RecordedStep {
    std::string action;
    std::vector<std::string> answer;

    bool operator==(const RecordedStep&) const = default;
};

/// One run of the driver, or one look into a file.
struct RecordedScene {
    std::string user; ///< empty when this is a look into a file
    std::string file; ///< the file looked into
    std::vector<RecordedStep> steps;
};

/// Reads a journey. Throws std::runtime_error, with the line's number, for anything that is not in its form,
/// for a step without an answer, a scene without a step and a journey without a scene.
std::vector<RecordedScene> readJourney(const std::string& text);

/// The same steps with the answers that the driver gave, line by line, to their actions. Answer lines left
/// over belong to the last step, and steps that got none have none.
std::vector<RecordedStep> answeredSteps(const std::vector<RecordedStep>& steps, const std::string& output);

/// The steps whose answers differ: each action, below it the answer as it is recorded (-) and as it went (+).
/// Empty when every answer is as recorded.
std::string differences(const std::vector<RecordedStep>& recorded, const std::vector<RecordedStep>& gone);

/// The names of a folder's journeys, without ".journey", sorted; throws when there is none.
std::vector<std::string> journeyNames(const std::filesystem::path& folder);

} // namespace journeys

#endif
