#pragma once

#include "import/importlocator.h"

#include <string_view>

namespace import {

/// What a selector of a traced test says of the element that it ends at: engines chained by `>>`,
/// such as `internal:role=button[name="Save"i] >> nth=0`, or a CSS selector.
Locator locator_of(std::string_view selector, const naming& naming);

/// The element that the selector goes through last before, for what stands in front of a key.
Locator locator_before(std::string_view selector, const naming& naming);

} // namespace import
