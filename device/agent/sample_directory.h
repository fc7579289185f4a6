// A directory to try the device's directory search with: a real server with a few hundred people.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_SAMPLE_DIRECTORY_H
#define DEVICE_AGENT_SAMPLE_DIRECTORY_H

#include "device/agent/directory_settings.h"

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quelm::device {

/// slapd with a sample directory, on loopback. It ends with this object, and when the program is killed; so
/// it does with the thread that made this object, which lives as long.
class SampleDirectory {
public:
    /// Where systems keep the server's programs.
    static std::vector<std::string> programFolders();

    /// `folder`, which is ours alone, is made and filled anew. Port 0 is any free one. Throws quelm::Error
    /// when slapd is in none of `programs`, or does not start.
    explicit SampleDirectory(const std::string& folder, std::uint16_t port = 0,
                             const std::vector<std::string>& programs = programFolders());
    ~SampleDirectory();
    SampleDirectory(const SampleDirectory&) = delete;
    SampleDirectory& operator=(const SampleDirectory&) = delete;

    [[nodiscard]] DirectorySettings settings() const;
    /// Where it listens: "127.0.0.1:3389", and "[::1]:3389" on a machine that has it.
    [[nodiscard]] std::vector<std::string> addresses() const;
    /// The server's process.
    [[nodiscard]] pid_t process() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
