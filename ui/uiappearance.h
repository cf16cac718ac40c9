#pragma once

namespace ui {

class Look;

/// Gives the application the look's palette, and its style sheet in front of the one that it has,
/// such as that of the option `-stylesheet FILE`. Called again, it changes nothing.
void set_appearance(const Look& look);

} // namespace ui
