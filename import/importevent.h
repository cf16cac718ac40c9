#pragma once

#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace import {

enum class Gesture : std::uint8_t { Down, Up, Menu };

/// As logs call it; empty for any other name.
inline std::optional<Gesture> gesture_called(QStringView name) {
    if (name == u"down")
        return Gesture::Down;
    if (name == u"up")
        return Gesture::Up;
    if (name == u"menu")
        return Gesture::Menu;
    return std::nullopt;
}

/// Where a key comes from, from the best name to the weakest; `Given` are keys that the source
/// names itself, such as the column of a table.
enum class Named : std::uint8_t { Test, Aria, Id, Name, Title, Text, Path, Given };

/// As the options and the summary name them, in the order of `Named`.
inline constexpr std::array<std::string_view, 8> NAMED_BY{"test",  "aria", "id",   "name",
                                                          "title", "text", "path", "given"};

/// A place on a page or screen, in the pixels of the source, y down.
struct place {
    double x = 0;
    double y = 0;
};

/// One press, release or choice on its way into a log.
struct event {
    Gesture gesture = Gesture::Down;
    std::string_view key; ///< UTF-8, as made by `cleaned` and joined by `:`; not empty.
    Named named = Named::Given;
    double time = 0; ///< In milliseconds, since 1970 or any other beginning; 0 for none.
    std::optional<import::place> at;
};

} // namespace import
