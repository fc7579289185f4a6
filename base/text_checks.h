// Checks of texts that come from outside, and reading them whole from a file.
#ifndef BASE_TEXT_CHECKS_H
#define BASE_TEXT_CHECKS_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace quelm {

/// True when `text` is valid UTF-8 throughout and holds no NUL byte.
bool isUtf8(std::string_view text);

/// True when a one-line text field could not hold the text: line breaks, tabs and other control
/// characters.
bool hasControlCharacter(std::string_view text);

/// The file's name for messages; "standard input" for "-".
std::string displayName(const std::filesystem::path& file);

/// The whole content of a file, pipes included; "-" is standard input. Throws Error when it cannot be read or
/// is larger than `largest` bytes.
std::string readTextFile(const std::filesystem::path& file, std::size_t largest);

} // namespace quelm

#endif
