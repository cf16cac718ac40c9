#pragma once

#include "domain/domainpatternlist.h"

#include <QDebug>
#include <QRectF>
#include <QString>

namespace domain {

constexpr int GESTURE_NONE = -1; ///< No event yet; also a branch that was handed on.
constexpr int GESTURE_DOWN = 1;
constexpr int GESTURE_UP = 2;   ///< Never part of a trace.
constexpr int GESTURE_MENU = 3; ///< Never anchors a pattern.

/// All events of one key: the key, the gesture it was first seen with, the rectangle around its
/// events and the patterns that begin and end with it.
class Branch {
public:
    /// An invalid branch: no key, no gesture, a zero rectangle, no patterns.
    Branch() = default;

    /// Back to the state of a new branch; the patterns are kept for reuse.
    void clear();

    /// A branch is valid when it has a key.
    bool isValid() const { return !mKey.isEmpty(); }

    Branch& operator=(const Branch& other);

    /// Folds in another branch of the same key: unites the rectangles and merges the patterns; the
    /// gesture stays. An invalid branch becomes a copy of `other`. False, with nothing changed,
    /// when the keys differ.
    bool merge(const Branch& other);

    /// As `merge`, but `other`'s patterns move here instead of being copied.
    bool take(Branch& other);

    /// Stores a find of `pattern`. False when no pattern can be made.
    bool addPattern(const Pattern& pattern);

    bool hasPatterns() const { return !mPatterns.isEmpty(); }

    int patternSize() const { return mPatterns.size(); }

    /// For who may change the patterns; to look at them read `mPatterns.reading()`.
    ManagedListIterator<Pattern*> beginPatterns() const { return mPatterns.begin(); }

    /// The pattern at position `index`, from 0, or null; owned by the branch.
    const Pattern* patternAt(int index) const;

    /// The count of the pattern at position `index`, 0 when there is none.
    int patternCount(int index) const;

    /// The branch's rank: the largest count of its patterns, 0 without patterns.
    int maxPatternCount() const { return mPatterns.maxCount(); }

    /// How often the branch's patterns were found in all.
    int patternWeight() const { return mPatterns.weight(); }

    /// Writes key and gesture as items of a debug stream.
    void printTo(QDebug& dbg) const;

    QString mKey;
    int mGesture = GESTURE_NONE;
    QRectF mBounds; ///< In the log's coordinates; an event covers 1 x 1.
    PatternList mPatterns;

private:
    void copyEvents(const Branch& other);
    bool mergeEvents(const Branch& other);
};

} // namespace domain
