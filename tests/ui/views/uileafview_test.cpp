#include "fuzz/plain/plainleafview.h"
#include "tests/common/scene.h"
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

class LeafViewTest : public testing::Test, protected model::Scene {
protected:
    LeafViewTest() {
        QObject::connect(&mShared, &ui::Shared::onSelectionChanged, &mView,
                         &ui::LeafView::selectionChanged);
        mView.resize(300, 200);
    }

    /// Adds a branch at a place in the log.
    void add(int gesture, const QPointF& place, const std::vector<Sequence>& patterns = {}) {
        std::vector<model::counted> counted;
        for (const Sequence& sequence : patterns)
            counted.push_back({sequence});
        Scene::add(counted, gesture, place);
    }

    void build() {
        Scene::build();
        mView.onModelChanged();
    }

    void select(int primary, int pattern) { Scene::select(primary, {primary}, pattern); }

    /// What `draw` draws on a picture of the view's size and offset.
    template <typename Draw>
    QImage imageOf(double ratio, Draw draw) {
        const QSizeF shown(mView.width() + mOffset.x(), mView.height() + mOffset.y());
        QImage image((shown * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(mGround);
        draw(image);
        return image;
    }

    QImage painted(double ratio = 1) {
        return imageOf(ratio, [this](QImage& image) {
            mView.render(&image, mOffset, QRegion(), QWidget::RenderFlags());
        });
    }

    template <typename... Size>
    QImage plain(double ratio, Size... size) {
        return imageOf(ratio, [&](QImage& image) {
            QPainter painter(&image);
            painter.translate(mOffset);
            painter.setClipRect(mView.rect());
            PlainLeafView(mLook, mShared).paintOn(painter, size...);
        });
    }

    QPointF centre(int index) { return mShared.mLeaves.leafAt(index)->mPos; }

    Sequence selected() const {
        const auto& alternates = mShared.leafSelection().mAlternates;
        return {alternates.data(), alternates.data() + alternates.size()};
    }

    View mView{mLook, mShared, nullptr};
    QColor mGround = Qt::transparent; ///< Of pictures.
    QPoint mOffset; ///< Of the view in pictures, as of a view beside another in a window.
};

TEST_F(LeafViewTest, StrokesAreGreyAndSelectedOnesBlackWithGreenHeads) {
    add(domain::GESTURE_DOWN, {0, 50}, {{0, 1, 0}, {0, 2, 0}});
    add(domain::GESTURE_DOWN, {99, 0});
    add(domain::GESTURE_DOWN, {99, 99});
    build();
    select(0, 0);
    const QImage image = painted(4);
    const auto at = [&image](const QPointF& place) {
        return image.pixelColor((place * 4).toPoint());
    };
    const auto curve = [this](int to) {
        return ui::stroke_between(centre(0), centre(to), 8)->path();
    };
    EXPECT_EQ(at(curve(1).pointAtPercent(0.5)), QColor(0, 0, 0));
    EXPECT_EQ(at(curve(2).pointAtPercent(0.5)), QColor(175, 175, 175));
    EXPECT_EQ(at(ui::arrow_head(curve(1), centre(1), 8).boundingRect().center()),
              QColor(0, 255, 0));
    EXPECT_EQ(at(centre(0)), QColor(0, 255, 0));
}

// Of 255, where strokes are mixed in another order, or before they are laid over a ground.
constexpr int ROUNDING = 3;

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
            mGround = step % 2 ? Qt::white : Qt::transparent;
            // Strokes of one device pixel differ a little where they leave the picture.
            const int allowed = ROUNDING + (ratio == 1 && !mOffset.isNull() ? 4 : 0);
            ASSERT_LE(largestDifference(painted(ratio), plain(ratio, mView.size())), allowed)
                << round << ", step " << step << " @" << ratio;
        }
        // By hand, and nobody told.
        mShared.mLeaves.front()->mPos += QPointF(below(50), below(50));
        ASSERT_LE(largestDifference(painted(ratio), plain(ratio)), ROUNDING + 4)
            << round << " @" << ratio;
    }
}

TEST_F(RandomLeafView, LeavesOutAmongManyStrokes) {
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
            ASSERT_LE(largestDifference(painted(ratio), plain(ratio, mView.size())), ROUNDING)
                << "step " << step << " @" << ratio;
        }
}

TEST_F(RandomLeafView, DrawnBitByBitThePixelsAreTheSameInTheEnd) {
    ui::LeafPainter painter(mLook, mShared);
    ui::LeafPicture picture(painter);
    const QDeadlineTimer over(0);
    for (int round = 0; round < 12; ++round) {
        const double ratio = round % 3 * 0.5 + 1;
        model();
        painter.placeLeaves(mView.size());
        picture.onModelChanged();
        QImage image;
        int steps = 0;
        do {
            if (steps < 300 && below(9) == 0)
                select(below(mNest.size()), below(3));
            const QImage before = image;
            image = imageOf(ratio, [&](QImage& onto) {
                QPainter onImage(&onto);
                ASSERT_TRUE(picture.drawOn(onImage, mView.size(), over));
            });
            ASSERT_TRUE(picture.isNew() || before.isNull() || image == before);
        } while (!picture.isWhole() && ++steps < 10000);
        ASSERT_LE(largestDifference(image, plain(ratio, mView.size())), ROUNDING) << round;
        QPainter again(&image);
        ASSERT_TRUE(picture.drawOn(again, mView.size(), over) && !picture.isNew());
        EXPECT_GT(steps, mNest.size());
    }
}

TEST_F(LeafViewTest, StrokesAreShownBeforeAllAreDrawn) {
    const int leaves = 50;
    for (int i = 0; i < leaves; ++i)
        add(domain::GESTURE_DOWN, QPointF(i * 2, i % 3 * 49), {{i, (i + 9) % leaves, i}});
    build();
    ui::LeafPainter painter(mLook, mShared);
    painter.placeLeaves(mView.size());
    const auto first = ui::stroke_between(centre(leaves - 1), centre(8), 8);
    const QPoint onFirst = first->path().pointAtPercent(0.5).toPoint();
    ui::LeafPicture picture(painter);
    int steps = 0, firstSeen = 0;
    do {
        ++steps;
        const QImage image = imageOf(1, [&](QImage& onto) {
            QPainter onImage(&onto);
            ASSERT_TRUE(picture.drawOn(onImage, mView.size(), QDeadlineTimer(0)));
        });
        if (firstSeen == 0 && image.pixelColor(onFirst).alpha() > 0)
            firstSeen = steps;
    } while (!picture.isWhole() && steps < 1000);
    EXPECT_GT(firstSeen, leaves) << "leaves come first";
    EXPECT_LT(firstSeen, steps - 2 * leaves) << "most strokes and all leaves are still to come";
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
    EXPECT_EQ(image, plain(1, mView.size()));
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

TEST_F(LeafViewTest, DropAsksForItsFirstFile) {
    const QUrl first(QStringLiteral("file:///a.json")), other(QStringLiteral("file:///b.json"));

    const struct {
        QList<QUrl> urls;
        Qt::DropActions offered; // a move proposed, after which the source deletes its file
        int requests;
        Qt::DropAction taken;
    } rows[] = {{{first, other, other}, Qt::CopyAction | Qt::MoveAction, 1, Qt::CopyAction},
                {{first}, Qt::MoveAction, 1, Qt::IgnoreAction},
                {{}, Qt::CopyAction | Qt::MoveAction, 0, Qt::MoveAction}};

    for (const auto& row : rows) {
        QMimeData mime;
        mime.setText(QStringLiteral("text"));
        if (!row.urls.isEmpty())
            mime.setUrls(row.urls);
        const QSignalSpy requests(&mView, &ui::LeafView::requestLoad);
        QDragEnterEvent enter({5, 5}, row.offered, &mime, Qt::LeftButton, {});
        QDropEvent drop({5, 5}, row.offered, &mime, Qt::LeftButton, {});
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), &drop}) {
            event->setDropAction(Qt::MoveAction);
            event->ignore();
        }
        mView.dragEnterEvent(&enter);
        mView.dropEvent(&drop);
        EXPECT_EQ(requests.size(), row.requests);
        EXPECT_EQ(enter.isAccepted(), row.requests == 1);
        EXPECT_EQ(drop.isAccepted(), row.requests == 1);
        EXPECT_EQ(drop.dropAction(), row.taken);
        EXPECT_EQ(requests.value(0).value(0).toUrl(), row.requests ? first : QUrl());
    }
    EXPECT_TRUE(mView.acceptDrops());
}

} // namespace
