#pragma once

#include "tests/common/describe.h"
#include "ui/leaves/uileafbuilder.h"
#include "ui/leaves/uileaflayout.h"
#include "ui/leaves/uilook.h"
#include "ui/leaves/uishared.h"

#include <QApplication>
#include <QFontMetrics>

#include <vector>

namespace model {

/// A pattern as a test writes it.
struct counted {
    std::vector<int> sequence;
    int count = 0;
};

inline void fill(ui::LeafSelection& selection, int primary, const std::vector<int>& alternates) {
    selection.mPrimary = primary;
    selection.mAlternates.setSize(0);
    for (const int index : alternates)
        selection.mAlternates.add(index);
}

/// What the views are given: a nest, the leaves of its branches, a selection and a look.
class Scene {
public:
    Scene() { mLook.init(QFontMetrics(QApplication::font())); }

    /// Adds a branch, named by the next letter, of an event at `place`.
    void add(const std::vector<counted>& patterns = {}, int gesture = domain::GESTURE_DOWN,
             const QPointF& place = {}) {
        domain::Branch branch;
        fill(branch, QString(QChar(u'a' + mNest.size())), gesture, QRectF(place, QSizeF(1, 1)));
        domain::Pattern pattern;
        for (const counted& each : patterns) {
            fill(pattern, each.sequence, each.count);
            branch.addPattern(pattern);
        }
        mNest.set(mNest.size(), branch);
    }

    /// Makes the leaves of the nest.
    void build() {
        ui::LeafBuilder(mShared.mLeaves).from(mNest);
        ui::LeafLayout(mShared.mLeaves).layout();
    }

    void select(int primary, const std::vector<int>& alternates, int pattern = 0) {
        ui::LeafSelection selection;
        fill(selection, primary, alternates);
        mShared.setLeafSelection(selection);
        mShared.setPatternSelection(pattern);
    }

    ui::Look mLook;
    domain::Nest mNest;
    ui::Shared mShared{nullptr};
};

} // namespace model
