#include "ui/views/uibarview.h"

#include "ui/leaves/uilook.h"
#include "ui/views/uiannounce.h"
#include "ui/views/uizonebuilder.h"

#include <QFocusEvent>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

namespace {

const ui::BarView::Factory FACTORY(false);

/// Draws the image at `place`, moved to whole pixels of the device and not scaled where it has as
/// many as the place, to less than one: else it would be blurred. One that was made for a denser
/// screen is scaled down.
void drawSharp(QPainter& painter, const QPointF& place, const QPixmap& image) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF pixels = toDevice.mapRect(QRectF(place, image.deviceIndependentSize()));
    const bool fits = std::fabs(pixels.width() - image.width()) < 1;
    const QRect whole(pixels.topLeft().toPoint(), fits ? image.size() : pixels.size().toSize());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(toDevice.inverted().mapRect(QRectF(whole)), image, image.rect());
}

} // namespace

namespace ui {

int clip(int value, int count) {
    return count < 1 ? -1 : std::clamp(value, 0, count - 1);
}

void BarView::Zone::clear() {
    mId = -1;
    mLabel = QString();
    mFlags = 0;
    mImage = -1;
    mDisabledImage = -1;
    mName = QString();
}

void BarView::Zone::drawOn(QPainter& painter, const Look& look) {
    if (const QPixmap* image = look.buttonImage(mEnabled ? mImage : mDisabledImage)) {
        const double top = look.mMargin + mRect.y() + look.mVPadding;
        drawSharp(painter, QPointF(mRect.x(), top), *image);
    } else if (!mLabel.isEmpty()) {
        const double below = look.mMargin + look.mVPadding + look.mFontDescent;
        painter.setPen(look.mText);
        painter.drawText(QPointF(mRect.x(), mRect.bottom() - below), mLabel);
    }
}

BarView::Zone* BarView::Factory::setObject(Zone* target, Zone* /*source*/) const {
    return target;
}

BarView::BarView(const Look& look, QWidget* parent)
    : QWidget(parent)
    , mLook(look)
    , mZones(FACTORY) {
    const float height =
        look.mMargin + (look.mVPadding + ((look.mMargin + look.mVPadding) + look.mFontHeight));
    setMaximumHeight(static_cast<int>(height));
}

void BarView::setFlags(int flags) {
    mFlags = flags;
}

void BarView::addZone(const ZoneBuilder& builder) {
    try {
        builder.build(*mZones.pushBack(), mLook);
    } catch (const std::exception&) {
        return;
    }
    mNeedsLayout = true;
}

BarView::Zone* BarView::zoneAt(int id) {
    for (Zone* zone : mZones)
        if (zone->mId == id)
            return zone;
    return nullptr;
}

BarView::Zone* BarView::zoneAt(const QPointF& point) {
    for (Zone* zone : mZones)
        if (zone->mRect.contains(point))
            return zone;
    return nullptr;
}

void BarView::setEnabled(int id, bool enabled) {
    Zone* zone = zoneAt(id);
    if (!zone || zone->mEnabled == enabled)
        return;
    zone->mEnabled = enabled;
    update();
    announce_enabled(*this, positionOf(*zone));
}

void BarView::setLabel(int id, const QString& text) {
    Zone* zone = zoneAt(id);
    if (!zone || zone->mLabel == text)
        return;
    zone->mLabel = text;
    update();
    announce_label(*this, positionOf(*zone));
}

float BarView::preferredWidth(const Zone& zone) const {
    const QPixmap* image = mLook.buttonImage(zone.mImage);
    return image ? static_cast<float>(image->deviceIndependentSize().width()) : 0;
}

void BarView::layout() {
    mNeedsLayout = false;
    const float end = static_cast<float>(width());
    float left = mLook.mMargin + mLook.mHPadding;
    float right = end;
    for (Zone* zone : mZones)
        placeZone(*zone, left, right);
    // The zones that follow the right edge stand beyond it until their width is known.
    if (right > end)
        shiftRightZones(end - right - mLook.mMargin - mLook.mHPadding);
}

QSize BarView::minimumSizeHint() const {
    return QSize(-1, maximumHeight());
}

void BarView::mousePressEvent(QMouseEvent* event) {
    mPressed = zoneAt(event->position());
}

void BarView::mouseReleaseEvent(QMouseEvent* event) {
    Zone* pressed = std::exchange(mPressed, nullptr);
    Zone* released = zoneAt(event->position());
    if (released && released == pressed)
        zonePressed(*released);
}

void BarView::mouseMoveEvent(QMouseEvent* /*event*/) {}

void BarView::paintEvent(QPaintEvent* /*event*/) {
    if (mNeedsLayout)
        layout();
    QPainter painter(this);
    for (Zone* zone : mZones)
        zone->drawOn(painter, mLook);
    if (mFlags & TOP_SHADOW)
        mLook.drawTopShadow(painter, rect());
    if (mFlags & BOTTOM_SHADOW)
        mLook.drawBottomShadow(painter, rect());
    mKeyFocus.drawOn(painter, *this, mLook);
}

void BarView::resizeEvent(QResizeEvent* /*event*/) {
    mNeedsLayout = true;
}

void BarView::focusInEvent(QFocusEvent* event) {
    mKeyFocus.follow(*this, *event);
}

void BarView::focusOutEvent(QFocusEvent* event) {
    mKeyFocus.follow(*this, *event);
}

bool BarView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    show_tool_tip(*static_cast<QHelpEvent*>(event), *this, tip());
    return true;
}

void BarView::selectionChanged(quint64 /*mask*/) {}

void BarView::zonePressed(Zone& /*zone*/) {}

tool_tip BarView::tip() {
    layout();
    for (const Zone* zone : mZones) {
        if (isCut(*zone))
            return {{tip_text(zone->mLabel)}, rect()};
    }
    return {};
}

/// Whether the zone's label runs on beyond its place, under what stands there.
bool BarView::isCut(const Zone& zone) const {
    return !zone.mLabel.isEmpty() &&
           fontMetrics().horizontalAdvance(tip_text(zone.mLabel)) > zone.mRect.width();
}

/// From 0, in the order in which zones were added.
int BarView::positionOf(const Zone& zone) const {
    int position = 0;
    for (const Zone* other : mZones) {
        if (other == &zone)
            break;
        ++position;
    }
    return position;
}

/// Gives the zone its place between the cursors and moves the cursor of the edge it follows.
void BarView::placeZone(Zone& zone, float& left, float& right) const {
    zone.mRect.setTop(0);
    zone.mRect.setHeight(height());
    const bool followsLeft = zone.mFlags & FOLLOW_LEFT;
    const bool followsRight = zone.mFlags & FOLLOW_RIGHT;
    if (followsLeft && followsRight) {
        zone.mRect.setLeft(left);
        zone.mRect.setRight(right);
    } else if (followsLeft || followsRight) {
        float& cursor = followsLeft ? left : right;
        zone.mRect.setLeft(cursor);
        cursor += preferredWidth(zone);
        zone.mRect.setRight(cursor);
    }
}

void BarView::shiftRightZones(float shift) {
    for (Zone* zone : mZones) {
        if (!(zone->mFlags & FOLLOW_RIGHT))
            continue;
        if (!(zone->mFlags & FOLLOW_LEFT))
            zone->mRect.setLeft(zone->mRect.left() + shift);
        zone->mRect.setRight(zone->mRect.right() + shift);
    }
}

} // namespace ui
