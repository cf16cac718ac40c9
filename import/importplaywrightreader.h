#pragma once

#include "import/importoptions.h"
#include "import/importreader.h"

namespace import {

/// Reads traces of tests in a browser, zip files with a line of JSON for each event, versions 3 to
/// 9: a recording for each context of the browser. Actions that failed did not happen; typing is a
/// press on its field, and what was typed is not looked at.
class PlaywrightReader : public Reader {
public:
    /// `options` is not owned and outlives the reader.
    explicit PlaywrightReader(const options& options)
        : mOptions(options) {}

    /// A source that is no file is copied into a temporary one first: the members of a zip file
    /// stand in its directory, at its end.
    outcome read(QIODevice& source, Collector& into) override;

private:
    const options& mOptions;
};

} // namespace import
