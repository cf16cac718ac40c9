#pragma once

#include "collections/recyclearray.h"
#include "ui/leaves/uileaflist.h"

namespace ui {

class Shared;

/// A leaf as the rank order sees it. What is selected is a `LeafSelection`.
struct leaf_select {
    leaf_select() = default;

    leaf_select(int leafRank, int leafIndex)
        : rank(leafRank)
        , index(leafIndex) {}

    int rank = 0;  ///< The largest pattern count of the leaf's branch.
    int index = 0; ///< `Leaf::mIndex`.
};

/// Whether `a` comes before `b`: higher ranks first, lower indices first among equal ranks.
bool descendingRank(const leaf_select& a, const leaf_select& b);

/// Replaces `order` by the indices of the leaves whose branches have patterns, in the order of
/// `before`, a strict order that tells any two leaves apart. Out of memory, the first of them.
void sort(const LeafList& leaves, bool (*before)(const leaf_select&, const leaf_select&),
          RecycleArray<int>& order);

/// Selects all leaves whose branches have patterns, highest rank first, the highest in focus.
void select_by_rank(Shared& shared);

} // namespace ui
