#include "import/importtexts.h"

#include <functional>

namespace import {

namespace {

std::size_t hashOf(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

} // namespace

std::uint32_t Texts::numberOf(std::string_view text) {
    const std::size_t hash = hashOf(text);
    const std::size_t last = mSlots.size() - 1;
    for (std::size_t at = hash & last; mSlots[at].number != EMPTY; at = (at + 1) & last) {
        const slot& known = mSlots[at];
        if (known.hash == static_cast<std::uint32_t>(hash) && mTexts[known.number] == text)
            return known.number;
    }
    const auto number = static_cast<std::uint32_t>(mTexts.size());
    mTexts.emplace_back(text);
    if (2 * mTexts.size() > mSlots.size())
        grow();
    else
        insert(hash, number);
    return number;
}

void Texts::insert(std::size_t hash, std::uint32_t number) {
    const std::size_t last = mSlots.size() - 1;
    std::size_t at = hash & last;
    while (mSlots[at].number != EMPTY)
        at = (at + 1) & last;
    mSlots[at] = {static_cast<std::uint32_t>(hash), number};
}

void Texts::grow() {
    mSlots.assign(2 * mSlots.size(), {});
    for (std::uint32_t number = 0; number < mTexts.size(); ++number)
        insert(hashOf(mTexts[number]), number);
}

} // namespace import
