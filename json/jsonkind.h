#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace json {

/// What a byte does to the scan, outside of strings.
enum class Kind : quint8 {
    Bare,
    Space,
    Quote,
    Colon,
    Comma,
    OpenObject,
    CloseObject,
    OpenArray,
    CloseArray,
    Wide ///< Of a character that is not ASCII, which may be whitespace.
};

using KindTable = std::array<Kind, 256>;

constexpr KindTable byte_kinds() {
    constexpr std::size_t ASCII = 128;
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
    for (std::size_t byte = ASCII; byte < kinds.size(); ++byte)
        kinds[byte] = Kind::Wide;
    return kinds;
}

inline constexpr KindTable KINDS = byte_kinds();

constexpr Kind kind_of(char byte) {
    return KINDS[static_cast<quint8>(byte)];
}

} // namespace json
