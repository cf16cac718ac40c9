#pragma once

#include "ui/views/uibarview.h"

#include <QString>

namespace domain {
class Branch;
}

namespace ui {

class Shared;

/// Steps through the patterns of the leaf in focus and shows the place of the selected one and how
/// often it occurs, in percent of the most frequent pattern of all leaves.
class PatternBar : public BarView {
public:
    /// `look` is initialised; both references outlive the bar.
    PatternBar(const Look& look, Shared& shared);

    /// Selects the pattern `delta` places on, up to the ends.
    void stepPattern(int delta);

    void selectionChanged(quint64 mask) override;
    void zonePressed(ui::BarView::Zone& zone) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString percentage(const domain::Branch& branch, int pattern) const;

    Shared& mShared;
};

} // namespace ui
