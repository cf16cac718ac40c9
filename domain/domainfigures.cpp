#include "domain/domainfigures.h"

#include "domain/domainnest.h"

#include <new>
#include <utility>

namespace domain {

namespace {

std::size_t patternsAt(const Nest& nest, int index) {
    const Branch* branch = nest.branchAt(index);
    return static_cast<std::size_t>(branch ? branch->patternSize() : 0);
}

/// Where the patterns of each branch begin among all.
std::vector<std::size_t> beginsOf(const std::vector<anchored_figures>& stored, const Nest& nest) {
    std::vector<std::size_t> sizes(static_cast<std::size_t>(nest.size()));
    for (const anchored_figures& pattern : stored)
        ++sizes[static_cast<std::size_t>(pattern.anchor)];
    std::size_t begin = 0;
    for (int i = 0; i < nest.size(); ++i) {
        std::size_t& size = sizes[static_cast<std::size_t>(i)];
        if (size != patternsAt(nest, i))
            throw std::bad_alloc();
        begin += std::exchange(size, begin);
    }
    return sizes;
}

} // namespace

/// A branch has its patterns in the order in which they were stored, so counting tells which is
/// which.
std::vector<pattern_figures> in_nest_order(const std::vector<anchored_figures>& stored,
                                           const Nest& nest) {
    std::vector<std::size_t> next = beginsOf(stored, nest);
    std::vector<pattern_figures> ordered(stored.size());
    for (const anchored_figures& pattern : stored)
        ordered[next[static_cast<std::size_t>(pattern.anchor)]++] = pattern.figures;
    return ordered;
}

} // namespace domain
