#pragma once

#include <QString>
#include <QStringView>

/// Splits an event key into its parts at colons. Empty parts are skipped; parts of one character
/// count like any other. The key is not owned and outlives the iterator and the parts.
class KeyIterator {
public:
    explicit KeyIterator(const QString& key);
    explicit KeyIterator(QString&& key) = delete;

    /// Sets `part` to the next part; false, with `part` untouched, when there is none.
    bool getNext(QStringView& part);

private:
    const QString& mKey;
    qsizetype mPos = 0; ///< Where the next search starts.
};
