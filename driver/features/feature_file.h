// The file in which one user's option values are kept between runs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_FEATURES_FEATURE_FILE_H
#define DRIVER_FEATURES_FEATURE_FILE_H

#include <chrono>
#include <map>
#include <string>
#include <variant>

namespace quelm {

/// A number (index, 0 or 1, spin box) or a text.
using FeatureValue = std::variant<int, std::string>;

/// An INI file with the group [features], one "NAME=VALUE" per line, UTF-8:
///
///     [features]
///     LanFax Resolution=2
///     Sender Fax Name=Anne
///
/// It may hold a credit card number, so only its owner can read it. A file of more than 1 MiB is taken for a
/// damaged one.
class FeatureFile {
public:
    /// `lockLimit` is how long another driver may take to write there at the same time.
    explicit FeatureFile(std::string filePath, std::chrono::milliseconds lockLimit = std::chrono::seconds(5))
        : ownPath_(std::move(filePath)), lockLimit_(lockLimit)
    {
    }

    const std::string& path() const { return ownPath_; }

    /// All values as texts; none when there is no such file. Throws quelm::Error when the file
    /// cannot be read or is damaged.
    std::map<std::string, std::string> read() const;

    /// Sets these values and leaves everything else that the file holds, comments included, as it
    /// is; creates the file and its folder. The file changes as a whole or not at all, and two
    /// drivers that write at the same time lose nothing. Throws quelm::Error, also when the file is
    /// damaged by now, or another program keeps it locked: that is waited for, unless `patient` is false.
    void write(const std::map<std::string, FeatureValue>& values, bool patient = true) const;

private:
    std::string ownPath_;
    std::chrono::milliseconds lockLimit_;
};

} // namespace quelm

#endif
