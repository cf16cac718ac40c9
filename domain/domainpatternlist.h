#pragma once

#include "collections/clearingfactory.h"
#include "collections/managedlist.h"
#include "domain/domainpattern.h"
#include "domain/domainpatternindex.h"

namespace domain {

/// The patterns of one branch, in the order of their discovery; `merge` never stores a sequence
/// twice. The list owns its patterns and recycles them; the storage of a far longer sequence than
/// the new one is given back, else in the end each would have that of the longest run it ever held.
/// A stored pattern's sequence is not changed from outside: a long list finds sequences by hash.
/// Elements may come and go in any way.
class PatternList : public ManagedList<Pattern*> {
public:
    class Factory : public ClearingFactory<Pattern> {
    public:
        using ClearingFactory::ClearingFactory;
        Pattern* setObject(Pattern* target, Pattern* source) const override;
    };

    PatternList();

    void clear() override;

    /// Counts one more find of the stored pattern with the same sequence or, when there is none,
    /// appends a copy, count included.
    void merge(const Pattern& pattern);

    /// As `merge`; false, with the list unchanged, when no pattern can be made.
    bool add(const Pattern& pattern);

    /// As `add`, for who knows the hash of the sequence, see `RunHash`.
    bool add(const Pattern& pattern, quint32 hash);

    /// Merges every pattern of `other`, in its order. `other` may be this list.
    void merge(const PatternList& other);

    /// Copies every pattern, in order; one that cannot be made is skipped.
    PatternList& operator=(const PatternList& other);

    /// As `merge`, but the patterns of `other`, another list, move here instead of being copied; it
    /// is empty afterwards. The patterns that wait here go there in exchange.
    void take(PatternList& other);

private:
    void index();
    bool isIndexed() const;
    static quint32 hashOf(Pattern& stored);
    Pattern* find(const Pattern& pattern, quint32 hash) const;
    Pattern* append(const Pattern& pattern, quint32 hash);
    void addToIndex(Pattern* added);

    PatternIndex mIndex;   ///< Of all patterns of a long list, or out of date.
    unsigned mIndexed = 0; ///< `changes()` when the index was up to date.
};

} // namespace domain
