#include "fuzz/plain/plainleafview.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"
#include "ui/picture/uileafpainter.h"
#include "ui/picture/uileafpicture.h"
#include "ui/views/uileafview.h"

#include <QBackingStore>
#include <QMimeData>
#include <QMouseEvent>
#include <QPicture>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using Sequence = std::vector<int>;

class View : public ui::LeafView {
public:
    using LeafView::dragEnterEvent;
    using LeafView::dropEvent;
    using LeafView::LeafView;

    void paintEvent(QPaintEvent* event) override {
        mPainted += event->region();
        LeafView::paintEvent(event);
    }

    QRegion mPainted;
};

class LeafViewTest : public testing::Test {
protected:
    LeafViewTest() {
        QObject::connect(&mShared, &ui::Shared::onSelectionChanged, &mView,
                         &ui::LeafView::selectionChanged);
        mView.resize(300, 200);
    }

    /// Adds a branch at a place in the log.
    void add(int gesture, const QPointF& place, const std::vector<Sequence>& patterns = {}) {
        domain::Branch branch;
        branch.mKey = QString::number(mNest.size());
        branch.mGesture = gesture;
        branch.mBounds = QRectF(place, QSizeF(1, 1));
        for (const Sequence& sequence : patterns) {
            domain::Pattern pattern;
            for (const int index : sequence)
                pattern.mSequence.add(index);
            branch.addPattern(pattern);
        }
        ASSERT_TRUE(mNest.set(mNest.size(), branch));
    }

    void build() {
        ui::LeafBuilder(mShared.mLeaves).from(mNest);
        ui::LeafLayout(mShared.mLeaves).layout();
        mView.onModelChanged();
    }

    void select(int primary, int pattern) {
        ui::LeafSelection selection;
        selection.mPrimary = primary;
        selection.mAlternates.add(primary);
        mShared.setLeafSelection(selection);
        mShared.setPatternSelection(pattern);
    }

    /// What `draw` draws on a transparent picture of the view's size and offset.
    template <typename Draw>
    QImage imageOf(double ratio, Draw draw) {
        const QSizeF shown(mView.width() + mOffset.x(), mView.height() + mOffset.y());
        QImage image((shown * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        draw(image);
        return image;
    }

    QImage painted(double ratio = 1) {
        return imageOf(ratio, [this](QImage& image) {
            mView.render(&image, mOffset, QRegion(), QWidget::RenderFlags());
        });
    }

    QImage plain(double ratio) {
        return imageOf(ratio, [this](QImage& image) {
            QPainter painter(&image);
            painter.translate(mOffset);
            painter.setClipRect(mView.rect());
            PlainLeafView(mLook, mShared).paintOn(painter, mView.size());
        });
    }

    QPointF centre(int index) { return mShared.mLeaves.leafAt(index)->mPos; }

    Sequence selected() const {
        const auto& alternates = mShared.leafSelection().mAlternates;
        return {alternates.data(), alternates.data() + alternates.size()};
    }

    const ui::Look mLook;
    domain::Nest mNest;
    ui::Shared mShared{nullptr};
    View mView{mLook, mShared, nullptr};
    QPoint mOffset; ///< Of the view in pictures, as of a view beside another in a window.
};

TEST_F(LeafViewTest, SelectedPatternIsBlackWithGreenHeadsOverGrey) {
    add(domain::GESTURE_DOWN, {40, 40}, {{0, 1, 0}, {0, 2, 0}});
    add(domain::GESTURE_DOWN, {70, 40});
    add(domain::GESTURE_DOWN, {40, 70});
    for (const double corner : {0, 99})
        add(domain::GESTURE_DOWN, {corner, corner});
    build();
    for (const double ratio : {1, 2})
        for (const int pattern : {0, 1, 2}) {
            select(0, pattern);
            const QImage image = painted(ratio);
            for (const int other : {1, 2})
                for (const bool back : {false, true}) {
                    const QPointF from = centre(back ? other : 0), to = centre(back ? 0 : other);
                    const QPainterPath curve = ui::stroke_between(from, to, 8)->path();
                    const QPointF half = curve.pointAtPercent(0.5);
                    const QPointF head = ui::arrow_head(curve, to, 8).boundingRect().center();
                    const QColor at = image.pixelColor((half * ratio).toPoint());
                    const bool isSelected = other == pattern + 1;
                    SCOPED_TRACE(testing::Message() << pattern << other << back << " @" << ratio);
                    EXPECT_NEAR(at.red(), isSelected ? 0 : 175, 3);
                    EXPECT_GT(at.alpha(), 80);
                    EXPECT_EQ(image.pixelColor((head * ratio).toPoint()).green() == 255,
                              isSelected);
                }
            EXPECT_EQ(image.pixelColor((centre(0) * ratio).toPoint()), mLook.mPrimaryFill);
        }
}

/// Of any channel of any pixel, of 255.
int largestDifference(const QImage& a, const QImage& b) {
    const auto bytes = static_cast<std::size_t>(a.sizeInBytes());
    const uchar* other = b.constBits();
    int largest = a.size() == b.size() ? 0 : 255;
    for (std::size_t i = 0; i < bytes && largest < 255; ++i)
        largest = std::max(largest, std::abs(a.constBits()[i] - other[i]));
    return largest;
}

class RandomLeafView : public LeafViewTest {
protected:
    int below(int end) { return static_cast<int>(mRandom() % static_cast<unsigned>(end)); }

    /// Entries, some of them of no leaf or twice in a row.
    Sequence sequence(int leaves) {
        Sequence all;
        for (int left = below(8); left >= 0; --left)
            all.push_back(below(10) ? below(leaves) : below(leaves + 3) - 2);
        return all;
    }

    void model() {
        mNest.clear();
        const int leaves = 1 + below(below(3) ? 8 : 40);
        const int spread = 1 + below(300);
        for (int i = 0; i < leaves; ++i) {
            std::vector<Sequence> patterns;
            for (int left = below(6) - 1; left > 0; --left)
                patterns.push_back(sequence(leaves));
            add(below(5) ? domain::GESTURE_DOWN : domain::GESTURE_MENU,
                QPointF(below(spread), below(spread)), patterns);
        }
        build();
        if (below(3) == 0)
            mShared.mLeaves.front()->clear();
    }

    std::mt19937 mRandom{20};
};

TEST_F(RandomLeafView, PixelsAreThoseOfPlainDrawing) {
    for (int round = 0; round < 50; ++round) {
        const double ratio = round % 5 * 0.25 + 1;
        mOffset = round % 2 == 0 ? QPoint() : QPoint(1 + below(3), below(3));
        model();
        for (int step = 0; step < 8; ++step) {
            if (step % 4 == 0)
                mView.resize(1 + below(400), 1 + below(300));
            select(below(mNest.size() + 1) - 1, below(10) ? below(4) : -1);
            // Strokes of one device pixel differ a little where they leave the picture.
            const int allowed = ratio == 1 && !mOffset.isNull() ? 4 : 0;
            ASSERT_LE(largestDifference(painted(ratio), plain(ratio)), allowed)
                << round << ", step " << step << " @" << ratio;
        }
    }
}

TEST_F(RandomLeafView, LeavesOutAmongManyStrokesExactly) {
    mView.resize(500, 350);
    const int leaves = 60;
    for (int i = 0; i < leaves; ++i) {
        std::vector<Sequence> patterns;
        for (int j = 0; j < 12; ++j)
            patterns.push_back({i, below(leaves), below(leaves)});
        add(domain::GESTURE_DOWN, QPointF(below(999), below(999)), patterns);
    }
    build();
    for (const double ratio : {1.0, 2.0, 1.5})
        for (int step = 0; step < 10; ++step) {
            select(below(leaves), below(12));
            ASSERT_EQ(painted(ratio), plain(ratio)) << "step " << step << " @" << ratio;
        }
}

TEST_F(RandomLeafView, DrawnBitByBitThePixelsAreTheSameInTheEnd) {
    ui::LeafPainter painter(mLook, mShared);
    ui::LeafPicture picture(painter);
    const QDeadlineTimer over(0);
    for (int round = 0; round < 12; ++round) {
        const double ratio = round % 3 * 0.5 + 1;
        model();
        painter.onModelChanged();
        painter.placeLeaves(mView.size());
        picture.forget();
        QImage image;
        int steps = 0;
        do {
            if (steps < 300 && below(9) == 0)
                select(below(mNest.size()), below(3));
            image = imageOf(ratio, [&](QImage& onto) {
                QPainter onImage(&onto);
                ASSERT_TRUE(picture.drawOn(onImage, mView.size(), over));
            });
        } while (!picture.isWhole() && ++steps < 10000);
        ASSERT_EQ(image, plain(ratio)) << round << " @" << ratio;
        EXPECT_GT(steps, mNest.size());
    }
}

/// What the widget has drawn in its window; a grab of the screen would cut it at ratio 2.
QImage shown(const QWidget& window) {
    QBackingStore* store = window.backingStore();
    const auto* drawn = store ? dynamic_cast<const QImage*>(store->paintDevice()) : nullptr;
    return drawn ? *drawn : QImage();
}

TEST_F(LeafViewTest, OnTheScreenItIsWholeInTheEnd) {
    for (int i = 0; i < 700; ++i)
        add(domain::GESTURE_DOWN, QPointF(i * 7 % 100, i % 10), {{i, (i + 9) % 700, i}});
    build();
    select(3, 0);
    View other(mLook, mShared, nullptr);
    for (const QSize size : {QSize(300, 200), QSize(310, 210)}) {
        mView.resize(size);
        other.resize(size);
        mView.show();
        const QImage whole = other.grab().toImage();
        EXPECT_TRUE(QTest::qWaitFor([&] { return shown(mView) == whole; }));
    }
}

TEST_F(LeafViewTest, VectorsStayVectors) {
    add(domain::GESTURE_DOWN, {0, 0}, {{0, 1, 0}});
    add(domain::GESTURE_DOWN, {99, 99});
    build();
    select(0, 0);
    QPicture vectors;
    mView.render(&vectors, QPoint(), QRegion(), QWidget::RenderFlags());
    const QImage image = imageOf(1, [&vectors](QImage& onto) {
        QPainter painter(&onto);
        painter.drawPicture(0, 0, vectors);
    });
    EXPECT_EQ(image, plain(1));
    EXPECT_LT(vectors.size(), 5000U) << "less than pixels take";
}

TEST_F(LeafViewTest, SelectionThatNamesNothingShowsNothing) {
    add(domain::GESTURE_DOWN, {0, 0}, {{0, 1, 0}});
    add(domain::GESTURE_DOWN, {99, 99});
    build();
    const QImage unselected = painted();
    for (const int stale : {-7, 2, 1 << 30}) {
        select(stale, 0);
        EXPECT_EQ(painted(), unselected) << stale;
        select(0, stale);
        painted();
    }
    mNest.clear();
    build();
    EXPECT_EQ(painted(), imageOf(1, [](QImage&) {}));
}

TEST_F(LeafViewTest, PressSelectsWithinSixPixelsOfACentre) {
    add(domain::GESTURE_MENU, {0, 0});
    add(domain::GESTURE_MENU, {0, 0});
    build();
    painted();

    const struct {
        QPoint press;
        Sequence selection;
    } rows[] = {{{22, 22}, {1}}, {{28, 28}, {1}},  {{16, 16}, {1}},  {{29, 22}, {}},
                {{22, 15}, {}},  {{278, 22}, {0}}, {{284, 22}, {0}}, {{150, 22}, {}}};

    for (const auto& row : rows)
        for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
            SCOPED_TRACE(testing::Message() << row.press.x() << ", " << row.press.y());
            QTest::mousePress(&mView, button, {}, row.press);
            QTest::mouseRelease(&mView, button, {}, row.press);
            EXPECT_EQ(selected(), row.selection);
            EXPECT_EQ(mShared.leafSelection().mPrimary,
                      row.selection.empty() ? -1 : row.selection.front());
        }
}

TEST_F(LeafViewTest, BandSelectsInListOrderWhereverItBegins) {
    for (int i = 0; i < 4; ++i)
        add(domain::GESTURE_MENU, {0, 0}); // three first to last at x = 22, 107.3, 192.7, 278
    build();
    painted();
    for (const bool back : {false, true}) {
        const QPoint left(90, 40), right(190, 5);
        QTest::mousePress(&mView, Qt::LeftButton, {}, back ? right : left);
        QTest::mouseMove(&mView, back ? left : right);
        EXPECT_EQ(selected(), (Sequence{2, 1}));
        EXPECT_EQ(mShared.leafSelection().mPrimary, 2);
        QTest::mouseRelease(&mView, Qt::LeftButton, {}, back ? left : right);
        EXPECT_EQ(selected(), (Sequence{2, 1}));
        QTest::mouseClick(&mView, Qt::LeftButton, {}, QPoint(150, 100));
        EXPECT_EQ(selected(), Sequence());
    }
}

TEST_F(LeafViewTest, BandIsDrawnInWholePixelsWhileTheButtonIsDown) {
    const auto send = [this](QEvent::Type type, const QPointF& at) {
        QMouseEvent event(type, at, mView.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&mView, &event);
    };
    const auto band = [this](const QRect& box) {
        return imageOf(1, [&](QImage& image) {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(mLook.mSelectedOutline);
            painter.setBrush(mLook.mRubberBandBrush);
            painter.drawRect(box);
        });
    };
    const QImage nothing = painted();
    send(QEvent::MouseButtonPress, {40.5, 60.9});
    EXPECT_EQ(painted(), band(QRect(40, 60, 1, 1)));
    send(QEvent::MouseMove, {10.75, 100.5});
    EXPECT_EQ(painted(), band(QRect(10, 60, 29, 39)));
    send(QEvent::MouseMove, {70.25, 50.5});
    EXPECT_EQ(painted(), band(QRect(40, 50, 29, 10)));
    send(QEvent::MouseButtonRelease, {70.25, 50.5});
    EXPECT_EQ(painted(), nothing);
}

TEST_F(LeafViewTest, MoveRepaintsTheOldBandAndTheNewOne) {
    mView.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&mView));
    QTest::mousePress(&mView, Qt::LeftButton, {}, QPoint(100, 100));
    QTest::mouseMove(&mView, QPoint(140, 150));
    QCoreApplication::processEvents();
    mView.mPainted = QRegion();
    QTest::mouseMove(&mView, QPoint(60, 130));
    QCoreApplication::processEvents();
    EXPECT_EQ(mView.mPainted, QRegion(59, 99, 82, 52));
}

TEST_F(LeafViewTest, ResizingLaysTheLeavesOutAnew) {
    add(domain::GESTURE_MENU, {0, 0});
    add(domain::GESTURE_MENU, {0, 0});
    add(domain::GESTURE_DOWN, {0, 0});
    build();
    for (const QSize size : {QSize(300, 200), QSize(444, 261), QSize(20, 10)}) {
        mView.resize(size);
        painted();
        EXPECT_EQ(centre(1), QPointF(22, 22));
        EXPECT_EQ(centre(0), QPointF(size.width() - 22, 22));
        EXPECT_EQ(centre(2), QPointF(size.width() / 2.0, 39 + (size.height() - 61) / 2.0));
    }
    EXPECT_EQ(mView.sizeHint(), QSize(500, 400));
    EXPECT_EQ(mView.minimumSizeHint(), QSize(-1, -1));
}

TEST_F(LeafViewTest, DropAsksForItsFirstFile) {
    const QUrl first(QStringLiteral("file:///a.json")), other(QStringLiteral("file:///b.json"));

    const struct {
        QList<QUrl> urls;
        int requests;
    } rows[] = {{{first, other, other}, 1}, {{first}, 1}, {{}, 0}};

    for (const auto& row : rows) {
        QMimeData mime;
        mime.setText(QStringLiteral("text"));
        if (!row.urls.isEmpty())
            mime.setUrls(row.urls);
        const QSignalSpy requests(&mView, &ui::LeafView::requestLoad);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QDropEvent drop({5, 5}, Qt::CopyAction, &mime, Qt::LeftButton, {});
        enter.ignore();
        drop.ignore();
        mView.dragEnterEvent(&enter);
        mView.dropEvent(&drop);
        EXPECT_EQ(requests.size(), row.requests);
        EXPECT_EQ(enter.isAccepted(), row.requests == 1);
        EXPECT_EQ(drop.isAccepted(), row.requests == 1);
        EXPECT_EQ(requests.value(0).value(0).toUrl(), row.requests ? first : QUrl());
    }
    EXPECT_TRUE(mView.acceptDrops());
}

} // namespace
