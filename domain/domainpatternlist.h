#pragma once

#include "collections/clearingfactory.h"
#include "collections/managedlist.h"
#include "domain/domainpattern.h"
#include "domain/domainpatternindex.h"

namespace domain {

/// The patterns of one branch, in the order of their discovery; `merge` never stores a sequence
/// twice. The list owns its patterns and recycles them; the storage of a far longer sequence than
/// the new one is given back, else in the end each would have that of the longest run it ever held.
///
/// A long list finds sequences by hash, and every list knows what its counts come to, as long as no
/// pattern was lent to somebody who may change it; `reading` lends none. From then on, until it is
/// cleared, it walks. Elements may come and go in any way.
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
    /// is empty afterwards. An empty list takes them as they are. The patterns that wait here go
    /// there in exchange.
    void take(PatternList& other);

    /// The largest count, 0 without patterns.
    int maxCount() const { return totals().most; }

    /// The finds of all patterns: their counts and one for each.
    int weight() const { return totals().weight; }

private:
    /// What the counts come to.
    struct Totals {
        int most = 0;
        int weight = 0;

        void add(int count);
    };

    void catchUp();
    bool isInStep() const;
    bool isIndexed() const;
    Totals totals() const;
    void index();
    quint32 hashOf(Pattern& stored) const;
    Pattern* find(const Pattern& pattern, quint32 hash) const;
    Pattern* append(const Pattern& pattern, quint32 hash);
    void countAgain(Pattern& known);
    void noteLast(Pattern* added, bool inStep);

    PatternIndex mIndex; ///< Of all patterns of a long list, or empty.
    Totals mTotals;
    unsigned mStep = 0; ///< `changes()` when index and totals were right.
};

} // namespace domain
