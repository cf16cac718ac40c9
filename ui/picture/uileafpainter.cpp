#include "ui/picture/uileafpainter.h"

#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"

#include <new>

namespace ui {

namespace {

constexpr float LEAF_TO_EDGE = 12.0F; // beside margin and radius, so that no circle is cut
constexpr float MENU_ROW = 1.0F;

constexpr int STROKES_A_LOOK = 256; // at the clock

} // namespace

LeafPainter::LeafPainter(const Look& look, Shared& shared)
    : mLook(look)
    , mShared(shared)
    , mLeafDraw(look) {}

void LeafPainter::onModelChanged() {
    mNeedsTable = true;
    mTable.clear();
    mCurves.clear();
}

void LeafPainter::layout(const QSize& size) {
    placeLeaves(size);
    placeStrokes(QDeadlineTimer(QDeadlineTimer::Forever));
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
    mCurves.clear();
}

bool LeafPainter::placeStrokes(const QDeadlineTimer& until) {
    try {
        return collectStrokes(until) && placeCurves(until);
    } catch (const std::bad_alloc&) {
        onModelChanged(); // nothing stays half done
        throw;
    }
}

bool LeafPainter::collectStrokes(const QDeadlineTimer& until) {
    if (mNeedsTable) {
        mHasTable = false;
        mTable.begin(mShared.mLeaves);
        mNeedsTable = false;
    }
    mHasTable = mHasTable || mTable.advance(until);
    return mHasTable;
}

bool LeafPainter::placeCurves(const QDeadlineTimer& until) {
    const QList<StrokeTable::entry>& entries = mTable.entries();
    mCurves.reserve(entries.size());
    while (mCurves.size() < entries.size()) {
        const StrokeTable::entry& entry = entries[mCurves.size()];
        mCurves.append(stroke_between(entry.from->mPos, entry.to->mPos, mLook.mLeafRadius));
        if (mCurves.size() % STROKES_A_LOOK == 0 && until.hasExpired())
            return false;
    }
    return true;
}

void LeafPainter::paintOn(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    drawPatterns(painter);
    drawLeaves(painter);
}

void LeafPainter::drawPatterns(QPainter& painter) const {
    const domain::Pattern* selected = mShared.selectedPattern();
    beginStrokes(painter);
    for (int position = 0; position < mCurves.size(); ++position)
        drawStroke(painter, position, selected);
    if (!selected)
        return;
    for (const int position : mTable.strokesOf(*selected)) {
        if (const auto stroke = selectedStroke(position))
            drawSelected(painter, *stroke);
    }
}

void LeafPainter::drawLeaves(QPainter& painter) const {
    for (const Leaf* leaf : mShared.mLeaves)
        drawLeaf(painter, *leaf);
}

void LeafPainter::beginStrokes(QPainter& painter) const {
    painter.setPen(mLook.mPatternPen);
    painter.setBrush(Qt::NoBrush);
}

void LeafPainter::drawStroke(QPainter& painter, int position,
                             const domain::Pattern* selected) const {
    if (mCurves[position] && !mTable.isOnlyIn(position, selected))
        painter.drawPath(mCurves[position]->pathNear(mView));
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

std::optional<selected_stroke> LeafPainter::selectedStroke(int position) const {
    if (!mCurves[position])
        return std::nullopt;
    selected_stroke selected{position, mCurves[position]->pathNear(mView), {}};
    const QPointF target = mTable.entries()[position].to->mPos;
    if (selected.curve.currentPosition() == mCurves[position]->end)
        selected.head = arrow_head(selected.curve, target, mLook.mLeafRadius);
    return selected;
}

} // namespace ui
