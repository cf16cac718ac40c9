#pragma once

#include <QString>

#include <cstring>

namespace domain {

/// Whether two texts are equal, letter case included. At once for those that share their storage,
/// as the keys of one branch's events do.
inline bool is_same_text(const QString& a, const QString& b) {
    if (a.size() != b.size())
        return false;
    return a.constData() == b.constData() ||
           std::memcmp(a.constData(), b.constData(),
                       static_cast<std::size_t>(a.size()) * sizeof(QChar)) == 0;
}

} // namespace domain
