#pragma once

#include <QString>

#include <algorithm>
#include <cstring>

namespace domain {

/// Whether two runs of so many characters are the same. Keys are too short for a call to pay.
inline bool are_same(const QChar* a, const QChar* b, qsizetype size) {
    constexpr qsizetype WORD = sizeof(quint64) / sizeof(QChar);
    const auto wordsDiffer = [a, b](qsizetype at) {
        quint64 left = 0;
        quint64 right = 0;
        std::memcpy(&left, a + at, sizeof(left));
        std::memcpy(&right, b + at, sizeof(right));
        return left != right;
    };
    if (size < WORD)
        return std::equal(a, a + size, b);
    for (qsizetype at = 0; at < size - WORD; at += WORD) {
        if (wordsDiffer(at))
            return false;
    }
    return !wordsDiffer(size - WORD); // may overlap the word before
}

/// Whether two texts are equal, letter case included. At once for those that share their storage,
/// as the keys of one branch's events do.
inline bool is_same_text(const QString& a, const QString& b) {
    return a.size() == b.size() &&
           (a.constData() == b.constData() || are_same(a.constData(), b.constData(), a.size()));
}

} // namespace domain
