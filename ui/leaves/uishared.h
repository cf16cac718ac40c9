#pragma once

#include "ui/leaves/uileaflist.h"
#include "ui/leaves/uileafselection.h"

#include <QObject>

namespace ui {

// What a change of the selection changed, as bits of a mask.
inline constexpr quint64 LEAF_SEL = 1;
inline constexpr quint64 PATTERN_SEL = 2;

/// What the views of the main window share: the leaves, which of them are selected, and which
/// pattern of the leaf in focus is shown. A selection outlives a rebuild of the leaves, so it may
/// name leaves that are no longer there. Main thread only.
class Shared : public QObject {
    Q_OBJECT

public:
    explicit Shared(QObject* parent);

    const LeafSelection& leafSelection() const { return mLeafSelection; }

    /// Position, from 0, among the patterns of the branch in focus; not clipped to them.
    int patternSelection() const { return mPatternSelection; }

    /// The branch of the leaf in focus, or null; owned by the nest.
    const domain::Branch* branchInFocus() const;

    /// The selected pattern of the branch in focus, or null.
    const domain::Pattern* selectedPattern() const;

    /// Selects leaves and the first pattern. Announces both; nothing for the selection that is
    /// already set.
    void setLeafSelection(const LeafSelection& selection);

    /// Announces the change; nothing for the pattern that is already selected.
    void setPatternSelection(int pattern);

    /// Announces both: for whoever rebuilt the leaves, as the selection stays and what it names
    /// does not.
    void announceAll();

    LeafList mLeaves;

Q_SIGNALS:
    /// Sent after a change and before its operation returns; `mask` holds the `_SEL` bits.
    void onSelectionChanged(quint64 mask);

private:
    LeafSelection mLeafSelection;
    int mPatternSelection = 0;
};

} // namespace ui
