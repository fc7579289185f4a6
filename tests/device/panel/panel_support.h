// A device's state to show, and status pages read by an XML parser.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_PANEL_PANEL_SUPPORT_H
#define TESTS_DEVICE_PANEL_PANEL_SUPPORT_H

#include "device/panel/panel_site.h"
#include "tests/device/display/page_support.h"
#include "tests/device/jobs/state_support.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace quelm::tests {

/// A page that was read again: it has to be well-formed.
class ReadPage {
public:
    explicit ReadPage(const std::string& html)
    {
        const auto result =
            document_->load_buffer(html.data(), html.size(), pugi::parse_full, pugi::encoding_utf8);
        EXPECT_TRUE(result) << result.description() << " at " << result.offset << ":\n" << html;
        EXPECT_TRUE(html.starts_with("<!DOCTYPE html>\n<html lang=\"en\">"));
    }

    /// The texts below the first node that the expression selects, blanks between elements.
    std::string textOf(const char* expression) const
    {
        const auto found = document_->select_node(expression);
        std::string all;
        for (const auto& part : found.node().select_nodes(".//text()"))
            all += (all.empty() ? "" : " ") + std::string(part.node().value());
        return all;
    }
    std::size_t count(const std::string& expression) const
    {
        return document_->select_nodes(expression.c_str()).size();
    }
    std::vector<std::string> values(const char* expression) const
    {
        std::vector<std::string> all;
        for (const auto& found : document_->select_nodes(expression))
            all.emplace_back(found.attribute().value());
        return all;
    }

private:
    std::unique_ptr<pugi::xml_document> document_ = std::make_unique<pugi::xml_document>();
};

/// A state with its pages.
class PanelTest : public device::tests::StateTest {
protected:
    PanelTest() : zone("TZ")
    {
        setenv("TZ", "UTC0", 1);
        open();
    }

    device::PanelSource source() const { return {*folder, *log, settings}; }

    device::PanelAnswer get(const std::string& address, const std::string& before = {},
                            const std::string& part = {})
    {
        return answerTo(source(), {address, before, part});
    }
    /// A page that is there.
    ReadPage page(const std::string& address, const std::string& before = {}, const std::string& part = {})
    {
        const auto answer = get(address, before, part);
        EXPECT_EQ(answer.status, 200) << address;
        EXPECT_EQ(answer.type, "text/html; charset=utf-8");
        return ReadPage(answer.body);
    }

    /// A TIFF file of so many pages.
    std::string tiff(int pages) const
    {
        return contentOf(writePages(outer / "made.tif",
                                    std::vector<DrawnPage>(static_cast<std::size_t>(pages),
                                                           {.across = 64, .down = 40, .blackLines = 20})));
    }

    /// A job of so many pages, which `number` received in its first call.
    int sentJob(const std::string& number, int pages = 1, const std::string& title = "A letter")
    {
        auto reading = device::tests::faxFor({number});
        reading.title = title;
        const int job = addRendered(reading, pages);
        std::filesystem::copy_file(
            writePages(outer / "made.tif",
                       std::vector<DrawnPage>(static_cast<std::size_t>(pages), {.across = 64, .down = 40})),
            folder->pagesFile(job), std::filesystem::copy_options::overwrite_existing);
        endSent(begin(), number, tiff(pages));
        return job;
    }

    KeptVariable zone;
    device::PanelSettings settings;
};

inline bool holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace quelm::tests

#endif
