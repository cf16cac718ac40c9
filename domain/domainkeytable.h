#pragma once

#include "domain/domainsametext.h"

#include <QString>

#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace domain {

/// Branch indices by event key. A log names few keys very often: the table's own copy of a key is
/// there to be shared.
class KeyTable {
public:
    using Entry = std::pair<const QString, int>;

    /// Entries found before are gone then.
    void clear();

    /// The entry of `key`, owned by the table; null when there is none.
    const Entry* find(const QString& key);

    /// Sets the index of `key`. Throws `std::bad_alloc`.
    void set(const QString& key, int index);

    void remove(const QString& key);

    /// Every key at its index, which is below the size of `keys`.
    void copyTo(std::vector<QString>& keys) const;

private:
    // Not the toolkit's hash of a string: in the version here it leaves the processor's wide
    // registers in use, which slows down whatever runs next.
    struct hash {
        std::size_t operator()(const QString& key) const;
    };

    struct same {
        bool operator()(const QString& a, const QString& b) const { return is_same_text(a, b); }
    };

    const Entry*& recentAt(const QString& key);

    static constexpr std::size_t RECENT = 1024;

    std::unordered_map<QString, int, hash, same> mIndices;
    const Entry* mLatest = nullptr; ///< Found last: a release follows the press of the same key.

    /// Found before, by where their text stood: the parser has that of a key, as a rule, at the
    /// same place again.
    std::array<const Entry*, RECENT> mRecent{};
};

} // namespace domain
