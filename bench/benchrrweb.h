#pragma once

#include <QtGlobal>

#include <string>

namespace bench {

/// A recording of a web page as a recorder writes it.
struct RrwebFile {
    std::string path;
    qint64 bytes = 0;
    qint64 largestEvent = 0; ///< Bytes of the largest of its events.
    int presses = 0;         ///< Each with its release and click.
};

/// Writes one to `path`: an array of events, reaching `megabytes` million bytes by the last of
/// them. Snapshots of about 2 MB, a third of it style sheets, come every 8 MB; between them
/// mutations, moves of the mouse, scrolling and presses. The same size gives the same bytes. Throws
/// `std::runtime_error` when it cannot.
RrwebFile writeRrweb(int megabytes, const std::string& path);

} // namespace bench
