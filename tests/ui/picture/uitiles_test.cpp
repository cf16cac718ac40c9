#include "ui/picture/uitileindex.h"
#include "ui/picture/uitileset.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

namespace {

using ui::TileSet;

class Tiles : public testing::Test {
protected:
    int below(int end) { return static_cast<int>(mRandom() % static_cast<unsigned>(end)); }

    ui::TileGrid newGrid() {
        const double ratio = 1 + below(5) * 0.25;
        return {QTransform(ratio, 0, 0, ratio, 0.25, 0.5), QSize(1 + below(250), 1 + below(200))};
    }

    /// In columns and rows.
    QRect tilesOf(const ui::TileGrid& grid) {
        const int column = below(grid.columns()), row = below(grid.rows());
        return {column, row, 1 + below(grid.columns() - column), 1 + below(grid.rows() - row)};
    }

    std::mt19937 mRandom{5};
};

constexpr int BESIDE = 40; // of the picture, so that what is drawn beside it is seen too

bool isInked(const QImage& image, const QRect& rect) {
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (qAlpha(image.pixel(x + BESIDE, y + BESIDE)) > 0)
                return true;
    return false;
}

TEST_F(Tiles, OfAStrokeAreThoseWhereItIsDrawn) {
    for (int round = 0; round < 80; ++round) {
        const ui::TileGrid grid = newGrid();
        const auto curve = ui::stroke_between(QPointF(below(400) - 80, below(300) - 50),
                                              QPointF(below(400) - 80, below(300) - 50), 8);
        const QRect all = grid.pixels({0, 0, grid.columns(), grid.rows()});
        QImage image(all.size() + 2 * QSize(BESIDE, BESIDE), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(grid.toPixels() * QTransform::fromTranslate(BESIDE, BESIDE));
        painter.drawPath(curve->path());
        QList<int> found;
        grid.collect(*curve, found);
        for (int tile = 0; tile < grid.count(); ++tile) {
            const QRect pixels = grid.pixels(grid.rectOf(tile));
            const bool isDrawn = isInked(image, pixels);
            const bool isNear = isInked(image, pixels.adjusted(-BESIDE, -BESIDE, BESIDE, BESIDE));
            ASSERT_TRUE(found.contains(tile) ? isNear : !isDrawn) << round << ": " << tile;
            ASSERT_TRUE(grid.mayTouch(*curve, pixels) ? isNear : !isDrawn) << round << ": " << tile;
        }
    }
}

TEST_F(Tiles, AreTakenInRectanglesOfOneWay) {
    for (int round = 0; round < 50; ++round) {
        const ui::TileGrid grid = newGrid();
        TileSet set(grid);
        std::map<int, TileSet::Way> waiting;
        for (int step = 0; step < 60; ++step) {
            const QRect added = tilesOf(grid);
            const TileSet::Way way = below(3) ? TileSet::PLAIN : TileSet::COSTLY;
            for (int tile = 0; tile < grid.count(); ++tile) {
                if (added.intersects(grid.rectOf(tile)))
                    set.add(tile, waiting[tile] = way);
            }
            while (!set.isEmpty() && below(4)) {
                const auto first = *waiting.begin();
                ASSERT_EQ(set.firstRow(), grid.rectOf(first.first).y());
                const int most = 1 + below(9);
                const QRect taken = set.take(most);
                ASSERT_EQ(taken.topLeft(), grid.rectOf(first.first).topLeft());
                ASSERT_LE(taken.height(), most);
                for (int row = taken.top(); row <= taken.bottom(); ++row)
                    for (int column = taken.left(); column <= taken.right(); ++column) {
                        const auto tile = waiting.extract(grid.tile(column, row));
                        ASSERT_TRUE(tile && tile.mapped() == first.second);
                    }
            }
            ASSERT_EQ(set.isEmpty(), waiting.empty());
        }
    }
}

TEST_F(Tiles, KnowWhatLiesOnThem) {
    for (int round = 0; round < 50; ++round) {
        const ui::TileGrid grid = newGrid();
        ui::TileIndex index(grid);
        std::map<int, std::set<int>> plain;
        for (int thing = 0; thing < 40; ++thing) {
            const int tile = below(grid.count());
            for (const int other : {thing, thing / 2})
                if (plain[tile].insert(other).second)
                    index.add(other, tile);
            ASSERT_EQ(index.countOn(tile), plain[tile].size());
        }
        const QRect tiles = tilesOf(grid);
        std::set<int> things;
        QList<int> used;
        for (const auto& [tile, on] : plain) {
            used.append(tile);
            if (tiles.intersects(grid.rectOf(tile)))
                things.insert(on.begin(), on.end());
        }
        QList<int> collected;
        index.collect(collected);
        EXPECT_EQ(collected, used);
        EXPECT_EQ(index.on(tiles), QList<int>(things.begin(), things.end()));
    }
}

} // namespace
