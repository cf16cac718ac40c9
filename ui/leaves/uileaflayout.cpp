#include "ui/leaves/uileaflayout.h"

#include <cmath>

namespace ui {

namespace {

constexpr qreal EVENT_SIZE = 1.0;
constexpr qreal MIDDLE = 0.5;

/// The far corner tells: it is finite only when the near one and the size are.
bool isFinite(const QRectF& rect) {
    return std::isfinite(rect.right()) && std::isfinite(rect.bottom());
}

bool canJoin(const QRectF& extent, const QRectF& bounds) {
    return isFinite(bounds) && isFinite(extent | bounds);
}

qreal normAlong(qreal start, qreal extentStart, qreal extentSize) {
    return extentSize <= EVENT_SIZE ? MIDDLE : (start - extentStart) / extentSize;
}

/// Not a number is not within either.
qreal withinOrMiddle(qreal norm) {
    return norm >= 0.0 && norm <= 1.0 ? norm : MIDDLE;
}

QPointF normIn(const QRectF& extent, const QRectF& bounds) {
    const qreal x = normAlong(bounds.left(), extent.left(), extent.width());
    const qreal y = normAlong(bounds.top(), extent.top(), extent.height());
    if (canJoin(extent, bounds))
        return {x, y};
    return {withinOrMiddle(x), withinOrMiddle(y)};
}

/// Without the branch GCC 12 places both axes at once and forgets that sizes are single precision.
qreal along(qreal start, float size, qreal fraction) {
    const qreal position = size * fraction + start;
    return std::isfinite(position) ? position : size * MIDDLE + start;
}

} // namespace

void LeafLayout::normalize() {
    numberMenuLeaves();
    const QRectF all = extent();
    for (Leaf* leaf : mLeaves) {
        if (!leaf->isMenu())
            leaf->mNorm = normIn(all, leaf->mBounds);
    }
}

void LeafLayout::numberMenuLeaves() {
    float ordinal = 0.0F;
    for (Leaf* leaf : mLeaves) {
        if (leaf->isMenu())
            leaf->mNorm = QPointF(ordinal++, 0.0);
    }
}

/// The point (0, 0) is no part of it: uniting with an empty rectangle gives the other one.
QRectF LeafLayout::extent() const {
    QRectF all;
    for (const Leaf* leaf : mLeaves) {
        if (!leaf->isMenu() && canJoin(all, leaf->mBounds))
            all |= leaf->mBounds;
    }
    return all;
}

void LeafLayout::zoom(const QRectF& menuStrip, const QRectF& body) {
    const float gaps = static_cast<float>(mLeaves.menuCount() - 1);
    const float stripWidth = static_cast<float>(menuStrip.width());
    const float bodyWidth = static_cast<float>(body.width());
    const float bodyHeight = static_cast<float>(body.height());
    for (Leaf* leaf : mLeaves) {
        if (leaf->isMenu())
            leaf->mPos = QPointF(along(menuStrip.left(), stripWidth, leaf->mNorm.x() / gaps),
                                 menuStrip.top());
        else
            leaf->mPos = QPointF(along(body.left(), bodyWidth, leaf->mNorm.x()),
                                 along(body.top(), bodyHeight, leaf->mNorm.y()));
    }
}

} // namespace ui
