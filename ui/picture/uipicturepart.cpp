#include "ui/picture/uipicturepart.h"

namespace ui {

/// A pen of one device pixel takes another way through the raster engine than a wider one: its
/// lines change where they cross the edge of the device, and do not under a clip. The wider one is
/// exact on both, and much faster on a small device.
PicturePart::PicturePart(QImage& picture, const QRect& pixels, const QTransform& toPixels)
    : mPixels(pixels)
    , mToPixels(toPixels)
    , mIsThin(toPixels.m11() <= 1)
    , mDevice(part_of(picture, mIsThin ? picture.rect() : pixels)) {}

void PicturePart::begin(QPainter& painter) {
    painter.begin(&mDevice);
    if (mIsThin)
        painter.setClipRect(mPixels);
    const QPoint moved = mIsThin ? QPoint() : -mPixels.topLeft();
    painter.setTransform(mToPixels * QTransform::fromTranslate(moved.x(), moved.y()));
    painter.setRenderHint(QPainter::Antialiasing);
}

QImage part_of(QImage& image, const QRect& rect) {
    uchar* first = image.scanLine(rect.top()) + qsizetype(rect.left()) * (image.depth() / 8);
    return {first, rect.width(), rect.height(), image.bytesPerLine(), image.format()};
}

} // namespace ui
