#pragma once

#include <QSize>

class QKeyEvent;

namespace ui {

class Shared;

/// Selects leaves by a key, in a view of `size` pixels whose leaves are placed. False for a key
/// that means nothing here.
///
/// An arrow leads to the leaf nearest to the one in focus, of those that lie more to its side than
/// to any other; Home and End to the one nearest to the top left and to the bottom right corner.
/// Without a leaf in focus an arrow leads where Home does. That leaf is then in focus, and selected
/// with all that lie within `reach` pixels, as by a press on it; with Shift, besides what is
/// selected already. The key of Select All selects all leaves, Escape none.
bool select_by_key(Shared& shared, const QSize& size, double reach, const QKeyEvent& event);

} // namespace ui
