#pragma once

#include "ui/views/uibarview.h"

class QKeyEvent;

namespace ui {

/// The id of the label.
inline constexpr int STEP_LABEL = 1;

/// Gives a bar the zones of stepping: the label `STEP_LABEL` that takes the room there is and, at
/// the right end, the buttons `BAR_PRV` and `BAR_NXT`, both disabled; `previous` and `next` name
/// them. The bar takes the focus, for the keys of `step_of`.
void add_step_zones(BarView& bar, const QString& previous, const QString& next);

/// Shows `label` and which of the two directions still leads somewhere.
void show_steps(BarView& bar, const QString& label, bool previous, bool next);

/// The direction that a zone steps in: -1, 1, or 0 for none.
int step_of(const BarView::Zone& zone);

/// How far a key steps: Left and Right by one, Home and End further than there is anything; 0 for
/// any other key.
int step_of(const QKeyEvent& event);

} // namespace ui
