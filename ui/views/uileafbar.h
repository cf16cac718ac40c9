#pragma once

#include "ui/views/uibarview.h"

namespace ui {

class Shared;

/// Steps the focus through the selected leaves and shows its place among them and its key.
class LeafBar : public BarView {
public:
    /// `look` is initialised; both references outlive the bar.
    LeafBar(const Look& look, Shared& shared);

    /// Moves the focus `delta` leaves on, up to the ends of the selection.
    void stepLeaf(int delta);

    void selectionChanged(quint64 mask) override;
    void zonePressed(ui::BarView::Zone& zone) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Shared& mShared;
};

} // namespace ui
