// The reader of help pages.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/help/help_page.h"

#include "base/texts.h"

#include <algorithm>
#include <utility>

namespace quelm {
namespace {

/// The length of "1. " at the start of `line`; 0 when it is not there.
std::size_t stepMarkLength(std::string_view line)
{
    const auto digits = line.find_first_not_of("0123456789");
    const bool marked =
        digits != 0 && digits != std::string_view::npos && line.substr(digits).starts_with(". ");
    return marked ? digits + 2 : 0;
}

std::vector<HelpSpan> spansOf(std::string_view text)
{
    constexpr std::string_view mark = "**";
    std::vector<HelpSpan> spans;
    bool strong = false;
    while (!text.empty()) {
        auto end = text.find(mark);
        // A mark without its counterpart is text.
        if (!strong && end != std::string_view::npos &&
            text.find(mark, end + mark.size()) == std::string_view::npos)
            end = std::string_view::npos;
        const auto piece = text.substr(0, end);
        if (!piece.empty())
            spans.push_back({std::string(piece), strong});
        if (end == std::string_view::npos)
            break;
        text.remove_prefix(end + mark.size());
        strong = !strong;
    }
    return spans;
}

class Reader {
public:
    void line(std::string_view raw)
    {
        const auto text = trimmed(raw);
        constexpr std::string_view about = "<!-- about:";
        if (text.empty())
            return finish();
        if (text.starts_with(about) && text.ends_with("-->")) {
            finish();
            places_.emplace_back(trimmed(text.substr(about.size(), text.size() - about.size() - 3)));
        } else if (text.starts_with("## ")) {
            begin(HelpBlock::Kind::heading, text.substr(3));
            block_.places = std::exchange(places_, {});
            finish();
        } else if (text.starts_with("# ")) {
            begin(HelpBlock::Kind::title, text.substr(2));
            block_.places = std::exchange(places_, {});
            finish();
        } else if (text.starts_with("- ")) {
            begin(HelpBlock::Kind::bullet, text.substr(2));
        } else if (const auto length = stepMarkLength(text); length > 0) {
            begin(HelpBlock::Kind::step, text.substr(length));
            block_.number = text.substr(0, length - 1);
        } else if (open_) {
            text_ += ' ';
            text_ += text;
        } else {
            begin(HelpBlock::Kind::paragraph, text);
        }
    }

    HelpPage end()
    {
        finish();
        return std::move(page_);
    }

private:
    void begin(HelpBlock::Kind kind, std::string_view text)
    {
        finish();
        block_ = {};
        block_.kind = kind;
        text_ = trimmed(text);
        open_ = true;
    }

    void finish()
    {
        if (!open_)
            return;
        block_.spans = spansOf(text_);
        page_.push_back(std::move(block_));
        open_ = false;
    }

    HelpPage page_;
    HelpBlock block_;
    std::string text_;
    bool open_ = false;
    std::vector<std::string> places_;
};

} // namespace

HelpPage parseHelpPage(std::string_view text)
{
    Reader reader;
    while (!text.empty()) {
        const auto end = text.find('\n');
        reader.line(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return reader.end();
}

std::string plainText(const HelpBlock& block)
{
    std::string text;
    for (const auto& span : block.spans)
        text += span.text;
    return text;
}

std::size_t blockAbout(const HelpPage& page, const std::vector<std::string>& places)
{
    for (const auto& place : places) {
        const auto found = std::ranges::find_if(page, [&place](const HelpBlock& block) {
            return std::ranges::find(block.places, place) != block.places.end();
        });
        if (found != page.end())
            return static_cast<std::size_t>(found - page.begin());
    }
    return 0;
}

} // namespace quelm
