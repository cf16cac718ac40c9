#pragma once

#include <QDebug>
#include <QString>

namespace domain {

/// Composes one message of the debug stream and sends it when destroyed. Unlike `qDebug()` it keeps
/// the blank behind the last item and sends the items as they were written.
class DebugLine {
public:
    DebugLine()
        : mStream(&mText) {}

    DebugLine(const DebugLine&) = delete;
    DebugLine& operator=(const DebugLine&) = delete;

    ~DebugLine() { qDebug("%s", qUtf8Printable(mText)); }

    QDebug& stream() { return mStream; }

private:
    QString mText;
    QDebug mStream;
};

/// Writes `key` as an item in double quotes, with no character escaped: a backslash in a key is a
/// character like any other.
inline void write_key(QDebug& stream, const QString& key) {
    const QDebugStateSaver saver(stream);
    stream.noquote() << QString(u'"' + key + u'"');
}

} // namespace domain
