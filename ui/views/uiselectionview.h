#pragma once

#include "ui/views/uitooltip.h"

#include <QString>
#include <QWidget>

namespace domain {
class Pattern;
}

namespace ui {

class Look;
class Shared;

/// The selected pattern as text: the keys of its events, a row each, from top to bottom. Rows below
/// the widget's end are not shown. Takes no input; a tool tip tells the whole key of a row.
class SelectionView : public QWidget {
    Q_OBJECT

public:
    /// `look` is initialised; both references outlive the view.
    SelectionView(const Look& look, Shared& shared, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// The keys of the selected pattern, a line each; empty without one.
    QString text() const;

public Q_SLOTS:
    void selectionChanged(quint64 mask);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    tool_tip tipAt(const QPoint& place) const;
    QString rowText(int index) const;
    void drawPatternTrace(QPainter& painter, const domain::Pattern& pattern);

    const Look& mLook;
    Shared& mShared;
    float mTopGap; ///< Between the top margin and the first row, in pixels.
};

} // namespace ui
