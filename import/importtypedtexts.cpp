#include "import/importtypedtexts.h"

#include <algorithm>

namespace import {

namespace {

constexpr std::size_t SHORTEST = 3; // bytes; less is in too many names
constexpr std::size_t LONGEST = 1000;
constexpr std::size_t MOST = 1000;

} // namespace

void TypedTexts::add(std::string_view text) {
    if (text.size() < SHORTEST)
        return;
    const std::string kept(text.substr(0, LONGEST));
    if (mTexts.size() < MOST) {
        mTexts.push_back(kept);
        return;
    }
    mTexts[mNext] = kept;
    mNext = (mNext + 1) % MOST;
}

bool TypedTexts::areIn(std::string_view name) const {
    return std::any_of(mTexts.begin(), mTexts.end(), [&](const std::string& text) {
        return name.find(text) != std::string_view::npos;
    });
}

} // namespace import
