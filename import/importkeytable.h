#pragma once

#include "import/importevent.h"
#include "import/importrules.h"
#include "import/importtextmap.h"
#include "import/importtexts.h"

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace import {

/// A key of the log, as the rules leave it.
struct key_entry {
    std::string key;
    std::int64_t events = 0;
    std::array<std::int64_t, NAMED_BY.size()> named{}; ///< Events by how they were named.
    int cell = -1; ///< Its place in the grid of keys without positions; -1 for none yet.
};

/// The keys of a log: puts those of a source through the rules, once each, and counts them. Takes
/// memory for every distinct key of the source.
class KeyTable {
public:
    /// `rules` is not owned and outlives the table.
    explicit KeyTable(const Rules& rules)
        : mRules(rules) {}

    /// The key that an event of the source gets, counted; null when the rules ignore it. Stays
    /// valid with the table.
    key_entry* take(std::string_view source, Named named);

    /// In the order in which they first came.
    const std::deque<key_entry>& keys() const { return mKeys; }

    /// Events of each rule about finished keys, by its place in `Rules::lines`.
    std::vector<std::int64_t> hits() const;

private:
    struct source_key {
        key_entry* becomes = nullptr;
        std::vector<int> matched;
        std::int64_t events = 0;
    };

    source_key settle(std::string_view source);
    key_entry* entryOf(const std::string& key);

    const Rules& mRules;
    Texts mSources;
    std::deque<source_key> mFound; // of each source
    text_map<key_entry*> mByKey;
    std::deque<key_entry> mKeys;
};

} // namespace import
