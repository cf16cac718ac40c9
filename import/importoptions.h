#pragma once

#include "import/importrules.h"
#include "import/importtable.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace import {

/// How much a packed file may unpack to.
struct unpacking {
    std::int64_t largest = std::int64_t(4) << 30; ///< Bytes, of one member.
    double ratio = 1000;                          ///< To its packed size, from a megabyte on.
};

/// What the command line asks for.
struct options {
    /// Why the command line cannot be followed; empty when it can.
    QString fault;

    /// Help or version text, to be printed instead of a log.
    QString answer;

    QStringList files;
    QString output; ///< Empty for standard output.
    QString from;   ///< Empty to tell formats by content.
    import::table table;
    QString lifecycle; ///< Of XES events; `complete` if not given.
    Rules rules;
    bool listsKeys = false;
    std::optional<bool> join; ///< Empty to do as is usual for the format.
    std::optional<bool> grid;
    bool fields = true; ///< Whether typing into a field is a press on it.
    import::unpacking unpacking;
};

/// `arguments` begins with the program's name. Reads the files of rules. Needs a QCoreApplication,
/// for the help text.
options parse_options(const QStringList& arguments);

} // namespace import
