#pragma once

#include <QChar>

#include <array>

namespace json {

/// What a character does to the scan.
enum class Kind : quint8 {
    Bare,
    Space,
    Quote,
    Colon,
    Comma,
    OpenObject,
    CloseObject,
    OpenArray,
    CloseArray
};

using KindTable = std::array<Kind, 128>;

constexpr KindTable ascii_kinds() {
    KindTable kinds{};
    for (const char space : {' ', '\t', '\n', '\v', '\f', '\r'})
        kinds[static_cast<std::size_t>(space)] = Kind::Space;
    kinds['"'] = Kind::Quote;
    kinds[':'] = Kind::Colon;
    kinds[','] = Kind::Comma;
    kinds['{'] = Kind::OpenObject;
    kinds['}'] = Kind::CloseObject;
    kinds['['] = Kind::OpenArray;
    kinds[']'] = Kind::CloseArray;
    return kinds;
}

inline constexpr KindTable ASCII_KINDS = ascii_kinds();

inline Kind kind_of(QChar c) {
    if (c.unicode() < ASCII_KINDS.size())
        return ASCII_KINDS[c.unicode()];
    return c.isSpace() ? Kind::Space : Kind::Bare;
}

} // namespace json
