#pragma once

#include <QtGlobal>

#include <vector>

namespace json {

/// What a text's last byte looked at means for the next one: all bits, or none.
struct text_state {
    quint64 isInString = 0;
    quint64 isBare = 0;     ///< Part of a bare value.
    quint64 hidesSpace = 0; ///< Whitespace behind it does nothing.
};

/// Looks at `size` bytes, at least one, from `text` on; 64 more can be read behind them. Writes the
/// marks, as offsets, from `marks` on, where there is room for `size` and 64 more; returns their
/// end.
using Marker = quint32* (*)(const char* text, int size, text_state& state, quint32* marks);

/// All that this processor can run, the fastest last; they give the same.
std::vector<Marker> markers();

} // namespace json
