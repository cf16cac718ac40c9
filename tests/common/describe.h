#pragma once

#include "domain/domainnest.h"
#include "domain/domaintrace.h"

#include <sstream>
#include <string>
#include <vector>

/// Makes model objects from plain values, and text of them that tests compare.
namespace model {

inline void fill(domain::Pattern& pattern, const std::vector<int>& sequence, int count = 0) {
    pattern.clear();
    for (const int index : sequence)
        pattern.mSequence.add(index);
    pattern.mCount = count;
}

inline void fill(domain::Branch& branch, const QString& key, int gesture = domain::GESTURE_DOWN,
                 const QRectF& bounds = QRectF()) {
    branch.clear();
    branch.mKey = key;
    branch.mGesture = gesture;
    branch.mBounds = bounds;
}

/// A nest of one "down" branch per index that `trace` uses.
inline void fill(domain::Nest& nest, domain::Trace& trace, const std::vector<int>& indices) {
    nest.clear();
    trace.mIndices.setSize(0);
    domain::Branch branch;
    for (const int index : indices) {
        trace.mIndices.add(index);
        fill(branch, QStringLiteral("k%1").arg(index));
        nest.merge(index, branch);
    }
}

/// As in "0,1,0x2": the sequence and the count.
inline std::string describe(const domain::Pattern& pattern) {
    std::ostringstream text;
    for (int i = 0; i < pattern.mSequence.size(); ++i)
        text << (i > 0 ? "," : "") << pattern.mSequence[i];
    text << "x" << pattern.mCount;
    return text.str();
}

inline std::string describe(const domain::PatternList& patterns) {
    std::string text;
    for (const domain::Pattern* pattern : patterns.reading())
        text += (text.empty() ? "" : " ") + describe(*pattern);
    return text;
}

/// As in "Edit 1 (12 8 3 2): 0,1,0x2".
inline std::string describe(const domain::Branch& branch) {
    const QRectF& b = branch.mBounds;
    std::ostringstream text;
    text << branch.mKey.toStdString() << " " << branch.mGesture << " (" << b.x() << " " << b.y()
         << " " << b.width() << " " << b.height() << "): " << describe(branch.mPatterns);
    return text.str();
}

inline std::vector<std::string> describe(const domain::Nest& nest) {
    std::vector<std::string> texts(static_cast<std::size_t>(nest.size()), "none");
    for (int i = 0; i < nest.size(); ++i) {
        if (const domain::Branch* branch = nest.branchAt(i))
            texts[static_cast<std::size_t>(i)] = describe(*branch);
    }
    return texts;
}

} // namespace model
