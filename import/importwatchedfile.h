#pragma once

#include <QElapsedTimer>
#include <QFile>

namespace import {

/// A file that says on standard error how far it is read, where that is a terminal and reading
/// takes longer than a moment.
class WatchedFile : public QFile {
public:
    explicit WatchedFile(const QString& path);

    /// Wipes the line that was said last.
    ~WatchedFile() override;

protected:
    qint64 readData(char* data, qint64 size) override;

private:
    void say();

    bool mIsWatched = false;
    bool mHasSaid = false;
    qint64 mRead = 0; // bytes
    QElapsedTimer mSince;
};

} // namespace import
