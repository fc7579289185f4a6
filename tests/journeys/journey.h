// The fixture of the journeys: an installation folder and a home folder for one test.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_JOURNEY_H
#define TESTS_JOURNEYS_JOURNEY_H

#include "tests/journeys/run_program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace journeys {

using Arguments = std::vector<std::string>;

class Journey : public testing::Test {
protected:
    Journey();
    ~Journey() override;

    /// Runs quelm-driver in the installation folder, as `user`.
    Result driver(const Arguments& arguments, const std::string& input = {}) const;
    Result driver(Request request) const;

    /// The writes of `attributes` with these arguments, which must succeed in silence.
    std::vector<std::string> attributes(const Arguments& arguments) const;
    /// The same as one text.
    std::string attributeText(const Arguments& arguments) const;

    /// Runs a script given line by line, which must succeed; returns its answers line by line.
    std::vector<std::string> script(const std::vector<std::string>& lines) const;

    /// Writes a document of one page that says `text`.
    std::string document(const std::string& name, const std::string& text) const;
    /// The texts on the pages that Ghostscript makes of a job, without blanks.
    std::vector<std::string> pages(const std::string& job) const;

    std::string path(const std::string& name) const { return (folder / name).string(); }
    std::string file(const std::string& name, std::string_view content) const;
    std::string content(const std::string& name) const;
    bool exists(const std::string& name) const { return std::filesystem::exists(folder / name); }
    /// The names in the work folder, sorted.
    std::vector<std::string> files() const;

    /// A file for LSAN_OPTIONS, of what a build with the leak sanitizer is not to look at.
    std::string leaks() const { return (root_ / "leaks").string(); }

    std::filesystem::path folder; ///< the work folder, empty at first
    std::filesystem::path home;   ///< the installation folder
    std::string user = "ann";     ///< who runs the programs
    std::string language;         ///< "de"; empty for English

private:
    std::filesystem::path root_;
};

/// A run whose standard error holds the summary of a job, from whom it goes to up to where: the same without
/// it.
Result withoutSummary(Result result);

/// A failed run: its status, nothing on standard output, and one line of error with these words.
void expectFailure(const Result& result, int status, const std::string& words);

} // namespace journeys

#endif
