#pragma once

#include <QtGlobal>

#include <string>

namespace bench {

/// A trace of a test in a browser.
struct PlaywrightFile {
    std::string path;
    qint64 largestEvent = 0; ///< Bytes of the largest of its lines.
    int presses = 0;
};

/// Writes one to `path`, a zip file with a member of `megabytes` million bytes: presses, and
/// pictures of the page of a megabyte each between them. Throws `std::runtime_error` when it
/// cannot.
PlaywrightFile writePlaywright(int megabytes, const std::string& path);

} // namespace bench
