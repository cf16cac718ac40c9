#include "ui/leaves/uilook.h"

#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

ui::Look initializedLook() {
    ui::Look look;
    EXPECT_TRUE(look.init(QFontMetrics(QApplication::font())));
    return look;
}

TEST(Look, ButtonImagesFillTheFontHeightWithPixelsOfTheScreen) {
    const ui::Look look = initializedLook();
    const int height = QFontMetrics(QApplication::font()).height();
    for (const QPixmap& image : look.mButtonImages) {
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(height, height));
        EXPECT_EQ(image.width(), qRound(height * qApp->devicePixelRatio()));
    }
    EXPECT_EQ(look.buttonImage(3), &look.mButtonImages[3]);
    EXPECT_FALSE(look.buttonImage(-1) || look.buttonImage(4));
}

TEST(Look, DisabledImagesAreFaintAndNextMirrorsPrevious) {
    const ui::Look look = initializedLook();
    const QImage previous = look.mButtonImages[0].toImage();
    const QImage disabled = look.mButtonImages[1].toImage();
    const QImage next = look.mButtonImages[2].toImage().mirrored(true, false);
    int tip = previous.width(), tipRow = 0;
    for (int y = 0; y < previous.height(); ++y)
        for (int x = previous.width() - 1; x >= 0; --x) {
            const int alpha = qAlpha(previous.pixel(x, y));
            ASSERT_NEAR(qAlpha(disabled.pixel(x, y)), alpha * 0.35, 2);
            ASSERT_NEAR(qAlpha(next.pixel(x, y)), alpha, 2);
            if (alpha > 127 && x < tip) {
                tip = x;
                tipRow = y;
            }
        }
    EXPECT_LT(tip, previous.width() / 2);
    EXPECT_NEAR(tipRow, previous.height() / 2, previous.height() / 8)
        << "points back from its middle";
}

TEST(Look, ShadowsBlendEachRowOnceAtItsAlpha) {
    const ui::Look look = initializedLook();
    const QRect rect(3, 5, 40, 20);
    const int fromBottom[20] = {40, 30, 22, 16, 12, 9, 7, 5, 4, 3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 10};
    for (const qreal ratio : {1.0, 1.5, 2.0}) {
        QImage image((QSizeF(50, 30) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        look.drawTopShadow(painter, rect);
        look.drawBottomShadow(painter, rect);
        painter.end();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                // An edge in the middle of a pixel leaves the pixel to what is before it.
                const QPoint at(static_cast<int>((x + 0.49) / ratio),
                                static_cast<int>((y + 0.49) / ratio));
                const int alpha = rect.contains(at) ? fromBottom[rect.bottom() - at.y()] : 0;
                ASSERT_EQ(qAlpha(image.pixel(x, y)), alpha) << x << ", " << y << " @" << ratio;
            }
    }
}

} // namespace
