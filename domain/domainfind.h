#pragma once

#include <QtGlobal>

namespace domain {

/// A run that was found in a trace and stored as a pattern.
struct find {
    int first = 0;    ///< Trace position where it begins.
    quint64 hash = 0; ///< `RunHash::wholeOf` it.
};

} // namespace domain
