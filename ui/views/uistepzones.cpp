#include "ui/views/uistepzones.h"

#include "ui/views/uizonebuilder.h"

namespace ui {

void add_step_zones(BarView& bar, const QString& previous, const QString& next) {
    bar.addZone(LabelBuilder(STEP_LABEL, QString(), FOLLOW_LEFT | FOLLOW_RIGHT));
    bar.addZone(ButtonBuilder(BAR_PRV, FOLLOW_RIGHT, previous));
    bar.addZone(ButtonBuilder(BAR_NXT, FOLLOW_RIGHT, next));
    show_steps(bar, QString(), false, false);
}

void show_steps(BarView& bar, const QString& label, bool previous, bool next) {
    bar.setLabel(STEP_LABEL, label);
    bar.setEnabled(BAR_PRV, previous);
    bar.setEnabled(BAR_NXT, next);
}

int step_of(const BarView::Zone& zone) {
    if (zone.mId == BAR_PRV)
        return -1;
    return zone.mId == BAR_NXT ? 1 : 0;
}

} // namespace ui
