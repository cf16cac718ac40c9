#include "ui/leaves/uileafrank.h"

#include "ui/leaves/uishared.h"

#include <QList>

#include <algorithm>
#include <utility>

namespace ui {

namespace {

QList<leaf_select> rankedLeaves(const LeafList& leaves) {
    QList<leaf_select> ranked;
    for (const Leaf* leaf : leaves) {
        const domain::Branch* branch = leaf->mBranch;
        if (branch && branch->hasPatterns())
            ranked.append(leaf_select(branch->maxPatternCount(), leaf->mIndex));
    }
    return ranked;
}

} // namespace

bool descendingRank(const leaf_select& a, const leaf_select& b) {
    return a.rank != b.rank ? a.rank > b.rank : a.index < b.index;
}

void sort(const LeafList& leaves, bool (*before)(const leaf_select&, const leaf_select&),
          RecycleArray<int>& order) {
    QList<leaf_select> ranked = rankedLeaves(leaves);
    std::sort(ranked.begin(), ranked.end(), before);
    order.setSize(0);
    for (const leaf_select& leaf : std::as_const(ranked)) {
        if (!order.add(leaf.index))
            return;
    }
}

void select_by_rank(Shared& shared) {
    LeafSelection selection;
    sort(shared.mLeaves, descendingRank, selection.mAlternates);
    if (selection.mAlternates.size() > 0)
        selection.mPrimary = selection.mAlternates[0];
    shared.setLeafSelection(selection);
}

} // namespace ui
