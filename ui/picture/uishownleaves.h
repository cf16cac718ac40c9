#pragma once

#include "ui/leaves/uileaflist.h"
#include "ui/leaves/uileafselection.h"
#include "ui/picture/uitileindex.h"

#include <QList>
#include <QPointF>

namespace ui {

/// The leaves as a picture shows them: where they are, on which tiles, and how the selection lets
/// them look. Leaves are known by their position in the list. Main thread only.
class ShownLeaves {
public:
    void clear();

    /// Takes the leaves as they are, with circles of `radius`.
    void take(const LeafList& leaves, double radius, const TileGrid& grid,
              const LeafSelection& selection);

    /// Whether these are the leaves, at the same places.
    bool are(const LeafList& leaves) const;

    /// Lets them look as `selection` says, and appends the tiles of those that look different now.
    /// False when it is the selection they were shown with.
    bool follow(const LeafSelection& selection, QList<int>& tiles);

    qsizetype size() const { return mLeaves.size(); }

    const Leaf& at(int leaf) const { return *mLeaves[leaf].leaf; }

    const TileIndex& tiles() const { return mTiles; }

private:
    /// What of the selection `Leaf::drawOn` looks at.
    enum class Look : char { PLAIN, SELECTED, IN_FOCUS };

    struct shown {
        const Leaf* leaf = nullptr;
        QPointF place;
        Look look = Look::PLAIN;
    };

    static Look lookOf(const Leaf& leaf, const LeafSelection& selection);
    void collect(const shown& leaf, QList<int>& tiles) const;

    double mRadius = 0;
    TileGrid mGrid;
    QList<shown> mLeaves;
    TileIndex mTiles;
    LeafSelection mSelection;
};

} // namespace ui
