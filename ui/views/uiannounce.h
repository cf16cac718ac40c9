#pragma once

class QWidget;

namespace ui {

// Tell those who listen, as screen readers do, that a widget shows something else. What it shows
// they ask for through the interface that the widget has for them. GUI thread only.

/// The text of the `child`th child of `widget`, from 0, has changed, and so what describes it.
void announce_label(QWidget& widget, int child);

/// The `child`th child of `widget`, from 0, was enabled or disabled.
void announce_enabled(QWidget& widget, int child);

/// What describes `widget` has changed.
void announce_description(QWidget& widget);

} // namespace ui
