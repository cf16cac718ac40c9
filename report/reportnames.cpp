#include "report/reportnames.h"

#include "report/reportoutput.h"
#include "report/reportshortkeys.h"
#include "ui/leaves/uishared.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

#include <algorithm>
#include <optional>
#include <vector>

namespace report {

namespace {

constexpr int LONGEST = 28; // characters of a name
constexpr int FONT_PIXELS = 12;
constexpr qreal GAP = 2;

/// Which cells of a picture are taken, in a grid fine enough for names.
class Grid {
public:
    explicit Grid(const QSize& size)
        : mColumns(size.width() / CELL + 1)
        , mArea(QPointF(), size)
        , mTaken(static_cast<std::size_t>(mColumns) *
                 static_cast<std::size_t>(size.height() / CELL + 1)) {}

    /// Whether a box lies within the picture, and on nothing.
    bool isFree(const QRectF& box) const {
        if (!mArea.contains(box))
            return false;
        bool isFree = true;
        forCells(box, [&](std::size_t cell) { isFree = isFree && !mTaken[cell]; });
        return isFree;
    }

    void take(const QRectF& box) {
        forCells(box & mArea, [&](std::size_t cell) { mTaken[cell] = true; });
    }

private:
    static constexpr int CELL = 2;

    template <typename Visit>
    void forCells(const QRectF& box, const Visit& visit) const {
        for (int y = static_cast<int>(box.top()) / CELL; y <= static_cast<int>(box.bottom()) / CELL;
             ++y) {
            for (int x = static_cast<int>(box.left()) / CELL;
                 x <= static_cast<int>(box.right()) / CELL; ++x)
                visit(static_cast<std::size_t>(y) * static_cast<std::size_t>(mColumns) +
                      static_cast<std::size_t>(x));
        }
    }

    int mColumns;
    QRectF mArea;
    std::vector<bool> mTaken;
};

/// Of each key how early its name is to be written.
std::vector<int> turnsOf(const Findings& findings, const ui::Shared& shared) {
    std::vector<int> turns(findings.keys().size(), 2);
    const auto let = [&](const domain::Pattern& pattern, int turn) {
        for (const int index : pattern.run())
            turns[static_cast<std::size_t>(index)] = turn;
    };
    for (const key_findings& key : findings.keys()) {
        for (const found_pattern& found : key.patterns)
            let(*found.pattern, 1);
    }
    if (const domain::Pattern* selected = shared.selectedPattern())
        let(*selected, 0);
    return turns;
}

/// Those that are written first in front, within a turn those with most events.
std::vector<const ui::Leaf*> inTurn(const Findings& findings, const ui::Shared& shared) {
    const std::vector<int> turns = turnsOf(findings, shared);
    const auto turnOf = [&](const ui::Leaf* leaf) {
        const auto at = static_cast<std::size_t>(leaf->mIndex);
        return std::make_pair(turns[at], -findings.keys()[at].figures->events);
    };
    std::vector<const ui::Leaf*> leaves;
    for (const ui::Leaf* leaf : shared.mLeaves)
        leaves.push_back(leaf);
    std::stable_sort(leaves.begin(), leaves.end(),
                     [&](const ui::Leaf* a, const ui::Leaf* b) { return turnOf(a) < turnOf(b); });
    return leaves;
}

/// Right, left, below and above of a leaf.
std::optional<QRectF> roomFor(const QSizeF& size, const QPointF& leaf, qreal reach,
                              const Grid& grid) {
    const qreal left = leaf.x() - reach - size.width();
    const qreal middle = leaf.x() - size.width() / 2;
    const qreal beside = leaf.y() - size.height() / 2;
    for (const QPointF& corner :
         {QPointF(leaf.x() + reach, beside), QPointF(left, beside),
          QPointF(middle, leaf.y() + reach), QPointF(middle, leaf.y() - reach - size.height())}) {
        if (grid.isFree(QRectF(corner, size)))
            return QRectF(corner, size);
    }
    return {};
}

QStringList allKeys(const Findings& findings) {
    QStringList keys;
    for (const key_findings& key : findings.keys()) {
        if (key.branch->isValid())
            keys += printable(key.branch->mKey);
    }
    keys.removeDuplicates(); // what cannot be printed looks the same
    return keys;
}

/// On a faint ground, as strokes may run below.
void write(QPainter& painter, const QRectF& box, const QString& name) {
    painter.fillRect(box, QColor(255, 255, 255, 190));
    painter.setPen(Qt::black);
    painter.drawText(QPointF(box.left(), box.top() + painter.fontMetrics().ascent()), name);
}

} // namespace

void write_names(QPainter& painter, const Findings& findings, const ui::Shared& shared,
                 double leafRadius, const QSize& size) {
    QFont font = painter.font();
    font.setPixelSize(FONT_PIXELS); // the same size in each kind of picture
    painter.setFont(font);
    const QFontMetricsF metrics(font, painter.device());
    const ShortKeys shortKeys(allKeys(findings));
    const qreal reach = leafRadius + GAP;
    Grid grid(size);
    for (const ui::Leaf* leaf : shared.mLeaves)
        grid.take(QRectF(leaf->mPos.x() - leafRadius, leaf->mPos.y() - leafRadius, 2 * leafRadius,
                         2 * leafRadius));
    for (const ui::Leaf* leaf : inTurn(findings, shared)) {
        const QString name = shortKeys.longest(printable(leaf->mKey), LONGEST);
        const QSizeF needed(metrics.horizontalAdvance(name), metrics.height());
        const std::optional<QRectF> room = roomFor(needed, leaf->mPos, reach, grid);
        if (name.isEmpty() || !room)
            continue;
        grid.take(*room);
        write(painter, *room, name);
    }
}

} // namespace report
