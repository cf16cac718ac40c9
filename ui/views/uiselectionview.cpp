#include "ui/views/uiselectionview.h"

#include "domain/domainbranch.h"
#include "domain/domainpattern.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/views/uiannounce.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStringList>

#include <cmath>

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

QString SelectionView::text() const {
    const domain::Pattern* pattern = mShared.selectedPattern();
    QStringList rows;
    for (int i = 0; pattern && i < pattern->mSequence.size(); ++i)
        rows.append(rowText(pattern->mSequence[i]));
    return rows.join(u'\n');
}

void SelectionView::selectionChanged(quint64 /*mask*/) {
    update();
    announce_description(*this);
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

bool SelectionView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto& help = *static_cast<QHelpEvent*>(event);
    show_tool_tip(help, *this, tipAt(help.pos()));
    return true;
}

/// A row's own gap below belongs to it.
tool_tip SelectionView::tipAt(const QPoint& place) const {
    const domain::Pattern* pattern = mShared.selectedPattern();
    const float rowHeight = ROW_GAP + mLook.mFontHeight;
    const float top = mLook.mMargin + mTopGap;
    const float row = std::floor((static_cast<float>(place.y()) - top) / rowHeight);
    if (!pattern || row < 0 || row >= static_cast<float>(pattern->mSequence.size()))
        return {};
    const QRectF area(0, top + row * rowHeight, width(), rowHeight);
    const int index = pattern->mSequence[static_cast<int>(row)];
    return {{tip_text(rowText(index))}, area.toAlignedRect()};
}

QString SelectionView::rowText(int index) const {
    const domain::Branch* branch = mShared.mLeaves.branchAt(index);
    return branch ? branch->mKey : ERR_STR;
}

void SelectionView::drawPatternTrace(QPainter& painter, const domain::Pattern& pattern) {
    const float x = mLook.mMargin + mLook.mHPadding;
    float top = mLook.mMargin + mTopGap;
    painter.setPen(mLook.mText);
    painter.setBrush(Qt::NoBrush);
    // A pattern may have thousands of rows; those below the end would paint nothing.
    for (int i = 0; i < pattern.mSequence.size() && top < static_cast<float>(height()); ++i) {
        painter.drawText(QPointF(x, top + mLook.mFontAscent), rowText(pattern.mSequence[i]));
        top += ROW_GAP + mLook.mFontHeight;
    }
}

} // namespace ui
