// Cover pages with values of a test's choice.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/component/output/filled_cover_page.h"

#include "output/cover_page.h"

#include <cstddef>
#include <cstdio>
#include <stdexcept>

namespace rendering {

std::string header(const CoverPageValues& values)
{
    const auto format = [&values](char* out, std::size_t size) {
        return std::snprintf(
            out, size, coverPageHeaderText, values.recipientName.c_str(), values.recipientCompany.c_str(),
            values.recipientPhone.c_str(), values.recipientFax.c_str(), values.recipientEmail.c_str(),
            values.senderName.c_str(), values.senderCompany.c_str(), values.senderPhone.c_str(),
            values.senderFax.c_str(), values.senderEmail.c_str(), values.note.c_str(), values.year.c_str(),
            values.month.c_str(), values.monthDay.c_str(), values.hour.c_str(), values.minute.c_str());
    };
    std::string text(static_cast<std::size_t>(format(nullptr, 0)), '\0');
    format(text.data(), text.size() + 1);
    return text;
}

std::string coverPage(const CoverPageValues& values) { return header(values) + coverPageTrailerText; }

std::string procedures(const CoverPageValues& values)
{
    const std::string trailer = coverPageTrailerText;
    const std::size_t mainScript = trailer.rfind("%%EndPageSetup");
    if (mainScript == std::string::npos)
        throw std::runtime_error("the page program has no end of its page set-up");
    return header(values) + trailer.substr(0, mainScript);
}

} // namespace rendering
