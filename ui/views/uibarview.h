#pragma once

#include "collections/clearingfactory.h"
#include "collections/managedlist.h"
#include "ui/views/uikeyfocus.h"
#include "ui/views/uitooltip.h"

#include <QRectF>
#include <QString>
#include <QWidget>

namespace ui {

class Look;
class ZoneBuilder;

/// Zone flags: a zone with one of them takes its place in order from that edge of the bar; a zone
/// with both stretches between what was placed before it.
inline constexpr int FOLLOW_LEFT = 1;
inline constexpr int FOLLOW_RIGHT = 2;

/// Ids of the buttons that step back and forward. Those of other zones are their bar's own choice.
inline constexpr int BAR_PRV = -2;
inline constexpr int BAR_NXT = -3;

/// Flags of `BarView::setFlags`.
inline constexpr int TOP_SHADOW = 1;
inline constexpr int BOTTOM_SHADOW = 2;

/// The index among `count` items that is nearest to `value`; -1 when there is none.
int clip(int value, int count);

/// A strip, one line high, of image buttons and text labels, its zones. A zone is clicked when the
/// mouse goes down and up on it; subclasses say what follows. A label that is too long for its
/// place is told by a tool tip.
///
/// Zones are added once, by the subclass's constructor, and live as long as the bar. Zone
/// rectangles are in widget coordinates and valid after `layout`, which runs with the first paint
/// after a resize.
class BarView : public QWidget {
    Q_OBJECT

public:
    /// A place in the bar, of use with the bar that made it only.
    struct Zone {
        /// Makes the zone one without id, label, flags, images and name.
        void clear();

        /// Draws the image for the zone's state, or else the label.
        void drawOn(QPainter& painter, const Look& look);

        int mId = -1;
        QString mLabel;
        int mFlags = 0;
        int mImage = -1; // `Look::PREVIOUS_IMAGE` and its like
        int mDisabledImage = -1;
        bool mEnabled = true;
        QRectF mRect;
        QString mName; // of a button, never drawn: for those who can't see its image
    };

    class Factory : public ClearingFactory<Zone> {
    public:
        using ClearingFactory::ClearingFactory;

        /// Copies nothing: a zone stays with its bar.
        Zone* setObject(Zone* target, Zone* source) const override;
    };

    /// Limits the bar to one line of the font of `look`, which is initialised and outlives the
    /// bar.
    BarView(const Look& look, QWidget* parent);

    /// Chooses the shadows, `TOP_SHADOW` and `BOTTOM_SHADOW`, that the next paint draws.
    void setFlags(int flags);

    /// Appends a zone. When none can be made the bar goes on without it.
    void addZone(const ZoneBuilder& builder);

    /// The first zone with that id, null when there is none.
    Zone* zoneAt(int id);

    /// The first zone that contains the point, null when there is none.
    Zone* zoneAt(const QPointF& point);

    /// All zones, in the order in which they were added.
    const ManagedList<Zone*>& zones() const { return mZones; }

    /// Both do nothing for an unknown id, and repaint only on a change.
    void setEnabled(int id, bool enabled);
    void setLabel(int id, const QString& text);

    /// The width of the zone's image in device-independent pixels, 0 without one.
    float preferredWidth(const Zone& zone) const;

    /// Places the zones within the bar's present size.
    void layout();

    QSize minimumSizeHint() const override;

public Q_SLOTS:
    /// For subclasses that follow the shared selection; `mask` tells what of it has changed.
    virtual void selectionChanged(quint64 mask);

public:
    /// Called when a zone was clicked, with any mouse button, be it enabled or not.
    virtual void zonePressed(ui::BarView::Zone& zone);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private:
    tool_tip tip();
    bool isCut(const Zone& zone) const;
    int positionOf(const Zone& zone) const;
    void placeZone(Zone& zone, float& left, float& right) const;
    void shiftRightZones(float shift);

    const Look& mLook;
    ManagedList<Zone*> mZones;
    int mFlags = 0;
    bool mNeedsLayout = false;
    Zone* mPressed = nullptr; // under the last mouse press
    KeyFocus mKeyFocus;
};

} // namespace ui
