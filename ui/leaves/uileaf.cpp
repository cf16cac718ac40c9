#include "ui/leaves/uileaf.h"

#include "domain/domaindebugline.h"
#include "ui/leaves/uileafselection.h"
#include "ui/leaves/uilook.h"

namespace ui {

void Leaf::clear() {
    mBranch = nullptr;
    mWeight = 0;
}

void Leaf::setTo(const Leaf& other) {
    if (&other == this)
        return;
    mIndex = other.mIndex;
    mBranch = other.mBranch;
    mKey = other.mKey;
    mGesture = other.mGesture;
    mWeight = other.mWeight;
    mBounds = other.mBounds;
}

void Leaf::setTo(const domain::Branch& branch) {
    mBranch = &branch;
    mKey = branch.mKey;
    mGesture = branch.mGesture;
    mWeight = branch.patternWeight();
    mBounds = branch.mBounds;
}

bool Leaf::isContainedBy(const QRectF& rect) const {
    return rect.contains(mPos);
}

void Leaf::drawOn(QPainter& painter, const LeafSelection& selection, const leaf_draw& draw) const {
    const Look& look = *draw.look;
    const bool inFocus = mIndex == selection.mPrimary;
    const bool selected = inFocus || selection.hasAlternate(mIndex);
    painter.setPen(selected ? look.mSelectedOutline : look.mLeafOutline);
    painter.setBrush(inFocus ? look.mPrimaryFillBrush : fill(draw));
    const float radius = look.mLeafRadius;
    const float diameter = 2.0F * radius;
    painter.drawEllipse(QRectF(mPos.x() - radius, mPos.y() - radius, diameter, diameter));
}

QBrush Leaf::fill(const leaf_draw& draw) const {
    const Look& look = *draw.look;
    if (mWeight > 0 && draw.maxWeight > 0) {
        const float weight = static_cast<float>(mWeight) / static_cast<float>(draw.maxWeight);
        return QBrush(look.patternWeightedC(weight), Qt::SolidPattern);
    }
    return isMenu() ? look.mMenuFillBrush : look.mLeafFillBrush;
}

void Leaf::printTo(QDebug& debug) const {
    debug << "key=";
    domain::write_key(debug, mKey);
    debug << "l=" << mBounds.left() << "t=" << mBounds.top() << "loc=" << mPos;
}

} // namespace ui
