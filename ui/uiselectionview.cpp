#include "ui/uiselectionview.h"

#include "domain/domainbranch.h"
#include "domain/domainpattern.h"
#include "ui/uilook.h"
#include "ui/uishared.h"

#include <QPainter>

namespace ui {

namespace {

/// The row of an event whose branch is not there.
const QString ERR_STR = QStringLiteral("?");

constexpr float ROW_GAP = 4;

} // namespace

SelectionView::SelectionView(const Look& look, Shared& shared, QWidget* parent)
    : QWidget(parent)
    , mLook(look)
    , mShared(shared)
    , mTopGap(look.mVPadding) {}

QSize SelectionView::sizeHint() const {
    return {190, 0};
}

QSize SelectionView::minimumSizeHint() const {
    return {20, 0};
}

void SelectionView::selectionChanged(quint64 /*mask*/) {
    update();
}

void SelectionView::mousePressEvent(QMouseEvent* /*event*/) {}

void SelectionView::mouseReleaseEvent(QMouseEvent* /*event*/) {}

void SelectionView::mouseMoveEvent(QMouseEvent* /*event*/) {}

void SelectionView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (const domain::Pattern* pattern = mShared.selectedPattern())
        drawPatternTrace(painter, *pattern);
    mLook.drawTopShadow(painter, rect());
}

void SelectionView::resizeEvent(QResizeEvent* /*event*/) {}

void SelectionView::drawPatternTrace(QPainter& painter, const domain::Pattern& pattern) {
    const float x = mLook.mMargin + mLook.mHPadding;
    float top = mLook.mMargin + mTopGap;
    painter.setPen(mLook.mText);
    painter.setBrush(Qt::NoBrush);
    // A pattern may have thousands of rows; those below the end would paint nothing.
    for (int i = 0; i < pattern.mSequence.size() && top < static_cast<float>(height()); ++i) {
        const domain::Branch* branch = mShared.mLeaves.branchAt(pattern.mSequence[i]);
        painter.drawText(QPointF(x, top + mLook.mFontAscent), branch ? branch->mKey : ERR_STR);
        top += ROW_GAP + mLook.mFontHeight;
    }
}

} // namespace ui
