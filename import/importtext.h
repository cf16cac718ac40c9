#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace import {

/// Appends `text` (UTF-8, perhaps broken) to `key` as one of its parts: runs of whitespace are one
/// blank, what would part a key or end a string is `_`, and it ends after 60 characters. Nothing is
/// appended for a text of blanks alone.
void append_part(std::string& key, std::string_view text);

/// The part alone.
std::string cleaned(std::string_view text);

/// Appends `text` as it is but for what a log cannot hold: quotes, control characters and broken
/// UTF-8.
void append_whole(std::string& key, std::string_view text);

/// The number that the whole of `text` is, blanks around it aside; empty for any other text, and
/// for one that is infinite or no number.
std::optional<double> to_number(std::string_view text);

/// Milliseconds since 1970 of a time as tables write it: a number is taken as it is, ISO 8601 dates
/// are converted (as UTC where they name no zone).
std::optional<double> to_time(std::string_view text);

} // namespace import
