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

} // namespace domain
