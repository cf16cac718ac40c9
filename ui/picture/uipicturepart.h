#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QTransform>

namespace ui {

/// A rectangle of a picture, in the picture's memory, that is painted on just as the whole picture
/// is. Several threads may paint on parts that do not overlap, each on one.
///
/// Refers to the picture, which outlives it and is neither painted on nor copied meanwhile.
class PicturePart {
public:
    /// `toPixels` scales and moves what is painted to pixels of the picture.
    PicturePart(QImage& picture, const QRect& pixels, const QTransform& toPixels);

    const QRect& pixels() const { return mPixels; }

    /// Lets `painter`, which ends before the part does, paint smooth lines on it.
    void begin(QPainter& painter);

private:
    QRect mPixels;
    QTransform mToPixels;
    bool mIsThin = false; // whether a pen is no wider than a device pixel
    QImage mDevice;
};

/// The pixels of `image` within `rect`, in the same memory.
QImage part_of(QImage& image, const QRect& rect);

} // namespace ui
