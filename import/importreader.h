#pragma once

#include "import/importcollector.h"
#include "import/importrules.h"

#include <QIODevice>
#include <QString>

namespace import {

/// How a file came through.
struct outcome {
    enum class Kind {
        Whole,
        Damaged,    ///< Read in part, or not at all, for what it holds.
        Unreadable, ///< The system does not give it out.
        WrongUsage, ///< The options ask for what it does not have.
    };

    Kind kind = Kind::Whole;
    QString fault; ///< For people; empty when whole.
};

/// `Damaged` for a fault, `Whole` without one.
inline outcome outcome_of(const QString& fault) {
    return {fault.isEmpty() ? outcome::Kind::Whole : outcome::Kind::Damaged, fault};
}

/// Turns one file of a format into recordings.
class Reader {
public:
    virtual ~Reader() = default;

    /// Brings what `source` holds to `into`, one event at a time. `source` is open for reading;
    /// unless a format says otherwise it may be sequential. What came before a fault stands.
    virtual outcome read(QIODevice& source, Collector& into) = 0;
};

} // namespace import
