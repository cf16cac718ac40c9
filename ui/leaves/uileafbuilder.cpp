#include "ui/leaves/uileafbuilder.h"

#include <exception>

namespace ui {

void LeafBuilder::from(const domain::Nest& nest) {
    mLeaves.clear();
    try {
        Leaf leaf;
        for (int i = 0; const domain::Branch* branch = nest.branchAt(i); ++i) {
            leaf.setTo(*branch);
            leaf.mIndex = i;
            mLeaves.add(leaf);
        }
    } catch (const std::exception&) {
        return;
    }
}

} // namespace ui
