#pragma once

#include "ui/uileaflist.h"

#include <QList>

#include <unordered_map>

namespace ui {

/// The strokes that draw all patterns of a list of leaves, each differing one once, in the order
/// in which a walk over leaves and patterns meets them. A long log repeats every stroke a hundred
/// times; drawn more than once its smooth edges would grow dark. Strokes are known by position.
///
/// A stroke joins two different leaves that follow each other in a pattern; an entry of a pattern
/// that names no leaf joins nothing.
///
/// Refers to the leaves and patterns as they were when it was built. Main thread only.
class StrokeTable {
public:
    struct entry {
        const Leaf* from;
        const Leaf* to;
        const domain::Pattern* onlyUser; ///< Null when several patterns have the stroke.
    };

    void clear();

    /// Replaces all strokes by those of `leaves`. Walks every entry of every pattern.
    void build(const LeafList& leaves);

    const QList<entry>& entries() const { return mEntries; }

    /// The strokes of a pattern of the leaves, each once, in the pattern's order.
    QList<int> strokesOf(const domain::Pattern& pattern) const;

    /// Whether no other pattern than `pattern` has the stroke; false for null.
    bool isOnlyIn(int stroke, const domain::Pattern* pattern) const;

private:
    void addPattern(const LeafList& leaves, const domain::Pattern& pattern);
    void addUse(const Leaf& from, const Leaf& to, const domain::Pattern& user);

    QList<entry> mEntries;
    std::unordered_map<quint64, int> mPositions; // by the indices of both leaves
};

} // namespace ui
