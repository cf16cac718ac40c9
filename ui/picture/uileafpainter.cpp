#include "ui/picture/uileafpainter.h"

#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uislice.h"

namespace ui {

namespace {

constexpr float LEAF_TO_EDGE = 12.0F; // beside margin and radius, so that no circle is cut
constexpr float MENU_ROW = 1.0F;

} // namespace

LeafPainter::LeafPainter(const Look& look, Shared& shared)
    : mLook(look)
    , mShared(shared)
    , mLeafDraw(look)
    , mStrokes(shared.mLeaves, look.mLeafRadius) {}

void LeafPainter::layout(const QSize& size) {
    placeLeaves(size);
    placeStrokes();
}

/// In a very small view the areas have no size or a negative one; the layout takes any.
void LeafPainter::placeLeaves(const QSize& size) {
    mView = QRectF(QPointF(), size);
    mLeafDraw.maxWeight = mShared.mLeaves.maxPatternWeight();
    const float margin = mLook.mMargin + mLook.mLeafRadius + LEAF_TO_EDGE;
    const float width = static_cast<float>(size.width()) - 2 * margin;
    const float top = MENU_ROW + margin + 2 * mLook.mLeafRadius;
    const float height = static_cast<float>(size.height()) - margin - top;
    LeafLayout(mShared.mLeaves)
        .zoom(QRectF(margin, margin, width, MENU_ROW), QRectF(margin, top, width, height));
}

void LeafPainter::placeStrokes() {
    mStrokes.forgetPlaces();
    Slice endless = Slice::endless();
    mStrokes.place(endless);
}

void LeafPainter::paintOn(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    drawPatterns(painter);
    drawLeaves(painter);
}

void LeafPainter::drawPatterns(QPainter& painter) const {
    const domain::Pattern* selected = mShared.selectedPattern();
    for (int position = 0; position < mStrokes.size(); ++position) {
        if (!mStrokes.isOnlyIn(position, selected))
            drawStroke(painter, position);
    }
    if (!selected)
        return;
    for (const int position : mStrokes.of(*selected))
        drawSelected(painter, selectedStroke(position));
}

void LeafPainter::drawLeaves(QPainter& painter) const {
    for (const Leaf* leaf : mShared.mLeaves)
        drawLeaf(painter, *leaf);
}

void LeafPainter::drawStroke(QPainter& painter, int position) const {
    painter.setPen(mLook.mPatternPen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(mStrokes.curve(position).pathNear(mView));
}

void LeafPainter::drawSelected(QPainter& painter, const selected_stroke& stroke) const {
    painter.setPen(mLook.mSelectedPatternPen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(stroke.curve);
    painter.setBrush(mLook.mPrimaryFillBrush);
    painter.drawPath(stroke.head);
}

void LeafPainter::drawLeaf(QPainter& painter, const Leaf& leaf) const {
    leaf.drawOn(painter, mShared.leafSelection(), mLeafDraw);
}

selected_stroke LeafPainter::selectedStroke(int position) const {
    const stroke& curve = mStrokes.curve(position);
    selected_stroke selected{position, curve.pathNear(mView), {}};
    if (selected.curve.currentPosition() == curve.end)
        selected.head = arrow_head(selected.curve, mStrokes.target(position), mLook.mLeafRadius);
    return selected;
}

} // namespace ui
