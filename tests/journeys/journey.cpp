// Setting up and clearing away what a journey needs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include "tests/support/build_paths.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace journeys {
namespace {

namespace fs = std::filesystem;

const fs::path stage = build_paths::stageFolder();

fs::path makeFolder()
{
    std::string pattern = (fs::temp_directory_path() / "journey-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    return pattern;
}

std::string readFile(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

Journey::Journey() : root_(makeFolder())
{
    folder = root_ / "work";
    home = root_ / "install";
    for (const auto& made : {folder, home, root_ / "home", root_ / "run"})
        fs::create_directory(made);
    // The component keeps what it made until the process ends; a build with the leak sanitizer
    // looks at the driver's memory alone. (A component that could not start is unloaded: its own
    // name is gone by then.)
    std::ofstream(root_ / "leaks") << "leak:libBramblecorLanFax.so\nleak:quelm::ComponentLibrary::start\n";
    fs::create_symlink(stage / "libBramblecorLanFax.so", home / "libBramblecorLanFax.so");
}

Journey::~Journey() { fs::remove_all(root_); }

Result Journey::driver(Request request) const
{
    Arguments all{(stage / "quelm-driver").string(), "--home", home.string(), "--user", user};
    all.insert(all.end(), request.arguments.begin(), request.arguments.end());
    request.arguments = std::move(all);
    const auto own = (root_ / "home").string();
    for (const auto& setting :
         {"HOME=" + own, "XDG_CONFIG_HOME=" + own + "/config", "XDG_CONFIG_DIRS=" + own + "/machine",
          "XDG_STATE_HOME=" + own + "/state", "XDG_DATA_HOME=" + own + "/data",
          "XDG_CACHE_HOME=" + own + "/cache",
          "LSAN_OPTIONS=print_suppressions=0:suppressions=" + (root_ / "leaks").string(),
          "XDG_RUNTIME_DIR=" + (root_ / "run").string(), std::string("LC_ALL=C.UTF-8"),
          "LANGUAGE=" + language})
        request.environment.push_back(setting);
    return runProgram(request);
}

Result Journey::driver(const Arguments& arguments, const std::string& input) const
{
    Request request;
    request.arguments = arguments;
    request.input = input;
    return driver(request);
}

std::vector<std::string> Journey::attributes(const Arguments& arguments) const
{
    Arguments all{"attributes"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const auto result = driver(all);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    return result.writes;
}

std::string Journey::attributeText(const Arguments& arguments) const
{
    std::string text;
    for (const auto& write : attributes(arguments))
        text += write;
    return text;
}

std::vector<std::string> Journey::script(const std::vector<std::string>& lines) const
{
    std::string text;
    for (const auto& line : lines)
        text += line + "\n";
    const auto result = driver({"script", "-"}, text);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    std::vector<std::string> answers;
    std::istringstream stream(result.output);
    for (std::string line; std::getline(stream, line);)
        answers.push_back(line);
    return answers;
}

std::string Journey::document(const std::string& name, const std::string& text) const
{
    return file(name, "%!PS-Adobe-3.0\n/Helvetica findfont 12 scalefont setfont 72 700 moveto (" + text +
                          ") show showpage\n%%EOF\n");
}

std::vector<std::string> Journey::pages(const std::string& job) const
{
    const auto rendered = root_ / "pages";
    fs::remove_all(rendered);
    fs::create_directory(rendered);
    Request request;
    request.arguments = {"gs",
                         "-q",
                         "-dSAFER",
                         "-dBATCH",
                         "-dNOPAUSE",
                         "-sDEVICE=txtwrite",
                         "-sOutputFile=" + (rendered / "%03d").string(),
                         job};
    const auto result = runProgram(request);
    EXPECT_EQ(result.status, 0) << result.output << result.errors;
    EXPECT_EQ(result.output + result.errors, "");
    std::vector<fs::path> files(fs::directory_iterator(rendered), {});
    std::ranges::sort(files);
    std::vector<std::string> texts;
    for (const auto& page : files) {
        auto text = readFile(page);
        std::erase_if(
            text, [](char character) { return character == ' ' || character == '\r' || character == '\n'; });
        texts.push_back(text);
    }
    return texts;
}

std::string Journey::file(const std::string& name, std::string_view content) const
{
    std::ofstream(folder / name, std::ios::binary) << content;
    return path(name);
}

std::string Journey::content(const std::string& name) const { return readFile(folder / name); }

std::vector<std::string> Journey::files() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

Result withoutSummary(Result result)
{
    auto& errors = result.errors;
    const auto begin = errors.starts_with("fax to ") ? 0 : errors.find("\nfax to ") + 1;
    const auto way = errors.find("\ngoes to ", begin);
    EXPECT_NE(way, std::string::npos) << errors;
    if (way != std::string::npos)
        errors.erase(begin, errors.find('\n', way + 1) + 1 - begin);
    return result;
}

void expectFailure(const Result& result, int status, const std::string& words)
{
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, testing::StartsWith("quelm-driver: "));
    EXPECT_THAT(result.errors, testing::HasSubstr(words));
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_TRUE(result.errors.ends_with('\n'));
}

} // namespace journeys
