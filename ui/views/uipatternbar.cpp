#include "ui/views/uipatternbar.h"

#include "domain/domainbranch.h"
#include "ui/leaves/uishared.h"
#include "ui/views/uistepzones.h"

namespace ui {

PatternBar::PatternBar(const Look& look, Shared& shared)
    : BarView(look, nullptr)
    , mShared(shared) {
    setAccessibleName(tr("Selected pattern"));
    add_step_zones(*this, tr("Previous pattern"), tr("Next pattern"));
    setFlags(TOP_SHADOW | BOTTOM_SHADOW);
}

void PatternBar::stepPattern(int delta) {
    const domain::Branch* branch = mShared.branchInFocus();
    if (!branch)
        return;
    const int pattern = clip(mShared.patternSelection() + delta, branch->patternSize());
    if (pattern >= 0)
        mShared.setPatternSelection(pattern);
}

void PatternBar::selectionChanged(quint64 mask) {
    if (!(mask & PATTERN_SEL))
        return;
    const domain::Branch* branch = mShared.branchInFocus();
    const int count = branch ? branch->patternSize() : 0;
    if (count < 1) {
        show_steps(*this, QString(), false, false);
        return;
    }
    const int index = clip(mShared.patternSelection(), count);
    const QString label = count == 1 ? QStringLiteral("pattern")
                                     : QStringLiteral("%1/%2 pattern").arg(index + 1).arg(count);
    show_steps(*this, label + percentage(*branch, index), index > 0, index < count - 1);
}

void PatternBar::zonePressed(Zone& zone) {
    if (const int delta = step_of(zone))
        stepPattern(delta);
}

void PatternBar::keyPressEvent(QKeyEvent* event) {
    if (const int delta = step_of(*event))
        stepPattern(delta);
    else
        BarView::keyPressEvent(event);
}

/// The end of the label; empty while no pattern was found twice. In single precision 7 of 10 are 70
/// %, where the double nearest to 0.7 would give 69.
QString PatternBar::percentage(const domain::Branch& branch, int pattern) const {
    const auto most = static_cast<float>(mShared.mLeaves.maxPatternCount());
    if (!(most > 0))
        return {};
    const auto count = static_cast<float>(branch.patternCount(pattern));
    return QStringLiteral(" %1%").arg(static_cast<int>(count / most * 100.0F));
}

} // namespace ui
