// Reads the two columns, and tells how a journey went otherwise.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/recorded_journey.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace journeys {
namespace {

constexpr std::size_t leftWidth = 72;
constexpr std::string_view extension = ".journey";
constexpr std::string_view bar = " | ";

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

/// Where the character number `index` starts; the size when there are fewer.
std::size_t offsetOf(std::string_view text, std::size_t index)
{
    std::size_t offset = 0;
    for (; offset < text.size(); ++offset)
        if (startsCharacter(text[offset]) && index-- == 0)
            break;
    return offset;
}

RecordedScene sceneFrom(const std::string& heading)
{
    constexpr std::string_view look = "job ";
    RecordedScene scene;
    if (heading.starts_with(look))
        scene.file = heading.substr(look.size());
    else
        scene.user = heading;
    if (scene.file.empty() && scene.user.empty())
        throw std::runtime_error("a scene needs a user or a file");
    return scene;
}

void addRow(RecordedScene& scene, const std::string& line)
{
    const auto split = offsetOf(line, leftWidth);
    if (line.compare(split, bar.size(), bar) != 0)
        throw std::runtime_error("the bar must stand behind " + std::to_string(leftWidth) + " characters");
    auto action = line.substr(0, split);
    action.erase(action.find_last_not_of(' ') + 1);
    if (!action.empty())
        scene.steps.push_back({action, {}});
    else if (scene.steps.empty())
        throw std::runtime_error("an answer needs an action ahead of it");
    scene.steps.back().answer.push_back(line.substr(split + bar.size()));
}

void requireSteps(const std::vector<RecordedScene>& scenes)
{
    if (scenes.empty() || scenes.back().steps.empty())
        throw std::runtime_error("ends a scene in which nothing is done");
}

void readLine(std::vector<RecordedScene>& scenes, const std::string& line)
{
    constexpr std::string_view heading = "== ";
    if (line.empty() || line.front() == '#')
        return;
    if (line.starts_with(heading)) {
        if (!scenes.empty())
            requireSteps(scenes);
        scenes.push_back(sceneFrom(line.substr(heading.size())));
    } else if (scenes.empty()) {
        throw std::runtime_error("a scene starts with \"== NAME\"");
    } else {
        addRow(scenes.back(), line);
    }
}

/// How many lines, beginning at `first`, answer `action`.
std::size_t answerSize(const std::string& action, const std::vector<std::string>& lines, std::size_t first)
{
    const auto verb = action.substr(0, action.find(' '));
    if (verb == "rows" || verb == "windows") {
        const auto& head = lines[first];
        return 1 + std::stoul(head.substr(head.rfind(' ') + 1));
    }
    const bool isAsked = first + 1 < lines.size() && lines[first + 1].starts_with("question ");
    return isAsked ? 2 : 1;
}

} // namespace

std::vector<RecordedScene> readJourney(const std::string& text)
{
    std::vector<RecordedScene> scenes;
    std::istringstream stream(text);
    std::size_t number = 0;
    try {
        for (std::string line; std::getline(stream, line);) {
            ++number;
            readLine(scenes, line);
        }
        requireSteps(scenes);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error("line " + std::to_string(number) + ": " + error.what());
    }
    return scenes;
}

std::vector<RecordedStep> answeredSteps(const std::vector<RecordedStep>& steps, const std::string& output)
{
    std::vector<std::string> lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::vector<RecordedStep> answered;
    std::size_t first = 0;
    for (const auto& step : steps) {
        RecordedStep next{step.action, {}};
        const auto size = first < lines.size() ? answerSize(step.action, lines, first) : 0;
        for (std::size_t end = first + size; first < std::min(end, lines.size()); ++first)
            next.answer.push_back(lines[first]);
        answered.push_back(std::move(next));
    }
    for (; !answered.empty() && first < lines.size(); ++first)
        answered.back().answer.push_back(lines[first]);
    return answered;
}

std::string differences(const std::vector<RecordedStep>& recorded, const std::vector<RecordedStep>& gone)
{
    const auto marked = [](const char* mark, const std::vector<std::string>& answer) {
        std::string text;
        for (const auto& line : answer)
            text += mark + line + "\n";
        return answer.empty() ? mark + std::string("(no answer)\n") : text;
    };
    std::string text;
    const RecordedStep nothing;
    for (std::size_t i = 0; i < std::max(recorded.size(), gone.size()); ++i) {
        const auto& before = i < recorded.size() ? recorded[i] : nothing;
        const auto& now = i < gone.size() ? gone[i] : nothing;
        if (before == now)
            continue;
        text += (before.action.empty() ? now.action : before.action) + "\n";
        text += marked("  - ", before.answer) + marked("  + ", now.answer);
    }
    return text;
}

std::vector<std::string> journeyNames(const std::filesystem::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == extension)
            names.push_back(entry.path().stem().string());
    if (names.empty())
        throw std::runtime_error("no journey in " + folder.string());
    std::ranges::sort(names);
    return names;
}

} // namespace journeys
