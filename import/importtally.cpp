#include "import/importtally.h"

#include "import/importtext.h"

namespace import {

namespace {

constexpr std::size_t MOST_NAMES = 100;
constexpr std::size_t LONGEST_COUNTED = 60; // bytes
constexpr std::string_view OTHERS = "others";

} // namespace

void Tally::count(std::string_view name, std::int64_t times) {
    if (times == 0)
        return;
    const std::string cut = name.size() > LONGEST_COUNTED ? cleaned(name) : std::string();
    if (!cut.empty())
        name = cut;
    auto known = mCounts.find(name);
    if (known == mCounts.end() && mCounts.size() >= MOST_NAMES)
        known = mCounts.emplace(OTHERS, 0).first;
    if (known == mCounts.end())
        known = mCounts.emplace(name, 0).first;
    known->second += times;
}

std::int64_t Tally::total() const {
    std::int64_t sum = 0;
    for (const auto& [name, times] : mCounts)
        sum += times;
    return sum;
}

} // namespace import
