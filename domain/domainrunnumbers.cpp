#include "domain/domainrunnumbers.h"

#include <algorithm>

namespace domain {

namespace {

constexpr std::size_t FIRST_NUMBERS = 64;

} // namespace

int RunNumbers::of(quint64 hash) {
    if (static_cast<std::size_t>(mSize) * 2 >= mSlots.size())
        grow();
    slot& known = slotOf(mSlots, hash);
    if (known.number < 0)
        known = {hash, mSize++};
    return known.number;
}

void RunNumbers::grow() {
    std::vector<slot> slots(std::max(FIRST_NUMBERS, mSlots.size() * 2));
    for (const slot& entry : mSlots) {
        if (entry.number >= 0)
            slotOf(slots, entry.hash) = entry;
    }
    mSlots.swap(slots);
}

/// Where `hash` is or is to be put.
RunNumbers::slot& RunNumbers::slotOf(std::vector<slot>& slots, quint64 hash) {
    const std::size_t mask = slots.size() - 1;
    std::size_t at = hash & mask;
    while (slots[at].number >= 0 && slots[at].hash != hash)
        at = (at + 1) & mask;
    return slots[at];
}

} // namespace domain
