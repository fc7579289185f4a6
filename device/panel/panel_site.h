// From an address to what is shown there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_PANEL_SITE_H
#define DEVICE_PANEL_PANEL_SITE_H

#include "device/panel/panel_pages.h"

#include <filesystem>
#include <string>

namespace quelm::device {

/// The answer to a request.
struct PanelAnswer {
    int status = 200;
    std::string type; ///< of its content, as HTTP names it
    std::string body;
    std::filesystem::path file; ///< whose content stands in for `body`, unless it is empty
};

/// What a browser asks for.
struct PanelRequest {
    std::string path;   ///< decoded, without what stands behind "?"
    std::string before; ///< the values of these parameters; empty when they are missing
    std::string part;
};

/// Answers a request, whatever it asks for; when the database cannot be read, with the reason. Shows, and
/// changes nothing. Any number of threads may ask.
[[nodiscard]] PanelAnswer answerTo(const PanelSource& source, const PanelRequest& request);

/// The answer with a page for people that says why there is no other.
[[nodiscard]] PanelAnswer refusal(int status);

} // namespace quelm::device

#endif
