#pragma once

#include "domain/domainnest.h"
#include "ui/leaves/uileaflist.h"

namespace ui {

/// Rebuilds a list of leaves from a nest.
class LeafBuilder {
public:
    /// `leaves` is filled by the builder and outlives it.
    explicit LeafBuilder(LeafList& leaves)
        : mLeaves(leaves) {}

    /// Replaces the leaves by one for each branch, up to the first slot without one; the last
    /// branch comes first. The leaves point at the branches, so `nest` stays as it is while they
    /// are in use. They have no position yet. Out of memory, the leaves made so far remain.
    void from(const domain::Nest& nest);

private:
    LeafList& mLeaves;
};

} // namespace ui
