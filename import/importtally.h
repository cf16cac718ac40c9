#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace import {

/// Counts by name, for what the summary tells; as many names as formats have words for them, plus
/// those of a source, of which only the first hundred are kept apart, by their first 60 characters.
class Tally {
public:
    void count(std::string_view name, std::int64_t times = 1);

    std::int64_t total() const;

    const std::map<std::string, std::int64_t, std::less<>>& counts() const { return mCounts; }

private:
    std::map<std::string, std::int64_t, std::less<>> mCounts;
};

} // namespace import
