// The table of who may include whom, and the reading of include lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "layers.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace layers {
namespace {

namespace fs = std::filesystem;

/// A folder, and the folders that it may include beside itself. "component/model/headers" means the headers
/// of component/model/ that hosts are written against.
struct Row {
    std::string folder;
    std::vector<std::string> mayInclude;
};

/// What a program without a screen is made of.
const std::vector<std::string> withoutScreen = {
    "base",
    "base/command_line",
    "base/ghostscript",
    "base/net",
    "base/sqlite",
    "base/terminal",
    "host",
    "driver/store",
    "driver/widgets",
    "driver/plugin",
    "driver/features",
    "driver/directory",
    "driver/device",
    "driver/boundary",
    "driver/config",
    "driver/core",
    "driver/documents",
    "driver/cover",
    "driver/jobs",
    "driver/outbox",
    "driver/handover",
    "driver/phonebook",
};

std::vector<std::string> withoutScreenAnd(std::vector<std::string> folders)
{
    folders.insert(folders.begin(), withoutScreen.begin(), withoutScreen.end());
    return folders;
}

const std::vector<Row>& table()
{
    static const std::vector<Row> rows = {
        {"host", {}},
        {"component/common", {"host"}},
        {"component/model", {"host", "component/common"}},
        {"component/output", {"host", "component/common", "component/model"}},
        {"component/phonebook", {"host", "component/common", "component/model"}},
        {"component/directory", {"host", "component/common", "component/model"}},
        {"component/ui",
         {"host", "component/common", "component/model", "component/output", "component/phonebook",
          "component/directory"}},
        {"component/frame",
         {"host", "component/common", "component/model", "component/output", "component/phonebook",
          "component/directory", "component/ui"}},
        {"base", {}},
        {"base/command_line", {"base", "base/terminal"}},
        {"base/ghostscript", {"base"}},
        {"base/manual", {"base", "base/command_line"}},
        {"base/net", {"base"}},
        {"base/snmp", {"base"}},
        {"base/sqlite", {"base"}},
        {"base/terminal", {"base"}},
        {"driver/store", {"base", "base/sqlite"}},
        {"driver/widgets", {"base"}},
        {"driver/plugin", {"base", "host", "component/model/headers"}},
        {"driver/features", {"base", "driver/widgets"}},
        {"driver/directory", {"base", "base/net"}},
        {"driver/ldap", {"base", "base/net", "driver/directory"}},
        {"driver/device", {"base", "base/net"}},
        {"driver/snmp", {"base", "base/net", "base/snmp", "driver/device"}},
        {"driver/boundary",
         {"base", "host", "driver/device", "driver/directory", "driver/features", "driver/plugin",
          "driver/store", "driver/widgets"}},
        {"driver/config", {"base", "driver/device", "driver/directory", "driver/plugin"}},
        {"driver/core",
         {"base", "host", "driver/boundary", "driver/config", "driver/device", "driver/directory",
          "driver/plugin", "driver/widgets"}},
        {"driver/documents", {"base", "base/ghostscript"}},
        {"driver/cover", {"base", "driver/plugin"}},
        {"driver/drawings", {"base", "driver/cover"}},
        {"driver/jobs", {"base", "base/net", "host", "driver/cover", "driver/documents", "driver/plugin"}},
        {"driver/queue", {"base", "base/net", "driver/jobs"}},
        {"driver/outbox",
         {"base", "base/net", "base/sqlite", "driver/documents", "driver/jobs", "driver/plugin"}},
        {"driver/handover",
         {"base", "base/net", "driver/core", "driver/documents", "driver/jobs", "driver/outbox",
          "driver/plugin", "driver/store", "driver/widgets"}},
        {"driver/phonebook", {"base", "base/command_line", "base/terminal", "driver/store"}},
        {"driver/contacts", {"base", "driver/phonebook"}},
        {"driver/charsets", {"base", "driver/phonebook"}},
        {"device/stream", {"base"}},
        {"device/tiff", {"base"}},
        {"device/pages", {"base", "base/ghostscript", "device/tiff"}},
        {"device/line", {"base", "device/tiff"}},
        {"device/exchange", {"base", "device/line"}},
        {"device/jobs", {"base", "base/sqlite", "device/stream"}},
        {"device/display", {"base", "device/jobs", "device/stream", "device/tiff"}},
        {"device/report", {"base", "base/terminal", "device/display", "device/jobs", "device/stream"}},
        {"device/calls",
         {"base", "device/exchange", "device/jobs", "device/line", "device/pages", "device/report",
          "device/stream"}},
        {"device/port", {"base", "base/net", "device/jobs", "device/stream"}},
        {"device/agent", {"base", "base/net", "base/snmp"}},
        {"device/panel", {"base", "base/net", "device/display", "device/jobs", "device/stream"}},
        {"device",
         {"base", "base/command_line", "base/ghostscript", "base/net", "base/terminal", "device/agent",
          "device/calls", "device/display", "device/exchange", "device/jobs", "device/pages", "device/panel",
          "device/port", "device/stream"}},
        {"driver/cli/job", withoutScreen},
        {"driver/cli/script", withoutScreenAnd({"driver/cli/job"})},
        {"driver/cli", withoutScreenAnd({"driver/cli/job", "driver/cli/script"})},
        {"driver/desktop/toolkit", withoutScreen},
        {"driver/desktop/help", withoutScreenAnd({"driver/desktop/toolkit"})},
        {"driver/desktop/dialogs", withoutScreenAnd({"driver/desktop/toolkit"})},
        {"driver/desktop/sending", withoutScreenAnd({"driver/desktop/toolkit"})},
        {"driver/desktop/pages", withoutScreenAnd({"driver/desktop/toolkit", "driver/desktop/sending"})},
        {"driver/desktop/main_window",
         withoutScreenAnd({"driver/desktop/toolkit", "driver/desktop/help", "driver/desktop/dialogs",
                           "driver/desktop/sending", "driver/desktop/pages"})},
        {"driver/desktop",
         withoutScreenAnd({"driver/cli", "driver/cli/job", "driver/cli/script", "driver/desktop/toolkit",
                           "driver/desktop/help", "driver/desktop/dialogs", "driver/desktop/sending",
                           "driver/desktop/pages", "driver/desktop/main_window"})},
        {"manual", {"base", "base/command_line", "base/manual", "device", "driver/cli", "driver/phonebook"}},
    };
    return rows;
}

/// The headers that are installed, and their folder as a row names it.
constexpr std::array publicHeaders = {std::string_view("component/model/fax_job.h"),
                                      std::string_view("component/model/recipient.h"),
                                      std::string_view("component/model/recipient_list.h")};
constexpr std::string_view publicHeadersFolder = "component/model/headers";

bool liesIn(std::string_view file, std::string_view folder)
{
    return file.size() > folder.size() && file.starts_with(folder) && file[folder.size()] == '/';
}

/// The row of the longest folder that `file` lies in, or null.
const Row* rowOf(std::string_view file)
{
    const Row* best = nullptr;
    for (const auto& row : table())
        if (liesIn(file, row.folder) && (best == nullptr || row.folder.size() > best->folder.size()))
            best = &row;
    return best;
}

bool mayInclude(const Row& row, std::string_view included)
{
    const Row* target = rowOf(included);
    if (target == &row)
        return true;
    return std::ranges::any_of(row.mayInclude, [&](const std::string& folder) {
        if (folder == publicHeadersFolder)
            return std::ranges::find(publicHeaders, included) != publicHeaders.end();
        return target != nullptr && target->folder == folder;
    });
}

std::string describe(const Row& row)
{
    std::string text = row.folder + " may include";
    if (row.mayInclude.empty())
        return text + " nothing of the project";
    for (const auto& folder : row.mayInclude)
        text += " " + folder;
    return text;
}

/// A file as an include names it, from the project's root: the component's rooms are named without their
/// common folder.
std::string fromRoot(const std::string& included)
{
    for (const auto& row : table()) {
        constexpr std::string_view component = "component/";
        if (row.folder.starts_with(component) && liesIn(included, row.folder.substr(component.size())))
            return std::string(component) + included;
    }
    return included;
}

/// The name in an `#include "..."` line. Blanks may stand wherever the preprocessor allows them.
std::optional<std::string> quotedInclude(std::string_view line)
{
    const auto skipBlanks = [&line] {
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    };
    const auto skip = [&](std::string_view token) {
        skipBlanks();
        if (!line.starts_with(token))
            return false;
        line.remove_prefix(token.size());
        return true;
    };
    if (!skip("#") || !skip("include") || !skip("\""))
        return std::nullopt;
    return std::string(line.substr(0, line.find('"')));
}

/// What each unit includes, a unit being a header and its source.
using Edges = std::map<std::string, std::set<std::string>>;

/// Finds the ways that lead from a unit back to itself.
class CircleSearch {
public:
    explicit CircleSearch(const Edges& edges) : edges_(edges) {}

    /// Goes on from `unit`, unless it was seen.
    void visit(const std::string& unit)
    {
        const auto here = std::ranges::find(way_, unit);
        if (here != way_.end()) {
            std::string circle;
            for (auto step = here; step != way_.end(); ++step)
                circle += *step + " -> ";
            circles.push_back(circle + unit);
            return;
        }
        if (!seen_.insert(unit).second)
            return;
        way_.push_back(unit);
        if (const auto found = edges_.find(unit); found != edges_.end())
            for (const auto& next : found->second)
                visit(next);
        way_.pop_back();
    }

    std::vector<std::string> circles;

private:
    const Edges& edges_;
    std::vector<std::string> way_;
    std::set<std::string> seen_;
};

std::vector<std::string> circlesIn(const Edges& edges)
{
    CircleSearch search(edges);
    for (const auto& [unit, included] : edges)
        search.visit(unit);
    return search.circles;
}

class Checker {
public:
    explicit Checker(fs::path root) : root_(std::move(root)) {}

    void checkFolder(const std::string& folder)
    {
        if (!fs::is_directory(root_ / folder))
            return;
        for (const auto& entry : fs::recursive_directory_iterator(root_ / folder)) {
            const auto extension = entry.path().extension();
            if (entry.is_regular_file() && (extension == ".h" || extension == ".cpp"))
                checkFile(entry.path());
        }
    }

    Findings take()
    {
        for (const auto& circle : circlesIn(edges_))
            findings_.violations.push_back("a circle of includes: " + circle);
        std::ranges::sort(findings_.violations);
        return std::move(findings_);
    }

private:
    void checkFile(const fs::path& path)
    {
        ++findings_.files;
        const std::string file = path.lexically_relative(root_).generic_string();
        const Row* row = rowOf(file);
        if (row == nullptr) {
            findings_.violations.push_back(file + " lies in a folder without a row: add one");
            return;
        }
        std::ifstream stream(path);
        std::string line;
        for (int number = 1; std::getline(stream, line); ++number)
            if (const auto named = quotedInclude(line))
                checkInclude(file + ":" + std::to_string(number), file, *row, *named);
    }

    /// A header and its source are one: "base/log".
    static std::string unitOf(const std::string& file) { return file.substr(0, file.rfind('.')); }

    void checkInclude(const std::string& place, const std::string& file, const Row& row,
                      const std::string& named)
    {
        ++findings_.includes;
        std::string included = fromRoot(fs::path(named).lexically_normal().generic_string());
        if (fs::exists((root_ / file).parent_path() / named))
            included = (fs::path(file).parent_path() / named).lexically_normal().generic_string();
        if (unitOf(included) != unitOf(file))
            edges_[unitOf(file)].insert(unitOf(included));
        if (!mayInclude(row, included))
            findings_.violations.push_back(place + " includes " + included + ": " + describe(row));
    }

    fs::path root_;
    Findings findings_;
    Edges edges_;
};

} // namespace

std::vector<std::string> checkedFolders()
{
    return {"host", "component", "base", "driver", "device", "manual"};
}

Findings check(const fs::path& root)
{
    Checker checker(root);
    for (const auto& folder : checkedFolders())
        checker.checkFolder(folder);
    return checker.take();
}

Findings checkTargets(const fs::path& rooms)
{
    Findings findings;
    std::map<std::string, std::string> links;
    std::ifstream stream(rooms);
    for (std::string line; std::getline(stream, line);) {
        const auto colon = line.find(": ");
        if (colon == std::string::npos)
            continue;
        ++findings.files;
        links[line.substr(0, colon)] = line.substr(colon + 1);
    }
    const bool hasDriver = links.contains("driver/core");
    for (const auto& row : table()) {
        std::string expected;
        for (const auto& folder : row.mayInclude)
            expected += " " + folder;
        const auto found = links.find(row.folder);
        if (found != links.end() && found->second != (expected.empty() ? " " : expected))
            findings.violations.push_back(row.folder + " links" + found->second + "; it should link" +
                                          expected);
        const bool ofDriver = row.folder.starts_with("driver/") || row.folder.starts_with("base");
        if (found == links.end() && (hasDriver || !ofDriver))
            findings.violations.push_back(row.folder + " has a row, but no target");
        links.erase(row.folder);
    }
    for (const auto& [folder, linked] : links)
        findings.violations.push_back(folder + " is a target, but has no row");
    return findings;
}

} // namespace layers
