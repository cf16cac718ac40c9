#pragma once

#include "bench/benchtrace.h"

#include <QTemporaryDir>

#include <list>
#include <string>

namespace bench {

/// What a reader has to find in a log.
struct Tally {
    int branches = 0;
    int recordings = 0;
    int events = 0;

    bool operator==(const Tally&) const = default;
};

/// Which log to write. Every press is followed by its release, so a recording holds up to twice
/// `recordingSize` events.
struct LogKind {
    Shape shape;
    int recordingSize;  ///< Presses and menu choices of a recording.
    int megabytes;      ///< Millions of bytes, reached by the last recording.
    int recordings = 0; ///< Their number, in the place of a size; 0 for none.

    bool operator==(const LogKind&) const = default;
};

/// As in "hub, 1000 a recording, 10 MB" and "hub, 1000 a recording, 50 of them".
std::string nameOf(const LogKind& kind);

struct LogFile {
    LogKind kind{};
    std::string path;
    qint64 bytes = 0;
    Tally tally;
};

/// Writes a log of `kind` to `path`; the same kind gives the same bytes. Throws
/// `std::runtime_error` when it cannot.
LogFile writeLog(const LogKind& kind, const std::string& path);

/// Writes generated logs to a temporary folder, which is removed with this object.
class Logs {
public:
    Logs() = default;
    Logs(const Logs&) = delete;
    Logs& operator=(const Logs&) = delete;

    /// The log of that kind, written at the first call; owned by this object. Throws
    /// `std::runtime_error` when it cannot be written.
    const LogFile& log(const LogKind& kind);

private:
    QTemporaryDir mFolder;
    std::list<LogFile> mFiles;
};

} // namespace bench
