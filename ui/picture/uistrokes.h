#pragma once

#include "ui/picture/uistroke.h"
#include "ui/picture/uistroketable.h"

#include <QHash>
#include <QList>

namespace ui {

class Slice;

/// The strokes of all patterns of a list of leaves, where the leaves are: each differing curve
/// once, in the order in which a walk over leaves and patterns meets them. Strokes between the same
/// two points are one, whichever leaves lie there: hundreds of leaves may share a point. Strokes
/// are known by position; one that is not finite is not among them.
///
/// Refers to leaves and patterns as they were when it took them. Main thread only: the walk over
/// all patterns, and all curves, take long and are done bit by bit.
class Strokes {
public:
    /// `leaves` outlives the strokes; `radius` is that of a leaf's circle, in view pixels.
    Strokes(const LeafList& leaves, double radius);

    /// To be called when leaves or patterns are others.
    void forget();

    /// To be called when leaves are elsewhere.
    void forgetPlaces();

    /// Goes on collecting and placing strokes; true when all are placed. Nothing below may be
    /// called before. Throws `std::bad_alloc` and begins anew the next time.
    bool place(Slice& slice);

    int size() const { return static_cast<int>(mPlaced.size()); }

    const stroke& curve(int position) const { return mPlaced[position].curve; }

    /// The centre of the circle where it ends.
    QPointF target(int position) const { return mPlaced[position].to->mPos; }

    /// Whether no other pattern than `pattern` has the stroke; false for null.
    bool isOnlyIn(int position, const domain::Pattern* pattern) const;

    /// The strokes of a pattern of the leaves, each once, in the pattern's order.
    QList<int> of(const domain::Pattern& pattern) const;

private:
    struct placed {
        stroke curve;
        const Leaf* to = nullptr;
        const domain::Pattern* onlyUser = nullptr; // null when several patterns have it
    };

    /// The centres of two circles. Points close to each other are not the same, as they would be
    /// for `QPointF`.
    struct way {
        bool operator==(const way& other) const = default;

        friend size_t qHash(const way& way, size_t seed) {
            return qHashMulti(seed, way.fromX, way.fromY, way.toX, way.toY);
        }

        double fromX;
        double fromY;
        double toX;
        double toY;
    };

    bool placeAll(Slice& slice);
    int place(const StrokeTable::entry& entry);

    double mRadius;
    StrokeTable mTable;
    QList<placed> mPlaced;
    QList<int> mPositions;     // in mPlaced by position in the table; -1 for a curve not finite
    QHash<way, int> mPlacedOn; // positions in mPlaced
};

} // namespace ui
