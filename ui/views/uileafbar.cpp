#include "ui/views/uileafbar.h"

#include "domain/domainbranch.h"
#include "ui/leaves/uishared.h"
#include "ui/views/uistepzones.h"

namespace ui {

LeafBar::LeafBar(const Look& look, Shared& shared)
    : BarView(look, nullptr)
    , mShared(shared) {
    setAccessibleName(tr("Leaf in focus"));
    add_step_zones(*this, tr("Previous leaf"), tr("Next leaf"));
    setFlags(BOTTOM_SHADOW);
}

void LeafBar::stepLeaf(int delta) {
    const LeafSelection& selection = mShared.leafSelection();
    const int count = selection.mAlternates.size();
    if (!mShared.branchInFocus() || count < 2)
        return;
    const int next = selection.mAlternates[clip(selection.primaryIndex() + delta, count)];
    if (next == selection.mPrimary)
        return;
    LeafSelection stepped;
    stepped = selection;
    stepped.mPrimary = next;
    mShared.setLeafSelection(stepped);
}

void LeafBar::selectionChanged(quint64 mask) {
    if (!(mask & LEAF_SEL))
        return;
    const LeafSelection& selection = mShared.leafSelection();
    const domain::Branch* branch = mShared.branchInFocus();
    const int count = selection.mAlternates.size();
    if (!branch || count <= 1) {
        show_steps(*this, branch ? branch->mKey : QString(), false, false);
        return;
    }
    const int index = selection.primaryIndex();
    const QString label = QStringLiteral("%1/%2 %3").arg(index + 1).arg(count).arg(branch->mKey);
    show_steps(*this, label, index > 0, index < count - 1);
}

void LeafBar::zonePressed(Zone& zone) {
    if (const int delta = step_of(zone))
        stepLeaf(delta);
}

void LeafBar::keyPressEvent(QKeyEvent* event) {
    if (const int delta = step_of(*event))
        stepLeaf(delta);
    else
        BarView::keyPressEvent(event);
}

} // namespace ui
