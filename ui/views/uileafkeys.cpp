#include "ui/views/uileafkeys.h"

#include "ui/leaves/uishared.h"

#include <QKeyEvent>
#include <QKeySequence>

#include <cmath>

namespace ui {

namespace {

/// The unit vector of an arrow; that of any other key is null.
QPointF arrowOf(int key) {
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

bool leadsToLeaf(int key) {
    return key == Qt::Key_Home || key == Qt::Key_End || !arrowOf(key).isNull();
}

/// Whether `way` keeps within 45 degrees of an arrow; to all sides without one.
bool follows(const QPointF& way, const QPointF& arrow) {
    const double along = QPointF::dotProduct(way, arrow);
    const double aside = QPointF::dotProduct(way, QPointF(arrow.y(), arrow.x()));
    return arrow.isNull() || (along > 0 && along >= std::fabs(aside));
}

const Leaf* nearestTo(const QPointF& point, const QPointF& arrow, const LeafList& leaves) {
    const Leaf* nearest = nullptr;
    double least = 0;
    for (const Leaf* leaf : leaves) {
        const QPointF way = leaf->mPos - point;
        const double distance = std::hypot(way.x(), way.y());
        if (!follows(way, arrow) || (nearest && distance >= least))
            continue;
        nearest = leaf;
        least = distance;
    }
    return nearest;
}

/// Null where there is none.
const Leaf* leafAtKey(const Shared& shared, const QSize& size, int key) {
    if (key == Qt::Key_End)
        return nearestTo(QPointF(size.width(), size.height()), QPointF(), shared.mLeaves);
    const Leaf* inFocus = shared.mLeaves.leafAt(shared.leafSelection().mPrimary);
    if (key == Qt::Key_Home || !inFocus)
        return nearestTo(QPointF(), QPointF(), shared.mLeaves);
    return nearestTo(inFocus->mPos, arrowOf(key), shared.mLeaves);
}

void selectAt(Shared& shared, const Leaf& leaf, double reach, bool besides) {
    const LeafSelection& before = shared.leafSelection();
    LeafSelection selection;
    if (besides)
        selection = before;
    const QRectF near = QRectF(leaf.mPos, QSizeF(0, 0)).adjusted(-reach, -reach, reach, reach);
    for (const Leaf* other : shared.mLeaves) {
        const bool isThere = besides && before.hasAlternate(other->mIndex);
        if (!isThere && other->isContainedBy(near))
            selection.mAlternates.add(other->mIndex);
    }
    selection.mPrimary = leaf.mIndex;
    shared.setLeafSelection(selection);
}

void selectAll(Shared& shared) {
    LeafSelection selection;
    for (const Leaf* leaf : shared.mLeaves)
        selection.mAlternates.add(leaf->mIndex);
    if (selection.mAlternates.size() > 0)
        selection.mPrimary = selection.mAlternates[0];
    shared.setLeafSelection(selection);
}

} // namespace

bool select_by_key(Shared& shared, const QSize& size, double reach, const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool besides = modifiers == Qt::ShiftModifier;
    const int key = event.key();
    if (event.matches(QKeySequence::SelectAll)) {
        selectAll(shared);
        return true;
    }
    if (modifiers != Qt::NoModifier && !besides)
        return false;
    if (key == Qt::Key_Escape)
        shared.setLeafSelection(LeafSelection());
    else if (!leadsToLeaf(key))
        return false;
    else if (const Leaf* leaf = leafAtKey(shared, size, key))
        selectAt(shared, *leaf, reach, besides);
    return true;
}

} // namespace ui
