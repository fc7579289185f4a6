// Finds the PostScript inside what printer drivers put around it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_PRINT_WRAPPING_H
#define DRIVER_DOCUMENTS_PRINT_WRAPPING_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// The universal exit language command: ends a job and hands the device back to PJL.
inline constexpr std::string_view uel = "\x1b%-12345X";

/// Ends a job on a serial line, and stands around jobs of drivers that were set up for one.
inline constexpr char endOfTransmission = '\x04';

/// What stands ahead of a document.
struct Prologue {
    std::size_t size = 0; ///< bytes to leave out
    std::string language; ///< what the last "@PJL ENTER LANGUAGE" names, in upper case; empty without one
};

/// Measures UELs, PJL lines, printer resets, Ctrl-Ds, a byte order mark and blank lines at the start of
/// `head`, the first bytes of a file.
Prologue measurePrologue(std::string_view head);

/// Where, in `tail`, the last bytes of a file, its UELs, PJL lines and Ctrl-Ds at the end begin;
/// `tail.size()` when it has none.
std::size_t findEpilogue(std::string_view tail);

/// Where the PostScript lies in an EPS file with a preview.
struct PostScriptSection {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
};

/// Reads the binary header of such a file; nothing when `head` does not start with one.
[[nodiscard]] std::optional<PostScriptSection> readPreviewHeader(std::string_view head);

/// Looks for a UEL in bytes that come piece by piece.
class UelSearch {
public:
    /// True when a UEL ended in these bytes.
    bool operator()(std::string_view bytes);

private:
    std::size_t matched_ = 0;
};

} // namespace quelm

#endif
