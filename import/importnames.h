#pragma once

#include "import/importevent.h"
#include "import/importrules.h"

#include <array>
#include <string>
#include <string_view>

namespace import {

/// What one element could be called, by where each name comes from; empty where it has none. Texts
/// are views, as whoever fills them in has them.
using element_names = std::array<std::string_view, NAMED_BY.size()>;

inline std::string_view& name_from(element_names& names, Named source) {
    return names[static_cast<std::size_t>(source)];
}

/// Whether an id or name is likely to be another one at the next visit: made of digits, of eight or
/// more hexadecimal digits, with part of a UUID or the suffix of a hash, or as frameworks number
/// their elements.
bool is_unstable(std::string_view name);

/// A name that was chosen.
struct chosen_name {
    std::string text; ///< Cleaned; empty when the element has no name.
    Named named = Named::Path;
};

/// The first name in the order of `naming` that the element has; unstable ids and names are passed
/// over. Digits of ids, names and paths are `#` unless they are to be kept.
chosen_name choose_name(const element_names& names, const naming& naming);

/// Whether an attribute holds a test id: one of `naming`, or one that is well known.
bool is_test_id(std::string_view attribute, const naming& naming);

} // namespace import
