#pragma once

#include "ui/leaves/uileaflist.h"

#include <QList>

#include <optional>
#include <unordered_map>
#include <vector>

namespace ui {

class Slice;

/// The strokes that draw all patterns of a list of leaves, each differing one once, in the order
/// in which a walk over leaves and patterns meets them. A long log repeats every stroke a hundred
/// times; drawn more than once its smooth edges would grow dark. Strokes are known by position.
///
/// A stroke joins two different leaves that follow each other in a pattern; an entry of a pattern
/// that names no leaf joins nothing.
///
/// Refers to the leaves and patterns as they were when it was built. Main thread only: the walk
/// over every entry of every pattern, which takes long, is done bit by bit.
class StrokeTable {
public:
    struct entry {
        const Leaf* from;
        const Leaf* to;
        const domain::Pattern* onlyUser; ///< Null when several patterns have the stroke.
    };

    /// `leaves` outlives the table.
    explicit StrokeTable(const LeafList& leaves)
        : mLeaves(leaves) {}

    /// Drops all strokes; the next `advance` begins to collect.
    void clear();

    /// Collects more strokes of the leaves, which stay as they are; true when all are there. May
    /// throw `std::bad_alloc`; `clear` it then.
    bool advance(Slice& slice);

    const QList<entry>& entries() const { return mEntries; }

    /// The strokes of a pattern of the leaves, in the pattern's order and as often as it has them.
    QList<int> strokesOf(const domain::Pattern& pattern) const;

private:
    void begin();
    bool nextPattern();
    bool nextLeaf();
    void addStrokes(const domain::Pattern& pattern, int end);
    void addUse(int from, int to, const domain::Pattern& user);

    const LeafList& mLeaves;
    QList<entry> mEntries;
    std::unordered_map<quint64, int> mPositions; // by the indices of both leaves

    // Keys of strokes that several patterns have, each in the one slot that it may be in: most
    // pairs of entries are among them and need no further look. A zero is no key.
    std::vector<quint64> mSettled;

    // How far the walk is, empty before it: the leaves whose patterns are to come, the patterns of
    // the leaf that it is at, and the entry that the next stroke of their first leads to.
    std::optional<ManagedListIterator<Leaf*>> mLeaf;
    std::optional<ManagedListReader<domain::Pattern*>> mPattern;
    int mNext = 1;
};

} // namespace ui
