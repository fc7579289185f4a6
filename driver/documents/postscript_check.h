// Runs a PostScript document before it is sent, so that one that fails is told of here and not at the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_POSTSCRIPT_CHECK_H
#define DRIVER_DOCUMENTS_POSTSCRIPT_CHECK_H

#include "base/file_handle.h"
#include "base/ghostscript/ghostscript.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quelm {

/// Has Ghostscript run the PostScript in the open file `postScript`, from its start, without drawing it and
/// without access to other files. Throws quelm::Error with a line that begins with `name` when it fails,
/// naming the page and the error; also when Ghostscript is not installed or a bound is reached.
///
/// It fails as it would in a device: by an error that ends it or that it has reported (handleerror). What a
/// document tries and catches itself is no failure, nor are `stop` and `quit`, unless they follow an error
/// without a page between.
///
/// How many pages it put out, each as often as the document wants copies of it; nothing when it was ended in
/// a way that does not tell.
[[nodiscard]] std::optional<std::size_t>
checkPostScript(const FileHandle& postScript, const std::string& name, const GhostscriptBounds& bounds);

} // namespace quelm

#endif
