#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace import {

/// Texts by number, from 0 in the order in which they first came. Looked up for every event: a
/// table of the standard library divides for each, which takes longer than all the rest.
class Texts {
public:
    std::uint32_t numberOf(std::string_view text);

    /// Valid as long as this.
    std::string_view operator[](std::uint32_t number) const { return mTexts[number]; }

private:
    void insert(std::size_t hash, std::uint32_t number);
    void grow();

    struct slot {
        std::uint32_t hash = 0;
        std::uint32_t number = EMPTY;
    };

    static constexpr std::uint32_t EMPTY = UINT32_MAX;

    std::deque<std::string> mTexts;
    std::vector<slot> mSlots = std::vector<slot>(16); // a power of two, at least twice the texts
};

} // namespace import
