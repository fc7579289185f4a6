// Ghostscript as a test tool.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/component/output/ghostscript.h"

#include <rapidxml/rapidxml.hpp>

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace rendering {

namespace {

constexpr int pointsWide = 612;
constexpr int pointsHigh = 792;
constexpr int pixelsPerPoint = 4;

/// A folder of its own, removed again.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "rendering-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder at " + pattern);
        path_ = pattern;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Runs the program; pages go to files made from `pattern` in the folder. Returns what it wrote.
std::string run(const TemporaryFolder& folder, const std::string& program, const std::string& device,
                const std::string& pattern)
{
    std::ofstream(folder.file("program.ps"), std::ios::binary) << program;
    const std::string command = GHOSTSCRIPT_PROGRAM " -q -dSAFER -dBATCH -dNOPAUSE -dDEVICEWIDTHPOINTS=" +
                                std::to_string(pointsWide) +
                                " -dDEVICEHEIGHTPOINTS=" + std::to_string(pointsHigh) +
                                " -sDEVICE=" + device + " '-sOutputFile=" + folder.file(pattern) + "' '" +
                                folder.file("program.ps") + "' 2>&1 </dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        throw std::runtime_error("cannot start " + command);
    std::string written;
    std::array<char, 4096> buffer;
    for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        written.append(buffer.data(), count);
    const int status = pclose(pipe);
    if (status != 0)
        throw std::runtime_error("Ghostscript failed: " + written);
    return written;
}

std::vector<std::string> pageFiles(const TemporaryFolder& folder, const std::string& ending)
{
    std::vector<std::string> contents;
    for (int page = 1; std::filesystem::exists(folder.file(std::to_string(page) + ending)); ++page)
        contents.push_back(readFile(folder.file(std::to_string(page) + ending)));
    return contents;
}

Text readSpan(const rapidxml::xml_node<>& span)
{
    Text text{};
    double fromTop = 0;
    std::istringstream(span.first_attribute("bbox")->value()) >> text.x >> fromTop;
    text.y = pointsHigh - fromTop;
    text.font = span.first_attribute("font")->value();
    text.size = std::stod(span.first_attribute("size")->value());
    for (const auto* character = span.first_node("char"); character != nullptr;
         character = character->next_sibling("char"))
        text.text += character->first_attribute("c")->value();
    return text;
}

} // namespace

Picture::Picture(const std::string& pgm)
{
    std::istringstream in(pgm);
    std::string magic;
    std::string comment;
    int most = 0;
    in >> magic >> std::ws;
    while (in.peek() == '#')
        std::getline(in, comment);
    in >> width_ >> height_ >> most;
    in.get();
    pixels_.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (magic != "P5" || most != 255 || width_ != pointsWide * pixelsPerPoint ||
        pixels_.size() != static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_))
        throw std::runtime_error("not the picture of a letter-size page");
}

bool Picture::isInk(int column, int row) const
{
    const std::size_t index =
        static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(column);
    return static_cast<unsigned char>(pixels_[index]) < 128;
}

namespace {

/// Collects the stretches of `count` pixels for which `inkAt` holds.
template <typename InkAt>
std::vector<Ink> collect(int count, InkAt inkAt)
{
    std::vector<Ink> stretches;
    int start = -1;
    for (int i = 0; i <= count; ++i) {
        const bool ink = i < count && inkAt(i);
        if (ink && start < 0) {
            start = i;
        } else if (!ink && start >= 0) {
            stretches.push_back({(start + i) / 2.0 / pixelsPerPoint, double(i - start) / pixelsPerPoint});
            start = -1;
        }
    }
    return stretches;
}

} // namespace

std::vector<Ink> Picture::alongVertical(double x) const
{
    const int column = static_cast<int>(x * pixelsPerPoint);
    return collect(height_, [&](int fromBottom) { return isInk(column, height_ - 1 - fromBottom); });
}

std::vector<Ink> Picture::alongHorizontal(double y) const
{
    const int row = height_ - 1 - static_cast<int>(y * pixelsPerPoint);
    return collect(width_, [&](int column) { return isInk(column, row); });
}

std::string output(const std::string& program)
{
    const TemporaryFolder folder;
    return run(folder, program, "nullpage", "none");
}

std::vector<Page> texts(const std::string& program)
{
    const TemporaryFolder folder;
    run(folder, program, "txtwrite -dTextFormat=0", "%d.xml");
    std::vector<Page> pages;
    for (std::string& xml : pageFiles(folder, ".xml")) {
        rapidxml::xml_document<> document;
        document.parse<rapidxml::parse_default>(xml.data());
        Page page;
        for (const auto* span = document.first_node("page")->first_node("span"); span != nullptr;
             span = span->next_sibling("span"))
            page.push_back(readSpan(*span));
        pages.push_back(page);
    }
    return pages;
}

std::vector<Picture> pictures(const std::string& program)
{
    const TemporaryFolder folder;
    run(folder, program, "pgmraw -r" + std::to_string(72 * pixelsPerPoint), "%d.pgm");
    std::vector<Picture> pages;
    for (const std::string& pgm : pageFiles(folder, ".pgm"))
        pages.emplace_back(pgm);
    return pages;
}

} // namespace rendering
