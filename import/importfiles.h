#pragma once

#include "import/importcollector.h"
#include "import/importoptions.h"
#include "import/importreader.h"

#include <QString>

namespace import {

/// Reads the file at `path`, `-` for standard input, into the collector, by the format that the
/// options name or its content tells.
outcome read_file(const QString& path, const options& options, Collector& into);

} // namespace import
