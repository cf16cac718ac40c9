#include "ui/views/uistepzones.h"

#include "ui/views/uizonebuilder.h"

#include <QKeyEvent>

namespace ui {

namespace {

constexpr int TO_THE_END = 1'000'000'000; // can still be added to a position

} // namespace

void add_step_zones(BarView& bar, const QString& previous, const QString& next) {
    bar.addZone(LabelBuilder(STEP_LABEL, QString(), FOLLOW_LEFT | FOLLOW_RIGHT));
    bar.addZone(ButtonBuilder(BAR_PRV, FOLLOW_RIGHT, previous));
    bar.addZone(ButtonBuilder(BAR_NXT, FOLLOW_RIGHT, next));
    show_steps(bar, QString(), false, false);
    bar.setFocusPolicy(Qt::StrongFocus);
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

int step_of(const QKeyEvent& event) {
    if (event.modifiers() & ~Qt::KeypadModifier)
        return 0;
    switch (event.key()) {
    case Qt::Key_Left:
        return -1;
    case Qt::Key_Right:
        return 1;
    case Qt::Key_Home:
        return -TO_THE_END;
    case Qt::Key_End:
        return TO_THE_END;
    default:
        return 0;
    }
}

} // namespace ui
