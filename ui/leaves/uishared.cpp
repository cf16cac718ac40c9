#include "ui/leaves/uishared.h"

namespace ui {

Shared::Shared(QObject* parent)
    : QObject(parent) {
    mLeafSelection.freeze();
}

const domain::Branch* Shared::branchInFocus() const {
    return mLeaves.branchAt(mLeafSelection.mPrimary);
}

const domain::Pattern* Shared::selectedPattern() const {
    const domain::Branch* branch = branchInFocus();
    return branch ? branch->patternAt(mPatternSelection) : nullptr;
}

void Shared::setLeafSelection(const LeafSelection& selection) {
    if (selection == mLeafSelection)
        return;
    mLeafSelection = selection;
    mLeafSelection.freeze(); // every leaf asks whether it is selected each time it is drawn
    mPatternSelection = 0;
    announceAll();
}

void Shared::setPatternSelection(int pattern) {
    if (pattern == mPatternSelection)
        return;
    mPatternSelection = pattern;
    Q_EMIT onSelectionChanged(PATTERN_SEL);
}

void Shared::announceAll() {
    Q_EMIT onSelectionChanged(LEAF_SEL | PATTERN_SEL);
}

} // namespace ui
