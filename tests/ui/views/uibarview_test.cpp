#include "ui/leaves/uilook.h"
#include "ui/views/uibarview.h"
#include "ui/views/uizonebuilder.h"

#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <vector>

namespace {

using namespace ui;

constexpr int LABEL = 1;
const QColor IMAGE_COLOURS[] = {Qt::red, Qt::blue, Qt::green, Qt::yellow};

class Bar : public BarView {
public:
    using BarView::BarView;
    MOCK_METHOD(void, zonePressed, (ui::BarView::Zone&), (override));

    void paintEvent(QPaintEvent* event) override {
        ++mPaints;
        BarView::paintEvent(event);
    }

    int mPaints = 0;
};

/// A bar of 300 x 26 pixels with a label and two buttons of 14 pixels, drawn for ratio 2; its first
/// paint was at another size.
class BarViewTest : public testing::Test {
public:
    BarViewTest() {
        mBar.addZone(LabelBuilder(LABEL, QString(), FOLLOW_LEFT | FOLLOW_RIGHT));
        mBar.addZone(ButtonBuilder(BAR_PRV, FOLLOW_RIGHT));
        mBar.addZone(ButtonBuilder(BAR_NXT, FOLLOW_RIGHT));
        mBar.setEnabled(BAR_NXT, false);
        painted(1);
        mBar.resize(300, 26);
        painted(1);
    }

    static Look lookOfFourteenPixels() {
        Look look;
        look.init(QFontMetrics(QApplication::font()));
        look.mFontHeight = 14;
        for (int i = 0; i < Look::BUTTON_IMAGES; ++i) {
            look.mButtonImages[i] = QPixmap(28, 28);
            look.mButtonImages[i].fill(IMAGE_COLOURS[i]);
            look.mButtonImages[i].setDevicePixelRatio(2);
        }
        return look;
    }

    static QImage painted(BarView& bar, qreal ratio) {
        QImage image((QSizeF(bar.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        bar.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    }

    QImage painted(int ratio) { return painted(mBar, ratio); }

    const Look mLook = lookOfFourteenPixels();
    testing::StrictMock<Bar> mBar{mLook, nullptr};
};

TEST(Clip, IsTheNearestIndex) {
    struct {
        int value, count, index;
    } const rows[] = {{5, 3, 2}, {3, 3, 2}, {2, 3, 2}, {-1, 3, 0},
                      {0, 1, 0}, {9, 1, 0}, {7, 0, -1}};

    for (const auto& row : rows)
        EXPECT_EQ(clip(row.value, row.count), row.index) << row.value << " of " << row.count;
}

TEST(Zone, ClearedItKeepsItsStateAndPlace) {
    const QRectF place(1, 2, 3, 4);
    BarView::Zone zone{7, QStringLiteral("label"), 3, 2, 3, false, place, QStringLiteral("name")};
    zone.clear();
    EXPECT_FALSE(zone.mEnabled);
    EXPECT_EQ(zone.mRect, place);
    EXPECT_EQ(zone.mLabel + zone.mName, QString());
    EXPECT_THAT((std::vector<int>{zone.mId, zone.mFlags, zone.mImage, zone.mDisabledImage}),
                testing::ElementsAre(-1, 0, -1, -1));
}

TEST_F(BarViewTest, LabelStretchesToTheButtonsAtTheRightEnd) {
    EXPECT_EQ(mBar.zoneAt(LABEL)->mRect, QRectF(6, 0, 260, 26));
    EXPECT_EQ(mBar.zoneAt(BAR_PRV)->mRect, QRectF(266, 0, 14, 26));
    EXPECT_EQ(mBar.zoneAt(BAR_NXT)->mRect, QRectF(280, 0, 14, 26));
    EXPECT_EQ(mBar.maximumHeight(), 26);
    EXPECT_EQ(mBar.minimumSizeHint(), QSize(-1, 26));
}

TEST_F(BarViewTest, ZonesStandInOrderFromTheEdgeTheyFollow) {
    Bar bar(mLook, nullptr);
    bar.addZone(ButtonBuilder(BAR_PRV, FOLLOW_LEFT));
    bar.addZone(ButtonBuilder(7, FOLLOW_LEFT)); // has no image
    bar.addZone(LabelBuilder(LABEL, QString(), FOLLOW_LEFT | FOLLOW_RIGHT));
    bar.addZone(LabelBuilder(2, QString(), 0));
    bar.resize(100, 26);
    bar.layout();
    EXPECT_EQ(bar.zoneAt(BAR_PRV)->mRect, QRectF(6, 0, 14, 26));
    EXPECT_EQ(bar.zoneAt(7)->mRect, QRectF(20, 0, 0, 26));
    EXPECT_EQ(bar.zoneAt(LABEL)->mRect, QRectF(20, 0, 80, 26)) << "nothing keeps it from the edge";
    EXPECT_EQ(bar.zoneAt(2)->mRect, QRectF(0, 0, 0, 26));
    EXPECT_EQ(bar.zoneAt(QPointF(20, 5)), bar.zoneAt(BAR_PRV)) << "no width, no hits";
}

TEST_F(BarViewTest, ImagesOfTheirStateAreDrawnPixelByPixel) {
    for (const int ratio : {1, 2}) {
        const QImage image = painted(ratio);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QPoint at(x / ratio, y / ratio);
                const QColor colour = QRect(266, 6, 14, 14).contains(at)   ? IMAGE_COLOURS[0]
                                      : QRect(280, 6, 14, 14).contains(at) ? IMAGE_COLOURS[3]
                                                                           : QColor(0, 0, 0, 0);
                ASSERT_EQ(image.pixelColor(x, y), colour) << x << ", " << y << " @" << ratio;
            }
    }
}

/// 14 pixels make 17.5 of the screen.
TEST_F(BarViewTest, ImagesAreSharpWhereTheRatioMakesNoWholePixels) {
    const QColor board[] = {Qt::black, Qt::white};
    QImage squares(18, 18, QImage::Format_ARGB32_Premultiplied);
    for (int i = 0; i < 18 * 18; ++i)
        squares.setPixelColor(i % 18, i / 18, board[(i / 18 + i) % 2]);
    Look look = lookOfFourteenPixels();
    look.mButtonImages[0] = QPixmap::fromImage(squares);
    look.mButtonImages[0].setDevicePixelRatio(18 / 14.0);
    Bar bar(look, nullptr);
    bar.addZone(ButtonBuilder(BAR_PRV, FOLLOW_RIGHT));
    for (const int width : {100, 101, 102, 103}) { // the place is a quarter of a pixel further
        bar.resize(width, 26);
        const QImage image = painted(bar, 1.25);
        int counts[] = {0, 0, 0}; // black, white, a mixture
        for (int i = 0; i < image.width() * image.height(); ++i) {
            const QColor colour = image.pixelColor(i % image.width(), i / image.width());
            if (colour.alpha() > 0)
                ++counts[std::find(std::begin(board), std::end(board), colour) - board];
        }
        EXPECT_THAT(counts, testing::ElementsAre(162, 162, 0)) << width;
    }
}

TEST_F(BarViewTest, LabelStandsOnABaselineAboveThePadding) {
    mBar.setLabel(LABEL, QStringLiteral("HHH"));
    const QImage image = painted(1);
    QRect ink;
    for (int y = 0; y < 26; ++y)
        for (int x = 0; x < 200; ++x)
            if (qAlpha(image.pixel(x, y)) > 100)
                ink |= QRect(x, y, 1, 1);
    EXPECT_EQ(ink.bottom(), 26 - 6 - mLook.mFontDescent - 1);
    EXPECT_TRUE(ink.left() >= 6 && ink.left() < 9) << ink.left();
}

TEST_F(BarViewTest, FlagsChooseTheShadows) {
    for (const int flags : {0, 1, 2, 3}) {
        mBar.setFlags(flags);
        const QImage image = painted(1);
        EXPECT_EQ(qAlpha(image.pixel(100, 0)), flags & 1 ? 10 : 0) << flags;
        EXPECT_EQ(qAlpha(image.pixel(100, 25)), flags & 2 ? 40 : 0) << flags;
    }
}

TEST_F(BarViewTest, PressAndReleaseOnOneZoneReportItOnce) {
    const QPoint label(50, 9), previous(270, 9), next(290, 9), outside(2, 9);

    struct {
        QPoint press, release;
        int id; // 0: nothing is reported
    } const rows[] = {{previous, previous, BAR_PRV}, {next, next, BAR_NXT},  {label, label, LABEL},
                      {previous, next, 0},           {previous, outside, 0}, {outside, next, 0},
                      {outside, outside, 0}};

    for (const auto button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton, Qt::BackButton})
        for (const auto& row : rows) {
            if (row.id)
                EXPECT_CALL(mBar, zonePressed(testing::Ref(*mBar.zoneAt(row.id))));
            QTest::mousePress(&mBar, button, {}, row.press);
            QTest::mouseRelease(&mBar, button, {}, row.release);
            testing::Mock::VerifyAndClearExpectations(&mBar);
            QTest::mouseRelease(&mBar, button, {}, row.press);
        }
}

TEST_F(BarViewTest, OnlyChangesRepaint) {
    mBar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&mBar));
    const auto paintsAfter = [this](auto change) {
        QCoreApplication::processEvents();
        mBar.mPaints = 0;
        change();
        QCoreApplication::processEvents();
        return mBar.mPaints;
    };
    EXPECT_EQ(paintsAfter([&] { mBar.setLabel(LABEL, QStringLiteral("x")); }), 1);
    EXPECT_EQ(paintsAfter([&] { mBar.setLabel(LABEL, QStringLiteral("x")); }), 0);
    EXPECT_EQ(paintsAfter([&] { mBar.setEnabled(BAR_NXT, true); }), 1);
    EXPECT_EQ(paintsAfter([&] { mBar.setEnabled(BAR_NXT, true); }), 0);
    EXPECT_EQ(paintsAfter([&] { mBar.setEnabled(99, true); }), 0);
}

TEST_F(BarViewTest, ZoneThatCannotBeBuiltDoesNotStopTheBar) {
    struct Failing : ZoneBuilder {
        bool build(BarView::Zone&, const Look&) const override { throw std::bad_alloc(); }
    };

    EXPECT_NO_THROW(mBar.addZone(Failing()));
    mBar.addZone(LabelBuilder(5, QString(), FOLLOW_LEFT));
    EXPECT_TRUE(mBar.zoneAt(5));
}

} // namespace
