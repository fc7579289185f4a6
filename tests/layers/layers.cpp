// The rules of who may include whom, and the reading of include lines.
#include "layers.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <string_view>

namespace layers {
namespace {

namespace fs = std::filesystem;

/// One folder's rule. An entry that ends in "/" allows a whole folder, any other one file. Every folder
/// may include itself.
struct Rule {
    std::string_view folder;
    std::vector<std::string_view> mayInclude;
};

/// What model/, phonebook/ and directory/ know of component/: the state and texts that several share.
/// The rest of component/ is its roof, which knows the folders below it.
constexpr std::string_view groundFloor[] = {"component/descriptor.h", "component/messages.h",
                                            "component/module_state.h", "component/option_lists.h"};

const std::vector<Rule>& rules()
{
    const auto withGroundFloor = [](std::vector<std::string_view> folders) {
        folders.insert(folders.end(), std::begin(groundFloor), std::end(groundFloor));
        return folders;
    };
    static const std::vector<Rule> all = {
        {"host/", {}},
        {"model/", withGroundFloor({"host/"})},
        {"output/", {"host/", "model/"}},
        {"phonebook/", withGroundFloor({"host/", "model/"})},
        {"directory/", withGroundFloor({"host/", "model/"})},
        {"ui/", {"host/", "model/", "output/", "phonebook/", "directory/", "component/"}},
        {"component/", {"host/"}},
        {"driver/core/", {"host/"}},
        {"driver/jobs/",
         {"host/", "model/fax_job.h", "model/recipient.h", "model/recipient_list.h", "driver/core/"}},
        {"driver/phonebook/", {"host/", "driver/core/"}},
        // main.cpp and application.* bring the desktop and the command line's options together.
        {"driver/desktop/",
         {"host/", "driver/core/", "driver/jobs/", "driver/cli/command_line.h", "driver/cli/driver_setup.h"}},
        {"driver/cli/", {"host/", "driver/core/", "driver/jobs/", "driver/phonebook/"}},
    };
    return all;
}

/// The files of component/ that form its roof: they bring the parts together.
constexpr std::array roof = {std::string_view("component/startup.cpp"),
                             std::string_view("component/descriptor.cpp")};

/// The rule of the longest folder that `file` lies in, or null.
const Rule* ruleOf(std::string_view file)
{
    const Rule* best = nullptr;
    for (const auto& rule : rules()) {
        if (file.starts_with(rule.folder) && (!best || rule.folder.size() > best->folder.size()))
            best = &rule;
    }
    return best;
}

bool covers(std::string_view entry, std::string_view file)
{
    return entry.ends_with('/') ? file.starts_with(entry) : file == entry;
}

bool mayInclude(std::string_view file, const Rule& rule, std::string_view included)
{
    if (included.starts_with(rule.folder))
        return true;
    if (std::ranges::find(roof, file) != roof.end())
        return !included.starts_with("driver/") && !included.starts_with("tests/");
    return std::ranges::any_of(rule.mayInclude,
                               [included](std::string_view entry) { return covers(entry, included); });
}

std::string describe(const Rule& rule)
{
    std::string text = std::string(rule.folder) + " may include";
    if (rule.mayInclude.empty())
        return text + " nothing of the project";
    for (const auto entry : rule.mayInclude)
        text += " " + std::string(entry);
    return text;
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
        std::ranges::sort(findings_.violations);
        return std::move(findings_);
    }

private:
    void checkFile(const fs::path& path)
    {
        ++findings_.files;
        const std::string file = path.lexically_relative(root_).generic_string();
        const Rule* rule = ruleOf(file);
        if (!rule) {
            findings_.violations.push_back(file + " lies in a folder without a rule: add one");
            return;
        }
        std::ifstream stream(path);
        std::string line;
        for (int number = 1; std::getline(stream, line); ++number) {
            if (const auto named = quotedInclude(line))
                checkInclude(file + ":" + std::to_string(number), file, *rule, *named);
        }
    }

    void checkInclude(const std::string& place, const std::string& file, const Rule& rule,
                      const std::string& named)
    {
        ++findings_.includes;
        std::string included = fs::path(named).lexically_normal().generic_string();
        if (fs::exists((root_ / file).parent_path() / named))
            included = (fs::path(file).parent_path() / named).lexically_normal().generic_string();
        if (!mayInclude(file, rule, included))
            findings_.violations.push_back(place + " includes " + included + ": " + describe(rule));
    }

    fs::path root_;
    Findings findings_;
};

} // namespace

std::vector<std::string> checkedFolders()
{
    return {"host", "model", "output", "phonebook", "directory", "ui", "component", "driver"};
}

Findings check(const fs::path& root)
{
    Checker checker(root);
    for (const auto& folder : checkedFolders())
        checker.checkFolder(folder);
    return checker.take();
}

} // namespace layers
