// The status pages, one function each.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_PANEL_PAGES_H
#define DEVICE_PANEL_PANEL_PAGES_H

#include "device/jobs/device_log.h"
#include "device/panel/page_frame.h"
#include "device/panel/panel_settings.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quelm::device {

/// What the pages show.
struct PanelSource {
    const StateFolder& folder;
    DeviceLog& log;
    const PanelSettings& settings;
};

// Lists are shown in parts: from the job or call with the number ahead of `before` on (0 for the newest), or
// by the number of the part, from 1. A page that would show nothing that exists is none. All throw
// quelm::Error when the database or a folder cannot be read.

[[nodiscard]] PanelPage statusPage(const PanelSource& source);

[[nodiscard]] PanelPage jobsPage(const PanelSource& source, int before);
[[nodiscard]] std::optional<PanelPage> jobPage(const PanelSource& source, int job, int part);
/// All pages of a job as small pictures.
[[nodiscard]] std::optional<PanelPage> jobSheetsPage(const PanelSource& source, int job, int part);
/// The file with the pages of a job, which need not be there.
[[nodiscard]] std::filesystem::path pagesOf(const PanelSource& source, const JobRecord& job);
/// Jobs, the newest first.
[[nodiscard]] Html jobTable(const std::vector<JobRecord>& jobs);

[[nodiscard]] PanelPage callsPage(const PanelSource& source, int before);
[[nodiscard]] Html callTable(const PanelSource& source, const std::vector<CallRecord>& calls);

[[nodiscard]] PanelPage receivedPage(const PanelSource& source, int part);
/// What one telephone number received: a folder's name below received/.
[[nodiscard]] std::optional<PanelPage> receivedNumberPage(const PanelSource& source,
                                                          const std::string& number, int part);
/// All pages that it received in one call.
[[nodiscard]] std::optional<PanelPage> receivedCallPage(const PanelSource& source, const std::string& number,
                                                        int call, int part);
/// The file that a call's receiver kept; nothing when there is none.
[[nodiscard]] std::optional<std::filesystem::path> receivedFile(const PanelSource& source,
                                                                const std::string& number, int call);
/// The first pages that the receivers of these calls kept, as far as there are some.
[[nodiscard]] Html receivedGallery(const PanelSource& source, const std::vector<CallRecord>& calls, int most);

/// The pages of a file as small pictures: those of a part, when it is long.
[[nodiscard]] Html sheets(const std::filesystem::path& file, const std::string& address, int first, int most);

/// True while a call is under way or a job waits.
[[nodiscard]] bool isUnderWay(const PanelSource& source);

/// The part of a list, from 1, as an address: empty when it holds none of `count` things.
[[nodiscard]] std::string partAddress(const std::string& address, int part, std::size_t count, int perPart);

} // namespace quelm::device

#endif
