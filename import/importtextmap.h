#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace import {

struct text_hash {
    using is_transparent = void;

    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};

/// By texts, looked up without making one.
template <typename Value>
using text_map = std::unordered_map<std::string, Value, text_hash, std::equal_to<>>;

} // namespace import
