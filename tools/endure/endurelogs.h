#pragma once

#include <QByteArray>
#include <QUrl>

#include <random>

class QDir;

namespace endure {

using Random = std::mt19937;

/// A number from 0 to `limit` - 1. The distributions of the standard library differ from one to the
/// next; this does not.
int below(int limit, Random& random);

/// What a generated log holds.
struct log_kind {
    int keys;
    int recordings;
    int events; ///< Of each recording.
};

/// A log whose keys all begin with `prefix`. The first keys are by far the most frequent, so that
/// runs repeat; every ninth is a menu's.
QByteArray log_text(const QByteArray& prefix, const log_kind& kind, Random& random);

/// `text` with its end cut off, bytes changed, or brackets in the wrong places.
QByteArray broken(QByteArray text, Random& random);

/// Writes `text` into the file `name` of `folder`. Throws `std::runtime_error` when it cannot.
QUrl write(const QDir& folder, const QString& name, const QByteArray& text);

} // namespace endure
