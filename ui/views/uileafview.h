#pragma once

#include "ui/picture/uileafpainter.h"
#include "ui/picture/uileafpicture.h"
#include "ui/views/uikeyfocus.h"
#include "ui/views/uitooltip.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QPointF>
#include <QRect>
#include <QUrl>
#include <QWidget>

namespace ui {

/// The large drawing area of the main window: leaves, patterns, and the rubber band that selects
/// leaves. A leaf is caught when the band comes within three quarters of a leaf's radius of its
/// centre, and so by a press near it; any mouse button will do. A file that is dropped here is
/// passed on, and the drop accepted, as a copy even where a move is proposed.
///
/// The keys are those of `select_by_key`. A tool tip tells the keys of the leaves whose circles are
/// under the mouse, topmost first, and how many patterns they have.
///
/// Holds no model of its own, only what makes painting it fast. Places of leaves are valid after
/// the first paint.
///
/// On the screen what takes longer than a frame is drawn bit by bit, between other events: leaves
/// come first. A paint of the view into a picture, as by `QWidget::grab`, is always whole.
class LeafView : public QWidget {
    Q_OBJECT

public:
    /// `look` and `shared` outlive the view.
    LeafView(const Look& look, Shared& shared, QWidget* parent);

    QSize sizeHint() const override;

    /// No minimum.
    QSize minimumSizeHint() const override;

    const Shared& shared() const { return mShared; }

    /// To be called after a rebuild of the leaves. Does not repaint by itself.
    void onModelChanged();

Q_SIGNALS:
    /// A file, the first of a drop, is to be loaded.
    void requestLoad(QUrl url);

public Q_SLOTS:
    /// Repaints, whatever `mask` says has changed.
    void selectionChanged(quint64 mask);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    void layout(const QSize& size);
    void placeLeaves();
    void paintOn(QPainter& painter, const QDeadlineTimer& until);
    void drawWithoutPicture(QPainter& painter);
    bool isOnScreen(const QPainter& painter) const;
    void drawRubberBand(QPainter& painter);
    void getSelectionBox(QRect& box) const;
    void select();
    void select(const QRectF& rect);
    tool_tip tipAt(const QPointF& place);

    const Look& mLook;
    Shared& mShared;
    LeafPainter mLeafPainter;
    LeafPicture mLeafPicture{mLeafPainter};
    bool mNeedsLayout = true;
    QPointF mPressPoint; // of the last press, with any button
    QPointF mDragPoint;
    bool mDragging = false;
    QRect mSelectionBox;       // the rubber band
    QBasicTimer mContinue;     // to draw when other events have had their turn
    QElapsedTimer mSincePaint; // on the screen
    KeyFocus mKeyFocus;
};

} // namespace ui
