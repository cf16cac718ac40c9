#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace report {

/// Short forms of a report's keys, for lines that whole ones do not fit into. A key is cut at its
/// beginning, up to a part that begins behind a colon, and stays apart from all other keys.
class ShortKeys {
public:
    /// Each key is there once.
    explicit ShortKeys(QStringList keys);

    /// As little of the key as tells it apart; of that, beginning and end where it is longer than
    /// `columns`.
    QString shortest(const QString& key, int columns) const;

    /// As many parts of the key as `columns` have room for, at least the shortest form.
    QString longest(const QString& key, int columns) const;

private:
    QHash<QString, qsizetype> mBegins; ///< Where the shortest form of a key begins.
};

/// The end of `text`, with an ellipsis before it where it is longer than `columns`.
QString end_of(const QString& text, int columns);

/// The beginning of `text`, with an ellipsis behind it where it is longer than `columns`.
QString beginning_of(const QString& text, int columns);

} // namespace report
