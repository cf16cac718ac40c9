#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace import {

/// What `text` was packed from by zlib; each packed byte is the character (UTF-8) of its number.
/// Empty when it is no such text, or unpacks to more than `largest` bytes.
std::optional<std::string> unpacked(std::string_view text, std::size_t largest);

} // namespace import
