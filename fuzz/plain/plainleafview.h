#pragma once

#include "math/mathdefs.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"

#include <QPainter>
#include <QPainterPath>

#include <array>
#include <cmath>
#include <set>

/// Paints what the leaf view shows by the plain rules: every stroke anew, nothing kept, in vectors.
/// Only what would be drawn over itself is drawn once.
class PlainLeafView {
public:
    PlainLeafView(const ui::Look& look, ui::Shared& shared)
        : mLook(look)
        , mShared(shared) {}

    /// In a view of that size.
    void paintOn(QPainter& painter, const QSize& size) {
        const double width = size.width() - 44, height = size.height() - 61;
        ui::LeafLayout(mShared.mLeaves)
            .zoom(QRectF(22, 22, width, 1), QRectF(22, 39, width, height));
        paintOn(painter);
    }

    /// With the leaves where they are.
    void paintOn(QPainter& painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        drawPatterns(painter);
        ui::leaf_draw draw(mLook);
        draw.maxWeight = mShared.mLeaves.maxPatternWeight();
        for (const ui::Leaf* leaf : mShared.mLeaves)
            leaf->drawOn(painter, mShared.leafSelection(), draw);
    }

private:
    void drawPatterns(QPainter& painter) {
        const domain::Pattern* selected = nullptr;
        mDrawn.clear();
        painter.setPen(mLook.mPatternPen);
        painter.setBrush(Qt::NoBrush);
        for (const ui::Leaf* leaf : mShared.mLeaves) {
            if (!leaf->mBranch || !leaf->mBranch->hasPatterns())
                continue;
            int count = 0;
            for (const domain::Pattern* pattern : leaf->mBranch->mPatterns.reading()) {
                if (count++ == mShared.patternSelection() &&
                    leaf->mIndex == mShared.leafSelection().mPrimary)
                    selected = pattern;
                else
                    drawPattern(painter, *pattern, false);
            }
        }
        mDrawn.clear();
        painter.setPen(mLook.mSelectedPatternPen);
        if (selected)
            drawPattern(painter, *selected, true);
    }

    void drawPattern(QPainter& painter, const domain::Pattern& pattern, bool arrow) {
        for (int i = 1; i < pattern.mSequence.size(); ++i) {
            const ui::Leaf* from = leafAt(pattern.mSequence[i - 1]);
            const ui::Leaf* to = leafAt(pattern.mSequence[i]);
            if (!from || !to || from->mIndex == to->mIndex)
                continue;
            const QPointF a = from->mPos, b = to->mPos;
            if (mDrawn.insert({a.x(), a.y(), b.x(), b.y()}).second)
                drawStroke(painter, a, b, arrow);
        }
    }

    void drawStroke(QPainter& painter, const QPointF& a, const QPointF& b, bool arrow) const {
        const double r = mLook.mLeafRadius;
        const auto wrap = [](double x) { return x > 360 ? x - 360 : x; };
        const double theta = math::degree(b.x() - a.x(), b.y() - a.y());
        double sx, sy, ex, ey, c1x, c1y, c2x, c2y, q1x, q1y, q2x, q2y;
        math::circle_edge(a.x(), a.y(), wrap(theta + 315), r, sx, sy);
        math::circle_edge(b.x(), b.y(), wrap(theta + 225), r, ex, ey);
        const double psi = wrap(math::degree(ex - sx, ey - sy) + 270);
        const double k = 0.3 * std::sqrt((ex - sx) * (ex - sx) + (ey - sy) * (ey - sy));
        math::circle_edge(sx, sy, psi, k, c1x, c1y);
        math::circle_edge(ex, ey, psi, k, c2x, c2y);
        math::interp(c1x, c1y, c2x, c2y, 0.25, q1x, q1y);
        math::interp(c1x, c1y, c2x, c2y, 0.45, q2x, q2y);
        QPainterPath curve;
        curve.moveTo(sx, sy);
        curve.cubicTo(q1x, q1y, q2x, q2y, ex, ey);
        painter.drawPath(curve);
        if (!arrow)
            return;
        const double s = curve.slopeAtPercent(1.0);
        double p1x, p1y, p2x, p2y, w1x, w1y, w2x, w2y;
        math::new_pt_on_line(ex, ey, s, r, p1x, p1y);
        math::new_pt_on_line(ex, ey, s, -r, p2x, p2y);
        const auto far = [&b](double x, double y) {
            return (x - b.x()) * (x - b.x()) + (y - b.y()) * (y - b.y());
        };
        const bool second = far(p2x, p2y) > far(p1x, p1y);
        const double mx = second ? p2x : p1x, my = second ? p2y : p1y;
        math::new_pt_on_line(mx, my, -1.0 / s, 0.5 * r, w1x, w1y);
        math::new_pt_on_line(mx, my, -1.0 / s, -0.5 * r, w2x, w2y);
        QPainterPath head;
        head.moveTo(ex, ey);
        head.lineTo(w2x, w2y);
        head.lineTo(w1x, w1y);
        head.closeSubpath();
        painter.setBrush(mLook.mPrimaryFillBrush);
        painter.drawPath(head);
        painter.setBrush(Qt::NoBrush);
    }

    const ui::Leaf* leafAt(int index) const {
        for (const ui::Leaf* leaf : mShared.mLeaves)
            if (leaf->mIndex == index)
                return leaf;
        return nullptr;
    }

    const ui::Look& mLook;
    ui::Shared& mShared;
    std::set<std::array<double, 4>> mDrawn; // strokes, by the points that they lead from and to
};
