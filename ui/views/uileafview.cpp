#include "ui/views/uileafview.h"

#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/views/uiannounce.h"
#include "ui/views/uileafkeys.h"

#include <QBackingStore>
#include <QDropEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QLineF>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <new>

namespace ui {

namespace {

constexpr float CATCH = 0.75F; // of a leaf's radius

constexpr qsizetype TOLD_AT_ONCE = 5; // leaves of a tool tip

// Of drawing what is missing, in milliseconds: in one event, in a paint, which on a dense screen
// takes longer to show what there is than this, and altogether until that is shown.
constexpr int SLICE = 10;
constexpr int PAINT_SLICE = 5;
constexpr int UNTIL_SHOWN = 60;

QRectF rectBetween(const QPointF& a, const QPointF& b) {
    return {std::fmin(a.x(), b.x()), std::fmin(a.y(), b.y()), std::fabs(b.x() - a.x()),
            std::fabs(b.y() - a.y())};
}

QString describe(const Leaf& leaf) {
    const int patterns = leaf.mBranch ? leaf.mBranch->patternSize() : 0;
    return LeafView::tr("%1, patterns: %2").arg(tip_text(leaf.mKey), QString::number(patterns));
}

bool hasUrls(const QDropEvent* event) {
    return event && event->mimeData() && event->mimeData()->hasUrls();
}

} // namespace

LeafView::LeafView(const Look& look, Shared& shared, QWidget* parent)
    : QWidget(parent)
    , mLook(look)
    , mShared(shared)
    , mLeafPainter(look, shared) {
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
}

QSize LeafView::sizeHint() const {
    return QSize(500, 400);
}

QSize LeafView::minimumSizeHint() const {
    return QSize(-1, -1);
}

void LeafView::onModelChanged() {
    mNeedsLayout = true;
    mLeafPicture.onModelChanged();
}

void LeafView::selectionChanged(quint64 /*mask*/) {
    update();
    announce_description(*this);
}

/// What the press selects repaints, if it changes the selection; there is no band to be seen yet.
void LeafView::mousePressEvent(QMouseEvent* event) {
    mPressPoint = mDragPoint = event->position();
    mDragging = true;
    const int x = static_cast<int>(mPressPoint.x());
    const int y = static_cast<int>(mPressPoint.y());
    mSelectionBox = QRect(x, y, 1, 1);
    select();
}

void LeafView::mouseMoveEvent(QMouseEvent* event) {
    mDragPoint = event->position();
    const QRect old = mSelectionBox;
    getSelectionBox(mSelectionBox);
    update((old | mSelectionBox).adjusted(-1, -1, 1, 1));
    select();
}

void LeafView::mouseReleaseEvent(QMouseEvent* /*event*/) {
    mDragging = false;
    select();
    update();
}

void LeafView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!isOnScreen(painter)) {
        paintOn(painter, QDeadlineTimer(QDeadlineTimer::Forever));
        return;
    }
    paintOn(painter, QDeadlineTimer(PAINT_SLICE, Qt::PreciseTimer));
    mSincePaint.start();
    const bool showsAll = QRegion(rect()).subtracted(event->region()).isEmpty();
    if (!mLeafPicture.isWhole() || (mLeafPicture.isNew() && !showsAll))
        mContinue.start(0, this);
}

void LeafView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != mContinue.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    if (mSincePaint.elapsed() < UNTIL_SHOWN &&
        !mLeafPicture.advance(QDeadlineTimer(SLICE, Qt::PreciseTimer)))
        return;
    mContinue.stop();
    update();
}

void LeafView::resizeEvent(QResizeEvent* /*event*/) {
    mNeedsLayout = true;
}

void LeafView::dragEnterEvent(QDragEnterEvent* event) {
    if (hasUrls(event))
        event->acceptProposedAction();
}

void LeafView::dropEvent(QDropEvent* event) {
    if (!hasUrls(event))
        return;
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty())
        return;
    // The source deletes what it has moved; where it offers nothing else, it hears of no action.
    event->setDropAction(Qt::CopyAction);
    if (event->dropAction() != Qt::CopyAction)
        event->setDropAction(Qt::IgnoreAction);
    event->accept();
    Q_EMIT requestLoad(urls.first());
}

void LeafView::keyPressEvent(QKeyEvent* event) {
    placeLeaves();
    if (!select_by_key(mShared, size(), CATCH * mLook.mLeafRadius, *event))
        QWidget::keyPressEvent(event);
}

void LeafView::focusInEvent(QFocusEvent* event) {
    mKeyFocus.follow(*this, *event);
}

void LeafView::focusOutEvent(QFocusEvent* event) {
    mKeyFocus.follow(*this, *event);
}

bool LeafView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto& help = *static_cast<QHelpEvent*>(event);
    show_tool_tip(help, *this, tipAt(help.pos()));
    return true;
}

void LeafView::layout(const QSize& size) {
    mNeedsLayout = false;
    mLeafPainter.placeLeaves(size);
}

void LeafView::placeLeaves() {
    if (mNeedsLayout)
        layout(size());
}

void LeafView::paintOn(QPainter& painter, const QDeadlineTimer& until) {
    placeLeaves();
    if (!mLeafPicture.drawOn(painter, size(), until))
        drawWithoutPicture(painter);
    if (mDragging)
        drawRubberBand(painter);
    mKeyFocus.drawOn(painter, *this, mLook);
}

/// Where there is no memory for the strokes either, leaves alone.
void LeafView::drawWithoutPicture(QPainter& painter) {
    try {
        mLeafPainter.placeStrokes();
    } catch (const std::bad_alloc&) {
        // No stroke is placed then.
    }
    mLeafPainter.paintOn(painter);
}

/// Whether it paints on the window's own pixels, which can be painted on again.
bool LeafView::isOnScreen(const QPainter& painter) const {
    QBackingStore* store = backingStore();
    return store && painter.paintEngine()->paintDevice() == store->paintDevice();
}

void LeafView::drawRubberBand(QPainter& painter) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(mLook.mSelectedOutline);
    painter.setBrush(mLook.mRubberBandBrush);
    painter.drawRects(&mSelectionBox, 1);
}

void LeafView::getSelectionBox(QRect& box) const {
    const QRectF band = rectBetween(mPressPoint, mDragPoint);
    box = QRect(static_cast<int>(band.x()), static_cast<int>(band.y()),
                static_cast<int>(band.width()), static_cast<int>(band.height()));
}

void LeafView::select() {
    select(rectBetween(mPressPoint, mDragPoint));
}

void LeafView::select(const QRectF& rect) {
    const float more = CATCH * mLook.mLeafRadius;
    const QRectF grown = rect.adjusted(-more, -more, more, more);
    LeafSelection selection;
    for (const Leaf* leaf : mShared.mLeaves) {
        if (!leaf->isContainedBy(grown))
            continue;
        const int index = leaf->mIndex;
        selection.mAlternates.add(index);
        if (selection.mPrimary < 0)
            selection.mPrimary = index;
    }
    mShared.setLeafSelection(selection);
}

tool_tip LeafView::tipAt(const QPointF& place) {
    placeLeaves();
    QList<const Leaf*> there; // the topmost last
    for (const Leaf* leaf : mShared.mLeaves) {
        if (QLineF(leaf->mPos, place).length() <= mLook.mLeafRadius)
            there.append(leaf);
    }
    if (there.isEmpty())
        return {};
    const float radius = mLook.mLeafRadius;
    const QRectF topmost(there.last()->mPos, QSizeF(0, 0));
    tool_tip tip{{}, topmost.adjusted(-radius, -radius, radius, radius).toAlignedRect()};
    const qsizetype told = std::min(there.size(), TOLD_AT_ONCE);
    for (qsizetype i = 1; i <= told; ++i)
        tip.lines.append(describe(*there[there.size() - i]));
    if (told < there.size())
        tip.lines.append(tr("and %1 more").arg(there.size() - told));
    return tip;
}

} // namespace ui
